<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>DeskTypeTable</name>
    <message>
        <source>D5 Plus</source>
        <translation>D5 Plus</translation>
    </message>
    <message>
        <source>D5Q</source>
        <translation>D5Q</translation>
    </message>
    <message>
        <source>D5L</source>
        <translation>D5L</translation>
    </message>
    <message>
        <source>D5 Pro</source>
        <translation>D5 Pro</translation>
    </message>
    <message>
        <source>D5</source>
        <translation>D5</translation>
    </message>
</context>
<context>
    <name>ostrel::BluetoothConnectTipVC</name>
    <message>
        <source>Pair</source>
        <translation>Pair</translation>
    </message>
    <message>
        <source>Cannot pair with 【%@】</source>
        <translation>Cannot pair with 【%@】</translation>
    </message>
</context>
<context>
    <name>ostrel::BluetoothSearchVC</name>
    <message>
        <source>Available</source>
        <translation>Available</translation>
    </message>
    <message>
        <source>Choose desk model</source>
        <translation>Choose desk model</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskSearchRowView</name>
    <message>
        <source>Pairing</source>
        <translation>Pairing</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskTypeCell</name>
    <message>
        <source>In use</source>
        <translation>In use</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskTypeVC</name>
    <message>
        <source>Back</source>
        <translation>Back</translation>
    </message>
</context>
<context>
    <name>ostrel::DeviceManagement</name>
    <message>
        <source>Connection failed</source>
        <translation>Connection failed</translation>
    </message>
    <message>
        <source>Connecting</source>
        <translation>Connecting</translation>
    </message>
    <message>
        <source>Connected successfully</source>
        <translation>Connected successfully</translation>
    </message>
</context>
<context>
    <name>ostrel::DeviceManagerRowView</name>
    <message>
        <source>Connected</source>
        <translation>Connected</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>Offline</translation>
    </message>
</context>
<context>
    <name>ostrel::DevicePage</name>
    <message>
        <source>Back</source>
        <translation>Back</translation>
    </message>
</context>
<context>
    <name>ostrel::NoBluetoothVC</name>
    <message>
        <source>No Bluetooth connection, please turn on your device&apos;s Bluetooth to establish a connection</source>
        <translation>No Bluetooth connection, please turn on your device&apos;s Bluetooth to establish a connection</translation>
    </message>
    <message>
        <source>Pair</source>
        <translation>Pair</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>Tip</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>The system&apos;s Bluetooth service (BlueZ) is not running. Install the &quot;bluez&quot; package and start it with &quot;sudo systemctl enable --now bluetooth&quot;, then press Pair.</source>
        <translation>The system&apos;s Bluetooth service (BlueZ) is not running. Install the &quot;bluez&quot; package and start it with &quot;sudo systemctl enable --now bluetooth&quot;, then press Pair.</translation>
    </message>
    <message>
        <source>The system&apos;s Bluetooth service refuses this user. Add yourself to the &quot;bluetooth&quot; group with &quot;sudo usermod -aG bluetooth $USER&quot;, log out and back in, then press Pair.</source>
        <translation>The system&apos;s Bluetooth service refuses this user. Add yourself to the &quot;bluetooth&quot; group with &quot;sudo usermod -aG bluetooth $USER&quot;, log out and back in, then press Pair.</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewDeviceDetail</name>
    <message>
        <source>Device details</source>
        <translation>Device details</translation>
    </message>
    <message>
        <source>Delete device</source>
        <translation>Delete device</translation>
    </message>
    <message>
        <source>Change device</source>
        <translation>Change device</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Bluetooth Device Name</source>
        <translation>Bluetooth Device Name</translation>
    </message>
    <message>
        <source>Bluetooth Address</source>
        <translation>Bluetooth Address</translation>
    </message>
    <message>
        <source>Last Connected Time</source>
        <translation>Last Connected Time</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>Prompt</translation>
    </message>
    <message>
        <source>Delete current desk?</source>
        <translation>Delete current desk?</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>This desk is already connected</source>
        <translation>This desk is already connected</translation>
    </message>
    <message>
        <source>This desk is not in range</source>
        <translation>This desk is not in range</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewDeviceManagement</name>
    <message>
        <source>Device management</source>
        <translation>Device management</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>My desks</source>
        <translation>My desks</translation>
    </message>
    <message>
        <source>Other desks nearby</source>
        <translation>Other desks nearby</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewNameEdit</name>
    <message>
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Type a name first</source>
        <translation>Type a name first</translation>
    </message>
</context>
</TS>

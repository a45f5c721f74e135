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
    <name>ostrel::DeskTypeVC</name>
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
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>ostrel::BluetoothCenterManager</name>
    <message>
        <source>This device does not support BLE4.0, please replace the device</source>
        <translation>This device does not support BLE4.0, please replace the device</translation>
    </message>
    <message>
        <source>Bluetooth is turned off, please turn it on to connect to your desk</source>
        <translation>Bluetooth is turned off, please turn it on to connect to your desk</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>Prompt</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
</context>
</TS>

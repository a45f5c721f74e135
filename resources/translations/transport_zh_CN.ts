<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ostrel::BluetoothCenterManager</name>
    <message>
        <source>This device does not support BLE4.0, please replace the device</source>
        <translation>此设备不支持 BLE4.0，请更换设备</translation>
    </message>
    <message>
        <source>Bluetooth is turned off, please turn it on to connect to your desk</source>
        <translation>蓝牙已关闭，请打开蓝牙以连接升降桌</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
</context>
</TS>

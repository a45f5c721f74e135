<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
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
        <translation>配对</translation>
    </message>
    <message>
        <source>Cannot pair with 【%@】</source>
        <translation>无法与【%@】配对</translation>
    </message>
</context>
<context>
    <name>ostrel::BluetoothSearchVC</name>
    <message>
        <source>Available</source>
        <translation>可用设备</translation>
    </message>
    <message>
        <source>Choose desk model</source>
        <translation>选择桌型</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskSearchRowView</name>
    <message>
        <source>Pairing</source>
        <translation>正在配对</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskTypeVC</name>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
</context>
<context>
    <name>ostrel::NoBluetoothVC</name>
    <message>
        <source>No Bluetooth connection, please turn on your device&apos;s Bluetooth to establish a connection</source>
        <translation>未连接蓝牙，请打开设备的蓝牙以建立连接</translation>
    </message>
    <message>
        <source>Pair</source>
        <translation>配对</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>The system&apos;s Bluetooth service (BlueZ) is not running. Install the &quot;bluez&quot; package and start it with &quot;sudo systemctl enable --now bluetooth&quot;, then press Pair.</source>
        <translation>系统的蓝牙服务（BlueZ）没有运行。请安装 &quot;bluez&quot; 软件包，并用 &quot;sudo systemctl enable --now bluetooth&quot; 启动它，然后点击配对。</translation>
    </message>
    <message>
        <source>The system&apos;s Bluetooth service refuses this user. Add yourself to the &quot;bluetooth&quot; group with &quot;sudo usermod -aG bluetooth $USER&quot;, log out and back in, then press Pair.</source>
        <translation>系统的蓝牙服务拒绝了当前用户。请用 &quot;sudo usermod -aG bluetooth $USER&quot; 把自己加入 &quot;bluetooth&quot; 组，注销并重新登录，然后点击配对。</translation>
    </message>
</context>
</TS>

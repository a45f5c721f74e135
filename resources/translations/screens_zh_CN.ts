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
    <name>ostrel::DeskTypeCell</name>
    <message>
        <source>In use</source>
        <translation>使用中</translation>
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
    <name>ostrel::DeviceManagement</name>
    <message>
        <source>Connection failed</source>
        <translation>连接失败</translation>
    </message>
    <message>
        <source>Connecting</source>
        <translation>连接中</translation>
    </message>
    <message>
        <source>Connected successfully</source>
        <translation>连接成功</translation>
    </message>
</context>
<context>
    <name>ostrel::DeviceManagerRowView</name>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>离线</translation>
    </message>
</context>
<context>
    <name>ostrel::DevicePage</name>
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
<context>
    <name>ostrel::ViewDeviceDetail</name>
    <message>
        <source>Device details</source>
        <translation>设备详情</translation>
    </message>
    <message>
        <source>Delete device</source>
        <translation>删除设备</translation>
    </message>
    <message>
        <source>Change device</source>
        <translation>切换设备</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Bluetooth Device Name</source>
        <translation>蓝牙设备名称</translation>
    </message>
    <message>
        <source>Bluetooth Address</source>
        <translation>蓝牙地址</translation>
    </message>
    <message>
        <source>Last Connected Time</source>
        <translation>最后连接时间</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Delete current desk?</source>
        <translation>删除当前桌子？</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>This desk is already connected</source>
        <translation>此升降桌已连接</translation>
    </message>
    <message>
        <source>This desk is not in range</source>
        <translation>此升降桌不在范围内</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewDeviceManagement</name>
    <message>
        <source>Device management</source>
        <translation>设备管理</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>My desks</source>
        <translation>我的桌子</translation>
    </message>
    <message>
        <source>Other desks nearby</source>
        <translation>附近的其他桌子</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewNameEdit</name>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Type a name first</source>
        <translation>请先输入名称</translation>
    </message>
</context>
</TS>

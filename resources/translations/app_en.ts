<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ostrel::ActivityService</name>
    <message>
        <source>Activity</source>
        <translation>Activity</translation>
    </message>
    <message>
        <source>The activity record could not be read. It was kept as %1 and a new record was started.</source>
        <translation>The activity record could not be read. It was kept as %1 and a new record was started.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>The activity record %1 cannot be written. Standing time is shown but not kept.</source>
        <translation>The activity record %1 cannot be written. Standing time is shown but not kept.</translation>
    </message>
</context>
<context>
    <name>ostrel::AppDelegate</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Could not save changes while quitting. Quit anyway?</source>
        <translation>Could not save changes while quitting. Quit anyway?</translation>
    </message>
    <message>
        <source>Quitting now will lose any changes you have made since the last successful save</source>
        <translation>Quitting now will lose any changes you have made since the last successful save</translation>
    </message>
    <message>
        <source>Quit anyway</source>
        <translation>Quit anyway</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>ostrel::HomeErrorVC</name>
    <message>
        <source>获取帮助</source>
        <translation>Get Help</translation>
    </message>
    <message>
        <source>我知道了</source>
        <translation>Got It</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码LOC</source>
        <translation>Desk fault, error code LOC</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码RST</source>
        <translation>Desk fault, error code RST</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码-0L</source>
        <translation>Desk fault, error code -0L</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码E%02ld</source>
        <translation>Desk fault, error code E%02ld</translation>
    </message>
    <message>
        <source>设备温度异常，等待18分钟后再使用</source>
        <translation>The desk is overheated. Wait 18 minutes before using it again.</translation>
    </message>
    <message>
        <source>设备需要进行“自动回退”操作</source>
        <translation>The desk needs an automatic back-off.</translation>
    </message>
    <message>
        <source>设备需要进行“复位”操作</source>
        <translation>The desk needs a reset.</translation>
    </message>
    <message>
        <source>六轴传感器故障</source>
        <translation>Six-axis sensor fault</translation>
    </message>
    <message>
        <source>设备处于童锁状态</source>
        <translation>The desk is child-locked.</translation>
    </message>
    <message>
        <source>设备下滑故障</source>
        <translation>The desk is sliding down.</translation>
    </message>
    <message>
        <source>设备状态异常</source>
        <translation>The desk is in an abnormal state.</translation>
    </message>
</context>
<context>
    <name>ostrel::StatusMenu</name>
    <message>
        <source>关于Sorvix</source>
        <translation>About Ostrel Motion</translation>
    </message>
    <message>
        <source>隐藏Sorvix</source>
        <translation>Hide Ostrel Motion</translation>
    </message>
    <message>
        <source>退出Sorvix</source>
        <translation>Quit Ostrel Motion</translation>
    </message>
    <message>
        <source>窗口</source>
        <translation>Window</translation>
    </message>
    <message>
        <source>最小化软件</source>
        <translation>Minimise</translation>
    </message>
    <message>
        <source>Start at login</source>
        <translation>Start at login</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Activity</translation>
    </message>
</context>
<context>
    <name>ostrel::TrayDeskMenu</name>
    <message>
        <source>Desk released</source>
        <translation>Desk released</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>No desk connected</source>
        <translation>No desk connected</translation>
    </message>
    <message>
        <source>Height: %1</source>
        <translation>Height: %1</translation>
    </message>
    <message>
        <source>Height not yet known</source>
        <translation>Height not yet known</translation>
    </message>
</context>
</TS>

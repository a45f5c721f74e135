<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ostrel::ActivityService</name>
    <message>
        <source>Activity</source>
        <translation>活动</translation>
    </message>
    <message>
        <source>The activity record could not be read. It was kept as %1 and a new record was started.</source>
        <translation>无法读取活动记录。原文件已保留为 %1，并已开始新的记录。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>The activity record %1 cannot be written. Standing time is shown but not kept.</source>
        <translation>无法写入活动记录 %1。站立时间会显示，但不会保存。</translation>
    </message>
</context>
<context>
    <name>ostrel::AppDelegate</name>
    <message>
        <source>Version %1</source>
        <translation>版本 %1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>Could not save changes while quitting. Quit anyway?</source>
        <translation>退出时无法保存更改。仍要退出吗？</translation>
    </message>
    <message>
        <source>Quitting now will lose any changes you have made since the last successful save</source>
        <translation>现在退出将丢失上次成功保存后所做的所有更改</translation>
    </message>
    <message>
        <source>Quit anyway</source>
        <translation>仍要退出</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>ostrel::HomeErrorVC</name>
    <message>
        <source>获取帮助</source>
        <translation>获取帮助</translation>
    </message>
    <message>
        <source>我知道了</source>
        <translation>我知道了</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码LOC</source>
        <translation>升降桌故障，错误代码 LOC</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码RST</source>
        <translation>升降桌故障，错误代码 RST</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码-0L</source>
        <translation>升降桌故障，错误代码 -0L</translation>
    </message>
    <message>
        <source>升降桌故障,错误代码E%02ld</source>
        <translation>升降桌故障，错误代码 E%02ld</translation>
    </message>
    <message>
        <source>设备温度异常，等待18分钟后再使用</source>
        <translation>设备温度异常，等待18分钟后再使用</translation>
    </message>
    <message>
        <source>设备需要进行“自动回退”操作</source>
        <translation>设备需要进行“自动回退”操作</translation>
    </message>
    <message>
        <source>设备需要进行“复位”操作</source>
        <translation>设备需要进行“复位”操作</translation>
    </message>
    <message>
        <source>六轴传感器故障</source>
        <translation>六轴传感器故障</translation>
    </message>
    <message>
        <source>设备处于童锁状态</source>
        <translation>设备处于童锁状态</translation>
    </message>
    <message>
        <source>设备下滑故障</source>
        <translation>设备下滑故障</translation>
    </message>
    <message>
        <source>设备状态异常</source>
        <translation>设备状态异常</translation>
    </message>
</context>
<context>
    <name>ostrel::StatusMenu</name>
    <message>
        <source>关于Sorvix</source>
        <translation>关于 Ostrel Motion</translation>
    </message>
    <message>
        <source>隐藏Sorvix</source>
        <translation>隐藏 Ostrel Motion</translation>
    </message>
    <message>
        <source>退出Sorvix</source>
        <translation>退出 Ostrel Motion</translation>
    </message>
    <message>
        <source>窗口</source>
        <translation>窗口</translation>
    </message>
    <message>
        <source>最小化软件</source>
        <translation>最小化软件</translation>
    </message>
    <message>
        <source>Start at login</source>
        <translation>登录时启动</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>活动</translation>
    </message>
</context>
<context>
    <name>ostrel::TrayDeskMenu</name>
    <message>
        <source>Desk released</source>
        <translation>升降桌已释放</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>No desk connected</source>
        <translation>未连接升降桌</translation>
    </message>
    <message>
        <source>Height: %1</source>
        <translation>高度：%1</translation>
    </message>
    <message>
        <source>Height not yet known</source>
        <translation>高度未知</translation>
    </message>
</context>
</TS>

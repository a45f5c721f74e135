<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ostrel::CountdownView</name>
    <message>
        <source>Clear the reminder</source>
        <translation>清除提醒</translation>
    </message>
    <message>
        <source>Reminder in</source>
        <translation>距下次提醒</translation>
    </message>
    <message>
        <source>Time left until the next sit-stand reminder</source>
        <translation>距下次坐站提醒的剩余时间</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskControlHeader</name>
    <message>
        <source>How to Save Height Presets</source>
        <translation>如何保存高度预设</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskControlVC</name>
    <message>
        <source>Prompt</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>The Bluetooth connection of the device is disconnected</source>
        <translation>设备的蓝牙连接已断开</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
    <message>
        <source>Click to move the desk to a height</source>
        <translation>点击将桌子移动到指定高度</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskStatus</name>
    <message>
        <source>Child lock (LOC): the desk ignores its keys until it is unlocked on the desk.</source>
        <translation>童锁（LOC）：升降桌不响应按键，需在桌子上解锁。</translation>
    </message>
    <message>
        <source>Reset needed (RST): hold Down until the desk reaches its lowest position.</source>
        <translation>需要复位（RST）：按住“下降”直到升降桌降到最低位置。</translation>
    </message>
    <message>
        <source>Slide-down warning (-0L): the desk is sinking by itself.</source>
        <translation>下滑警告（-0L）：升降桌正在自行下沉。</translation>
    </message>
    <message>
        <source>Error %1: the desk is overheated. Wait 18 minutes before using it.</source>
        <translation>错误 %1：设备温度过高，请等待 18 分钟后再使用。</translation>
    </message>
    <message>
        <source>Error %1: the desk needs to back off automatically.</source>
        <translation>错误 %1：升降桌需要进行“自动回退”。</translation>
    </message>
    <message>
        <source>Error %1: the desk needs a reset. Hold Down until it reaches its lowest position.</source>
        <translation>错误 %1：升降桌需要复位。请按住“下降”直到降到最低位置。</translation>
    </message>
    <message>
        <source>Error %1: the six-axis sensor has failed.</source>
        <translation>错误 %1：六轴传感器故障。</translation>
    </message>
    <message>
        <source>Error %1: the desk reports a fault.</source>
        <translation>错误 %1：升降桌报告故障。</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskRelease</name>
    <message>
        <source>Connect desk</source>
        <translation>连接升降桌</translation>
    </message>
    <message>
        <source>Release desk</source>
        <translation>释放升降桌</translation>
    </message>
    <message>
        <source>Desk released</source>
        <translation>升降桌已释放</translation>
    </message>
    <message>
        <source>Let go of the desk, so that your phone or another computer can connect to it</source>
        <translation>释放升降桌，让手机或其他电脑可以连接它</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskSession</name>
    <message>
        <source>Connected successful, move the table to synchronize the height.</source>
        <translation>连接成功，请移动桌子以同步高度。</translation>
    </message>
</context>
<context>
    <name>ostrel::GoToHeight</name>
    <message>
        <source>The desk&apos;s height is not known yet: move it a little first.</source>
        <translation>尚不知道桌子的高度：请先稍微移动一下桌子。</translation>
    </message>
    <message>
        <source>The desk moves between %1 and %2.</source>
        <translation>桌子的升降范围为 %1 至 %2。</translation>
    </message>
</context>
<context>
    <name>ostrel::GoToHeightDialog</name>
    <message>
        <source>Go to a height</source>
        <translation>移动到指定高度</translation>
    </message>
    <message>
        <source>Move the desk to (%1):</source>
        <translation>将桌子移动到（%1）：</translation>
    </message>
    <message>
        <source>Between %1 and %2 %3</source>
        <translation>范围：%1 至 %2 %3</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>移动</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Moving the desk to %1 %2…</source>
        <translation>正在将升降桌移动到 %1 %2…</translation>
    </message>
</context>
<context>
    <name>ostrel::HeightSaveHelpVC</name>
    <message>
        <source>How to Save Height Presets</source>
        <translation>如何保存高度预设</translation>
    </message>
    <message>
        <source>Customize</source>
        <translation>自定义</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>ostrel::NotificationAlert</name>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
    <message>
        <source>Whether to continue the reminder?</source>
        <translation>是否继续提醒？</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Please stand/sit for a while</source>
        <translation>请站立或坐下一会儿</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>现在</translation>
    </message>
</context>
<context>
    <name>ostrel::PresetKeys</name>
    <message>
        <source>the sitting height</source>
        <translation>坐姿高度</translation>
    </message>
    <message>
        <source>Sit height:%.1fcm</source>
        <translation>坐姿高度:%.1fcm</translation>
    </message>
    <message>
        <source>Sit height:%.1fin</source>
        <translation>坐姿高度:%.1fin</translation>
    </message>
    <message>
        <source>the standing height</source>
        <translation>站姿高度</translation>
    </message>
    <message>
        <source>Stand height:%.1fcm</source>
        <translation>站姿高度:%.1fcm</translation>
    </message>
    <message>
        <source>Stand height:%.1fin</source>
        <translation>站姿高度:%.1fin</translation>
    </message>
    <message>
        <source>the M1 height</source>
        <translation>M1 高度</translation>
    </message>
    <message>
        <source>M1 height:%.1fcm</source>
        <translation>M1 高度:%.1fcm</translation>
    </message>
    <message>
        <source>M1 height:%.1fin</source>
        <translation>M1 高度:%.1fin</translation>
    </message>
    <message>
        <source>the M2 height</source>
        <translation>M2 高度</translation>
    </message>
    <message>
        <source>M2 height:%.1fcm</source>
        <translation>M2 高度:%.1fcm</translation>
    </message>
    <message>
        <source>M2 height:%.1fin</source>
        <translation>M2 高度:%.1fin</translation>
    </message>
    <message>
        <source>Height presets not set</source>
        <translation>未设置高度预设</translation>
    </message>
    <message>
        <source>Setting failed</source>
        <translation>设置失败</translation>
    </message>
    <message>
        <source>Setting successful</source>
        <translation>设置成功</translation>
    </message>
</context>
<context>
    <name>ostrel::ShortcutsHeightSetVC</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
    <message>
        <source>Whether to set the current height to</source>
        <translation>是否将当前高度设置为</translation>
    </message>
</context>
<context>
    <name>ostrel::SitStandReminder</name>
    <message>
        <source>Reminder</source>
        <translation>提醒</translation>
    </message>
    <message>
        <source>Whether to continue the reminder?</source>
        <translation>是否继续提醒？</translation>
    </message>
    <message>
        <source>Remind Me Later</source>
        <translation>稍后提醒</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Movement Reminder</source>
        <translation>运动提醒</translation>
    </message>
    <message>
        <source>Please stand/sit for a while</source>
        <translation>请站立或坐下一会儿</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>现在</translation>
    </message>
</context>
<context>
    <name>ostrel::StandingProgressView</name>
    <message>
        <source>Standing time today against your goal; click for your activity</source>
        <translation>今日站立时间与目标对比；点击查看活动</translation>
    </message>
    <message>
        <source>Standing today %1</source>
        <translation>今日站立 %1</translation>
    </message>
</context>
</TS>

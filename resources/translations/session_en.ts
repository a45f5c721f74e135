<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>ostrel::CountdownView</name>
    <message>
        <source>Clear the reminder</source>
        <translation>Clear the reminder</translation>
    </message>
    <message>
        <source>Reminder in</source>
        <translation>Reminder in</translation>
    </message>
    <message>
        <source>Time left until the next sit-stand reminder</source>
        <translation>Time left until the next sit-stand reminder</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskControlHeader</name>
    <message>
        <source>How to Save Height Presets</source>
        <translation>How to Save Height Presets</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskControlVC</name>
    <message>
        <source>Prompt</source>
        <translation>Prompt</translation>
    </message>
    <message>
        <source>The Bluetooth connection of the device is disconnected</source>
        <translation>The Bluetooth connection of the device is disconnected</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>Click to move the desk to a height</source>
        <translation>Click to move the desk to a height</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskStatus</name>
    <message>
        <source>Child lock (LOC): the desk ignores its keys until it is unlocked on the desk.</source>
        <translation>Child lock (LOC): the desk ignores its keys until it is unlocked on the desk.</translation>
    </message>
    <message>
        <source>Reset needed (RST): hold Down until the desk reaches its lowest position.</source>
        <translation>Reset needed (RST): hold Down until the desk reaches its lowest position.</translation>
    </message>
    <message>
        <source>Slide-down warning (-0L): the desk is sinking by itself.</source>
        <translation>Slide-down warning (-0L): the desk is sinking by itself.</translation>
    </message>
    <message>
        <source>Error %1: the desk is overheated. Wait 18 minutes before using it.</source>
        <translation>Error %1: the desk is overheated. Wait 18 minutes before using it.</translation>
    </message>
    <message>
        <source>Error %1: the desk needs to back off automatically.</source>
        <translation>Error %1: the desk needs to back off automatically.</translation>
    </message>
    <message>
        <source>Error %1: the desk needs a reset. Hold Down until it reaches its lowest position.</source>
        <translation>Error %1: the desk needs a reset. Hold Down until it reaches its lowest position.</translation>
    </message>
    <message>
        <source>Error %1: the six-axis sensor has failed.</source>
        <translation>Error %1: the six-axis sensor has failed.</translation>
    </message>
    <message>
        <source>Error %1: the desk reports a fault.</source>
        <translation>Error %1: the desk reports a fault.</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskRelease</name>
    <message>
        <source>Connect desk</source>
        <translation>Connect desk</translation>
    </message>
    <message>
        <source>Release desk</source>
        <translation>Release desk</translation>
    </message>
    <message>
        <source>Desk released</source>
        <translation>Desk released</translation>
    </message>
    <message>
        <source>Let go of the desk, so that your phone or another computer can connect to it</source>
        <translation>Let go of the desk, so that your phone or another computer can connect to it</translation>
    </message>
</context>
<context>
    <name>ostrel::DeskSession</name>
    <message>
        <source>Connected successful, move the table to synchronize the height.</source>
        <translation>Connected successful, move the table to synchronize the height.</translation>
    </message>
</context>
<context>
    <name>ostrel::GoToHeight</name>
    <message>
        <source>The desk&apos;s height is not known yet: move it a little first.</source>
        <translation>The desk&apos;s height is not known yet: move it a little first.</translation>
    </message>
    <message>
        <source>The desk moves between %1 and %2.</source>
        <translation>The desk moves between %1 and %2.</translation>
    </message>
</context>
<context>
    <name>ostrel::GoToHeightDialog</name>
    <message>
        <source>Go to a height</source>
        <translation>Go to a height</translation>
    </message>
    <message>
        <source>Move the desk to (%1):</source>
        <translation>Move the desk to (%1):</translation>
    </message>
    <message>
        <source>Between %1 and %2 %3</source>
        <translation>Between %1 and %2 %3</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Go</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Moving the desk to %1 %2…</source>
        <translation>Moving the desk to %1 %2…</translation>
    </message>
</context>
<context>
    <name>ostrel::HeightSaveHelpVC</name>
    <message>
        <source>How to Save Height Presets</source>
        <translation>How to Save Height Presets</translation>
    </message>
    <message>
        <source>Customize</source>
        <translation>Customize</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>ostrel::NotificationAlert</name>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>Whether to continue the reminder?</source>
        <translation>Whether to continue the reminder?</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Please stand/sit for a while</source>
        <translation>Please stand/sit for a while</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Now</translation>
    </message>
</context>
<context>
    <name>ostrel::PresetKeys</name>
    <message>
        <source>the sitting height</source>
        <translation>the sitting height</translation>
    </message>
    <message>
        <source>Sit height:%.1fcm</source>
        <translation>Sit height:%.1fcm</translation>
    </message>
    <message>
        <source>Sit height:%.1fin</source>
        <translation>Sit height:%.1fin</translation>
    </message>
    <message>
        <source>the standing height</source>
        <translation>the standing height</translation>
    </message>
    <message>
        <source>Stand height:%.1fcm</source>
        <translation>Stand height:%.1fcm</translation>
    </message>
    <message>
        <source>Stand height:%.1fin</source>
        <translation>Stand height:%.1fin</translation>
    </message>
    <message>
        <source>the M1 height</source>
        <translation>the M1 height</translation>
    </message>
    <message>
        <source>M1 height:%.1fcm</source>
        <translation>M1 height:%.1fcm</translation>
    </message>
    <message>
        <source>M1 height:%.1fin</source>
        <translation>M1 height:%.1fin</translation>
    </message>
    <message>
        <source>the M2 height</source>
        <translation>the M2 height</translation>
    </message>
    <message>
        <source>M2 height:%.1fcm</source>
        <translation>M2 height:%.1fcm</translation>
    </message>
    <message>
        <source>M2 height:%.1fin</source>
        <translation>M2 height:%.1fin</translation>
    </message>
    <message>
        <source>Height presets not set</source>
        <translation>Height presets not set</translation>
    </message>
    <message>
        <source>Setting failed</source>
        <translation>Setting failed</translation>
    </message>
    <message>
        <source>Setting successful</source>
        <translation>Setting successful</translation>
    </message>
</context>
<context>
    <name>ostrel::ShortcutsHeightSetVC</name>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>Whether to set the current height to</source>
        <translation>Whether to set the current height to</translation>
    </message>
</context>
<context>
    <name>ostrel::SitStandReminder</name>
    <message>
        <source>Reminder</source>
        <translation>Reminder</translation>
    </message>
    <message>
        <source>Whether to continue the reminder?</source>
        <translation>Whether to continue the reminder?</translation>
    </message>
    <message>
        <source>Remind Me Later</source>
        <translation>Remind Me Later</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Movement Reminder</source>
        <translation>Movement Reminder</translation>
    </message>
    <message>
        <source>Please stand/sit for a while</source>
        <translation>Please stand/sit for a while</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Now</translation>
    </message>
</context>
<context>
    <name>ostrel::StandingProgressView</name>
    <message>
        <source>Standing time today against your goal; click for your activity</source>
        <translation>Standing time today against your goal; click for your activity</translation>
    </message>
    <message>
        <source>Standing today %1</source>
        <translation>Standing today %1</translation>
    </message>
</context>
</TS>

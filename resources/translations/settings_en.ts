<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>ostrel::ActivityPage</name>
    <message>
        <source>Activity</source>
        <translation>Activity</translation>
    </message>
</context>
<context>
    <name>ostrel::ActivityView</name>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV files (*.csv)</translation>
    </message>
    <message>
        <source>Last 7 days</source>
        <translation>Last 7 days</translation>
    </message>
    <message>
        <source>Last 30 days</source>
        <translation>Last 30 days</translation>
    </message>
    <message>
        <source> min</source>
        <translation> min</translation>
    </message>
    <message>
        <source> cm</source>
        <translation> cm</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>Daily standing goal</source>
        <translation>Daily standing goal</translation>
    </message>
    <message>
        <source>Standing from</source>
        <translation>Standing from</translation>
    </message>
    <message>
        <source>Export days...</source>
        <translation>Export days...</translation>
    </message>
    <message>
        <source>Export intervals...</source>
        <translation>Export intervals...</translation>
    </message>
    <message>
        <source>Standing today: %1 of your %2 goal</source>
        <translation>Standing today: %1 of your %2 goal</translation>
    </message>
    <message numerus="yes">
        <source>Streak: %n day(s)</source>
        <translation>
            <numerusform>Streak: %n day</numerusform>
            <numerusform>Streak: %n days</numerusform>
        </translation>
    </message>
    <message>
        <source>Average transitions per day: %1</source>
        <translation>Average transitions per day: %1</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>Sitting</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>Standing</translation>
    </message>
    <message>
        <source>Away</source>
        <translation>Away</translation>
    </message>
</context>
<context>
    <name>ostrel::AntiCollisionHelpVC</name>
    <message>
        <source>Anti-collision function</source>
        <translation>Anti-collision function</translation>
    </message>
    <message>
        <source>When the desk meets an obstacle while moving, it stops and moves back a little, so that nothing is trapped or damaged.

The sensitivity sets how hard the desk must push before it reacts. &quot;High&quot; reacts to the lightest touch; choose &quot;Low&quot; if the desk stops by itself under a heavy load.

With the function off, the desk only stops when you let go of the key.</source>
        <translation>When the desk meets an obstacle while moving, it stops and moves back a little, so that nothing is trapped or damaged.

The sensitivity sets how hard the desk must push before it reacts. &quot;High&quot; reacts to the lightest touch; choose &quot;Low&quot; if the desk stops by itself under a heavy load.

With the function off, the desk only stops when you let go of the key.</translation>
    </message>
</context>
<context>
    <name>ostrel::AntiCollisionSetting</name>
    <message>
        <source>Low</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>Middle</source>
        <translation>Middle</translation>
    </message>
    <message>
        <source>High</source>
        <translation>High</translation>
    </message>
</context>
<context>
    <name>ostrel::AutomaticResetHelpVC</name>
    <message>
        <source>Automatic reset</source>
        <translation>Automatic reset</translation>
    </message>
    <message>
        <source>When the desk shows &quot;RST&quot;, it has lost track of its height and must be reset.

Clear the space under the desk, then press and hold the Down key until the desk reaches its lowest position, moves up slightly and stops. Release the key: the desk is ready again.

A reset also clears the height presets stored on the desk.</source>
        <translation>When the desk shows &quot;RST&quot;, it has lost track of its height and must be reset.

Clear the space under the desk, then press and hold the Down key until the desk reaches its lowest position, moves up slightly and stops. Release the key: the desk is ready again.

A reset also clears the height presets stored on the desk.</translation>
    </message>
</context>
<context>
    <name>ostrel::ColorManageView</name>
    <message>
        <source>Strip Light Settings</source>
        <translation>Strip Light Settings</translation>
    </message>
    <message>
        <source>On</source>
        <translation>On</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message>
        <source>Color scheme</source>
        <translation>Color scheme</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Color</translation>
    </message>
</context>
<context>
    <name>ostrel::ComingSoonPage</name>
    <message>
        <source>This feature is coming soon.</source>
        <translation>This feature is coming soon.</translation>
    </message>
</context>
<context>
    <name>ostrel::OMSettingPage</name>
    <message>
        <source>Back</source>
        <translation>Back</translation>
    </message>
</context>
<context>
    <name>ostrel::ShortcutComboRowView</name>
    <message>
        <source>Shortcut Combo</source>
        <translation>Shortcut Combo</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Alt + Cmd</source>
        <translation>Alt + Super</translation>
    </message>
    <message>
        <source>Ctrl + Cmd</source>
        <translation>Ctrl + Super</translation>
    </message>
</context>
<context>
    <name>ostrel::ShortcutCommandsView</name>
    <message>
        <source>Bind these commands to keys in your desktop&apos;s keyboard settings; each acts as the shortcut would.</source>
        <translation>Bind these commands to keys in your desktop&apos;s keyboard settings; each acts as the shortcut would.</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>Sitting</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>Standing</translation>
    </message>
    <message>
        <source>M1</source>
        <translation>M1</translation>
    </message>
    <message>
        <source>M2</source>
        <translation>M2</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Move to 110 cm</source>
        <translation>Move to 110 cm</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewHomeAutomation</name>
    <message>
        <source>Home automation</source>
        <translation>Home automation</translation>
    </message>
    <message>
        <source>Publish the desk to Home Assistant over MQTT</source>
        <translation>Publish the desk to Home Assistant over MQTT</translation>
    </message>
    <message>
        <source>Use TLS</source>
        <translation>Use TLS</translation>
    </message>
    <message>
        <source>Allow control from Home Assistant</source>
        <translation>Allow control from Home Assistant</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Unchanged</source>
        <translation>Unchanged</translation>
    </message>
    <message>
        <source>The system&apos;s certificates</source>
        <translation>The system&apos;s certificates</translation>
    </message>
    <message>
        <source>Broker</source>
        <translation>Broker</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>User name</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>CA file</source>
        <translation>CA file</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewIntelligentControl</name>
    <message>
        <source>Intelligent control</source>
        <translation>Intelligent control</translation>
    </message>
    <message>
        <source>Height presets</source>
        <translation>Height presets</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>Standing</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>Sitting</translation>
    </message>
    <message>
        <source>M1</source>
        <translation>M1</translation>
    </message>
    <message>
        <source>M2</source>
        <translation>M2</translation>
    </message>
    <message>
        <source>Current altitude</source>
        <translation>Current altitude</translation>
    </message>
    <message>
        <source>Anti-collision function</source>
        <translation>Anti-collision function</translation>
    </message>
    <message>
        <source>Sensitivity</source>
        <translation>Sensitivity</translation>
    </message>
    <message>
        <source>Automatic reset</source>
        <translation>Automatic reset</translation>
    </message>
    <message>
        <source>Please ensure there are no obstacles under the desk during this process.</source>
        <translation>Please ensure there are no obstacles under the desk during this process.</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Not set</translation>
    </message>
    <message>
        <source>%.1f cm</source>
        <translation>%.1f cm</translation>
    </message>
    <message>
        <source>%.1f  inches</source>
        <translation>%.1f  inches</translation>
    </message>
    <message>
        <source>%.1f inches</source>
        <translation>%.1f inches</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewReminderInterval</name>
    <message>
        <source>Reminder interval</source>
        <translation>Reminder interval</translation>
    </message>
    <message>
        <source>%1min</source>
        <translation>%1min</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1h</translation>
    </message>
    <message>
        <source>Single</source>
        <translation>Single</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Repeat</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>Customize</source>
        <translation>Customize</translation>
    </message>
    <message>
        <source>min</source>
        <translation>min</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSensitivity</name>
    <message>
        <source>Sensitivity</source>
        <translation>Sensitivity</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSetting</name>
    <message>
        <source>Sit-stand alternation</source>
        <translation>Sit-stand alternation</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>My Standing Desk</source>
        <translation>My Standing Desk</translation>
    </message>
    <message>
        <source>Kelvra Standing Desk</source>
        <translation>Kelvra Standing Desk</translation>
    </message>
    <message>
        <source>New working, New Living</source>
        <translation>New working, New Living</translation>
    </message>
    <message>
        <source>System settings</source>
        <translation>System settings</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewShortcutKeys</name>
    <message>
        <source>Up</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>Sitting</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>Standing</translation>
    </message>
    <message>
        <source>M1</source>
        <translation>M1</translation>
    </message>
    <message>
        <source>M2</source>
        <translation>M2</translation>
    </message>
    <message>
        <source>Shortcut keys</source>
        <translation>Shortcut keys</translation>
    </message>
    <message>
        <source>Alt + Cmd +</source>
        <translation>Alt + Super +</translation>
    </message>
    <message>
        <source>Ctrl + Cmd +</source>
        <translation>Ctrl + Super +</translation>
    </message>
    <message>
        <source>Shift +</source>
        <translation>Shift +</translation>
    </message>
    <message>
        <source>Global shortcuts are not available on this desktop.</source>
        <translation>Global shortcuts are not available on this desktop.</translation>
    </message>
    <message>
        <source>Another application already uses %1: these keys do nothing here.</source>
        <translation>Another application already uses %1: these keys do nothing here.</translation>
    </message>
    <message>
        <source>Shift is how text is selected</source>
        <translation>Shift is how text is selected</translation>
    </message>
    <message>
        <source>Shift + arrows and Shift + digits select and type text in every other application: with Shift, selecting lines in an editor moves the desk. Ctrl + Super keeps them apart.</source>
        <translation>Shift + arrows and Shift + digits select and type text in every other application: with Shift, selecting lines in an editor moves the desk. Ctrl + Super keeps them apart.</translation>
    </message>
    <message>
        <source>Use Ctrl + Super</source>
        <translation>Use Ctrl + Super</translation>
    </message>
    <message>
        <source>Use Shift anyway</source>
        <translation>Use Shift anyway</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSitStand</name>
    <message>
        <source>Sit-stand alternation</source>
        <translation>Sit-stand alternation</translation>
    </message>
    <message>
        <source>Sit-stand reminder</source>
        <translation>Sit-stand reminder</translation>
    </message>
    <message>
        <source>Reminder interval</source>
        <translation>Reminder interval</translation>
    </message>
    <message>
        <source>Notification sound</source>
        <translation>Notification sound</translation>
    </message>
    <message>
        <source>%1min</source>
        <translation>%1min</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1h</translation>
    </message>
    <message>
        <source>Turn on the sit-stand reminder first</source>
        <translation>Turn on the sit-stand reminder first</translation>
    </message>
    <message>
        <source>Pause reminders while I&apos;m away</source>
        <translation>Pause reminders while I&apos;m away</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSystemSetting</name>
    <message>
        <source>Remember my desk</source>
        <translation>Remember my desk</translation>
    </message>
    <message>
        <source>At launch, come back to the desk last used and connect it as soon as it is found</source>
        <translation>At launch, come back to the desk last used and connect it as soon as it is found</translation>
    </message>
    <message>
        <source>Shortcut keys</source>
        <translation>Shortcut keys</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Clear cache</source>
        <translation>Clear cache</translation>
    </message>
    <message>
        <source>Automatically clean when over 200MB</source>
        <translation>Automatically clean when over 200MB</translation>
    </message>
    <message>
        <source>Restore default settings</source>
        <translation>Restore default settings</translation>
    </message>
    <message>
        <source>Inches</source>
        <translation>Inches</translation>
    </message>
    <message>
        <source>Centimeters</source>
        <translation>Centimeters</translation>
    </message>
    <message>
        <source>Home automation</source>
        <translation>Home automation</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewUnit</name>
    <message>
        <source>Unit</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>Inches</source>
        <translation>Inches</translation>
    </message>
    <message>
        <source>Centimeters</source>
        <translation>Centimeters</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Confirm</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ostrel::ActivityPage</name>
    <message>
        <source>Activity</source>
        <translation>活动</translation>
    </message>
</context>
<context>
    <name>ostrel::ActivityView</name>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV 文件 (*.csv)</translation>
    </message>
    <message>
        <source>Last 7 days</source>
        <translation>最近 7 天</translation>
    </message>
    <message>
        <source>Last 30 days</source>
        <translation>最近 30 天</translation>
    </message>
    <message>
        <source> min</source>
        <translation> 分钟</translation>
    </message>
    <message>
        <source> cm</source>
        <translation> 厘米</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>Daily standing goal</source>
        <translation>每日站立目标</translation>
    </message>
    <message>
        <source>Standing from</source>
        <translation>站立高度起点</translation>
    </message>
    <message>
        <source>Export days...</source>
        <translation>按天导出...</translation>
    </message>
    <message>
        <source>Export intervals...</source>
        <translation>按时段导出...</translation>
    </message>
    <message>
        <source>Standing today: %1 of your %2 goal</source>
        <translation>今日站立：%1，目标 %2</translation>
    </message>
    <message numerus="yes">
        <source>Streak: %n day(s)</source>
        <translation>
            <numerusform>连续达标：%n 天</numerusform>
        </translation>
    </message>
    <message>
        <source>Average transitions per day: %1</source>
        <translation>每日平均坐站切换：%1 次</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>坐姿</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>站姿</translation>
    </message>
    <message>
        <source>Away</source>
        <translation>离开</translation>
    </message>
</context>
<context>
    <name>ostrel::AntiCollisionHelpVC</name>
    <message>
        <source>Anti-collision function</source>
        <translation>防碰撞功能</translation>
    </message>
    <message>
        <source>When the desk meets an obstacle while moving, it stops and moves back a little, so that nothing is trapped or damaged.

The sensitivity sets how hard the desk must push before it reacts. &quot;High&quot; reacts to the lightest touch; choose &quot;Low&quot; if the desk stops by itself under a heavy load.

With the function off, the desk only stops when you let go of the key.</source>
        <translation>桌子在移动中碰到障碍物时会停止并稍微回退，以免夹住或损坏物品。

灵敏度决定桌子受到多大阻力时才会反应。“高”对最轻微的触碰也会反应；如果桌子在重载下会自行停止，请选择“低”。

关闭此功能后，桌子只会在您松开按键时停止。</translation>
    </message>
</context>
<context>
    <name>ostrel::AntiCollisionSetting</name>
    <message>
        <source>Low</source>
        <translation>低</translation>
    </message>
    <message>
        <source>Middle</source>
        <translation>中</translation>
    </message>
    <message>
        <source>High</source>
        <translation>高</translation>
    </message>
</context>
<context>
    <name>ostrel::AutomaticResetHelpVC</name>
    <message>
        <source>Automatic reset</source>
        <translation>自动复位</translation>
    </message>
    <message>
        <source>When the desk shows &quot;RST&quot;, it has lost track of its height and must be reset.

Clear the space under the desk, then press and hold the Down key until the desk reaches its lowest position, moves up slightly and stops. Release the key: the desk is ready again.

A reset also clears the height presets stored on the desk.</source>
        <translation>当桌子显示“RST”时，说明它已无法确定自身高度，需要复位。

清空桌下空间，然后按住“下降”键，直到桌子降到最低位置、略微上升后停止。松开按键，桌子即可重新使用。

复位也会清除桌子上保存的高度预设。</translation>
    </message>
</context>
<context>
    <name>ostrel::ColorManageView</name>
    <message>
        <source>Strip Light Settings</source>
        <translation>灯带设置</translation>
    </message>
    <message>
        <source>On</source>
        <translation>开</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>灯光</translation>
    </message>
    <message>
        <source>Color scheme</source>
        <translation>配色方案</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>颜色</translation>
    </message>
</context>
<context>
    <name>ostrel::ComingSoonPage</name>
    <message>
        <source>This feature is coming soon.</source>
        <translation>此功能即将推出。</translation>
    </message>
</context>
<context>
    <name>ostrel::OMSettingPage</name>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
</context>
<context>
    <name>ostrel::ShortcutComboRowView</name>
    <message>
        <source>Shortcut Combo</source>
        <translation>快捷键组合</translation>
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
        <translation>在桌面的键盘设置中将这些命令绑定到按键，每条命令的作用与对应的快捷键相同。</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>上升</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下降</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>坐姿</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>站姿</translation>
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
        <translation>停止</translation>
    </message>
    <message>
        <source>Move to 110 cm</source>
        <translation>移动到 110 cm</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewHomeAutomation</name>
    <message>
        <source>Home automation</source>
        <translation>家庭自动化</translation>
    </message>
    <message>
        <source>Publish the desk to Home Assistant over MQTT</source>
        <translation>通过 MQTT 将升降桌发布到 Home Assistant</translation>
    </message>
    <message>
        <source>Use TLS</source>
        <translation>使用 TLS</translation>
    </message>
    <message>
        <source>Allow control from Home Assistant</source>
        <translation>允许 Home Assistant 控制</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Unchanged</source>
        <translation>未更改</translation>
    </message>
    <message>
        <source>The system&apos;s certificates</source>
        <translation>系统证书</translation>
    </message>
    <message>
        <source>Broker</source>
        <translation>代理服务器</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>用户名</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>CA file</source>
        <translation>CA 文件</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewIntelligentControl</name>
    <message>
        <source>Intelligent control</source>
        <translation>智能控制</translation>
    </message>
    <message>
        <source>Height presets</source>
        <translation>高度预设</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>站姿</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>坐姿</translation>
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
        <translation>当前高度</translation>
    </message>
    <message>
        <source>Anti-collision function</source>
        <translation>防碰撞功能</translation>
    </message>
    <message>
        <source>Sensitivity</source>
        <translation>灵敏度</translation>
    </message>
    <message>
        <source>Automatic reset</source>
        <translation>自动复位</translation>
    </message>
    <message>
        <source>Please ensure there are no obstacles under the desk during this process.</source>
        <translation>在此过程中，请确保桌下没有障碍物。</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>未设置</translation>
    </message>
    <message>
        <source>%.1f cm</source>
        <translation>%.1f 厘米</translation>
    </message>
    <message>
        <source>%.1f  inches</source>
        <translation>%.1f  英寸</translation>
    </message>
    <message>
        <source>%.1f inches</source>
        <translation>%.1f 英寸</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewReminderInterval</name>
    <message>
        <source>Reminder interval</source>
        <translation>提醒间隔</translation>
    </message>
    <message>
        <source>%1min</source>
        <translation>%1分钟</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1小时</translation>
    </message>
    <message>
        <source>Single</source>
        <translation>单次</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>重复</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
    <message>
        <source>Customize</source>
        <translation>自定义</translation>
    </message>
    <message>
        <source>min</source>
        <translation>分钟</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSensitivity</name>
    <message>
        <source>Sensitivity</source>
        <translation>灵敏度</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSetting</name>
    <message>
        <source>Sit-stand alternation</source>
        <translation>坐站交替</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>My Standing Desk</source>
        <translation>我的升降桌</translation>
    </message>
    <message>
        <source>Kelvra Standing Desk</source>
        <translation>Kelvra 升降桌</translation>
    </message>
    <message>
        <source>New working, New Living</source>
        <translation>新工作，新生活</translation>
    </message>
    <message>
        <source>System settings</source>
        <translation>系统设置</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewShortcutKeys</name>
    <message>
        <source>Up</source>
        <translation>上升</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下降</translation>
    </message>
    <message>
        <source>Sitting</source>
        <translation>坐姿</translation>
    </message>
    <message>
        <source>Standing</source>
        <translation>站姿</translation>
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
        <translation>快捷键</translation>
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
        <translation>此桌面环境不支持全局快捷键。</translation>
    </message>
    <message>
        <source>Another application already uses %1: these keys do nothing here.</source>
        <translation>其他应用已占用 %1：这些按键在本应用中无效。</translation>
    </message>
    <message>
        <source>Shift is how text is selected</source>
        <translation>Shift 是选择文本用的按键</translation>
    </message>
    <message>
        <source>Shift + arrows and Shift + digits select and type text in every other application: with Shift, selecting lines in an editor moves the desk. Ctrl + Super keeps them apart.</source>
        <translation>在其他所有应用中，Shift + 方向键和 Shift + 数字用于选择和输入文本：使用 Shift 时，在编辑器中选择几行文字就会移动桌子。Ctrl + Super 可以避免冲突。</translation>
    </message>
    <message>
        <source>Use Ctrl + Super</source>
        <translation>使用 Ctrl + Super</translation>
    </message>
    <message>
        <source>Use Shift anyway</source>
        <translation>仍然使用 Shift</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSitStand</name>
    <message>
        <source>Sit-stand alternation</source>
        <translation>坐站交替</translation>
    </message>
    <message>
        <source>Sit-stand reminder</source>
        <translation>坐站提醒</translation>
    </message>
    <message>
        <source>Reminder interval</source>
        <translation>提醒间隔</translation>
    </message>
    <message>
        <source>Notification sound</source>
        <translation>提醒声音</translation>
    </message>
    <message>
        <source>%1min</source>
        <translation>%1分钟</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1小时</translation>
    </message>
    <message>
        <source>Turn on the sit-stand reminder first</source>
        <translation>请先打开坐站提醒</translation>
    </message>
    <message>
        <source>Pause reminders while I&apos;m away</source>
        <translation>离开时暂停提醒</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewSystemSetting</name>
    <message>
        <source>Remember my desk</source>
        <translation>记住我的升降桌</translation>
    </message>
    <message>
        <source>At launch, come back to the desk last used and connect it as soon as it is found</source>
        <translation>启动时回到上次使用的升降桌，并在找到后自动连接</translation>
    </message>
    <message>
        <source>Shortcut keys</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>English</source>
        <translation>简体中文</translation>
    </message>
    <message>
        <source>Clear cache</source>
        <translation>清除缓存</translation>
    </message>
    <message>
        <source>Automatically clean when over 200MB</source>
        <translation>超过 200MB 时自动清理</translation>
    </message>
    <message>
        <source>Restore default settings</source>
        <translation>恢复默认设置</translation>
    </message>
    <message>
        <source>Inches</source>
        <translation>英寸</translation>
    </message>
    <message>
        <source>Centimeters</source>
        <translation>厘米</translation>
    </message>
    <message>
        <source>Home automation</source>
        <translation>家庭自动化</translation>
    </message>
</context>
<context>
    <name>ostrel::ViewUnit</name>
    <message>
        <source>Unit</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Inches</source>
        <translation>英寸</translation>
    </message>
    <message>
        <source>Centimeters</source>
        <translation>厘米</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>确认</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ostrel::HomeAutomationBridge</name>
    <message>
        <source>Enter the broker&apos;s host name.</source>
        <translation>请输入代理服务器的主机名。</translation>
    </message>
    <message>
        <source>The port must be a number from 1 to 65535.</source>
        <translation>端口必须是 1 到 65535 之间的数字。</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>已关闭</translation>
    </message>
    <message>
        <source>Connected to %1.</source>
        <translation>已连接到 %1。</translation>
    </message>
    <message>
        <source>%1 Trying again in %2 s.</source>
        <translation>%1 %2 秒后重试。</translation>
    </message>
    <message>
        <source>Connecting to %1…</source>
        <translation>正在连接 %1…</translation>
    </message>
</context>
<context>
    <name>ostrel::MqttClient</name>
    <message>
        <source>The MQTT client could not be created.</source>
        <translation>无法创建 MQTT 客户端。</translation>
    </message>
    <message>
        <source>The CA file %1 does not exist.</source>
        <translation>CA 文件 %1 不存在。</translation>
    </message>
    <message>
        <source>TLS could not be set up: %1</source>
        <translation>无法设置 TLS：%1</translation>
    </message>
    <message>
        <source>The broker refused the user name or password.</source>
        <translation>代理服务器拒绝了用户名或密码。</translation>
    </message>
    <message>
        <source>The broker&apos;s host name is unknown.</source>
        <translation>未知的代理服务器主机名。</translation>
    </message>
    <message>
        <source>The broker cannot be reached.</source>
        <translation>无法连接到代理服务器。</translation>
    </message>
    <message>
        <source>The TLS handshake failed: check the CA file and the host name.</source>
        <translation>TLS 握手失败：请检查 CA 文件和主机名。</translation>
    </message>
    <message>
        <source>The connection to the broker was lost.</source>
        <translation>与代理服务器的连接已断开。</translation>
    </message>
</context>
<context>
    <name>ostrel::RemoteCommand</name>
    <message>
        <source>Control from Home Assistant is not allowed.</source>
        <translation>不允许 Home Assistant 控制。</translation>
    </message>
    <message>
        <source>The desk is not connected.</source>
        <translation>升降桌未连接。</translation>
    </message>
    <message>
        <source>The target height is not a number.</source>
        <translation>目标高度不是数字。</translation>
    </message>
    <message>
        <source>The preset is not set.</source>
        <translation>该预设高度未设置。</translation>
    </message>
</context>
</TS>

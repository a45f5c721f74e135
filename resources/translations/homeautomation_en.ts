<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ostrel::HomeAutomationBridge</name>
    <message>
        <source>Enter the broker&apos;s host name.</source>
        <translation>Enter the broker&apos;s host name.</translation>
    </message>
    <message>
        <source>The port must be a number from 1 to 65535.</source>
        <translation>The port must be a number from 1 to 65535.</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>Connected to %1.</source>
        <translation>Connected to %1.</translation>
    </message>
    <message>
        <source>%1 Trying again in %2 s.</source>
        <translation>%1 Trying again in %2 s.</translation>
    </message>
    <message>
        <source>Connecting to %1…</source>
        <translation>Connecting to %1…</translation>
    </message>
</context>
<context>
    <name>ostrel::MqttClient</name>
    <message>
        <source>The MQTT client could not be created.</source>
        <translation>The MQTT client could not be created.</translation>
    </message>
    <message>
        <source>The CA file %1 does not exist.</source>
        <translation>The CA file %1 does not exist.</translation>
    </message>
    <message>
        <source>TLS could not be set up: %1</source>
        <translation>TLS could not be set up: %1</translation>
    </message>
    <message>
        <source>The broker refused the user name or password.</source>
        <translation>The broker refused the user name or password.</translation>
    </message>
    <message>
        <source>The broker&apos;s host name is unknown.</source>
        <translation>The broker&apos;s host name is unknown.</translation>
    </message>
    <message>
        <source>The broker cannot be reached.</source>
        <translation>The broker cannot be reached.</translation>
    </message>
    <message>
        <source>The TLS handshake failed: check the CA file and the host name.</source>
        <translation>The TLS handshake failed: check the CA file and the host name.</translation>
    </message>
    <message>
        <source>The connection to the broker was lost.</source>
        <translation>The connection to the broker was lost.</translation>
    </message>
</context>
<context>
    <name>ostrel::RemoteCommand</name>
    <message>
        <source>Control from Home Assistant is not allowed.</source>
        <translation>Control from Home Assistant is not allowed.</translation>
    </message>
    <message>
        <source>The desk is not connected.</source>
        <translation>The desk is not connected.</translation>
    </message>
    <message>
        <source>The target height is not a number.</source>
        <translation>The target height is not a number.</translation>
    </message>
    <message>
        <source>The preset is not set.</source>
        <translation>The preset is not set.</translation>
    </message>
</context>
</TS>

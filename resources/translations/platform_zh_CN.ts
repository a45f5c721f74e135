<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ostrel::PortalGlobalKeys</name>
    <message>
        <source>Move the desk up</source>
        <translation>升高桌面</translation>
    </message>
    <message>
        <source>Move the desk down</source>
        <translation>降低桌面</translation>
    </message>
    <message>
        <source>Sitting height</source>
        <translation>坐姿高度</translation>
    </message>
    <message>
        <source>Standing height</source>
        <translation>站姿高度</translation>
    </message>
    <message>
        <source>M1 height</source>
        <translation>M1 高度</translation>
    </message>
    <message>
        <source>M2 height</source>
        <translation>M2 高度</translation>
    </message>
</context>
</TS>

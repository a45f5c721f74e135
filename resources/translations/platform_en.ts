<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>ostrel::PortalGlobalKeys</name>
    <message>
        <source>Move the desk up</source>
        <translation>Move the desk up</translation>
    </message>
    <message>
        <source>Move the desk down</source>
        <translation>Move the desk down</translation>
    </message>
    <message>
        <source>Sitting height</source>
        <translation>Sitting height</translation>
    </message>
    <message>
        <source>Standing height</source>
        <translation>Standing height</translation>
    </message>
    <message>
        <source>M1 height</source>
        <translation>M1 height</translation>
    </message>
    <message>
        <source>M2 height</source>
        <translation>M2 height</translation>
    </message>
</context>
</TS>

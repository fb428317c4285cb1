<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CameraView</name>
    <message>
        <source>Rear camera</source>
        <translation>Rear camera</translation>
    </message>
    <message>
        <source>Check the surroundings of the car yourself</source>
        <translation>Check the surroundings of the car yourself</translation>
    </message>
    <message>
        <source>Check surroundings</source>
        <translation>Check surroundings</translation>
    </message>
    <message>
        <source>%1 ft</source>
        <translation>%1 ft</translation>
    </message>
    <message>
        <source>%1 m</source>
        <translation>%1 m</translation>
    </message>
</context>
<context>
    <name>FullScreen</name>
    <message>
        <source>Head unit</source>
        <translation>Head unit</translation>
    </message>
</context>
<context>
    <name>StatusColumn</name>
    <message>
        <source>No module</source>
        <translation>No module</translation>
    </message>
    <message>
        <source>Simulator</source>
        <translation>Simulator</translation>
    </message>
    <message>
        <source>Recorded</source>
        <translation>Recorded</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CameraView</name>
    <message>
        <source>Rear camera</source>
        <translation>Rückfahrkamera</translation>
    </message>
    <message>
        <source>Check the surroundings of the car yourself</source>
        <translation>Prüfen Sie selbst die Umgebung des Fahrzeugs</translation>
    </message>
    <message>
        <source>Check surroundings</source>
        <translation>Umgebung prüfen</translation>
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
        <translation>Bordsystem</translation>
    </message>
</context>
<context>
    <name>StatusColumn</name>
    <message>
        <source>No module</source>
        <translation>Kein Modul</translation>
    </message>
    <message>
        <source>Simulator</source>
        <translation>Simulator</translation>
    </message>
    <message>
        <source>Recorded</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>CameraView</name>
    <message>
        <source>Rear camera</source>
        <translation>Caméra de recul</translation>
    </message>
    <message>
        <source>Check the surroundings of the car yourself</source>
        <translation>Vérifiez vous-même les alentours du véhicule</translation>
    </message>
    <message>
        <source>Check surroundings</source>
        <translation>Vérifiez les alentours</translation>
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
        <translation>Système de bord</translation>
    </message>
</context>
<context>
    <name>StatusColumn</name>
    <message>
        <source>No module</source>
        <translation>Pas de module</translation>
    </message>
    <message>
        <source>Simulator</source>
        <translation>Simulateur</translation>
    </message>
    <message>
        <source>Recorded</source>
        <translation>Enregistré</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>En direct</translation>
    </message>
</context>
</TS>

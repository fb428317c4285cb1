<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Translator</name>
    <message>
        <source>Gauges</source>
        <translation>Instruments</translation>
    </message>
    <message>
        <source>Vehicle</source>
        <translation>Véhicule</translation>
    </message>
    <message>
        <source>Climate</source>
        <translation>Climat</translation>
    </message>
    <message>
        <source>Parking</source>
        <translation>Stationnement</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Avant</translation>
    </message>
    <message>
        <source>Rear</source>
        <translation>Arrière</translation>
    </message>
</context>
</TS>

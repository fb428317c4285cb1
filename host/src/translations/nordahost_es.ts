<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>Translator</name>
    <message>
        <source>Gauges</source>
        <translation>Indicadores</translation>
    </message>
    <message>
        <source>Vehicle</source>
        <translation>Vehículo</translation>
    </message>
    <message>
        <source>Climate</source>
        <translation>Clima</translation>
    </message>
    <message>
        <source>Parking</source>
        <translation>Aparcamiento</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Delante</translation>
    </message>
    <message>
        <source>Rear</source>
        <translation>Detrás</translation>
    </message>
</context>
</TS>

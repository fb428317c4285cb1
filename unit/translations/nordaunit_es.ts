<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>CameraView</name>
    <message>
        <source>Rear camera</source>
        <translation>Cámara trasera</translation>
    </message>
    <message>
        <source>Check the surroundings of the car yourself</source>
        <translation>Compruebe usted mismo el entorno del vehículo</translation>
    </message>
    <message>
        <source>Check surroundings</source>
        <translation>Compruebe el entorno</translation>
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
        <translation>Sistema de a bordo</translation>
    </message>
</context>
<context>
    <name>StatusColumn</name>
    <message>
        <source>No module</source>
        <translation>Sin módulo</translation>
    </message>
    <message>
        <source>Simulator</source>
        <translation>Simulador</translation>
    </message>
    <message>
        <source>Recorded</source>
        <translation>Grabado</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>En vivo</translation>
    </message>
</context>
</TS>

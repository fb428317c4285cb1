import QtQuick 2.15

Item {
    id: corner

    property QtObject reading
    property real dialX: 38
    property alias fullScale: gauge.fullScale

    width: 302
    height: 224

    Gauge {
        id: gauge

        x: corner.dialX; width: 224; height: 224
        reading: corner.reading
        face: "qrc:/icon/gaugesicon/gagus_braking_2.png"
        needle: "qrc:/icon/gaugesicon/gagus_pointer_medium.png"
        pivot: 113
        fullScale: 250
    }
    Text {
        x: 41; y: 130; width: 220; height: 48
        text: corner.reading.value
        color: "#f4f7fa"
        font { family: "Arial"; pointSize: 27; bold: true }
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    Text {
        y: 182; width: 302; height: 34
        text: corner.reading.title
        color: "#9db0c2"
        font { family: "Arial"; pointSize: 18 }
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
}

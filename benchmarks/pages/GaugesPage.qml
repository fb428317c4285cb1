import QtQuick 2.15
import Gauges 1.0

Rectangle {
    id: page

    readonly property color bright: "#f4f7fa"
    readonly property color dim: "#9db0c2"

    width: 1280
    height: 720
    color: "#0d131a"

    Rectangle {
        x: 128
        width: 1152
        height: 89
        color: "black"

        Text {
            x: 36; y: 14; height: 60
            text: "Gauges"
            color: page.bright
            font { family: "Arial"; pointSize: 30 }
            verticalAlignment: Text.AlignVCenter
        }
        Text {
            x: 692; y: 20; width: 424; height: 50
            text: Module.status
            color: page.bright
            font { family: "Arial"; pointSize: 22 }
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
    }

    Gauge {
        x: 515; y: 124; width: 370; height: 370
        reading: Module.centre
        face: "qrc:/icon/gaugesicon/gagus_mph_1.png"
        needle: "qrc:/icon/gaugesicon/gagus_pointer_large.png"
        pivot: 186
        firstAngle: -180; lastAngle: 90
    }
    CornerGauge { x: 192; y: 131; reading: Module.topLeft }
    CornerGauge { x: 916; y: 131; reading: Module.topRight; dialX: 37 }
    CornerGauge { x: 192; y: 360; reading: Module.bottomLeft }
    CornerGauge { x: 916; y: 360; reading: Module.bottomRight; dialX: 37; fullScale: 100 }

    Repeater {
        model: [Qt.point(433, 323), Qt.point(378, 310), Qt.point(335, 273), Qt.point(313, 221),
                Qt.point(318, 165), Qt.point(347, 116), Qt.point(396, 87), Qt.point(452, 82),
                Qt.point(504, 104), Qt.point(541, 147), Qt.point(554, 202)]

        Text {
            x: 248 + modelData.x; y: 91 + modelData.y; width: 40; height: 34
            text: 10 * index
            color: "#c9d6e2"
            font { family: "Arial"; pointSize: 16 }
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }

    Text {
        x: 571; y: 496; width: 260; height: 44
        text: Module.centre.value
        color: page.bright
        font.pixelSize: 30
        fontSizeMode: Text.HorizontalFit
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    Text {
        x: 571; y: 540; width: 260; height: 36
        text: Module.centre.title
        color: page.dim
        font.pixelSize: 30
        fontSizeMode: Text.HorizontalFit
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    Image {
        x: 731; y: 340; width: 96; height: 48
        source: Module.shifts ? "qrc:/icon/gaugesicon/gauge_indicator_on.png"
                              : "qrc:/icon/gaugesicon/gauge_indicator_off.png"
        fillMode: Image.Pad
    }
    Text {
        x: 714; y: 390; width: 130; height: 40
        visible: Module.peakShown
        text: Module.peak
        color: page.bright
        font { family: "Arial"; pointSize: 19; bold: true }
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    NavigationBar { x: 128; y: 620 }
}

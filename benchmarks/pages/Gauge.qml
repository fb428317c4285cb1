import QtQuick 2.15

Item {
    id: gauge

    property QtObject reading
    property url face
    property url needle
    property real pivot
    property real firstAngle: -105
    property real lastAngle: 105
    property real fullScale: 100

    signal touched

    Image { source: gauge.face }

    Image {
        id: pointer

        x: gauge.pivot - width / 2
        y: gauge.pivot + width / 2 - height
        source: gauge.needle

        transform: Rotation {
            origin { x: pointer.width / 2; y: pointer.height - pointer.width / 2 }
            angle: gauge.firstAngle + Math.min(gauge.reading.position / gauge.fullScale, 1)
                   * (gauge.lastAngle - gauge.firstAngle)

            Behavior on angle {
                NumberAnimation { duration: 250; easing.type: Easing.OutCubic }
            }
        }
    }

    MouseArea {
        anchors.fill: parent
        onPressed: gauge.touched()
    }
}

import QtQuick 2.15

Rectangle {
    id: bar

    property int current: 0

    signal pageRequested(int page)

    width: 1152
    height: 88
    color: "#131a22"

    Row {
        Repeater {
            model: ["norda_btn_gagus", "norda_btn_vehicle", "norda_btn_air", "norda_btn_radar",
                    "icon_settings", "icon_message"]

            MouseArea {
                id: key

                readonly property bool isOn: pressed || index === bar.current

                width: 192; height: 88
                onClicked: bar.pageRequested(index)

                Image {
                    anchors.centerIn: parent
                    source: "qrc:/icon/baricon/" + modelData + (key.isOn ? "_p.png" : "_n.png")
                }
            }
        }
    }
}

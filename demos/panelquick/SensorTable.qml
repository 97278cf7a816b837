// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.9

// Names and values of the sensors.
ListView {
    id: table
    clip: true
    interactive: false
    model: [
        { sensor: qsTr("Sensor"), value: qsTr("Value") },
        { sensor: qsTr("Boiler"), value: qsTr("62.5 °C") },
        { sensor: qsTr("Flow"), value: qsTr("48.0 °C") },
        { sensor: qsTr("Return"), value: qsTr("39.5 °C") },
        { sensor: qsTr("Outside"), value: qsTr("-2.0 °C") }
    ]
    delegate: Row {
        Repeater {
            model: [modelData.sensor, modelData.value]
            delegate: Rectangle {
                width: table.width / 2
                height: 28
                border.color: "#c0c0c0"
                Text {
                    anchors.centerIn: parent
                    text: modelData
                }
            }
        }
    }
}

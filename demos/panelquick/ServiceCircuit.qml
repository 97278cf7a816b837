// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.12
import QtQuick.Controls 2.5
import QtQuick.Layouts 1.3

// How the circuit heats.
Page {
    title: qsTr("Circuit")

    GridLayout {
        columns: 2
        anchors.fill: parent

        RadioButton { text: qsTr("Heating"); checked: true }
        RadioButton { text: qsTr("Cooling") }
        Switch { text: qsTr("Holiday") }
        Button { text: qsTr("Calibrate"); enabled: false }
        Label { text: qsTr("Mode") }
        ComboBox { model: [qsTr("Comfort"), qsTr("Economy"), qsTr("Frost protection only")] }
        Label { text: qsTr("Pause in hours") }
        SpinBox { to: 24 }
        Label { text: qsTr("Heating curve") }
        Slider { stepSize: 0.1 }
        Label { text: qsTr("Pump speed") }
        Dial { stepSize: 0.1 }
    }
}

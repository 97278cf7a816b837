// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.12
import QtQuick.Controls 2.5

// What a technician lets the device do to see that it is well.
Page {
    title: qsTr("Diagnosis")

    Column {
        CheckBox { text: qsTr("Write a protocol") }
        Button { text: qsTr("Test the pump") }
        Button { text: qsTr("Test the valve") }
    }
}

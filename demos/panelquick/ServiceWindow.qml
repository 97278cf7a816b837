// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.12
import QtQuick.Controls 2.5
import QtQuick.Layouts 1.3

// What the technician who looks after the device works with: a page each for the circuit, the weekly
// plan, the log and the diagnosis.
ApplicationWindow {
    id: service
    width: 480
    height: 560
    title: qsTr("Service")

    function showStatus(text) {
        status.text = text
    }

    header: TabBar {
        id: bar
        currentIndex: pages.currentIndex
        TabButton { text: qsTr("Circuit") }
        TabButton { text: qsTr("Plan") }
        TabButton { text: qsTr("Log") }
        TabButton { text: qsTr("Diagnosis") }
    }

    footer: Label {
        id: status
        padding: 6
        text: qsTr("Ready")
    }

    // For those who know it: nothing on the screen shows it.
    Shortcut {
        sequence: "Ctrl+E"
        onActivated: showStatus(qsTr("Venting"))
    }

    SwipeView {
        id: pages
        anchors.fill: parent
        anchors.margins: 8
        clip: true
        interactive: false // whoever works here wears gloves
        currentIndex: bar.currentIndex

        ServiceCircuit { }
        ServicePlan { }
        ServiceLog { onDone: showStatus(text) }
        ServiceDiagnosis { }
    }
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.12
import QtQuick.Controls 2.5
import QtQuick.Layouts 1.3

// When the circuit heats.
Page {
    title: qsTr("Plan")

    ColumnLayout {
        anchors.fill: parent

        ListView {
            Accessible.name: qsTr("Days")
            Layout.fillWidth: true
            Layout.preferredHeight: 130
            model: ListModel {
                ListElement { name: qsTr("Workday") }
                ListElement { name: qsTr("Weekend") }
                ListElement { name: qsTr("Holiday") }
            }
            delegate: ItemDelegate {
                width: ListView.view.width
                text: name
                highlighted: ListView.isCurrentItem
                onClicked: ListView.view.currentIndex = index
            }
        }
        TableView {
            Accessible.name: qsTr("Times")
            Layout.fillWidth: true
            Layout.fillHeight: true
            model: ListModel {
                ListElement { times: qsTr("06:00 to 09:00") }
                ListElement { times: qsTr("16:00 to 22:00") }
            }
            delegate: ItemDelegate {
                implicitWidth: 160
                text: times
            }
        }
        Button { text: qsTr("Copy to..."); onClicked: target.open() }
        Button { text: qsTr("Rooms"); onClicked: rooms.open() }
    }

    Popup {
        id: target
        anchors.centerIn: parent
        Column {
            CheckBox { text: qsTr("Saturday") }
            CheckBox { text: qsTr("Sunday") }
        }
    }

    Drawer {
        id: rooms
        width: 200
        height: parent.height
        Column {
            RadioButton { text: qsTr("Hall") }
            RadioButton { text: qsTr("Living room") }
        }
    }
}

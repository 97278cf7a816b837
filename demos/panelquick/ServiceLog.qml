// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.12
import QtQuick.Controls 2.5
import QtQuick.Layouts 1.3

// What was done to the device.
Page {
    id: page
    title: qsTr("Log")

    signal done(string text)

    ColumnLayout {
        anchors.fill: parent

        TextArea {
            Layout.fillWidth: true
            Layout.fillHeight: true
            placeholderText: qsTr("Note for the next visit")
        }
        Rectangle {
            implicitWidth: 120
            implicitHeight: 60
            color: "#d0d8e8"
            Label {
                anchors.centerIn: parent
                text: qsTr("1.4 bar")
            }
            MouseArea {
                objectName: "pressure"
                anchors.fill: parent
                onClicked: page.done(qsTr("Highest pressure reset"))
            }
        }
        Text {
            objectName: "manual"
            text: qsTr("<a href=\"manual\">Manual</a>")
            onLinkActivated: page.done(qsTr("Manual opened"))
        }
    }
}

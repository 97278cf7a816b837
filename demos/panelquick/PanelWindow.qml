// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.9
import QtQuick.Controls 2.3
import QtQuick.Layouts 1.3

// The main window of the panel: menus, tool bar, settings of one heating circuit, table of sensors.
ApplicationWindow {
    id: window
    width: 760
    height: 420
    visible: true
    title: qsTr("Heating panel")

    function showStatus(text) {
        status.text = text
    }

    menuBar: MenuBar {
        PanelMenu {
            title: qsTr("&File")
            Action { text: qsTr("&Load profile"); onTriggered: showStatus(qsTr("Profile loaded")) }
            Action { text: qsTr("&Save profile"); onTriggered: showStatus(qsTr("Profile saved")) }
            PanelMenu {
                title: qsTr("&Export")
                Action { text: qsTr("As &table"); onTriggered: showStatus(qsTr("Exported as table")) }
                Action { text: qsTr("As &chart"); onTriggered: showStatus(qsTr("Exported as chart")) }
            }
            MenuSeparator { }
            Action { text: qsTr("&Quit"); onTriggered: Qt.quit() }
        }
        PanelMenu {
            title: qsTr("&View")
            Action { text: qsTr("Show &alarms"); checkable: true }
            Action { text: qsTr("Show &trends"); checkable: true }
        }
        PanelMenu {
            title: qsTr("&Help")
            Action { text: qsTr("&About this device"); onTriggered: about.open() }
        }
    }

    header: ToolBar {
        Row {
            ToolButton { text: qsTr("Refresh"); onClicked: showStatus(qsTr("Values refreshed")) }
            ToolButton { text: qsTr("Print"); onClicked: showStatus(qsTr("Printed")) }
            ToolButton { text: qsTr("Service..."); onClicked: service.createObject(window).show() }
        }
    }

    footer: Label {
        id: status
        padding: 6
        text: qsTr("Ready")
    }

    RowLayout {
        anchors.fill: parent
        anchors.margins: 8

        GroupBox {
            title: qsTr("Heating circuit")
            Layout.fillHeight: true

            ColumnLayout {
                anchors.fill: parent
                spacing: 0

                GridLayout {
                    columns: 2
                    Label { text: qsTr("Room") }
                    PanelTextInput { id: roomName; placeholderText: qsTr("Room name") }
                    Label { text: qsTr("Set point") }
                    PanelTextInput { id: setPoint; placeholderText: qsTr("Set point in °C") }
                }
                RowLayout {
                    PanelCheckBox { id: nightSetback; text: qsTr("&Night setback") }
                    PanelCheckBox { id: frostProtection; text: qsTr("F&rost protection") }
                }
                PanelCheckBox { text: qsTr("&Pump schedule"); tristate: true }
                Item { Layout.fillHeight: true }
                RowLayout {
                    Button {
                        text: qsTr("App&ly")
                        onClicked: showStatus(qsTr("Applied to %1").arg(roomName.text))
                    }
                    Button {
                        text: qsTr("R&eset")
                        onClicked: {
                            roomName.clear()
                            setPoint.clear()
                            nightSetback.checked = false
                            frostProtection.checked = false
                            showStatus(qsTr("Reset"))
                        }
                    }
                    Button { text: qsTr("&Settings..."); onClicked: settings.open() }
                }
            }
        }

        SensorTable {
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }

    Component {
        id: service
        ServiceWindow { onClosing: destroy() }
    }

    SettingsDialog {
        id: settings
        x: window.width - width - 16
    }

    Dialog {
        id: about
        x: window.width - width - 16
        modal: true
        title: qsTr("About")
        Column {
            Label { text: qsTr("Heating panel, firmware 4.2") }
            Button { text: qsTr("Close"); onClicked: about.close() }
        }
    }
}

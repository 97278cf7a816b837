// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.9
import QtQuick.Controls 2.3

// Settings of the device as a whole.
Dialog {
    title: qsTr("Settings")
    modal: true
    standardButtons: Dialog.Ok | Dialog.Cancel

    Column {
        spacing: 4
        PanelCheckBox { text: qsTr("Key &clicks") }
        PanelCheckBox { text: qsTr("Summer &time") }
        PanelTextInput { placeholderText: qsTr("Time server") }
    }
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.9
import QtQuick.Controls 2.3
import QtQuick.Templates 2.3 as T

// A menu whose items are drawn here, in the panel's own way.
Menu {
    id: menu

    delegate: T.MenuItem {
        id: item
        implicitWidth: 200
        implicitHeight: 32
        leftPadding: 28

        contentItem: Text {
            text: item.text.replace("&", "")
            verticalAlignment: Text.AlignVCenter
        }
        indicator: Text {
            x: 8
            height: item.height
            verticalAlignment: Text.AlignVCenter
            visible: item.checked
            text: "\u2713"
        }
        arrow: Text {
            x: item.width - width - 8
            height: item.height
            verticalAlignment: Text.AlignVCenter
            visible: item.subMenu !== null
            text: "\u203a"
        }
        background: Rectangle {
            color: item.highlighted ? "#d0d8e8" : "#ffffff"
        }
    }
}

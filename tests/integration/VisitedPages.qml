// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.12
import QtQuick.Controls 2.5

ApplicationWindow {
    width: 300
    height: 200
    visible: true
    title: "Pages"

    Component {
        id: boxes
        Page {
            title: "Boxes"
            Column {
                CheckBox { text: "Red" }
                CheckBox { text: "Green" }
                CheckBox { text: "Blue" }
            }
        }
    }

    header: Button {
        text: stack.depth === 1 ? "Visit" : "Back"
        onClicked: stack.depth === 1 ? stack.push(boxes, StackView.Immediate) : stack.pop(StackView.Immediate)
    }

    StackView {
        id: stack
        anchors.fill: parent
        initialItem: Item { }
    }
}

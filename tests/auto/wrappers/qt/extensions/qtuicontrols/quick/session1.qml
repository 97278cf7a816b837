// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Every kind of control of the first generation, and a program that changes them by itself meanwhile.
import QtQuick 2.15
import QtQuick.Controls 1.4
import QtQuick.Window 2.15

ApplicationWindow {
    id: window
    width: 900
    height: 700
    objectName: "window"

    property int rounds: 0

    function setEverything(n) {
        var even = n % 2 === 0
        noiseCheck.checked = even
        noiseSwitch.checked = even
        noiseRadio.checked = even
        noiseButton.clicked()
        noiseButton.checked = even
        noiseField.text = "by the program " + n
        noiseArea.text = "by the program " + n
        noiseCombo.currentIndex = n % 3
        noiseSpin.value = n % 50
        noiseSlider.value = (n % 10) / 10
        noiseTable.currentRow = n % 2
        noiseTabs.currentIndex = n % 2
        noiseAction.trigger()
        field.text = "by the program " + n
        slider.value = 0.5
        spin.value = 5
    }

    Timer {
        interval: 5
        repeat: true
        running: true
        onTriggered: { setEverything(++window.rounds) }
    }

    Action { id: saveAction; objectName: "saveAction"; text: "&Save"; shortcut: "Ctrl+S"; onTriggered: setEverything(1) }
    Action { id: noiseAction; objectName: "noiseAction"; text: "Noise" }

    menuBar: MenuBar {
        Menu {
            title: "&File"
            MenuItem { objectName: "saveItem"; action: saveAction }
            MenuItem { objectName: "openItem"; text: "&Open"; onTriggered: setEverything(3) }
        }
    }

    toolBar: ToolBar {
        Row {
            ToolButton { objectName: "saveTool"; action: saveAction }
            ToolButton { objectName: "plainTool"; text: "Tool"; onClicked: setEverything(4) }
        }
    }

    Menu {
        id: contextMenu
        objectName: "contextMenu"
        MenuItem { objectName: "contextItem"; text: "From" }
    }

    Column {
        x: 10; y: 10; width: 190; spacing: 4
        Button { objectName: "button"; text: "Button"; onClicked: setEverything(5) }
        Button {
            objectName: "reset"
            text: "Reset"
            onClicked: {
                setEverything(6)
                check.checked = !check.checked
                box.checked = !box.checked
                combo.currentIndex = 0
                tabs.currentIndex = 0
                table.currentRow = 0
                area.text = "reset"
            }
        }
        Button { objectName: "checkable"; text: "Checkable"; checkable: true }
        Button { objectName: "disabled"; text: "Disabled"; enabled: false }
        CheckBox { id: check; objectName: "check"; text: "Check"; onClicked: setEverything(9) }
        CheckBox { objectName: "tri"; text: "Tri"; partiallyCheckedEnabled: true }
        Switch { objectName: "switch" }
        ExclusiveGroup { id: group }
        RadioButton { objectName: "radio1"; text: "One"; checked: true; exclusiveGroup: group }
        RadioButton { objectName: "radio2"; text: "Two"; exclusiveGroup: group }
        ComboBox { id: combo; objectName: "combo"; model: ["one", "two", "three"]; onActivated: setEverything(13) }
        ComboBox { objectName: "editCombo"; editable: true; model: ["one", "two", "three"] }
        TextField { id: field; objectName: "field"; onAccepted: setEverything(15) }
        TextField { objectName: "plainField" }
        TextArea { id: area; objectName: "area"; width: 180; height: 60; onTextChanged: noiseArea.text = text }
        SpinBox { id: spin; objectName: "spin" }
        SpinBox { objectName: "plainSpin"; maximumValue: 1000 }
        Slider { id: slider; objectName: "slider"; width: 180; onValueChanged: noiseSlider.value = value }
    }
    Column {
        x: 210; y: 10; width: 300; spacing: 4
        GroupBox {
            id: box; objectName: "box"; title: "Group"; checkable: true
            Button { objectName: "boxed"; text: "In the group" }
        }
        TableView {
            id: table
            objectName: "table"
            width: 280; height: 120
            sortIndicatorVisible: true
            TableViewColumn { role: "name"; title: "Name"; width: 100 }
            TableViewColumn { role: "size"; title: "Size"; width: 100 }
            model: ListModel { ListElement { name: "a"; size: "1" } ListElement { name: "b"; size: "2" } ListElement { name: "c"; size: "3" } }
        }
        TabView {
            id: tabs
            objectName: "tabs"
            width: 280; height: 100
            Tab { title: "Front"; objectName: "tabOne"; Item { Button { objectName: "onTab1"; text: "First" } } }
            Tab { title: "Back"; objectName: "tabTwo"; Item { Button { objectName: "onTab2"; text: "Second" } } }
        }
        Label { objectName: "link"; text: "see <a href=\"http://example.org\">this</a>"; onLinkActivated: setEverything(20) }
        Calendar { objectName: "calendar"; width: 200; height: 180 }
        MouseArea { objectName: "contextArea"; width: 100; height: 50; acceptedButtons: Qt.RightButton; onClicked: contextMenu.popup() }
    }
    Column {
        x: 600; y: 10; width: 180; spacing: 2
        CheckBox { id: noiseCheck; objectName: "noiseCheck"; text: "N" }
        Switch { id: noiseSwitch; objectName: "noiseSwitch" }
        RadioButton { id: noiseRadio; objectName: "noiseRadio"; text: "N" }
        Button { id: noiseButton; objectName: "noiseButton"; text: "N"; checkable: true }
        TextField { id: noiseField; objectName: "noiseField" }
        TextArea { id: noiseArea; objectName: "noiseArea"; width: 180; height: 30 }
        ComboBox { id: noiseCombo; objectName: "noiseCombo"; model: 3 }
        SpinBox { id: noiseSpin; objectName: "noiseSpin" }
        Slider { id: noiseSlider; objectName: "noiseSlider"; width: 180 }
        TableView { id: noiseTable; objectName: "noiseTable"; width: 180; height: 60; model: 2; TableViewColumn { title: "N" } }
        TabView { id: noiseTabs; objectName: "noiseTabs"; width: 180; height: 50; Tab { title: "1" } Tab { title: "2" } }
    }
}

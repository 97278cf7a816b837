// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Every kind of control of Qt Quick, and a program that changes all of them by itself meanwhile.
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15

ApplicationWindow {
    id: window
    width: 1000
    height: 800
    objectName: "window"
    visible: false

    /** How often the program has changed everything by itself. */
    property int rounds: 0
    property int resets: 0

    function setEverything(n) {
        var even = n % 2 === 0
        noiseCheck.checked = even
        noiseSwitch.checked = even
        noiseRadio.checked = even
        noiseButton.clicked()
        noiseButton.toggle()
        noiseField.text = "by the program " + n
        noiseArea.text = "by the program " + n
        noiseCombo.currentIndex = n % 3
        noiseCombo.activated(n % 3)
        noiseSpin.value = n % 50
        noiseSpin.valueModified()
        noiseSlider.value = (n % 10) / 10
        noiseDial.value = (n % 10) / 10
        noiseRange.first.value = (n % 4) / 10
        noiseTumbler.currentIndex = n % 5
        noiseList.currentIndex = n % 4
        noiseAction.trigger()
        noiseMenuItem.triggered()
        noiseDelay.checked = even
        rows.setProperty(0, "name", "row " + n)
        rows.append({ name: "more" })
        rows.remove(rows.count - 1)
        field.text = "by the program " + n
        slider.value = 0.5
        spin.value = 5
        tumbler.currentIndex = 0
        noiseSwipe.currentIndex = n % 2
        noiseTabs.currentIndex = n % 2
    }

    Timer {
        interval: 5
        repeat: true
        running: true
        onTriggered: { setEverything(++window.rounds) }
    }

    NumberAnimation {
        target: animatedSlider
        property: "value"
        from: 0; to: 1; duration: 50
        loops: Animation.Infinite
        running: true
    }

    Shortcut { objectName: "shortcut"; sequence: "Ctrl+K"; onActivated: setEverything(1) }
    Action {
        id: saveAction
        objectName: "saveAction"
        text: "&Save"
        shortcut: "Ctrl+S"
        onTriggered: setEverything(2)
    }
    Action { id: noiseAction; objectName: "noiseAction"; text: "Noise" }

    menuBar: MenuBar {
        objectName: "menuBar"
        delegate: MenuBarItem { objectName: "bar" + text.replace("&", "") }
        Menu {
            id: fileMenu
            objectName: "fileMenu"
            title: "&File"
            MenuItem { objectName: "saveItem"; action: saveAction }
            MenuItem { objectName: "openItem"; text: "&Open"; onTriggered: setEverything(3) }
            MenuItem { objectName: "checkItem"; text: "Check"; checkable: true }
            MenuItem { objectName: "disabledItem"; text: "Disabled"; enabled: false }
            Menu {
                objectName: "subMenu"
                title: "More"
                MenuItem { objectName: "subItem"; text: "Deep" }
            }
        }
    }

    header: ToolBar {
        Row {
            ToolButton { objectName: "saveTool"; action: saveAction }
            ToolButton { objectName: "plainTool"; text: "Tool"; onClicked: setEverything(4) }
        }
    }

    Menu {
        objectName: "noiseMenu"
        MenuItem { id: noiseMenuItem; objectName: "noiseMenuItem"; text: "Noise" }
    }
    Menu {
        id: contextMenu
        objectName: "contextMenu"
        MenuItem { objectName: "contextItem"; text: "From context" }
    }

    Dialog {
        id: dialog
        objectName: "dialog"
        closePolicy: Popup.NoAutoClose
        modal: true
        title: "Dialog"
        x: 600; y: 100; width: 300; height: 250
        footer: DialogButtonBox {
            Button { objectName: "ok"; text: "OK"; DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole }
        }
        CheckBox { objectName: "dialogCheck"; text: "In the dialog" }
    }

    Popup {
        id: popup
        objectName: "popup"
        x: 600; y: 100; width: 200; height: 120
        modal: false
        Button { objectName: "popupButton"; text: "In the popup" }
    }

    Drawer {
        id: drawer
        objectName: "drawer"
        width: 200
        height: window.height
        Button { objectName: "drawerButton"; y: 100; text: "In the drawer" }
    }

    Item { objectName: "ground"; anchors.fill: parent; z: -1 }

    // One column of things to operate, 200 wide each.
    Column {
        x: 10; y: 10; width: 190; spacing: 2
        Button { objectName: "button"; text: "Button"; onClicked: setEverything(5) }
        Button {
            objectName: "reset"
            text: "Reset"
            onClicked: {
                ++window.resets
                setEverything(6)
                check.checked = false
                check.toggle()
                check.toggle()
                triCheck.checkState = Qt.Unchecked
                button2.clicked()
                slider.value = 0
                field.text = "reset"
                combo.currentIndex = 0
                list.currentIndex = 0
                swipe.currentIndex = 0
                tabs.currentIndex = 0
            }
        }
        Button { id: button2; objectName: "checkable"; text: "Checkable"; checkable: true }
        Button { objectName: "disabled"; text: "Disabled"; enabled: false }
        Button { objectName: "repeating"; text: "Repeating"; autoRepeat: true; autoRepeatDelay: 10; autoRepeatInterval: 5; onClicked: setEverything(7) }
        RoundButton { objectName: "round"; text: "R"; onPressed: setEverything(8) }
        DelayButton { id: delayButton; objectName: "delay"; text: "Delay"; delay: 1000 }
        CheckBox { id: check; objectName: "check"; text: "Check"; onToggled: setEverything(9); onCheckedChanged: noiseCheck.checked = checked }
        CheckBox { id: triCheck; objectName: "tri"; text: "Tri"; tristate: true }
        Switch { objectName: "switch"; text: "Switch"; onToggled: setEverything(10) }
        RadioButton { objectName: "radio1"; text: "One"; checked: true; onToggled: setEverything(11) }
        RadioButton { objectName: "radio2"; text: "Two" }
        ItemDelegate { objectName: "item"; text: "Item"; onClicked: setEverything(12) }
        CheckDelegate { objectName: "checkDelegate"; text: "Check"; width: 180 }
        RadioDelegate { objectName: "radioDelegate"; text: "Radio"; width: 180 }
    }
    Column {
        x: 210; y: 10; width: 190; spacing: 2
        SwitchDelegate { objectName: "switchDelegate"; text: "Switch"; width: 180 }
        SwipeDelegate { objectName: "swipeDelegate"; text: "Swipe"; width: 180 }
        ComboBox { id: combo; objectName: "combo"; wheelEnabled: true; model: ["one", "two", "three"]; onActivated: setEverything(13)
            delegate: ItemDelegate { objectName: "comboRow" + index; width: 150; text: modelData } }
        ComboBox { objectName: "editCombo"; editable: true; model: ["one", "two", "three"]; onAccepted: setEverything(14) }
        TextField { id: field; objectName: "field"; onAccepted: setEverything(15) }
        TextField { objectName: "password"; echoMode: TextInput.Password; onTextEdited: noiseField.text = text }
        TextField { objectName: "readOnly"; readOnly: true; text: "Read" }
        TextArea { objectName: "area"; width: 180; height: 50; onTextChanged: noiseArea.text = text }
        Rectangle { width: 180; height: 24; border.width: 1
            TextInput { objectName: "input"; anchors.fill: parent } }
        Rectangle { width: 180; height: 40; border.width: 1
            TextEdit { objectName: "edit"; anchors.fill: parent } }
        SpinBox { id: spin; objectName: "spin"; wheelEnabled: true; onValueModified: setEverything(16) }
        SpinBox { objectName: "editSpin"; editable: true; to: 1000 }
        Slider { id: slider; objectName: "slider"; wheelEnabled: true; width: 180; onMoved: setEverything(17) }
        RangeSlider { objectName: "range"; width: 180; first.value: 0.2; second.value: 0.8; first.onMoved: setEverything(18) }
        Dial { objectName: "dial"; width: 80; height: 80 }
    }
    Column {
        x: 410; y: 10; width: 190; spacing: 4
        Tumbler { id: tumbler; objectName: "tumbler"; model: 20; width: 60; height: 120 }
        TabBar {
            id: tabs
            objectName: "tabBar"
            width: 180
            TabButton { objectName: "tab1"; text: "One" }
            TabButton { objectName: "tab2"; text: "Two"; onClicked: setEverything(19) }
            TabButton { objectName: "tab3"; text: "Three"; enabled: false }
        }
        StackLayout {
            width: 180; height: 40
            currentIndex: tabs.currentIndex
            Rectangle { Button { objectName: "onPage1"; text: "P1"; height: 36; width: 80 } }
            Rectangle { Button { objectName: "onPage2"; text: "P2"; height: 36; width: 80 } }
        }
        SwipeView {
            id: swipe
            objectName: "swipe"
            Component.onCompleted: contentItem.objectName = "swipePages"
            width: 180; height: 80; clip: true
            Rectangle { property string title: "First"; color: "lightblue"; Button { objectName: "swipe1"; text: "S1"; onClicked: swipe.currentIndex = 1 } }
            Rectangle { property string title: "Second"; color: "lightgreen"; Button { objectName: "swipe2"; text: "S2" } }
        }
        ListView {
            id: list
            objectName: "list"
            width: 180; height: 100; clip: true
            model: ListModel { id: rows; ListElement { name: "a" } ListElement { name: "b" } ListElement { name: "c" } ListElement { name: "d" } ListElement { name: "e" } ListElement { name: "f" } }
            delegate: ItemDelegate { objectName: "row" + index; width: 180; height: 30; text: name; onClicked: list.currentIndex = index }
        }
        ListView {
            id: plainList
            objectName: "plainList"
            width: 180; height: 60; clip: true
            model: 8
            delegate: Rectangle {
                width: 180; height: 20; color: ListView.isCurrentItem ? "yellow" : "white"
                Text { text: "plain " + index }
                MouseArea { objectName: "plainRow" + index; anchors.fill: parent; onClicked: plainList.currentIndex = index }
                MouseArea { objectName: "plainTool" + index; width: 18; height: 18; x: 150; onClicked: setEverything(20) }
            }
        }
        GridView {
            id: grid
            objectName: "grid"
            width: 180; height: 60; cellWidth: 60; cellHeight: 30; clip: true
            model: 6
            delegate: Text { width: 60; height: 30; text: "cell " + index }
        }
        Loader { id: loader; active: false; sourceComponent: Button { objectName: "loaded"; text: "Loaded" } }
    }
    Column {
        x: 610; y: 10; width: 190; spacing: 4
        Rectangle {
            width: 180; height: 40; color: "orange"
            MouseArea { objectName: "mouseArea"; anchors.fill: parent; onPressed: setEverything(21) }
        }
        Rectangle {
            width: 180; height: 40; color: "red"
            MouseArea { objectName: "disabledArea"; anchors.fill: parent; enabled: false }
        }
        Rectangle {
            width: 180; height: 40; color: "pink"
            MouseArea { objectName: "under"; anchors.fill: parent }
            MouseArea { objectName: "refusing"; anchors.fill: parent; onPressed: mouse.accepted = false }
        }
        Rectangle {
            width: 180; height: 40; color: "grey"
            MouseArea { objectName: "covered"; anchors.fill: parent }
            Rectangle { anchors.fill: parent; color: "black"; MouseArea { objectName: "covering"; anchors.fill: parent } }
        }
        Rectangle {
            width: 180; height: 40; color: "cyan"
            TapHandler { objectName: "tap"; onTapped: setEverything(22) }
        }
        Rectangle {
            id: dragged
            width: 180; height: 40; color: "blue"
            DragHandler { objectName: "drag"; target: null }
        }
        Rectangle {
            width: 180; height: 40; color: "green"
            PointHandler { objectName: "point" }
        }
        Rectangle {
            width: 180; height: 40; color: "lime"
            WheelHandler { objectName: "wheel"; target: null }
        }
        Rectangle {
            width: 180; height: 40; color: "olive"
            MultiPointTouchArea { objectName: "multi"; anchors.fill: parent }
        }
        Text { objectName: "link"; text: "see <a href=\"http://example.org\">this</a>"; onLinkActivated: setEverything(23) }
        Text { objectName: "deadLink"; text: "see <a href=\"http://example.org\">that</a>" }
        Flickable {
            objectName: "flickable"
            width: 180; height: 60; contentHeight: 300; clip: true; pressDelay: 40
            Button { objectName: "delayed"; text: "Delayed"; height: 30 }
            Button { objectName: "scrolledAway"; text: "Away"; y: 200 }
        }
        Button { objectName: "opener"; text: "Open dialog"; onClicked: { dialog.open(); setEverything(24) } }
        Button { objectName: "popupOpener"; text: "Open popup"; onClicked: popup.open() }
        Button { objectName: "nested"; text: "Nested"; onClicked: driver.runNested() }
        Button { objectName: "clicker"; text: "Clicker"; onClicked: { button2.clicked(); button2.toggle(); check.toggled(); check.toggle(); saveAction.trigger() } }
        Button { objectName: "loaderButton"; text: "Load"; onClicked: loader.active = !loader.active }
    }
    Item {
        x: 810; y: 10; width: 190; height: 700
        MouseArea {
            anchors.fill: parent
            objectName: "contextArea"
            acceptedButtons: Qt.RightButton
            onClicked: contextMenu.popup()
        }
    }
    Column {
        x: 810; y: 10; width: 180; spacing: 2
        CheckBox { id: noiseCheck; objectName: "noiseCheck"; text: "N" }
        Switch { id: noiseSwitch; objectName: "noiseSwitch"; text: "N" }
        RadioButton { id: noiseRadio; objectName: "noiseRadio"; text: "N"; autoExclusive: false }
        Button { id: noiseButton; objectName: "noiseButton"; text: "N"; checkable: true }
        DelayButton { id: noiseDelay; objectName: "noiseDelay"; text: "N" }
        TextField { id: noiseField; objectName: "noiseField" }
        TextArea { id: noiseArea; objectName: "noiseArea"; width: 180; height: 30 }
        ComboBox { id: noiseCombo; objectName: "noiseCombo"; model: 3 }
        SpinBox { id: noiseSpin; objectName: "noiseSpin" }
        Slider { id: noiseSlider; objectName: "noiseSlider"; width: 180 }
        Slider { id: animatedSlider; objectName: "animatedSlider"; width: 180 }
        Dial { id: noiseDial; objectName: "noiseDial"; width: 40; height: 40 }
        RangeSlider { id: noiseRange; objectName: "noiseRange"; width: 180 }
        Tumbler { id: noiseTumbler; objectName: "noiseTumbler"; model: 5; width: 40; height: 60 }
        ListView { id: noiseList; objectName: "noiseList"; model: 4; width: 180; height: 40; clip: true; delegate: Text { text: index; height: 10 } }
        TabBar { id: noiseTabs; width: 180
            TabButton { objectName: "noiseTab1"; text: "1" }
            TabButton { objectName: "noiseTab2"; text: "2" }
        }
        SwipeView { id: noiseSwipe; width: 180; height: 20; clip: true; Item {} Item {} }
    }
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/samplerecording.h"

namespace TestLib {

using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

void use(UIElement* element, const char* event, int times = 1) {
    for (int i = 0; i < times; ++i) {
        element->increaseUsage(UIEvent(QLatin1String(event)));
    }
}

UIElement* addMenuItem(RecordingBuilder& recording, UIElement* menu, const char* text) {
    return recording.add(menu, QStringLiteral("MenuItem"), QStringLiteral("QAction"),
                         QString::fromUtf8(text),
                         {QStringLiteral("clicked"), QStringLiteral("shown")});
}

UIElement* addMenu(RecordingBuilder& recording, UIElement* item, bool isOpened) {
    UIElement* const menu = recording.add(item, QStringLiteral("Menu"), QStringLiteral("QMenu"),
                                          QString(), {QStringLiteral("shown")});
    menu->setTransparentNode(!isOpened);
    if (isOpened) {
        menu->setWindowNode(true);
        use(menu, "shown");
    }
    return menu;
}

void addMenuBar(RecordingBuilder& recording, UIElement* window) {
    UIElement* const bar =
        recording.add(window, QStringLiteral("MenuBar"), QStringLiteral("QMenuBar"), QString(),
                      {QStringLiteral("shown")});
    use(bar, "shown");
    UIElement* const file = addMenuItem(recording, bar, "File");
    UIElement* const help = addMenuItem(recording, bar, "Help");
    use(file, "shown");
    use(file, "clicked");
    use(help, "shown");
    UIElement* const fileMenu = addMenu(recording, file, true);
    UIElement* const open = addMenuItem(recording, fileMenu, "Open…");
    UIElement* const quit = addMenuItem(recording, fileMenu, "Quit\tCtrl+Q");
    use(open, "shown");
    use(open, "clicked", 2);
    use(quit, "shown");
    addMenu(recording, help, false);
}

UIElement* addControl(RecordingBuilder& recording, UIElement* parent, const char* type,
                      const char* concreteType, const char* text, QStringList events) {
    events.append(QStringLiteral("shown"));
    UIElement* const control =
        recording.add(parent, QLatin1String(type), QLatin1String(concreteType),
                      text == nullptr ? QString() : QString::fromUtf8(text), events);
    use(control, "shown");
    return control;
}

} // namespace

void fillSampleRecording(RecordingBuilder& recording, bool endsInOrder) {
    const QString clicked = QStringLiteral("clicked");
    const QStringList checkBoxEvents{clicked, QStringLiteral("checked"),
                                     QStringLiteral("unchecked")};
    recording.addProcess({{QStringLiteral("application"), QStringLiteral("panel")},
                          {QStringLiteral("pid"), QStringLiteral("42")},
                          {QStringLiteral("session"), QStringLiteral("S1")}});
    recording.setTime(1500000);
    UIElement* const window =
        addControl(recording, nullptr, "Window", "MainWindow", "Panel[*]", {});
    window->setWindowNode(true);
    window->setGeometry(ElementGeometry(QRect(0, 0, 640, 480), true));
    addMenuBar(recording, window);
    UIElement* const central =
        recording.add(window, QString(), QStringLiteral("QWidget"), QString(), {});
    central->setTransparentNode(true);

    UIElement* const input =
        addControl(recording, central, "TextInput", "QLineEdit", nullptr,
                   {QStringLiteral("confirmed"), QStringLiteral("textEdited")});
    use(input, "textEdited", 3);
    UIElement* const first =
        addControl(recording, central, "CheckBox", "QCheckBox", "Pump", checkBoxEvents);
    use(first, "clicked");
    use(first, "checked");
    addControl(recording, central, "CheckBox", "QCheckBox", "Heater", checkBoxEvents);
    use(addControl(recording, central, "Button", "QPushButton", "Start", {clicked}), "clicked");
    addControl(recording, central, "Button", "QPushButton", "Stop", {clicked});

    UIElement* const dialog = addControl(recording, window, "Dialog", "QDialog", "About Panel", {});
    dialog->setWindowNode(true);
    addControl(recording, dialog, "Button", "QPushButton", "Close", {clicked});
    recording.add(dialog, QStringLiteral("Button"), QStringLiteral("QPushButton"),
                  QStringLiteral("Licence"), {clicked, QStringLiteral("shown")});
    recording.addLog(RecordingFormat::Severity::Warning, QStringLiteral("No action at (3,4)"));
    recording.addLog(RecordingFormat::Severity::Warning, QStringLiteral("No action at (3,4)"));
    recording.addLog(RecordingFormat::Severity::Info, QStringLiteral("Registered"));
    if (endsInOrder) {
        recording.addEnd();
    }
}

} // namespace TestLib

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/runmaker.h"

#include "run/storedtext.h"
#include "testlib/randomrun.h"

#include <algorithm>
#include <tuple>

namespace TestLib {

using Uicov::Runs::Hit;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;

RunMaker::RunMaker(int number, const QString& application) {
    run.uuid = uuid(number);
    run.session = uuid(1000);
    run.application = application;
    run.executable = QStringLiteral("/usr/bin/") + application;
    run.qtVersion = QStringLiteral("5.15.8");
    run.platform = QStringLiteral("offscreen");
    run.locale = QStringLiteral("C");
    run.architecture = QStringLiteral("x86_64-little_endian-lp64");
    run.started = QStringLiteral("2024-01-01T00:00:0%1Z").arg(number % 10);
    run.contexts = QStringList{QString(QStringLiteral(""))};
    run.messages = 100;
}

RunElement& RunMaker::element(int number) {
    return run.elements[static_cast<std::size_t>(number)];
}

int RunMaker::add(int parent, const char* type, const char* className, const QString& text,
                  const char* events) {
    const int number = static_cast<int>(run.elements.size());
    RunElement element;
    element.id = QStringLiteral("{%1}").arg(number);
    element.type = QLatin1String(type);
    element.className = QLatin1String(className);
    element.text = text;
    element.parent = parent;
    element.events = QString::fromLatin1(events).split(QLatin1Char(' '));
    element.events.removeAll(QString());
    element.events.sort();
    if (parent >= 0) {
        this->element(parent).children.append(number);
    }
    run.elements.push_back(element);
    return number;
}

int RunMaker::addWindow(const QString& title, const char* className, const char* type) {
    const int window = add(-1, type, className, title, "shown");
    element(window).isWindowNode = true;
    hit(window, "shown");
    return window;
}

int RunMaker::addButton(int parent, const QString& text) {
    const int button = add(parent, "Button", "QPushButton", text, "shown clicked");
    hit(button, "shown");
    return button;
}

void RunMaker::hit(int element, const char* event, int count, const QString& context) {
    int number = run.contexts.indexOf(context);
    if (context.isEmpty()) {
        number = 0;
    } else if (number < 0) {
        number = run.contexts.size();
        run.contexts.append(context);
    }
    QVector<Hit>& hits = this->element(element).hits;
    hits.append(Hit{QLatin1String(event), number, count});
    std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
        return std::tie(a.event, a.context) < std::tie(b.event, b.context);
    });
}

Run panelRun(int number) {
    RunMaker maker(number);
    const int window = maker.addWindow(QStringLiteral("Panel"));
    const int bar = maker.add(window, "MenuBar", "QMenuBar", QString(), "shown");
    maker.hit(bar, "shown");
    const int help = maker.add(bar, "MenuItem", "QAction", QStringLiteral("Help"), "shown clicked");
    maker.hit(help, "shown");
    const int menu = maker.add(help, "Menu", "QMenu", QString(), "shown");
    maker.element(menu).isTransparentNode = true;
    const int start = maker.addButton(window, QStringLiteral("Start"));
    maker.hit(start, "clicked", 2, QStringLiteral("test_start"));
    maker.addButton(window, QStringLiteral("Stop"));
    const int pump = maker.add(window, "CheckBox", "QCheckBox", QStringLiteral("Pump"),
                               "shown clicked checked unchecked");
    maker.hit(pump, "shown");
    maker.hit(pump, "clicked", 1, QStringLiteral("test_pump"));
    const int input = maker.add(window, "TextInput", "QLineEdit", QString(), "textEdited");
    maker.hit(input, "textEdited", 3, QStringLiteral("test_pump"));
    const int dialog = maker.addWindow(QStringLiteral("About"), "QDialog", "Dialog");
    const int close = maker.addButton(dialog, QStringLiteral("Close"));
    maker.hit(close, "clicked", 1, QStringLiteral("test_start"));
    maker.run.labels.insert(QStringLiteral("branch"), QStringLiteral("main"));
    maker.run.warnings.insert(QStringLiteral("No action at (3,4)"), 2);
    return maker.run;
}

Run controlsRun(int number) {
    RunMaker maker(number);
    maker.run.extension = QStringLiteral("libqtuicontrols");
    const auto addView = [&maker](int parent, const char* type, const char* title, bool isSeen) {
        const int view = maker.add(parent, type, "QWidget", QLatin1String(title), "seen");
        if (isSeen) {
            maker.hit(view, "seen");
        }
        return view;
    };
    const auto addControl = [&maker](int view, const char* type, const char* text,
                                     const char* event, bool isSeen) {
        const int control = maker.add(view, type, "QAbstractButton", QLatin1String(text), event);
        maker.element(control).wasSeen = isSeen;
        return control;
    };
    const auto set = [&maker](int element, const char* name, const QString& value) {
        maker.element(element).attributes.insert(QLatin1String(name), value);
    };
    const int window = addView(-1, "Window", "Panel", true);
    maker.element(window).isWindowNode = true;
    const int start = addControl(window, "Button", "Start", "clicked", true);
    set(start, "objectName", QStringLiteral("startButton"));
    maker.hit(start, "clicked", 2, QStringLiteral("test_start"));
    addControl(window, "Button", "Stop", "clicked", true);
    const int expert = addControl(window, "Button", "Expert", "clicked", false);
    maker.element(expert).wasEnabled = false;
    const int save = addControl(window, "Command", "Save", "triggered", true);
    set(save, "ways", QStringLiteral("toolBar menu"));
    const int print = addControl(window, "Command", "Print", "triggered", true);
    set(print, "ways", QStringLiteral("menu shortcut"));
    set(print, "usedWays", QStringLiteral("shortcut"));
    maker.hit(print, "triggered", 1, QStringLiteral("test_print"));
    for (const char* row : {"1", "2", "3"}) {
        const int item = addControl(window, "Item", row, "clicked", true);
        set(item, "group", QStringLiteral("rows"));
        if (*row == '2') {
            maker.hit(item, "clicked", 1, QStringLiteral("test_start"));
        }
    }
    const int general = addView(window, "Page", "General", true);
    addControl(general, "CheckBox", "Pump", "checked", true);
    const int advanced = addView(window, "Page", "Advanced", false);
    addControl(advanced, "CheckBox", "Heater", "checked", false);
    addControl(advanced, "CheckBox", "Cooler", "checked", false);
    const int tab = addControl(window, "Tab", "Advanced", "clicked", true);
    set(tab, "opens", maker.element(advanced).id);
    return maker.run;
}

Run hostileRun() {
    const QString odd = Uicov::Runs::storedText(
        QStringLiteral("<script>alert(\"1\")</script>&'|`*_[x](y)") + QChar(0x1b) +
        QStringLiteral("[31m") + QChar(0) + QChar(0x202e) + QStringLiteral("שלום") + QChar(0xd800) +
        QStringLiteral(" ]]> --> %1 \\"));
    RunMaker maker(7, odd);
    const int window = maker.addWindow(odd);
    const int button = maker.add(window, "Button", "Q<b>", odd, "shown clicked");
    maker.element(button).events = QStringList{odd, QStringLiteral("shown")};
    maker.addButton(window, odd + odd + odd + odd + odd);
    maker.run.labels.insert(odd, odd);
    maker.run.warnings.insert(odd, 1);
    maker.run.isComplete = false;
    maker.run.partialReason = QStringLiteral("ended abnormally");
    maker.hit(button, "shown", 1, odd);
    return maker.run;
}

} // namespace TestLib

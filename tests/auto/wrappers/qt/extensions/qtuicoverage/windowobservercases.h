// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/treeprinter.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QTest>

/** What the observers of main windows and dialogs have in common, for both of them. */
template <class Widget, class Observer>
struct WindowObserverCases {
    using UIElement = Vorsk::UIAbstraction::UIElement;

    static void titles() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("printed");
        QTest::newRow("no title") << QString() << QStringLiteral("unknown/Class window\n");
        QTest::newRow("empty title")
            << QStringLiteral("") << QStringLiteral("unknown/Class window\n"); // Qt gives none
        QTest::newRow("title") << QStringLiteral("Settings")
                               << QStringLiteral("unknown/Class \"Settings\" window\n");
        QTest::newRow("& is kept") << QStringLiteral("&Cut && paste")
                                   << QStringLiteral("unknown/Class \"&Cut && paste\" window\n");
        QTest::newRow("[*] is kept")
            << QStringLiteral("file[*]") << QStringLiteral("unknown/Class \"file[*]\" window\n");
    }

    static QString print(TestLib::WidgetsProbe& probe, const QString& title) {
        Widget widget;
        widget.setWindowTitle(title);
        UIElement element = makeElement();
        const Observer observer(&widget, &element, &probe.tracker());
        return TestLib::TreePrinter().print(element);
    }

    static QStringList announcements(TestLib::WidgetsProbe& probe) {
        Widget widget;
        widget.setWindowTitle(QStringLiteral("title"));
        UIElement element(QStringLiteral("Class"), Vorsk::UIAbstraction::StandardType(), QString());
        QStringList order;
        QObject::connect(
            &element, &UIElement::windowNodeChanged, [&](const UIElement*, bool isWindow) {
                order << (isWindow ? QStringLiteral("window") : QStringLiteral("no window"));
            });
        QObject::connect(&element, &UIElement::textChanged,
                         [&](const UIElement*, const QString& text) { order << text; });
        const Observer observer(&widget, &element, &probe.tracker());
        widget.setWindowTitle(QStringLiteral("later title"));
        return order;
    }

    static UIElement makeElement() {
        return {QStringLiteral("Class"), Vorsk::UIAbstraction::StandardType(), QString()};
    }
};

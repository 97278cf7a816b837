// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/controlsprobe.h"
#include "testlib/usesledger.h"
#include "testlib/widgetdriver.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <initializer_list>
#include <memory>

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

/** Has the name of the class that Qt's bridge to D-Bus gives to what accessibility clients call. */
class AtSpiAdaptor : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void call();

public:
    std::function<void()> action;
};

/** Does something with the next menu that comes up, from whichever event loop runs then. */
class OnMenu {
public:
    explicit OnMenu(const std::function<void(QMenu*)>& action);

    bool isDone() const { return m_isDone; }

private:
    QTimer m_timer;
    bool m_isDone = false;
};

/** A window that is shown to a probe, and what is counted in it. */
class UsesFixture {
public:
    UsesFixture();

    /** Lays the widget out in the window and calls it by that name, when it has one. */
    template <class Widget>
    Widget* add(Widget* widget, const char* name = "") {
        put(widget, name);
        return widget;
    }
    /** Shows the window and waits until it is active; forgets what was counted before. */
    void show();
    /** What was counted since the last call, as UsesLedger has it. */
    QStringList take();
    /** What it is that the action counts. */
    QStringList counted(const std::function<void()>& action);
    /** What an accessibility client's call of the action counts. */
    QStringList countedByClient(const std::function<void()>& action);
    /** The events that the element announces, sorted. */
    static QStringList eventsOf(const TestLib::ControlsProbe::UIElement* element);
    /** Runs the action from the event loop. */
    static void runLater(const std::function<void()>& action);

    QWidget& window() { return m_window; }
    TestLib::ControlsProbe& probe() { return m_probe; }

private:
    void put(QWidget* widget, const char* name);

    TestLib::ControlsProbe m_probe;
    QWidget m_window;
    std::unique_ptr<TestLib::UsesLedger> m_ledger;
    AtSpiAdaptor m_bridge;
};

/** A literal list of lines. */
inline QStringList lines(std::initializer_list<const char*> literals) {
    QStringList list;
    for (const char* const literal : literals) {
        list.append(QString::fromUtf8(literal));
    }
    return list;
}

inline QString text(const char* literal) {
    return QString::fromUtf8(literal);
}

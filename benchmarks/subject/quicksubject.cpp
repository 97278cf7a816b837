// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "quicksubject.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace {

#if defined(SUBJECT_areas)
// What an interface without Qt's controls is made of; Qt Quick alone is loaded for it.
constexpr char imports[] = "";
constexpr char leaf[] = "MouseArea { width: 30; height: 10; objectName: 'area' + index }";
constexpr char leafClass[] = "QQuickMouseArea";
const char* const clicked = SIGNAL(clicked(QQuickMouseEvent*));
#else
constexpr char imports[] = "import QtQuick.Controls 2.2\n";
constexpr char leaf[] = "Button { text: 'Control ' + index }";
constexpr char leafClass[] = "QQuickAbstractButton";
const char* const clicked = SIGNAL(clicked());
#endif

constexpr char source[] = R"(
import QtQuick 2.9
import QtQuick.Window 2.2

Window {
    width: 1280
    height: 800
    Grid {
        objectName: "grid"
        columns: 40
        Repeater {
            model: leaves
            %1
        }
    }
}
)";

} // namespace

QuickSubject::QuickSubject() = default;

QuickSubject::~QuickSubject() = default;

void QuickSubject::buildAndShow(int leaves) {
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->rootContext()->setContextProperty(QStringLiteral("leaves"), leaves);
    QQmlComponent component(m_engine.get());
    component.setData(imports + QByteArray(source).replace("%1", leaf), QUrl());
    m_window.reset(qobject_cast<QQuickWindow*>(component.create()));
    if (!m_window) {
        qFatal("the window cannot be made: %s", qPrintable(component.errorString()));
    }
    const auto* const grid = m_window->findChild<QQuickItem*>(QStringLiteral("grid"));
    const QList<QQuickItem*> items = grid->childItems();
    for (QQuickItem* item : items) {
        if (item->inherits(leafClass)) {
            m_leaves.append(item);
            connect(item, clicked, this, SLOT(countClick()));
        }
    }
    bool isPainted = false;
    const auto painted = connect(m_window.get(), &QQuickWindow::frameSwapped, this,
                                 [&isPainted] { isPainted = true; });
    m_window->show();
    while (!isPainted) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    disconnect(painted);
    QCoreApplication::processEvents();
}

void QuickSubject::sendEvents(int count) {
    QEvent event(QEvent::User);
    for (int i = 0; i < count; ++i) {
        QCoreApplication::sendEvent(m_leaves.at(i % m_leaves.size()), &event);
    }
}

void QuickSubject::disturb(int count) {
    for (int i = 0; i < count; ++i) {
        QQuickItem* const leaf = m_leaves.at(i % m_leaves.size());
        leaf->setX(leaf->x() + 1);
    }
}

void QuickSubject::sendMouse(QEvent::Type type, const QPointF& place, Qt::MouseButtons buttons) {
    QMouseEvent event(type, place, place, place, Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &event);
}

void QuickSubject::click(int count) {
    for (int i = 0; i < count; ++i) {
        const QQuickItem* const leaf = m_leaves.at(i % m_leaves.size());
        const QPointF centre = leaf->mapToScene(leaf->boundingRect().center());
        sendMouse(QEvent::MouseButtonPress, centre, Qt::LeftButton);
        sendMouse(QEvent::MouseButtonRelease, centre, Qt::NoButton);
    }
}

void QuickSubject::destroy() {
    m_window.reset();
    m_engine.reset();
}

void QuickSubject::countClick() {
    ++m_clicks;
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "subject.h"

#include <QEvent>
#include <QObject>
#include <QVector>

#include <memory>

QT_BEGIN_NAMESPACE
class QQmlEngine;
class QQuickItem;
class QQuickWindow;
QT_END_NAMESPACE

/** A Qt Quick window with buttons of the second generation of controls, made by a Repeater. */
class QuickSubject : public QObject, public Subject {
    Q_OBJECT

public:
    QuickSubject();
    ~QuickSubject() override;

    void buildAndShow(int leaves) override;
    void sendEvents(int count) override;
    void disturb(int count) override;
    void click(int count) override;
    void destroy() override;

private Q_SLOTS:
    void countClick();

private:
    void sendMouse(QEvent::Type type, const QPointF& place, Qt::MouseButtons buttons);

    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QVector<QQuickItem*> m_leaves;
};

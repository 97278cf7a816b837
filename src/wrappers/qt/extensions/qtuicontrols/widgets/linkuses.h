// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QHash>
#include <QObject>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QEvent;
class QUrl;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class UseCounter;

/**
 * Makes the Link elements of the anchors in labels and text browsers and counts those that were
 * followed. GUI thread only.
 */
class LinkUses : public QObject {
    Q_OBJECT

public:
    explicit LinkUses(UseCounter& counter);

    /** Makes elements of the anchors that are not known yet, at most 50 a widget. */
    void find(QWidget* widget, UIElement* view);

    /** Input is about to go to the widget: has the signals of the label or browser that it is a
     * part of connected. */
    void expect(QWidget* receiver, QEvent* event);

private Q_SLOTS:
    void labelFollowed(const QString& target);
    void labelHovered(const QString& target);
    void browserFollowed(const QUrl& target);

private:
    struct Known {
        QPointer<QWidget> widget;
        QString text; ///< that was searched
        UIElement* view = nullptr;
        QHash<QString, UIElement*> links;
    };

    Known& knownOf(QWidget* widget);
    UIElement* linkOf(QWidget* widget, const QString& target, const QString& text);
    void search(Known& known);
    void follow(QWidget* widget, const QString& target);
    void followHovering(const QWidget* label);
    void expectOpening(QWidget* label, QEvent* event);

    UseCounter& m_counter;
    QHash<const QWidget*, Known> m_known;
    /** Of the label that the mouse is on; null when it is on none. */
    QString m_hovered;
    QPointer<QWidget> m_hoveredLabel;
    QString m_pressed;
};

} // namespace UIControls
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QSet>

QT_BEGIN_NAMESPACE
class QEvent;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class PartElements;
class WidgetUses;
class WidgetViews;

/**
 * Follows what changes about controls that are known: whether they are enabled and hidden, and what
 * they are called. Texts have no event of their own, so they are read again when they are painted.
 * GUI thread only.
 */
class WidgetStates {
public:
    struct Pieces {
        ElementBook& book;
        WidgetViews& views;
        PartElements& parts;
        WidgetUses& uses;
    };

    /** All pieces outlive this object. */
    explicit WidgetStates(const Pieces& pieces);

    // To be called when the widget gets the event; those of Qt come after the change.
    void updateEnabled(QWidget* widget);
    /** The widget was hidden or is no longer, which what lies in it shares. */
    void updateHidden(QWidget* widget);
    void updateToolTip(QWidget* widget);
    void updateTexts(QWidget* widget);
    /** What stands beside the widget may be called something else when it is painted next. */
    void noteLanguage(QWidget* widget);

private:
    UIElement* controlOf(const QWidget* widget) const;
    void updateHiddenBelow(QWidget* widget, bool isHidden);

    Pieces m_pieces;
    /** Addresses. */
    QSet<const QWidget*> m_otherLanguage;
};

} // namespace UIControls
} // namespace Vorsk

#pragma once

#include "qtuicontrols/elementbook.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * The views among the widgets: windows, dialogs, menus, popups, and the pages of what shows one of
 * them at a time. Makes their elements and counts that they were seen. GUI thread only.
 */
class WidgetViews {
public:
    explicit WidgetViews(ElementBook& book);

    /**
     * The element of the nearest view that the widget lies in, itself included, made now where it is
     * missing; null when the widget lies in nothing that a person could see, as in a widget without
     * a parent that was never shown.
     */
    UIElement* viewOf(QWidget* widget);

    /** The nearest widget, the given one included, that is a view; null when there is none. */
    static QWidget* viewWidgetOf(QWidget* widget);

private:
    ElementBook& m_book;
};

} // namespace UIControls
} // namespace Vorsk

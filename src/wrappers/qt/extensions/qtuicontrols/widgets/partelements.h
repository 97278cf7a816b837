#pragma once

#include "qtuicontrols/elementbook.h"

#include <QHash>
#include <QPersistentModelIndex>
#include <QPointer>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QAbstractItemView;
class QComboBox;
class QModelIndex;
class QTabBar;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * The elements of what a person operates without its being an object of its own: the tabs of tab bars, and the options
 * that an interface itself has put into combo boxes and item widgets. Tabs move, come, go and are renamed and keep their
 * elements. GUI thread only.
 */
class PartElements {
public:
    explicit PartElements(ElementBook& book);
    ~PartElements();

    /** Makes and updates the elements of all tabs of the bar; the view is that of the bar. */
    void surveyTabs(QTabBar* bar, UIElement* view);
    /** Makes the elements of the options of a combo box, list, tree or table that is about to be shown, below it. To be
     * called once for each control: what comes later is data. */
    void surveyOptions(QWidget* control, UIElement* element);

    /** The tab's element, up to date with its name; null when the bar is not known or has no such tab. */
    UIElement* tabElement(QTabBar* bar, int index);
    /** The option's element; null for what is data. */
    UIElement* optionElement(const QComboBox* box, int row);
    UIElement* optionElement(const QAbstractItemView* view, const QModelIndex& index);

    /** Whether the bar is known. */
    bool knows(const QTabBar* bar) const;

private:
    struct Tab;
    struct Bar;

    void matchTabs(Bar& known);

    ElementBook& m_book;
    /** By the bar's address; the bar in it is null when that has died. */
    QHash<const QTabBar*, std::shared_ptr<Bar>> m_bars;
    /** By the control's element and the option's text with those of the items above it. */
    QHash<QPair<const UIElement*, QString>, UIElement*> m_options;
};

} // namespace UIControls
} // namespace Vorsk

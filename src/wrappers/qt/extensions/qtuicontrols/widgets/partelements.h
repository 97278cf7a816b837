// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QHash>
#include <QPointer>
#include <QSet>
#include <QTabBar>

#include <vector>

QT_BEGIN_NAMESPACE
class QAbstractItemView;
class QComboBox;
class QModelIndex;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class WidgetViews;

/**
 * The elements of what a person operates without its being an object of its own: the tabs of tab
 * bars, and the options that an interface itself has put into combo boxes and item widgets. Tabs
 * move, come, go and are renamed and keep their elements. GUI thread only.
 */
class PartElements {
public:
    /** Both outlive this object. */
    PartElements(ElementBook& book, WidgetViews& views);
    ~PartElements();
    Q_DISABLE_COPY(PartElements)

    /** Makes the elements of the bar's tabs, or brings those up to date that are known already. */
    void surveyTabs(QTabBar* bar);

    /** Does so for a bar that is known; nothing for another widget, which is not touched. */
    void updateTabs(QWidget* widget);

    /**
     * Makes the elements of the options of a combo box, list, tree or table, below its own one. To
     * be called once for each, when it is found: what comes later is data, and so is all of a model
     * that the application has made, or more than 50 items.
     */
    void surveyOptions(QWidget* control, UIElement* element);

    /** The tab's element, up to date with its name; null when the bar is not known or has no such
     * tab. */
    UIElement* tabElement(QTabBar* bar, int index);
    /** The option's element; null for what is data. */
    UIElement* optionElement(const QComboBox* box, int row);
    UIElement* optionElement(const QAbstractItemView* view, const QModelIndex& index);

    /** Tells where the tabs of the view are that the window shows. */
    void tellPlaces(const UIElement* view, const QWidget* window);

private:
    struct Tab {
        UIElement* element = nullptr;
        QString text;
        /** What the tab brings up; null where that is not known. */
        QPointer<QWidget> page;
        QString toolTip;
        bool isEnabled = true;
        bool isHidden = false;
    };
    struct Bar {
        QPointer<QTabBar> bar;
        std::vector<Tab> tabs;
        /** That were removed, and may come back. */
        std::vector<Tab> removed;
    };

    Tab read(const QTabBar* bar, int index) const;
    void match(Bar& known, UIElement* view);
    void keepSame(std::vector<Tab>& now, std::vector<Tab>& before);
    template <class Condition>
    bool take(Tab& tab, std::vector<Tab>& from, const Condition& isIt);
    bool takeLike(Tab& tab, std::vector<Tab>& from);
    UIElement* makeTab(const QTabBar* bar, const Tab& tab, UIElement* view);
    void tellTab(UIElement* element, const Tab& tab);
    void addOptions(const QAbstractItemModel& model, const QModelIndex& parent, int column,
                    UIElement* element, const QString& path);

    ElementBook& m_book;
    WidgetViews& m_views;
    QHash<const QWidget*, Bar> m_bars;
    /** By the control's element and the option's text, after those of the items above it. */
    QHash<QPair<const UIElement*, QString>, UIElement*> m_options;
    /** The options made by the present survey. */
    QSet<QString> m_surveyed;
};

} // namespace UIControls
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/partelements.h"

#include "qtuicontrols/widgets/widgetnames.h"
#include "qtuicontrols/widgets/widgetplaces.h"
#include "qtuicontrols/widgets/widgetviews.h"
#include "tracking/classname.h"
#include "tracking/mnemonics.h"
#include "uiabstraction/uielement.h"

#include <QComboBox>
#include <QListWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIControls {

using UICoverage::stripMnemonics;

namespace {

/** With more entries than that it is data that fills it, not the interface. */
constexpr int mostOptions = 50;

/** Stands between the texts of an item and of the one above it. */
const QChar separator(0x1f);

QTabWidget* tabWidgetOf(const QTabBar* bar) {
    auto* const tabs = qobject_cast<QTabWidget*>(bar->parentWidget());
    return tabs != nullptr && tabs->tabBar() == bar ? tabs : nullptr;
}

bool isTabVisible(const QTabBar* bar, int index) {
#if QT_VERSION >= QT_VERSION_CHECK(5, 15, 0)
    return bar->isTabVisible(index);
#else
    Q_UNUSED(bar)
    Q_UNUSED(index)
    return true;
#endif
}

/** How many items the interface has put there; more than the limit as soon as it is passed. */
int countItems(const QAbstractItemModel& model, const QModelIndex& parent) {
    const int rows = model.rowCount(parent);
    const int columns = model.columnCount(parent);
    int count = rows * columns;
    for (int row = 0; row < rows && count <= mostOptions; ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (model.hasChildren(index)) {
            count += countItems(model, index);
        }
    }
    return count;
}

/** The model of the control's own entries; null for one that the application has made. */
const QAbstractItemModel* ownModelOf(const QWidget* control) {
    if (const auto* const box = qobject_cast<const QComboBox*>(control)) {
        const QAbstractItemModel* const model = box->model();
        const bool isDefault = model != nullptr && model->QObject::parent() == box &&
                               model->metaObject() == &QStandardItemModel::staticMetaObject;
        return isDefault ? model : nullptr;
    }
    if (qobject_cast<const QListWidget*>(control) != nullptr ||
        qobject_cast<const QTreeWidget*>(control) != nullptr ||
        qobject_cast<const QTableWidget*>(control) != nullptr) {
        return static_cast<const QAbstractItemView*>(control)->model();
    }
    return nullptr;
}

QString pathOf(const QModelIndex& index) {
    QString path = index.data().toString();
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        path = above.data().toString() + separator + path;
    }
    return path;
}

QString boolean(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

PartElements::PartElements(ElementBook& book, WidgetViews& views)
    : m_book(book)
    , m_views(views) {}

PartElements::~PartElements() = default;

void PartElements::surveyTabs(QTabBar* bar) {
    UIElement* const view = m_views.viewOf(bar);
    if (view == nullptr) {
        return;
    }
    Bar& known = m_bars[bar];
    if (known.bar.isNull()) {
        // The address may have been that of another one.
        known.bar = bar;
        known.tabs.clear();
    }
    match(known, view);
}

void PartElements::updateTabs(QWidget* widget) {
    const auto known = m_bars.constFind(widget);
    if (known != m_bars.cend() && !known->bar.isNull()) {
        surveyTabs(known->bar);
    }
}

PartElements::Tab PartElements::read(const QTabBar* bar, int index) const {
    Tab tab;
    tab.text = stripMnemonics(bar->tabText(index));
    tab.toolTip = bar->tabToolTip(index);
    tab.isEnabled = bar->isTabEnabled(index) && bar->isEnabled();
    tab.isHidden = !isTabVisible(bar, index);
    if (const QTabWidget* const tabs = tabWidgetOf(bar)) {
        tab.page = tabs->widget(index);
    }
    return tab;
}

/** Finds for each tab the element that it had: by its page, by its text, or where only texts have
 * changed, by its place. */
void PartElements::match(Bar& known, UIElement* view) {
    const QTabBar* const bar = known.bar;
    std::vector<Tab> now;
    now.reserve(static_cast<std::size_t>(bar->count()));
    const bool isHidden = isHiddenWithin(bar, m_views.viewWidgetOf(known.bar));
    for (int i = 0; i < bar->count(); ++i) {
        now.push_back(read(bar, i));
        now.back().isHidden = now.back().isHidden || isHidden;
    }
    std::vector<Tab> before;
    before.swap(known.tabs);
    keepSame(now, before);
    for (Tab& tab : now) {
        if (tab.element == nullptr && !takeLike(tab, before)) {
            takeLike(tab, known.removed);
        }
    }
    const auto isTaken = [](const Tab& old) { return old.element == nullptr; };
    known.removed.erase(std::remove_if(known.removed.begin(), known.removed.end(), isTaken),
                        known.removed.end());
    for (std::size_t i = 0; i < now.size(); ++i) {
        Tab& tab = now[i];
        if (tab.element == nullptr && before.size() == now.size() && tab.page.isNull() &&
            before[i].element != nullptr) {
            tab.element = std::exchange(before[i].element, nullptr);
            tellTab(tab.element, tab);
        }
        if (tab.element == nullptr) {
            tab.element = makeTab(bar, tab, view);
        }
    }
    for (const Tab& gone : before) {
        if (gone.element != nullptr) {
            m_book.setAttribute(gone.element, Attribute::Hidden, boolean(true));
            known.removed.push_back(gone);
        }
    }
    known.tabs.swap(now);
}

/** By far most tabs have stayed what and where they were. */
void PartElements::keepSame(std::vector<Tab>& now, std::vector<Tab>& before) {
    for (std::size_t i = 0; i < now.size() && i < before.size(); ++i) {
        Tab& tab = now[i];
        Tab& old = before[i];
        if (tab.page != old.page || tab.text != old.text) {
            continue;
        }
        tab.element = std::exchange(old.element, nullptr);
        if (tab.isEnabled != old.isEnabled || tab.isHidden != old.isHidden ||
            tab.toolTip != old.toolTip) {
            tellTab(tab.element, tab);
        }
    }
}

/** Gives the tab the element of the first that meets the condition and has one. */
template <class Condition>
bool PartElements::take(Tab& tab, std::vector<Tab>& from, const Condition& isIt) {
    const auto found = std::find_if(from.begin(), from.end(), [&](const Tab& old) {
        return old.element != nullptr && isIt(old);
    });
    if (found == from.end()) {
        return false;
    }
    tab.element = std::exchange(found->element, nullptr);
    tellTab(tab.element, tab);
    return true;
}

/** By its page; by its text only where one of the two has no page any more. */
bool PartElements::takeLike(Tab& tab, std::vector<Tab>& from) {
    return (!tab.page.isNull() &&
            take(tab, from, [&tab](const Tab& old) { return old.page == tab.page; })) ||
           take(tab, from, [&tab](const Tab& old) {
               return old.text == tab.text && (old.page.isNull() || tab.page.isNull());
           });
}

UIElement* PartElements::makeTab(const QTabBar* bar, const Tab& tab, UIElement* view) {
    Description what;
    what.type = ElementType::Tab;
    what.className = UICoverage::className(bar);
    what.text = tab.text;
    what.uses = {Use::Chosen};
    if (!bar->objectName().startsWith(QLatin1String("qt_")) && !bar->objectName().isEmpty()) {
        what.attributes.append({Attribute::ObjectName, bar->objectName()});
    }
    UIElement* const element = m_book.add(nullptr, what, view);
    tellTab(element, tab);
    return element;
}

void PartElements::tellTab(UIElement* element, const Tab& tab) {
    m_book.setText(element, tab.text);
    m_book.setAttribute(element, Attribute::ToolTip,
                        tab.toolTip.isEmpty() ? QString() : tab.toolTip);
    m_book.setAttribute(element, Attribute::Enabled, tab.isEnabled ? QString() : boolean(false));
    m_book.setAttribute(element, Attribute::Hidden, tab.isHidden ? boolean(true) : QString());
    if (!tab.page.isNull()) {
        const UIElement* const opened = m_views.viewOf(tab.page);
        m_views.updateTitle(tab.page);
        m_book.setAttribute(element, Attribute::Opens,
                            opened == nullptr ? QString() : opened->id());
    }
}

UIElement* PartElements::tabElement(QTabBar* bar, int index) {
    surveyTabs(bar);
    const auto known = m_bars.constFind(bar);
    if (known == m_bars.cend() || index < 0 ||
        static_cast<std::size_t>(index) >= known->tabs.size()) {
        return nullptr;
    }
    return known->tabs[static_cast<std::size_t>(index)].element;
}

void PartElements::tellPlaces(const UIElement* view, const QWidget* window) {
    for (const Bar& known : qAsConst(m_bars)) {
        QTabBar* const bar = known.bar;
        if (bar == nullptr || !bar->isVisible() || bar->window() != window ||
            m_views.viewOf(bar) != view) {
            continue;
        }
        for (std::size_t i = 0; i < known.tabs.size(); ++i) {
            const QRect part = bar->tabRect(static_cast<int>(i)).intersected(bar->rect());
            if (!part.isEmpty()) {
                m_book.setPlace(known.tabs[i].element, placeOf(bar, part));
            }
        }
    }
}

void PartElements::surveyOptions(QWidget* control, UIElement* element) {
    const QAbstractItemModel* const model = ownModelOf(control);
    if (model == nullptr) {
        return;
    }
    const auto* const box = qobject_cast<const QComboBox*>(control);
    const QModelIndex root = box == nullptr ? QModelIndex() : box->rootModelIndex();
    if (countItems(*model, root) > mostOptions) {
        return;
    }
    m_surveyed.clear();
    addOptions(*model, root, box == nullptr ? -1 : box->modelColumn(), element, QString());
    m_surveyed.clear();
}

/** @param column the only one that is offered; -1 for all */
void PartElements::addOptions(const QAbstractItemModel& model, const QModelIndex& parent,
                              int column, UIElement* element, const QString& path) {
    const int first = column < 0 ? 0 : column;
    const int end = column < 0 ? model.columnCount(parent) : column + 1;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        for (int at = first; at < end; ++at) {
            const QModelIndex index = model.index(row, at, parent);
            const QString text = index.data().toString();
            const bool isSeparator =
                index.data(Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator");
            if (isSeparator || !(index.flags() & Qt::ItemIsSelectable) || text.isEmpty()) {
                continue;
            }
            if (m_surveyed.contains(path + text)) {
                continue; // nobody could tell the two apart
            }
            m_surveyed.insert(path + text);
            Description what;
            what.type = ElementType::Option;
            what.className = UICoverage::className(&model);
            what.text = text;
            what.uses = {Use::Chosen};
            if (!(index.flags() & Qt::ItemIsEnabled)) {
                what.attributes.append({Attribute::Enabled, boolean(false)});
            }
            m_options.insert({element, path + text}, m_book.add(nullptr, what, element));
        }
        const QModelIndex above = model.index(row, 0, parent);
        if (column < 0 && model.hasChildren(above)) {
            addOptions(model, above, column, element, path + above.data().toString() + separator);
        }
    }
}

UIElement* PartElements::optionElement(const QComboBox* box, int row) {
    UIElement* const element = m_book.elementOf(box);
    const QString text = box->itemText(row);
    return element == nullptr || text.isEmpty() ? nullptr : m_options.value({element, text});
}

UIElement* PartElements::optionElement(const QAbstractItemView* view, const QModelIndex& index) {
    UIElement* const element = m_book.elementOf(view);
    if (element == nullptr || !index.isValid() || ownModelOf(view) != index.model()) {
        return nullptr;
    }
    return m_options.value({element, pathOf(index)});
}

} // namespace UIControls
} // namespace Vorsk

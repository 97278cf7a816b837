// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetpages.h"

#include "qtuicontrols/widgets/widgetclass.h"
#include "qtuicontrols/widgets/widgetnames.h"
#include "tracking/mnemonics.h"

#include <QScrollArea>
#include <QStackedLayout>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>

#include <algorithm>

namespace Vorsk {
namespace UIControls {

using UICoverage::stripMnemonics;

namespace {

bool isPageOf(const QLayout* layout, QWidget* widget) {
    const auto* const stack = qobject_cast<const QStackedLayout*>(layout);
    if (stack != nullptr) {
        return stack->stackingMode() == QStackedLayout::StackOne && stack->indexOf(widget) >= 0;
    }
    for (const QObject* child : layout->children()) {
        const auto* const inner = qobject_cast<const QLayout*>(child);
        if (inner != nullptr && isPageOf(inner, widget)) {
            return true;
        }
    }
    return false;
}

bool hasStack(const QLayout* layout) {
    if (qobject_cast<const QStackedLayout*>(layout) != nullptr) {
        return true;
    }
    const QObjectList& inner = layout->children();
    return std::any_of(inner.cbegin(), inner.cend(), [](const QObject* child) {
        const auto* const nested = qobject_cast<const QLayout*>(child);
        return nested != nullptr && hasStack(nested);
    });
}

QToolBox* toolBoxOf(const QWidget* page) {
    const QWidget* const viewport = page->parentWidget();
    const QWidget* const area = viewport == nullptr ? nullptr : viewport->parentWidget();
    const auto* const scroll = qobject_cast<const QScrollArea*>(area);
    if (scroll == nullptr || scroll->widget() != page) {
        return nullptr;
    }
    return qobject_cast<QToolBox*>(scroll->parentWidget());
}

QTabWidget* tabWidgetOf(const QWidget* page) {
    const auto* const stack = qobject_cast<const QStackedWidget*>(page->parentWidget());
    return stack == nullptr ? nullptr : qobject_cast<QTabWidget*>(stack->parentWidget());
}

bool liesInWizard(const QWidget* widget) {
    for (const QWidget* at = widget->parentWidget(); at != nullptr; at = at->parentWidget()) {
        if (classOf(at) == WidgetClass::Wizard) {
            return true;
        }
    }
    return false;
}

} // namespace

bool isPageClass(WidgetClass cls) {
    return cls == WidgetClass::Dock || cls == WidgetClass::MdiWindow ||
           cls == WidgetClass::WizardPage;
}

bool mayHavePages(const QWidget* parent) {
    if (parent->layout() != nullptr && hasStack(parent->layout())) {
        return true;
    }
    const QWidget* const area = parent->parentWidget();
    return area != nullptr && qobject_cast<const QToolBox*>(area->parentWidget()) != nullptr;
}

bool isPage(const QWidget* widget) {
    const QWidget* const parent = widget->parentWidget();
    if (parent == nullptr) {
        return false;
    }
    switch (classOf(widget)) {
    case WidgetClass::Dock:
        return true;
    case WidgetClass::MdiWindow:
        return !widget->isWindow();
    case WidgetClass::WizardPage:
        return liesInWizard(widget);
    case WidgetClass::Part:
        return false;
    default:
        break;
    }
    if (widget->isWindow()) {
        return false;
    }
    auto* const page = const_cast<QWidget*>(widget); // NOLINT(*-const-cast): look-ups take it so
    const QLayout* const layout = parent->layout();
    return (layout != nullptr && isPageOf(layout, page)) || toolBoxOf(widget) != nullptr;
}

QList<QWidget*> stackedPagesOf(const QWidget* parent) {
    QList<QWidget*> pages;
    const auto* const stack = qobject_cast<const QStackedLayout*>(parent->layout());
    for (int i = 0; stack != nullptr && i < stack->count(); ++i) {
        if (QWidget* const page = stack->widget(i)) {
            pages.append(page);
        }
    }
    return pages;
}

QString pageTitleOf(const QWidget* widget) {
    auto* const page = const_cast<QWidget*>(widget); // NOLINT(*-const-cast): look-ups take it so
    if (const QTabWidget* const tabs = tabWidgetOf(widget)) {
        return stripMnemonics(tabs->tabText(tabs->indexOf(page)));
    }
    if (const QToolBox* const box = toolBoxOf(widget)) {
        return stripMnemonics(box->itemText(box->indexOf(page)));
    }
    return titleOf(widget);
}

} // namespace UIControls
} // namespace Vorsk

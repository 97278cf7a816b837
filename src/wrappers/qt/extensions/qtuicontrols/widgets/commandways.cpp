// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/commandways.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStringList>
#include <QToolBar>
#include <QToolButton>

namespace Vorsk {
namespace UIControls {

namespace {

constexpr Way all[] = {Way::Menu, Way::ToolBar, Way::Shortcut, Way::ContextMenu};

/** Menus may open one another in a circle. */
constexpr int deepestMenu = 16;

Way wayOfMenu(const QMenu* menu, int depth) {
    const QList<QWidget*> openers = menu->menuAction()->associatedWidgets();
    for (const QWidget* const opener : openers) {
        if (qobject_cast<const QMenuBar*>(opener) != nullptr ||
            qobject_cast<const QPushButton*>(opener) != nullptr) {
            return Way::Menu;
        }
        if (qobject_cast<const QToolBar*>(opener) != nullptr ||
            qobject_cast<const QToolButton*>(opener) != nullptr) {
            return Way::ToolBar;
        }
        const auto* const outer = qobject_cast<const QMenu*>(opener);
        if (outer != nullptr && depth < deepestMenu) {
            return wayOfMenu(outer, depth + 1);
        }
    }
    // A tool bar's extension opens its menu by itself.
    for (const QWidget* above = menu->parentWidget(); above != nullptr && !above->isWindow();
         above = above->parentWidget()) {
        if (qobject_cast<const QToolBar*>(above) != nullptr ||
            qobject_cast<const QToolButton*>(above) != nullptr) {
            return Way::ToolBar;
        }
    }
    return Way::ContextMenu;
}

} // namespace

QString WaySet::text() const {
    QString names;
    for (const Way way : all) {
        if (contains(way)) {
            if (!names.isNull()) {
                names += QLatin1Char(' ');
            }
            names += QLatin1String(nameOf(way));
        }
    }
    return names;
}

WaySet WaySet::of(const QString& text) {
    WaySet set;
    const QStringList names = text.split(QLatin1Char(' '));
    for (const Way way : all) {
        if (names.contains(QString::fromLatin1(nameOf(way)))) {
            set.add(way);
        }
    }
    return set;
}

Way wayThrough(const QWidget* lister) {
    if (const auto* const menu = qobject_cast<const QMenu*>(lister)) {
        return wayOfMenu(menu, 0);
    }
    if (qobject_cast<const QMenuBar*>(lister) != nullptr ||
        qobject_cast<const QPushButton*>(lister) != nullptr) {
        return Way::Menu;
    }
    if (qobject_cast<const QToolBar*>(lister) != nullptr ||
        qobject_cast<const QToolButton*>(lister) != nullptr ||
        qobject_cast<const QLineEdit*>(lister) != nullptr) { // has a button for each
        return Way::ToolBar;
    }
    return lister->contextMenuPolicy() == Qt::ActionsContextMenu ? Way::ContextMenu : Way::Shortcut;
}

} // namespace UIControls
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QAction>
#include <QHash>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace Vorsk {
namespace UIControls {

class Commands;

/**
 * Remembers which actions each widget lists, so that Commands is told of each once when it comes
 * and once when it goes. GUI thread only.
 */
class ActionListers {
public:
    /** Outlives this object. */
    explicit ActionListers(Commands& commands);

    /**
     * Brings what is known of the widget's actions up to date.
     * @param actions those that can be reached through it now, each in that way
     */
    void update(QWidget* lister, const QList<QAction*>& actions, Way way, UIElement* view);

private:
    struct Listed {
        /** For comparison; dead when the guard says so. */
        QAction* action = nullptr;
        QPointer<QAction> living;
        Way way = Way::Menu;
    };
    struct Lister {
        QPointer<QWidget> widget;
        std::vector<Listed> actions;
    };

    void remove(const Lister& lister);
    void forgetDead();

    Commands& m_commands;
    QHash<const QWidget*, Lister> m_listers;
    int m_sizeToClean = 256;
};

} // namespace UIControls
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"
#include "qtuicontrols/widgets/actionlisters.h"
#include "qtuicontrols/widgets/widgetclass.h"
#include "qtuicontrols/widgets/widgetgroups.h"
#include "qtuicontrols/widgets/widgetlabels.h"

#include <QBasicTimer>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <vector>

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class Commands;
class PartElements;
class WidgetUses;
class WidgetViews;

/**
 * Finds what a person can operate in trees of widgets and makes an element of each: controls, tabs,
 * options, links, and the actions that menus, tool bars and other widgets list. A tree is surveyed
 * as a whole when its window is shown, hidden pages and shut menus with it; what comes later is
 * noted and surveyed when its construction is over, by a timer of its own at the latest. GUI thread
 * only.
 */
class WidgetSurvey : public QObject {
    Q_OBJECT

public:
    struct Pieces {
        ElementBook& book;
        WidgetViews& views;
        PartElements& parts;
        WidgetUses& uses;
        Commands& commands;
    };

    /** All pieces outlive this object. */
    explicit WidgetSurvey(const Pieces& pieces);

    /** The widget and all that lies in it, now. */
    void survey(QWidget* widget);

    /** The widget, which may still be in construction, is surveyed at the next flush(); only what
     * it is itself, unless it asks for all that lies in it. */
    enum class Extent : quint8 { Itself, Tree };
    void note(QWidget* widget, Extent extent);

    /** Surveys what was noted. To be called when no widget is in construction. */
    void flush() {
        if (!m_noted.empty()) {
            surveyNoted();
        }
    }

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    /** Where controls of a walk belong. */
    struct Place {
        QWidget* viewWidget = nullptr;
        UIElement* view = nullptr;
    };
    struct Noted {
        QPointer<QWidget> widget;
        Extent extent;
    };

    struct Lister {
        QPointer<QWidget> widget;
        UIElement* view;
    };

    void surveyNoted();
    void surveyOne(const Noted& noted);
    void walk(QWidget* widget, Place place, bool mayBePage);
    void walkChildren(QWidget* widget, const Place& place);
    void walkMenu(QMenu* menu);
    void finishWalk();
    bool enterView(QWidget* widget, WidgetClass cls, Place& place, bool mayBePage);
    void visit(QWidget* widget, WidgetClass cls, const Place& place);
    void addControl(QWidget* widget, ElementType type, Place place);
    void tellGroupsOfFirstRows(const QWidget* row, const QWidget* view);
    void tellWhatOpens(QWidget* widget, UIElement* control);
    void visitActions(QWidget* widget, WidgetClass cls, const Place& place);

    Pieces m_pieces;
    ActionListers m_listers;
    std::vector<Noted> m_noted;
    QBasicTimer m_timer;
    // Of the present walk.
    WidgetLabels m_labels;
    WidgetGroups m_groups;
    QSet<const QMenu*> m_walkedMenus;
    std::vector<Lister> m_menus;
    /** Whose actions nothing shows. */
    std::vector<Lister> m_unseenListers;
};

} // namespace UIControls
} // namespace Vorsk

#include "qtuicontrols/widgets/widgetsurvey.h"

#include "qtuicontrols/widgets/commands.h"
#include "qtuicontrols/widgets/partelements.h"
#include "qtuicontrols/widgets/widgetnames.h"
#include "qtuicontrols/widgets/widgetpages.h"
#include "qtuicontrols/widgets/widgetrole.h"
#include "qtuicontrols/widgets/widgetuses.h"
#include "qtuicontrols/widgets/widgetviews.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QGraphicsProxyWidget>
#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QTabBar>
#include <QTimerEvent>
#include <QToolBox>
#include <QToolButton>

namespace Vorsk {
namespace UIControls {

namespace {

bool isTopLevel(const QWidget* widget) {
    return widget->isWindow() && widget->graphicsProxyWidget() == nullptr;
}

bool mayHaveLinks(const QWidget* widget, WidgetClass cls) {
    return cls == WidgetClass::TextBrowser ||
           (cls == WidgetClass::Label &&
            static_cast<const QLabel*>(widget)->text().contains(QLatin1Char('<')));
}

/** The page that the button of a tool box opens; null when that cannot be told. */
QWidget* toolBoxPage(const QWidget* button) {
    const auto* const box = qobject_cast<QToolBox*>(button->parentWidget());
    const QString text = captionOf(button);
    QWidget* page = nullptr;
    for (int i = 0; box != nullptr && i < box->count(); ++i) {
        QWidget* const candidate = box->widget(i);
        if (candidate != nullptr && pageTitleOf(candidate) == text) {
            if (page != nullptr) {
                return nullptr;
            }
            page = candidate;
        }
    }
    return page;
}

} // namespace

WidgetSurvey::WidgetSurvey(const Pieces& pieces)
    : m_pieces(pieces)
    , m_listers(pieces.commands) {}

void WidgetSurvey::note(QWidget* widget, Extent extent) {
    // A menu that is being filled is noted for each of its actions.
    if (m_noted.empty() || m_noted.back().widget != widget || m_noted.back().extent != extent) {
        m_noted.push_back({widget, extent});
    }
    // In case nothing else happens.
    if (!m_timer.isActive()) {
        m_timer.start(0, this);
    }
}

void WidgetSurvey::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_timer.timerId()) {
        flush();
    }
    QObject::timerEvent(event);
}

void WidgetSurvey::survey(QWidget* widget) {
    m_noted.push_back({widget, Extent::Tree});
    surveyNoted();
}

void WidgetSurvey::surveyNoted() {
    ElementBook::Batch batch(m_pieces.book);
    std::vector<Noted> noted;
    noted.swap(m_noted);
    m_timer.stop();
    m_walkedMenus.clear();
    for (const Noted& each : noted) {
        if (!each.widget.isNull()) {
            surveyOne(each);
        }
    }
    finishWalk();
    m_labels = WidgetLabels();
    m_groups = WidgetGroups();
}

void WidgetSurvey::surveyOne(const Noted& noted) {
    QWidget* const widget = noted.widget;
    if (liesInControl(widget)) {
        return;
    }
    const WidgetClass cls = classOf(widget);
    if (cls == WidgetClass::Menu) {
        walkMenu(static_cast<QMenu*>(widget));
        return;
    }
    Place place;
    if (!isTopLevel(widget)) {
        place = {m_pieces.views.viewWidgetOf(widget), m_pieces.views.viewOf(widget)};
    }
    if (noted.extent == Extent::Tree) {
        walk(widget, place, true);
    } else if (cls != WidgetClass::Part && !isPartByPlace(widget, cls) &&
               enterView(widget, cls, place, true)) {
        visit(widget, cls, place);
    }
}

void WidgetSurvey::walk(QWidget* widget, Place place, bool mayBePage) {
    const WidgetClass cls = classOf(widget);
    if (cls == WidgetClass::Menu) {
        walkMenu(static_cast<QMenu*>(widget));
        return;
    }
    if (cls == WidgetClass::Part || isPartByPlace(widget, cls) ||
        !enterView(widget, cls, place, mayBePage)) {
        return;
    }
    visit(widget, cls, place);
    if (isEntered(cls)) {
        walkChildren(widget, place);
    }
}

void WidgetSurvey::walkChildren(QWidget* widget, const Place& place) {
    const bool mayBePages = mayHavePages(widget);
    // The one that is shown is the last child; what is told should not depend on that.
    for (QWidget* page : stackedPagesOf(widget)) {
        if (isPage(page)) {
            m_pieces.views.viewOf(page);
        }
    }
    const QObjectList children = widget->children();
    for (QObject* child : children) {
        if (child->isWidgetType()) {
            auto* const inner = static_cast<QWidget*>(child);
            walk(inner, isTopLevel(inner) ? Place() : place, mayBePages);
        } else if (auto* const shortcut = qobject_cast<QShortcut*>(child)) {
            m_pieces.commands.add(shortcut, place.view);
        }
    }
}

/** Where the widget is a view, what lies in it belongs there. False where nobody could ever see it.
 */
bool WidgetSurvey::enterView(QWidget* widget, WidgetClass cls, Place& place, bool mayBePage) {
    const bool isWindow = isTopLevel(widget);
    if (!isWindow && !mayBePage && !isPageClass(cls)) {
        return true;
    }
    if (m_pieces.views.knownView(widget) == nullptr && !m_pieces.views.isView(widget)) {
        return !isWindow;
    }
    const bool isPlain = isWindow && cls != WidgetClass::MainWindow && cls != WidgetClass::Dialog &&
                         cls != WidgetClass::Wizard && cls != WidgetClass::Dock;
    if (isPlain && !widget->isVisible() && m_pieces.views.knownView(widget) == nullptr) {
        // It becomes a view when a control is found in it, or when it is shown.
        place = Place();
        return widget->parentWidget() != nullptr;
    }
    place = {widget, m_pieces.views.viewOf(widget)};
    return place.view != nullptr;
}

/** Its actions come after all that the windows themselves show: a command that a tool bar shows as
 * well can be reached without the menu, and so lies in the window. */
void WidgetSurvey::walkMenu(QMenu* menu) {
    if (!m_walkedMenus.contains(menu)) {
        m_walkedMenus.insert(menu);
        if (UIElement* const view = m_pieces.views.viewOf(menu)) {
            m_menus.push_back({menu, view});
        }
    }
}

/** Menus, and last what is reached by shortcuts and context menus alone. */
void WidgetSurvey::finishWalk() {
    for (std::size_t i = 0; i < m_menus.size(); ++i) {
        const Lister lister = m_menus[i]; // further ones may come
        if (!lister.widget.isNull()) {
            visitActions(lister.widget, WidgetClass::Menu, {lister.widget, lister.view});
            walkChildren(lister.widget, {lister.widget, lister.view});
        }
    }
    m_menus.clear();
    for (const Lister& lister : m_unseenListers) {
        if (!lister.widget.isNull()) {
            const ReachedActions reached =
                actionsReachedThrough(lister.widget, classOf(lister.widget));
            m_listers.update(lister.widget, reached.actions, reached.way, lister.view);
        }
    }
    m_unseenListers.clear();
}

void WidgetSurvey::visit(QWidget* widget, WidgetClass cls, const Place& place) {
    ElementType type = ElementType::Area;
    if (isControl(widget, cls, &type)) {
        const UIElement* const known = m_pieces.book.elementOf(widget);
        if (known == nullptr || isView(m_pieces.book.typeOf(known))) {
            addControl(widget, type, place);
        }
    } else if (cls == WidgetClass::TabBar) {
        m_pieces.parts.surveyTabs(static_cast<QTabBar*>(widget));
    } else if (mayHaveLinks(widget, cls)) {
        if (UIElement* const view = m_pieces.views.viewOf(widget)) {
            m_pieces.uses.findLinks(widget, view);
        }
    }
    visitActions(widget, cls, place);
}

void WidgetSurvey::addControl(QWidget* widget, ElementType type, Place place) {
    if (place.view == nullptr) {
        place = {m_pieces.views.viewWidgetOf(widget), m_pieces.views.viewOf(widget)};
    }
    if (place.view == nullptr) {
        return;
    }
    Description what = describe(widget, type, place.viewWidget, m_labels);
    what.uses = WidgetUses::usesOf(widget, type);
    const QString group = m_groups.groupOf(widget, place.viewWidget);
    if (!group.isNull()) {
        what.attributes.append({Attribute::Group, group});
    }
    UIElement* const control = m_pieces.book.add(widget, what, place.view);
    m_pieces.uses.watch(widget, type, control);
    m_pieces.parts.surveyOptions(widget, control);
    tellWhatOpens(widget, control);
    if (!group.isNull()) {
        tellGroupsOfFirstRows(m_groups.rowOf(widget, place.viewWidget), place.viewWidget);
    }
}

/** While there were only these, nobody could tell that they are rows. */
void WidgetSurvey::tellGroupsOfFirstRows(const QWidget* row, const QWidget* view) {
    int number = 0;
    for (const QObject* sibling : row->parentWidget()->children()) {
        if (!sibling->isWidgetType()) {
            continue;
        }
        if (++number == WidgetGroups::fewestRows) {
            break;
        }
        QList<QWidget*> inner = sibling->findChildren<QWidget*>();
        inner.append(static_cast<QWidget*>(const_cast<QObject*>(sibling))); // NOLINT(*-const-cast)
        for (const QWidget* widget : qAsConst(inner)) {
            UIElement* const known = m_pieces.book.elementOf(widget);
            if (known != nullptr && !isView(m_pieces.book.typeOf(known))) {
                m_pieces.book.setAttribute(known, Attribute::Group, m_groups.groupOf(widget, view));
            }
        }
    }
}

void WidgetSurvey::tellWhatOpens(QWidget* widget, UIElement* control) {
    const UIElement* opened = nullptr;
    if (QMenu* const menu = menuOf(widget)) {
        walkMenu(menu);
        opened = m_pieces.views.viewOf(menu);
    } else if (m_pieces.book.typeOf(control) == ElementType::Tab) {
        QWidget* const page = toolBoxPage(widget);
        opened = page == nullptr ? nullptr : m_pieces.views.viewOf(page);
    }
    if (opened != nullptr) {
        m_pieces.book.setAttribute(control, Attribute::Opens, opened->id());
    }
}

/** Tells which actions can be reached through the widget, and walks the menus that they open. */
void WidgetSurvey::visitActions(QWidget* widget, WidgetClass cls, const Place& place) {
    const QList<QAction*> actions = widget->actions();
    if (actions.isEmpty()) {
        m_listers.update(widget, {}, Way::Menu, nullptr);
        return;
    }
    for (QAction* action : actions) {
        if (QMenu* const menu = action->menu()) {
            walkMenu(menu);
        }
    }
    UIElement* const view = place.view != nullptr ? place.view : m_pieces.views.viewOf(widget);
    if (view == nullptr) {
        return;
    }
    const ReachedActions reached = actionsReachedThrough(widget, cls);
    if (reached.isShown) {
        m_listers.update(widget, reached.actions, reached.way, view);
    } else {
        m_unseenListers.push_back({widget, view});
    }
}

} // namespace UIControls
} // namespace Vorsk

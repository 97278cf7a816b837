// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetviews.h"

#include "qtuicontrols/widgets/widgetclass.h"
#include "qtuicontrols/widgets/widgetlabels.h"
#include "qtuicontrols/widgets/widgetnames.h"
#include "qtuicontrols/widgets/widgetpages.h"
#include "qtuicontrols/widgets/widgetrole.h"

#include <QAction>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMdiSubWindow>
#include <QMenu>
#include <QWindow>

#include <algorithm>

namespace Vorsk {
namespace UIControls {

namespace {

/** Where the parent chain goes on: a window that is shown within a graphics scene lies in what
 * shows the scene. */
QWidget* above(const QWidget* widget) {
    if (!widget->isWindow()) {
        return widget->parentWidget();
    }
    const QGraphicsProxyWidget* const proxy = widget->graphicsProxyWidget();
    if (proxy == nullptr || proxy->scene() == nullptr) {
        return nullptr;
    }
    const QList<QGraphicsView*> views = proxy->scene()->views();
    return views.isEmpty() ? nullptr : views.first();
}

/** A window of its own, not one that is embedded in a graphics scene. */
bool isTopLevel(const QWidget* widget) {
    return widget->isWindow() && widget->graphicsProxyWidget() == nullptr;
}

/** Menus that belong to a control or to a title bar: nobody's commands. */
bool isPartMenu(QMenu* menu) {
    if (menu->objectName() == QLatin1String("qt_edit_menu")) {
        return true;
    }
    QWidget* const parent = menu->parentWidget();
    if (parent != nullptr && liesInControl(parent)) {
        return true;
    }
    for (const QWidget* host : menu->menuAction()->associatedWidgets()) {
        const WidgetClass cls = classOf(host);
        if (cls == WidgetClass::Part || isPartByPlace(host, cls) || liesInControl(host)) {
            return true;
        }
    }
    auto* const sub = qobject_cast<QMdiSubWindow*>(parent);
    return sub != nullptr && sub->systemMenu() == menu;
}

/**
 * Whether a person could see the widget now, as far as the application knows.
 * @param operated the window that gets input at this moment, which is there before the window
 * system has told of it; may be null
 */
bool canBeSeen(const QWidget* widget, const QWidget* operated = nullptr) {
    if (!widget->isVisible() || widget->size().isEmpty()) {
        return false;
    }
    const QWidget* const top = widget->window();
    if (const QGraphicsProxyWidget* const proxy = top->graphicsProxyWidget()) {
        const QWidget* const view = above(top);
        return proxy->isVisible() && view != nullptr && canBeSeen(view, operated);
    }
    const QWindow* const window = top->windowHandle();
    if (window == nullptr || (top != operated && !window->isExposed()) || top->isMinimized() ||
        top->testAttribute(Qt::WA_DontShowOnScreen) || top->windowOpacity() <= 0) {
        return false;
    }
    // Docks behind another one are put beside the window.
    const QRect place(widget->mapTo(top, QPoint(0, 0)), widget->size());
    return place.intersects(top->rect());
}

/** Whether the book's element for the widget is that of a control, so that the view has to do
 * without. */
bool isControlAsWell(const QWidget* widget) {
    const WidgetClass cls = classOf(widget);
    return isControlClass(cls) || cls == WidgetClass::GroupBox;
}

} // namespace

WidgetViews::WidgetViews(ElementBook& book)
    : m_book(book) {}

WidgetViews::~WidgetViews() = default;

UIElement* WidgetViews::knownView(const QWidget* widget) const {
    const auto known = m_views.constFind(widget);
    return known == m_views.cend() || known->widget.isNull() ? nullptr : known->element;
}

bool WidgetViews::typeOf(const QWidget* widget, ElementType* type) const {
    const WidgetClass cls = classOf(widget);
    if (cls == WidgetClass::Part) {
        return false;
    }
    if (cls == WidgetClass::Menu) {
        *type = ElementType::Menu;
        return true;
    }
    if (isPage(widget)) {
        *type = cls == WidgetClass::MdiWindow ? ElementType::Window : ElementType::Page;
        return true;
    }
    if (!isTopLevel(widget)) {
        return false;
    }
    switch (widget->windowType()) {
    case Qt::ToolTip:
    case Qt::Desktop:
        return false;
    case Qt::Popup:
        // The list of a completer; what it offers is chosen for its input.
        *type = ElementType::Popup;
        return widget->focusProxy() == nullptr || !isControlClass(cls);
    case Qt::Dialog:
    case Qt::Sheet:
        *type = ElementType::Dialog;
        return true;
    default:
        *type = cls == WidgetClass::Dialog || cls == WidgetClass::Wizard ? ElementType::Dialog
                                                                         : ElementType::Window;
        return true;
    }
}

bool WidgetViews::isView(const QWidget* widget) const {
    ElementType type = ElementType::Window;
    return typeOf(widget, &type);
}

QWidget* WidgetViews::viewWidgetOf(QWidget* widget) const {
    ElementType type = ElementType::Window;
    for (QWidget* at = widget; at != nullptr; at = above(at)) {
        if (knownView(at) != nullptr || typeOf(at, &type)) {
            return at;
        }
    }
    return nullptr;
}

UIElement* WidgetViews::viewOf(QWidget* widget) {
    ElementType type = ElementType::Window;
    for (QWidget* at = widget; at != nullptr; at = above(at)) {
        if (UIElement* const known = knownView(at)) {
            return known;
        }
        if (typeOf(at, &type)) {
            return make(at, type);
        }
    }
    return nullptr;
}

UIElement* WidgetViews::make(QWidget* widget, ElementType type) {
    if (type == ElementType::Menu && isPartMenu(static_cast<QMenu*>(widget))) {
        return nullptr;
    }
    const WidgetClass cls = classOf(widget);
    if (type == ElementType::Window && cls != WidgetClass::MainWindow &&
        widget->parentWidget() == nullptr && !widget->isVisible()) {
        return nullptr; // may be about to be put into another one, or meant for other things than
                        // to be seen
    }
    ElementBook::Batch batch(m_book);
    UIElement* const parent = parentViewOf(widget, type);
    if (parent == nullptr && isPage(widget)) {
        return nullptr;
    }
    if (UIElement* const made = knownView(widget)) {
        return made; // on the way up
    }
    WidgetLabels labels;
    Description what = describe(widget, type, nullptr, labels);
    what.uses.add(Use::Seen);
    if (type == ElementType::Page) {
        const QString title = pageTitleOf(widget);
        if (!title.isEmpty()) {
            what.text = title;
            what.attributes.append({Attribute::Page, title});
        }
    }
    View view;
    view.widget = widget;
    view.element = m_book.add(isControlAsWell(widget) ? nullptr : widget, what, parent);
    if (m_views.size() >= m_sizeToClean || m_views.contains(widget)) {
        forgetDead();
        m_sizeToClean = std::max(m_sizeToClean, 2 * m_views.size());
    }
    m_views.insert(widget, view);
    if (widget->isVisible()) {
        m_comingUp.emplace_back(widget);
    }
    return view.element;
}

UIElement* WidgetViews::parentViewOf(QWidget* widget, ElementType type) {
    if (type == ElementType::Menu) {
        return viewAboveMenu(static_cast<QMenu*>(widget));
    }
    const bool isWithin = type == ElementType::Page || !widget->isWindow();
    return isWithin ? viewOf(widget->parentWidget()) : nullptr;
}

UIElement* WidgetViews::viewAboveMenu(QMenu* menu) {
    if (std::find(m_path.cbegin(), m_path.cend(), menu) != m_path.cend()) {
        return nullptr;
    }
    m_path.push_back(menu);
    UIElement* found = nullptr;
    for (QWidget* host : menu->menuAction()->associatedWidgets()) {
        if (host != menu) {
            found = viewOf(host);
        }
        if (found != nullptr) {
            break;
        }
    }
    if (found == nullptr && menu->parentWidget() != nullptr) {
        found = viewOf(menu->parentWidget());
    }
    m_path.pop_back();
    return found;
}

void WidgetViews::handleShow(QWidget* widget) {
    if (knownView(widget) != nullptr) {
        updateTitle(widget);
        m_comingUp.emplace_back(widget);
    }
}

void WidgetViews::handleHide(QWidget* widget) {
    // A widget hides in its destructor as well, when nothing else of it may be touched.
    const auto known = m_views.find(widget);
    if (known != m_views.end()) {
        setShowing(*known, false);
    }
}

void WidgetViews::handleMove(QWidget* widget) {
    const auto known = m_views.find(widget);
    if (known != m_views.end() && known->isShowing && !canBeSeen(widget)) {
        setShowing(*known, false);
        m_comingUp.emplace_back(widget);
    }
}

void WidgetViews::updateTitle(QWidget* widget) {
    UIElement* const view = knownView(widget);
    if (view == nullptr) {
        return;
    }
    if (m_book.typeOf(view) != ElementType::Page) {
        m_book.setText(view, titleOf(widget));
        return;
    }
    const QString title = pageTitleOf(widget);
    m_book.setText(view, title.isEmpty() ? QString() : title);
    m_book.setAttribute(view, Attribute::Page, title.isEmpty() ? QString() : title);
}

void WidgetViews::settle(const QObject* operated) {
    if (m_comingUp.empty()) {
        return;
    }
    const QWidget* const operatedWindow = operated == nullptr || !operated->isWidgetType()
                                              ? nullptr
                                              : static_cast<const QWidget*>(operated)->window();
    forgetDead();
    // Who hears of it may have views made.
    std::vector<QPointer<QWidget>> waiting;
    waiting.swap(m_comingUp);
    for (const QPointer<QWidget>& widget : waiting) {
        const auto known = m_views.find(widget.data());
        if (widget.isNull() || known == m_views.end() || known->isShowing || !widget->isVisible()) {
            continue;
        }
        if (!canBeSeen(widget, operatedWindow)) {
            m_comingUp.push_back(widget);
            continue;
        }
        setShowing(*known, true);
        UIElement* const element = known->element;
        m_book.countUse(element, Use::Seen);
        if (m_seenListener) {
            m_seenListener(widget, element);
        }
    }
}

void WidgetViews::setShowing(View& view, bool isShowing) {
    if (view.isShowing != isShowing) {
        view.isShowing = isShowing;
        m_book.setAttribute(view.element, Attribute::Showing,
                            isShowing ? QStringLiteral("true") : QStringLiteral("false"));
    }
}

void WidgetViews::forgetDead() {
    for (auto at = m_views.begin(); at != m_views.end();) {
        if (at->widget.isNull()) {
            setShowing(*at, false);
            at = m_views.erase(at);
        } else {
            ++at;
        }
    }
}

} // namespace UIControls
} // namespace Vorsk

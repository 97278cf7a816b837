// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/areauses.h"

#include "qtuicontrols/widgets/ownclass.h"
#include "qtuicontrols/widgets/usecounter.h"
#include "qtuicontrols/widgets/widgetlabels.h"
#include "qtuicontrols/widgets/widgetnames.h"
#include "tracking/classname.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QDockWidget>
#include <QEvent>
#include <QGraphicsObject>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSizeGrip>
#include <QSplitterHandle>
#include <QTabBar>
#include <QTextEdit>
#include <QToolBar>

#include <cstdlib>
#include <memory>
#include <typeinfo>

#include <cxxabi.h>

namespace Vorsk {
namespace UIControls {

namespace {

template <class... Classes>
bool isAnyOf(const QWidget* widget) {
    return (... || (qobject_cast<const Classes*>(widget) != nullptr));
}

/** Whether Qt's own part of the widget takes presses, for what is no control. */
bool takesPressesOfQt(const QWidget* widget) {
    const auto* const label = qobject_cast<const QLabel*>(widget);
    if (label != nullptr) {
        return label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse);
    }
    return isAnyOf<QMenu, QMenuBar, QScrollBar, QSplitterHandle, QSizeGrip, QTabBar,
                   QAbstractItemView, QMdiSubWindow, QDockWidget, QToolBar, QMainWindow, QTextEdit,
                   QPlainTextEdit, QLineEdit, QGraphicsView>(widget);
}

/** Classes of Qt's that take no press by themselves: when one did, the application made it. */
bool isPlain(const QWidget* widget) {
    const QMetaObject* const cls = widget->metaObject();
    return cls == &QWidget::staticMetaObject || cls == &QFrame::staticMetaObject ||
           cls == &QLabel::staticMetaObject;
}

/** The widget, or the scroll area whose viewport it is. */
QWidget* withViewport(QWidget* widget) {
    auto* const area = qobject_cast<QAbstractScrollArea*>(widget->parentWidget());
    return area != nullptr && area->viewport() == widget ? area : widget;
}

bool isArea(const QWidget* widget, bool passesOn) {
    if (takesPressesOfQt(widget)) {
        // What shows something may be made to be pressed; others add to what Qt does.
        return isAnyOf<QGraphicsView, QTextEdit, QPlainTextEdit, QLabel>(widget) &&
               handlesPress(widget);
    }
    // What passes nothing on may as well have ignored the press.
    return handlesPress(widget) || (passesOn && (isOwnClass(widget) || isPlain(widget)));
}

QString nameOf(const QGraphicsItem* item) {
    if (const QGraphicsObject* const object = item->toGraphicsObject()) {
        return UICoverage::className(object);
    }
    const char* const mangled = typeid(*item).name();
    const std::unique_ptr<char, void (*)(void*)> name(
        abi::__cxa_demangle(mangled, nullptr, nullptr, nullptr), std::free);
    return QString::fromUtf8(name == nullptr ? mangled : name.get());
}

bool isPress(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
           type == QEvent::TouchBegin || type == QEvent::TabletPress;
}

/** Whether the widget has something to do with a press of that kind. What has not gets a press of
 * the mouse next. */
bool takesKind(const QWidget* widget, QEvent::Type type) {
    switch (type) {
    case QEvent::TouchBegin:
        return widget->testAttribute(Qt::WA_AcceptTouchEvents);
    case QEvent::TabletPress:
        return handlesTablet(widget);
    default:
        return true;
    }
}

} // namespace

AreaUses::AreaUses(UseCounter& counter)
    : m_counter(counter) {}

void AreaUses::expect(QWidget* receiver, bool isOfControl, QEvent* event) {
    if (isPress(event->type())) {
        press(receiver, isOfControl, event);
        return;
    }
    settle();
    if (event->type() == QEvent::MouseMove) {
        drag();
    } else if (event->type() == QEvent::MouseButtonRelease) {
        m_held = nullptr;
    }
}

void AreaUses::press(QWidget* receiver, bool isOfControl, QEvent* event) {
    // The one that got it has passed it on.
    const bool isPassedOn = !m_pressed.isNull() && m_pressed->parentWidget() == receiver;
    // A finger or pen whose press was ignored presses the mouse.
    const bool isByFinger = m_pressedBy == QEvent::TouchBegin || m_pressedBy == QEvent::TabletPress;
    const bool isAgain =
        m_pressed == receiver && isByFinger && event->type() == QEvent::MouseButtonPress;
    if (!isPassedOn && !isAgain) {
        settle();
    }
    m_pressed = isOfControl || !takesKind(receiver, event->type()) ? nullptr : receiver;
    m_pressedBy = event->type();
    m_isScenePressed = false;
    QWidget* const around = withViewport(receiver);
    if (qobject_cast<QGraphicsView*>(around) != nullptr) {
        m_graphicsView = around;
    }
}

/** What got the last press and has not passed it on has taken it. */
void AreaUses::settle() {
    QWidget* const pressed = m_pressed;
    m_pressed = nullptr;
    if (pressed == nullptr) {
        return;
    }
    const bool passesOn =
        !pressed->isWindow() && !pressed->testAttribute(Qt::WA_NoMousePropagation);
    QWidget* const widget = withViewport(pressed);
    const bool isTaken = m_pressedBy == QEvent::TabletPress || isArea(widget, passesOn);
    if (isTaken && pressed->isEnabled()) {
        take(widget);
    }
}

void AreaUses::take(QWidget* widget) {
    ElementBook& book = m_counter.book();
    UIElement* area = book.elementOf(widget);
    if (area == nullptr || isView(book.typeOf(area))) {
        area = areaOf(widget, area);
    }
    if (area != nullptr) {
        m_counter.count(area, Use::Pressed, UseCounter::placeOf(widget));
        hold(area, widget);
    }
}

/** @param asView what the widget is already, when it is a view that is pressed itself */
UIElement* AreaUses::areaOf(QWidget* widget, UIElement* asView) {
    if (asView != nullptr) {
        UIElement*& area = m_sharedAreas[QString::number(quintptr(asView), 16)];
        if (area == nullptr) {
            Description what;
            what.className = UICoverage::className(widget);
            what.uses = {Use::Pressed};
            area = m_counter.book().add(nullptr, what, asView);
        }
        return area;
    }
    const QWidget* viewWidget = nullptr;
    UIElement* const view = viewOf(widget, &viewWidget);
    if (view == nullptr) {
        return nullptr;
    }
    WidgetLabels labels;
    Description what = describe(widget, ElementType::Area, viewWidget, labels);
    what.uses = {Use::Pressed};
    return m_counter.book().add(widget, what, view);
}

void AreaUses::expect(QGraphicsScene* scene, QEvent* event) {
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick:
        m_isScenePressed = true;
        return;
    case QEvent::GraphicsSceneMouseMove:
    case QEvent::GraphicsSceneMouseRelease:
        break;
    default:
        return;
    }
    if (m_isScenePressed) {
        m_isScenePressed = false;
        QGraphicsItem* const item = scene->mouseGrabberItem();
        // What lies in a widget of the scene gets the press itself.
        if (item != nullptr && qgraphicsitem_cast<QGraphicsProxyWidget*>(item) == nullptr) {
            take(item);
        }
    }
    if (event->type() == QEvent::GraphicsSceneMouseMove) {
        drag();
    }
}

void AreaUses::take(QGraphicsItem* item) {
    if (m_graphicsView.isNull()) {
        return;
    }
    if (UIElement* const area = areaOf(item, m_graphicsView)) {
        m_counter.count(area, Use::Pressed, QRect());
        hold(area, nullptr);
    }
}

/**
 * Items that are objects are areas each; of all others there is one for each class and view, since
 * nothing tells when they die, and there may be as many as the data has.
 */
UIElement* AreaUses::areaOf(QGraphicsItem* item, const QWidget* graphicsView) {
    ElementBook& book = m_counter.book();
    const QWidget* viewWidget = nullptr;
    UIElement* const view = viewOf(graphicsView, &viewWidget);
    if (view == nullptr) {
        return nullptr;
    }
    Description what;
    what.className = nameOf(item);
    what.uses = {Use::Pressed};
    QGraphicsObject* const object = item->toGraphicsObject();
    if (object == nullptr) {
        UIElement*& area =
            m_sharedAreas[QString::number(quintptr(view), 16) + QLatin1Char(' ') + what.className];
        if (area == nullptr) {
            area = book.add(nullptr, what, view);
        }
        return area;
    }
    if (UIElement* const area = book.elementOf(object)) {
        return area;
    }
    if (!object->objectName().isEmpty()) {
        what.attributes.append({Attribute::ObjectName, object->objectName()});
    }
    return book.add(object, what, view);
}

void AreaUses::hold(UIElement* area, QWidget* widget) {
    m_held = area;
    m_heldWidget = widget;
}

void AreaUses::drag() {
    if (m_held == nullptr || m_counter.gesture().isHovering() ||
        m_counter.gesture().travelled() < QApplication::startDragDistance()) {
        return;
    }
    m_counter.count(m_held, Use::Dragged,
                    m_heldWidget.isNull() ? QRect() : UseCounter::placeOf(m_heldWidget));
    m_held = nullptr;
}

/** The nearest view that the widget lies in, and the widget of it. */
UIElement* AreaUses::viewOf(const QWidget* widget, const QWidget** viewWidget) {
    ElementBook& book = m_counter.book();
    for (; widget != nullptr; widget = widget->parentWidget()) {
        UIElement* const element = book.elementOf(widget);
        if (element != nullptr && isView(book.typeOf(element))) {
            *viewWidget = widget;
            return element;
        }
    }
    return nullptr;
}

} // namespace UIControls
} // namespace Vorsk

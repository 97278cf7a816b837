// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickuses.h"

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickgesture.h"
#include "qtuicontrols/quick/quickjudge.h"
#include "qtuicontrols/quick/quickmotions.h"
#include "qtuicontrols/quick/quickplaces.h"
#include "qtuicontrols/quick/quicksignals.h"
#include "qtuicontrols/quick/quickusehub.h"
#include "qtuicontrols/quick/quickuseslots.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QQuickItem>
#include <QStyleHints>

#include <algorithm>
#include <vector>

namespace Vorsk {
namespace UIControls {

namespace {

/** The link at a place of a text; null when there is none. */
QString linkAt(QObject* text, const QPointF& place) {
    QString link;
    QMetaObject::invokeMethod(text, "linkAt", Qt::DirectConnection, Q_RETURN_ARG(QString, link),
                              Q_ARG(qreal, place.x()), Q_ARG(qreal, place.y()));
    return link;
}

/** Whether it shows one page at a time, with the index of the current one. */
bool hasPages(const QObject* object) {
    const QByteArray& name = QuickClass::of(object).name();
    return name == "QQuickSwipeView" || name == "TabView" || extendsClass(object, "QQuickTabBar");
}

} // namespace

class QuickUses::Private {
public:
    explicit Private(const TrackerServices& services);

    void noteBegin(QObject* receiver, QEvent* event);
    void notePress(QObject* receiver, QMouseEvent* event);
    void noteMove(QObject* receiver, const QMouseEvent& event);
    void noteRelease(QObject* receiver, QEvent* event);
    void noteClient();

    ElementBook& book;
    Attribution& attribution;
    QuickJudge judge;
    QuickMotions motions;
    QuickGesture gesture;
    QuickUseSlots uses;
    QuickUseHubs hubs;
    QuickSignals signalsOfUse;

    void noteUnconnected(QObject* object);

private:
    void prepare(QObject* object, UIElement* element);
    void preparePart(QObject* textInput);
    void prepareLater(QObject* object, ElementType type);
    void countDrag(QObject* area);

    /** Not connected yet to what accessibility clients do. */
    std::vector<QPointer<QObject>> m_unconnected;
    /** What was pressed, and where in the scene. */
    QPointer<QObject> m_pressed;
    QPointF m_pressedAt;
    /** The link that was pressed; null when none was. */
    QString m_link;
    enum class Drag : quint8 { None, Begun, Counted };
    Drag m_drag = Drag::None;
};

QuickUses::Private::Private(const TrackerServices& services)
    : book(services.book)
    , attribution(services.attribution)
    , judge(book, attribution)
    , motions(attribution)
    , uses(book, judge, motions, gesture)
    , hubs(uses)
    , signalsOfUse(QuickUseHub::staticMetaObject,
                   [this](const QObject* sender) { return hubs.hubFor(sender); }) {}

/** Connects all that may be operated by the input, before it is delivered. */
void QuickUses::Private::noteBegin(QObject* receiver, QEvent* event) {
    gesture.note(event);
    if (receiver->isWindowType()) {
        motions.noteBegin();
        if (event->type() == QEvent::TouchBegin) {
            // Moves of the finger come with the next frame.
            motions.begin(receiver, QuickMotions::End::Release);
        }
        return;
    }
    if (extendsClass(receiver, "QQuickTextInput")) {
        preparePart(receiver);
    }
    QuickOwners::nearest(receiver, [this](QObject* object) {
        UIElement* const element = book.elementOf(object);
        if (element != nullptr && !isView(book.typeOf(element))) {
            prepare(object, element);
        } else if (hasPages(object)) {
            signalsOfUse.connectPages(object);
            motions.begin(object, QuickMotions::End::Standstill);
        }
        return false;
    });
}

void QuickUses::Private::prepare(QObject* object, UIElement* element) {
    const ElementType type = book.typeOf(element);
    signalsOfUse.connect(object, type);
    if (auto* const action = object->property("action").value<QObject*>()) {
        if (book.elementOf(action) != nullptr) {
            signalsOfUse.connect(action, ElementType::Command);
        }
    }
    prepareLater(object, type);
}

/** The text input of an editable combo box, or of a text field of the first generation. */
void QuickUses::Private::preparePart(QObject* textInput) {
    const QObject* const control = judge.owners().controlOf(textInput);
    if (control == nullptr || control == textInput) {
        return;
    }
    const ElementType type = book.typeOf(book.elementOf(control));
    if (type == ElementType::ComboBox || type == ElementType::TextInput) {
        signalsOfUse.connectPart(textInput);
    }
}

void QuickUses::Private::prepareLater(QObject* object, ElementType type) {
    switch (type) {
    case ElementType::Button:
        if (object->property("autoRepeat").toBool() || object->property("delay").isValid()) {
            motions.begin(object, QuickMotions::End::Release);
        }
        break;
    case ElementType::SpinBox:
    case ElementType::List:
    case ElementType::Table:
    case ElementType::Tree:
        motions.begin(object, object->property("moving").isValid() ? QuickMotions::End::Standstill
                                                                   : QuickMotions::End::Release);
        break;
    default:
        break;
    }
}

void QuickUses::Private::notePress(QObject* receiver, QMouseEvent* event) {
    m_pressed = receiver;
    m_pressedAt = event->windowPos();
    m_drag = Drag::None;
    const UIElement* const element = book.elementOf(receiver);
    const bool isLink = element != nullptr && book.typeOf(element) == ElementType::Link;
    m_link = isLink && extendsClass(receiver, "QQuickText") ? linkAt(receiver, event->localPos())
                                                            : QString();
}

/** An area that keeps what was pressed while the mouse moves is dragged, whatever it does with
 * that. What lies around it may take the first move that goes far enough; the next one tells. */
void QuickUses::Private::noteMove(QObject* receiver, const QMouseEvent& event) {
    if (receiver != m_pressed || m_drag == Drag::Counted) {
        return;
    }
    if (m_drag == Drag::Begun) {
        countDrag(receiver);
        return;
    }
    const QPointF way = event.windowPos() - m_pressedAt;
    if (way.manhattanLength() >= QGuiApplication::styleHints()->startDragDistance()) {
        m_drag = Drag::Begun;
    }
}

void QuickUses::Private::countDrag(QObject* area) {
    m_drag = Drag::Counted;
    const UIElement* const element = book.elementOf(area);
    if (element != nullptr && book.typeOf(element) == ElementType::Area &&
        area->property("pressed").toBool()) {
        uses.count(area, Use::Dragged);
    }
}

void QuickUses::Private::noteRelease(QObject* receiver, QEvent* event) {
    if (receiver->isWindowType()) {
        motions.noteRelease();
    }
    if (event->type() != QEvent::MouseButtonRelease || receiver != m_pressed) {
        return;
    }
    if (m_drag == Drag::Begun) {
        countDrag(receiver);
    }
    // Listening to linkActivated() would have texts take presses that they leave to others.
    if (!m_link.isEmpty() &&
        linkAt(receiver, static_cast<QMouseEvent*>(event)->localPos()) == m_link) {
        uses.count(receiver, Use::Followed);
    }
}

/** Those that have died are left out when there is no room for more. */
void QuickUses::Private::noteUnconnected(QObject* object) {
    constexpr std::size_t few = 64;
    if (m_unconnected.size() == m_unconnected.capacity()) {
        m_unconnected.erase(std::remove(m_unconnected.begin(), m_unconnected.end(), nullptr),
                            m_unconnected.end());
        m_unconnected.reserve(std::max(few, 2 * m_unconnected.size()));
    }
    m_unconnected.emplace_back(object);
}

/** Their calls are delivered to none of the controls. */
void QuickUses::Private::noteClient() {
    gesture.begin();
    for (const QPointer<QObject>& object : m_unconnected) {
        UIElement* const element = object.isNull() ? nullptr : book.elementOf(object);
        if (element != nullptr) {
            signalsOfUse.connectForClients(object, book.typeOf(element));
        }
    }
    m_unconnected.clear();
}

QuickUses::QuickUses(const TrackerServices& services)
    : m_private(std::make_unique<Private>(services)) {}

QuickUses::~QuickUses() = default;

void QuickUses::setParts(const QuickParts& parts, QuickPageTabs& tabs) {
    m_private->uses.setParts(parts);
    m_private->uses.setPageTabs(tabs);
}

void QuickUses::watch(QObject* object, ElementType type, UIElement* element) {
    m_private->noteUnconnected(object);
    if (type == ElementType::Tab && !object->inherits("QQuickTabButton")) {
        m_private->uses.addPage(object, element);
    }
    if (qobject_cast<QQuickItem*>(object) == nullptr) {
        // Input is not delivered to it.
        m_private->signalsOfUse.connect(object, type);
    }
}

void QuickUses::handleEvent(QObject* object, QEvent* event) {
    m_private->uses.noteEvent();
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_private->noteBegin(object, event);
        m_private->notePress(object, static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::Drop:
        m_private->noteBegin(object, event);
        break;
    case QEvent::MouseMove:
        m_private->noteMove(object, *static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::KeyRelease:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        m_private->noteRelease(object, event);
        break;
    case QEvent::MetaCall:
        if (m_private->attribution.verdict().cause == Attribution::Cause::Accessibility) {
            m_private->noteClient();
        }
        break;
    default:
        m_private->motions.noteOther(event->type());
        break;
    }
}

} // namespace UIControls
} // namespace Vorsk

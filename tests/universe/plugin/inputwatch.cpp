// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "inputwatch.h"

#include "journal.h"
#include "kinship.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QItemSelectionModel>
#include <QJsonObject>
#include <QKeyEvent>
#include <QMenu>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QWidget>

namespace {

/** Signals that say the same of whatever has them: a person did something to it. */
constexpr const char* reactions[] = {
    "clicked",    "tapped",        "triggered",     "activated",     "moved",
    "textEdited", "valueModified", "linkActivated", "anchorClicked",
};

/** Signals that say so of these classes and of what extends them. */
constexpr struct {
    const char* base;
    const char* signal;
} furtherReactions[] = {
    {"QAbstractSpinBox", "valueChanged"},
    {"QAbstractSpinBox", "dateTimeChanged"},
    {"QAbstractSlider", "valueChanged"},
    {"QTabBar", "currentChanged"},
    {"QTextEdit", "textChanged"},
    {"QPlainTextEdit", "textChanged"},
    {"QComboBox", "editTextChanged"},
    {"QCalendarWidget", "selectionChanged"},
    {"QQuickTextEdit", "textChanged"},
    {"QQuickMouseArea", "doubleClicked"},
    {"QQuickTumbler", "currentIndexChanged"},
    {"QQuickSwipeView", "currentIndexChanged"},
    {"QQuickDragHandler", "activeChanged"},
    {"QKeySequenceEdit", "keySequenceChanged"},
};

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::GraphicsSceneMouseDoubleClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::GraphicsSceneWheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

/** 0 of what is no press of a key. */
int keyOf(const QEvent& event) {
    return event.type() == QEvent::KeyPress ? static_cast<const QKeyEvent&>(event).key() : 0;
}

/** Of the button with which a line edit is cleared. */
bool isClearAction(const QObject* object) {
    return object != nullptr && object->inherits("QAction") &&
           object->objectName() == QLatin1String("_q_qlineeditclearaction");
}

QString nameOf(QEvent::Type type) {
    return QString::fromLatin1(QMetaEnum::fromType<QEvent::Type>().valueToKey(type));
}

} // namespace

InputWatch::InputWatch(Journal& journal)
    : m_journal(journal) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputWatch::eventFilter(QObject* receiver, QEvent* event) {
    if (isInput(event->type()) && !receiver->isWindowType()) {
        const std::vector<QObject*> chain = Kinship::chainOf(receiver);
        for (QObject* object : chain) {
            watch(object);
        }
        watchActions(receiver);
        if (!m_isDelivering) {
            m_isDelivering = true;
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        }
        // Who opens a dialog by it says "triggered" only when that is closed.
        const auto* const menu = qobject_cast<const QMenu*>(receiver);
        QAction* const entry = menu != nullptr ? menu->activeAction() : nullptr;
        m_journal.write({{QStringLiteral("k"), QStringLiteral("input")},
                         {QStringLiteral("t"), Journal::now()},
                         {QStringLiteral("key"), keyOf(*event)},
                         {QStringLiteral("entry"), entry != nullptr ? m_journal.object(entry) : 0},
                         {QStringLiteral("o"), m_journal.object(receiver)},
                         {QStringLiteral("type"), nameOf(event->type())}});
    }
    return false;
}

bool InputWatch::event(QEvent* event) {
    if (event->type() == QEvent::User) {
        m_isDelivering = false;
        return true;
    }
    return QObject::event(event);
}

void InputWatch::watch(QObject* object) {
    if (m_watched.contains(object)) {
        return;
    }
    m_watched.insert(object);
    connect(object, &QObject::destroyed, this, [this](QObject* gone) {
        m_watched.remove(gone);
        m_viewOf.remove(gone);
    });
    if (object->parent() != nullptr && object->parent()->inherits("QComboBoxPrivateContainer")) {
        return; // marks an entry when it opens; the combo box says what is chosen
    }
    if (Kinship::editedBy(object) != nullptr || isClearAction(object) ||
        isClearAction(Kinship::actionOf(object))) {
        return; // what comes of it the text says
    }
    const bool isView = object->inherits("QAbstractItemView");
    const bool isMenu = object->inherits("QMenu") || object->inherits("QMenuBar");
    for (const char* const name : reactions) {
        // A click on a row that is chosen already changes nothing about the view.
        const bool isNoReaction =
            (isView && qstrcmp(name, "clicked") == 0) ||
            (isMenu && qstrcmp(name, "triggered") == 0); // the action says it as well
        if (!isNoReaction) {
            watchSignal(object, name);
        }
    }
    for (const auto& further : furtherReactions) {
        if (object->inherits(further.base) && !object->inherits("QScrollBar")) {
            watchSignal(object, further.signal);
        }
    }
    // In a list of completions nothing stays selected; its text tells what was taken over.
    if (isView && Kinship::completedBy(object) == nullptr) {
        watchSelection(object);
    }
}

void InputWatch::watchSignal(QObject* sender, const char* name) {
    const QMetaObject* const meta = sender->metaObject();
    const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("note()"));
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == QMetaMethod::Signal && method.name() == name) {
            connect(sender, method, this, slot);
        }
    }
}

void InputWatch::watchSelection(QObject* view) {
    auto* const selection = static_cast<QAbstractItemView*>(view)->selectionModel();
    if (selection != nullptr && !m_viewOf.contains(selection)) {
        m_viewOf.insert(selection, view);
        watchSignal(selection, "selectionChanged");
        watchSignal(selection, "currentChanged");
        connect(selection, &QObject::destroyed, this,
                [this](QObject* gone) { m_viewOf.remove(gone); });
    }
}

void InputWatch::watchActions(QObject* receiver) {
    const std::vector<QObject*> chain = Kinship::chainOf(receiver);
    if (chain.back()->inherits("QQuickLoader")) { // a menu of the first generation
        const QObjectList below = chain.back()->findChildren<QObject*>();
        for (QObject* one : below) {
            if (QObject* const entry = Kinship::actionOf(one)) {
                watch(entry);
            }
        }
    }
    const auto* const widget = qobject_cast<const QWidget*>(receiver);
    if (widget != nullptr) {
        const QList<QAction*> actions = widget->actions();
        for (QAction* action : actions) {
            watch(action);
        }
    }
}

void InputWatch::note() {
    QObject* const emitter = sender();
    const int index = senderSignalIndex();
    const QPair<QObject*, int> noted(emitter, index);
    QObject* const owner = m_viewOf.contains(emitter) ? m_viewOf.value(emitter).data() : emitter;
    if (emitter == nullptr || owner == nullptr || m_noted.contains(noted)) {
        return;
    }
    m_noted.insert(noted);
    m_journal.write({{QStringLiteral("k"), QStringLiteral("signal")},
                     {QStringLiteral("t"), Journal::now()},
                     {QStringLiteral("in"), m_isDelivering},
                     {QStringLiteral("o"), m_journal.object(owner)},
                     {QStringLiteral("name"),
                      QString::fromLatin1(emitter->metaObject()->method(index).name())}});
}

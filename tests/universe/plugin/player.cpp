// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "player.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QJsonObject>
#include <QTimer>
#include <QTouchEvent>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <utility>

// What Qt Test itself sends events with: they are queued and arrive as those of a real mouse and
// keyboard do.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text,
                                    bool isRepeated, ushort count);
Q_GUI_EXPORT void qt_handleTouchEvent(QWindow* window, QTouchDevice* device,
                                      const QList<QTouchEvent::TouchPoint>& points,
                                      Qt::KeyboardModifiers modifiers);
namespace QTest {
Q_GUI_EXPORT QTouchDevice* createTouchDevice(QTouchDevice::DeviceType type);
}

namespace {

/** Milliseconds between two steps: the application is to do something in between. */
constexpr int pace = 4;
/** Steps between two walks of the trees, at least; and how much of the time they may take. */
constexpr int walkEvery = 3;
constexpr int walkShare = 4;
/** Steps without any window on the screen after which there will be none any more. */
constexpr int patience = 200;
/** Ticks of an application that is only looked on, from when it has a window. */
constexpr int idleTicks = 150;

/** Ticks that a window is there before it is used. */
constexpr int lookTicks = 8;

struct Key {
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* text;
};

/** Nothing that deletes, prints or ends the application. */
constexpr Key keys[] = {
    {Qt::Key_A, Qt::NoModifier, "a"},          {Qt::Key_1, Qt::NoModifier, "1"},
    {Qt::Key_7, Qt::NoModifier, "7"},          {Qt::Key_Space, Qt::NoModifier, " "},
    {Qt::Key_Tab, Qt::NoModifier, "\t"},       {Qt::Key_Tab, Qt::NoModifier, "\t"},
    {Qt::Key_Backtab, Qt::ShiftModifier, ""},  {Qt::Key_Return, Qt::NoModifier, "\r"},
    {Qt::Key_Space, Qt::NoModifier, " "},      {Qt::Key_Up, Qt::NoModifier, ""},
    {Qt::Key_Down, Qt::NoModifier, ""},        {Qt::Key_Left, Qt::NoModifier, ""},
    {Qt::Key_Right, Qt::NoModifier, ""},       {Qt::Key_Home, Qt::NoModifier, ""},
    {Qt::Key_End, Qt::NoModifier, ""},         {Qt::Key_PageDown, Qt::NoModifier, ""},
    {Qt::Key_Backspace, Qt::NoModifier, "\b"}, {Qt::Key_N, Qt::ControlModifier, "\x0e"},
    {Qt::Key_Z, Qt::ControlModifier, "\x1a"},  {Qt::Key_C, Qt::ControlModifier, "\x03"},
    {Qt::Key_V, Qt::ControlModifier, "\x16"},  {Qt::Key_F, Qt::ControlModifier, "\x06"},
    {Qt::Key_B, Qt::ControlModifier, "\x02"},  {Qt::Key_Menu, Qt::NoModifier, ""},
};

/** The choices of a step, out of a hundred. */
enum Choice : quint32 {
    AimedPress = 48,
    AimedTouch = 54,
    AimedContextPress = 57,
    AimedDoubleClick = 60,
    RandomPress = 70,
    Drag = 76,
    Wheel = 80,
    Type = 95,
    Leave = 98, ///< Escape
    Close = 100
};

/** One that the application can do without, or that has its dialogs inside. */
bool isPassing(const QWindow& window) {
    return window.transientParent() != nullptr || window.modality() != Qt::NonModal ||
           window.type() == Qt::Popup || window.inherits("QQuickWindow");
}

/** Whoever agrees has another process, which nobody watches. */
bool offersToStartAgain(const QWindow& window) {
    return window.title().contains(QLatin1String("restart"), Qt::CaseInsensitive);
}

void pressEscape(QWindow* window) {
    qt_handleKeyEvent(window, QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), false,
                      1);
}

} // namespace

Player::Player(const QString& journal, quint32 seed, int steps)
    : m_journal(journal)
    , m_watch(m_journal)
    , m_walk(m_journal)
    , m_random(seed)
    , m_stepsLeft(steps)
    , m_isIdle(steps == 0)
    , m_touchScreen(m_isIdle ? nullptr : QTest::createTouchDevice(QTouchDevice::TouchScreen)) {
    QTimer::singleShot(pace, this, &Player::step);
    if (!m_isIdle) {
        QGuiApplication::setQuitOnLastWindowClosed(false);
    }
}

void Player::step() {
    if (m_isDone) {
        return;
    }
    // A timer of its own for each step: what this one opens may have an event loop of its own.
    QTimer::singleShot(pace, this, &Player::step);
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const bool hasWindow = std::any_of(windows.cbegin(), windows.cend(),
                                       [](const QWindow* window) { return window->isVisible(); });
    if (!hasWindow) {
        if (++m_stepsWithoutWindow == patience / 2) {
            showAgain();
        } else if (m_stepsWithoutWindow > patience) {
            end();
        }
        return;
    }
    m_stepsWithoutWindow = 0;
    noteWindows(windows);
    if (m_ticks++ % walkEvery == 0 && Journal::now() >= m_nextWalk) {
        const qint64 start = Journal::now();
        m_walk.walk();
        m_nextWalk = Journal::now() + (Journal::now() - start) * walkShare;
    }
    if (!m_isIdle && !areSeen()) {
        return; // else no menu would ever be open long enough
    }
    m_watch.beginStep();
    if (m_isIdle) {
        lookOn();
    } else if (--m_stepsLeft < 0) {
        end();
    } else {
        act();
    }
}

/** As somebody does who closed it by mistake. */
void Player::showAgain() {
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (m_mainWindow != nullptr && widget->windowHandle() == m_mainWindow) {
            widget->show();
            return;
        }
    }
    if (m_mainWindow != nullptr) {
        m_mainWindow->show();
    }
}

void Player::lookOn() {
    if (m_ticks < idleTicks) {
        return;
    }
    m_walk.walk();
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (const QPointer<QWindow> window : windows) {
        if (window != nullptr && window->isVisible()) {
            window->close();
        }
    }
    end();
}

void Player::act() {
    if (m_held.window != nullptr) {
        const Place place = choose(false);
        const Place held = std::exchange(m_held, Place());
        note("drop", held);
        release(place.window == held.window ? place : held, Qt::LeftButton);
        return;
    }
    QWindow* const modal = QGuiApplication::modalWindow();
    if (modal != nullptr && offersToStartAgain(*modal)) {
        note("leave", {modal, QPointF()});
        pressEscape(modal);
        return;
    }
    const quint32 choice = m_random.bounded(100U);
    const Place place = choose(choice < RandomPress ? choice < AimedDoubleClick : choice < Wheel);
    if (place.window == nullptr) {
        return;
    }
    if (choice < AimedPress || (choice >= AimedDoubleClick && choice < RandomPress)) {
        note("press", place);
        press(place, Qt::LeftButton);
        release(place, Qt::LeftButton);
    } else if (choice < AimedTouch) {
        note("touch", place);
        touch(place);
    } else if (choice < AimedContextPress) {
        note("contextPress", place);
        press(place, Qt::RightButton);
        release(place, Qt::RightButton);
    } else if (choice < AimedDoubleClick) {
        note("doubleClick", place);
        for (int i = 0; i < 2; ++i) {
            press(place, Qt::LeftButton);
            release(place, Qt::LeftButton);
        }
    } else if (choice < Drag) {
        note("drag", place);
        press(place, Qt::LeftButton); // let go of in the next step
        m_held = place;
    } else if (choice < Wheel) {
        note("wheel", place);
        turnWheel(place);
    } else if (choice < Type) {
        note("key", place);
        type(place);
    } else if (isPassing(*place.window)) { // others may be the last one, which would end it all
        note("leave", place);
        if (choice < Leave || place.window->inherits("QQuickWindow")) {
            pressEscape(place.window);
        } else {
            place.window->close();
        }
    }
}

/** A menu or a list that is open and gets whatever is pressed. */
bool Player::hasPopup() const {
    return std::any_of(m_shownTicks.keyBegin(), m_shownTicks.keyEnd(),
                       [](const QWindow* window) { return window->type() == Qt::Popup; });
}

/** At a node that was hardly aimed at yet, or anywhere. */
Player::Place Player::choose(bool isAimed) {
    const double across = m_random.generateDouble();
    const double down = m_random.generateDouble();
    const quint32 draw = m_random.generate();
    QVector<const TreeWalk::Target*> targets;
    const bool isPopupAimed = hasPopup() && m_random.bounded(3) != 0;
    QWindow* const modal = QGuiApplication::modalWindow();
    for (const TreeWalk::Target& target : m_walk.targets()) {
        if (target.window != nullptr && target.window->isVisible() &&
            (!isPopupAimed || target.window->type() == Qt::Popup) &&
            (modal == nullptr || modal == target.window || target.window->type() == Qt::Popup) &&
            (!target.mayEnd || isPassing(*target.window))) {
            targets.append(&target);
        }
    }
    if (isAimed && !targets.isEmpty()) {
        std::stable_sort(targets.begin(), targets.end(), [this](const auto* a, const auto* b) {
            return m_aims.value(a->node) < m_aims.value(b->node);
        });
        const auto among = static_cast<quint32>(std::max(1, targets.size() / 3));
        const TreeWalk::Target& target = *targets.at(static_cast<int>(draw % among));
        ++m_aims[target.node];
        // Around the middle: that is where a person presses.
        const QPointF point(target.place.x() + target.place.width() * (0.3 + 0.4 * across),
                            target.place.y() + target.place.height() * (0.3 + 0.4 * down));
        return {target.window, point - target.window->mapToGlobal(QPoint())};
    }
    QWindowList windows = QGuiApplication::topLevelWindows();
    windows.erase(std::remove_if(windows.begin(), windows.end(),
                                 [](const QWindow* window) {
                                     return !window->isVisible() || window->type() == Qt::ToolTip ||
                                            window->width() <= 0;
                                 }),
                  windows.end());
    if (windows.isEmpty()) {
        return {};
    }
    QWindow* const window =
        modal != nullptr
            ? modal
            : windows.at(static_cast<int>(draw % static_cast<quint32>(windows.size())));
    return {window, QPointF(across * window->width(), down * window->height())};
}

void Player::noteWindows(const QWindowList& windows) {
    if (m_mainWindow == nullptr) {
        m_mainWindow = *std::find_if(windows.cbegin(), windows.cend(),
                                     [](const QWindow* window) { return window->isVisible(); });
    }
    QHash<QWindow*, int> shown;
    for (QWindow* window : windows) {
        if (window->isVisible()) {
            shown.insert(window, m_shownTicks.value(window) + 1);
        }
    }
    m_shownTicks = shown;
}

/** Nobody presses into a window before it has been painted. */
bool Player::areSeen() const {
    return std::all_of(m_shownTicks.cbegin(), m_shownTicks.cend(),
                       [](int ticks) { return ticks >= lookTicks; });
}

void Player::note(const char* what, const Place& place) {
    m_journal.write({{QStringLiteral("k"), QStringLiteral("step")},
                     {QStringLiteral("t"), Journal::now()},
                     {QStringLiteral("what"), QLatin1String(what)},
                     {QStringLiteral("x"), place.point.x()},
                     {QStringLiteral("y"), place.point.y()}});
    m_journal.flush(); // the application may not live to see the next one
}

void Player::press(const Place& place, Qt::MouseButton button) {
    place.window->requestActivate();
    send(place, QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    send(place, QEvent::MouseButtonPress, button, button);
}

void Player::release(const Place& place, Qt::MouseButton button) {
    send(place, QEvent::MouseMove, button, Qt::NoButton);
    send(place, QEvent::MouseButtonRelease, Qt::NoButton, button);
}

void Player::send(const Place& place, QEvent::Type type, Qt::MouseButtons held,
                  Qt::MouseButton button) {
    if (place.window != nullptr) {
        qt_handleMouseEvent(place.window, place.point,
                            place.window->mapToGlobal(QPoint()) + place.point, held, button, type,
                            Qt::NoModifier, 0);
    }
}

void Player::touch(const Place& place) {
    for (const Qt::TouchPointState state : {Qt::TouchPointPressed, Qt::TouchPointReleased}) {
        if (place.window != nullptr) {
            QTouchEvent::TouchPoint point(0);
            point.setState(state);
            point.setScreenPos(place.window->mapToGlobal(QPoint()) + place.point);
            qt_handleTouchEvent(place.window, m_touchScreen, {point}, Qt::NoModifier);
        }
    }
}

/** Posted, not queued at the window system: Qt offers no public way for that. */
void Player::turnWheel(const Place& place) {
    constexpr int notch = 120;
    const QPoint angle(0, m_random.bounded(2) == 0 ? notch : -notch);
    QCoreApplication::postEvent(
        place.window,
        new QWheelEvent(place.point, place.window->mapToGlobal(QPoint()) + place.point, QPoint(),
                        angle, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false));
}

void Player::type(const Place& place) {
    const Key& key = keys[m_random.bounded(static_cast<quint32>(std::size(keys)))];
    QWindow* const focused = QGuiApplication::focusWindow();
    const QPointer<QWindow> target = focused != nullptr ? focused : place.window.data();
    const QString text = QString::fromLatin1(key.text);
    qt_handleKeyEvent(target, QEvent::KeyPress, key.key, key.modifiers, text, false, 1);
    if (target != nullptr) {
        qt_handleKeyEvent(target, QEvent::KeyRelease, key.key, key.modifiers, text, false, 1);
    }
}

/** Says that it came that far: a program that ended by itself is not one that was ended. */
void Player::end() {
    m_isDone = true;
    if (!m_isIdle) {
        m_walk.walk();
    }
    m_journal.write({{QStringLiteral("k"), QStringLiteral("done")}});
    m_journal.flush();
    // A field that loses the focus while its window is being destroyed tells slots of what is no
    // longer there: some programs do not live through that, recorded or not.
    if (QWidget* const focused = QApplication::focusWidget()) {
        focused->clearFocus();
    }
    std::fputs("universe: done\n", stderr);
    QCoreApplication::exit(0);
}

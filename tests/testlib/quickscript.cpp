// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickscript.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QTouchDevice>
#include <QWheelEvent>

namespace TestLib {

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

QTouchDevice* finger() {
    static QTouchDevice* const device = QTest::createTouchDevice();
    return device;
}

/** By objectName, also among what belongs to an item and is none, or by the text that it shows. */
QObject* find(QQuickItem* item, const QString& name) {
    static const QString byText = QStringLiteral("text:");
    if (item->objectName() == name ||
        (name.startsWith(byText) && item->isVisible() &&
         item->property("text").toString() == name.mid(byText.size()))) {
        return item;
    }
    const QObjectList owned = item->children();
    for (QObject* object : owned) {
        if (object->objectName() == name && qobject_cast<QQuickItem*>(object) == nullptr) {
            return object;
        }
    }
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        if (QObject* const found = find(child, name)) {
            return found;
        }
    }
    return nullptr;
}

QPointF share(const QString& word) {
    const QStringList numbers = word.split(QLatin1Char(','));
    return {numbers.value(0).toDouble(), numbers.value(1).toDouble()};
}

} // namespace

QuickScript::QuickScript(QQuickWindow& window, std::function<QStringList()> takeResults)
    : m_window(window)
    , m_takeResults(std::move(takeResults)) {}

QStringList QuickScript::run(const QByteArray& script) {
    QStringList failures;
    const QStringList lines = QString::fromUtf8(script).split(QLatin1Char('\n'));
    int number = 0;
    for (const QString& line : lines) {
        ++number;
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#'))) {
            continue;
        }
        const QStringList halves = trimmed.split(text("=>"));
        const QString error = runStep(halves.value(0).trimmed());
        ++m_steps;
        QCoreApplication::processEvents();
        if (m_settle) {
            m_settle();
        }
        const QStringList uses = m_takeResults();
        const QString got = uses.isEmpty() ? text("nothing") : uses.join(text(", "));
        const QString wanted = halves.value(1).trimmed();
        if (!error.isEmpty()) {
            failures.append(text("%1: %2: %3").arg(number).arg(trimmed, error));
        } else if (got != wanted) {
            failures.append(text("%1: %2, but got: %3").arg(number).arg(trimmed, got));
        }
    }
    return failures;
}

QString QuickScript::runStep(const QString& step) {
    QStringList words = step.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QString verb = words.takeFirst();
    static const QStringList keyVerbs{text("key"),  text("hold"),    text("let"),
                                      text("type"), text("compose"), text("commit")};
    if (keyVerbs.contains(verb)) {
        return runKeyStep(verb, words.join(QLatin1Char(' ')));
    }
    if (verb == text("release")) {
        if (!m_pressedWindow.isNull()) {
            QTest::mouseRelease(m_pressedWindow, Qt::LeftButton, Qt::NoModifier, m_pressed);
        }
        return {};
    }
    if (object(words.value(0)) == nullptr) {
        return text("there is no such thing");
    }
    static const QStringList programVerbs{text("focus"), text("call"), text("set"), text("until")};
    return programVerbs.contains(verb) ? runProgramStep(verb, words) : runPointerStep(verb, words);
}

QString QuickScript::runPointerStep(const QString& verb, const QStringList& words) {
    if (itemOf(words.first()) == nullptr) {
        return text("it has no place");
    }
    QQuickWindow* const window = itemOf(words.first())->window();
    const QPoint at = place(words, 1);
    if (verb == text("click")) {
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at);
    } else if (verb == text("rightClick")) {
        QTest::mouseClick(window, Qt::RightButton, Qt::NoModifier, at);
    } else if (verb == text("doubleClick")) {
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, at);
    } else if (verb == text("press")) {
        m_pressed = at;
        m_pressedWindow = window;
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at);
    } else if (verb == text("move") || verb == text("hover")) {
        m_pressed = at;
        m_pressedWindow = window;
        QTest::mouseMove(window, at);
    } else if (verb == text("touch")) {
        QTest::touchEvent(window, finger()).press(0, at, window);
        QTest::touchEvent(window, finger()).release(0, at, window);
    } else if (verb == text("drag") || verb == text("touchDrag")) {
        drag(*window, at, place(words, 2), verb == text("touchDrag"));
    } else if (verb == text("pinch")) {
        pinch(*window, at, place(words, 2));
    } else if (verb == text("wheel")) {
        const QPoint angle(0, 8 * words.value(1).toInt());
        QWheelEvent event(place({words.first()}, 1), window->mapToGlobal(at), QPoint(), angle,
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window, &event);
    } else {
        return text("no such verb");
    }
    return {};
}

void QuickScript::drag(QQuickWindow& window, QPoint from, QPoint to, bool isTouch) {
    constexpr int steps = 8;
    constexpr int pace = 5; // in milliseconds; views look at how fast they are dragged
    const auto at = [&](int step) { return from + (to - from) * step / steps; };
    if (isTouch) {
        QTest::touchEvent(&window, finger()).press(0, from, &window);
    } else {
        QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, from);
    }
    for (int step = 1; step <= steps; ++step) {
        if (isTouch) {
            QTest::touchEvent(&window, finger()).move(0, at(step), &window);
        } else {
            QTest::mouseMove(&window, at(step), pace);
        }
        QCoreApplication::processEvents();
    }
    if (isTouch) {
        QTest::touchEvent(&window, finger()).release(0, to, &window);
    } else {
        QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, to);
    }
}

void QuickScript::pinch(QQuickWindow& window, QPoint middle, QPoint end) {
    constexpr int steps = 8;
    const QPoint way = end - middle;
    const auto send = [&](int step,
                          void (*set)(QTest::QTouchEventSequence&, int, QPoint, QWindow*)) {
        QTest::QTouchEventSequence both = QTest::touchEvent(&window, finger());
        const QPoint apart = way / 4 + way * step / (2 * steps);
        set(both, 0, middle - apart, &window);
        set(both, 1, middle + apart, &window);
        both.commit();
        QCoreApplication::processEvents();
    };
    send(0, [](QTest::QTouchEventSequence& touch, int id, QPoint at, QWindow* on) {
        touch.press(id, at, on);
    });
    for (int step = 1; step <= steps; ++step) {
        send(step, [](QTest::QTouchEventSequence& touch, int id, QPoint at, QWindow* on) {
            touch.move(id, at, on);
        });
    }
    send(steps, [](QTest::QTouchEventSequence& touch, int id, QPoint at, QWindow* on) {
        touch.release(id, at, on);
    });
}

QString QuickScript::runKeyStep(const QString& verb, const QString& typed) {
    QWindow* const window = QGuiApplication::focusWindow();
    if (window == nullptr) {
        return text("no window has the focus");
    }
    if (verb == text("compose") || verb == text("commit")) {
        QInputMethodEvent event(verb == text("compose") ? typed : QString(), {});
        if (verb == text("commit")) {
            event.setCommitString(typed);
        }
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
        return {};
    }
    if (verb == text("type")) {
        for (const QChar character : typed) {
            QTest::keyClick(window, character.toLatin1());
        }
        return {};
    }
    const int keys = QKeySequence(typed)[0];
    const auto key = Qt::Key(keys & ~int(Qt::KeyboardModifierMask));
    const auto modifiers = Qt::KeyboardModifiers(keys & int(Qt::KeyboardModifierMask));
    const QPointer<QWindow> guard(window); // a popup may go with the press
    if (verb != text("let")) {
        QTest::keyPress(window, key, modifiers);
    }
    if (verb != text("hold") && !guard.isNull()) {
        QTest::keyRelease(window, key, modifiers);
    }
    return {};
}

QString QuickScript::runProgramStep(const QString& verb, const QStringList& words) {
    QObject* const target = object(words.first());
    const QByteArray name = words.value(1).toLatin1();
    const QString value = words.mid(2).join(QLatin1Char(' '));
    if (verb == text("focus")) {
        itemOf(words.first())->forceActiveFocus();
    } else if (verb == text("call")) {
        return QMetaObject::invokeMethod(target, name.constData()) ? QString()
                                                                   : text("no such method");
    } else if (verb == text("set")) {
        return target->setProperty(name.constData(), value) ? QString() : text("no such property");
    } else {
        const auto isSo = [&] { return target->property(name.constData()).toString() == value; };
        if (!QTest::qWaitFor(isSo)) {
            return text("it is ") + target->property(name.constData()).toString();
        }
    }
    return {};
}

QObject* QuickScript::object(const QString& name) const {
    if (m_window.objectName() == name) {
        return &m_window;
    }
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow* window : windows) {
        auto* const quickWindow = qobject_cast<QQuickWindow*>(window);
        QObject* const found =
            quickWindow == nullptr ? nullptr : find(quickWindow->contentItem(), name);
        if (found != nullptr) {
            return found;
        }
    }
    return m_window.findChild<QObject*>(name);
}

QQuickItem* QuickScript::itemOf(const QString& name) const {
    QObject* const found = object(name);
    auto* const item = qobject_cast<QQuickItem*>(found);
    return item != nullptr ? item : qobject_cast<QQuickItem*>(found->parent());
}

QPoint QuickScript::place(const QStringList& words, int index) const {
    const QQuickItem* const item = itemOf(words.first());
    const QPointF at = words.size() > index && words.at(index).contains(QLatin1Char(','))
                           ? share(words.at(index))
                           : QPointF(0.5, 0.5);
    return item->mapToScene(QPointF(at.x() * item->width(), at.y() * item->height())).toPoint();
}

} // namespace TestLib

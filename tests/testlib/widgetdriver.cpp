// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/widgetdriver.h"

#include "testlib/spontaneousevent.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace TestLib {

namespace {

QWindow* windowOf(const QWidget* widget) {
    return widget->window()->windowHandle();
}

QPoint inWindow(const QWidget* widget, const QPoint& at) {
    return widget->mapTo(widget->window(), at);
}

QWindow* keyWindow() {
    if (const QWidget* const popup = QApplication::activePopupWidget()) {
        return popup->windowHandle();
    }
    QWindow* const focused = QGuiApplication::focusWindow();
    const QWidget* const active = QApplication::activeWindow();
    return focused != nullptr || active == nullptr ? focused : active->windowHandle();
}

} // namespace

QPoint middleOf(const QWidget* widget) {
    return widget->rect().center();
}

void press(QWidget* widget, const QPoint& at, Qt::MouseButton button) {
    QTest::mousePress(windowOf(widget), button, Qt::NoModifier, inWindow(widget, at));
}

void moveTo(QWidget* widget, const QPoint& at) {
    QTest::mouseMove(windowOf(widget), inWindow(widget, at));
}

void release(QWidget* widget, const QPoint& at, Qt::MouseButton button) {
    QTest::mouseRelease(windowOf(widget), button, Qt::NoModifier, inWindow(widget, at));
}

void click(QWidget* widget) {
    click(widget, middleOf(widget));
}

void click(QWidget* widget, const QPoint& at, Qt::MouseButton button,
           Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(windowOf(widget), button, modifiers, inWindow(widget, at));
}

void doubleClick(QWidget* widget, const QPoint& at) {
    const QPoint place = inWindow(widget, at);
    QTest::mouseClick(windowOf(widget), Qt::LeftButton, {}, place);
    QTest::mouseDClick(windowOf(widget), Qt::LeftButton, {}, place);
}

void drag(QWidget* widget, const QPoint& from, const QPoint& to) {
    press(widget, from);
    for (int i = 1; i <= 4; ++i) {
        moveTo(widget, from + (to - from) * i / 4);
    }
    release(widget, to);
}

void wheel(QWidget* widget, int notches, const QPoint& at) {
    const QPoint place = inWindow(widget, at);
    QWheelEvent event(place, windowOf(widget)->mapToGlobal(place), QPoint(),
                      QPoint(0, 120 * notches), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    // Only what comes from outside is passed on to parents.
    setSpontaneous(event);
    QCoreApplication::instance()->notify(windowOf(widget), &event);
}

void wheel(QWidget* widget, int notches) {
    wheel(widget, notches, middleOf(widget));
}

void key(int key, Qt::KeyboardModifiers modifiers) {
    // The press may close the window.
    keyPress(key, modifiers);
    keyRelease(key, modifiers);
}

void keyPress(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyPress(keyWindow(), Qt::Key(key), modifiers);
}

void keyRelease(int key, Qt::KeyboardModifiers modifiers) {
    // What the press has closed may have been the only window.
    if (QWindow* const window = keyWindow()) {
        QTest::keyRelease(window, Qt::Key(key), modifiers);
    }
}

void type(const QString& text) {
    for (const QChar letter : text) {
        QTest::keyClick(keyWindow(), letter.toLatin1()); // closes nothing
    }
}

void keyOn(QWidget* widget, int code, Qt::KeyboardModifiers modifiers) {
    widget->setFocus(Qt::OtherFocusReason);
    key(code, modifiers);
}

void typeInto(QWidget* widget, const QString& text) {
    widget->setFocus(Qt::OtherFocusReason);
    type(text);
}

void compose(QWidget* widget, const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(widget, &event);
}

void preedit(QWidget* widget, const QString& text) {
    QInputMethodEvent event(text, {});
    QCoreApplication::sendEvent(widget, &event);
}

void drop(QWidget* widget, const QString& text) {
    QMimeData data;
    data.setText(text);
    const QPoint at = middleOf(widget);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &enter);
    QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void clickItem(QMenu* menu, const QAction* action) {
    const QPoint at = menu->actionGeometry(const_cast<QAction*>(action)).center();
    moveTo(menu, at);
    click(menu, at);
}

QMenu* openMenu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

void askForMenu(QWidget* widget, const QPoint& at) {
    // The window asks for it at the press.
    press(widget, at, Qt::RightButton);
    release(widget, at, Qt::RightButton);
}

} // namespace TestLib

#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

QT_BEGIN_NAMESPACE
class QAction;
class QMenu;
class QWidget;
QT_END_NAMESPACE

namespace TestLib {

// What a person does to widgets. Everything goes in through the window that the widget lies in, as
// input does, and so reaches what really is there; positions are in the widget's own coordinates.

/** The middle of the widget. */
QPoint middleOf(const QWidget* widget);

void press(QWidget* widget, const QPoint& at, Qt::MouseButton button = Qt::LeftButton);
/** With the button that was pressed last held, when it is. */
void moveTo(QWidget* widget, const QPoint& at);
void release(QWidget* widget, const QPoint& at, Qt::MouseButton button = Qt::LeftButton);
void click(QWidget* widget);
void click(QWidget* widget, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
           Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void doubleClick(QWidget* widget, const QPoint& at);
/** From one place to another with the button held, in four moves. */
void drag(QWidget* widget, const QPoint& from, const QPoint& to);
/** Notches away from the person are above zero. */
void wheel(QWidget* widget, int notches, const QPoint& at);
void wheel(QWidget* widget, int notches);

/** To the window that has the focus, or to the popup that is open. */
void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void keyPress(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void keyRelease(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void type(const QString& text);
/** Gives the widget the focus first. */
void keyOn(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void typeInto(QWidget* widget, const QString& text);

/** What an input method commits. */
void compose(QWidget* widget, const QString& text);
/** What an input method shows and has not committed yet. */
void preedit(QWidget* widget, const QString& text);
void drop(QWidget* widget, const QString& text);

/** A press and release on the item of a menu that is open. */
void clickItem(QMenu* menu, const QAction* action);
/** The menu that is open; null when none is. */
QMenu* openMenu();
/** Asks for the widget's context menu by the mouse. */
void askForMenu(QWidget* widget, const QPoint& at);

} // namespace TestLib

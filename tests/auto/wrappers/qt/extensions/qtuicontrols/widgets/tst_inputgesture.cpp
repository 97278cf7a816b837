// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/inputgesture.h"
#include "testlib/testcase.h"

#include <QAction>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>

using Vorsk::UIControls::InputGesture;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/** At a place of the widget, which is that of the screen as well. */
QMouseEvent mouse(QEvent::Type type, const QPoint& at, Qt::MouseButtons held) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    return {type, QPointF(at), QPointF(at), QPointF(at), button, held, Qt::ShiftModifier};
}

} // namespace

class tst_InputGesture : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatBeginsAGesture_data();
    void whatBeginsAGesture();
    void theMouseIsFollowedFromItsPress();
    void aKeyIsRemembered();
    void onlyWhatIsCommittedChangesAText();
    void theItemOfAMenuIsTheOneBelowTheMouse();
    void anItemOfAMenuThatDiesIsNone();
};

void tst_InputGesture::whatBeginsAGesture_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("begins");
    for (const QEvent::Type type : {QEvent::Wheel, QEvent::Shortcut, QEvent::TouchBegin,
                                    QEvent::TabletPress, QEvent::Drop, QEvent::ContextMenu}) {
        QTest::addRow("type %d", int(type)) << int(type) << true;
    }
    for (const QEvent::Type type : {QEvent::TouchUpdate, QEvent::TouchEnd, QEvent::TabletMove,
                                    QEvent::TabletRelease, QEvent::DragEnter, QEvent::DragMove}) {
        QTest::addRow("type %d", int(type)) << int(type) << false;
    }
}

void tst_InputGesture::whatBeginsAGesture() {
    QFETCH(int, type);
    QFETCH(bool, begins);
    InputGesture gesture;
    QObject receiver;
    const int before = gesture.serial();
    QEvent event(static_cast<QEvent::Type>(type));
    gesture.note(&receiver, &event);
    QCOMPARE(gesture.serial() != before, begins);
    gesture.begin();
    QVERIFY(gesture.serial() > before);
}

void tst_InputGesture::theMouseIsFollowedFromItsPress() {
    InputGesture gesture;
    QWidget widget;
    QVERIFY(gesture.isHovering());
    QMouseEvent hover = mouse(QEvent::MouseMove, QPoint(90, 90), Qt::NoButton);
    gesture.note(&widget, &hover);
    QVERIFY(gesture.isHovering());
    QMouseEvent press = mouse(QEvent::MouseButtonPress, QPoint(10, 10), Qt::LeftButton);
    gesture.note(&widget, &press);
    const int serial = gesture.serial();
    QCOMPARE(gesture.button(), Qt::LeftButton);
    QCOMPARE(gesture.travelled(), 0);
    QVERIFY(!gesture.isHovering());
    QMouseEvent move = mouse(QEvent::MouseMove, QPoint(14, 7), Qt::LeftButton);
    gesture.note(&widget, &move);
    QCOMPARE(gesture.travelled(), 7);
    QCOMPARE(gesture.position(), QPoint(14, 7));
    QCOMPARE(gesture.button(), Qt::LeftButton); // the one that is held
    QCOMPARE(gesture.modifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier));
    QMouseEvent release = mouse(QEvent::MouseButtonRelease, QPoint(14, 7), Qt::NoButton);
    gesture.note(&widget, &release);
    QVERIFY(gesture.isHovering());
    QCOMPARE(gesture.serial(), serial);
}

void tst_InputGesture::aKeyIsRemembered() {
    InputGesture gesture;
    QWidget widget;
    QCOMPARE(gesture.key(), 0);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::ControlModifier);
    gesture.note(&widget, &press);
    const int serial = gesture.serial();
    QCOMPARE(gesture.key(), int(Qt::Key_Return));
    QCOMPARE(gesture.modifiers(), Qt::KeyboardModifiers(Qt::ControlModifier));
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier);
    gesture.note(&widget, &release);
    QCOMPARE(gesture.serial(), serial);
    QCOMPARE(gesture.modifiers(), Qt::KeyboardModifiers(Qt::NoModifier));
}

void tst_InputGesture::onlyWhatIsCommittedChangesAText() {
    InputGesture gesture;
    QWidget widget;
    QInputMethodEvent composing(text("ni"), {});
    gesture.note(&widget, &composing);
    QVERIFY(!gesture.isCommitted());
    QInputMethodEvent committing;
    committing.setCommitString(text("hao"));
    gesture.note(&widget, &committing);
    QVERIFY(gesture.isCommitted());
    QInputMethodEvent replacing;
    replacing.setCommitString(QString(), -1, 1);
    gesture.note(&widget, &replacing);
    QVERIFY(gesture.isCommitted());
    gesture.note(&widget, &composing);
    QVERIFY(!gesture.isCommitted());
}

void tst_InputGesture::theItemOfAMenuIsTheOneBelowTheMouse() {
    InputGesture gesture;
    QMenu menu;
    menu.addAction(text("First"));
    QAction* const second = menu.addAction(text("Second"));
    menu.popup(QPoint(0, 0));
    const QPoint at = menu.actionGeometry(second).center();
    QMouseEvent press = mouse(QEvent::MouseButtonPress, at, Qt::LeftButton);
    gesture.note(&menu, &press);
    QVERIFY(gesture.menuAction() == nullptr); // the release triggers
    QMouseEvent release = mouse(QEvent::MouseButtonRelease, at, Qt::NoButton);
    gesture.note(&menu, &release);
    QCOMPARE(gesture.menuAction(), second);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    menu.setActiveAction(second);
    gesture.note(&menu, &key);
    QCOMPARE(gesture.menuAction(), second);
    QWidget other;
    gesture.note(&other, &key);
    QVERIFY(gesture.menuAction() == nullptr);
}

void tst_InputGesture::anItemOfAMenuThatDiesIsNone() {
    InputGesture gesture;
    QMenu menu;
    QAction* const action = menu.addAction(text("First"));
    menu.popup(QPoint(0, 0));
    QMouseEvent release =
        mouse(QEvent::MouseButtonRelease, menu.actionGeometry(action).center(), Qt::NoButton);
    gesture.note(&menu, &release);
    QCOMPARE(gesture.menuAction(), action);
    delete action;
    QVERIFY(gesture.menuAction() == nullptr);
}

QTEST_MAIN(tst_InputGesture)
#include "tst_inputgesture.moc"

#include "qtuicontrols/quick/quickgesture.h"
#include "testlib/testcase.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QShortcutEvent>
#include <QTest>

using Vorsk::UIControls::QuickGesture;

class tst_QuickGesture : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void pressesBeginOneAndMovesGoOn_data();
    void pressesBeginOneAndMovesGoOn();
    void aKeyThatIsHeldIsOne();
    void textIsCommittedOrComposed();
    void theKeysOfAShortcutAreKept();
};

void tst_QuickGesture::pressesBeginOneAndMovesGoOn_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("begins");
    const auto row = [](const char* name, QEvent::Type type, bool begins) {
        QTest::newRow(name) << static_cast<int>(type) << begins;
    };
    row("press", QEvent::MouseButtonPress, true);
    row("double click", QEvent::MouseButtonDblClick, true);
    row("finger", QEvent::TouchBegin, true);
    row("pen", QEvent::TabletPress, true);
    row("wheel", QEvent::Wheel, true);
    row("drop", QEvent::Drop, true);
    row("move", QEvent::MouseMove, false);
    row("release", QEvent::MouseButtonRelease, false);
    row("finger's move", QEvent::TouchUpdate, false);
    row("finger's end", QEvent::TouchEnd, false);
    row("timer", QEvent::Timer, false);
}

void tst_QuickGesture::pressesBeginOneAndMovesGoOn() {
    QFETCH(int, type);
    QFETCH(bool, begins);
    QuickGesture gesture;
    const int before = gesture.serial();
    QEvent event(static_cast<QEvent::Type>(type));
    gesture.note(&event);
    QCOMPARE(gesture.serial() != before, begins);
}

void tst_QuickGesture::aKeyThatIsHeldIsOne() {
    QuickGesture gesture;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    gesture.note(&press);
    const int serial = gesture.serial();
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"), true);
    gesture.note(&repeated);
    QCOMPARE(gesture.serial(), serial);
    gesture.note(&press);
    QVERIFY(gesture.serial() != serial);
}

void tst_QuickGesture::textIsCommittedOrComposed() {
    QuickGesture gesture;
    QInputMethodEvent committed;
    committed.setCommitString(QStringLiteral("a"));
    gesture.note(&committed);
    QVERIFY(gesture.isCommitted());
    QInputMethodEvent composed(QStringLiteral("a"), {});
    gesture.note(&composed);
    QVERIFY(!gesture.isCommitted());
    QInputMethodEvent removed;
    removed.setCommitString(QString(), -1, 1);
    gesture.note(&removed);
    QVERIFY(gesture.isCommitted());
}

void tst_QuickGesture::theKeysOfAShortcutAreKept() {
    QuickGesture gesture;
    const QKeySequence keys(QStringLiteral("Ctrl+S"));
    QShortcutEvent event(keys, 1);
    gesture.note(&event);
    QCOMPARE(gesture.shortcut(), keys);
}

QTEST_APPLESS_MAIN(tst_QuickGesture)

#include "tst_quickgesture.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "shownscene.h"
#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QSignalSpy>
#include <QTest>

using TestLib::QuickScene;
using Vorsk::UIAbstraction::UIElement;

using Imports = QuickScene::Imports;

/**
 * What signals of an item are made into: counts. The tracker gets the window's first Show and,
 * unlike in an application, nothing else: so no count comes from a hit test.
 */
class tst_QtQuickItemObserverUse : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void buttonCountsItsClicks_data();
    void buttonCountsItsClicks();
    void keyPressOnAButtonCounts();
    void checkBoxWithTwoStates_data();
    void checkBoxWithTwoStates();
    void checkBoxWithThreeStatesCountsEachState();
    void checkedStateCountsOnlyThroughOneSignal();
    void partialStateThatWasNotAnnouncedIsCounted();
    void checkedStateOfAnotherNumberCountsNothing();
    void invalidStateIsReportedAndNotCounted();
    void missingStateCountsNothingSilently();
    void menuItemCountsClickAndTrigger();
    void typingIntoATextFieldCounts();
    void textChangeOfAnythingElseCountsNothing();
    void textInALoaderCountsForTheTextBesideIt();
    void textInALoaderWithoutATextBesideItCountsNothing();
    void textOfTheFirstOfTwoTextsIsCounted();
    void textFieldOfVersion1IsItsPlaceholderAndCountsNothing();
};

void tst_QtQuickItemObserverUse::buttonCountsItsClicks_data() {
    QTest::addColumn<Imports>("imports");
    QTest::addColumn<QByteArray>("qml");
    QTest::newRow("1: button") << Imports::Controls1 << QByteArray("Button { objectName: 'it' }");
    QTest::newRow("1: tool button")
        << Imports::Controls1 << QByteArray("ToolButton { objectName: 'it' }");
    QTest::newRow("2: button") << Imports::Controls2 << QByteArray("Button { objectName: 'it' }");
    QTest::newRow("2: round button")
        << Imports::Controls2 << QByteArray("RoundButton { objectName: 'it' }");
    QTest::newRow("templates: button")
        << Imports::Templates2
        << QByteArray("T.Button { width: 40; height: 20; objectName: 'it' }");
}

void tst_QtQuickItemObserverUse::buttonCountsItsClicks() {
    QFETCH(Imports, imports);
    QFETCH(QByteArray, qml);
    ShownScene shown(qml, imports);
    QVERIFY(shown.scene.show());
    shown.scene.click(shown.scene.item("it"));
    shown.scene.click(shown.scene.item("it"));
    QCOMPARE(shown.usage(), QStringLiteral("clicked=2"));
}

void tst_QtQuickItemObserverUse::keyPressOnAButtonCounts() {
    ShownScene shown("Button { objectName: 'it' }", Imports::Controls2);
    QVERIFY(shown.scene.show());
    shown.scene.window()->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(shown.scene.window()));
    shown.scene.item("it")->forceActiveFocus();
    QTest::keyClick(shown.scene.window(), Qt::Key_Space);
    QCOMPARE(shown.usage(), QStringLiteral("clicked=1"));
}

void tst_QtQuickItemObserverUse::checkBoxWithTwoStates_data() {
    QTest::addColumn<Imports>("imports");
    QTest::newRow("1, which has both signals") << Imports::Controls1;
    QTest::newRow("2, which has checkedChanged() only") << Imports::Controls2;
}

void tst_QtQuickItemObserverUse::checkBoxWithTwoStates() {
    QFETCH(Imports, imports);
    ShownScene shown("CheckBox { text: 'Check'; objectName: 'it' }", imports);
    QVERIFY(shown.scene.show());
    shown.scene.click(shown.scene.item("it"));
    QCOMPARE(shown.usage(), QStringLiteral("checked=1 clicked=1 unchecked=0"));
    shown.scene.click(shown.scene.item("it"));
    QCOMPARE(shown.usage(), QStringLiteral("checked=1 clicked=2 unchecked=1"));
    // By the application.
    QVERIFY(shown.scene.item("it")->setProperty("checked", true));
    QCOMPARE(shown.usage(), QStringLiteral("checked=2 clicked=2 unchecked=1"));
}

void tst_QtQuickItemObserverUse::checkBoxWithThreeStatesCountsEachState() {
    ShownScene shown("CheckBox { text: 'Check'; partiallyCheckedEnabled: true; objectName: 'it' }",
                     Imports::Controls1);
    QQuickItem* const box = shown.scene.item("it");
    QVERIFY(box->setProperty("checkedState", Qt::PartiallyChecked));
    QCOMPARE(shown.usage(), QStringLiteral("checked=0 clicked=0 partiallyChecked=1 unchecked=0"));
    QVERIFY(box->setProperty("checkedState", Qt::Checked));
    QCOMPARE(shown.usage(), QStringLiteral("checked=1 clicked=0 partiallyChecked=1 unchecked=0"));
    QVERIFY(box->setProperty("checkedState", Qt::Unchecked));
    QCOMPARE(shown.usage(), QStringLiteral("checked=1 clicked=0 partiallyChecked=1 unchecked=1"));
}

void tst_QtQuickItemObserverUse::checkedStateCountsOnlyThroughOneSignal() {
    ShownScene shown("CheckBox { objectName: 'it' }", Imports::Controls1);
    QQuickItem* const box = shown.scene.item("it");
    QSignalSpy stateSpy(box, SIGNAL(checkedStateChanged()));
    QSignalSpy checkedSpy(box, SIGNAL(checkedChanged()));
    QVERIFY(box->setProperty("checkedState", Qt::Checked));
    QCOMPARE(stateSpy.count(), 1);
    QCOMPARE(checkedSpy.count(), 1);
    QCOMPARE(shown.usage(), QStringLiteral("checked=1 clicked=0 unchecked=0"));
}

void tst_QtQuickItemObserverUse::partialStateThatWasNotAnnouncedIsCounted() {
    ShownScene shown("CheckBox { objectName: 'it' }", Imports::Controls1);
    QQuickItem* const box = shown.scene.item("it");
    QVERIFY(!box->property("partiallyCheckedEnabled").toBool());
    QVERIFY(box->setProperty("checkedState", Qt::PartiallyChecked));
    QCOMPARE(shown.usage(), QStringLiteral("checked=0 clicked=0 partiallyChecked=1 unchecked=0"));
    // Silently: neither a registration nor a warning, only the count.
    QCOMPARE(shown.probe.takeRecords(3), QStringList());
    QCOMPARE(shown.probe.takeLog(), QStringList());
}

void tst_QtQuickItemObserverUse::checkedStateOfAnotherNumberCountsNothing() {
    ShownScene shown("Item { property var checkedState: 0; objectName: 'it' }");
    QQuickItem* const item = shown.scene.item("it");
    QVERIFY(item->setProperty("checkedState", 3));
    QVERIFY(item->setProperty("checkedState", -1));
    QCOMPARE(shown.usage(), QString());
    QVERIFY(item->setProperty("checkedState", 2));
    QCOMPARE(shown.usage(), QStringLiteral("checked=1"));
    QVERIFY(item->setProperty("checkedState", QStringLiteral("no number, so it reads as 0")));
    QCOMPARE(shown.usage(), QStringLiteral("checked=1 unchecked=1"));
}

void tst_QtQuickItemObserverUse::invalidStateIsReportedAndNotCounted() {
    ShownScene shown("Item { property var checkedState: 0; objectName: 'it' }"
                     "Item { property var checked: true; objectName: 'other' }");
    QVERIFY(shown.scene.item("it")->setProperty("checkedState", QVariant()));
    QCOMPARE(shown.usage(), QString());
    QCOMPARE(shown.probe.takeLog(),
             QStringList(QStringLiteral("warning: Invalid property: 'checkedState'")));
    QVERIFY(shown.scene.item("other")->setProperty("checked", QVariant()));
    QCOMPARE(shown.usage("other"), QString());
    QCOMPARE(shown.probe.takeLog(),
             QStringList(QStringLiteral("warning: Invalid property: 'checked'")));
}

void tst_QtQuickItemObserverUse::missingStateCountsNothingSilently() {
    ShownScene shown("Item { signal checkedStateChanged(); objectName: 'it' }"
                     "Item { signal checkedChanged(); objectName: 'other' }");
    QVERIFY(QMetaObject::invokeMethod(shown.scene.item("it"), "checkedStateChanged"));
    QVERIFY(QMetaObject::invokeMethod(shown.scene.item("other"), "checkedChanged"));
    QCOMPARE(shown.usage(), QString());
    QCOMPARE(shown.usage("other"), QString());
    QCOMPARE(shown.probe.takeLog(), QStringList());
}

void tst_QtQuickItemObserverUse::menuItemCountsClickAndTrigger() {
    ShownScene shown("T.MenuItem { width: 40; height: 20; objectName: 'it' }", Imports::Templates2);
    QVERIFY(shown.scene.show());
    shown.scene.click(shown.scene.item("it"));
    QCOMPARE(shown.usage(), QStringLiteral("clicked=1 triggered=1"));
}

void tst_QtQuickItemObserverUse::typingIntoATextFieldCounts() {
    ShownScene shown("T.TextField { width: 40; height: 20; objectName: 'it' }",
                     Imports::Templates2);
    QVERIFY(shown.scene.show());
    shown.scene.window()->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(shown.scene.window()));
    shown.scene.click(shown.scene.item("it"));
    QTest::keyClick(shown.scene.window(), Qt::Key_A);
    QTest::keyClick(shown.scene.window(), Qt::Key_B);
    QCOMPARE(shown.usage(), QStringLiteral("textChanged=2"));
}

void tst_QtQuickItemObserverUse::textChangeOfAnythingElseCountsNothing() {
    ShownScene shown("Text { objectName: 'it' }");
    QVERIFY(shown.scene.item("it")->setProperty("text", QStringLiteral("new")));
    QCOMPARE(shown.usage(), QString());
}

void tst_QtQuickItemObserverUse::textInALoaderCountsForTheTextBesideIt() {
    ShownScene shown("Item { Text { objectName: 'label' }"
                     " Loader { sourceComponent: T.TextField { objectName: 'it' } } }",
                     Imports::Templates2);
    QVERIFY(shown.scene.item("it")->setProperty("text", QStringLiteral("new")));
    QCOMPARE(shown.usage(), QStringLiteral("textChanged=0"));
    QCOMPARE(shown.usage("label"), QStringLiteral("textChanged=1"));
}

void tst_QtQuickItemObserverUse::textInALoaderWithoutATextBesideItCountsNothing() {
    ShownScene shown("Item { TextEdit { objectName: 'label' }"
                     " Loader { sourceComponent: T.TextField { objectName: 'it' } } }",
                     Imports::Templates2);
    QVERIFY(shown.scene.item("it")->setProperty("text", QStringLiteral("new")));
    QCOMPARE(shown.usage(), QStringLiteral("textChanged=0"));
    QCOMPARE(shown.usage("label"), QStringLiteral("textChanged=0"));
}

void tst_QtQuickItemObserverUse::textOfTheFirstOfTwoTextsIsCounted() {
    ShownScene shown("Item { Loader { sourceComponent: TextEdit { objectName: 'it' } }"
                     " Text { objectName: 'first' } Text { objectName: 'second' } }");
    QVERIFY(shown.scene.item("it")->setProperty("text", QStringLiteral("new")));
    QCOMPARE(shown.usage("first"), QStringLiteral("textChanged=1"));
    QCOMPARE(shown.usage("second"), QStringLiteral("textChanged=0"));
    QCOMPARE(shown.usage("it"), QString());
}

void tst_QtQuickItemObserverUse::textFieldOfVersion1IsItsPlaceholderAndCountsNothing() {
    ShownScene shown("TextField { placeholderText: 'Name'; objectName: 'it' }", Imports::Controls1);
    QVERIFY(shown.scene.show());
    shown.scene.window()->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(shown.scene.window()));
    shown.scene.click(shown.scene.item("it"));
    QTest::keyClick(shown.scene.window(), Qt::Key_A);
    QCOMPARE(shown.scene.item("it")->property("text").toString(), QStringLiteral("a"));
    // The placeholder stands beside the loader of the style. What is typed goes into an input that
    // no loader made.
    const QList<UIElement*> parts = shown.probe.element(shown.scene.item("it"))->children();
    const UIElement* input = nullptr;
    for (const UIElement* part : parts) {
        if (part->standardType().name() == QLatin1String("TextInput")) {
            input = part;
        }
    }
    QVERIFY(input);
    QCOMPARE(input->concreteType(), QStringLiteral("QQuickText"));
    QCOMPARE(input->text(), QStringLiteral("Name"));
    QCOMPARE(usageText(input), QStringLiteral("textChanged=0"));
}

QTEST_MAIN(tst_QtQuickItemObserverUse)

#include "tst_qtquickitemobserveruse.moc"

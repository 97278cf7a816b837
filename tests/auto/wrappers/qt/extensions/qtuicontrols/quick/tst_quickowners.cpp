#include "qtuicontrols/quick/quickowners.h"
#include "testlib/quickstage.h"
#include "testlib/testcase.h"

#include <QQuickItem>
#include <QTest>

using TestLib::QuickStage;
using Vorsk::UIControls::QuickOwners;

/** Which control owns what got an input. */
class tst_QuickOwners : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void partsBelongToTheNearestControl_data();
    void partsBelongToTheNearestControl();
    void whatLiesInAnotherIsWithinIt();
    void popupsThatLieInOneAnotherEnd();
};

void tst_QuickOwners::partsBelongToTheNearestControl_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QByteArray>("owner");
    const auto row = [](const char* name, const char* qml, const char* owner) {
        QTest::newRow(name) << QByteArray(qml) << QByteArray(owner);
    };
    row("itself", "Button { objectName: 'part' }", "part");
    row("content of a button",
        "Button { objectName: 'x'; contentItem: Text { objectName: 'part' } }", "x");
    row("background of a spin box",
        "SpinBox { objectName: 'x'; background: Item { Item { objectName: 'part' } } }", "x");
    row("field of a combo box",
        "ComboBox { objectName: 'x'; editable: true; contentItem: TextField { objectName: 'part' } "
        "}",
        "x");
    row("row of a combo box's popup",
        "ComboBox { objectName: 'x'; model: 2; onWindowChanged: Qt.callLater(popup.open); "
        "delegate: ItemDelegate { objectName: index ? 'part' : '' } }",
        "x");
    row("row of a list",
        "ListView { objectName: 'x'; width: 90; height: 90; model: 2; "
        "delegate: Text { objectName: index ? 'part' : ''; height: 20 } }",
        "x");
    row("button on a row",
        "ListView { objectName: 'x'; width: 90; height: 90; model: 2; delegate: Item { height: 40; "
        "Button { objectName: index ? 'part' : '' } } }",
        "part");
    row("background of a window", "Item { objectName: 'part' }", "");
    row("background of a popup",
        "Button { objectName: 'x'; Popup { visible: true; Item { objectName: 'part' } } }", "");
    row("page of a swipe view", "SwipeView { objectName: 'x'; Item { objectName: 'part' } }", "");
}

void tst_QuickOwners::partsBelongToTheNearestControl() {
    QFETCH(QByteArray, qml);
    QFETCH(QByteArray, owner);
    QuickStage stage(qml);
    QVERIFY(stage.isReady);
    QTRY_VERIFY(stage.scene.object("part") != nullptr);
    QCoreApplication::processEvents();
    const QuickOwners owners(stage.probe.book());
    const QObject* const found = owners.controlOf(stage.scene.object("part"));
    QCOMPARE(found == nullptr ? QString() : found->objectName(), QString::fromLatin1(owner));
}

void tst_QuickOwners::whatLiesInAnotherIsWithinIt() {
    QuickStage stage("Item { objectName: 'outer'; Popup { visible: true; objectName: 'popup'; "
                     "Item { objectName: 'inner' } } Item { objectName: 'beside' } }");
    QVERIFY(stage.isReady);
    QObject* const outer = stage.scene.object("outer");
    QObject* const inner = stage.scene.object("inner");
    QVERIFY(QuickOwners::isWithin(inner, inner));
    QVERIFY(QuickOwners::isWithin(inner, outer));
    QVERIFY(QuickOwners::isWithin(inner, stage.scene.object("popup")));
    QVERIFY(QuickOwners::isWithin(inner, stage.scene.window()));
    QVERIFY(!QuickOwners::isWithin(outer, inner));
    QVERIFY(!QuickOwners::isWithin(stage.scene.object("beside"), stage.scene.object("popup")));
    QVERIFY(!QuickOwners::isWithin(nullptr, outer));
}

void tst_QuickOwners::popupsThatLieInOneAnotherEnd() {
    QuickStage stage("Item { Popup { id: a; objectName: 'a'; parent: inB; Item { id: inA } } "
                     "Popup { objectName: 'b'; parent: inA; Item { id: inB } } }");
    QVERIFY(stage.isReady);
    QVERIFY(!QuickOwners::isWithin(stage.scene.object("a"), stage.scene.window()));
}

int main(int argc, char* argv[]) {
    return TestLib::runWithDeliveries<tst_QuickOwners>(argc, argv);
}

#include "tst_quickowners.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"

#include <QRegularExpression>
#include <QTest>

using TestLib::QuickProbe;
using TestLib::QuickScene;

using Imports = QuickScene::Imports;

namespace {

/** Shown and given the focus, window first, then its content. */
const char shown[] = "kind 1 elementAdded #1 Window/Scene_QMLTYPE_n\n"
                     "kind 10 windowNodeChanged #1 true\n"
                     "kind 3 eventRegistered #1 shown\n"
                     "kind 7 textChanged #1 \"Panel\"\n"
                     "kind 1 elementAdded #2 unknown/QQuickRootItem transparent\n"
                     "kind 1 elementAdded #3 unknown/QQuickButton transparent\n"
                     "kind 3 eventRegistered #3 clicked\n"
                     "kind 7 textChanged #3 \"Apply\"\n"
                     "kind 6 standardTypeChanged #3 Button\n"
                     "kind 8 transparentNodeChanged #3 false\n"
                     "kind 9 subgraphTransparentChanged #3 true\n"
                     "kind 2 childAdded #2 #3\n"
                     "kind 1 elementAdded #4 unknown/CheckBox_QMLTYPE_n transparent\n"
                     "kind 3 eventRegistered #4 checked\n"
                     "kind 3 eventRegistered #4 unchecked\n"
                     "kind 3 eventRegistered #4 clicked\n"
                     "kind 7 textChanged #4 \"Night\"\n"
                     "kind 6 standardTypeChanged #4 CheckBox\n"
                     "kind 8 transparentNodeChanged #4 false\n"
                     "kind 9 subgraphTransparentChanged #4 true\n"
                     "kind 2 childAdded #2 #4\n"
                     "kind 1 elementAdded #5 unknown/QQuickTextField transparent\n"
                     "kind 7 textChanged #5 null\n"
                     "kind 6 standardTypeChanged #5 TextInput\n"
                     "kind 8 transparentNodeChanged #5 false\n"
                     "kind 9 subgraphTransparentChanged #5 true\n"
                     "kind 3 eventRegistered #5 textChanged\n"
                     "kind 7 textChanged #5 \"Name\"\n"
                     "kind 2 childAdded #2 #5\n"
                     "kind 2 childAdded #1 #2\n"
                     "kind 8 transparentNodeChanged #2 true\n"
                     "kind 7 textChanged #1 \"Panel\"\n"
                     "kind 11 usageIncreased #1 shown=1\n"
                     "kind 4 geometryChanged #1 (0,0 200x100)\n"
                     "kind 4 geometryChanged #2 (0,0 0x0)\n"
                     "kind 4 geometryChanged #3 (0,0 50x20)\n"
                     "kind 4 geometryChanged #4 (0,20 50x20)\n"
                     "kind 4 geometryChanged #5 (0,40 50x20)\n"
                     "kind 4 geometryChanged #2 (0,0 0x0)\n"
                     "kind 4 geometryChanged #3 (0,0 50x20)\n"
                     "kind 4 geometryChanged #4 (0,20 50x20)\n"
                     "kind 4 geometryChanged #5 (0,40 50x20)\n";

/** A button is clicked: hit, focused, its own signal. */
const char buttonClicked[] = "kind 11 usageIncreased #1 clicked=1\n"
                             "kind 11 usageIncreased #3 clicked=1\n"
                             "kind 4 geometryChanged #3 (0,0 50x20)\n"
                             "kind 11 usageIncreased #3 clicked=2\n";

/** A check box is checked. */
const char boxChecked[] = "kind 11 usageIncreased #1 clicked=2\n"
                          "kind 11 usageIncreased #4 clicked=1\n"
                          "kind 4 geometryChanged #4 (0,20 50x20)\n"
                          "kind 11 usageIncreased #4 checked=1\n"
                          "kind 11 usageIncreased #4 clicked=2\n";

/** A text field is clicked, and one letter is typed. */
const char fieldTyped[] = "kind 11 usageIncreased #1 clicked=3\n"
                          "kind 11 usageIncreased #5 clicked=1\n"
                          "kind 4 geometryChanged #5 (0,40 50x20)\n"
                          "kind 11 usageIncreased #5 textChanged=1\n";

} // namespace

/** Every record, in its order, of a small window that is shown and used with mouse and keyboard. */
class tst_QuickRecords : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void windowIsShownAndUsed();
};

void tst_QuickRecords::windowIsShownAndUsed() {
    QuickProbe probe;
    QuickScene scene("Window { width: 200; height: 100; title: 'Panel';"
                     " T.Button { objectName: 'button'; width: 50; height: 20; text: '&Apply' }"
                     " CheckBox { objectName: 'box'; y: 20; width: 50; height: 20; text: 'Night';"
                     "  indicator: null; contentItem: null; background: null }"
                     " T.TextField { objectName: 'field'; y: 40; width: 50; height: 20;"
                     "  placeholderText: 'Name' } }",
                     Imports::Templates2);
    probe.start();
    const auto compare = [&probe](const char* expected) {
        QStringList records = probe.takeRecords();
        records.replaceInStrings(QRegularExpression(QStringLiteral("_QMLTYPE_\\d+")),
                                 QStringLiteral("_QMLTYPE_n"));
        records.append(QString());
        QCOMPARE(records.join(QLatin1Char('\n')), QLatin1String(expected));
    };

    QVERIFY(scene.show());
    QVERIFY(QTest::qWaitForWindowActive(scene.window()));
    compare(shown);
    scene.click(scene.item("button"));
    compare(buttonClicked);
    scene.click(scene.item("box"));
    compare(boxChecked);
    scene.click(scene.item("field"));
    QTest::keyClick(scene.window(), Qt::Key_A);
    compare(fieldTyped);
}

QTEST_MAIN(tst_QuickRecords)

#include "tst_quickrecords.moc"

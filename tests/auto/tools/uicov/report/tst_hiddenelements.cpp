// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/hiddenelements.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

using TestLib::RunMaker;
using Uicov::Report::HiddenElements;

class TestHiddenElements : public TestLib::TestCase {
    Q_OBJECT

    static QString found(const QString& part, const Uicov::Runs::Run& run) {
        HiddenElements hidden(part);
        hidden.look(run);
        return hidden.toString();
    }

private Q_SLOTS:
    void onlyWhatHasNoKeyIsFound() {
        RunMaker maker;
        const int window = maker.addWindow(QStringLiteral("same"));
        maker.addButton(window, QStringLiteral("same"));
        HiddenElements hidden(QStringLiteral("same"));
        hidden.look(maker.run);
        QVERIFY(hidden.isEmpty());
        const int layout = maker.add(window, "", "QWidget", QStringLiteral("same"), "");
        maker.element(layout).isTransparentNode = true;
        hidden.look(maker.run);
        QVERIFY(!hidden.isEmpty());
    }

    void itIsFoundByTextClassOrType_data() {
        QTest::addColumn<QString>("part");
        QTest::addColumn<bool>("isFound");
        QTest::newRow("text") << "inner" << true;
        QTest::newRow("part of the text") << "nne" << true;
        QTest::newRow("pattern") << "i*r" << true;
        QTest::newRow("class") << "QLabel" << true;
        QTest::newRow("type") << "Label" << true;
        QTest::newRow("case counts") << "Inner" << false;
        QTest::newRow("nothing") << "other" << false;
    }

    void itIsFoundByTextClassOrType() {
        QFETCH(QString, part);
        QFETCH(bool, isFound);
        RunMaker maker;
        const int button = maker.addButton(maker.addWindow(QStringLiteral("W")), QString());
        maker.element(button).isSubgraphTransparent = true;
        maker.add(button, "Label", "QLabel", QStringLiteral("inner"), "shown");
        QCOMPARE(!found(part, maker.run).isEmpty(), isFound);
    }

    void theReasonNamesTheNearestThatHidesIt() {
        RunMaker maker;
        const int window = maker.addWindow(QStringLiteral("W"));
        const int outer = maker.addButton(window, QStringLiteral("outer"));
        maker.element(outer).isSubgraphTransparent = true;
        const int holder = maker.add(outer, "", "Holder", QString(), "");
        maker.element(holder).isTransparentNode = true;
        maker.add(holder, "Label", "QLabel", QStringLiteral("inner"), "shown");
        QVERIFY(found(QStringLiteral("inner"), maker.run)
                    .contains(QStringLiteral("it is a part of Window \"W\" > Button \"outer\", "
                                             "which counts as one thing\n")));
    }

    void elementsThatStandBelowThemselvesEnd() {
        RunMaker maker;
        const int window = maker.addWindow(QStringLiteral("W"));
        const int a = maker.add(window, "", "Ring", QString(), "");
        const int b = maker.add(a, "", "Ring", QString(), "");
        maker.element(a).isTransparentNode = true;
        maker.element(b).isTransparentNode = true;
        maker.element(b).children.append(a);
        maker.element(a).parent = b;
        const QString text = found(QStringLiteral("Ring"), maker.run);
        QVERIFY2(text.contains(QStringLiteral("it is structure")), qPrintable(text));
    }

    void equalOnesAreOneWithAllRuns() {
        HiddenElements hidden(QStringLiteral("Holder"));
        for (const char* uuid : {"aaaaaaaa-0", "bbbbbbbb-0"}) {
            RunMaker maker;
            maker.run.uuid = QLatin1String(uuid);
            const int window = maker.addWindow(QStringLiteral("W"));
            for (int i = 0; i < 3; ++i) {
                const int holder = maker.add(window, "", "Holder", QString(), "");
                maker.element(holder).isTransparentNode = true;
            }
            hidden.look(maker.run);
        }
        QCOMPARE(hidden.toString().count(QStringLiteral("class Holder")), 1);
        QVERIFY(hidden.toString().endsWith(QStringLiteral("in           run aaaaaaaa, "
                                                          "bbbbbbbb\n")));
    }
};

QTEST_GUILESS_MAIN(TestHiddenElements)
#include "tst_hiddenelements.moc"

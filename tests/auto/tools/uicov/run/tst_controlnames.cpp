// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/controlnames.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

using TestLib::RunMaker;
using Uicov::Runs::ControlNames;
using Uicov::Runs::RunElement;

class TestControlNames : public TestLib::TestCase {
    Q_OBJECT

    /** A button of that text, with attributes that are written as name=value, separated by ";". */
    static int add(RunMaker& maker, const QString& text, const QString& attributes) {
        const int button = maker.add(0, "Button", "QPushButton", text, "clicked");
        const QStringList pairs = attributes.split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (const QString& pair : pairs) {
            const int separator = pair.indexOf(QLatin1Char('='));
            maker.element(button).attributes.insert(pair.left(separator), pair.mid(separator + 1));
        }
        return button;
    }

private Q_SLOTS:
    void captionOfAControl_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QString>("caption");
        const auto row = [](const char* name, const char* text, const char* attributes,
                            const char* caption) {
            QTest::newRow(name) << text << attributes << caption;
        };
        row("text first", "Go", "page=P;label=L;objectName=o", "Go");
        row("page", "", "page=P;label=L", "P");
        row("label", "", "label=L;placeholder=H", "L");
        row("placeholder", "", "placeholder=H;accessibleName=A", "H");
        row("accessible name", "", "accessibleName=A;toolTip=T", "A");
        row("tool tip", "", "toolTip=T;objectName=o", "T");
        row("objectName", "", "objectName=o;qmlId=q", "o");
        row("QML id", "", "qmlId=q", "q");
        row("blanks are no text", "  ", "label= ;toolTip=T", "T");
        row("none", "", "enabled=false", "");
    }

    void captionOfAControl() {
        QFETCH(QString, text);
        QFETCH(QString, attributes);
        QFETCH(QString, caption);
        RunMaker maker;
        maker.addWindow(QStringLiteral("Panel"));
        const int button = add(maker, text, attributes);
        QCOMPARE(ControlNames::captionOf(maker.element(button)), caption);
    }

    void keysHangOnTheAuthorsNames_data() {
        QTest::addColumn<QString>("attributes");
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("isStable");
        QTest::newRow("objectName") << "objectName=go;qmlId=q" << QStringLiteral("go") << true;
        QTest::newRow("QML id") << "qmlId=q" << QStringLiteral("q") << true;
        QTest::newRow("Qt's own name")
            << "objectName=qt_spinbox_lineedit" << QStringLiteral("Go") << false;
        QTest::newRow("Qt's other own name, with an id")
            << "objectName=_q_tab;qmlId=q" << QStringLiteral("q") << true;
        QTest::newRow("none") << "" << QStringLiteral("Go") << false;
        QTest::newRow("group") << "group=ItemDelegate in list;objectName=go"
                               << QStringLiteral("ItemDelegate in list") << false;
    }

    void keysHangOnTheAuthorsNames() {
        QFETCH(QString, attributes);
        QFETCH(QString, label);
        QFETCH(bool, isStable);
        RunMaker maker;
        maker.addWindow(QStringLiteral("Panel"));
        const int button = add(maker, QStringLiteral("Go"), attributes);
        const ControlNames names(maker.run);
        QCOMPARE(names.keyLabelOf(button), label);
        QCOMPARE(names.hasStableName(button), isStable);
    }

    void aNameThatTwoHaveSaysNothing() {
        RunMaker maker;
        maker.addWindow(QStringLiteral("Panel"));
        const int first = add(maker, QStringLiteral("First"), QStringLiteral("objectName=button"));
        const int second =
            add(maker, QStringLiteral("Second"), QStringLiteral("objectName=button"));
        const int box = maker.add(0, "CheckBox", "QCheckBox", QStringLiteral("Third"), "checked");
        maker.element(box).attributes.insert(QStringLiteral("objectName"),
                                             QStringLiteral("button"));
        const ControlNames names(maker.run);
        QCOMPARE(names.keyLabelOf(first), QStringLiteral("First"));
        QCOMPARE(names.keyLabelOf(second), QStringLiteral("Second"));
        // Of another type, so that the two names cannot be taken for each other.
        QCOMPARE(names.keyLabelOf(box), QStringLiteral("button"));
    }

    void groups() {
        RunElement element;
        QVERIFY(!ControlNames::isOfGroup(element));
        element.attributes.insert(QStringLiteral("group"), QString());
        QVERIFY(!ControlNames::isOfGroup(element));
        element.attributes.insert(QStringLiteral("group"), QStringLiteral("rows"));
        QVERIFY(ControlNames::isOfGroup(element));
    }
};

QTEST_GUILESS_MAIN(TestControlNames)
#include "tst_controlnames.moc"

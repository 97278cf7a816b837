// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/elementkey.h"
#include "run/runelement.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Runs::ElementKey;

class TestElementKey : public TestLib::TestCase {
    Q_OBJECT

    static ElementKey::Step stepOf(const char* type, const char* concreteType, const QString& text,
                                   bool isWindow = false) {
        Uicov::Runs::RunElement element;
        element.className = QLatin1String(concreteType);
        element.type = QLatin1String(type);
        element.text = text;
        return isWindow ? ElementKey::windowStepOf(element) : ElementKey::stepOf(element);
    }

private Q_SLOTS:
    void labelsAreNormalised_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("label");
        QTest::newRow("plain") << "Save"
                               << "Save";
        QTest::newRow("null") << QString() << "";
        QTest::newRow("shortcut") << "Quit\tCtrl+Q"
                                  << "Quit";
        QTest::newRow("only a shortcut") << "\tF1"
                                         << "";
        QTest::newRow("ellipsis") << QString::fromUtf8("Open…") << "Open";
        QTest::newRow("three dots") << "Open..."
                                    << "Open";
        QTest::newRow("dots with a space") << "Open ..."
                                           << "Open";
        QTest::newRow("dots inside") << "a...b"
                                     << "a...b";
        QTest::newRow("only dots") << "..."
                                   << "";
        QTest::newRow("changed mark") << "Editor[*] - x"
                                      << "Editor - x";
        QTest::newRow("space and lines") << "  two\n lines "
                                         << "two lines";
        QTest::newRow("decomposed") << QString::fromUtf8("e\xcc\x81") << QString::fromUtf8("é");
        QTest::newRow("case stays") << "SAVE"
                                    << "SAVE";
        QTest::newRow("numbers stay") << "Item 3"
                                      << "Item 3";
    }

    void labelsAreNormalised() {
        QFETCH(QString, text);
        QFETCH(QString, label);
        QCOMPARE(ElementKey::normalisedLabel(text), label);
    }

    void classNamesLoseTheEnginesNumbers_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("normalised");
        QTest::newRow("none") << "QPushButton"
                              << "QPushButton";
        QTest::newRow("type") << "Button_QMLTYPE_12"
                              << "Button";
        QTest::newRow("instance") << "QQuickItem_QML_7"
                                  << "QQuickItem";
        QTest::newRow("both") << "Panel_QMLTYPE_3_QML_40"
                              << "Panel";
        QTest::newRow("a name of the application's") << "My_QMLTYPE_x"
                                                     << "My_QMLTYPE_x";
    }

    void classNamesLoseTheEnginesNumbers() {
        QFETCH(QString, name);
        QFETCH(QString, normalised);
        QCOMPARE(ElementKey::normalisedClass(name), normalised);
    }

    void captionsArePartOfAStepAndValuesAreNot_data() {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QString>("text");
        for (const char* type : {"Window", "Dialog", "Menu", "MenuItem", "Button", "CheckBox"}) {
            QTest::newRow(type) << QByteArray(type)
                                << QStringLiteral("%1 \"x\"").arg(QLatin1String(type));
        }
        for (const char* type : {"TextInput", "Table", "ToolBar", "MenuBar"}) {
            QTest::newRow(type) << QByteArray(type) << QString::fromLatin1(type);
        }
    }

    void captionsArePartOfAStepAndValuesAreNot() {
        QFETCH(QByteArray, type);
        QFETCH(QString, text);
        const auto step = stepOf(type.constData(), "C", QStringLiteral("x"));
        QCOMPARE(step.toString(), text);
    }

    void withoutATypeTheClassStandsInTheStep() {
        QCOMPARE(stepOf(nullptr, "Panel_QMLTYPE_3", QStringLiteral("x")).toString(),
                 QStringLiteral("Panel"));
        QCOMPARE(stepOf("", "QLabel", QString()).toString(), QStringLiteral("QLabel"));
    }

    void aWindowWithoutATitleIsCalledByItsClass() {
        QCOMPARE(stepOf("Dialog", "FindDialog", QString(), true).toString(),
                 QStringLiteral("Dialog (FindDialog)"));
        QCOMPARE(stepOf("Dialog", "FindDialog", QStringLiteral("Find"), true).toString(),
                 QStringLiteral("Dialog \"Find\""));
        QCOMPARE(stepOf(nullptr, "QWidget", QString(), true).toString(),
                 QStringLiteral("Window (QWidget)"));
    }

    void stepsJoinToAKey() {
        ElementKey key;
        QCOMPARE(key.toString(), QString());
        ElementKey::Step step = stepOf("Window", "W", QStringLiteral("Panel"), true);
        key.append(step);
        step = stepOf("Button", "QPushButton", QStringLiteral("OK"));
        step.ordinal = 2;
        key.append(step);
        QCOMPARE(key.toString(), QStringLiteral("Window \"Panel\" > Button \"OK\" #2"));
        QCOMPARE(key.steps().size(), 2);
    }

    void everyPartOfAStepTellsItApart() {
        const ElementKey::Step step{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                                    1};
        QVERIFY(step == step);
        QVERIFY(!(step < step));
        for (int part = 0; part < 4; ++part) {
            ElementKey::Step other = step;
            QString* const texts[] = {&other.kind, &other.label, &other.className};
            if (part < 3) {
                *texts[part] += QLatin1Char('x');
            } else {
                other.ordinal = 2;
            }
            QVERIFY(!(step == other));
            QVERIFY(step < other);
            QVERIFY(!(other < step));
        }
    }
};

QTEST_GUILESS_MAIN(TestElementKey)
#include "tst_elementkey.moc"

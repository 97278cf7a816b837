// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/keywalk.h"
#include "run/run.h"
#include "testlib/randomrun.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Runs::KeyWalk;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;

class TestKeyWalk : public TestLib::TestCase {
    Q_OBJECT

    Run m_run;

    int add(int parent, const char* type, const char* className, const char* text = nullptr) {
        RunElement element;
        element.type = QLatin1String(type);
        element.className = QLatin1String(className);
        element.text = text == nullptr ? QString() : QString::fromUtf8(text);
        element.parent = parent;
        const int number = static_cast<int>(m_run.elements.size());
        if (parent >= 0) {
            m_run.elements[static_cast<std::size_t>(parent)].children.append(number);
        }
        m_run.elements.push_back(element);
        return number;
    }

    int addWindow(const char* title, const char* className = "MainWindow", int parent = -1) {
        const int window = add(parent, "Window", className, title);
        m_run.elements.back().isWindowNode = true;
        return window;
    }

    /** Each place as key, or structure key, in order. */
    QStringList keys(bool wantsStructure = false, const KeyWalk::LabelRule& rule = {}) const {
        QStringList result;
        const auto places = KeyWalk(m_run, rule).places();
        for (const KeyWalk::Place& place : places) {
            const QString step = (wantsStructure ? place.structure : place.step).toKey();
            result.append(place.above < 0 ? step
                                          : result.at(place.above) + QStringLiteral(" > ") + step);
        }
        return result;
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_run = Run();
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void controlsAreCalledByTheNamesOfTheirAuthors() {
        m_run.extension = QStringLiteral("libqtuicontrols");
        const int window = addWindow("Panel");
        const int start = add(window, "Button", "QPushButton", "Start");
        m_run.elements[static_cast<std::size_t>(start)].attributes.insert(
            QStringLiteral("objectName"), QStringLiteral("startButton"));
        add(window, "Button", "QPushButton", "Stop");
        QCOMPARE(keys(), QStringList({QStringLiteral("Window \"Panel\""),
                                      QStringLiteral("Window \"Panel\" > Button \"startButton\""),
                                      QStringLiteral("Window \"Panel\" > Button \"Stop\"")}));
        QCOMPARE(KeyWalk(m_run).places().at(1).step.caption, QStringLiteral("Start"));
        m_run.extension.clear();
        QCOMPARE(keys().at(1), QStringLiteral("Window \"Panel\" > Button \"Start\""));
    }

    void aProjectChoosesNamesAndGroups() {
        m_run.extension = QStringLiteral("libqtuicontrols");
        const int window = addWindow("Panel");
        for (const char* text : {"Row 1", "Row 2", "Other"}) {
            const int button = add(window, "Button", "QPushButton", text);
            m_run.elements[static_cast<std::size_t>(button)].attributes.insert(
                QStringLiteral("toolTip"), QStringLiteral("Opens it"));
        }
        add(window, "Page", "QWidget", "Row 3");
        Uicov::Runs::NameRules rules;
        rules.captions = QStringList{QStringLiteral("toolTip")};
        rules.group = [](const QString& key) {
            return key.contains(QStringLiteral("\"Row")) ? QStringLiteral("rows") : QString();
        };
        const auto places = KeyWalk(m_run, rules).places();
        QCOMPARE(places.at(1).key, QStringLiteral("Window \"Panel\" > Button \"rows\""));
        QCOMPARE(places.at(2).key, places.at(1).key);
        QVERIFY(places.at(1).isOfGroup && places.at(2).isOfGroup);
        QCOMPARE(places.at(3).key, QStringLiteral("Window \"Panel\" > Button \"Other\""));
        QCOMPARE(places.at(3).step.caption, QStringLiteral("Opens it"));
        QVERIFY(!places.at(3).isOfGroup);
        // A view is no part of a group that a project makes.
        QCOMPARE(places.at(4).key, QStringLiteral("Window \"Panel\" > Page \"Row 3\""));
    }

    void membersOfAGroupAreOne() {
        m_run.extension = QStringLiteral("libqtuicontrols");
        const int window = addWindow("Panel");
        for (const char* text : {"a", "b", "c"}) {
            const int row = add(window, "Button", "ItemDelegate", text);
            m_run.elements[static_cast<std::size_t>(row)].attributes.insert(QStringLiteral("group"),
                                                                            QStringLiteral("rows"));
        }
        QStringList all = keys();
        QCOMPARE(all.size(), 4);
        all.removeDuplicates();
        QCOMPARE(all, QStringList({QStringLiteral("Window \"Panel\""),
                                   QStringLiteral("Window \"Panel\" > Button \"rows\"")}));
    }

    void aStructureKeyHasNoCaptions() {
        const int window = addWindow("Panel");
        add(window, "Button", "QPushButton", "Start");
        add(window, "CheckBox", "QCheckBox", "Pump");
        add(window, "Button", "QPushButton", "Stop");
        QCOMPARE(keys(true), QStringList({QStringLiteral("Window (MainWindow)"),
                                          QStringLiteral("Window (MainWindow) > Button"),
                                          QStringLiteral("Window (MainWindow) > CheckBox"),
                                          QStringLiteral("Window (MainWindow) > Button #2")}));
        const QStringList inEnglish = keys(true);
        for (RunElement& element : m_run.elements) {
            element.text = QStringLiteral("übersetzt ") + element.type;
        }
        QCOMPARE(keys(true), inEnglish);
    }

    void windowsOfQtsOwnClassesAreToldApartInStructureByTheirOrder() {
        addWindow("One", "QDialog");
        addWindow("Two", "QDialog");
        addWindow("Three", "FindDialog");
        addWindow("Four", "FindDialog");
        QCOMPARE(keys(true), QStringList({QStringLiteral("Window (QDialog)"),
                                          QStringLiteral("Window (QDialog) #2"),
                                          QStringLiteral("Window (FindDialog)"),
                                          QStringLiteral("Window (FindDialog)")}));
    }

    void noTwoPathsHaveOneKey() {
        const int window = addWindow("A");
        add(window, "Button", "B", "x\" > Button \"y");
        add(add(window, "Button", "B", "x"), "Button", "B", "y");
        add(window, "Button", "B", "x\\");
        QStringList found = keys();
        QCOMPARE(found.size(), 5);
        QCOMPARE(found.removeDuplicates(), 0);
    }

    void keysAreOneLineThatCanBePrinted() {
        addWindow("a\x1b[31m\xe2\x80\xae"
                  "b");
        QCOMPARE(keys(), QStringList{QStringLiteral("Window \"a\\x1b[31m\\u202eb\"")});
    }

    void aLabelRuleComesAfterTheBuiltInOne() {
        const int window = addWindow("Item 17\tCtrl+I");
        add(window, "Button", "B", "Item 1...");
        add(window, "Button", "B", "Item 2");
        const auto withoutNumbers = [](const QString& label) {
            return label.section(QLatin1Char(' '), 0, 0);
        };
        QCOMPARE(keys(false, withoutNumbers),
                 QStringList({QStringLiteral("Window \"Item\""),
                              QStringLiteral("Window \"Item\" > Button \"Item\""),
                              QStringLiteral("Window \"Item\" > Button \"Item\" #2")}));
        const auto nothing = [](const QString& /*label*/) { return QString(); };
        QCOMPARE(keys(false, nothing).first(), QStringLiteral("Window (MainWindow)"));
    }

    void everyPlaceComesBehindTheOneAboveItInAnyRun() {
        QRandomGenerator random(51);
        for (int round = 0; round < 200; ++round) {
            const Run run = TestLib::randomRun(random, 40);
            const auto places = KeyWalk(run).places();
            int windows = 0;
            QSet<QPair<int, int>> inWindow;
            for (std::size_t i = 0; i < places.size(); ++i) {
                QVERIFY(places[i].above < static_cast<int>(i));
                windows += places[i].above < 0 ? 1 : 0;
                const auto place = qMakePair(windows, places[i].element);
                QVERIFY(!inWindow.contains(place)); // once in each window
                inWindow.insert(place);
            }
            for (const RunElement& element : run.elements) {
                QVERIFY(element.parent >= 0 || windows > 0);
            }
        }
    }

    void equalRunsHaveEqualPlaces() {
        QRandomGenerator random(52);
        m_run = TestLib::randomRun(random, 60);
        const QStringList first = keys();
        QVERIFY(!first.isEmpty());
        for (int round = 0; round < 5; ++round) {
            QCOMPARE(keys(), first);
        }
    }
};

QTEST_GUILESS_MAIN(TestKeyWalk)
#include "tst_keywalk.moc"

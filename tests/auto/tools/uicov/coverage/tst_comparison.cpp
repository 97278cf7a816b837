// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/comparison.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

using TestLib::RunMaker;
using Uicov::Coverage::Comparison;
using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::State;
using Uicov::Runs::Run;

class TestComparison : public TestLib::TestCase {
    Q_OBJECT

    const Uicov::Coverage::Configuration m_configuration;

    static QStringList keys(const QVector<Comparison::Change>& changes) {
        QStringList result;
        for (const auto& change : changes) {
            result.append(change.key);
        }
        return result;
    }

    static QStringList guesses(const Comparison& comparison) {
        QStringList result;
        for (const auto& guess : comparison.renamed()) {
            result.append(guess.oldKey + QStringLiteral(" -> ") + guess.newKey);
        }
        return result;
    }

    Comparison compare(const Run& base, const Run& current) const {
        CoverageResult before(m_configuration);
        before.add(base);
        before.finish();
        CoverageResult now(m_configuration);
        now.add(current);
        now.finish();
        return Comparison(before, now);
    }

    /** Two windows with as many old and new buttons, none of them in the place of another. */
    static QPair<Run, Run> withoutCommonPlaces(const QStringList& old, const QStringList& fresh) {
        RunMaker base;
        RunMaker current(2);
        const int baseWindow = base.addWindow(QStringLiteral("W"));
        const int currentWindow = current.addWindow(QStringLiteral("W"));
        const int fillers = qMax(old.size(), fresh.size());
        for (const QString& text : old) {
            base.addButton(baseWindow, text);
        }
        for (int i = 0; i < fillers; ++i) {
            base.addButton(baseWindow, QStringLiteral("filler %1").arg(i));
            current.addButton(currentWindow, QStringLiteral("filler %1").arg(i));
        }
        for (const QString& text : fresh) {
            current.addButton(currentWindow, text);
        }
        return qMakePair(base.run, current.run);
    }

private Q_SLOTS:
    void equalRunsDoNotDiffer() {
        const Comparison comparison = compare(TestLib::panelRun(), TestLib::panelRun(2));
        QVERIFY(comparison.isEmpty());
        QVERIFY(comparison.renamed().isEmpty());
        QCOMPARE(comparison.baseTotals().used, comparison.currentTotals().used);
    }

    void everyKindOfChangeIsTold() {
        RunMaker base;
        int window = base.addWindow(QStringLiteral("W"));
        base.hit(base.addButton(window, QStringLiteral("lost")), "clicked");
        base.addButton(window, QStringLiteral("gained"));
        base.hit(base.addButton(window, QStringLiteral("same")), "clicked");
        base.add(window, "CheckBox", "QCheckBox", QStringLiteral("removed"), "clicked");
        RunMaker current(2);
        window = current.addWindow(QStringLiteral("W"));
        current.addButton(window, QStringLiteral("lost"));
        current.hit(current.addButton(window, QStringLiteral("gained")), "clicked");
        current.hit(current.addButton(window, QStringLiteral("same")), "clicked");
        current.addButton(window, QStringLiteral("unused"));
        current.hit(current.addButton(window, QStringLiteral("fresh")), "clicked");
        const Comparison comparison = compare(base.run, current.run);
        const auto key = [](const char* rest) {
            return QStringList{QStringLiteral("Window \"W\" > ") + QLatin1String(rest)};
        };
        QCOMPARE(keys(comparison.lost()), key("Button \"lost\""));
        QCOMPARE(keys(comparison.gained()), key("Button \"gained\""));
        QCOMPARE(keys(comparison.newMissed()), key("Button \"unused\""));
        QCOMPARE(keys(comparison.newUsed()), key("Button \"fresh\""));
        QCOMPARE(keys(comparison.removed()), key("CheckBox \"removed\""));
        QCOMPARE(comparison.lost().at(0).state, State::Shown);
        QCOMPARE(comparison.count(QStringLiteral("lost")), 1);
        QCOMPARE(comparison.count(QStringLiteral("new-missed")), 1);
        QCOMPARE(comparison.count(QStringLiteral("removed")), 1);
        QVERIFY(!comparison.isEmpty());
    }

    void whatWasUsedInAWindowThatIsNotOpenedNowIsLostWithIt() {
        RunMaker base;
        const int dialog = base.addWindow(QStringLiteral("Settings"), "QDialog", "Dialog");
        base.hit(base.addButton(dialog, QStringLiteral("Apply")), "clicked");
        base.add(dialog, "Button", "QPushButton", QStringLiteral("Reset"), "clicked");
        base.addWindow(QStringLiteral("W"));
        RunMaker current(2);
        current.addWindow(QStringLiteral("W"));
        const Comparison comparison = compare(base.run, current.run);
        const QString view = QStringLiteral("Dialog \"Settings\"");
        QCOMPARE(keys(comparison.lost()),
                 (QStringList{view, view + QStringLiteral(" > Button \"Apply\"")}));
        QCOMPARE(comparison.lost().at(1).with, view);
        QCOMPARE(comparison.unknown(), 1);
        QVERIFY(comparison.removed().isEmpty());
        QCOMPARE(comparison.count(QStringLiteral("lost")), 2);
    }

    void aControlIsLostWithThePageAndTheWindowThatWereSeen() {
        Run unseen = TestLib::controlsRun(2);
        for (auto& element : unseen.elements) {
            element.hits.clear();
        }
        const Comparison all = compare(TestLib::controlsRun(), unseen);
        QCOMPARE(all.lost().size(), 3);
        for (const auto& change : all.lost()) {
            QCOMPARE(change.with, QStringLiteral("Window \"Panel\""));
        }
        QCOMPARE(keys(all.lostViews()),
                 (QStringList{QStringLiteral("Window \"Panel\""),
                              QStringLiteral("Window \"Panel\" > Page \"General\"")}));
        QCOMPARE(all.count(QStringLiteral("lost")), 5);
        QVERIFY(all.removed().isEmpty());
        const Comparison back = compare(unseen, TestLib::controlsRun());
        QCOMPARE(back.gained().size(), 3);
        QCOMPARE(back.gainedViews().size(), 2);
        QVERIFY(back.isOfControls());
    }

    void whatIsKnownFromItsUseOnlyIsLostAndNotRemoved_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("ways");
        QTest::addColumn<bool>("isRemoved");
        QTest::newRow("area") << "Area"
                              << "" << false;
        QTest::newRow("shortcut") << "Command"
                                  << "shortcut" << false;
        QTest::newRow("in a menu, too") << "Command"
                                        << "menu shortcut" << true;
        QTest::newRow("button") << "Button"
                                << "" << true;
    }

    void whatIsKnownFromItsUseOnlyIsLostAndNotRemoved() {
        QFETCH(QString, type);
        QFETCH(QString, ways);
        QFETCH(bool, isRemoved);
        RunMaker base;
        base.run = TestLib::controlsRun();
        const int control = base.add(0, qPrintable(type), "Own", QStringLiteral("it"), "pressed");
        base.element(control).attributes.insert(QStringLiteral("ways"), ways);
        base.element(control).wasSeen = true;
        base.hit(control, "pressed");
        const Comparison comparison = compare(base.run, TestLib::controlsRun(2));
        QCOMPARE(comparison.removed().size(), isRemoved ? 1 : 0);
        QCOMPARE(comparison.lost().size(), isRemoved ? 0 : 1);
    }

    void whatIsMissingInAPageThatWasNotOpenedIsNotRemoved() {
        Run base = TestLib::controlsRun();
        Run current = TestLib::controlsRun(2);
        const auto heater =
            std::find_if(current.elements.begin(), current.elements.end(), [](const auto& element) {
                return element.text == QLatin1String("Heater");
            });
        heater->text = QStringLiteral("Oven");
        const Comparison comparison = compare(base, current);
        QVERIFY(comparison.removed().isEmpty());
        QCOMPARE(comparison.unknown(), 1);
        QCOMPARE(keys(comparison.newMissed()),
                 QStringList{QStringLiteral("Window \"Panel\" > Page \"Advanced\" > CheckBox "
                                            "\"Oven\"")});
    }

    void whatSomeOfTheLastRunsUsedIsFlappingAndNotLost_data() {
        // The newest first: u used, n not used, - not there.
        QTest::addColumn<QString>("history");
        QTest::addColumn<bool>("isFlapping");
        QTest::newRow("in all") << "uuu" << false;
        QTest::newRow("not in one") << "unu" << true;
        QTest::newRow("not there in one") << "u-u" << true;
        QTest::newRow("new in the base") << "u--" << false;
        QTest::newRow("there before, and used last") << "unn" << true;
        QTest::newRow("the base alone") << "u" << false;
    }

    void whatSomeOfTheLastRunsUsedIsFlappingAndNotLost() {
        QFETCH(QString, history);
        QFETCH(bool, isFlapping);
        const auto coverageOf = [this](QChar what, int number) {
            RunMaker maker(number);
            const int window = maker.addWindow(QStringLiteral("W"));
            if (what != QLatin1Char('-')) {
                const int button = maker.addButton(window, QStringLiteral("Go"));
                if (what == QLatin1Char('u')) {
                    maker.hit(button, "clicked");
                }
            }
            auto coverage = std::make_unique<CoverageResult>(m_configuration);
            coverage->add(maker.run);
            coverage->finish();
            return coverage;
        };
        std::vector<std::unique_ptr<CoverageResult>> earlier;
        Comparison::Earlier pointers;
        for (int i = 1; i < history.size(); ++i) {
            earlier.push_back(coverageOf(history.at(i), i));
            pointers.push_back(earlier.back().get());
        }
        const auto base = coverageOf(history.at(0), 8);
        const auto now = coverageOf(QLatin1Char('n'), 9);
        const Comparison comparison(*base, *now, pointers);
        QCOMPARE(comparison.flapping().size(), isFlapping ? 1 : 0);
        QCOMPARE(comparison.count(QStringLiteral("lost")), isFlapping ? 0 : 1);
    }

    void contextsThatDidNotRunAreNamed() {
        RunMaker other(2);
        other.addWindow(QStringLiteral("Panel"));
        const Comparison comparison = compare(TestLib::panelRun(), other.run);
        QVERIFY(!comparison.notRun().isEmpty());
        for (const QString& name : comparison.notRun()) {
            QVERIFY2(name.startsWith(QStringLiteral("context ")), qPrintable(name));
        }
    }

    void applicationsAreNeverMixed() {
        Run other = TestLib::panelRun();
        other.application = QStringLiteral("other");
        const Comparison comparison = compare(TestLib::panelRun(), other);
        QCOMPARE(comparison.lost().size(), 7);
        QCOMPARE(comparison.unknown(), 2);
        QVERIFY(comparison.removed().isEmpty());
        QCOMPARE(comparison.notRun(), QStringList{QStringLiteral("application panel")});
        QCOMPARE(comparison.newUsed().size() + comparison.newMissed().size(), 9);
        QVERIFY(comparison.renamed().isEmpty());
    }

    void aNewCaptionInTheSamePlaceIsGuessedAndCountsAllTheSame() {
        RunMaker base;
        base.addButton(base.addWindow(QStringLiteral("W")), QStringLiteral("Start"));
        RunMaker current(2);
        current.addButton(current.addWindow(QStringLiteral("W")), QStringLiteral("Begin"));
        const Comparison comparison = compare(base.run, current.run);
        QCOMPARE(guesses(comparison),
                 QStringList{QStringLiteral("Window \"W\" > Button \"Start\" -> Window \"W\" > "
                                            "Button \"Begin\"")});
        QCOMPARE(comparison.removed().size(), 1);
        QCOMPARE(comparison.newMissed().size(), 1);
    }

    void aCaptionThatIsNearlyTheSameIsGuessedWhereverItStands() {
        RunMaker base;
        int window = base.addWindow(QStringLiteral("W"));
        base.addButton(window, QStringLiteral("Colour of it"));
        RunMaker current(2);
        window = current.addWindow(QStringLiteral("W"));
        current.addButton(window, QStringLiteral("Something else"));
        current.addButton(window, QStringLiteral("Color of it"));
        base.addButton(window, QStringLiteral("Something else"));
        const Comparison comparison = compare(base.run, current.run);
        QCOMPARE(guesses(comparison).size(), 1);
        QVERIFY(guesses(comparison).at(0).endsWith(QStringLiteral("Button \"Color of it\"")));
    }

    void theNearestCaptionIsGuessedAndEachOnlyOnce() {
        const auto runs = withoutCommonPlaces(
            {QStringLiteral("Temperature 1"), QStringLiteral("Temperature 2")},
            {QStringLiteral("Temperatures 2"), QStringLiteral("Temperatures 11"),
             QStringLiteral("Temperatures 1")});
        const auto line = [](int number) {
            return QStringLiteral("Window \"W\" > Button \"Temperature %1\" -> Window \"W\" > "
                                  "Button \"Temperatures %1\"")
                .arg(number);
        };
        QCOMPARE(guesses(compare(runs.first, runs.second)), QStringList({line(1), line(2)}));
    }

    void amongVeryManyThatAreAlikeNothingIsGuessedByCaption_data() {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("guesses");
        QTest::newRow("most") << 200 << 200;
        QTest::newRow("too many") << 201 << 0;
    }

    void amongVeryManyThatAreAlikeNothingIsGuessedByCaption() {
        QFETCH(int, rows);
        QFETCH(int, guesses);
        QStringList old;
        QStringList fresh;
        for (int i = 0; i < rows; ++i) {
            old.append(QStringLiteral("Row %1").arg(i, 3, 10, QLatin1Char('0')));
            fresh.append(QStringLiteral("Row_%1").arg(i, 3, 10, QLatin1Char('0')));
        }
        const auto runs = withoutCommonPlaces(old, fresh);
        const Comparison comparison = compare(runs.first, runs.second);
        QCOMPARE(comparison.removed().size(), rows);
        QCOMPARE(comparison.renamed().size(), guesses);
    }

    void whatHasNothingInCommonIsNotGuessed() {
        RunMaker base;
        base.addButton(base.addWindow(QStringLiteral("One"), "OneWindow"), QStringLiteral("x"));
        RunMaker current(2);
        current.add(current.addWindow(QStringLiteral("Two"), "TwoWindow"), "CheckBox", "QCheckBox",
                    QStringLiteral("y"), "clicked");
        QVERIFY(compare(base.run, current.run).renamed().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestComparison)
#include "tst_comparison.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "check/comparison.h"
#include "check/exceptions.h"
#include "run/programlist.h"
#include "run/programrun.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

constexpr double leastUniverse = 99;
constexpr double leastRecall = 98;
constexpr double leastPrecision = 99;
/** Recordings of a program that does not end in order. */
constexpr int mostTries = 3;

int number(const char* variable, int otherwise) {
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? value : otherwise;
}

QString printed(const Comparison::Figure& figure) {
    QString text = QStringLiteral("%1 %2 % (%3 of %4)")
                       .arg(figure.name)
                       .arg(figure.share(), 0, 'f', 2)
                       .arg(figure.good())
                       .arg(figure.total);
    for (const Comparison::Miss& miss : figure.misses) {
        text += QStringLiteral("\n    ") + miss.text;
    }
    return text;
}

} // namespace

/**
 * Programs of Debian, which nobody here wrote and nothing was changed in, operated without sense:
 * is what a person can operate there in the recording, is what was used counted, and nothing else?
 * UICOV_UNIVERSE_SET names the programs, UICOV_UNIVERSE_SEED and UICOV_UNIVERSE_STEPS say how they
 * are used.
 */
class TestUniverse : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void controlsAreKnownAndCountedTruly_data();
    void controlsAreKnownAndCountedTruly();

private:
    Exceptions m_exceptions;
};

void TestUniverse::initTestCase() {
    QString problem;
    QVERIFY2(m_exceptions.read(QStringLiteral(EXCEPTION_LIST), problem), qPrintable(problem));
}

void TestUniverse::controlsAreKnownAndCountedTruly_data() {
    QVERIFY2(ProgramList::addRows(qgetenv("UICOV_UNIVERSE_SET")) > 0,
             "there is no such set of programs");
}

void TestUniverse::controlsAreKnownAndCountedTruly() {
    QFETCH(QStringList, command);
    QVERIFY2(QFile::exists(command.first()), "is not installed: scripts/bootstrap");
    ProgramRun run(command, static_cast<quint32>(number("UICOV_UNIVERSE_SEED", 1)),
                   number("UICOV_UNIVERSE_STEPS", 300));
    // Pressed without sense, some programs compute without end or use what they have deleted, now
    // and then: no two runs take the same time. What a recorder does wrong is there each time, or
    // in more than one of these programs.
    bool isInOrder = false;
    for (int i = 0; i < mostTries && !isInOrder; ++i) {
        isInOrder = run.record(QStringLiteral(EXTENSION));
        if (!isInOrder) {
            qInfo("%s\n%s", qPrintable(run.end()), qPrintable(run.lines().join(QLatin1Char('\n'))));
        }
    }
    if (!isInOrder) {
        const QString end = run.end();
        QVERIFY2(!run.play(), qPrintable(end));
        QCOMPARE(end, run.end());
    }
    JournalFile journal;
    ControlsRecording recording;
    QString problem;
    QVERIFY2(journal.read(run.journal(), problem), qPrintable(problem));
    QVERIFY2(recording.read(run.recording(), problem), qPrintable(problem));
    const Comparison comparison(journal, recording);
    const QString program = QFileInfo(command.first()).fileName();
    const auto universe = m_exceptions.without(comparison.universe(), program);
    const auto recall = m_exceptions.without(comparison.recall(), program);
    const auto precision = m_exceptions.without(comparison.precision(), program);
    qInfo("%d controls, %d nodes not counted, %d steps%s\n%s\n%s\n%s", comparison.controls(),
          comparison.leftOut(), journal.steps.size(), journal.isDone ? "" : ", ended by itself",
          qPrintable(printed(universe)), qPrintable(printed(recall)),
          qPrintable(printed(precision)));
    QVERIFY(universe.total > 0);
    QVERIFY(universe.share() >= leastUniverse);
    // Of fewer than fifty presses a single miss is more than that share.
    QVERIFY(recall.share() >= leastRecall || recall.misses.size() <= 1);
    QVERIFY(precision.share() >= leastPrecision);
}

QTEST_GUILESS_MAIN(TestUniverse)
#include "tst_universe.moc"

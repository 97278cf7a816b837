// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "check/controlsrecording.h"
#include "run/programlist.h"
#include "run/programrun.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTest>

/** Programs that are only started and closed have windows and controls, and none of these is used.
 */
class TestIdle : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingDoneIsNothingUsed_data() { QVERIFY(ProgramList::addRows(QByteArray()) >= 20); }
    void nothingDoneIsNothingUsed();
};

void TestIdle::nothingDoneIsNothingUsed() {
    QFETCH(QStringList, command);
    QVERIFY2(QFile::exists(command.first()), "is not installed: scripts/bootstrap");
    ProgramRun run(command, 1, 0);
    QVERIFY2(run.record(QStringLiteral(EXTENSION)), qPrintable(run.end()));
    ControlsRecording recording;
    QString problem;
    QVERIFY2(recording.read(run.recording(), problem), qPrintable(problem));
    int controls = 0;
    QStringList used;
    for (const auto& element : qAsConst(recording.elements)) {
        controls += element.isControl() ? 1 : 0;
        if (element.isControl() && !element.uses.isEmpty()) {
            used.append(element.type + QLatin1Char(' ') + element.className + QLatin1Char(' ') +
                        element.uses.first().event);
        }
    }
    QVERIFY(controls > 0);
    QVERIFY2(used.isEmpty(), qPrintable(used.join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(TestIdle)
#include "tst_idle.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/machinechecks.h"
#include "testlib/childprocess.h"
#include "testlib/killingfilter.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>

using TestLib::holdsInChildProcess;
using Uicov::Doctor::Finding;
using Result = Uicov::Doctor::Finding::Result;

namespace {

/** Limits cannot be raised again, so they are set in a process that ends. */
bool limitGives(rlim_t bytes, Result expected) {
    return holdsInChildProcess([=]() {
        const rlimit limit{bytes, RLIM_INFINITY};
        return setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
               Uicov::Doctor::checkFileSizeLimit().result == expected;
    });
}

} // namespace

class TestMachineChecks : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;

private Q_SLOTS:
    void aFolderThatCanBeWrittenTo() {
        const Finding finding =
            Uicov::Doctor::checkOutputFolder(m_folder.filePath(QStringLiteral("x.uicov")));
        QVERIFY(finding.result == Result::Ok);
        QVERIFY(finding.seen.contains(m_folder.path()));
        QVERIFY(QDir(m_folder.path()).isEmpty()); // the trial leaves nothing behind
    }

    void aFolderThatIsNotThere() {
        const Finding finding =
            Uicov::Doctor::checkOutputFolder(m_folder.filePath(QStringLiteral("none/x.uicov")));
        QVERIFY(finding.result == Result::Problem);
        QVERIFY(finding.seen.contains(QStringLiteral("there is no folder")));
        QVERIFY(finding.advice.contains(QStringLiteral("UICOV_FILE")));
    }

    void aFolderInWhichNoFileCanBeMade() {
        // Not even the user who may do everything can make a file there.
        const Finding finding = Uicov::Doctor::checkOutputFolder(QStringLiteral("/proc/x.uicov"));
        QVERIFY(finding.result == Result::Problem);
        QVERIFY2(finding.seen.contains(QStringLiteral("no file can be made in /proc")),
                 qPrintable(finding.seen));
    }

    void theTemporaryFolder() {
        const QByteArray before = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(m_folder.path()));
        const Finding sound = Uicov::Doctor::checkTemporaryFolder();
        qputenv("TMPDIR", "/proc");
        const Finding unusable = Uicov::Doctor::checkTemporaryFolder();
        before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
        QVERIFY(sound.result == Result::Ok);
        QVERIFY(sound.seen.contains(m_folder.path()));
        QVERIFY(unusable.result == Result::Problem);
        QVERIFY(unusable.advice.contains(QStringLiteral("TMPDIR")));
    }

    void aFileSystemWithoutRoom() {
        const Finding finding = Uicov::Doctor::checkFreeSpace(QStringLiteral("/proc/x.uicov"));
        QVERIFY(finding.result == Result::Problem);
        QVERIFY(finding.seen.startsWith(QStringLiteral("0 MiB are free for /proc")));
    }

    void aLimitOfTheSizeOfFiles() {
        constexpr rlim_t mebibyte = rlim_t{1024} * 1024;
        QVERIFY(limitGives(RLIM_INFINITY, Result::Ok));
        QVERIFY(limitGives(1000 * mebibyte, Result::Ok));
        QVERIFY(limitGives(100 * mebibyte, Result::Warning));
        QVERIFY(limitGives(mebibyte, Result::Problem));
        QVERIFY(limitGives(0, Result::Problem));
    }

    void aFolderWhoseFilesMayNotGrow() {
        QVERIFY(holdsInChildProcess([this]() {
            const rlimit limit{0, RLIM_INFINITY};
            return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR &&
                   setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
                   Uicov::Doctor::checkOutputFolder(m_folder.filePath(QStringLiteral("x.uicov")))
                           .result == Result::Problem;
        }));
    }

    void aRunThatCouldNotBeFinished() {
        const QString dataFile = m_folder.filePath(QStringLiteral("left.uicov"));
        QVERIFY(Uicov::Doctor::checkEarlierRuns(dataFile).result == Result::Ok);
        const QString left = dataFile + QStringLiteral(".run-1");
        QVERIFY(QDir().mkdir(left));
        QFile recording(left + QStringLiteral("/a.uirec"));
        QVERIFY(recording.open(QIODevice::WriteOnly));
        const Finding finding = Uicov::Doctor::checkEarlierRuns(dataFile);
        QVERIFY(finding.result == Result::Warning);
        QVERIFY(finding.seen.startsWith(left));
        QVERIFY(finding.advice.contains(QStringLiteral("uicov combine -a -o ")));
        QVERIFY(QDir(left).removeRecursively());
    }

    void sandboxes_data() {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QString>("name");
        QTest::newRow("Flatpak") << QByteArray("FLATPAK_ID") << "a Flatpak";
        QTest::newRow("Snap") << QByteArray("SNAP") << "a Snap";
        QTest::newRow("AppImage") << QByteArray("APPIMAGE") << "an AppImage";
    }

    void sandboxes() {
        QFETCH(QByteArray, variable);
        QFETCH(QString, name);
        QVERIFY(Uicov::Doctor::checkSandbox().result == Result::Ok);
        qputenv(variable.constData(), "x");
        const Finding finding = Uicov::Doctor::checkSandbox();
        qunsetenv(variable.constData());
        QVERIFY(finding.result == Result::Warning);
        QVERIFY(finding.seen.contains(name));
    }

    void everyCheckHasANameOfItsOwn() {
        QStringList names;
        const auto findings =
            Uicov::Doctor::checkMachine(m_folder.filePath(QStringLiteral("x.uicov")));
        for (const Finding& finding : findings) {
            QVERIFY(!names.contains(finding.check));
            names.append(finding.check);
        }
        QCOMPARE(names.size(), 7);
    }

    void aFilterOfSystemCallsIsSeen() {
        if (Uicov::Doctor::checkSystemCallFilter().result != Result::Ok) {
            QSKIP("one is on already");
        }
        QVERIFY(holdsInChildProcess([] {
            return TestLib::killOn({}) &&
                   Uicov::Doctor::checkSystemCallFilter().result == Result::Warning;
        }));
    }
};

QTEST_GUILESS_MAIN(TestMachineChecks)
#include "tst_machinechecks.moc"

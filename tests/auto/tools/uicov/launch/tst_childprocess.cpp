// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/filesizelimit.h"
#include "launch/childprocess.h"
#include "testlib/testcase.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>

using Uicov::Launch::ChildProcess;

namespace {

constexpr int handedOn[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGUSR1, SIGUSR2};

sigset_t handedOnSet() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : handedOn) {
        sigaddset(&set, number);
    }
    return set;
}

/** Waits for a signal, but not for ever: nothing stays behind when a test fails. */
const std::string waitForSignal = "; i=0; while [ $i -lt 600 ]; do sleep 0.05; i=$((i+1)); done";

} // namespace

class TestChildProcess : public TestLib::TestCase {
    Q_OBJECT

    static bool runShell(ChildProcess& process, const std::string& script) {
        return process.run("/bin/sh", {"sh", "-c", script},
                           {"PATH=/usr/bin:/bin", "MARK=set here"});
    }

private Q_SLOTS:
    void initTestCase() {
        // Whoever runs the tests in the background may have them ignored, and a shell cannot trap
        // what it was started with ignored.
        for (const int number : handedOn) {
            static_cast<void>(std::signal(number, SIG_DFL));
        }
        const sigset_t signals = handedOnSet();
        QCOMPARE(pthread_sigmask(SIG_UNBLOCK, &signals, nullptr), 0);
    }

    void theExitCodeIsTheChilds() {
        for (const int code : {0, 1, 7, 255}) {
            ChildProcess process;
            QVERIFY(runShell(process, "exit " + std::to_string(code)));
            QCOMPARE(process.exitCode(), code);
            QCOMPARE(process.signal(), 0);
            QVERIFY(process.pid() > 0);
        }
    }

    void aSignalCountsOnTopOf128() {
        ChildProcess process;
        QVERIFY(runShell(process, "kill -KILL $$"));
        QCOMPARE(process.signal(), SIGKILL);
        QCOMPARE(process.exitCode(), 128 + SIGKILL);
    }

    /** timeout(1) signals the command and then its whole group, itself included. */
    void whatAsksToEndAfterwardsDoesNot() {
        ChildProcess process;
        QVERIFY(runShell(process, "exit 3"));
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            QCOMPARE(kill(getpid(), number), 0);
        }
        sigset_t pending;
        QCOMPARE(sigpending(&pending), 0);
        QCOMPARE(sigismember(&pending, SIGTERM), 1);
        // They wait; the next test function begins without them.
        const timespec noTime{};
        const sigset_t signals = handedOnSet();
        while (sigtimedwait(&signals, nullptr, &noTime) > 0) {
        }
    }

    void argumentsAndEnvironmentArriveAsTheyAre() {
        ChildProcess process;
        QVERIFY(
            process.run("/bin/sh",
                        {"called so", "-c",
                         "[ \"$0\" = zero ] && [ \"$1\" = 'a b' ] && [ -z \"$2\" ] && "
                         "[ \"$3\" = '--' ] && [ \"$MARK\" = 'set here' ] && [ -z \"$HOME\" ] && "
                         "[ $# = 4 ] && [ \"$4\" = \"$(printf '\\377')\" ]",
                         "zero", "a b", "", "--", "\xff"},
                        {"PATH=/usr/bin:/bin", "MARK=set here"}));
        QCOMPARE(process.exitCode(), 0);
    }

    void whatCannotBeStartedSaysWhy() {
        ChildProcess process;
        QVERIFY(!process.run("/no/such/program", {"x"}, {}));
        QCOMPARE(process.error(), ENOENT);
        QVERIFY(!process.run("/", {"x"}, {}));
        QCOMPARE(process.error(), EACCES);
    }

    void aFileWithoutAHeaderGoesToTheShell() {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("script")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("exit 9\n") > 0);
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        file.close();
        ChildProcess process;
        QVERIFY(process.run(QFile::encodeName(file.fileName()).toStdString(), {"script"}, {}));
        QCOMPARE(process.exitCode(), 9);
    }

    void aSignalToThisProcessReachesTheChild_data() {
        QTest::addColumn<QByteArray>("name");
        for (const char* name : {"INT", "TERM", "HUP", "QUIT", "USR1", "USR2"}) {
            QTest::newRow(name) << QByteArray(name);
        }
    }

    /** Sent by a third process; the test ends only if it was handed on. */
    void aSignalToThisProcessReachesTheChild() {
        QFETCH(QByteArray, name);
        const std::string signal = name.toStdString();
        ChildProcess process;
        QVERIFY(runShell(process, "trap 'exit 42' " + signal + "; sh -c 'kill -" + signal +
                                      " $0' $PPID" + waitForSignal));
        QCOMPARE(process.exitCode(), 42);
    }

    /** As with kill 0: the application has had it already. */
    void aSignalFromTheChildIsNotHandedBack() {
        ChildProcess process;
        // The second comes from a third process; both sides take the lower number first, so that at
        // its arrival the first has been dealt with.
        QVERIFY(runShell(process, "n=0; trap 'n=$((n+1))' HUP; trap 'exit $((40+n))' TERM; "
                                  "kill -HUP $PPID; sh -c 'kill -TERM $0' $PPID" +
                                      waitForSignal));
        QCOMPARE(process.exitCode(), 40);
    }

    /** As when Ctrl-C comes while the application is ending: there is a recording to conclude. */
    void aSignalThatComesTooLateEndsNobody() {
        ChildProcess process;
        QVERIFY(runShell(process,
                         "sh -c 'kill -STOP $0; kill -INT $0; kill -TERM $0; kill -KILL $1; "
                         "until grep -q State:.Z /proc/$1/status; do :; done; kill -CONT $0' $PPID "
                         "$$ & while :; do wait; done"));
        QCOMPARE(process.signal(), SIGKILL);
    }

    /** Which this process outlives, and the program may not know of. */
    void aFileSizeLimitEndsTheChildAsEver() {
        Uicov::Base::outliveFileSizeLimit();
        ChildProcess process;
        const bool hasRun = runShell(process, "kill -XFSZ $$; exit 5");
        Uicov::Base::restoreFileSizeLimit();
        QVERIFY(hasRun);
        QCOMPARE(process.signal(), SIGXFSZ);
    }

    void theMaskThatIsSetIsTheChilds() {
        sigset_t mask;
        sigemptyset(&mask);
        sigaddset(&mask, SIGUSR2);
        ChildProcess process;
        process.setSignalMask(mask);
        // Not through the shell, which unblocks all when it starts.
        QVERIFY(process.run("/bin/grep", {"grep", "-q", "^SigBlk:.*0000800$", "/proc/self/status"},
                            {}));
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.run("/bin/grep", {"grep", "-q", "^SigBlk:.*0000900$", "/proc/self/status"},
                            {}));
        QCOMPARE(process.exitCode(), 1);
    }

    void dispositionsAndMaskAreTheCallersForTheChild() {
        // SIGCHLD ignored would take the status away; SIGUSR1 ignored has to stay so for the child.
        std::signal(SIGCHLD, SIG_IGN);
        std::signal(SIGUSR1, SIG_IGN);
        ChildProcess process;
        const bool hasRun = runShell(
            process, "grep -q '^SigBlk:[[:space:]]*0*$' /proc/self/status && kill -USR1 $$ && "
                     "exit 5");
        const auto child = std::signal(SIGCHLD, SIG_DFL);
        std::signal(SIGUSR1, SIG_DFL);
        QVERIFY(hasRun);
        QCOMPARE(process.exitCode(), 5);
        QVERIFY(child == SIG_IGN);
    }
};

int main(int argc, char** argv) {
    // Qt Test's watchdog thread inherits this mask, so that no signal to the process ends it there.
    const sigset_t signals = handedOnSet();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    const QCoreApplication application(argc, argv);
    TestChildProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_childprocess.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "console/terminal.h"
#include "store/filelock.h"
#include "testlib/stderrcapture.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <functional>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using TestLib::StderrCapture;
using Uicov::Base::Message;
using Uicov::Store::FileLock;

/** What happens right before the next file is locked; nothing when it is empty. */
static std::function<void()> beforeLocking;

/** Stands before the C library's. */
extern "C" int flock(int descriptor, int operation) {
    if (beforeLocking) {
        const auto action = std::move(beforeLocking);
        beforeLocking = nullptr;
        action();
    }
    return static_cast<int>(::syscall(SYS_flock, descriptor, operation));
}

class TestFileLock : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("x.uicov"));
    Uicov::Console::Terminal m_terminal;
    FileLock::Teller m_tell = [this](const QString& text) { m_terminal.note(text); };

    /** A process that holds the lock from now on until a byte comes, or it is killed. */
    pid_t holdElsewhere(int& release) {
        int ready[2] = {};
        int go[2] = {};
        if (::pipe(ready) != 0 || ::pipe(go) != 0) {
            return -1;
        }
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(go[1]); // so that the parent's end is seen, too
            FileLock lock;
            char byte = lock.acquire(m_path, m_tell) ? 'n' : 'y';
            if (::write(ready[1], &byte, 1) == 1 && ::read(go[0], &byte, 1) >= 0) {
                lock.release();
            }
            ::_exit(0);
        }
        ::close(go[0]);
        char byte = 'n';
        const bool isHeld = ::read(ready[0], &byte, 1) == 1 && byte == 'y';
        ::close(ready[0]);
        ::close(ready[1]);
        release = go[1];
        return isHeld ? child : -1;
    }

private Q_SLOTS:
    void theLockFileIsThereWhileItIsHeld() {
        FileLock lock;
        QVERIFY(!lock.acquire(m_path, m_tell));
        QVERIFY(QFile::exists(FileLock::lockFileOf(m_path)));
        lock.release();
        QVERIFY(QDir(m_folder.path()).isEmpty());
        lock.release(); // nothing is held
        QVERIFY(!lock.acquire(m_path, m_tell));
    }

    void theSecondIsRefusedAndSaysForWhomItWaited() {
        int release = -1;
        const pid_t holder = holdElsewhere(release);
        QVERIFY(holder > 0);
        FileLock lock;
        StderrCapture capture;
        const auto problem = lock.acquire(m_path, m_tell, 0);
        QCOMPARE(capture.take(), QByteArray());
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::DataFileBusy);
        QVERIFY2(problem->text.contains(QStringLiteral("process %1 is writing").arg(holder)),
                 qPrintable(problem->text));
        ::close(release);
        ::waitpid(holder, nullptr, 0);
    }

    void theSecondWaitsForTheFirst() {
        int release = -1;
        const pid_t holder = holdElsewhere(release);
        QVERIFY(holder > 0);
        const pid_t waiter = ::fork();
        if (waiter == 0) {
            ::close(release); // whose other end waits for all to close it
            StderrCapture quiet;
            FileLock lock;
            ::_exit(lock.acquire(m_path, m_tell) ? 1 : 0);
        }
        // It cannot have ended: the lock is held.
        int status = -1;
        QCOMPARE(::waitpid(waiter, &status, WNOHANG), 0);
        ::close(release);
        QCOMPARE(::waitpid(waiter, &status, 0), waiter);
        QCOMPARE(status, 0);
        ::waitpid(holder, nullptr, 0);
    }

    void aLockOfADeadProcessIsNoObstacle() {
        int release = -1;
        const pid_t holder = holdElsewhere(release);
        QVERIFY(holder > 0);
        ::kill(holder, SIGKILL);
        ::waitpid(holder, nullptr, 0);
        ::close(release);
        QVERIFY(QFile::exists(FileLock::lockFileOf(m_path)));
        FileLock lock;
        QVERIFY(!lock.acquire(m_path, m_tell, 0));
    }

    /** Else two would hold a lock each: the one of a file without a name, the next a new one. */
    void aLockFileThatItsHolderTakesAwayMeanwhileIsNotHeld() {
        const QString lockFile = FileLock::lockFileOf(m_path);
        bool wasThere = false;
        beforeLocking = [&] { wasThere = QFile::remove(lockFile); };
        FileLock lock;
        QVERIFY(!lock.acquire(
            m_path, [](const QString&) {}, 1));
        QVERIFY(wasThere);
        QVERIFY(QFile::exists(lockFile));
    }

    void aFolderThatCannotBeWrittenIsAProblem() {
        FileLock lock;
        const auto problem =
            lock.acquire(m_folder.filePath(QStringLiteral("none/x.uicov")), m_tell, 0);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
    }

    void aLinkIsNotFollowed() {
        QVERIFY(QFile::link(m_folder.filePath(QStringLiteral("elsewhere")),
                            FileLock::lockFileOf(m_path)));
        FileLock lock;
        QVERIFY(lock.acquire(m_path, m_tell, 0));
        QVERIFY(!QFile::exists(m_folder.filePath(QStringLiteral("elsewhere"))));
        QVERIFY(QFile::remove(FileLock::lockFileOf(m_path)));
    }

    void aLinkToADataFileHasTheLockOfTheFile() {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString link = m_folder.filePath(QStringLiteral("link.uicov"));
        QVERIFY(QFile::link(m_path, link));
        int release = -1;
        const pid_t holder = holdElsewhere(release);
        QVERIFY(holder > 0);
        FileLock lock;
        const auto problem = lock.acquire(link, m_tell, 0);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::DataFileBusy);
        ::close(release);
        ::waitpid(holder, nullptr, 0);
        QVERIFY(QFile::remove(link) && QFile::remove(m_path));
    }

    void manyWritersNeverMeet() {
        constexpr int writers = 6;
        const QString busy = m_folder.filePath(QStringLiteral("busy"));
        QVector<pid_t> children;
        for (int i = 0; i < writers; ++i) {
            const pid_t child = ::fork();
            if (child == 0) {
                int failures = 0;
                for (int round = 0; round < 20; ++round) {
                    FileLock lock;
                    StderrCapture quiet;
                    failures += lock.acquire(m_path, m_tell) ? 1 : 0;
                    // Fails when another is inside.
                    failures += ::mkdir(QFile::encodeName(busy).constData(), 0700) != 0 ? 1 : 0;
                    failures += ::rmdir(QFile::encodeName(busy).constData()) != 0 ? 1 : 0;
                }
                ::_exit(failures == 0 ? 0 : 1);
            }
            children.append(child);
        }
        for (const pid_t child : qAsConst(children)) {
            int status = -1;
            QCOMPARE(::waitpid(child, &status, 0), child);
            QCOMPARE(status, 0);
        }
    }
};

QTEST_GUILESS_MAIN(TestFileLock)
#include "tst_filelock.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/filecontents.h"
#include "host/support/openfiles.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using OpenFiles::descriptorOf;
using VorskHost::RecordingFile;

namespace {

bool writeAFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("theirs") == 6;
}

/** Takes the first half, then has no room. */
ssize_t halfWrite(int descriptor, const void* data, size_t length) {
    static bool isFull = false;
    isFull = !isFull;
    if (!isFull) {
        errno = ENOSPC;
        return -1;
    }
    return ::write(descriptor, data, length / 2);
}

ssize_t zeroWrite(int, const void*, size_t) {
    return 0;
}

} // namespace

class tst_RecordingFile : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void appends();
    void isPrivateAndClosedOnExec();
    void existingFileIsLeftAlone();
    void manyExistingFiles();
    void symbolicLinkIsNotFollowed();
    void pathWithoutSuffix();
    void folderThatIsNotThere();
    void failedWriteIsCutOff();
    void writeThatTakesNothing();
    void fileSizeLimit();
    void fileSizeLimitWithTheSignalPending();
    void descriptorThatTheApplicationReused();
    void whatTheApplicationReusedIsNotCut();
    void forkedChild();
    void createdAgain();

private:
    QScopedPointer<QTemporaryDir> m_dir;
    QString m_path;
};

void tst_RecordingFile::init() {
    TestCase::init();
    m_dir.reset(new QTemporaryDir);
    m_path = QDir(QFileInfo(m_dir->path()).canonicalFilePath())
                 .absoluteFilePath(QStringLiteral("r\u00e9 1.uirec"));
}

void tst_RecordingFile::cleanup() {
    m_dir.reset();
    TestCase::cleanup();
}

void tst_RecordingFile::appends() {
    RecordingFile file;
    QVERIFY(!file.isOpen());
    QVERIFY(!file.append("nothing to append to"));
    QVERIFY(file.create(m_path));
    QVERIFY(file.append("one"));
    QVERIFY(file.append(QByteArray()));
    QVERIFY(file.append("two"));
    QCOMPARE(contents(m_path), QByteArray("onetwo"));
    QCOMPARE(file.size(), qint64(6));
    file.close();
    QVERIFY(!file.isOpen());
    QVERIFY(!file.append("three"));
    QCOMPARE(file.path(), m_path);
    QCOMPARE(file.errorString(), QString());
    QCOMPARE(contents(m_path), QByteArray("onetwo"));
}

void tst_RecordingFile::isPrivateAndClosedOnExec() {
    const mode_t mask = umask(0);
    RecordingFile file;
    const bool created = file.create(m_path);
    umask(mask);
    QVERIFY(created);
    struct stat status {};
    QCOMPARE(::stat(QFile::encodeName(m_path).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, mode_t(0600));
    const int descriptor = descriptorOf(m_path);
    QVERIFY(descriptor >= 0);
    QVERIFY((fcntl(descriptor, F_GETFD) & FD_CLOEXEC) != 0);
}

void tst_RecordingFile::existingFileIsLeftAlone() {
    QVERIFY(writeAFile(m_path));
    RecordingFile second;
    RecordingFile third;
    QVERIFY(second.create(m_path));
    QVERIFY(third.create(m_path));
    const QString stem = m_path.chopped(6) + QLatin1Char('-') + QString::number(getpid());
    QCOMPARE(second.path(), stem + QStringLiteral(".uirec"));
    QCOMPARE(third.path(), stem + QStringLiteral("-2.uirec"));
    QVERIFY(second.append("second"));
    QCOMPARE(contents(m_path), QByteArray("theirs"));
    QCOMPARE(contents(second.path()), QByteArray("second"));
    QCOMPARE(contents(third.path()), QByteArray());
}

void tst_RecordingFile::manyExistingFiles() {
    // There is an end to trying.
    const QString stem = m_path.chopped(6) + QLatin1Char('-') + QString::number(getpid());
    QVERIFY(writeAFile(m_path));
    QVERIFY(writeAFile(stem + QStringLiteral(".uirec")));
    for (int ordinal = 2; ordinal <= 1000; ++ordinal) {
        QVERIFY(writeAFile(QStringLiteral("%1-%2.uirec").arg(stem).arg(ordinal)));
    }
    RecordingFile file;
    QVERIFY(!file.create(m_path));
    QCOMPARE(file.errorString(), QStringLiteral("File exists"));
    QVERIFY(QFile::remove(stem + QStringLiteral("-1000.uirec")));
    QVERIFY(file.create(m_path));
}

void tst_RecordingFile::symbolicLinkIsNotFollowed() {
    const QString target = m_dir->filePath(QStringLiteral("target"));
    QVERIFY(QFile::link(target, m_path));
    RecordingFile file;
    QVERIFY(file.create(m_path));
    QVERIFY(file.path() != m_path);
    QVERIFY(!QFile::exists(target));
}

void tst_RecordingFile::pathWithoutSuffix() {
    RecordingFile first;
    RecordingFile second;
    const QString path = m_dir->filePath(QStringLiteral("plain.data"));
    QVERIFY(first.create(path));
    QVERIFY(second.create(path));
    QCOMPARE(first.path(), path);
    QCOMPARE(second.path(), QStringLiteral("%1-%2.uirec").arg(path).arg(getpid()));
}

void tst_RecordingFile::folderThatIsNotThere() {
    RecordingFile file;
    QVERIFY(!file.create(m_dir->filePath(QStringLiteral("none/file.uirec"))));
    QCOMPARE(file.errorString(), QStringLiteral("No such file or directory"));
    QVERIFY(!file.isOpen());
}

void tst_RecordingFile::failedWriteIsCutOff() {
    RecordingFile file;
    QVERIFY(file.create(m_path));
    QVERIFY(file.append("whole"));
    file.setWriteFunction(halfWrite);
    QVERIFY(!file.append("not whole"));
    QCOMPARE(file.errorString(), QStringLiteral("No space left on device"));
    QCOMPARE(contents(m_path), QByteArray("whole"));
    QVERIFY(!file.isOpen());
    QCOMPARE(descriptorOf(m_path), -1);
}

void tst_RecordingFile::writeThatTakesNothing() {
    // Must not be tried for ever.
    RecordingFile file;
    QVERIFY(file.create(m_path));
    file.setWriteFunction(zeroWrite);
    QVERIFY(!file.append("bytes"));
    QVERIFY(!file.isOpen());
}

void tst_RecordingFile::fileSizeLimit() {
    RecordingFile file;
    QVERIFY(file.create(m_path));
    QVERIFY(file.append("kept"));
    rlimit original{};
    getrlimit(RLIMIT_FSIZE, &original);
    rlimit limit = original;
    limit.rlim_cur = 20;
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const bool appended = file.append(QByteArray(100, 'x'));
    sigset_t pending;
    sigset_t blocked;
    sigpending(&pending);
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    setrlimit(RLIMIT_FSIZE, &original);
    // Reached at all: the signal would have ended this program.
    QVERIFY(!appended);
    QCOMPARE(sigismember(&pending, SIGXFSZ), 0);
    QCOMPARE(sigismember(&blocked, SIGXFSZ), 0);
    QCOMPARE(file.errorString(), QStringLiteral("File too large"));
    QCOMPARE(contents(m_path), QByteArray("kept"));
}

void tst_RecordingFile::fileSizeLimitWithTheSignalPending() {
    // One that the application blocked and has still to get is not ours to take away.
    sigset_t signal;
    sigset_t previous;
    sigemptyset(&signal);
    sigaddset(&signal, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &signal, &previous);
    QCOMPARE(pthread_kill(pthread_self(), SIGXFSZ), 0);
    RecordingFile file;
    QVERIFY(file.create(m_path));
    rlimit original{};
    getrlimit(RLIMIT_FSIZE, &original);
    rlimit limit = original;
    limit.rlim_cur = 20;
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const bool appended = file.append(QByteArray(100, 'x'));
    setrlimit(RLIMIT_FSIZE, &original);
    const timespec noWait{};
    const int taken = sigtimedwait(&signal, nullptr, &noWait);
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    QVERIFY(!appended);
    QCOMPARE(taken, SIGXFSZ);
}

void tst_RecordingFile::descriptorThatTheApplicationReused() {
    RecordingFile file;
    QVERIFY(file.create(m_path));
    const int descriptor = descriptorOf(m_path);
    QFile other(m_dir->filePath(QStringLiteral("other")));
    QVERIFY(other.open(QIODevice::WriteOnly));
    QCOMPARE(::dup2(other.handle(), descriptor), descriptor);
    QVERIFY(!file.append("lost"));
    QCOMPARE(file.errorString(), QStringLiteral("its file was closed by the application"));
    file.close();
    QCOMPARE(contents(other.fileName()), QByteArray());
    // Nor is it closed: it is the application's.
    QVERIFY(fcntl(descriptor, F_GETFD) >= 0);
    ::close(descriptor);
}

void tst_RecordingFile::whatTheApplicationReusedIsNotCut() {
    RecordingFile file;
    QVERIFY(file.create(m_path));
    const int descriptor = descriptorOf(m_path);
    QFile other(m_dir->filePath(QStringLiteral("other")));
    QVERIFY(other.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(other.write("years of work"), 13LL);
    QCOMPARE(::dup2(other.handle(), descriptor), descriptor);
    file.truncate(0);
    QCOMPARE(contents(other.fileName()), QByteArray("years of work"));
    ::close(descriptor);
}

void tst_RecordingFile::forkedChild() {
    RecordingFile file;
    QVERIFY(file.create(m_path));
    const pid_t child = fork();
    if (child == 0) {
        const bool appended = file.isOpen() || file.append("from the child");
        file.close();
        _exit(appended ? 1 : 0);
    }
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QVERIFY(file.append("from the parent"));
    QCOMPARE(contents(m_path), QByteArray("from the parent"));
}

void tst_RecordingFile::createdAgain() {
    RecordingFile file;
    QVERIFY(file.create(m_path));
    QVERIFY(file.append("first"));
    QVERIFY(file.create(m_path));
    QVERIFY(file.path() != m_path);
    QCOMPARE(file.size(), qint64(0));
    QCOMPARE(contents(m_path), QByteArray("first"));
    QCOMPARE(descriptorOf(m_path), -1);
}

QTEST_GUILESS_MAIN(tst_RecordingFile)
#include "tst_recordingfile.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/addressspace.h"
#include "host/support/inachild.h"
#include "host/support/openfiles.h"
#include "host/support/recordingparser.h"
#include "recordingformat/frames.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingmapping.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <cerrno>
#include <csignal>

#include <sys/file.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace VorskHost;
using OpenFiles::descriptorOf;

namespace {

QByteArray frame(const QByteArray& text) {
    return RecordingFormat::messageFrame(0, 1, QString::fromLatin1(text), {});
}

/** What messages of the recording are called. */
QStringList namesIn(const QString& path) {
    const RecordingParser parsed = RecordingParser::parseFile(path);
    QStringList names;
    for (const auto& message : parsed.messages()) {
        names.append(message.name);
    }
    return parsed.error.isEmpty() ? names : QStringList(parsed.error);
}

} // namespace

class tst_RecordingMapping : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void whatIsAppendedIsThereAtOnce();
    void whatIsAppendedSurvivesAKill();
    void theFileGrowsInStepsAndIsCutAtTheEnd();
    void aFrameMayBeLargerThanAStep();
    void manyFramesGoThroughManyWindows();
    void theLimitHoldsWhileItGrows();
    void aFileSizeLimitEndsItWithoutASignal();
    void memoryThatIsNotGivenEndsIt_data();
    void memoryThatIsNotGivenEndsIt();
    void aForkedChildDoesNotAppend();
    void aClosedDescriptorIsNoticedAtTheNextStep();
    void whatSomebodyElseAppendsStays();
    void whatSomebodyElseAppendsBehindOurRoomStays();
    void whatSomebodyElseIsJustWritingStays();
    void anEndThatSomebodyElseMovedEndsIt_data();
    void anEndThatSomebodyElseMovedEndsIt();
    void aDiskThatIsFullEndsItWithAllThatWasAppended();
    void roomThatWasTakenStaysWhenTheDiskBecomesFull();
    void aFileThatIsCutShortDoesNotEndTheApplication_data();
    void aFileThatIsCutShortDoesNotEndTheApplication();

private:
    bool open() { return m_file->create(m_path) && m_mapping->open(*m_file, m_maximumSize); }
    bool appendFromElsewhere(const QByteArray& theirs);
    bool mountSmallDisk(const char* options);

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<RecordingFile> m_file;
    QScopedPointer<RecordingMapping> m_mapping;
    qint64 m_maximumSize = 0;
    QString m_path;
    bool m_isMounted = false;
};

void tst_RecordingMapping::initTestCase() {
    init();
    const bool isPossible = open();
    cleanup();
    if (!isPossible) {
        QSKIP("the file system of the temporary folder does not keep room that was allocated");
    }
}

void tst_RecordingMapping::init() {
    TestCase::init();
    m_dir.reset(new QTemporaryDir);
    m_file.reset(new RecordingFile);
    m_mapping.reset(new RecordingMapping);
    m_maximumSize = 0;
    m_path = QDir(QFileInfo(m_dir->path()).canonicalFilePath())
                 .absoluteFilePath(QStringLiteral("x.uirec"));
}

void tst_RecordingMapping::cleanup() {
    m_mapping.reset();
    m_file.reset();
    if (m_isMounted) {
        m_isMounted = false;
        QCOMPARE(::umount(qPrintable(m_dir->path())), 0);
    }
    m_dir.reset();
    TestCase::cleanup();
}

/** Puts one over the folder that the recording goes to. */
bool tst_RecordingMapping::mountSmallDisk(const char* options) {
    m_isMounted = ::mount("tmpfs", qPrintable(m_dir->path()), "tmpfs", 0, options) == 0;
    return m_isMounted;
}

void tst_RecordingMapping::whatIsAppendedIsThereAtOnce() {
    QVERIFY(!m_mapping->append(frame("too early")));
    QVERIFY(open());
    QCOMPARE(namesIn(m_path), QStringList());
    QVERIFY(m_mapping->append(frame("one")));
    QVERIFY(m_mapping->append(QByteArray()));
    QVERIFY(m_mapping->append(frame("two") + frame("three")));
    const QStringList all = {QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")};
    QCOMPARE(namesIn(m_path), all);
    QCOMPARE(RecordingParser::parseFile(m_path).end, m_mapping->size());
    m_mapping->close();
    QVERIFY(!m_mapping->isOpen());
    QVERIFY(!m_file->isOpen());
    QVERIFY(!m_mapping->append(frame("too late")));
    QCOMPARE(namesIn(m_path), all);
}

void tst_RecordingMapping::whatIsAppendedSurvivesAKill() {
    QCOMPARE(inAChild([this] {
                 open();
                 for (int i = 0; i < 1000; ++i) {
                     m_mapping->append(frame(QByteArray::number(i)));
                 }
                 return ::raise(SIGKILL);
             }),
             -SIGKILL);
    QCOMPARE(namesIn(m_path).size(), 1000);
}

void tst_RecordingMapping::theFileGrowsInStepsAndIsCutAtTheEnd() {
    QVERIFY(open());
    const qint64 allocated = QFileInfo(m_path).size();
    QVERIFY(allocated >= RecordingMapping::step);
    const QByteArray one = frame("x");
    while (m_mapping->size() + one.size() <= allocated) {
        QVERIFY(m_mapping->append(one));
        QCOMPARE(QFileInfo(m_path).size(), allocated);
    }
    QVERIFY(m_mapping->append(one));
    QVERIFY(QFileInfo(m_path).size() >= allocated + RecordingMapping::step);
    const qint64 size = m_mapping->size();
    m_mapping->close();
    QCOMPARE(QFileInfo(m_path).size(), size);
}

void tst_RecordingMapping::aFrameMayBeLargerThanAStep() {
    QVERIFY(open());
    QStringList expected;
    for (const int size : {10, 5000000, 20, 300000, 9000000}) {
        const QByteArray name(size, 'n');
        QVERIFY(m_mapping->append(frame(name)));
        expected.append(QString::fromLatin1(name));
        QVERIFY(namesIn(m_path) == expected);
    }
}

void tst_RecordingMapping::manyFramesGoThroughManyWindows() {
    constexpr int count = 60000;
    QVERIFY(open());
    QByteArray expected = RecordingFormat::fileHeader(RecordingFormat::sharedVersion);
    for (int i = 0; i < count; ++i) {
        const QByteArray one = frame(QByteArray::number(i) + QByteArray(i % 100, 'x'));
        QVERIFY(m_mapping->append(one));
        expected += one;
    }
    QVERIFY(expected.size() > 4 * 1024 * 1024);
    m_mapping->close();
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().mid(RecordingFormat::sharedHeaderSize) ==
            expected.mid(RecordingFormat::sharedHeaderSize));
}

void tst_RecordingMapping::theLimitHoldsWhileItGrows() {
    m_maximumSize = RecordingMapping::step + 10000;
    QVERIFY(open());
    const QByteArray one = frame("x");
    while (m_mapping->size() + one.size() <= m_maximumSize) {
        QVERIFY(m_mapping->append(one));
        QVERIFY(QFileInfo(m_path).size() <= m_maximumSize);
    }
}

void tst_RecordingMapping::aFileSizeLimitEndsItWithoutASignal() {
    constexpr rlim_t limit = RecordingMapping::step + 5000;
    QCOMPARE(inAChild([this] {
                 const rlimit size{limit, limit};
                 if (!open() || ::setrlimit(RLIMIT_FSIZE, &size) != 0) {
                     return 1;
                 }
                 int appended = 0;
                 while (m_mapping->append(frame(QByteArray(100, 'x')))) {
                     ++appended;
                 }
                 const bool isFull = m_mapping->size() + 200 > static_cast<qint64>(limit);
                 return isFull && appended > 0 && !m_file->isOpen() &&
                                m_mapping->errorString().contains(QStringLiteral("too large"))
                            ? 0
                            : 2;
             }),
             0);
    QVERIFY(namesIn(m_path).size() > 1000);
    QVERIFY(QFileInfo(m_path).size() <= static_cast<qint64>(limit));
}

void tst_RecordingMapping::memoryThatIsNotGivenEndsIt_data() {
    QTest::addColumn<int>("spare");
    QTest::newRow("for nothing") << 0;
    QTest::newRow("for the next part, not for a large frame") << 16 * 1024 * 1024;
}

void tst_RecordingMapping::memoryThatIsNotGivenEndsIt() {
    QFETCH(int, spare);
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitizer needs more memory than can be limited");
#endif
    constexpr int notLimited = 77;
    const QByteArray large = frame(QByteArray(64 * 1024 * 1024, 'x'));
    const int result = inAChild([&] {
        if (!open() || !m_mapping->append(frame("kept"))) {
            return 1;
        }
        const rlimit little{addressSpaceInUse() + static_cast<rlim_t>(spare), RLIM_INFINITY};
        rlimit current{};
        if (::setrlimit(RLIMIT_AS, &little) != 0 || ::getrlimit(RLIMIT_AS, &current) != 0) {
            return 2;
        }
        if (current.rlim_cur != little.rlim_cur) {
            return notLimited;
        }
        const bool isAppended = m_mapping->append(large);
        const bool isSaid = m_mapping->errorString() == qt_error_string(ENOMEM);
        return !isAppended && isSaid && !m_file->isOpen() ? 0 : 3;
    });
    if (result == notLimited) {
        QSKIP("an emulator lets no program limit the memory that both of them need");
    }
    QCOMPARE(result, 0);
    QCOMPARE(namesIn(m_path), QStringList(QStringLiteral("kept")));
}

void tst_RecordingMapping::aForkedChildDoesNotAppend() {
    QVERIFY(open());
    QCOMPARE(inAChild([this] {
                 const bool isAppended = m_mapping->append(frame("child"));
                 m_mapping->close();
                 return isAppended ? 1 : 0;
             }),
             0);
    QVERIFY(m_mapping->append(frame("parent")));
    QCOMPARE(namesIn(m_path), QStringList(QStringLiteral("parent")));
}

void tst_RecordingMapping::aClosedDescriptorIsNoticedAtTheNextStep() {
    QVERIFY(open());
    const int descriptor = descriptorOf(m_path);
    ::close(descriptor);
    QFile theirs(m_dir->filePath(QStringLiteral("theirs")));
    QVERIFY(theirs.open(QIODevice::ReadWrite));
    QCOMPARE(theirs.handle(), descriptor);
    int appended = 0;
    while (m_mapping->append(frame(QByteArray(1000, 'x')))) {
        ++appended;
    }
    QVERIFY(appended > 200);
    QCOMPARE(m_mapping->errorString(), QStringLiteral("its file was closed by the application"));
    QCOMPARE(theirs.size(), qint64(0));
    QVERIFY(theirs.isOpen() && theirs.write("still mine") > 0 && theirs.flush());
    QCOMPARE(namesIn(m_path).size(), appended);
}

/** As another process does. */
bool tst_RecordingMapping::appendFromElsewhere(const QByteArray& theirs) {
    QFile other(m_path);
    const qint64 place = m_mapping->size();
    QByteArray end(8, '\0');
    qToBigEndian<qint64>(place + theirs.size(), end.data());
    return other.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && other.seek(place) &&
           other.write(theirs) == theirs.size() && other.seek(RecordingFormat::endOffset) &&
           other.write(end) == end.size() && m_mapping->size() == place + theirs.size();
}

void tst_RecordingMapping::whatSomebodyElseAppendsStays() {
    QVERIFY(open());
    QVERIFY(m_mapping->append(frame("ours")));
    QVERIFY(appendFromElsewhere(frame("theirs")));
    QVERIFY(m_mapping->append(frame("ours again")));
    QCOMPARE(namesIn(m_path), QStringList({QStringLiteral("ours"), QStringLiteral("theirs"),
                                           QStringLiteral("ours again")}));
}

void tst_RecordingMapping::whatSomebodyElseAppendsBehindOurRoomStays() {
    QVERIFY(open());
    const QByteArray theirName(static_cast<int>(RecordingMapping::step) * 3 / 2, 't');
    QVERIFY(appendFromElsewhere(frame(theirName)));
    QVERIFY(m_mapping->append(frame("ours")));
    QCOMPARE(namesIn(m_path),
             QStringList({QString::fromLatin1(theirName), QStringLiteral("ours")}));
}

void tst_RecordingMapping::whatSomebodyElseIsJustWritingStays() {
    QVERIFY(open());
    const qint64 allocated = QFileInfo(m_path).size();
    const QByteArray one = frame("x");
    while (m_mapping->size() + one.size() <= allocated) {
        QVERIFY(m_mapping->append(one));
    }
    QFile other(m_path);
    QVERIFY(other.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QCOMPARE(::flock(other.handle(), LOCK_EX), 0);
    const QByteArray theirs(3, 't');
    const qint64 place = allocated + RecordingMapping::step / 2;
    QVERIFY(other.seek(place) && other.write(theirs) == theirs.size());
    QVERIFY(m_mapping->append(one));
    QVERIFY(QFileInfo(m_path).size() >= allocated + RecordingMapping::step);
    QVERIFY(other.seek(place));
    QCOMPARE(other.read(theirs.size()), theirs);
}

void tst_RecordingMapping::anEndThatSomebodyElseMovedEndsIt_data() {
    QTest::addColumn<quint64>("end");
    QTest::newRow("to the start") << quint64{0};
    QTest::newRow("back by one") << quint64{RecordingFormat::sharedHeaderSize - 1};
    QTest::newRow("beyond any disk") << (quint64{1} << 61);
    QTest::newRow("where the sum runs over") << (~quint64{0} - 10);
    QTest::newRow("to the last") << ~quint64{0};
}

void tst_RecordingMapping::anEndThatSomebodyElseMovedEndsIt() {
    QFETCH(quint64, end);
    QVERIFY(open());
    QVERIFY(m_mapping->append(frame("one")));
    QFile other(m_path);
    QVERIFY(other.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QByteArray bytes(8, '\0');
    qToBigEndian(end, bytes.data());
    QVERIFY(other.seek(RecordingFormat::endOffset) && other.write(bytes) == 8);
    QVERIFY(!m_mapping->append(frame("two")));
    QVERIFY(!m_mapping->errorString().isEmpty());
    QVERIFY(!m_file->isOpen());
    QVERIFY(other.seek(RecordingFormat::sharedHeaderSize));
    QCOMPARE(other.read(frame("one").size()), frame("one"));
}

void tst_RecordingMapping::aDiskThatIsFullEndsItWithAllThatWasAppended() {
    constexpr int diskSize = 64 * 1024;
    if (!mountSmallDisk("size=64k")) {
        QSKIP("only root can make a small disk");
    }
    QVERIFY(open());
    int appended = 0;
    while (m_mapping->append(frame(QByteArray(100, 'x')))) {
        ++appended;
    }
    QCOMPARE(m_mapping->errorString(), qt_error_string(ENOSPC));
    QVERIFY(!m_file->isOpen());
    QCOMPARE(namesIn(m_path).size(), appended);
    // To the last page.
    QVERIFY(QFileInfo(m_path).size() > diskSize - 4096);
}

void tst_RecordingMapping::roomThatWasTakenStaysWhenTheDiskBecomesFull() {
    if (!mountSmallDisk("size=1m")) {
        QSKIP("only root can make a small disk");
    }
    QVERIFY(open());
    const qint64 allocated = QFileInfo(m_path).size();
    QFile others(m_dir->filePath(QStringLiteral("others")));
    QVERIFY(others.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (others.write(QByteArray(4096, 'o')) > 0) {
    }
    int appended = 0;
    while (m_mapping->append(frame(QByteArray(100, 'x')))) {
        ++appended;
    }
    QCOMPARE(m_mapping->errorString(), qt_error_string(ENOSPC));
    QCOMPARE(namesIn(m_path).size(), appended);
    QVERIFY(QFileInfo(m_path).size() > allocated - 200);
}

void tst_RecordingMapping::aFileThatIsCutShortDoesNotEndTheApplication_data() {
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("framesThatStay");
    QTest::newRow("to nothing") << 0 << 0;
    QTest::newRow("to its header") << int{RecordingFormat::sharedHeaderSize} << 0;
    // Behind the page that the recording goes on in there is none then.
    QTest::newRow("within a frame") << 2 * 4096 + 100 << 8;
}

void tst_RecordingMapping::aFileThatIsCutShortDoesNotEndTheApplication() {
    QFETCH(int, size);
    QFETCH(int, framesThatStay);
    constexpr int nameSize = 1000;
    const QByteArray one = frame(QByteArray(nameSize, 'x'));
    const auto isAppended = [&] { return m_mapping->append(one); };
    QCOMPARE(inAChild([&] {
                 if (!open()) {
                     return 1;
                 }
                 for (int i = 0; i < 20; ++i) {
                     if (!isAppended()) {
                         return 2;
                     }
                 }
                 if (::truncate(QFile::encodeName(m_path).constData(), size) != 0) {
                     return 3;
                 }
                 const bool isGone = !isAppended() && !m_mapping->errorString().isEmpty();
                 return isGone && !m_file->isOpen() && !isAppended() ? 0 : 4;
             }),
             0);
    // What somebody left of it is as it was.
    QFile left(m_path);
    QVERIFY(left.open(QIODevice::ReadOnly));
    const QByteArray bytes = left.readAll();
    QCOMPARE(bytes.size(), size);
    QCOMPARE(bytes.mid(RecordingFormat::sharedHeaderSize).count(one), framesThatStay);
}

QTEST_GUILESS_MAIN(tst_RecordingMapping)
#include "tst_recordingmapping.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingwriter.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace VorskHost;

namespace {

constexpr qint64 maximum = SizeLimit::smallest;
constexpr int lossType = 6;
constexpr int picture = 5;
constexpr int usage = 11;

} // namespace

/** A recording of limited size: what it keeps, what it gives up, and what it says of that. */
class tst_RecordingWriterLimit : public TestLib::TestCase {
    Q_OBJECT

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<RecordingWriter> m_writer;

    QString path() const { return m_dir->filePath(QStringLiteral("r.uirec")); }

    bool send(int kind, int size, const char* name = "uiCoverageData") {
        return m_writer->appendMessage(1, QString::fromLatin1(name),
                                       {1, 1, kind, QByteArray(size, 'x')});
    }

    void expectFull() {
        expectWarning(
            QRegularExpression(QStringLiteral("recording-full: the recording .*r\\.uirec has "
                                              "reached its size limit; nothing more .*")));
    }

    /** Pictures and others of each Loss frame, in order; also checks that the file is sound. */
    QStringList losses() const {
        const RecordingParser parsed = RecordingParser::parseFile(path());
        QStringList found{parsed.error};
        for (const RecordingParser::Frame& frame : parsed.frames) {
            if (frame.type == lossType) {
                found.append(QString::fromLatin1(frame.body.toHex(' ').replace("00 ", "")));
            }
        }
        return found;
    }

private Q_SLOTS:
    void init() {
        TestCase::init();
        m_dir.reset(new QTemporaryDir);
        m_writer.reset(new RecordingWriter);
        m_writer->setTestFunction(TestFunction(nullptr, nullptr, nullptr));
        m_writer->setMaximumSize(maximum);
        QVERIFY(m_writer->open(path(), {}));
    }

    void cleanup() {
        m_writer.reset();
        m_dir.reset();
        TestCase::cleanup();
    }

    void whatFitsIsWholeAndSaysNothing() {
        QVERIFY(send(picture, 1000));
        QVERIFY(send(usage, 1000));
        m_writer->close();
        QCOMPARE(losses(), QStringList{QString()});
    }

    void picturesAreGivenUpBeforeEvents() {
        QVERIFY(send(picture, 30000));
        QVERIFY(!send(picture, 30000));
        QVERIFY(!send(picture, 30000));
        QVERIFY(send(usage, 30000));
        // only a picture of an element, of a coverage message, is one
        QVERIFY(send(picture, 1000, "somethingElse"));
        m_writer->close();
        QCOMPARE(losses(),
                 (QStringList{QString(), QStringLiteral("01 00"), QStringLiteral("02 00")}));
        QCOMPARE(RecordingParser::parseFile(path()).messagesAccordingToEnd(), qint64{3});
    }

    void fullMeansFullAndTheEndIsThere() {
        expectFull();
        QVERIFY(send(usage, 60000));
        QVERIFY(!send(usage, 10000));
        // it would fit, but what it builds on may be missing
        QVERIFY(!send(usage, 1));
        QVERIFY(m_writer->isOpen());
        m_writer->appendLog(RecordingFormat::Severity::Info, QStringLiteral("late"));
        m_writer->mark(QStringLiteral("late"));
        m_writer->close();
        const RecordingParser parsed = RecordingParser::parseFile(path());
        QCOMPARE(losses(), (QStringList{QString(), QStringLiteral("01"), QStringLiteral("02")}));
        QVERIFY(parsed.hasEnd());
        QCOMPARE(parsed.messagesAccordingToEnd(), qint64{1});
        QVERIFY(parsed.logs().isEmpty());
    }

    void withoutAnEndItSaysWhatWasGivenUpToo() {
        expectFull();
        QVERIFY(!send(usage, 70000));
        QCOMPARE(losses(), (QStringList{QString(), QStringLiteral("01")}));
    }

    void theFileNeverBecomesLarger_data() {
        QTest::addColumn<int>("size");
        for (const int size : {1, 50, 1000, 20000}) {
            QTest::addRow("%d bytes each", size) << size;
        }
    }

    void theFileNeverBecomesLarger() {
        QFETCH(int, size);
        expectFull();
        for (int i = 0; i < maximum / size + 2; ++i) {
            m_writer->appendLog(RecordingFormat::Severity::Warning,
                                QString(size, QLatin1Char('l')));
            send(i % 2 == 0 ? picture : usage, size);
            QVERIFY(QFileInfo(path()).size() <= maximum);
        }
        m_writer->mark(QStringLiteral("m"));
        m_writer->close();
        QVERIFY(QFileInfo(path()).size() <= maximum);
        QVERIFY(QFileInfo(path()).size() > maximum / 2);
        QCOMPARE(losses().first(), QString());
        QVERIFY(RecordingParser::parseFile(path()).hasEnd());
    }

    void logsAloneDoNotFillItBeyond() {
        for (int i = 0; i < 10; ++i) {
            m_writer->appendLog(RecordingFormat::Severity::Info, QString(30000, QLatin1Char('l')));
        }
        m_writer->close();
        QVERIFY(QFileInfo(path()).size() <= maximum);
        QVERIFY(RecordingParser::parseFile(path()).hasEnd());
    }
};

QTEST_GUILESS_MAIN(tst_RecordingWriterLimit)
#include "tst_recordingwriterlimit.moc"

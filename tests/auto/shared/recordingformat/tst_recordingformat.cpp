// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"
#include "recordingformat/frames.h"
#include "recordingformat/recordingformat.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

/*
 * docs/recording-format.md is for people who read recordings with programs of their own. What it
 * says is compared with what the code does.
 */

namespace {

/** The value that the table of numbers gives for a name; -1 when there is no such row. */
qint64 documentedNumber(const QString& document, const QString& name) {
    const QRegularExpression row(
        QStringLiteral("^\\| %1 \\| (0x)?([0-9a-fA-F]+) \\|").arg(QRegularExpression::escape(name)),
        QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = row.match(document);
    if (!match.hasMatch()) {
        return -1;
    }
    return match.captured(2).toLongLong(nullptr, match.captured(1).isEmpty() ? 10 : 16);
}

/** The bytes in the one block of the kind "hex"; what stands behind a # is remark. */
QByteArray documentedExample(const QString& document) {
    const QString block =
        document.section(QStringLiteral("```hex\n"), 1, 1).section(QStringLiteral("```"), 0, 0);
    QByteArray bytes;
    const QStringList lines = block.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        bytes += QByteArray::fromHex(line.section(QLatin1Char('#'), 0, 0).toLatin1());
    }
    return bytes;
}

} // namespace

class tst_RecordingFormat : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void numbersInTheDocument_data();
    void numbersInTheDocument();
    void keysInTheDocument();
    void exampleInTheDocument();

private:
    QString m_document;
};

void tst_RecordingFormat::initTestCase() {
    QFile file(QStringLiteral(DOCUMENT));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_document = QString::fromUtf8(file.readAll());
}

void tst_RecordingFormat::numbersInTheDocument_data() {
    namespace Format = RecordingFormat;
    QTest::addColumn<qint64>("value");
    const auto row = [](const char* name, auto value) {
        QTest::newRow(name) << static_cast<qint64>(value);
    };
    row("version", Format::version);
    row("version written with `write`", Format::plainVersion);
    row("version written through shared memory", Format::sharedVersion);
    row("bytes of the header", Format::headerSize);
    row("bytes of the longer header", Format::sharedHeaderSize);
    row("place of the end", Format::endOffset);
    row("place of the held place", Format::heldPlaceOffset);
    row("place of the held length", Format::heldLengthOffset);
    row("bytes before a payload", Format::frameHeaderSize);
    row("bytes before a body", Format::payloadHeaderSize);
    row("longest payload", Format::maximumPayloadSize);
    row("Process", Format::FrameType::Process);
    row("Message", Format::FrameType::Message);
    row("Log", Format::FrameType::Log);
    row("Mark", Format::FrameType::Mark);
    row("End", Format::FrameType::End);
    row("Loss", Format::FrameType::Loss);
    row("Integer", Format::ArgumentTag::Integer);
    row("Bytes", Format::ArgumentTag::Bytes);
    row("Variant", Format::ArgumentTag::Variant);
    row("information", Format::Severity::Info);
    row("warning", Format::Severity::Warning);
}

void tst_RecordingFormat::numbersInTheDocument() {
    QFETCH(qint64, value);
    QCOMPARE(documentedNumber(m_document, QString::fromLatin1(QTest::currentDataTag())), value);
}

void tst_RecordingFormat::keysInTheDocument() {
    namespace Key = RecordingFormat::Key;
    QStringList documented;
    const QRegularExpression row(QStringLiteral("^\\| `([a-z-]+\\.?)(?:NAME)?` \\|"),
                                 QRegularExpression::MultilineOption);
    auto matches = row.globalMatch(m_document);
    while (matches.hasNext()) {
        documented.append(matches.next().captured(1));
    }
    QStringList known;
    for (const char* key : {Key::application, Key::executable, Key::pid, Key::run, Key::session,
                            Key::qtVersion, Key::platform, Key::locale, Key::architecture,
                            Key::started, Key::context, Key::extension, Key::label, Key::clock}) {
        known.append(QString::fromLatin1(key));
    }
    QCOMPARE(documented, known);
}

void tst_RecordingFormat::exampleInTheDocument() {
    const QByteArray expected =
        RecordingFormat::fileHeader() +
        RecordingFormat::processFrame(0, {{QStringLiteral("pid"), QStringLiteral("42")}}) +
        RecordingFormat::logFrame(900, RecordingFormat::Severity::Info, QStringLiteral("ready")) +
        RecordingFormat::messageFrame(
            1000, 1, QStringLiteral("uiCoverageData"),
            {42, 1, 7, QByteArray("\x00\x00\x00\x02\x00i\xff\xff\xff\xff", 10)}) +
        RecordingFormat::endFrame(2000, 1);
    const QByteArray documented = documentedExample(m_document);
    QVERIFY2(documented == expected, qPrintable(QStringLiteral("the code makes of the example:\n") +
                                                QString::fromLatin1(expected.toHex(' '))));
    QCOMPARE(RecordingParser::parse(documented).error, QString());
}

QTEST_GUILESS_MAIN(tst_RecordingFormat)
#include "tst_recordingformat.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingwriter.h"
#include "vorskqtwrapper/wrapperextensionhost.h"

#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>

using namespace VorskHost;

class tst_RecordingLogger : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void linesAreInTheRecording();
    void linesAreSilentUnlessAskedFor();
    void textThatIsNotUtf8();
    void loggerOfTheHost();
};

void tst_RecordingLogger::linesAreInTheRecording() {
    QTemporaryDir dir;
    RecordingWriter writer;
    QVERIFY(writer.open(dir.filePath(QStringLiteral("a.uirec")), {}));
    RecordingLogger logger(writer);
    logger.info("it runs");
    // Would fail this test if it came out.
    logger.warning("something \xc3\xa9 is odd");
    writer.close();
    QCOMPARE(RecordingParser::parseFile(writer.path()).logs(),
             (QStringList{QStringLiteral("info it runs"),
                          QStringLiteral("warning something \u00e9 is odd")}));
}

void tst_RecordingLogger::linesAreSilentUnlessAskedFor() {
    RecordingWriter writer;
    RecordingLogger logger(writer);
    logger.warning("silent");
    QLoggingCategory::setFilterRules(QStringLiteral("vorsk.extension=true"));
    expectWarning(QStringLiteral("heard"));
    logger.warning("heard");
    QLoggingCategory::setFilterRules(QString());
    logger.warning("silent again");
}

void tst_RecordingLogger::textThatIsNotUtf8() {
    QTemporaryDir dir;
    RecordingWriter writer;
    QVERIFY(writer.open(dir.filePath(QStringLiteral("a.uirec")), {}));
    RecordingLogger logger(writer);
    logger.info("cut within \xc3");
    writer.close();
    QCOMPARE(RecordingParser::parseFile(writer.path()).logs(),
             QStringList(QStringLiteral("info cut within \ufffd")));
}

void tst_RecordingLogger::loggerOfTheHost() {
    QTemporaryDir dir;
    RecordingWriter writer;
    QVERIFY(writer.open(dir.filePath(QStringLiteral("a.uirec")), {}));
    WrapperExtensionHost host(writer);
    QVERIFY(host.logger() != nullptr);
    host.logger()->info("line");
    writer.close();
    QCOMPARE(RecordingParser::parseFile(writer.path()).logs(),
             QStringList(QStringLiteral("info line")));
}

QTEST_GUILESS_MAIN(tst_RecordingLogger)
#include "tst_recordinglogger.moc"

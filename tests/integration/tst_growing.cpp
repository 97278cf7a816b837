// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/emulation.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

/** A slow and busy machine with sanitizers takes its time. */
constexpr int patience = 120000;
constexpr int readings = 15;

struct Result {
    int exitCode = -1;
    QString output;
    QString errors;
};

Result uicov(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(UICOV_PROGRAM), arguments);
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
}

/** Elements in the report's last line; -1 when there is none. */
int elementsIn(const QString& report) {
    static const QRegularExpression total(QStringLiteral("^TOTAL +(\\d+) "),
                                          QRegularExpression::MultilineOption);
    const auto match = total.match(report);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

} // namespace

/** A recording is read, and copied, at any time: also while the application still writes it. */
class TestGrowing : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aReportOfAGrowingRecordingIsPartial();
    void aCopyIsReadLikeTheRecording();
    void everyMessageOfAGrowingRecordingIsDumped();
    void strictEndsWithThree();
    void copiesAndTheEndAreOneRun();
    void theEndedRecordingIsWhole();

private:
    /** Copies byte for byte what is there, without asking the writer. */
    QString copy(int number) const;
    QString recording() const { return m_folder.filePath(QStringLiteral("busyprogram.uirec")); }

    QTemporaryDir m_folder;
    QProcess m_application;
};

QString TestGrowing::copy(int number) const {
    const QString path = m_folder.filePath(QStringLiteral("copy%1.uirec").arg(number));
    QFile::remove(path);
    return QFile::copy(recording(), path) ? path : QString();
}

void TestGrowing::initTestCase() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                       TestLib::pluginPath(QStringLiteral(UICOV_PLUGINS)));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorsk"));
    environment.insert(QStringLiteral("VORSK_GUI_COVERAGE"), QStringLiteral("1"));
    environment.insert(QStringLiteral("VORSK_RECORDING_DIR"), m_folder.path());
    m_application.setProcessEnvironment(environment);
    m_application.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_application.start(QStringLiteral(BUSY_PROGRAM), QStringList());
    QVERIFY(m_application.waitForStarted(patience));
    // The file has room from the start; how much is in it only its content tells.
    QTRY_VERIFY_WITH_TIMEOUT(uicov({QStringLiteral("report"), recording()}).exitCode == 0,
                             patience);
}

void TestGrowing::aReportOfAGrowingRecordingIsPartial() {
    int most = 0;
    for (int reading = 0; reading < readings; ++reading) {
        const qint64 size = QFileInfo(recording()).size();
        const Result report = uicov({QStringLiteral("report"), recording()});
        QVERIFY2(report.exitCode == 0, qPrintable(report.errors));
        QVERIFY2(report.errors.contains(QStringLiteral("[ended-abnormally]")) ||
                     report.errors.contains(QStringLiteral("[recording-torn]")),
                 qPrintable(report.errors));
        QVERIFY(report.output.contains(QStringLiteral("The run is partial")));
        const int elements = elementsIn(report.output);
        QVERIFY2(elements >= most && elements > 0, qPrintable(report.output));
        most = elements;
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(recording()).size() > size, patience);
    }
    QCOMPARE(m_application.state(), QProcess::Running);
}

void TestGrowing::aCopyIsReadLikeTheRecording() {
    for (int reading = 0; reading < readings; ++reading) {
        const QString path = copy(reading);
        QVERIFY(!path.isEmpty());
        const Result report = uicov({QStringLiteral("report"), path});
        QVERIFY2(report.exitCode == 0, qPrintable(report.errors));
        QVERIFY(report.output.contains(QStringLiteral("The run is partial")));
        QVERIFY(elementsIn(report.output) > 0);
    }
}

void TestGrowing::everyMessageOfAGrowingRecordingIsDumped() {
    int most = 0;
    for (int reading = 0; reading < 3; ++reading) {
        const Result dump = uicov({QStringLiteral("dump"), recording()});
        QVERIFY2(dump.exitCode == 0, qPrintable(dump.errors));
        const int lines = dump.output.count(QLatin1Char('\n'));
        QVERIFY(lines >= most && lines > 0);
        most = lines;
    }
}

void TestGrowing::strictEndsWithThree() {
    const Result report =
        uicov({QStringLiteral("report"), QStringLiteral("--strict"), recording()});
    QVERIFY2(report.exitCode == 3, qPrintable(report.errors));
}

/** What was copied first says less of the same run; it does not count twice. */
void TestGrowing::copiesAndTheEndAreOneRun() {
    m_application.closeWriteChannel();
    QVERIFY(m_application.waitForFinished(patience));
    QCOMPARE(m_application.exitCode(), 0);
    const Result all =
        uicov({QStringLiteral("report"), m_folder.filePath(QStringLiteral("copy0.uirec")),
               recording(), m_folder.filePath(QStringLiteral("copy1.uirec"))});
    QVERIFY2(all.exitCode == 0, qPrintable(all.errors));
    const Result one = uicov({QStringLiteral("report"), recording()});
    QCOMPARE(all.output, one.output);
}

void TestGrowing::theEndedRecordingIsWhole() {
    const Result report =
        uicov({QStringLiteral("report"), QStringLiteral("--strict"), recording()});
    QVERIFY2(report.exitCode == 0, qPrintable(report.errors));
    QVERIFY(!report.output.contains(QStringLiteral("The run is partial")));
}

QTEST_GUILESS_MAIN(TestGrowing)
#include "tst_growing.moc"

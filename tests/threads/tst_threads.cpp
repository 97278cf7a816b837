// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"
#include "recordstream/recordkind.h"
#include "testlib/emulation.h"
#include "testlib/testcase.h"

#include <QDataStream>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int rounds = 20;
constexpr int patience = 200000; // a slow and busy machine with a sanitizer

} // namespace

/**
 * What other threads do is no concern of the host's and the extension's. Built with ThreadSanitizer
 * ("make tsan") the program ends with 66 when two threads touch the same memory of ours.
 */
class TestThreads : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;

    /** A whole text as it stands in a record. */
    static QByteArray inStream(const char* text) {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << QString::fromLatin1(text);
        return bytes;
    }

private Q_SLOTS:
    void eventsOfOtherThreadsDisturbNothing_data() {
        QTest::addColumn<QByteArray>("extension");
        QTest::addColumn<bool>("takesScreenshots");
        const QByteArray classic(CLASSIC_EXTENSION);
        const QByteArray controls(CONTROLS_EXTENSION);
        QTest::newRow("classic, without screenshots") << classic << false;
        QTest::newRow("classic, with screenshots") << classic << true;
        QTest::newRow("controls, without screenshots") << controls << false;
        QTest::newRow("controls, with screenshots") << controls << true;
    }

    void eventsOfOtherThreadsDisturbNothing() {
        QFETCH(QByteArray, extension);
        QFETCH(bool, takesScreenshots);
        const QString options = m_folder.filePath(QStringLiteral("host.ini"));
        const QString recording = m_folder.filePath(QStringLiteral("run.uirec"));
        QFile file(options);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[host]\nextension=" + extension +
                   "\nrecording=" + QFile::encodeName(recording) +
                   "\n[options]\nenabled=1\nqtwidgets=1\nqtquick=1\n" +
                   (takesScreenshots ? "takeScreenshotsOfElements=1\n" : ""));
        file.close();

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                           TestLib::pluginPath(QStringLiteral(PLUGIN_PATH)));
        environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorsk"));
        environment.insert(QStringLiteral("VORSK_OPTIONS_FILE"), options);
        environment.insert(QStringLiteral("VORSK_GUI_COVERAGE"), QStringLiteral("1"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(THREADED_PROGRAM), QStringList());
        QVERIFY(process.waitForFinished(patience));
        // Of the offscreen platform, about every window with a layout.
        const QByteArray errors = process.readAllStandardError().replace(
            "This plugin does not support propagateSizeHints()\n", "");
        QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                 errors.constData());
        QCOMPARE(errors, QByteArray());
        const QByteArray output = process.readAllStandardOutput();
        QVERIFY2(output.startsWith("sent ") && output.mid(5).trimmed().toLong() >= 1000,
                 output.constData());

        const RecordingParser parsed = RecordingParser::parseFile(recording);
        QCOMPARE(parsed.error, QString());
        QVERIFY(parsed.hasEnd());
        QCOMPARE(parsed.messagesAccordingToEnd(), qint64(parsed.messages().size()));
        int clicks = 0;
        int checks = 0;
        const auto messages = parsed.messages();
        for (const auto& message : messages) {
            const QByteArray payload = message.arguments.at(3).toByteArray();
            QVERIFY2(!payload.contains(inStream("Worker")), "an object that is no widget");
            const bool isUse = message.arguments.at(2).toInt() ==
                               static_cast<int>(Vorsk::RecordStream::RecordKind::UsageIncreased);
            clicks += isUse && payload.contains(inStream("clicked")) ? 1 : 0;
            checks += isUse && payload.contains(inStream("checked")) ? 1 : 0;
        }
        // To the classic extension a check box is clicked as well.
        QCOMPARE(clicks, extension == CLASSIC_EXTENSION ? 2 * rounds : rounds);
        QCOMPARE(checks, rounds);
        QVERIFY(QFile::remove(recording));
    }
};

QTEST_GUILESS_MAIN(TestThreads)
#include "tst_threads.moc"

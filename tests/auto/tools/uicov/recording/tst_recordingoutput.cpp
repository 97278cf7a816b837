// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/recordingoutput.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using TestLib::RecordingBuilder;
using Uicov::Base::Message;
using Uicov::Recording::RecordingOutput;

class TestRecordingOutput : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;

    QString path(const char* name) { return m_folder->filePath(QLatin1String(name)); }

    bool writeRecording(const char* name, const char* session) {
        RecordingBuilder recording;
        recording.addProcess({{QStringLiteral("session"), QLatin1String(session)}});
        return recording.write(path(name));
    }

    bool writeFile(const char* name, const QByteArray& bytes) {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void anEarlierRecordingAndAnEmptyFileMakeRoom() {
        QVERIFY(writeRecording("x.uirec", "s"));
        QVERIFY(writeFile("empty.uirec", QByteArray()));
        for (const char* name : {"x.uirec", "empty.uirec", "new.uirec"}) {
            const RecordingOutput output(path(name));
            QVERIFY(!output.check());
            QCOMPARE(QFile::exists(path(name)), QByteArray(name) != "new.uirec");
            QVERIFY(!output.makeRoom());
            QVERIFY(!QFile::exists(path(name)));
        }
    }

    void anythingElseIsRefusedAndStays() {
        QVERIFY(writeFile("thesis.txt", "years of work"));
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
        QVERIFY(QFile::link(path("nowhere"), path("dangling")));
        for (const char* name : {"thesis.txt", "folder", "dangling"}) {
            const auto problem = RecordingOutput(path(name)).check();
            QVERIFY2(problem, name);
            QCOMPARE(problem->message, Message::OutputNotARecording);
        }
        for (const char* device : {"/dev/null", "/dev/full"}) {
            const auto problem = RecordingOutput(QString::fromLatin1(device)).check();
            QVERIFY2(problem, device);
            QCOMPARE(problem->message, Message::OutputNotARecording);
        }
        QVERIFY(QFile::exists(path("thesis.txt")));
    }

    void aFolderThatIsNotThereOrNotWritable() {
        auto problem = RecordingOutput(path("none/x.uirec")).check();
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
        QVERIFY(problem->text.contains(QStringLiteral("there is no folder")));
        problem = RecordingOutput(QStringLiteral("/proc/x.uirec")).check();
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
    }

    void theRecordingsOfTheRunAreFoundAndNoOthers() {
        QVERIFY(writeRecording("app.uirec", "s"));
        QVERIFY(writeRecording("app-12.uirec", "s"));
        QVERIFY(writeRecording("app-12-2.uirec", "s"));
        QVERIFY(writeRecording("app-13.uirec", "another run"));
        QVERIFY(writeRecording("app-monday.uirec", "s"));
        QVERIFY(writeRecording("other-12.uirec", "s"));
        QVERIFY(writeFile("app-14.uirec", "torn"));
        const QStringList found =
            RecordingOutput(path("app.uirec")).recordingsOf(QStringLiteral("s"));
        QCOMPARE(found,
                 QStringList({path("app.uirec"), path("app-12-2.uirec"), path("app-12.uirec")}));
        QVERIFY(RecordingOutput(path("x.uirec")).recordingsOf(QStringLiteral("s")).isEmpty());
    }

    /** The host names the recordings of further processes, whatever the first one is called. */
    void thoseOfFurtherProcessesAreFoundWhateverTheName_data() {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("further");
        QTest::newRow("another ending") << QByteArray("rec.bin") << QByteArray("rec.bin-12.uirec");
        QTest::newRow("no ending") << QByteArray("rec") << QByteArray("rec-12.uirec");
        QTest::newRow("ends with a point") << QByteArray("rec.") << QByteArray("rec.-12.uirec");
        QTest::newRow("several points") << QByteArray("a.b.uirec") << QByteArray("a.b-12-3.uirec");
        QTest::newRow("hidden") << QByteArray(".rec") << QByteArray(".rec-12.uirec");
        QTest::newRow("in capitals") << QByteArray("A.UIREC") << QByteArray("A.UIREC-1.uirec");
    }

    void thoseOfFurtherProcessesAreFoundWhateverTheName() {
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, further);
        QVERIFY(writeRecording(first.constData(), "s"));
        QVERIFY(writeRecording(further.constData(), "s"));
        QCOMPARE(RecordingOutput(path(first.constData())).recordingsOf(QStringLiteral("s")),
                 QStringList({path(first.constData()), path(further.constData())}));
    }

    void pathsAreGivenAsTheUserGaveTheirs() {
        QVERIFY(writeRecording("app.uirec", "s"));
        QVERIFY(writeRecording("app-12.uirec", "s"));
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        const RecordingOutput output(QStringLiteral("app.uirec"));
        const QStringList found = output.recordingsOf(QStringLiteral("s"));
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(found, QStringList({QStringLiteral("app.uirec"), QStringLiteral("app-12.uirec")}));
        QCOMPARE(output.absolutePath(), path("app.uirec"));
    }
};

QTEST_GUILESS_MAIN(TestRecordingOutput)
#include "tst_recordingoutput.moc"

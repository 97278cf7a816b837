// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/framedecoder.h"
#include "recording/recordingreader.h"
#include "run/runloader.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using RecordingFormat::FrameType;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;
using Uicov::Runs::Run;

namespace {

constexpr int patience = 60000;

QString nameOf(int test) {
    return QStringLiteral("test %1").arg(test);
}

} // namespace

/** Marks from another process, while a real application is recorded. */
class TestMarks : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_run;

    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    void start(const QStringList& options) {
        m_run = std::make_unique<QProcess>();
        m_run->setWorkingDirectory(m_folder->path());
        m_run->start(QStringLiteral(UICOV_PROGRAM),
                     QStringList{QStringLiteral("run")} + options +
                         QStringList{QStringLiteral("--"), QStringLiteral(PROGRAM)});
        QVERIFY(hears("ready"));
    }

    bool hears(const char* answer) {
        while (!m_run->canReadLine()) {
            if (!m_run->waitForReadyRead(patience)) {
                qInfo("%s", m_run->readAllStandardError().constData());
                return false;
            }
        }
        return m_run->readLine().trimmed() == answer;
    }

    bool tell(const char* line) {
        m_run->write(line);
        m_run->write("\n");
        return hears("done");
    }

    /** The exit code. */
    int end() {
        m_run->closeWriteChannel();
        return m_run->waitForFinished(patience) ? m_run->exitCode() : -1;
    }

    bool mark(const QString& name) const {
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(QStringLiteral(UICOV_PROGRAM), {QStringLiteral("mark"), name});
        const bool isDone = process.waitForFinished(patience) && process.exitCode() == 0;
        if (!isDone) {
            qInfo("%s", process.readAllStandardError().constData());
        }
        return isDone;
    }

    /** The context of each message, in their order. */
    QStringList contextsOfMessages(const QString& recording) const {
        QStringList contexts;
        QString current;
        RecordingReader reader(recording);
        Frame frame;
        if (reader.open()) {
            return {};
        }
        while (reader.next(frame)) {
            if (frame.type == FrameType::Message) {
                contexts.append(current);
            } else if (frame.type == FrameType::Mark) {
                current = *Uicov::Recording::decodeMark(frame.body);
            }
        }
        return contexts;
    }

    /** Contexts with the number of times that the button was clicked in them. */
    static QMap<QString, qint64> clicksIn(const QString& recording) {
        QMap<QString, qint64> clicks;
        Uicov::Runs::RunLoader loader(recording);
        if (loader.load()) {
            return clicks;
        }
        const Run run = loader.run();
        for (const auto& element : run.elements) {
            for (const auto& hit : element.hits) {
                if (hit.event == QLatin1String("clicked")) {
                    clicks[run.contexts.at(hit.context)] += hit.count;
                }
            }
        }
        return clicks;
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
    }

    void cleanup() {
        if (m_run) {
            end();
            m_run.reset();
        }
        TestLib::TestCase::cleanup();
    }

    void everyMessageIsInTheContextThatItWasSentIn() {
        constexpr int marks = 50;
        const QString recording = path("x.uirec");
        start({QStringLiteral("--recording"), recording});
        QStringList expected;
        QMap<QString, qint64> clicks;
        for (int test = 0; test <= marks; ++test) {
            const QString context = test == 0 ? QString() : nameOf(test);
            if (test > 0) {
                QVERIFY(mark(context));
            }
            QVERIFY(tell("click"));
            // The application has answered and waits: whatever is new belongs to this test.
            const int known = contextsOfMessages(recording).size();
            QVERIFY(known > expected.size());
            while (expected.size() < known) {
                expected.append(context);
            }
            clicks[context] = 1;
        }
        QCOMPARE(end(), 0);
        const QStringList contexts = contextsOfMessages(recording);
        // What it sends while it ends comes behind the last mark.
        while (expected.size() < contexts.size()) {
            expected.append(nameOf(marks));
        }
        QCOMPARE(contexts, expected);
        QCOMPARE(clicksIn(recording), clicks);
    }

    void allProcessesOfARunAreMarked() {
        const QString recording = path("x.uirec");
        start({QStringLiteral("--recording"), recording});
        QVERIFY(tell("click"));
        QVERIFY(mark(nameOf(1)));
        QVERIFY(tell("start"));
        QVERIFY(tell("there click"));
        QVERIFY(mark(nameOf(2)));
        QVERIFY(tell("click"));
        QVERIFY(tell("there click"));
        QCOMPARE(end(), 0);
        QCOMPARE(clicksIn(recording), (QMap<QString, qint64>{{QString(), 1}, {nameOf(2), 1}}));
        const QStringList others =
            QDir(m_folder->path()).entryList({QStringLiteral("x-*.uirec")}, QDir::Files);
        QCOMPARE(others.size(), 1);
        const QString other = m_folder->filePath(others.first());
        QCOMPARE(clicksIn(other), (QMap<QString, qint64>{{nameOf(1), 1}, {nameOf(2), 1}}));
        // It started in the context, so that nothing of it stands before.
        QCOMPARE(contextsOfMessages(other).first(), nameOf(1));
    }

    void marksDivideARunThatHasAContextOfItsOwn() {
        const QString recording = path("x.uirec");
        start({QStringLiteral("--recording"), recording, QStringLiteral("--context"),
               QStringLiteral("nightly")});
        QVERIFY(mark(nameOf(1)));
        QVERIFY(tell("click"));
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(QStringLiteral(UICOV_PROGRAM),
                      {QStringLiteral("mark"), QStringLiteral("--end")});
        QVERIFY(process.waitForFinished(patience));
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(tell("click"));
        QCOMPARE(end(), 0);
        QCOMPARE(clicksIn(recording), (QMap<QString, qint64>{{QStringLiteral("nightly|test 1"), 1},
                                                             {QStringLiteral("nightly"), 1}}));
    }
};

QTEST_GUILESS_MAIN(TestMarks)
#include "tst_marks.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/runloader.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/mount.h>

using Uicov::Base::Message;

namespace {

/** A slow and busy machine with sanitizers takes its time. */
constexpr int patience = 120000;

} // namespace

/** An application whose recording cannot be written to its end. */
class TestBrokenSink : public TestLib::TestCase {
    Q_OBJECT

    struct Outcome {
        int exitCode = -1;
        QString output;
    };

    /** The demo's session, started by a shell that does this first. */
    Outcome run(const QString& before, const QStringList& options = {}) const {
        QProcess process;
        process.setProcessChannelMode(
            QProcess::MergedChannels); // Qt Test takes warnings as its own
        process.start(QStringLiteral(UICOV_PROGRAM),
                      QStringList{QStringLiteral("run"), QStringLiteral("-o"),
                                  m_folder.filePath(QStringLiteral("panel.uicov")),
                                  QStringLiteral("--recording"), recordingPath()} +
                          options +
                          QStringList{QStringLiteral("--"), QStringLiteral("sh"),
                                      QStringLiteral("-c"), before + QStringLiteral("\"$0\""),
                                      QStringLiteral(DEMO_SESSION)});
        Outcome outcome;
        if (process.waitForFinished(patience)) {
            outcome.exitCode = process.exitCode();
            outcome.output = QString::fromLocal8Bit(process.readAll());
        }
        return outcome;
    }

    QString sinkPath() const { return m_folder.filePath(QStringLiteral("sink")); }
    QString recordingPath() const { return sinkPath() + QStringLiteral("/panel.uirec"); }

    /** What another process does meanwhile, for the shell that starts the session. */
    QString onceThereIsARecording(const QString& command) const {
        return QStringLiteral("(until [ -s %1 ] || ! kill -0 $$; do :; done 2>/dev/null; %2) & ")
            .arg(recordingPath(), command);
    }

    /** Ended early with a word about it, and what stands in it is sound. */
    void checkPrefix(const Outcome& outcome) const {
        QCOMPARE(outcome.output.count(QStringLiteral("recording-ended: ")), 1);
        Uicov::Runs::RunLoader loader(recordingPath());
        QVERIFY(!loader.load());
        QCOMPARE(loader.problems().size(), 1);
        QCOMPARE(loader.problems().first().message, Message::EndedAbnormally);
        QVERIFY(!loader.run().isComplete);
        QVERIFY(!loader.run().elements.empty());
    }

    QTemporaryDir m_folder;
    bool m_isMounted = false;

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        QVERIFY(QDir().mkpath(sinkPath()));
    }

    void cleanup() {
        if (m_isMounted) {
            m_isMounted = false;
            QCOMPARE(::umount(qPrintable(sinkPath())), 0);
        }
        QVERIFY(QDir(sinkPath()).removeRecursively());
        TestLib::TestCase::cleanup();
    }

    void theApplicationGoesOn() {
        const Outcome outcome = run(QStringLiteral("ulimit -f 64; "));
        QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.output));
        checkPrefix(outcome);
    }

    void theApplicationGoesOnWhenTheDiskIsFull() {
        if (::mount("tmpfs", qPrintable(sinkPath()), "tmpfs", 0, "size=64k") != 0) {
            QSKIP("only root can make a small disk");
        }
        m_isMounted = true;
        const Outcome outcome = run(QString());
        QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.output));
        checkPrefix(outcome);
    }

    /** With room for all events, and for some of the pictures. */
    void picturesAreGivenUpBeforeEvents() {
        const QStringList pictures{QStringLiteral("--screenshots")};
        const auto countedIn = [this](int& withPicture) {
            Uicov::Runs::RunLoader loader(recordingPath());
            loader.setTakesPictures(true);
            loader.load();
            qint64 counted = 0;
            withPicture = 0;
            for (const Uicov::Runs::RunElement& element : loader.run().elements) {
                withPicture += element.picture.isEmpty() ? 0 : 1;
                for (const Uicov::Runs::Hit& hit : element.hits) {
                    counted += hit.count;
                }
            }
            return counted;
        };
        int all = 0;
        QCOMPARE(run(QString(), pictures).exitCode, 0);
        const qint64 events = countedIn(all);
        const qint64 size = QFileInfo(recordingPath()).size();
        QVERIFY(QFile::remove(recordingPath()));

        const Outcome outcome = run(
            QStringLiteral("export VORSK_RECORDING_MAX_BYTES=%1; ").arg(size * 6 / 10), pictures);
        QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.output));
        int some = 0;
        QCOMPARE(countedIn(some), events);
        QVERIFY2(some > 0 && some < all, qPrintable(QStringLiteral("%1 of %2").arg(some).arg(all)));
        Uicov::Runs::RunLoader loader(recordingPath());
        QVERIFY(!loader.load());
        // Whole but for the pictures, as it says itself.
        QVERIFY(loader.problems().isEmpty() && loader.run().isComplete);
        const QStringList warnings = loader.run().warnings.keys();
        QVERIFY2(!warnings.filter(QStringLiteral("Picture left out")).isEmpty(),
                 qPrintable(warnings.join(QLatin1Char('\n'))));
        QVERIFY(!outcome.output.contains(QStringLiteral("recording-full: ")));
    }

    /** No room for all events: one warning. */
    void aFullRecordingIsToldOnce() {
        const Outcome outcome = run(QStringLiteral("export VORSK_RECORDING_MAX_BYTES=65536; "),
                                    {QStringLiteral("--screenshots")});
        QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.output));
        QCOMPARE(outcome.output.count(QStringLiteral("recording-full: ")), 1);
        Uicov::Runs::RunLoader loader(recordingPath());
        QVERIFY(!loader.load());
        QVERIFY(!loader.problems().isEmpty());
        QVERIFY(!loader.run().elements.empty());
    }

    /** The pages that the recording is written through are gone then. */
    void theApplicationGoesOnWhenTheRecordingIsCutShort() {
        const Outcome outcome =
            run(onceThereIsARecording(QStringLiteral("truncate -s 0 %1").arg(recordingPath())));
        QVERIFY2(outcome.output.contains(QStringLiteral(" 0 failed, ")),
                 qPrintable(outcome.output));
        QVERIFY2(outcome.output.count(QStringLiteral("recording-ended: ")) == 1,
                 qPrintable(outcome.output));
        QCOMPARE(QFileInfo(recordingPath()).size(), qint64{0});
        QVERIFY2(outcome.output.contains(QStringLiteral(" is there, but was cut short ")),
                 qPrintable(outcome.output));
    }

    void theApplicationGoesOnWhenTheFolderIsRemoved() {
        const Outcome outcome =
            run(onceThereIsARecording(QStringLiteral("rm -r %1").arg(sinkPath())));
        QVERIFY2(outcome.output.contains(QStringLiteral(" 0 failed, ")),
                 qPrintable(outcome.output));
        QVERIFY(!QFile::exists(recordingPath()));
        // Nothing is claimed to be recorded that nobody can find any more.
        QVERIFY2(outcome.output.contains(QStringLiteral("[nothing-recorded]")),
                 qPrintable(outcome.output));
        QVERIFY2(outcome.output.contains(QStringLiteral("was removed during the run; ")),
                 qPrintable(outcome.output));
    }
};

QTEST_GUILESS_MAIN(TestBrokenSink)
#include "tst_brokensink.moc"

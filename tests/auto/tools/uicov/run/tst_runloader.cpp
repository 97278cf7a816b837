// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/runloader.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QDataStream>
#include <QTemporaryDir>
#include <QTest>

using TestLib::RecordingBuilder;
using Uicov::Base::Message;
using Uicov::Recording::Ending;
using Uicov::Runs::Run;
using Uicov::Runs::RunLoader;

class TestRunLoader : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("x.uirec"));

    QList<Message> problemsOf(const RunLoader& loader) {
        QList<Message> messages;
        const auto problems = loader.problems();
        for (const auto& problem : problems) {
            messages.append(problem.message);
        }
        return messages;
    }

private Q_SLOTS:
    void aSoundRecordingHasNoProblems() {
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording);
        QVERIFY(recording.write(m_path));
        RunLoader loader(m_path);
        QVERIFY(!loader.load());
        QVERIFY(loader.problems().isEmpty());
        QVERIFY(loader.ending().isComplete());
        QCOMPARE(loader.run().application, QStringLiteral("panel"));
        QCOMPARE(loader.replay().elements().size(), std::size_t{17});
    }

    void equalWarningsAreFoldedAndOtherLinesLeftOut() {
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording);
        QVERIFY(recording.write(m_path));
        RunLoader loader(m_path);
        QVERIFY(!loader.load());
        const Run run = loader.run();
        QCOMPARE(run.warnings.size(), 1);
        QCOMPARE(run.warnings.first(), qint64{2});
    }

    void anAbnormalEndIsAProblemButNoDamage() {
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording, false);
        QVERIFY(recording.write(m_path));
        RunLoader loader(m_path);
        QVERIFY(!loader.load());
        QCOMPARE(problemsOf(loader), QList<Message>{Message::EndedAbnormally});
    }

    void whatWasLeftOutForTheSizeLimitIsTold_data() {
        QTest::addColumn<quint64>("pictures");
        QTest::addColumn<quint64>("others");
        QTest::newRow("pictures") << quint64{3} << quint64{0};
        QTest::newRow("all") << quint64{0} << quint64{4};
        QTest::newRow("both") << quint64{3} << quint64{4};
    }

    void whatWasLeftOutForTheSizeLimitIsTold() {
        QFETCH(quint64, pictures);
        QFETCH(quint64, others);
        const auto loss = [](quint64 first, quint64 second) {
            QByteArray body;
            QDataStream stream(&body, QIODevice::WriteOnly);
            stream << first << second;
            return body;
        };
        RecordingBuilder recording;
        recording.addFrame(6, loss(1, 0)); // an earlier one says less
        TestLib::fillSampleRecording(recording, false);
        recording.addFrame(6, loss(pictures, others));
        recording.addEnd();
        QVERIFY(recording.write(m_path));
        RunLoader loader(m_path);
        QVERIFY(!loader.load());
        const Run run = loader.run();
        QCOMPARE(run.warnings.value(
                     QStringLiteral("Picture left out: the recording reached its size limit")),
                 static_cast<qint64>(pictures));
        QCOMPARE(run.isComplete, others == 0);
        QCOMPARE(run.partialReason,
                 others == 0 ? QString() : QStringLiteral("reached its size limit"));
        QCOMPARE(problemsOf(loader),
                 others == 0 ? QList<Message>() : QList<Message>{Message::RecordingFull});
        QVERIFY(others == 0 || loader.problems().first().text.contains(
                                   QStringLiteral("4 messages or more; raise VORSK_RECORDING")));
    }

    void damagedAndUnknownRecordsAreCountedAndPassedOver() {
        RecordingBuilder recording;
        recording.add(nullptr, QStringLiteral("Window"), QStringLiteral("W"));
        recording.addRecord(7, QByteArray("?"));
        recording.addRecord(99, QByteArray());
        recording.addRecord(8, RecordingBuilder::payload(QStringLiteral("{x}"), true));
        recording.addFrame(2, QByteArray("?"));
        recording.addMessage(QStringLiteral("somethingElse"), {1, 2});
        recording.add(nullptr, QStringLiteral("Window"), QStringLiteral("W"));
        QVERIFY(recording.write(m_path));
        RunLoader loader(m_path);
        QVERIFY(!loader.load());
        QCOMPARE(loader.replay().elements().size(), std::size_t{2});
        QCOMPARE(problemsOf(loader),
                 QList<Message>({Message::EndedAbnormally, Message::RecordsDamaged}));
        QVERIFY(loader.problems().at(1).text.contains(
            QStringLiteral("2 damaged, 1 of a kind this uicov does not know, 1 about elements")));
    }

    void tornAndDamagedFilesSaySo() {
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording);
        QVERIFY(recording.write(m_path));
        QFile file(m_path);
        QVERIFY(file.resize(file.size() - 1));
        RunLoader torn(m_path);
        QVERIFY(!torn.load());
        QCOMPARE(problemsOf(torn), QList<Message>{Message::RecordingTorn});

        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.seek(file.size() - 2));
        QVERIFY(file.write("??") == 2);
        file.close();
        RunLoader stillTorn(m_path);
        QVERIFY(!stillTorn.load());
        QCOMPARE(problemsOf(stillTorn), QList<Message>{Message::RecordingTorn});
    }

    void aPathWithPlaceholdersStaysAsItIs() {
        const QString path = m_folder.filePath(QStringLiteral("a %1 %2 %6.uirec"));
        RecordingBuilder recording;
        recording.addRecord(7, QByteArray("?"));
        QVERIFY(recording.write(path));
        RunLoader loader(path);
        QVERIFY(!loader.load());
        const auto problems = loader.problems();
        for (const auto& problem : problems) {
            QVERIFY2(problem.text.startsWith(path + QStringLiteral(": ")),
                     qPrintable(problem.text));
        }
        QVERIFY(problems.at(1).text.contains(QStringLiteral("1 of 1 records left out")));
    }

    void nothingIsLoadedFromAForeignFile() {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("GIF89a, or anything") > 0);
        file.close();
        RunLoader loader(m_path);
        QCOMPARE(loader.load()->message, Message::InputForeign);
    }
};

QTEST_GUILESS_MAIN(TestRunLoader)
#include "tst_runloader.moc"

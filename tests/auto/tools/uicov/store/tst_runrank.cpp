// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/runrank.h"
#include "testlib/randomrun.h"
#include "testlib/testcase.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QTest>

#include <limits>

using TestLib::randomRun;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;
using Uicov::Store::RunRank;

class TestRunRank : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void moreMessagesThenCompleteThenFewerBytesLost() {
        Run run;
        run.contexts = QStringList{QString()};
        run.messages = 5;
        run.isComplete = false;
        run.bytesLost = 3;
        Run more = run;
        more.messages = 6;
        more.bytesLost = 9;
        Run complete = run;
        complete.isComplete = true;
        complete.bytesLost = 9;
        Run less = run;
        less.bytesLost = 2;
        for (const Run& better : {more, complete, less}) {
            QVERIFY(RunRank::of(run) < RunRank::of(better));
            QVERIFY(!(RunRank::of(better) < RunRank::of(run)));
        }
        QVERIFY(RunRank::of(complete) < RunRank::of(more));
        QVERIFY(RunRank::of(less) < RunRank::of(complete));
    }

    void anyNumberCanBeCompared() {
        constexpr qint64 lowest = std::numeric_limits<qint64>::min();
        constexpr qint64 highest = std::numeric_limits<qint64>::max();
        const auto losing = [](qint64 bytes) { return RunRank{1, false, bytes, QByteArray()}; };
        QVERIFY(losing(highest) < losing(0));
        QVERIFY(losing(0) < losing(lowest));
        QVERIFY(!(losing(lowest) < losing(highest)));
    }

    /** Data files of former versions hold it. */
    void digestIsThatOfAStream() {
        QRandomGenerator random(47);
        for (int i = 0; i < 100; ++i) {
            Run run = randomRun(random);
            for (RunElement& element : run.elements) {
                element.attributes.clear();
                element.wasEnabled = true;
                element.wasSeen = false;
                for (Uicov::Runs::Hit& hit : element.hits) {
                    hit.first = hit.last = -1;
                }
            }
            QByteArray bytes;
            QDataStream stream(&bytes, QIODevice::WriteOnly);
            stream.setVersion(QDataStream::Qt_5_9);
            stream << run.uuid << run.session << run.application << run.executable << run.qtVersion
                   << run.platform << run.locale << run.architecture << run.started << run.labels
                   << run.isComplete << run.partialReason << run.bytesLost << run.messages
                   << run.messagesLost << run.contexts << run.warnings;
            for (const RunElement& e : run.elements) {
                stream << e.id << e.className << e.type << e.text << e.isTransparentNode
                       << e.isSubgraphTransparent << e.isWindowNode << e.parent << e.children
                       << e.events << e.hits.size() << e.place.has_value()
                       << e.place.value_or(QRect()) << e.picture;
                for (const Uicov::Runs::Hit& hit : e.hits) {
                    stream << hit.event << hit.context << hit.count;
                }
            }
            QCOMPARE(RunRank::of(run).digest,
                     QCryptographicHash::hash(bytes, QCryptographicHash::Sha256));
        }
    }

    void onlyEqualRunsAreEqual() {
        QRandomGenerator random(31);
        Run run;
        while (run.elements.size() < 3 || run.element(2).hits.isEmpty()) {
            run = randomRun(random);
        }
        const RunRank rank = RunRank::of(run);
        QCOMPARE(RunRank::of(Run(run)).digest, rank.digest);
        const auto differs = [&](const std::function<void(Run&)>& change) {
            Run other = run;
            change(other);
            return RunRank::of(other).digest != rank.digest;
        };
        QVERIFY(differs([](Run& other) { other.uuid += QLatin1Char('x'); }));
        QVERIFY(differs([](Run& other) { other.session += QLatin1Char('x'); }));
        QVERIFY(differs([](Run& other) { other.labels[QStringLiteral("x")] = QString(); }));
        QVERIFY(differs([](Run& other) { other.contexts.append(QStringLiteral("x")); }));
        QVERIFY(differs([](Run& other) { ++other.warnings[QStringLiteral("x")]; }));
        QVERIFY(differs([](Run& other) { other.elements.pop_back(); }));
        const auto element = [&](const std::function<void(RunElement&)>& change) {
            return differs([&](Run& other) { change(other.elements[2]); });
        };
        QVERIFY(element([](RunElement& other) { other.text += QLatin1Char('x'); }));
        QVERIFY(element([](RunElement& other) { other.isWindowNode = !other.isWindowNode; }));
        QVERIFY(element([](RunElement& other) { ++other.hits.first().count; }));
        QVERIFY(element([](RunElement& other) { other.children.append(0); }));
        QVERIFY(element([](RunElement& other) { other.place = QRect(1, 2, 3, 4); }));
        QVERIFY(element([](RunElement& other) { other.picture = "x"; }));
        QVERIFY(element([](RunElement& other) {
            other.text = other.text.isNull() ? QStringLiteral("") : QString();
        }));
    }
};

QTEST_GUILESS_MAIN(TestRunRank)
#include "tst_runrank.moc"

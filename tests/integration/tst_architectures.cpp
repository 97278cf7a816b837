// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "guisession.h"
#include "recording/recordingreader.h"
#include "run/keywalk.h"
#include "run/runloader.h"
#include "testlib/golden.h"
#include "testlib/testcase.h"
#include "xserver.h"

#include <QDir>
#include <QTest>

using Name = GuiSession::Name;
using Uicov::Recording::RecordingReader;
using Uicov::Runs::Hit;
using Uicov::Runs::KeyWalk;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;
using Uicov::Runs::RunLoader;

namespace {

const QString goldFolder = QStringLiteral(UICOV_SOURCE_DIR "/tests/gold/architectures/");
const QString actualFolder = QStringLiteral(UICOV_BINARY_DIR "/gold-actual/architectures");

/** Each key with how often which of its events happened, the announced ones in any case. */
QStringList keysAndCounts(const Run& run) {
    QStringList lines;
    const std::vector<KeyWalk::Place> places = KeyWalk(run).places();
    for (const KeyWalk::Place& place : places) {
        const RunElement& element = run.element(place.element);
        QMap<QString, qint64> counts;
        for (const QString& event : element.events) {
            counts[event] = 0;
        }
        for (const Hit& hit : element.hits) {
            counts[hit.event] += hit.count;
        }
        QString line = place.key;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
            line += QStringLiteral(" %1=%2").arg(it.key()).arg(it.value());
        }
        lines.append(line);
    }
    return lines;
}

} // namespace

/**
 * Where an application was recorded makes no difference: this program is built for each
 * architecture, and the golden files are the same for all of them.
 */
class TestArchitectures : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void recordingsOfAnyArchitectureSayTheSame_data();
    void recordingsOfAnyArchitectureSayTheSame();
    void aSessionHasTheSameKeysAndCountsOnEach();
};

void TestArchitectures::recordingsOfAnyArchitectureSayTheSame_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("abi");
    QTest::addColumn<quint32>("version");
    const QString amd64 = QStringLiteral("x86_64-little_endian-lp64");
    const QString armhf = QStringLiteral("arm-little_endian-ilp32-eabi-hardfloat");
    const QString arm64 = QStringLiteral("arm64-little_endian-lp64");
    QTest::newRow("amd64, version 1") << "amd64.uirec" << amd64 << 1U;
    QTest::newRow("armhf, version 1") << "armhf.uirec" << armhf << 1U;
    QTest::newRow("arm64, version 1") << "arm64.uirec" << arm64 << 1U;
    QTest::newRow("amd64, version 2") << "amd64-2.uirec" << amd64 << 2U;
    QTest::newRow("armhf, version 2") << "armhf-2.uirec" << armhf << 2U;
    QTest::newRow("arm64, version 2") << "arm64-2.uirec" << arm64 << 2U;
    // A recording that scripts/test-arm has just made; it asks for this row by its name.
    const QString made = qEnvironmentVariable("UICOV_TEST_RECORDING");
    if (!made.isEmpty()) {
        const bool isNarrow = made.endsWith(QStringLiteral("/armhf.uirec"));
        QTest::newRow("just made") << made << (isNarrow ? armhf : arm64) << 2U;
    }
}

void TestArchitectures::recordingsOfAnyArchitectureSayTheSame() {
    QFETCH(QString, file);
    QFETCH(QString, abi);
    QFETCH(quint32, version);
    const QString path = QDir(goldFolder).filePath(file);
    RecordingReader reader(path);
    QVERIFY2(!reader.open(), qPrintable(path));
    QCOMPARE(reader.version(), version);
    RunLoader loader(path);
    QVERIFY2(!loader.load().has_value(), qPrintable(path));
    QVERIFY(loader.problems().isEmpty());
    const Run run = loader.run();
    QCOMPARE(run.architecture, abi);
    QVERIFY(run.isComplete);
    // The recordings that are kept are of a former panel, which had less to show.
    const QString gold = file == qEnvironmentVariable("UICOV_TEST_RECORDING")
                             ? QStringLiteral("panel-today.txt")
                             : QStringLiteral("panel.txt");
    const QString difference =
        TestLib::compareWithGolden(goldFolder + gold, keysAndCounts(run), actualFolder);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

/** An unmodified program of Debian's, of the same architecture as this program. */
void TestArchitectures::aSessionHasTheSameKeysAndCountsOnEach() {
    const XServer server;
    QVERIFY2(server.isRunning(), qPrintable(server.why()));
    const QString clicked = QStringLiteral("clicked");
    const auto menuItem = [](const char* text) {
        return Name{QStringLiteral("MenuItem"), QString::fromLatin1(text)};
    };
    GuiSession session(
        server, QStringLiteral(UICOV_EXAMPLES "/widgets/mainwindows/application/application"));
    QVERIFY(session.click(menuItem("Help")));
    QVERIFY(session.click(menuItem("About")));
    const Name about{QStringLiteral("Dialog"), QStringLiteral("About Application")};
    QVERIFY(session.focusWindowOf(about));
    server.press(QStringLiteral("Return"));
    QVERIFY(session.waitForUsage({QStringLiteral("Button"), QStringLiteral("OK")}, clicked, 1));
    QVERIFY(session.click(menuItem("File")));
    QVERIFY(session.click(menuItem("New")));
    QVERIFY(session.waitForUsage(menuItem("New"), clicked, 2));
    QVERIFY(session.click(menuItem("File")));
    QVERIFY(session.click(menuItem("Exit")));
    QCOMPARE(session.waitForEnd(), 0);

    const QString difference =
        TestLib::compareWithGolden(goldFolder + QStringLiteral("application.txt"),
                                   keysAndCounts(session.recording().run()), actualFolder);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestArchitectures)

#include "tst_architectures.moc"

#include "guisession.h"
#include "identity/keywalk.h"
#include "store/runloader.h"
#include "testlib/golden.h"
#include "testlib/testcase.h"
#include "xserver.h"

#include <QTest>

using Name = GuiSession::Name;
using Uicov::Identity::ElementKey;
using Uicov::Identity::KeyWalk;
using Uicov::Store::Hit;
using Uicov::Store::Run;
using Uicov::Store::RunElement;
using Uicov::Store::RunLoader;

namespace {

const QString goldFolder = QStringLiteral(UICOV_SOURCE_DIR "/tests/gold/architectures/");
const QString actualFolder = QStringLiteral(UICOV_BINARY_DIR "/gold-actual/architectures");

/** Each key with how often which of its events happened, the announced ones in any case. */
QStringList keysAndCounts(const Run& run) {
    QStringList keys;
    QStringList lines;
    const std::vector<KeyWalk::Place> places = KeyWalk(run).places();
    for (const KeyWalk::Place& place : places) {
        const QString step = place.step.toKey();
        keys.append(place.above < 0 ? step : keys.at(place.above) + ElementKey::separator() + step);
        const RunElement& element = run.element(place.element);
        QMap<QString, qint64> counts;
        for (const QString& event : element.events) {
            counts[event] = 0;
        }
        for (const Hit& hit : element.hits) {
            counts[hit.event] += hit.count;
        }
        QString line = keys.last();
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
    QTest::newRow("amd64") << QStringLiteral("amd64.uirec")
                           << QStringLiteral("x86_64-little_endian-lp64");
    QTest::newRow("armhf") << QStringLiteral("armhf.uirec")
                           << QStringLiteral("arm-little_endian-ilp32-eabi-hardfloat");
    QTest::newRow("arm64") << QStringLiteral("arm64.uirec")
                           << QStringLiteral("arm64-little_endian-lp64");
}

void TestArchitectures::recordingsOfAnyArchitectureSayTheSame() {
    QFETCH(QString, file);
    QFETCH(QString, abi);
    RunLoader loader(goldFolder + file);
    const auto problem = loader.load();
    QVERIFY2(!problem.has_value(), qPrintable(goldFolder + file));
    QVERIFY(loader.problems().isEmpty());
    const Run run = loader.run();
    QCOMPARE(run.architecture, abi);
    QVERIFY(run.isComplete);
    const QString difference = TestLib::compareWithGolden(goldFolder + QStringLiteral("panel.txt"),
                                                          keysAndCounts(run), actualFolder);
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

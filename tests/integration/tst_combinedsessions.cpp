// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "guisession.h"
#include "run/keywalk.h"
#include "store/datafile.h"
#include "testlib/commandrunner.h"
#include "testlib/testcase.h"
#include "xserver.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <csignal>

using Name = GuiSession::Name;
using TestLib::CommandRunner;
using Uicov::Runs::Hit;
using Uicov::Runs::KeyWalk;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;
using Uicov::Store::DataFile;

namespace {

constexpr char examples[] = UICOV_EXAMPLES "/widgets/";

const QString shown = QStringLiteral("shown");
const QString clicked = QStringLiteral("clicked");

Name menuItem(const char* text) {
    return {QStringLiteral("MenuItem"), QString::fromUtf8(text)};
}
Name checkBox(const char* text) {
    return {QStringLiteral("CheckBox"), QString::fromUtf8(text)};
}

/** What is known of one key in one or several runs. */
struct Known {
    QSet<QString> announced;
    QSet<QString> happened;

    bool isUsed() const {
        const QSet<QString> all = announced & happened;
        return !(all - QSet<QString>{shown}).isEmpty() ||
               (announced == QSet<QString>{shown} && all == announced);
    }
};
using KnownKeys = QMap<QString, Known>;

/** By counting here what happened to each key, apart from what the report does. */
void addKeys(const Run& run, KnownKeys& known) {
    const std::vector<KeyWalk::Place> places = KeyWalk(run).places();
    for (const KeyWalk::Place& place : places) {
        const RunElement& element = run.element(place.element);
        if (element.isTransparentNode || element.events.isEmpty()) {
            continue;
        }
        Known& key = known[place.key];
        for (const QString& event : element.events) {
            key.announced.insert(event);
        }
        for (const Hit& hit : element.hits) {
            key.happened.insert(hit.event);
        }
    }
}

bool addKeysOf(const QString& path, KnownKeys& known) {
    DataFile file;
    if (file.open(path, Uicov::Store::Sql::Access::Read)) {
        return false;
    }
    for (const QString& uuid : file.runs()) {
        Run run;
        if (file.read(uuid, DataFile::Pictures::Leave, run)) {
            return false;
        }
        addKeys(run, known);
    }
    return true;
}

/** Whether each window that the element is in, or is, was there: menus are windows, too. */
bool hasWindowsOf(const QString& key, const KnownKeys& known) {
    static const QRegularExpression window(QStringLiteral("^(Window|Dialog|Menu)( |$)"));
    const QStringList steps = key.split(QStringLiteral(" > "));
    for (int i = 0; i < steps.size(); ++i) {
        const QString place = QStringList(steps.mid(0, i + 1)).join(QStringLiteral(" > "));
        if (window.match(steps.at(i)).hasMatch() &&
            std::none_of(known.keyBegin(), known.keyEnd(),
                         [&place](const QString& other) { return other.startsWith(place); })) {
            return false;
        }
    }
    return true;
}

/** Keys that were used before and are not used now, be it that their window was not opened. */
QStringList lostFrom(const KnownKeys& base, const KnownKeys& now) {
    QStringList lost;
    for (auto it = base.cbegin(); it != base.cend(); ++it) {
        const bool mayBeThere = now.contains(it.key()) || !hasWindowsOf(it.key(), now);
        if (it->isUsed() && mayBeThere && !now.value(it.key()).isUsed()) {
            lost.append(it.key());
        }
    }
    return lost;
}

/** Keys that are not there although their window is. */
QStringList removedFrom(const KnownKeys& base, const KnownKeys& now) {
    QStringList removed;
    for (auto it = base.cbegin(); it != base.cend(); ++it) {
        if (!now.contains(it.key()) && hasWindowsOf(it.key(), now)) {
            removed.append(it.key());
        }
    }
    return removed;
}

/** The keys in a list of the difference, sorted. */
QStringList keysIn(const QJsonObject& difference, const char* list) {
    QStringList keys;
    const QJsonArray elements = difference.value(QLatin1String(list)).toArray();
    for (const QJsonValue element : elements) {
        keys.append(element.toObject().value(QStringLiteral("key")).toString());
    }
    keys.sort();
    return keys;
}

int usedIn(const KnownKeys& known) {
    return static_cast<int>(
        std::count_if(known.cbegin(), known.cend(), [](const Known& key) { return key.isUsed(); }));
}

/** The first two numbers of the report's last row. */
struct Total {
    int elements = -1;
    int used = -1;
};

Total totalIn(const QString& report) {
    static const QRegularExpression row(QStringLiteral("^TOTAL +(\\d+) +(\\d+) "),
                                        QRegularExpression::MultilineOption);
    const auto match = row.match(report);
    return match.hasMatch() ? Total{match.captured(1).toInt(), match.captured(2).toInt()} : Total();
}

} // namespace

/**
 * Programs of Debian's qtbase5-examples, each used in two sessions that do different things, and
 * what is said of the sessions together.
 */
class TestCombinedSessions : public TestLib::TestCase {
    Q_OBJECT

    XServer m_server;
    QTemporaryDir m_folder;
    CommandRunner m_uicov{QStringLiteral(UICOV_PROGRAM)};

    static QString example(const char* path) {
        return QLatin1String(examples) + QLatin1String(path);
    }
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    QString reportOf(const QStringList& files) {
        const int status =
            m_uicov.run(QStringList{QStringLiteral("report"), QStringLiteral("-m")} + files);
        return status == 0 ? m_uicov.output() : QString();
    }

    void compareTogether(const QString& first, const QString& second) {
        const QString both = path("both.uicov");
        QCOMPARE(m_uicov.run({QStringLiteral("combine"), QStringLiteral("-q"), QStringLiteral("-o"),
                              both, first, second}),
                 0);
        const QString report = reportOf({both});
        QVERIFY2(!report.isEmpty(), qPrintable(m_uicov.errors()));
        QCOMPARE(reportOf({first, second}), report);
        QCOMPARE(reportOf({second, first}), report);

        KnownKeys inFirst;
        KnownKeys inSecond;
        KnownKeys inBoth;
        QVERIFY(addKeysOf(first, inFirst) && addKeysOf(first, inBoth));
        QVERIFY(addKeysOf(second, inSecond) && addKeysOf(second, inBoth));
        QCOMPARE(totalIn(reportOf({first})).used, usedIn(inFirst));
        QCOMPARE(totalIn(reportOf({second})).used, usedIn(inSecond));
        QCOMPARE(totalIn(report).used, usedIn(inBoth));
        QCOMPARE(totalIn(report).elements, inBoth.size());
        // each session used what the other did not
        QVERIFY(usedIn(inBoth) > usedIn(inFirst));
        QVERIFY(usedIn(inBoth) > usedIn(inSecond));
    }

    /** What the second session left out, and what only the first came to see. */
    void compareDifference(const QString& base, const QString& now, int atLeast) {
        KnownKeys before;
        KnownKeys after;
        QVERIFY(addKeysOf(base, before) && addKeysOf(now, after));
        QCOMPARE(m_uicov.run({QStringLiteral("diff"), QStringLiteral("--format"),
                              QStringLiteral("json"), base, now}),
                 0);
        const QJsonObject difference = QJsonDocument::fromJson(m_uicov.output().toUtf8()).object();
        QCOMPARE(keysIn(difference, "lost"), lostFrom(before, after));
        QCOMPARE(keysIn(difference, "removed"), removedFrom(before, after));
        const int named = keysIn(difference, "lost").size() + keysIn(difference, "removed").size();
        QVERIFY2(named >= atLeast, qPrintable(m_uicov.output()));
        // a build that must not lose anything fails, and one without a difference does not
        QCOMPARE(m_uicov.run({QStringLiteral("diff"), QStringLiteral("--fail-on"),
                              QStringLiteral("lost,removed"), base, now}),
                 2);
        QCOMPARE(m_uicov.run({QStringLiteral("diff"), QStringLiteral("--fail-on"),
                              QStringLiteral("lost,removed"), base, base}),
                 0);
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_server.isRunning(), qPrintable(m_server.why())); }

    void twoSessionsWithATextEditor() {
        const QString program = example("mainwindows/application/application");
        GuiSession about(m_server, program);
        QVERIFY(about.click(menuItem("Help")));
        QVERIFY(about.click(menuItem("About")));
        QVERIFY(
            about.focusWindowOf({QStringLiteral("Dialog"), QStringLiteral("About Application")}));
        m_server.press(QStringLiteral("Return"));
        QVERIFY(about.waitForUsage({QStringLiteral("Button"), QStringLiteral("OK")}, clicked, 1));
        QVERIFY(about.click(menuItem("File")));
        QVERIFY(about.click(menuItem("Exit")));
        QCOMPARE(about.waitForEnd(), 0);

        GuiSession file(m_server, program);
        QVERIFY(file.click(menuItem("File")));
        QVERIFY(file.click(menuItem("New")));
        QVERIFY(file.waitForUsage(menuItem("New"), clicked, 2));
        QVERIFY(file.click(menuItem("File")));
        QVERIFY(file.click(menuItem("Exit")));
        QCOMPARE(file.waitForEnd(), 0);

        compareTogether(about.dataFilePath(), file.dataFilePath());
        // without "Help" its menu was never opened, nor the box with its button
        compareDifference(about.dataFilePath(), file.dataFilePath(), 4);
        compareDifference(file.dataFilePath(), about.dataFilePath(), 1); // "New"
    }

    void twoSessionsWithGroupsOfButtons() {
        const QString program = example("widgets/groupbox/groupbox");
        GuiSession box(m_server, program);
        QVERIFY(box.click(checkBox("Checkbox 1")));
        QVERIFY(box.waitForUsage(checkBox("Checkbox 1"), clicked, 1));
        QCOMPARE(box.end(), 128 + SIGTERM);

        GuiSession state(m_server, program);
        QVERIFY(state.click(checkBox("Tri-state button")));
        QVERIFY(state.waitForUsage(checkBox("Tri-state button"), clicked, 1));
        QCOMPARE(state.end(), 128 + SIGTERM);

        compareTogether(box.dataFilePath(), state.dataFilePath());
        compareDifference(box.dataFilePath(), state.dataFilePath(), 1);
        compareDifference(state.dataFilePath(), box.dataFilePath(), 1);
    }
};

QTEST_GUILESS_MAIN(TestCombinedSessions)

#include "tst_combinedsessions.moc"

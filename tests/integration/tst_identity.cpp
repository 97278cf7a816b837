// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/keywalk.h"
#include "run/run.h"
#include "run/runloader.h"
#include "testlib/testcase.h"

#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using Uicov::Runs::KeyWalk;

namespace {

/** A slow and busy machine with sanitizers takes its time. */
constexpr int patience = 120000;
constexpr int runs = 20;

/** The keys of a run's elements, each once, sorted. */
struct Keys {
    QStringList keys;
    QStringList structureKeys;

    bool isEmpty() const { return keys.isEmpty(); }
};

Keys keysOf(const Uicov::Runs::Run& run) {
    const std::vector<KeyWalk::Place> places = KeyWalk(run).places();
    QStringList keys;
    QStringList structures;
    for (const KeyWalk::Place& place : places) {
        keys.append(place.key);
        structures.append(place.structureKey);
    }
    for (QStringList* list : {&keys, &structures}) {
        list->removeDuplicates();
        list->sort();
    }
    return {keys, structures};
}

QStringList missingIn(const QStringList& all, const QStringList& others) {
    const QSet<QString> known(others.cbegin(), others.cend());
    QStringList missing;
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(missing),
                 [&known](const QString& key) { return !known.contains(key); });
    return missing;
}

/** How many per cent of the keys are among the others. */
double kept(const QStringList& keys, const QStringList& others) {
    constexpr double percent = 100;
    return percent * (keys.size() - missingIn(keys, others).size()) / keys.size();
}

} // namespace

/** How many elements are called the same across runs of one program, changed or not. */
class TestIdentity : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    Keys m_base;

    /** Nothing when the program fails; what it said is then in the log. */
    Keys keysAfter(const QStringList& arguments) const {
        const QString recording = m_folder.filePath(QStringLiteral("x.uirec"));
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(UICOV_PROGRAM),
                      QStringList{QStringLiteral("run"), QStringLiteral("-q"), QStringLiteral("-o"),
                                  m_folder.filePath(QStringLiteral("x.uicov")),
                                  QStringLiteral("--recording"), recording, QStringLiteral("--"),
                                  QStringLiteral(IDENTITY_PANEL)} +
                          arguments);
        Uicov::Runs::RunLoader loader(recording);
        if (!process.waitForFinished(patience) || process.exitCode() != 0 || loader.load()) {
            qInfo("%s", process.readAll().constData());
            return {};
        }
        return keysOf(loader.run());
    }

private Q_SLOTS:
    void initTestCase() {
        m_base = keysAfter({});
        // menus with their entries, the controls, the tool bar, the dialog: the session reached
        // them
        QVERIFY(m_base.keys.size() >= 30);
    }

    void twentyRunsOfTheSameHaveTheSameKeys() {
        int same = 1;
        for (int i = 1; i < runs; ++i) {
            const Keys again = keysAfter({});
            QCOMPARE(again.keys, m_base.keys);
            QCOMPARE(again.structureKeys, m_base.structureKeys);
            ++same;
        }
        qInfo("%d of %d runs have the same %d keys", same, runs, m_base.keys.size());
    }

    void aChangedProgramKeepsTheKeysOfAllElse_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("isLarger");
        const auto words = [](const char* text) {
            return QString::fromLatin1(text).split(QLatin1Char(' '));
        };
        QTest::newRow("widgets added") << words("added") << true;
        QTest::newRow("group wrapped in layouts") << words("wrapped") << false;
        QTest::newRow("window resized") << words("resized") << false;
        QTest::newRow("style Fusion") << words("-style Fusion") << false;
        QTest::newRow("style Windows") << words("-style Windows") << false;
    }

    void aChangedProgramKeepsTheKeysOfAllElse() {
        QFETCH(QStringList, arguments);
        QFETCH(bool, isLarger);
        const Keys changed = keysAfter(arguments);
        QVERIFY(!changed.isEmpty());
        const double share = kept(m_base.keys, changed.keys);
        qInfo("%s: %.1f%% of %d keys kept, %d new", QTest::currentDataTag(), share,
              m_base.keys.size(), missingIn(changed.keys, m_base.keys).size());
        constexpr double enough = 99;
        QVERIFY2(share >= enough,
                 qPrintable(missingIn(m_base.keys, changed.keys).join(QLatin1Char('\n'))));
        QCOMPARE(!missingIn(changed.keys, m_base.keys).isEmpty(), isLarger);
    }

    void anotherLanguageKeepsTheStructureKeys() {
        const Keys translated = keysAfter({QStringLiteral("translated")});
        QVERIFY(!translated.isEmpty());
        const double structureShare = kept(m_base.structureKeys, translated.structureKeys);
        const double share = kept(m_base.keys, translated.keys);
        qInfo("translated: %.1f%% of %d structure keys kept, and %.1f%% of %d keys", structureShare,
              m_base.structureKeys.size(), share, m_base.keys.size());
        constexpr double whole = 100;
        constexpr double few = 10;
        QVERIFY2(
            structureShare == whole,
            qPrintable(
                missingIn(m_base.structureKeys, translated.structureKeys).join(QLatin1Char('\n'))));
        QVERIFY2(share < few, "the captions were not translated");
    }
};

QTEST_GUILESS_MAIN(TestIdentity)
#include "tst_identity.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrun.h"
#include "run/keywalk.h"
#include "testlib/testcase.h"

#include <QMap>
#include <QTest>

using Uicov::Runs::KeyWalk;

namespace {

/** By what the control is, whatever it is called: its key. */
using Keys = QMap<QString, QString>;

Keys keysOf(const Uicov::Runs::Run& run) {
    Keys keys;
    const auto places = KeyWalk(run).places();
    for (const KeyWalk::Place& place : places) {
        const QString what =
            run.element(place.element).attributes.value(QStringLiteral("description"));
        if (!what.isEmpty()) {
            keys.insert(what, place.key);
        }
    }
    return keys;
}

} // namespace

/** How many controls of other people's forms keep their key when the forms change. */
class TestFormKeys : public TestLib::TestCase {
    Q_OBJECT

    Keys m_base;

    static Keys keysAfter(const QStringList& arguments) {
        const ControlsRun run(QStringLiteral(FORMS_PROGRAM), arguments);
        if (!run.problem().isEmpty()) {
            qInfo("%s", qPrintable(run.problem()));
            return {};
        }
        return keysOf(run.run());
    }

private Q_SLOTS:
    void initTestCase() {
        m_base = keysAfter({});
        constexpr int enough = 100;
        QVERIFY2(m_base.size() >= enough, qPrintable(QString::number(m_base.size())));
    }

    void aChangedFormKeepsTheKeysOfItsControls_data() {
        QTest::addColumn<QString>("change");
        for (const char* change : {"renamed", "reordered", "translated"}) {
            QTest::newRow(change) << QString::fromLatin1(change);
        }
    }

    void aChangedFormKeepsTheKeysOfItsControls() {
        QFETCH(QString, change);
        const Keys changed = keysAfter({change});
        int kept = 0;
        QStringList lost;
        for (auto it = m_base.cbegin(); it != m_base.cend(); ++it) {
            const QString now = changed.value(it.key());
            kept += now == it.value() ? 1 : 0;
            if (now != it.value()) {
                lost.append(it.value() + QStringLiteral(" -> ") + now);
            }
        }
        constexpr double percent = 100;
        const double share = percent * kept / m_base.size();
        qInfo("%s: %d of %d controls of %d programs keep their keys, %.1f%%", qPrintable(change),
              kept, m_base.size(), FORMS_PROGRAMS, share);
        constexpr double enough = 97;
        QVERIFY2(share >= enough, qPrintable(lost.join(QLatin1Char('\n'))));
    }
};

QTEST_GUILESS_MAIN(TestFormKeys)
#include "tst_formkeys.moc"

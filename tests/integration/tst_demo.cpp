// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/runloader.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <memory>

using Vorsk::UIAbstraction::UIElement;

namespace {

/** A slow and busy machine with sanitizers takes its time. */
constexpr int patience = 120000;

} // namespace

/** The demo panels' sessions, recorded with the classic extension, and what must come out of it.
 */
class TestDemo : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theSessionPassesAndIsRecordedInFull();
    void theTestFunctionsAreTheContexts();
    void whatTheSessionUsedIsCounted_data();
    void whatTheSessionUsedIsCounted();
    void controlsHaveAPlaceAndAPicture();

private:
    /** Counts over all elements of that type and text: each test of the session has a window of its
     * own. */
    int usage(const QString& type, const QString& text, const QString& event) const;

    QTemporaryDir m_directory;
    QString m_errors;
    int m_exitCode = -1;
    std::unique_ptr<Uicov::Runs::RunLoader> m_recording;
};

void TestDemo::initTestCase() {
    const QString path = m_directory.filePath(QStringLiteral("panel.uirec"));
    QProcess process;
    process.start(QStringLiteral(UICOV_PROGRAM),
                  {QStringLiteral("run"), QStringLiteral("--classic"),
                   QStringLiteral("--screenshots"), QStringLiteral("-o"),
                   m_directory.filePath(QStringLiteral("panel.uicov")),
                   QStringLiteral("--recording"), path, QStringLiteral("--"),
                   QStringLiteral(DEMO_SESSION), QStringLiteral("-silent"),
                   QStringLiteral("namesTheRoom"), QStringLiteral("switchesNightSetback"),
                   QStringLiteral("exportsAsTable"), QStringLiteral("changesTheSettings")});
    QVERIFY(process.waitForFinished(patience));
    m_exitCode = process.exitCode();
    m_errors = QString::fromLocal8Bit(process.readAllStandardError());
    m_recording = std::make_unique<Uicov::Runs::RunLoader>(path);
    const auto problem = m_recording->load();
    QVERIFY2(!problem.has_value(), qPrintable(m_errors));
}

void TestDemo::theSessionPassesAndIsRecordedInFull() {
    QVERIFY2(m_exitCode == 0, qPrintable(m_errors));
    QVERIFY(m_recording->problems().isEmpty());
    QCOMPARE(m_recording->replay().recordsWithoutElement(), quint64{0});
}

void TestDemo::theTestFunctionsAreTheContexts() {
    const Uicov::Runs::Run run = m_recording->run();
    QCOMPARE(run.contexts, QStringList({QString(), QStringLiteral("PanelSession::namesTheRoom"),
                                        QStringLiteral("PanelSession::switchesNightSetback"),
                                        QStringLiteral("PanelSession::exportsAsTable"),
                                        QStringLiteral("PanelSession::changesTheSettings")}));
    QStringList clicks;
    for (const Uicov::Runs::RunElement& element : run.elements) {
        for (const Uicov::Runs::Hit& hit : element.hits) {
            if (hit.event == QLatin1String("clicked")) {
                clicks.append(element.text + QLatin1Char('@') +
                              run.contexts.at(hit.context).section(QLatin1Char(':'), -1));
            }
        }
    }
    clicks.sort();
    QCOMPARE(clicks,
             QStringList(
                 {QStringLiteral("Apply@namesTheRoom"), QStringLiteral("As table@exportsAsTable"),
                  QStringLiteral("Export@exportsAsTable"), QStringLiteral("File@exportsAsTable"),
                  QStringLiteral("Night setback@switchesNightSetback"),
                  QStringLiteral("OK@changesTheSettings"),
                  QStringLiteral("Settings...@changesTheSettings"),
                  QStringLiteral("Summer time@changesTheSettings")}));
}

int TestDemo::usage(const QString& type, const QString& text, const QString& event) const {
    int sum = -1;
    for (const UIElement* element : m_recording->replay().elements()) {
        if (element->standardType().name() == type && element->text() == text) {
            sum = qMax(sum, 0) + element->usage().value(Vorsk::UIAbstraction::UIEvent(event), 0);
        }
    }
    return sum;
}

void TestDemo::whatTheSessionUsedIsCounted_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("count");

    const auto row = [](const char* type, const char* text, const char* event, int count) {
        QTest::addRow("%s %s %s", type, text, event)
            << QString::fromLatin1(type) << QString::fromLatin1(text) << QString::fromLatin1(event)
            << count;
    };
    row("Window", "Heating panel", "shown", 4);
    row("Button", "Apply", "clicked", 1);
    row("Button", "Reset", "clicked", 0);
    row("Button", "Settings...", "clicked", 1);
    row("CheckBox", "Night setback", "clicked", 1);
    row("CheckBox", "Night setback", "checked", 1);
    row("CheckBox", "Frost protection", "checked", 0);
    row("CheckBox", "Pump schedule", "partiallyChecked", 0);
    // Seven letters; "Kitchen" also changes the text seven times.
    row("TextInput", "", "textEdited", 7);
    row("TextInput", "", "textChanged", 7);
    row("TextInput", "", "confirmed", 1);
    row("MenuItem", "File", "clicked", 1);
    row("MenuItem", "Export", "clicked", 1);
    row("MenuItem", "As table", "clicked", 2); // pressed, and triggered
    row("MenuItem", "As chart", "clicked", 0);
    row("MenuItem", "As chart", "shown", 1);
    row("Dialog", "Settings", "shown", 1);
    row("CheckBox", "Summer time", "checked", 1);
    row("CheckBox", "Key clicks", "checked", 0);
    row("Button", "OK", "clicked", 1);
    row("Button", "Cancel", "clicked", 0);
}

void TestDemo::whatTheSessionUsedIsCounted() {
    QFETCH(QString, type);
    QFETCH(QString, text);
    QFETCH(QString, event);
    QFETCH(int, count);
    QCOMPARE(usage(type, text, event), count);
}

void TestDemo::controlsHaveAPlaceAndAPicture() {
    QProcess process;
    process.start(QStringLiteral(UICOV_PROGRAM),
                  {QStringLiteral("dump"), m_directory.filePath(QStringLiteral("panel.uirec"))});
    QVERIFY(process.waitForFinished(patience));
    const QString lines = QString::fromUtf8(process.readAllStandardOutput());
    for (const char* button : {"Apply", "Reset", "Settings...", "OK", "Cancel"}) {
        const QString pictured =
            QStringLiteral("Button \"%1\" picture=").arg(QLatin1String(button));
        QVERIFY2(lines.contains(pictured), button);
    }
    for (const UIElement* element : m_recording->replay().elements()) {
        const QString type = element->standardType().name();
        if (type == QLatin1String("Button") || type == QLatin1String("CheckBox")) {
            QVERIFY2(element->geometry().isValid() && !element->geometry().rect().isEmpty(),
                     qPrintable(element->text()));
        }
    }
}

QTEST_GUILESS_MAIN(TestDemo)

#include "tst_demo.moc"

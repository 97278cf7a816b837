// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/runloader.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

/** A slow and busy machine with sanitizers takes its time. */
constexpr int patience = 120000;

} // namespace

/** The session of the Qt Quick panel, recorded with the classic extension: the same words and the
 * same steps as the panel of Qt Widgets, and what Qt Quick makes of them. */
class TestQuickDemo : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theSessionIsRecordedInFull();
    void whatTheSessionUsedIsCounted_data();
    void whatTheSessionUsedIsCounted();
    void nothingIsReportedAboutThePanel();

private:
    QTemporaryDir m_directory;
    QString m_errors;
    std::unique_ptr<Uicov::Runs::RunLoader> m_recording;
};

void TestQuickDemo::initTestCase() {
    const QString path = m_directory.filePath(QStringLiteral("panel.uirec"));
    QProcess process;
    process.start(QStringLiteral(UICOV_PROGRAM),
                  {QStringLiteral("run"), QStringLiteral("--classic"), QStringLiteral("-o"),
                   m_directory.filePath(QStringLiteral("panel.uicov")),
                   QStringLiteral("--recording"), path, QStringLiteral("--"),
                   QStringLiteral(DEMO_SESSION), QStringLiteral("-silent"),
                   QStringLiteral("namesTheRoom"), QStringLiteral("switchesNightSetback"),
                   QStringLiteral("exportsAsTable"), QStringLiteral("changesTheSettings")});
    QVERIFY(process.waitForFinished(patience));
    m_errors = QString::fromLocal8Bit(process.readAllStandardError());
    QVERIFY2(process.exitCode() == 0, qPrintable(m_errors));
    m_recording = std::make_unique<Uicov::Runs::RunLoader>(path);
    const auto problem = m_recording->load();
    QVERIFY2(!problem.has_value(), qPrintable(m_errors));
}

void TestQuickDemo::theSessionIsRecordedInFull() {
    QVERIFY(m_recording->problems().isEmpty());
    QCOMPARE(m_recording->replay().recordsWithoutElement(), quint64{0});
}

void TestQuickDemo::whatTheSessionUsedIsCounted_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("count");

    const auto row = [](const char* type, const char* text, const char* event, int count) {
        QTest::addRow("%s %s %s", type, text, event)
            << QString::fromLatin1(type) << QString::fromUtf8(text) << QString::fromLatin1(event)
            << count;
    };
    row("Window", "Heating panel", "shown", 4);
    // Each click hits and is said by the control.
    row("Button", "Apply", "clicked", 2);
    row("Button", "Reset", "clicked", 0);
    row("Button", "Refresh", "clicked", 0);
    row("Button", "Settings...", "clicked", 2);
    // By the keyboard.
    row("CheckBox", "Night setback", "clicked", 1);
    row("CheckBox", "Night setback", "checked", 1);
    row("CheckBox", "Frost protection", "checked", 0);
    row("CheckBox", "Pump schedule", "partiallyChecked", 0);
    row("TextInput", "Room name", "textChanged", 7);
    row("TextInput", "Set point in °C", "textChanged", 0);
    row("MenuItem", "As table", "triggered", 1);
    row("MenuItem", "As chart", "triggered", 0);
    row("CheckBox", "Summer time", "checked", 1);
    row("CheckBox", "Key clicks", "checked", 0);
    row("TextInput", "Time server", "textChanged", 0);
    row("Button", "Cancel", "clicked", 0);
}

void TestQuickDemo::whatTheSessionUsedIsCounted() {
    QFETCH(QString, type);
    QFETCH(QString, text);
    QFETCH(QString, event);
    QFETCH(int, count);
    // Over all elements of that name: each test of the session has a window of its own.
    int sum = -1;
    for (const UIElement* element : m_recording->replay().elements()) {
        if (element->standardType().name() == type && element->text() == text) {
            sum = qMax(sum, 0) + element->usage().value(UIEvent(event), 0);
        }
    }
    QCOMPARE(sum, count);
}

void TestQuickDemo::nothingIsReportedAboutThePanel() {
    // Its controls have all that their names promise.
    const QStringList warnings = m_recording->run().warnings.keys();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(TestQuickDemo)

#include "tst_quickdemo.moc"

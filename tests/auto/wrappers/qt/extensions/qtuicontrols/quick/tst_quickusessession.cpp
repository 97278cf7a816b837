// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickscript.h"
#include "testlib/quickusesprobe.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>

#include <memory>

using TestLib::QuickScript;
using TestLib::QuickUsesProbe;

namespace {

QByteArray read(const QString& name) {
    QFile file(QStringLiteral(UICOV_SESSIONS "/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("%s cannot be read", qPrintable(file.fileName()));
    }
    return file.readAll();
}

/** What the programs' slots call of C++. */
class Driver : public QObject {
    Q_OBJECT

public:
    /** Whose rounds are counted. */
    void setWindow(const QObject* window) { m_window = window; }

    /** As a slot that shows its progress does: lets the program have a round in between. */
    Q_INVOKABLE void runNested() {
        const int before = rounds();
        if (m_window != nullptr && !QTest::qWaitFor([&] { return rounds() > before; })) {
            qWarning("the program has no turn in a nested event loop");
        }
    }

private:
    int rounds() const { return m_window->property("rounds").toInt(); }

    const QObject* m_window = nullptr;
};

} // namespace

/** Everything in a program is operated while the program changes everything by itself. */
class tst_QuickUsesSession : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatAPersonOperatesIsUsed_data();
    void onlyWhatAPersonOperatesIsUsed();
};

void tst_QuickUsesSession::onlyWhatAPersonOperatesIsUsed_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QuickUsesProbe::Ends>("ends");
    QTest::addColumn<int>("leastSteps");
    QTest::newRow("Controls 2, ends told")
        << QStringLiteral("session") << QuickUsesProbe::Ends::Told << 150;
    QTest::newRow("Controls 1, ends told")
        << QStringLiteral("session1") << QuickUsesProbe::Ends::Told << 50;
    QTest::newRow("Controls 2, ends untold")
        << QStringLiteral("session") << QuickUsesProbe::Ends::Untold << 150;
}

void tst_QuickUsesSession::onlyWhatAPersonOperatesIsUsed() {
    QFETCH(QString, name);
    QFETCH(QuickUsesProbe::Ends, ends);
    QFETCH(int, leastSteps);
    QuickUsesProbe probe(ends);
    QQmlEngine engine;
    Driver driver;
    engine.rootContext()->setContextProperty(QStringLiteral("driver"), &driver);
    QQmlComponent component(&engine);
    component.setData(read(name + QStringLiteral(".qml")),
                      QUrl(QStringLiteral("qrc:/session.qml")));
    const std::unique_ptr<QObject> made(component.create());
    QVERIFY2(made != nullptr, qPrintable(component.errorString()));
    auto* const window = qobject_cast<QQuickWindow*>(made.get());
    driver.setWindow(window);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QVERIFY(probe.takeUses().isEmpty());

    QuickScript script(*window, [&probe] { return probe.takeUses(); });
    script.setSettle([window] { // the program gets its turn
        const int rounds = window->property("rounds").toInt();
        QTRY_VERIFY(window->property("rounds").toInt() > rounds + 1);
    });
    const QStringList failures = script.run(read(name + QStringLiteral(".txt")));
    QVERIFY2(failures.isEmpty(),
             qPrintable(QStringLiteral("\n") + failures.join(QLatin1Char('\n'))));
    QVERIFY(script.stepCount() >= leastSteps);
}

Q_DECLARE_METATYPE(QuickUsesProbe::Ends)

int main(int argc, char* argv[]) {
    TestLib::DeliveringApplication application(argc, argv);
    tst_QuickUsesSession test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_quickusessession.moc"

#include "session.h"

#include <QApplication>
#include <QTest>

Session::Session()
    : m_stage(std::make_unique<Stage>()) {
    m_stage->resize(1200, 800);
    m_stage->show();
    m_stage->activateWindow();
    if (!QTest::qWaitForWindowActive(m_stage.get())) {
        m_mistakes += QStringLiteral("the window is not active");
    }
    m_ledger = std::make_unique<TestLib::UsesLedger>(m_probe);
}

void Session::step(const QString& name, const std::function<void()>& action,
                   const QStringList& expected) {
    ++m_steps;
    action();
    // What was queued belongs to the step.
    QCoreApplication::processEvents();
    QStringList wanted = expected;
    wanted.sort();
    const QStringList counted = m_ledger->take();
    if (counted != wanted) {
        m_mistakes +=
            QStringLiteral("%1: expected [%2], counted [%3]")
                .arg(name, wanted.join(QStringLiteral(", ")), counted.join(QStringLiteral(", ")));
    }
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QRegularExpression>
#include <QStringList>

namespace TestLib {

/**
 * Base of every test class: a warning that the test did not announce fails the test function, and
 * so does an announced one that never came. A subclass that has its own init() or cleanup() calls
 * these.
 */
class TestCase : public QObject {
    Q_OBJECT

public:
    TestCase();
    ~TestCase() override;

    /** Announces one warning (or worse) with exactly this text during the running test function. */
    void expectWarning(const QString& text);
    /** Announces one warning that the whole pattern matches. */
    void expectWarning(const QRegularExpression& pattern);

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    static void handleMessage(QtMsgType type, const QMessageLogContext& context,
                              const QString& text);
    bool takeExpected(const QString& text);

    QList<QRegularExpression> m_expected;
    QStringList m_unexpected;
    QtMessageHandler m_previousHandler = nullptr;
};

} // namespace TestLib

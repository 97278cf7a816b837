// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"

#include <QTest>

#include <algorithm>

namespace TestLib {

namespace {

TestCase* running = nullptr;

/** What the platform says about itself has nothing to do with the code under test. */
bool isOfThePlatform(const QString& text) {
    return text.startsWith(QLatin1String("This plugin does not support "));
}

} // namespace

TestCase::TestCase() = default;

TestCase::~TestCase() = default;

void TestCase::expectWarning(const QString& text) {
    m_expected.append(QRegularExpression(QRegularExpression::escape(text)));
}

void TestCase::expectWarning(const QRegularExpression& pattern) {
    m_expected.append(pattern);
}

void TestCase::init() {
    m_expected.clear();
    m_unexpected.clear();
    running = this;
    m_previousHandler = qInstallMessageHandler(handleMessage);
}

void TestCase::cleanup() {
    qInstallMessageHandler(m_previousHandler);
    running = nullptr;
    for (const QString& text : qAsConst(m_unexpected)) {
        QFAIL(qPrintable(QStringLiteral("Unexpected warning: ") + text));
    }
    for (const QRegularExpression& pattern : qAsConst(m_expected)) {
        QFAIL(qPrintable(QStringLiteral("Expected warning did not come: ") + pattern.pattern()));
    }
}

void TestCase::handleMessage(QtMsgType type, const QMessageLogContext& context,
                             const QString& text) {
    const bool isWarning = type == QtWarningMsg || type == QtCriticalMsg;
    if (isWarning && running->takeExpected(text)) {
        return;
    }
    if (isWarning && isOfThePlatform(text)) {
        return;
    }
    if (isWarning) {
        running->m_unexpected.append(text);
    }
    running->m_previousHandler(type, context, text);
}

bool TestCase::takeExpected(const QString& text) {
    const auto it =
        std::find_if(m_expected.begin(), m_expected.end(), [&text](const auto& pattern) {
            return QRegularExpression(QRegularExpression::anchoredPattern(pattern.pattern()),
                                      pattern.patternOptions())
                .match(text)
                .hasMatch();
        });
    if (it == m_expected.end()) {
        return false;
    }
    m_expected.erase(it);
    return true;
}

} // namespace TestLib

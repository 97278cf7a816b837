// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/junitreport.h"

#include "base/displaytext.h"
#include "base/percentage.h"
#include "report/elementorder.h"
#include "report/elementtext.h"
#include "report/summarytext.h"
#include "report/windoworder.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace Uicov::Report {

using Coverage::CoverageResult;
using Coverage::CoverageTree;
using Coverage::GateResult;
using Coverage::State;

namespace {

/** XML has no way to write most control characters, so that they are made visible. */
QString plain(const QString& text) {
    return Base::escaped(text);
}

struct Case {
    QString className;
    QString name;
    /** Why it failed; empty when it did not. */
    QString failure;
    QString output;
};

void write(QXmlStreamWriter& xml, const Case& testCase) {
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), testCase.className);
    xml.writeAttribute(QStringLiteral("name"), testCase.name);
    xml.writeAttribute(QStringLiteral("time"), QStringLiteral("0"));
    if (!testCase.failure.isEmpty()) {
        xml.writeStartElement(QStringLiteral("failure"));
        xml.writeAttribute(QStringLiteral("message"), testCase.failure);
        xml.writeAttribute(QStringLiteral("type"), QStringLiteral("gate-not-met"));
        xml.writeEndElement();
    }
    if (!testCase.output.isEmpty()) {
        xml.writeTextElement(QStringLiteral("system-out"), testCase.output);
    }
    xml.writeEndElement();
}

/** What the element lacks; empty for nothing. */
QString lineOf(const CoverageTree& tree, Coverage::NodeId node) {
    constexpr int columns = 8;
    if (isUnseenView(tree, node)) {
        return unseenWord().leftJustified(columns) + neverOpenedText(tree, node) +
               QLatin1Char('\n');
    }
    if (!tree.counts(node) || tree.stateOf(node) == State::Used ||
        tree.stateOf(node) == State::Unavailable) {
        return {};
    }
    const CoverageTree::Node& element = tree.node(node);
    return wordOf(tree, node).leftJustified(columns) + stepsBelowWindow(tree, node) +
           membersText(element) + waysText(element) + QLatin1Char('\n');
}

Case caseOfWindow(const CoverageResult& coverage, Coverage::WindowId window,
                  const QVector<GateResult>& gates, int digits) {
    const CoverageTree& tree = coverage.tree();
    const CoverageTree::Totals totals = tree.totalsOf(window);
    Case result;
    const QString application = plain(tree.node(window).application);
    result.className = QStringLiteral("uicov") +
                       (application.isEmpty() ? QString() : QLatin1Char('.') + application);
    result.name = plain(tree.node(window).step.toString());
    QStringList failures;
    for (const GateResult& gate : gates) {
        if (gate.window == window && !gate.isMet) {
            failures.append(plain(gate.name) + QStringLiteral(": ") + plain(gate.finding));
        }
    }
    result.failure = failures.join(QStringLiteral("; "));
    result.output =
        (tree.isOfControls() ? controlsSummary(totals, digits)
                             : QStringLiteral("%1 of %2 elements used, %3")
                                   .arg(totals.used)
                                   .arg(totals.elements)
                                   .arg(Base::percentText(totals.used, totals.elements, digits))) +
        QLatin1Char('\n');
    for (const Coverage::NodeId node : elementsInOrder(tree, window)) {
        result.output += isBelowUnseenView(tree, node) ? QString() : lineOf(tree, node);
    }
    return result;
}

/** Whether there is anything in the window that could be missed. */
bool isListed(const CoverageTree::Totals& totals) {
    return totals.elements > 0 || totals.views > 0;
}

} // namespace

JUnitReport::JUnitReport(const CoverageResult& coverage, const QVector<GateResult>& gates)
    : m_coverage(coverage)
    , m_gates(gates) {}

QByteArray JUnitReport::toBytes() const {
    std::vector<Case> cases;
    const CoverageTree& tree = m_coverage.tree();
    const QList<Coverage::WindowId> windows = sortedWindows(tree, QStringLiteral("name"));
    for (const Coverage::WindowId window : windows) {
        cases.push_back(caseOfWindow(m_coverage, window, m_gates, m_precision));
    }
    for (const GateResult& gate : m_gates) {
        if (gate.window == Coverage::NodeId::None || !isListed(tree.totalsOf(gate.window))) {
            cases.push_back({QStringLiteral("uicov.gates"), plain(gate.name),
                             gate.isMet ? QString() : plain(gate.finding),
                             gate.isMet ? plain(gate.finding) : QString()});
        }
    }
    const auto failures = std::count_if(cases.cbegin(), cases.cend(), [](const Case& testCase) {
        return !testCase.failure.isEmpty();
    });
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    for (const char* element : {"testsuites", "testsuite"}) {
        xml.writeStartElement(QLatin1String(element));
        xml.writeAttribute(QStringLiteral("name"), QStringLiteral("uicov"));
        xml.writeAttribute(QStringLiteral("tests"), QString::number(cases.size()));
        xml.writeAttribute(QStringLiteral("failures"), QString::number(failures));
        xml.writeAttribute(QStringLiteral("errors"), QStringLiteral("0"));
        xml.writeAttribute(QStringLiteral("time"), QStringLiteral("0"));
    }
    for (const Case& testCase : cases) {
        write(xml, testCase);
    }
    xml.writeEndDocument();
    return bytes;
}

} // namespace Uicov::Report

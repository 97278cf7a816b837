// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/timelinereport.h"

#include "base/displaytext.h"
#include "coverage/coverageresult.h"
#include "report/markdowntext.h"

#include <algorithm>

namespace Uicov::Report {

using Coverage::CoverageResult;
using Coverage::CoverageTree;
using Coverage::Timeline;

namespace {

constexpr int timeWidth = 10;

QString secondsText(qint64 milliseconds) {
    constexpr double second = 1000;
    constexpr int digits = 3;
    return QString::number(static_cast<double>(milliseconds) / second, 'f', digits);
}

QString titleOf(const Runs::Run& run) {
    constexpr int uuidStart = 8;
    return QStringLiteral("%1, started %2, run %3")
        .arg(Base::escaped(run.application), Base::escaped(run.started), run.uuid.left(uuidStart));
}

/** What else there is to say of an entry: how often it happened, and in which context. */
QString detailsOf(const Timeline::Entry& entry, const QString& context) {
    QStringList details;
    if (entry.count > 1) {
        details.append(
            QStringLiteral("%1 times until %2").arg(entry.count).arg(secondsText(entry.last)));
    }
    if (!context.isEmpty()) {
        details.append(QStringLiteral("in ") + Base::escaped(context));
    }
    return details.join(QStringLiteral(", "));
}

} // namespace

TimelineReport::TimelineReport(const CoverageResult& coverage)
    : m_coverage(coverage) {}

QString TimelineReport::note() const {
    return m_coverage.timeline().untimed() == 0
               ? QString()
               : QStringLiteral("Without a time: %1; data files of older versions have none.")
                     .arg(m_coverage.timeline().untimed());
}

QString TimelineReport::print(Form form) const {
    const CoverageTree& tree = m_coverage.tree();
    const std::vector<Timeline::Entry>& entries = m_coverage.timeline().entries();
    const bool isMarkdown = form == Form::Markdown;
    QString text;
    int widest = 0;
    for (const Timeline::Entry& entry : entries) {
        widest = std::max(widest, Base::displayWidth(Base::escaped(entry.event)));
    }
    auto run = Coverage::RunId::None;
    for (const Timeline::Entry& entry : entries) {
        if (!tree.isReported(entry.node)) {
            continue;
        }
        if (entry.run != run) {
            run = entry.run;
            const QString title = titleOf(m_coverage.run(run));
            text += (text.isEmpty() ? QString() : QStringLiteral("\n")) +
                    (isMarkdown ? QStringLiteral("### ") + markdownMarkup(title) +
                                      QStringLiteral("\n\n| Seconds | Event | Element | |\n"
                                                     "|---:|:---|:---|:---|\n")
                                : title + QLatin1Char('\n'));
        }
        const QString event = Base::escaped(entry.event);
        const QString key = tree.keyOf(entry.node).toKey();
        const QString details = detailsOf(entry, tree.contextName(entry.context));
        text += isMarkdown
                    ? QStringLiteral("| %1 | ").arg(secondsText(entry.first)) +
                          markdownMarkup(event) + QStringLiteral(" | ") + markdownMarkup(key) +
                          QStringLiteral(" | ") + markdownMarkup(details) + QStringLiteral(" |\n")
                    : Base::paddedLeft(secondsText(entry.first), timeWidth) + QStringLiteral("  ") +
                          Base::padded(event, widest) + QStringLiteral("  ") + key +
                          (details.isEmpty() ? QString()
                                             : QStringLiteral("  (") + details + QLatin1Char(')')) +
                          QLatin1Char('\n');
    }
    if (text.isEmpty()) {
        text = QStringLiteral("Nothing was used or seen at a time that is known.\n");
    }
    return note().isEmpty() ? text : text + QLatin1Char('\n') + note() + QLatin1Char('\n');
}

QString TimelineReport::toText() const {
    return print(Form::Text);
}

QString TimelineReport::toMarkdown() const {
    return print(Form::Markdown);
}

} // namespace Uicov::Report

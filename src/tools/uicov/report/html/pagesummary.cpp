// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/pagesummary.h"

#include "report/html/runhistory.h"

#include <QFileInfo>

namespace Uicov::Report::Html {

using Coverage::CoverageResult;
using Coverage::CoverageTree;

namespace {

QString counted(int count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

} // namespace

PageSummary::PageSummary(const CoverageResult& coverage, const RunHistory& history)
    : m_coverage(coverage)
    , m_history(history) {}

void PageSummary::fill(PageModel& model) const {
    model.title = title();
    model.precision = m_precision;
    model.gates = m_gates;
    model.rules = rules();
    model.criteria = m_coverage.configuration().criteria;
    model.runs = m_history.rows();
    model.warnings = warnings();
    model.notes = notes();
}

QString PageSummary::title() const {
    if (!m_title.isEmpty()) {
        return m_title;
    }
    QStringList applications;
    for (const RunHistory::Row& run : m_history.rows()) {
        if (!run.application.isEmpty() && !applications.contains(run.application)) {
            applications.append(run.application);
        }
    }
    constexpr int named = 3;
    if (applications.size() > named) {
        return counted(applications.size(), "application", "applications");
    }
    return applications.isEmpty() ? QStringLiteral("GUI coverage")
                                  : applications.join(QStringLiteral(", "));
}

QVector<PageModel::Rule> PageSummary::rules() const {
    const Coverage::Configuration& configuration = m_coverage.configuration();
    // Without its folder: the page is for other machines as well.
    const QString file = QFileInfo(configuration.path).fileName();
    QVector<PageModel::Rule> rules;
    for (int i = 0; i < configuration.ignoreRules.size(); ++i) {
        const Coverage::IgnoreRule& rule = configuration.ignoreRules.at(i);
        const CoverageResult::RuleUse use = m_coverage.ruleUses().value(i);
        rules.append({rule.toString(), rule.why, QStringLiteral("%1:%2").arg(file).arg(rule.line),
                      use.elements, use.usedElements});
    }
    return rules;
}

QStringList PageSummary::warnings() const {
    QStringList warnings;
    if (m_history.partialRuns() > 0) {
        warnings.append(partialWarning());
    }
    if (m_coverage.picturesLeftOut() > 0) {
        warnings.append(m_coverage.picturesNote());
    }
    if (m_skippedFiles > 0) {
        warnings.append(counted(m_skippedFiles, "file", "files") +
                        QStringLiteral(" could not be read; nothing of it is counted."));
    }
    return warnings;
}

QString PageSummary::partialWarning() const {
    const int partial = m_history.partialRuns();
    QString reason;
    for (const RunHistory::Row& run : m_history.rows()) {
        reason = run.isComplete ? reason : run.partialReason;
    }
    const QString all =
        QStringLiteral(" All that could be read is counted, and there may have been more.");
    if (m_history.rows().size() == 1) {
        return QStringLiteral("The run is partial: it ") + reason + QLatin1Char('.') + all;
    }
    return QStringLiteral("%1 of %2 runs %3 partial; the last of them ")
               .arg(partial)
               .arg(m_history.rows().size())
               .arg(QLatin1String(partial == 1 ? "is" : "are")) +
           reason + QLatin1Char('.') + all;
}

QStringList PageSummary::notes() const {
    const CoverageTree::Totals totals = m_coverage.tree().totals();
    QStringList notes = ruleNotes();
    if (m_coverage.tree().unopenedMenus() > 0) {
        notes.append(QStringLiteral("Menus never opened: %1; what is in them is unknown and not "
                                    "counted.")
                         .arg(m_coverage.tree().unopenedMenus()));
    }
    const QMap<QString, qint64> lines = m_coverage.warnings();
    qint64 warnings = 0;
    for (const qint64 count : lines) {
        warnings += count;
    }
    if (warnings > 0) {
        notes.append(QStringLiteral("Warnings while recording: %1 (%2 different); uicov report "
                                    "--warnings lists them.")
                         .arg(warnings)
                         .arg(lines.size()));
    }
    if (totals.unavailable > 0) {
        notes.append(QStringLiteral("Controls that were never enabled, and so are not counted: %1.")
                         .arg(totals.unavailable));
    }
    if (totals.neverCountedEvents > 0) {
        notes.append(QStringLiteral("\"unchecked\" of check boxes of Qt Widgets is left out: it is "
                                    "announced and never counted."));
    }
    if (totals.missedUnseen > 0) {
        notes.append(QStringLiteral("%1 of the missed elements may have been seen: they do not "
                                    "announce that (Qt Quick items).")
                         .arg(totals.missedUnseen));
    }
    return notes;
}

/** What was asked for that makes the numbers others than they would be without. */
QStringList PageSummary::ruleNotes() const {
    QStringList notes;
    QStringList patterns;
    for (const Coverage::Pattern& pattern : m_coverage.contextPatterns()) {
        patterns.append(pattern.glob());
    }
    if (!patterns.isEmpty()) {
        notes.append(QStringLiteral("Only what happened in contexts like this is counted: ") +
                     patterns.join(QStringLiteral(", ")));
    }
    int ignored = 0;
    for (const CoverageResult::RuleUse& use : m_coverage.ruleUses()) {
        ignored += use.elements;
    }
    if (ignored > 0) {
        notes.append(QStringLiteral("Elements left out by rules: %1.").arg(ignored));
    }
    const QMap<QString, QStringList>& criteria = m_coverage.configuration().criteria;
    for (auto it = criteria.cbegin(); it != criteria.cend(); ++it) {
        notes.append(QStringLiteral("A %1 counts as used when all of this happened, as far as it "
                                    "can: %2. Until then it is only shown, if anything happened.")
                         .arg(it.key(), it->join(QStringLiteral(", "))));
    }
    if (!m_coverage.configuration().labelRules.isEmpty()) {
        notes.append(
            QStringLiteral("Captions are compared after %1 changed them.")
                .arg(counted(m_coverage.configuration().labelRules.size(), "rule", "rules")));
    }
    return notes;
}

} // namespace Uicov::Report::Html

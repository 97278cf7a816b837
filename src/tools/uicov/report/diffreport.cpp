// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/diffreport.h"

#include "base/displaytext.h"
#include "base/jsontext.h"
#include "base/percentage.h"
#include "report/markdowntext.h"
#include "report/totalsjson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace Uicov::Report {

using Coverage::Comparison;
using Coverage::CoverageTree;

DiffReport::DiffReport(const Comparison& comparison)
    : m_comparison(comparison)
    , m_namesApplications(hasSeveralApplications()) {}

QVector<DiffReport::Section> DiffReport::sections() const {
    return {{"-", "Lost: used before, not used now", "lost", m_comparison.lost()},
            {"!", "Newly missed: new, and not used", "new_missed", m_comparison.newMissed()},
            {"x", "Removed: not there any more", "removed", m_comparison.removed()},
            {"+", "Gained: not used before, used now", "gained", m_comparison.gained()},
            {"*", "New, and used", "new_used", m_comparison.newUsed()}};
}

/** Two applications may have windows of one name. */
bool DiffReport::hasSeveralApplications() const {
    QSet<QString> applications;
    const QVector<Section> all = sections();
    for (const Section& section : all) {
        for (const Comparison::Change& change : section.changes) {
            applications.insert(change.application);
        }
    }
    return applications.size() > 1;
}

QString DiffReport::named(const QString& application, const QString& key) const {
    return (m_namesApplications ? Base::escaped(application) + QStringLiteral(": ") : QString()) +
           key;
}

QString DiffReport::totals() const {
    const auto share = [this](const CoverageTree::Totals& totals) {
        return QStringLiteral("%1 of %2 (%3)")
            .arg(totals.used)
            .arg(totals.elements)
            .arg(Base::percentText(totals.used, totals.elements, m_precision));
    };
    return QStringLiteral("Elements used: ") + share(m_comparison.baseTotals()) +
           QStringLiteral(" before, ") + share(m_comparison.currentTotals()) +
           QStringLiteral(" now");
}

QString DiffReport::toText() const {
    QString text = totals() + QLatin1Char('\n');
    const QVector<Section> all = sections();
    for (const Section& section : all) {
        if (section.changes.isEmpty()) {
            continue;
        }
        text += QStringLiteral("\n%1 (%2)\n")
                    .arg(QLatin1String(section.title))
                    .arg(section.changes.size());
        for (const Comparison::Change& change : section.changes) {
            text += QStringLiteral("  ") + QLatin1String(section.mark) + QLatin1Char(' ') +
                    named(change.application, change.key) + QLatin1Char('\n');
        }
    }
    if (m_comparison.isEmpty()) {
        text += QStringLiteral("\nNothing differs.\n");
    }
    if (!m_comparison.renamed().isEmpty()) {
        text += QStringLiteral("\nRenamed? (a guess, counted above all the same)\n");
        for (const Comparison::Guess& guess : m_comparison.renamed()) {
            text += QStringLiteral("  ? ") + named(guess.application, guess.oldKey) +
                    QStringLiteral("\n    -> ") + guess.newKey + QStringLiteral("  (") + guess.why +
                    QStringLiteral(")\n");
        }
    }
    return text;
}

QString DiffReport::toMarkdown() const {
    QString text = QStringLiteral("## GUI coverage: what differs\n\n") + markdownEscaped(totals()) +
                   QLatin1Char('\n');
    const QVector<Section> all = sections();
    for (const Section& section : all) {
        if (section.changes.isEmpty()) {
            continue;
        }
        text += QStringLiteral("\n### %1 (%2)\n\n")
                    .arg(QLatin1String(section.title))
                    .arg(section.changes.size());
        for (const Comparison::Change& change : section.changes) {
            text += QStringLiteral("- ") + markdownMarkup(named(change.application, change.key)) +
                    QLatin1Char('\n');
        }
    }
    if (m_comparison.isEmpty()) {
        text += QStringLiteral("\nNothing differs.\n");
    }
    if (!m_comparison.renamed().isEmpty()) {
        text += QStringLiteral("\n### Renamed? (a guess, counted above all the same)\n\n");
        for (const Comparison::Guess& guess : m_comparison.renamed()) {
            text += QStringLiteral("- ") + markdownMarkup(named(guess.application, guess.oldKey)) +
                    QStringLiteral(" → ") + markdownMarkup(guess.newKey) + QStringLiteral(" (") +
                    guess.why + QStringLiteral(")\n");
        }
    }
    return text;
}

QByteArray DiffReport::toJson() const {
    QJsonObject object{{QStringLiteral("format"), QStringLiteral("uicov-diff")},
                       {QStringLiteral("version"), formatVersion},
                       {QStringLiteral("base"), totalsJson(m_comparison.baseTotals())},
                       {QStringLiteral("new"), totalsJson(m_comparison.currentTotals())}};
    const QVector<Section> all = sections();
    for (const Section& section : all) {
        QJsonArray changes;
        for (const Comparison::Change& change : section.changes) {
            changes.append(QJsonObject{{QStringLiteral("application"), change.application},
                                       {QStringLiteral("key"), change.key},
                                       {QStringLiteral("state"), wordFor(change.state)}});
        }
        object.insert(QLatin1String(section.name), changes);
    }
    QJsonArray guesses;
    for (const Comparison::Guess& guess : m_comparison.renamed()) {
        guesses.append(QJsonObject{{QStringLiteral("application"), guess.application},
                                   {QStringLiteral("old_key"), guess.oldKey},
                                   {QStringLiteral("new_key"), guess.newKey},
                                   {QStringLiteral("why"), guess.why}});
    }
    object.insert(QStringLiteral("renamed_guesses"), guesses);
    return Base::jsonText(QJsonDocument(object));
}

} // namespace Uicov::Report

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
#include <QMap>
#include <QPair>
#include <QSet>

namespace Uicov::Report {

using Coverage::Comparison;
using Coverage::CoverageTree;

namespace {

/** The lines above the folded part of the Markdown form. */
constexpr int mostSummaryLines = 10;
/** Of each section in the Markdown form: a comment has no room for thousands. */
constexpr int mostListed = 100;

bool isOfViews(const char* section) {
    return QLatin1String(section).endsWith(QLatin1String("views"));
}

/** What ends a link is encoded. */
QString linkTarget(const QString& link) {
    QString target = Base::escaped(link);
    return target.replace(QLatin1Char('<'), QLatin1String("%3C"))
        .replace(QLatin1Char('>'), QLatin1String("%3E"));
}

} // namespace

DiffReport::DiffReport(const Comparison& comparison)
    : m_comparison(comparison)
    , m_namesApplications(hasSeveralApplications()) {}

QVector<DiffReport::Section> DiffReport::sections() const {
    return {{"-", "Lost: used before, not used now", "lost", "lost", m_comparison.lost()},
            {"-", "Lost views: seen before, not seen now", "lost_views", "lost views",
             m_comparison.lostViews()},
            {"~", "Flapping: used in some of the last runs before, and not in all", "flapping",
             "flapping", m_comparison.flapping()},
            {"!", "Newly missed: new, and not used", "new_missed", "newly missed",
             m_comparison.newMissed()},
            {"x", "Removed: not there any more", "removed", "removed", m_comparison.removed()},
            {"+", "Gained: not used before, used now", "gained", "gained", m_comparison.gained()},
            {"+", "Gained views: not seen before, seen now", "gained_views", "gained views",
             m_comparison.gainedViews()},
            {"*", "New, and used", "new_used", "new and used", m_comparison.newUsed()}};
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

QStringList DiffReport::totals() const {
    const CoverageTree::Totals base = m_comparison.baseTotals();
    const CoverageTree::Totals current = m_comparison.currentTotals();
    const auto line = [this](const char* what, int before, int ofBefore, int now, int ofNow) {
        return QStringLiteral("%1: %2 of %3 (%4) before, %5 of %6 (%7) now")
            .arg(QLatin1String(what))
            .arg(before)
            .arg(ofBefore)
            .arg(Base::percentText(before, ofBefore, m_precision))
            .arg(now)
            .arg(ofNow)
            .arg(Base::percentText(now, ofNow, m_precision));
    };
    QStringList lines{line(m_comparison.isOfControls() ? "Controls used" : "Elements used",
                           base.used, base.elements, current.used, current.elements)};
    if (m_comparison.isOfControls()) {
        lines.append(
            line("Views seen", base.seenViews, base.views, current.seenViews, current.views));
    }
    return lines;
}

QString DiffReport::notRun() const {
    return m_comparison.notRun().isEmpty()
               ? QString()
               : QStringLiteral("Did not run: ") +
                     Base::escaped(m_comparison.notRun().join(QStringLiteral(", ")));
}

QString DiffReport::unknown() const {
    return m_comparison.unknown() == 0
               ? QString()
               : QStringLiteral("Not used before, and in views that were not opened now: %1.")
                     .arg(m_comparison.unknown());
}

/** The changes by the view that took them along; first those that no view did. */
QVector<DiffReport::Group> DiffReport::grouped(const QVector<Comparison::Change>& changes) {
    QMap<QPair<QString, QString>, Group> groups;
    for (const Comparison::Change& change : changes) {
        const QString application = change.with.isEmpty() ? QString() : change.application;
        Group& group = groups[qMakePair(change.with, application)];
        group.application = application;
        group.view = change.with;
        group.changes.append(change);
    }
    return groups.values().toVector();
}

/** The element with the mark of its section, or with what became of it where that is of interest.
 */
QString DiffReport::line(const Section& section, const Comparison::Change& change) const {
    const QString name = named(change.application, change.key);
    const bool isFlapping = *section.mark == '~';
    return isFlapping && change.state == Coverage::State::Used
               ? name + QStringLiteral("  (used now)")
               : name;
}

QString DiffReport::sectionText(const Section& section) const {
    QString text =
        QStringLiteral("\n%1 (%2)\n").arg(QLatin1String(section.title)).arg(section.changes.size());
    const QVector<Group> groups = grouped(section.changes);
    for (const Group& group : groups) {
        QString indent = QStringLiteral("  ");
        if (!group.view.isEmpty()) {
            text += indent + QStringLiteral("with %1, which was not opened (%2)\n")
                                 .arg(named(group.application, group.view))
                                 .arg(group.changes.size());
            indent += indent;
        }
        for (const Comparison::Change& change : group.changes) {
            text += indent + QLatin1String(section.mark) + QLatin1Char(' ') +
                    line(section, change) + QLatin1Char('\n');
        }
    }
    return text;
}

QString DiffReport::toText() const {
    QString text;
    if (!m_base.isEmpty()) {
        text += QStringLiteral("Base: ") + Base::escaped(m_base) + QLatin1Char('\n');
    }
    if (!notRun().isEmpty()) {
        text += notRun() + QLatin1Char('\n');
    }
    text += totals().join(QLatin1Char('\n')) + QLatin1Char('\n');
    const QVector<Section> all = sections();
    for (const Section& section : all) {
        text += section.changes.isEmpty() ? QString() : sectionText(section);
    }
    if (m_comparison.isEmpty()) {
        text += QStringLiteral("\nNothing differs.\n");
    }
    if (!unknown().isEmpty()) {
        text += QLatin1Char('\n') + unknown() + QLatin1Char('\n');
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

/** What is read without opening anything: the numbers, and what is lost. */
QStringList DiffReport::summary() const {
    QStringList lines;
    const QStringList sums = totals();
    for (const QString& line : sums) {
        lines.append(markdownEscaped(line));
    }
    QStringList counts;
    const QVector<Section> all = sections();
    for (const Section& section : all) {
        if (!section.changes.isEmpty()) {
            counts.append(QLatin1String(section.summary) +
                          QStringLiteral(": %1").arg(section.changes.size()));
        }
    }
    lines.append(counts.isEmpty() ? QStringLiteral("Nothing differs.")
                                  : counts.join(QStringLiteral(", ")));
    QStringList lost;
    const QVector<Group> groups = grouped(m_comparison.lost());
    for (const Group& group : groups) {
        if (!group.view.isEmpty()) {
            lost.append(QStringLiteral("lost: %1 with %2, which was not opened")
                            .arg(group.changes.size())
                            .arg(markdownMarkup(named(group.application, group.view))));
            continue;
        }
        for (const Comparison::Change& change : group.changes) {
            lost.append(QStringLiteral("lost: ") +
                        markdownMarkup(named(change.application, change.key)));
        }
    }
    const int left = mostSummaryLines - lines.size();
    if (lost.size() > left) {
        const int more = lost.size() - left + 1;
        lost = lost.mid(0, left - 1);
        lost.append(QStringLiteral("lost: %1 more, below").arg(more));
    }
    return lines + lost;
}

QString DiffReport::sectionMarkdown(const Section& section) const {
    QString text = QStringLiteral("\n### %1 (%2)\n\n")
                       .arg(QLatin1String(section.title))
                       .arg(section.changes.size());
    int listed = 0;
    const QVector<Group> groups = grouped(section.changes);
    for (const Group& group : groups) {
        QString indent;
        if (!group.view.isEmpty() && listed < mostListed) {
            text += QStringLiteral("- with %1, which was not opened (%2)\n")
                        .arg(markdownMarkup(named(group.application, group.view)))
                        .arg(group.changes.size());
            indent = QStringLiteral("  ");
        }
        for (const Comparison::Change& change : group.changes) {
            if (listed++ < mostListed) {
                text += indent + QStringLiteral("- ") + markdownMarkup(line(section, change)) +
                        QLatin1Char('\n');
            }
        }
    }
    if (listed > mostListed) {
        text += QStringLiteral("- and %1 more\n").arg(listed - mostListed);
    }
    return text;
}

QString DiffReport::renamedMarkdown() const {
    QString text = QStringLiteral("\n### Renamed? (a guess, counted above all the same)\n\n");
    const QVector<Comparison::Guess> guesses = m_comparison.renamed().mid(0, mostListed);
    for (const Comparison::Guess& guess : guesses) {
        text += QStringLiteral("- ") + markdownMarkup(named(guess.application, guess.oldKey)) +
                QStringLiteral(" → ") + markdownMarkup(guess.newKey) + QStringLiteral(" (") +
                guess.why + QStringLiteral(")\n");
    }
    if (m_comparison.renamed().size() > mostListed) {
        text += QStringLiteral("- and %1 more\n").arg(m_comparison.renamed().size() - mostListed);
    }
    return text;
}

QString DiffReport::toMarkdown() const {
    QString text = QStringLiteral("**GUI coverage** compared with ") +
                   (m_base.isEmpty() ? QStringLiteral("the base") : markdownEscaped(m_base)) +
                   QLatin1Char('.');
    if (!notRun().isEmpty()) {
        text += QStringLiteral(" **") + markdownMarkup(notRun()) + QStringLiteral(".**");
    }
    text += QStringLiteral("\n\n");
    const QStringList lines = summary();
    for (const QString& line : lines) {
        text += QStringLiteral("- ") + line + QLatin1Char('\n');
    }
    if (!m_comparison.isEmpty() || !unknown().isEmpty()) {
        text += QStringLiteral("\n<details><summary>Each change</summary>\n");
        const QVector<Section> all = sections();
        for (const Section& section : all) {
            text += section.changes.isEmpty() ? QString() : sectionMarkdown(section);
        }
        text += unknown().isEmpty() ? QString() : QLatin1Char('\n') + unknown() + QLatin1Char('\n');
        text += m_comparison.renamed().isEmpty() ? QString() : renamedMarkdown();
        text += QStringLiteral("\n</details>\n");
    }
    if (!m_link.isEmpty()) {
        text += QStringLiteral("\n[All views and controls](<%1>)\n").arg(linkTarget(m_link));
    }
    return text;
}

QByteArray DiffReport::toJson() const {
    QJsonObject object{
        {QStringLiteral("format"), QStringLiteral("uicov-diff")},
        {QStringLiteral("version"), formatVersion},
        {QStringLiteral("base_name"), m_base.isEmpty() ? QJsonValue() : QJsonValue(m_base)},
        {QStringLiteral("not_run"), QJsonArray::fromStringList(m_comparison.notRun())},
        {QStringLiteral("unknown"), m_comparison.unknown()},
        {QStringLiteral("base"), totalsJson(m_comparison.baseTotals())},
        {QStringLiteral("new"), totalsJson(m_comparison.currentTotals())}};
    const QVector<Section> all = sections();
    for (const Section& section : all) {
        QJsonArray changes;
        for (const Comparison::Change& change : section.changes) {
            QJsonObject entry{{QStringLiteral("application"), change.application},
                              {QStringLiteral("key"), change.key}};
            if (!isOfViews(section.name)) {
                entry.insert(QStringLiteral("state"), m_comparison.isOfControls()
                                                          ? wordForControl(change.state)
                                                          : wordFor(change.state));
            }
            if (!change.with.isEmpty()) {
                entry.insert(QStringLiteral("with"), change.with);
            }
            changes.append(entry);
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

#include "report/comparison.h"

#include "config/spelling.h"

#include <QMap>
#include <QPair>
#include <QSet>

namespace Uicov::Report {

namespace {

/** Application and key. */
using Identity = QPair<QString, QString>;

struct Entry {
    State state;
    QString structureKey;
    QString type;
    /** The key without its last step. */
    QString above;
    QString label;
};

using Entries = QMap<Identity, Entry>;

Entries entriesOf(const Coverage& coverage) {
    Entries entries;
    const CoverageTree& tree = coverage.tree();
    const QList<int> windows = tree.windows();
    for (const int window : windows) {
        for (const int node : tree.nodesOf(window)) {
            if (!tree.counts(node)) {
                continue;
            }
            const CoverageTree::Node& element = tree.node(node);
            const QString above =
                element.parent < 0 ? QString() : tree.keyOf(element.parent).toKey();
            entries.insert(qMakePair(tree.node(window).application, tree.keyOf(node).toKey()),
                           {tree.stateOf(node), element.structureKey, element.type, above,
                            element.step.label});
        }
    }
    return entries;
}

/** By application and structure key, those of which there is only one. */
QMap<Identity, QString> uniqueByStructure(const QVector<Comparison::Change>& changes,
                                          const Entries& entries) {
    QMap<Identity, QString> unique;
    QSet<Identity> seen;
    for (const Comparison::Change& change : changes) {
        const Entry& entry = entries[qMakePair(change.application, change.key)];
        const Identity structure = qMakePair(change.application, entry.structureKey);
        if (seen.contains(structure)) {
            unique.remove(structure);
        } else {
            unique.insert(structure, change.key);
        }
        seen.insert(structure);
    }
    return unique;
}

/** Captions that differ in no more than a third of their characters. */
bool areAlike(const QString& a, const QString& b) {
    constexpr int share = 3;
    return !a.isEmpty() && !b.isEmpty() &&
           Config::Spelling::distance(a, b) * share <= qMax(a.size(), b.size());
}

} // namespace

Comparison::Comparison(const Coverage& base, const Coverage& current)
    : m_baseTotals(base.tree().totals())
    , m_currentTotals(current.tree().totals()) {
    const Entries before = entriesOf(base);
    const Entries now = entriesOf(current);
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        const auto other = now.constFind(it.key());
        if (other == now.cend()) {
            m_removed.append({it.key().first, it.key().second, it->state});
        } else if (it->state == State::Used && other->state != State::Used) {
            m_lost.append({it.key().first, it.key().second, other->state});
        } else if (it->state != State::Used && other->state == State::Used) {
            m_gained.append({it.key().first, it.key().second, it->state});
        }
    }
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (!before.contains(it.key())) {
            (it->state == State::Used ? m_newUsed : m_newMissed)
                .append({it.key().first, it.key().second, it->state});
        }
    }
    guess(base, current);
}

void Comparison::guess(const Coverage& base, const Coverage& current) {
    const Entries before = entriesOf(base);
    const Entries now = entriesOf(current);
    const QVector<Change> added = m_newUsed + m_newMissed;
    const auto oldOnes = uniqueByStructure(m_removed, before);
    const auto newOnes = uniqueByStructure(added, now);
    QSet<Identity> guessed;
    for (auto it = oldOnes.cbegin(); it != oldOnes.cend(); ++it) {
        const auto other = newOnes.constFind(it.key());
        if (other != newOnes.cend()) {
            m_renamed.append({it.key().first, it.value(), other.value(),
                              QStringLiteral("stands in the same place")});
            guessed.insert(qMakePair(it.key().first, it.value()));
            guessed.insert(qMakePair(it.key().first, other.value()));
        }
    }
    for (const Change& removed : m_removed) {
        const Identity old = qMakePair(removed.application, removed.key);
        for (const Change& change : added) {
            const Identity fresh = qMakePair(change.application, change.key);
            const Entry& a = before[old];
            const Entry& b = now[fresh];
            if (!guessed.contains(old) && !guessed.contains(fresh) && old.first == fresh.first &&
                a.type == b.type && a.above == b.above && areAlike(a.label, b.label)) {
                m_renamed.append({old.first, old.second, fresh.second,
                                  QStringLiteral("has nearly the same caption")});
                guessed.insert(old);
                guessed.insert(fresh);
            }
        }
    }
}

bool Comparison::isEmpty() const {
    return m_lost.isEmpty() && m_gained.isEmpty() && m_newMissed.isEmpty() && m_newUsed.isEmpty() &&
           m_removed.isEmpty();
}

QStringList Comparison::kinds() {
    return {QStringLiteral("lost"), QStringLiteral("new-missed"), QStringLiteral("removed")};
}

int Comparison::count(const QString& kind) const {
    if (kind == QLatin1String("lost")) {
        return m_lost.size();
    }
    if (kind == QLatin1String("new-missed")) {
        return m_newMissed.size();
    }
    return kind == QLatin1String("removed") ? m_removed.size() : 0;
}

} // namespace Uicov::Report

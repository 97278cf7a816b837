// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/comparison.h"

#include "base/spelling.h"

#include <QMap>
#include <QPair>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace Uicov::Coverage {

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

Entries entriesOf(const CoverageResult& coverage) {
    Entries entries;
    const CoverageTree& tree = coverage.tree();
    const QList<WindowId> windows = tree.windows();
    for (const WindowId window : windows) {
        for (const NodeId node : tree.nodesOf(window)) {
            if (!tree.counts(node)) {
                continue;
            }
            const CoverageTree::Node& element = tree.node(node);
            const QString above =
                element.parent == NodeId::None ? QString() : tree.keyOf(element.parent).toKey();
            entries.insert(qMakePair(tree.node(window).application, tree.keyOf(node).toKey()),
                           {tree.stateOf(node), element.structureKey, element.type, above,
                            element.step.label});
        }
    }
    return entries;
}

/** By application and structure key, those of which there is only one. */
QMap<Identity, Identity> uniqueByStructure(const QVector<Identity>& names, const Entries& entries) {
    QMap<Identity, Identity> unique;
    QSet<Identity> seen;
    for (const Identity& name : names) {
        const Identity structure = qMakePair(name.first, entries[name].structureKey);
        if (seen.contains(structure)) {
            unique.remove(structure);
        } else {
            unique.insert(structure, name);
        }
        seen.insert(structure);
    }
    return unique;
}

/** What has to be equal for a caption to be compared: application, place and type. */
using Neighbourhood = QPair<Identity, QString>;

QMap<Neighbourhood, QVector<Identity>> byNeighbourhood(const QVector<Identity>& names,
                                                       const Entries& entries) {
    QMap<Neighbourhood, QVector<Identity>> groups;
    for (const Identity& name : names) {
        const Entry& entry = *entries.constFind(name);
        if (!entry.label.isEmpty()) {
            groups[qMakePair(qMakePair(name.first, entry.above), entry.type)].append(name);
        }
    }
    return groups;
}

/** The one whose caption differs least, in no more than a third of its characters; -1 for none. */
int mostAlike(const QString& label, const QVector<Identity>& names, const Entries& entries) {
    constexpr int share = 3;
    int nearest = -1;
    int least = 0;
    for (int i = 0; i < names.size(); ++i) {
        const QString& other = entries.constFind(names.at(i))->label;
        const int longest = qMax(label.size(), other.size());
        if (qAbs(label.size() - other.size()) * share > longest) {
            continue; // they differ in that much at least
        }
        const int distance = Base::editDistance(label, other);
        if (distance * share <= longest && (nearest < 0 || distance < least)) {
            nearest = i;
            least = distance;
        }
    }
    return nearest;
}

QVector<Identity> namesOf(const QVector<Comparison::Change>& changes) {
    QVector<Identity> names;
    for (const Comparison::Change& change : changes) {
        names.append(qMakePair(change.application, change.key));
    }
    return names;
}

/** Collects pairs of an old and a new element, each element in no more than one. */
class Guesser {
public:
    Guesser(const Entries& before, const Entries& now)
        : m_before(before)
        , m_now(now) {}

    void addSamePlaces(const QVector<Identity>& removed, const QVector<Identity>& added) {
        const auto oldOnes = uniqueByStructure(removed, m_before);
        const auto newOnes = uniqueByStructure(added, m_now);
        for (auto it = oldOnes.cbegin(); it != oldOnes.cend(); ++it) {
            const auto other = newOnes.constFind(it.key());
            if (other != newOnes.cend()) {
                add(it.value(), other.value(), QStringLiteral("stands in the same place"));
            }
        }
    }

    void addNearCaptions(const QVector<Identity>& removed, const QVector<Identity>& added) {
        // Among very many that are alike, as the rows of a list, a guess would mean nothing.
        constexpr int most = 200;
        const auto oldGroups = byNeighbourhood(without(removed), m_before);
        auto newGroups = byNeighbourhood(without(added), m_now);
        for (auto it = oldGroups.cbegin(); it != oldGroups.cend(); ++it) {
            QVector<Identity>& candidates = newGroups[it.key()];
            if (it->size() > most || candidates.size() > most) {
                continue;
            }
            for (const Identity& old : it.value()) {
                const QString& label = m_before.constFind(old)->label;
                const int nearest = mostAlike(label, candidates, m_now);
                if (nearest >= 0) {
                    add(old, candidates.at(nearest), QStringLiteral("has nearly the same caption"));
                    candidates.remove(nearest);
                }
            }
        }
    }

    const QVector<Comparison::Guess>& guesses() const { return m_guesses; }

private:
    void add(const Identity& old, const Identity& fresh, const QString& why) {
        m_guesses.append({old.first, old.second, fresh.second, why});
        m_guessed.insert(old);
        m_guessed.insert(fresh);
    }

    QVector<Identity> without(const QVector<Identity>& names) const {
        QVector<Identity> rest;
        std::copy_if(names.cbegin(), names.cend(), std::back_inserter(rest),
                     [this](const Identity& name) { return !m_guessed.contains(name); });
        return rest;
    }

    const Entries& m_before;
    const Entries& m_now;
    QSet<Identity> m_guessed;
    QVector<Comparison::Guess> m_guesses;
};

} // namespace

Comparison::Comparison(const CoverageResult& base, const CoverageResult& current)
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
    Guesser guesser(before, now);
    const QVector<Identity> removed = namesOf(m_removed);
    const QVector<Identity> added = namesOf(m_newUsed + m_newMissed);
    guesser.addSamePlaces(removed, added);
    guesser.addNearCaptions(removed, added);
    m_renamed = guesser.guesses();
}

bool Comparison::isEmpty() const {
    return m_lost.isEmpty() && m_gained.isEmpty() && m_newMissed.isEmpty() && m_newUsed.isEmpty() &&
           m_removed.isEmpty();
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

} // namespace Uicov::Coverage

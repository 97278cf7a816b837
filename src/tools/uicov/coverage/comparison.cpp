// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/comparison.h"

#include "base/spelling.h"

#include <QMap>
#include <QPair>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <tuple>

namespace Uicov::Coverage {

namespace {

/** Application and key. */
using Identity = QPair<QString, QString>;

struct Entry {
    State state = State::Missed;
    QString structureKey;
    QString type;
    /** The key without its last step. */
    QString above;
    QString label;
    NodeId node = NodeId::None;
};

using Entries = QMap<Identity, Entry>;

Entries entriesOf(const CoverageTree& tree) {
    Entries entries;
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
                            element.step.label, node});
        }
    }
    return entries;
}

/** The node of the other tree that has the same key; None where there is none. */
NodeId counterpart(const CoverageTree& tree, NodeId node, const CoverageTree& other) {
    const CoverageTree::Node& element = tree.node(node);
    if (element.parent == NodeId::None) {
        return other.findWindow(element.step, element.application);
    }
    const NodeId above = counterpart(tree, element.parent, other);
    return above == NodeId::None ? NodeId::None : other.findChild(above, element.step);
}

/** Whether the node has to be brought up before what is in it can be known as a whole. */
bool isView(const CoverageTree::Node& node) {
    return node.parent == NodeId::None || node.role == CoverageTree::Node::Role::View ||
           node.isMenu;
}

bool isOpened(const CoverageTree::Node& node) {
    return node.role == CoverageTree::Node::Role::View ? node.wasSeen
                                                       : !node.isMenu || node.isOpenedMenu;
}

/** What became of the views around an element of the base. */
struct Surroundings {
    /** One of them was not opened now. */
    bool areClosed = false;
    /** The outermost that was opened in the base and is not now; null for none. */
    QString lostView;
};

Surroundings surroundingsOf(const CoverageTree& base, NodeId node, const CoverageTree& current) {
    Surroundings result;
    for (NodeId above = node; above != NodeId::None; above = base.node(above).parent) {
        if (!isView(base.node(above))) {
            continue;
        }
        const NodeId other = counterpart(base, above, current);
        if (other == NodeId::None || !isOpened(current.node(other))) {
            result.areClosed = true;
            if (isOpened(base.node(above))) {
                result.lostView = base.keyOf(above).toKey();
            }
        }
    }
    return result;
}

/**
 * Whether the element was used in some of the coverages but not in all since it was first there.
 * @param history the oldest last
 */
bool isFlapping(const Identity& name, const std::vector<Entries>& history) {
    bool isUsed = false;
    bool isUnused = false;
    std::for_each(history.crbegin(), history.crend(), [&](const Entries& entries) {
        const auto entry = entries.constFind(name);
        if (entry != entries.cend() && entry->state == State::Used) {
            isUsed = true;
        } else if (entry != entries.cend() || isUsed) {
            isUnused = true;
        }
    });
    return isUsed && isUnused;
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

/** The views that were seen in a tree and are not in the other, in the order of their keys. */
QVector<Comparison::Change> seenOnlyIn(const CoverageTree& tree, const CoverageTree& other) {
    QVector<Comparison::Change> views;
    const QList<WindowId> windows = tree.windows();
    for (const WindowId window : windows) {
        for (const NodeId node : tree.nodesOf(window)) {
            const CoverageTree::Node& view = tree.node(node);
            if (view.role != CoverageTree::Node::Role::View || !view.wasSeen ||
                view.ignoredBy != RuleId::None) {
                continue;
            }
            const NodeId same = counterpart(tree, node, other);
            if (same == NodeId::None || !other.node(same).wasSeen) {
                const QString key = tree.keyOf(node).toKey();
                const QString lostView = surroundingsOf(tree, node, other).lostView;
                views.append({tree.node(window).application, key, State::Missed,
                              lostView == key ? QString() : lostView});
            }
        }
    }
    return views;
}

/** What has to run again for the run to be repeated: its application, and its contexts. */
QStringList runNames(const Runs::Run& run, const CoverageResult& coverage) {
    QStringList names{QStringLiteral("application ") + run.application};
    for (const QString& context : run.contexts) {
        if (!context.isEmpty() && coverage.countsContext(context)) {
            names.append(QStringLiteral("context ") + context);
        }
    }
    return names;
}

} // namespace

Comparison::Comparison(const CoverageResult& base, const CoverageResult& current,
                       const Earlier& earlier)
    : m_isOfControls(current.tree().isOfControls() || base.tree().isOfControls())
    , m_baseTotals(base.tree().totals())
    , m_currentTotals(current.tree().totals()) {
    compareElements(base, current, earlier);
    compareViews(base.tree(), current.tree());
    compareRuns(base, current);
}

void Comparison::compareElements(const CoverageResult& base, const CoverageResult& current,
                                 const Earlier& earlier) {
    std::vector<Entries> history{entriesOf(base.tree())};
    for (const CoverageResult* coverage : earlier) {
        history.push_back(entriesOf(coverage->tree()));
    }
    const Entries& before = history.front();
    const Entries now = entriesOf(current.tree());
    QSet<Identity> flapping;
    for (std::size_t i = 0; history.size() > 1 && i < history.size(); ++i) {
        for (auto it = history[i].cbegin(); it != history[i].cend(); ++it) {
            if (!flapping.contains(it.key()) && isFlapping(it.key(), history)) {
                flapping.insert(it.key());
                const State state = now.value(it.key(), Entry{}).state;
                m_flapping.append({it.key().first, it.key().second, state});
            }
        }
    }
    std::sort(m_flapping.begin(), m_flapping.end(), [](const Change& a, const Change& b) {
        return std::tie(a.application, a.key) < std::tie(b.application, b.key);
    });
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        const auto other = now.constFind(it.key());
        const bool isThere = other != now.cend();
        if (isThere && other->state == State::Used) {
            if (it->state != State::Used) {
                m_gained.append({it.key().first, it.key().second, it->state});
            }
            continue;
        }
        const bool wasUsed = it->state == State::Used;
        if (isThere && !wasUsed) {
            continue;
        }
        const Surroundings around = surroundingsOf(base.tree(), it->node, current.tree());
        if (!isThere && !around.areClosed) {
            m_removed.append({it.key().first, it.key().second, it->state});
        } else if (!wasUsed) {
            ++m_unknown;
        } else if (!flapping.contains(it.key())) {
            m_lost.append({it.key().first, it.key().second, isThere ? other->state : State::Missed,
                           around.lostView});
        }
    }
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (!before.contains(it.key())) {
            (it->state == State::Used ? m_newUsed : m_newMissed)
                .append({it.key().first, it.key().second, it->state});
        }
    }
    Guesser guesser(before, now);
    QVector<Change> gone = m_removed;
    std::copy_if(m_lost.cbegin(), m_lost.cend(), std::back_inserter(gone),
                 [&](const Change& change) {
                     return !now.contains(qMakePair(change.application, change.key));
                 });
    const QVector<Identity> removed = namesOf(gone);
    const QVector<Identity> added = namesOf(m_newUsed + m_newMissed);
    guesser.addSamePlaces(removed, added);
    guesser.addNearCaptions(removed, added);
    m_renamed = guesser.guesses();
}

void Comparison::compareViews(const CoverageTree& base, const CoverageTree& current) {
    m_lostViews = seenOnlyIn(base, current);
    m_gainedViews = seenOnlyIn(current, base);
}

void Comparison::compareRuns(const CoverageResult& base, const CoverageResult& current) {
    QStringList names;
    for (const Runs::Run& run : current.runs()) {
        names.append(runNames(run, current));
    }
    for (const Runs::Run& run : base.runs()) {
        m_notRun.append(runNames(run, base));
    }
    m_notRun.removeDuplicates();
    m_notRun.sort();
    for (const QString& name : qAsConst(names)) {
        m_notRun.removeAll(name);
    }
}

bool Comparison::isEmpty() const {
    return m_lost.isEmpty() && m_gained.isEmpty() && m_newMissed.isEmpty() && m_newUsed.isEmpty() &&
           m_removed.isEmpty() && m_lostViews.isEmpty() && m_gainedViews.isEmpty() &&
           m_flapping.isEmpty();
}

int Comparison::count(const QString& kind) const {
    if (kind == QLatin1String("lost")) {
        return m_lost.size() + m_lostViews.size();
    }
    if (kind == QLatin1String("new-missed")) {
        return m_newMissed.size();
    }
    return kind == QLatin1String("removed") ? m_removed.size() : 0;
}

} // namespace Uicov::Coverage

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/comparison.h"

#include "coverage/comparedelements.h"
#include "coverage/renameguesser.h"

#include <QSet>

#include <algorithm>

namespace Uicov::Coverage {

namespace {

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

/** Whether a run knows such a control only once it was used, so that it is missing where it was
 * not: an area that takes presses, and a shortcut that no menu and no button has. */
bool isKnownByUse(const CoverageTree::Node& node) {
    return node.role == CoverageTree::Node::Role::Control &&
           (node.type == QLatin1String("Area") ||
            node.ways == QStringList{QStringLiteral("shortcut")});
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

QVector<Identity> namesOf(const QVector<Comparison::Change>& changes) {
    QVector<Identity> names;
    for (const Comparison::Change& change : changes) {
        names.append(qMakePair(change.application, change.key));
    }
    return names;
}

/** Those that flap, in the order of their names, with their states of now. */
QVector<Comparison::Change> flappingIn(const std::vector<Entries>& history, const Entries& now) {
    QMap<Identity, Comparison::Change> flapping;
    for (std::size_t i = 0; history.size() > 1 && i < history.size(); ++i) {
        for (auto it = history[i].cbegin(); it != history[i].cend(); ++it) {
            if (!flapping.contains(it.key()) && isFlapping(it.key(), history)) {
                const State state = now.value(it.key(), Entry{}).state;
                flapping.insert(it.key(), {it.key().first, it.key().second, state});
            }
        }
    }
    return flapping.values().toVector();
}

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
    m_flapping = flappingIn(history, now);
    QSet<Identity> flapping;
    for (const Change& change : qAsConst(m_flapping)) {
        flapping.insert(qMakePair(change.application, change.key));
    }
    QVector<Identity> gone;
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        const auto other = now.constFind(it.key());
        const bool wasUsed = it->state == State::Used;
        if (other == now.cend()) {
            const Surroundings around = surroundingsOf(base.tree(), it->node, current.tree());
            const bool isSure = !around.areClosed && !isKnownByUse(base.tree().node(it->node));
            if (isSure) {
                m_removed.append({it.key().first, it.key().second, it->state});
            } else if (!wasUsed) {
                ++m_unknown;
            } else if (!flapping.contains(it.key())) {
                m_lost.append({it.key().first, it.key().second, State::Missed, around.lostView});
            }
            if (isSure || wasUsed) {
                gone.append(it.key());
            }
        } else if (wasUsed && other->state != State::Used && !flapping.contains(it.key())) {
            m_lost.append({it.key().first, it.key().second, other->state,
                           surroundingsOf(base.tree(), it->node, current.tree()).lostView});
        } else if (!wasUsed && other->state == State::Used) {
            m_gained.append({it.key().first, it.key().second, it->state});
        }
    }
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (!before.contains(it.key())) {
            (it->state == State::Used ? m_newUsed : m_newMissed)
                .append({it.key().first, it.key().second, it->state});
        }
    }
    RenameGuesser guesser(before, now);
    const QVector<Identity> added = namesOf(m_newUsed + m_newMissed);
    guesser.addSamePlaces(gone, added);
    guesser.addNearCaptions(gone, added);
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

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/explanation.h"

#include "base/displaytext.h"
#include "base/spelling.h"
#include "coverage/criteria.h"
#include "coverage/elementsearch.h"
#include "report/elementtext.h"
#include "run/controlnames.h"
#include "run/elementkinds.h"
#include "run/keywalk.h"

#include <QSet>

namespace Uicov::Report {

using Base::escaped;
using Coverage::CoverageResult;
using Coverage::CoverageTree;
using Coverage::State;
using Runs::ElementKey;
using Runs::KeyWalk;
using Runs::RunElement;

namespace {

constexpr int uuidStart = 8;

QString nameOf(const QString& application, const QString& key) {
    return application + QLatin1Char('\n') + key;
}

QString contextOf(const QString& name) {
    return name.isEmpty() ? QStringLiteral("no context")
                          : QStringLiteral("context \"") + escaped(name) + QLatin1Char('"');
}

QString quotedOrNone(const QString& text) {
    return text.isNull() ? QStringLiteral("none")
                         : QLatin1Char('"') + escaped(text) + QLatin1Char('"');
}

QString flagsOf(const RunElement& element) {
    QStringList flags;
    if (element.isTransparentNode) {
        flags.append(QStringLiteral("transparent"));
    }
    if (element.isSubgraphTransparent) {
        flags.append(QStringLiteral("what is below it does not count"));
    }
    if (element.isWindowNode) {
        flags.append(QStringLiteral("window"));
    }
    return flags.isEmpty() ? QString() : QStringLiteral(", ") + flags.join(QStringLiteral(", "));
}

QString placeOf(const RunElement& element) {
    if (!element.place) {
        return QStringLiteral("place unknown");
    }
    const QRect& place = *element.place;
    return QStringLiteral("from %1,%2 to %3,%4")
        .arg(place.left())
        .arg(place.top())
        .arg(place.right())
        .arg(place.bottom());
}

/** The names that a view or control has besides its text, each with its kind. */
QString otherNamesOf(const RunElement& element) {
    QString names;
    const QStringList kinds = Runs::ControlNames::kinds();
    for (const QString& kind : kinds) {
        const QString name = element.attributes.value(kind);
        if (!name.isEmpty()) {
            names += QStringLiteral(", ") + kind + QStringLiteral(" \"") + escaped(name) +
                     QLatin1Char('"');
        }
    }
    return names;
}

/** Those that count and happened, or never did. */
QStringList eventsOf(const CoverageTree::Node& element, bool wantsHappened) {
    QStringList names;
    for (auto it = element.events.cbegin(); it != element.events.cend(); ++it) {
        if (!it->isNeverCounted && it->isCovered() == wantsHappened) {
            names.append(escaped(it.key()));
        }
    }
    return names;
}

/** What has to be known to understand the counts. */
QStringList notesOn(const CoverageTree::Node& element, State state) {
    QStringList notes;
    const bool isClassic = element.role == CoverageTree::Node::Role::Element;
    const bool isWidget = element.events.contains(Coverage::shownEvent());
    if (element.type == QLatin1String("MenuItem") && isWidget) {
        notes.append(QStringLiteral("A click with the mouse counts twice on a menu item, for the "
                                    "press and for what it triggers; the keyboard counts once."));
    }
    if (!isWidget && isClassic && element.events.contains(QStringLiteral("clicked"))) {
        notes.append(QStringLiteral("A click counts twice on a Qt Quick item once its window has "
                                    "had the focus: where the press hits, and by its signal."));
    }
    if (state == State::Missed && !element.events.isEmpty() && !isWidget && isClassic) {
        notes.append(QStringLiteral("Qt Quick items do not tell that they are seen; this one may "
                                    "have been."));
    }
    return notes;
}

} // namespace

Explanation::Explanation(const CoverageResult& coverage)
    : m_coverage(coverage) {}

bool Explanation::choose(const QString& key) {
    m_nodes = Coverage::ElementSearch(m_coverage.tree()).find(key);
    return !m_nodes.isEmpty();
}

QString Explanation::nearest(const QString& key) const {
    QMap<QString, QString> keys;
    const CoverageTree& tree = m_coverage.tree();
    const QList<Coverage::WindowId> windows = tree.windows();
    const bool isPath = key.contains(ElementKey::separator());
    for (const Coverage::WindowId window : windows) {
        for (const Coverage::NodeId node : tree.nodesOf(window)) {
            if (tree.isInNumbers(node)) {
                // Who did not write a path wrote a caption.
                const QString whole = tree.keyOf(node).toKey();
                const ElementKey::Step& step = tree.node(node).step;
                const QString label = step.caption.isEmpty() ? step.label : step.caption;
                keys.insert(isPath || label.isEmpty() ? whole : label, whole);
            }
        }
    }
    return keys.value(Base::nearestSpelling(key, keys.keys()));
}

void Explanation::look(const Runs::Run& run) {
    QSet<QString> chosen;
    for (const Coverage::NodeId node : m_nodes) {
        const CoverageTree& tree = m_coverage.tree();
        chosen.insert(nameOf(tree.node(tree.windowOf(node)).application, tree.keyOf(node).toKey()));
    }
    const QString start = QStringLiteral("run ") + run.uuid.left(uuidStart);
    const std::vector<KeyWalk::Place> places = KeyWalk(run, m_coverage.nameRules()).places();
    for (const KeyWalk::Place& place : places) {
        const QString name = nameOf(run.application, place.key);
        if (!chosen.contains(name)) {
            continue;
        }
        const RunElement& element = run.element(place.element);
        m_runs[name].append(QStringLiteral("%1: element %2, class %3, text %4, %5%6")
                                .arg(start)
                                .arg(place.element)
                                .arg(escaped(element.className),
                                     quotedOrNone(element.text) + otherNamesOf(element),
                                     placeOf(element), flagsOf(element)));
        for (const Runs::Hit& hit : element.hits) {
            m_hits[name].append(escaped(hit.event) + QStringLiteral(" x %1 in ").arg(hit.count) +
                                start + QStringLiteral(", ") +
                                contextOf(run.contexts.at(hit.context)) +
                                (m_coverage.countsContext(run.contexts.at(hit.context))
                                     ? QString()
                                     : QStringLiteral(" (left out by --contexts)")) +
                                (element.events.contains(hit.event)
                                     ? QString()
                                     : QStringLiteral(" (never announced, so in no ratio)")));
        }
    }
}

QString Explanation::reasonOfView(Coverage::NodeId node) const {
    return m_coverage.tree().node(node).wasSeen
               ? QStringLiteral("seen: a person could see it; views are counted apart")
               : QStringLiteral("unseen: ") + neverOpenedText(m_coverage.tree(), node) +
                     QStringLiteral("; views are counted apart");
}

QString Explanation::reasonOf(Coverage::NodeId node) const {
    const CoverageTree& tree = m_coverage.tree();
    const CoverageTree::Node& element = tree.node(node);
    if (element.role == CoverageTree::Node::Role::View) {
        return reasonOfView(node);
    }
    if (!element.isCountable) {
        return element.isMenu ? QStringLiteral("not counted: a menu; what is in it counts, once it "
                                               "was opened")
                              : QStringLiteral("not counted: nothing can happen to it that the "
                                               "application would tell");
    }
    const QStringList happened = eventsOf(element, true);
    const QStringList never = eventsOf(element, false);
    const QString asked = askedOf(element);
    const QString criteria = asked.isEmpty()
                                 ? QString()
                                 : QStringLiteral("; the criteria for ") + escaped(element.type) +
                                       QStringLiteral(" ask for ") + asked;
    const bool isOnlySeen = happened == QStringList{Coverage::shownEvent()};
    const QString what =
        isOnlySeen ? QStringLiteral("it was seen")
                   : QStringLiteral("these happened: ") + happened.join(QStringLiteral(", "));
    const QString lack = QStringLiteral("; never: ") + never.join(QStringLiteral(", "));
    switch (tree.stateOf(node)) {
    case State::Used:
        return QStringLiteral("used: ") + what +
               (isOnlySeen ? QStringLiteral(", and nothing else can happen to it") : QString()) +
               criteria;
    case State::Shown:
        if (element.role == CoverageTree::Node::Role::Control) {
            return (happened.isEmpty()
                        ? QStringLiteral("seen: its view was seen while it was enabled")
                        : QStringLiteral("seen: ") + what) +
                   lack + criteria;
        }
        return QStringLiteral("shown: ") + what + lack + criteria;
    case State::Unavailable:
        return QStringLiteral("unavailable: it was never enabled, so it is not counted");
    case State::Missed:
        break;
    }
    if (element.role == CoverageTree::Node::Role::Control) {
        return (isBelowUnseenView(tree, node)
                    ? QStringLiteral("missed: its view was never seen")
                    : QStringLiteral("missed: it was hidden whenever its view was seen")) +
               lack + criteria;
    }
    return QStringLiteral("missed: nothing happened") + lack + criteria;
}

QString Explanation::askedOf(const CoverageTree::Node& element) const {
    const QStringList criteria = m_coverage.configuration().criteria.value(element.type);
    if (element.role == CoverageTree::Node::Role::Control) {
        return escaped(Coverage::askedOf(element, criteria).join(QStringLiteral(", ")));
    }
    QStringList asked;
    for (const QString& name : criteria) {
        const auto event = element.events.constFind(name);
        if (event != element.events.cend() && !event->isNeverCounted) {
            asked.append(escaped(name));
        }
    }
    return asked.join(QStringLiteral(", "));
}

QString Explanation::identityOf(Coverage::NodeId node) const {
    const CoverageTree::Node& element = m_coverage.tree().node(node);
    return QStringLiteral("  structure  %1\n  type       %2\n  class      %3\n  text       %4\n")
               .arg(element.structureKey,
                    element.type.isEmpty() ? QStringLiteral("none") : escaped(element.type),
                    escaped(element.className), quotedOrNone(element.text)) +
           (element.ways.isEmpty()
                ? QString()
                : QStringLiteral("  ways       ") + waysOf(element) + QLatin1Char('\n'));
}

QString Explanation::explained(Coverage::NodeId node) const {
    const CoverageTree& tree = m_coverage.tree();
    const CoverageTree::Node& element = tree.node(node);
    const QString application = tree.node(tree.windowOf(node)).application;
    const QString key = tree.keyOf(node).toKey();
    QString text = key + QLatin1Char('\n');
    if (!application.isEmpty()) {
        text += QStringLiteral("  of         ") + escaped(application) + QLatin1Char('\n');
    }
    text += QStringLiteral("  state      ") + reasonOf(node) + QLatin1Char('\n');
    if (element.ignoredBy != Coverage::RuleId::None) {
        const Coverage::IgnoreRule& rule =
            m_coverage.configuration().ignoreRules.at(static_cast<int>(element.ignoredBy));
        text += QStringLiteral("  ignored    by %1:%2: ")
                    .arg(m_coverage.configuration().path)
                    .arg(rule.line) +
                escaped(rule.toString()) +
                (rule.why.isEmpty() ? QString() : QStringLiteral("; ") + escaped(rule.why)) +
                QLatin1Char('\n');
    }
    text += identityOf(node);
    for (auto it = element.events.cbegin(); it != element.events.cend(); ++it) {
        text +=
            QStringLiteral("  event      ") + escaped(it.key()) +
            QStringLiteral(": %1").arg(it->count) +
            (it->isNeverCounted ? QStringLiteral(" (this version never counts it, so in no ratio)")
                                : QString()) +
            QLatin1Char('\n');
    }
    const QString name = nameOf(application, key);
    const auto list = [&text](const char* title, const QStringList& lines) {
        for (const QString& line : lines) {
            text += QLatin1String(title) + line + QLatin1Char('\n');
        }
    };
    list("  hit        ", m_hits.value(name));
    list("  in         ", m_runs.value(name));
    list("  note       ", notesOn(element, tree.stateOf(node)));
    return text;
}

QString Explanation::toString() const {
    QStringList texts;
    for (const Coverage::NodeId node : m_nodes) {
        texts.append(explained(node));
    }
    return texts.join(QLatin1Char('\n'));
}

} // namespace Uicov::Report

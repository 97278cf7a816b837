// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coverageresult.h"

#include "base/spelling.h"
#include "coverage/elementsearch.h"
#include "coverage/unwatchedcontrols.h"

#include <algorithm>
#include <numeric>

namespace Uicov::Coverage {

CoverageResult::CoverageResult(const Configuration& configuration, const QVector<Pattern>& contexts)
    : m_configuration(configuration)
    , m_contextPatterns(contexts)
    , m_collector(m_tree) {
    m_tree.setCriteria(configuration.criteria);
    m_collector.setContexts(contexts);
    m_collector.setNameRules(nameRules());
}

Runs::NameRules CoverageResult::nameRules() const {
    Runs::NameRules rules;
    if (!m_configuration.labelRules.isEmpty()) {
        rules.label = [&configuration = m_configuration](const QString& label) {
            return configuration.appliedTo(label);
        };
    }
    if (!m_configuration.groups.isEmpty()) {
        rules.group = [&configuration = m_configuration](const QString& key) {
            return configuration.groupOf(key);
        };
    }
    rules.captions = m_configuration.preferredNames;
    return rules;
}

void CoverageResult::add(const Runs::Run& run) {
    m_collector.collect(run);
    noteVersion(run);
    const QMap<QString, int> unwatched = unwatchedControls(run);
    for (auto it = unwatched.cbegin(); it != unwatched.cend(); ++it) {
        m_unwatched[it.key()] = qMax(m_unwatched.value(it.key()), it.value());
    }
    Runs::Run attributes = run;
    attributes.elements.clear();
    attributes.pictures.clear();
    m_runs.push_back(std::move(attributes));
}

void CoverageResult::addKnown(const Runs::Run& run) {
    m_collector.collectKnown(run);
    noteVersion(run);
    ++m_knownRuns;
}

void CoverageResult::noteVersion(const Runs::Run& run) {
    QString& started = m_versions[run.application][CoverageCollector::versionOf(run)];
    started = qMax(started, run.started);
}

void CoverageResult::findOutdated() {
    const QList<WindowId> windows = m_tree.windows();
    for (const WindowId window : windows) {
        const QMap<QString, QString> versions = m_versions.value(m_tree.node(window).application);
        const auto isOlder = [&](const QString& a, const QString& b) {
            return qMakePair(versions.value(a), a) < qMakePair(versions.value(b), b);
        };
        const auto newest = [&](const QStringList& of) {
            return *std::max_element(of.cbegin(), of.cend(), isOlder);
        };
        // A run that does not tell its version may be of any.
        if (versions.size() < 2) {
            continue;
        }
        const QString current = newest(versions.keys());
        for (const NodeId node : m_tree.nodesOf(window)) {
            const QStringList& known = m_tree.node(node).versions;
            if (!m_tree.isInNumbers(node) || known.contains(current) || known.contains(QString())) {
                continue;
            }
            m_tree.setLastVersion(node, newest(known));
            m_outdated += m_tree.node(node).ignoredBy == RuleId::None ? 1 : 0;
        }
    }
}

void CoverageResult::finish() {
    m_collector.finish();
    applyRules();
    findOutdated();
}

void CoverageResult::applyRules() {
    m_ruleUses.fill(RuleUse(), m_configuration.ignoreRules.size());
    if (m_configuration.ignoreRules.isEmpty()) {
        return;
    }
    resolvePrefixes();
    const QList<WindowId> windows = m_tree.windows();
    for (const WindowId window : windows) {
        for (const NodeId node : m_tree.nodesOf(window)) {
            const CoverageTree::Node& element = m_tree.node(node);
            const RuleId rule = m_tree.isInNumbers(node) ? ruleFor(node) : RuleId::None;
            if (rule != RuleId::None) {
                RuleUse& use = m_ruleUses[static_cast<int>(rule)];
                ++use.elements;
                const bool isUsed = element.isCountable && m_tree.stateOf(node) == State::Used;
                use.usedElements += isUsed ? 1 : 0;
                m_tree.ignore(node, rule);
            }
        }
    }
}

/** A key may be the beginning of one, as long as it is of one only. */
void CoverageResult::resolvePrefixes() {
    m_namedByRule.fill(NodeId::None, m_configuration.ignoreRules.size());
    std::optional<ElementSearch> search;
    for (int i = 0; i < m_namedByRule.size(); ++i) {
        const Pattern& key = m_configuration.ignoreRules.at(i).key;
        if (key.isSet()) {
            if (!search) {
                search.emplace(m_tree);
            }
            m_namedByRule[i] = search->findByPrefix(key.glob());
        }
    }
}

bool CoverageResult::matchesWindow(const Pattern& pattern, const Runs::ElementKey::Step& window) {
    return pattern.matches(window.toString()) ||
           (!window.label.isEmpty() && pattern.matches(window.label)) ||
           (!window.caption.isEmpty() && pattern.matches(window.caption)) ||
           (!window.className.isEmpty() && pattern.matches(window.className));
}

RuleId CoverageResult::ruleFor(NodeId node) const {
    const CoverageTree::Node& element = m_tree.node(node);
    const QString key = m_tree.keyOf(node).toKey();
    const auto fits = [&](const IgnoreRule& rule) {
        const auto number = static_cast<int>(&rule - m_configuration.ignoreRules.constData());
        return (!rule.key.isSet() || rule.key.matches(key) || m_namedByRule.at(number) == node) &&
               (!rule.window.isSet() ||
                matchesWindow(rule.window, m_tree.node(m_tree.windowOf(node)).step)) &&
               (!rule.type.isSet() || rule.type.matches(element.type)) &&
               (!rule.className.isSet() || rule.className.matches(element.className) ||
                rule.className.matches(Runs::ElementKey::normalisedClass(element.className))) &&
               (!rule.text.isSet() || rule.text.matches(element.text) ||
                rule.text.matches(Runs::ElementKey::normalisedLabel(element.text)));
    };
    const QVector<IgnoreRule>& rules = m_configuration.ignoreRules;
    const auto it = std::find_if(rules.cbegin(), rules.cend(), fits);
    return it == rules.cend() ? RuleId::None : static_cast<RuleId>(it - rules.cbegin());
}

namespace {

QStringList attributesToAskFor(const CoverageTree::Node& control) {
    QStringList criteria{QStringLiteral("enabled")};
    for (const QString& way : control.ways) {
        criteria.append(QStringLiteral("way=") + way);
    }
    if (!control.ways.isEmpty()) {
        criteria.append(QStringLiteral("way=*"));
    }
    return criteria;
}

} // namespace

QVector<CoverageResult::UnusedCriterion> CoverageResult::unusedCriteria() const {
    QMap<QString, QStringList> eventsOfTypes;
    const QList<WindowId> windows = m_tree.windows();
    for (const WindowId window : windows) {
        for (const NodeId node : m_tree.nodesOf(window)) {
            const CoverageTree::Node& element = m_tree.node(node);
            if (m_tree.counts(node)) {
                QStringList& events = eventsOfTypes[element.type];
                for (auto it = element.events.cbegin(); it != element.events.cend(); ++it) {
                    if (!it->isNeverCounted && !events.contains(it.key())) {
                        events.append(it.key());
                    }
                }
                if (element.role == CoverageTree::Node::Role::Control) {
                    events += attributesToAskFor(element);
                    events.removeDuplicates();
                }
            }
        }
    }
    QVector<UnusedCriterion> unused;
    const QMap<QString, QStringList>& criteria = m_configuration.criteria;
    for (auto it = criteria.cbegin(); it != criteria.cend(); ++it) {
        const auto events = eventsOfTypes.constFind(it.key());
        if (events == eventsOfTypes.cend()) {
            unused.append(
                {it.key(), QString(), Base::nearestSpelling(it.key(), eventsOfTypes.keys())});
            continue;
        }
        for (const QString& event : it.value()) {
            if (!events->contains(event)) {
                unused.append({it.key(), event, Base::nearestSpelling(event, *events)});
            }
        }
    }
    return unused;
}

int CoverageResult::partialRuns() const {
    return static_cast<int>(std::count_if(m_runs.cbegin(), m_runs.cend(),
                                          [](const Runs::Run& run) { return !run.isComplete; }));
}

qint64 CoverageResult::picturesLeftOut() const {
    return std::accumulate(
        m_runs.cbegin(), m_runs.cend(), qint64{0},
        [](qint64 sum, const Runs::Run& run) { return sum + run.picturesLeftOut(); });
}

QString CoverageResult::picturesNote() const {
    const qint64 pictures = picturesLeftOut();
    return pictures == 0 ? QString()
                         : QStringLiteral("Pictures left out because a recording reached its size "
                                          "limit: %1; the numbers do not depend on them.")
                               .arg(pictures);
}

QMap<QString, qint64> CoverageResult::warnings() const {
    QMap<QString, qint64> warnings;
    for (const Runs::Run& run : m_runs) {
        for (auto it = run.warnings.cbegin(); it != run.warnings.cend(); ++it) {
            warnings[it.key()] += it.value();
        }
    }
    warnings.remove(Runs::Run::picturesLeftOutLine());
    return warnings;
}

} // namespace Uicov::Coverage

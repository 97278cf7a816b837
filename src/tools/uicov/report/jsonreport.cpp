// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/jsonreport.h"

#include "base/jsontext.h"
#include "report/elementtext.h"
#include "report/timelinejson.h"
#include "report/totalsjson.h"

#include <QJsonDocument>

namespace Uicov::Report {

using Coverage::CoverageResult;
using Coverage::CoverageTree;
using Coverage::Events;
using Coverage::GateResult;

namespace {

/** Null where the text is. */
QJsonValue textOrNull(const QString& text) {
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

QJsonObject objectOf(const QMap<QString, QString>& texts) {
    QJsonObject object;
    for (auto it = texts.cbegin(); it != texts.cend(); ++it) {
        object.insert(it.key(), it.value());
    }
    return object;
}

/** Each name of a group's members, and whether one of that name was used. */
QJsonObject memberNames(const CoverageTree::Node& element) {
    QJsonObject names;
    for (auto it = element.memberNames.cbegin(); it != element.memberNames.cend(); ++it) {
        names.insert(it.key(), it.value());
    }
    return names;
}

QStringList sortedContexts(const CoverageTree& tree) {
    QStringList names = tree.contexts();
    names.sort();
    return names;
}

} // namespace

JsonReport::JsonReport(const CoverageResult& coverage, const QVector<GateResult>& gates)
    : m_coverage(coverage)
    , m_gates(gates) {}

QByteArray JsonReport::toBytes() const {
    return Base::jsonText(QJsonDocument(toObject()));
}

QJsonObject JsonReport::toObject() const {
    const CoverageTree& tree = m_coverage.tree();
    QJsonArray warnings;
    const QMap<QString, qint64> lines = m_coverage.warnings();
    for (auto it = lines.cbegin(); it != lines.cend(); ++it) {
        warnings.append(
            QJsonObject{{QStringLiteral("line"), it.key()}, {QStringLiteral("count"), it.value()}});
    }
    return {{QStringLiteral("format"), QStringLiteral("uicov-report")},
            {QStringLiteral("version"), formatVersion},
            {QStringLiteral("complete"), m_coverage.partialRuns() == 0},
            {QStringLiteral("pictures_left_out"), m_coverage.picturesLeftOut()},
            {QStringLiteral("totals"), totalsJson(tree.totals())},
            {QStringLiteral("unopened_menus"), tree.unopenedMenus()},
            {QStringLiteral("known_runs"), m_coverage.knownRuns()},
            {QStringLiteral("not_watched"), notWatched()},
            {QStringLiteral("runs"), runs()},
            {QStringLiteral("contexts"), QJsonArray::fromStringList(sortedContexts(tree))},
            {QStringLiteral("windows"), windows()},
            {QStringLiteral("timeline"), timelineJson(m_coverage)},
            {QStringLiteral("only_contexts"), onlyContexts()},
            {QStringLiteral("ignore_rules"), ignoreRules()},
            {QStringLiteral("label_rules"), labelRules()},
            {QStringLiteral("criteria"), criteria()},
            {QStringLiteral("gates"), gates()},
            {QStringLiteral("warnings"), warnings}};
}

QJsonArray JsonReport::runs() const {
    QJsonArray array;
    for (const Runs::Run& run : m_coverage.runs()) {
        array.append(
            QJsonObject{{QStringLiteral("uuid"), run.uuid},
                        {QStringLiteral("session"), run.session},
                        {QStringLiteral("application"), run.application},
                        {QStringLiteral("extension"), run.extension},
                        {QStringLiteral("executable"), run.executable},
                        {QStringLiteral("qt_version"), run.qtVersion},
                        {QStringLiteral("platform"), run.platform},
                        {QStringLiteral("locale"), run.locale},
                        {QStringLiteral("architecture"), run.architecture},
                        {QStringLiteral("started"), run.started},
                        {QStringLiteral("labels"), objectOf(run.labels)},
                        {QStringLiteral("contexts"), QJsonArray::fromStringList(run.contexts)},
                        {QStringLiteral("complete"), run.isComplete},
                        {QStringLiteral("partial_reason"), run.partialReason},
                        {QStringLiteral("bytes_lost"), run.bytesLost},
                        {QStringLiteral("pictures_left_out"), run.picturesLeftOut()},
                        {QStringLiteral("messages"), run.messages},
                        {QStringLiteral("messages_lost"), run.messagesLost}});
    }
    return array;
}

QJsonObject JsonReport::notWatched() const {
    QJsonObject object;
    const QMap<QString, int>& classes = m_coverage.unwatched();
    for (auto it = classes.cbegin(); it != classes.cend(); ++it) {
        object.insert(it.key(), it.value());
    }
    return object;
}

QJsonArray JsonReport::windows() const {
    QJsonArray array;
    const QList<Coverage::WindowId> windows = m_coverage.tree().windows();
    for (const Coverage::WindowId index : windows) {
        array.append(window(index));
    }
    return array;
}

QJsonObject JsonReport::window(Coverage::WindowId window) const {
    const CoverageTree& tree = m_coverage.tree();
    QJsonArray elements;
    QJsonArray unopened;
    QJsonArray views;
    for (const Coverage::NodeId node : tree.nodesOf(window)) {
        if (tree.node(node).isMenu && !tree.node(node).isOpenedMenu) {
            unopened.append(tree.keyOf(node).toKey());
        }
        if (tree.node(node).role == CoverageTree::Node::Role::View) {
            views.append(view(node));
        }
        if (tree.node(node).isCountable) {
            elements.append(element(node));
        }
    }
    return {{QStringLiteral("application"), tree.node(window).application},
            {QStringLiteral("key"), tree.node(window).step.toKey()},
            {QStringLiteral("totals"), totalsJson(tree.totalsOf(window))},
            {QStringLiteral("unopened_menus"), unopened},
            {QStringLiteral("views"), views},
            {QStringLiteral("elements"), elements}};
}

QJsonObject JsonReport::view(Coverage::NodeId node) const {
    const CoverageTree& tree = m_coverage.tree();
    const CoverageTree::Node& view = tree.node(node);
    return {{QStringLiteral("key"), tree.keyOf(node).toKey()},
            {QStringLiteral("name"), tree.keyOf(node).toString()},
            {QStringLiteral("type"), view.type},
            {QStringLiteral("class"), view.className},
            {QStringLiteral("text"), textOrNull(view.text)},
            {QStringLiteral("seen"), view.wasSeen},
            {QStringLiteral("last_version"), textOrNull(view.lastVersion)},
            {QStringLiteral("opened_by"),
             view.openedBy.isEmpty() ? QJsonValue() : QJsonValue(view.openedBy)}};
}

QJsonObject JsonReport::element(Coverage::NodeId node) const {
    const CoverageTree& tree = m_coverage.tree();
    const CoverageTree::Node& element = tree.node(node);
    return {{QStringLiteral("key"), tree.keyOf(node).toKey()},
            {QStringLiteral("structure_key"), element.structureKey},
            {QStringLiteral("type"), element.type},
            {QStringLiteral("class"), element.className},
            {QStringLiteral("text"), textOrNull(element.text)},
            {QStringLiteral("state"), wordOf(tree, node)},
            {QStringLiteral("ignored_by"), element.ignoredBy == Coverage::RuleId::None
                                               ? QJsonValue()
                                               : QJsonValue(static_cast<int>(element.ignoredBy))},
            {QStringLiteral("name"), tree.keyOf(node).toString()},
            {QStringLiteral("members"), element.members},
            {QStringLiteral("used_members"), element.usedMembers},
            {QStringLiteral("member_names"), memberNames(element)},
            {QStringLiteral("last_version"), textOrNull(element.lastVersion)},
            {QStringLiteral("ways"), QJsonArray::fromStringList(element.ways)},
            {QStringLiteral("used_ways"), QJsonArray::fromStringList(element.usedWays)},
            {QStringLiteral("events"), events(element.events)}};
}

QJsonArray JsonReport::events(const Events& events) const {
    QJsonArray array;
    for (auto it = events.cbegin(); it != events.cend(); ++it) {
        QJsonObject byContext;
        for (auto hit = it->byContext.cbegin(); hit != it->byContext.cend(); ++hit) {
            byContext.insert(m_coverage.tree().contextName(hit.key()), hit.value());
        }
        array.append(QJsonObject{{QStringLiteral("name"), it.key()},
                                 {QStringLiteral("count"), it->count},
                                 {QStringLiteral("in_ratio"), !it->isNeverCounted},
                                 {QStringLiteral("contexts"), byContext}});
    }
    return array;
}

QJsonObject JsonReport::criteria() const {
    QJsonObject object;
    const QMap<QString, QStringList>& criteria = m_coverage.configuration().criteria;
    for (auto it = criteria.cbegin(); it != criteria.cend(); ++it) {
        object.insert(it.key(), QJsonArray::fromStringList(it.value()));
    }
    return object;
}

QJsonArray JsonReport::labelRules() const {
    QJsonArray array;
    for (const Coverage::LabelRule& rule : m_coverage.configuration().labelRules) {
        array.append(QJsonObject{{QStringLiteral("pattern"), rule.pattern.pattern()},
                                 {QStringLiteral("replace"), rule.replacement}});
    }
    return array;
}

QJsonArray JsonReport::onlyContexts() const {
    QJsonArray array;
    for (const Coverage::Pattern& pattern : m_coverage.contextPatterns()) {
        array.append(pattern.glob());
    }
    return array;
}

QJsonArray JsonReport::ignoreRules() const {
    QJsonArray array;
    const QVector<Coverage::IgnoreRule>& rules = m_coverage.configuration().ignoreRules;
    for (int i = 0; i < rules.size(); ++i) {
        const CoverageResult::RuleUse use = m_coverage.ruleUses().value(i);
        array.append(QJsonObject{{QStringLiteral("rule"), rules.at(i).toString()},
                                 {QStringLiteral("why"), rules.at(i).why},
                                 {QStringLiteral("line"), rules.at(i).line},
                                 {QStringLiteral("elements"), use.elements},
                                 {QStringLiteral("used_elements"), use.usedElements}});
    }
    return array;
}

QJsonArray JsonReport::gates() const {
    QJsonArray array;
    for (const GateResult& gate : m_gates) {
        array.append(QJsonObject{{QStringLiteral("gate"), gate.name},
                                 {QStringLiteral("finding"), gate.finding},
                                 {QStringLiteral("met"), gate.isMet}});
    }
    return array;
}

} // namespace Uicov::Report

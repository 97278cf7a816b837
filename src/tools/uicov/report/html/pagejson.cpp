// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/pagejson.h"

#include "base/percentage.h"
#include "report/html/htmltext.h"
#include "report/html/pagemodel.h"

#include <QJsonArray>

namespace Uicov::Report::Html {

using Coverage::CoverageTree;
using Coverage::Events;
using Coverage::GateResult;

namespace {

/** Of more runs the page would be mostly times. */
constexpr int timedRuns = 8;

QString text(const QString& text) {
    return cappedText(text);
}

QString apartName(PageModel::Apart apart) {
    switch (apart) {
    case PageModel::Apart::None:
        return {};
    case PageModel::Apart::NeverPlaced:
        return QStringLiteral("unplaced");
    case PageModel::Apart::ElsewhereThen:
        return QStringLiteral("elsewhere");
    case PageModel::Apart::NoSize:
        return QStringLiteral("empty");
    case PageModel::Apart::Outside:
        return QStringLiteral("outside");
    case PageModel::Apart::Hidden:
        return QStringLiteral("hidden");
    }
    return {};
}

QJsonArray strings(const QStringList& list) {
    QJsonArray array;
    for (const QString& item : list) {
        array.append(text(item));
    }
    return array;
}

QJsonArray rectangle(const QRect& rect) {
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QJsonObject totalsObject(const CoverageTree::Totals& totals, int precision) {
    return {{QStringLiteral("cover"), Base::percentText(totals.used, totals.elements, precision)},
            {QStringLiteral("elements"), totals.elements},
            {QStringLiteral("used"), totals.used},
            {QStringLiteral("shown"), totals.shown},
            {QStringLiteral("missed"), totals.missed},
            {QStringLiteral("events"), totals.events},
            {QStringLiteral("covered"), totals.coveredEvents},
            {QStringLiteral("views"), totals.views},
            {QStringLiteral("seenViews"), totals.seenViews},
            {QStringLiteral("unavailable"), totals.unavailable}};
}

/** [name, count, counted by this version, [context, count, context, count ...]] each. */
QJsonArray eventsArray(const Events& events) {
    QJsonArray array;
    for (auto it = events.cbegin(); it != events.cend(); ++it) {
        QJsonArray byContext;
        for (auto hit = it->byContext.cbegin(); hit != it->byContext.cend(); ++hit) {
            byContext.append(static_cast<int>(hit.key()));
            byContext.append(hit.value());
        }
        array.append(QJsonArray{text(it.key()), it->count, !it->isNeverCounted, byContext});
    }
    return array;
}

/** As [run, first, last] one after the other; times of the newest runs only, to bound the page. */
QJsonArray usesArray(const QVector<UseTimes::Use>& uses, int firstTimedRun) {
    QJsonArray array;
    for (const UseTimes::Use& use : uses) {
        const bool isTimed = use.run >= firstTimedRun;
        array.append(use.run);
        array.append(isTimed ? use.first : -1);
        array.append(isTimed ? use.last : -1);
    }
    return array;
}

QJsonArray groupArray(const QVector<PageModel::Member>& members) {
    QJsonArray array;
    for (const PageModel::Member& member : members) {
        QJsonArray object{text(member.name), member.isUsed ? 1 : 0};
        if (member.place) {
            object.append(static_cast<int>(member.surface));
            object.append(rectangle(*member.place));
        }
        array.append(object);
    }
    return array;
}

/** What only controls have; what is as it mostly is, is left out. */
void addControl(const PageModel::Node& node, QJsonObject& object) {
    if (node.isDisabled) {
        object.insert(QStringLiteral("disabled"), true);
    }
    if (!node.ways.isEmpty()) {
        object.insert(QStringLiteral("ways"), strings(node.ways));
        object.insert(QStringLiteral("usedWays"), strings(node.usedWays));
    }
    if (!node.groupName.isEmpty()) {
        object.insert(QStringLiteral("groupName"), text(node.groupName));
    }
    if (node.members > 0) {
        object.insert(QStringLiteral("members"), node.members);
        object.insert(QStringLiteral("usedMembers"), node.usedMembers);
        object.insert(QStringLiteral("group"), groupArray(node.group));
    }
}

void addListed(const PageModel::Node& node, QJsonObject& object) {
    if (node.isCountable) {
        object.insert(QStringLiteral("state"), wordFor(node.state));
    } else if (node.isUnavailable()) {
        object.insert(QStringLiteral("unavailable"), true);
    } else {
        object.insert(QStringLiteral("rule"), static_cast<int>(node.ignoredBy));
        object.insert(QStringLiteral("otherwise"), wordFor(node.state));
    }
    object.insert(QStringLiteral("class"), text(node.className));
    if (!node.text.isEmpty()) {
        object.insert(QStringLiteral("text"), text(node.text));
    }
    object.insert(QStringLiteral("events"), eventsArray(node.events));
    if (node.place) {
        object.insert(QStringLiteral("surface"), static_cast<int>(node.surface));
        object.insert(QStringLiteral("place"), rectangle(*node.place));
    } else {
        object.insert(QStringLiteral("apart"), apartName(node.apart));
    }
    addControl(node, object);
    if (node.picture != PageModel::PictureId::None) {
        object.insert(QStringLiteral("picture"), static_cast<int>(node.picture));
    }
}

QJsonObject nodeObject(const PageModel::Node& node, int firstTimedRun) {
    QJsonObject object{{QStringLiteral("above"), node.above},
                       {QStringLiteral("kind"), text(node.step.kind)},
                       {QStringLiteral("step"), node.step.toKey()}};
    const QString label = node.step.caption.isEmpty() ? node.step.label : node.step.caption;
    if (!label.isEmpty()) {
        object.insert(QStringLiteral("label"), text(label));
    }
    if (!node.step.className.isEmpty()) {
        object.insert(QStringLiteral("of"), text(node.step.className));
    }
    if (node.step.ordinal > 1) {
        object.insert(QStringLiteral("ordinal"), node.step.ordinal);
    }
    if (node.isUnopenedMenu) {
        object.insert(QStringLiteral("unopened"), true);
    }
    if (node.home != PageModel::SurfaceId::None) {
        object.insert(QStringLiteral("home"), static_cast<int>(node.home));
    }
    if (node.isView) {
        object.insert(QStringLiteral("view"), true);
    }
    if (!node.uses.isEmpty()) {
        object.insert(QStringLiteral("uses"), usesArray(node.uses, firstTimedRun));
    }
    if (node.opens != PageModel::SurfaceId::None) {
        object.insert(QStringLiteral("opens"), static_cast<int>(node.opens));
    }
    if (node.isListed()) {
        addListed(node, object);
    }
    return object;
}

QJsonObject runObject(const RunHistory::Row& run, int precision) {
    QJsonObject labels;
    for (auto it = run.labels.cbegin(); it != run.labels.cend(); ++it) {
        labels.insert(text(it.key()), text(it.value()));
    }
    return {{QStringLiteral("application"), text(run.application)},
            {QStringLiteral("started"), text(run.started)},
            {QStringLiteral("qt"), text(run.qtVersion)},
            {QStringLiteral("platform"), text(run.platform)},
            {QStringLiteral("locale"), text(run.locale)},
            {QStringLiteral("architecture"), text(run.architecture)},
            {QStringLiteral("labels"), labels},
            {QStringLiteral("contexts"), strings(run.contexts)},
            {QStringLiteral("complete"), run.isComplete},
            {QStringLiteral("reason"), text(run.partialReason)},
            {QStringLiteral("totals"), totalsObject(run.totals, precision)},
            {QStringLiteral("first"), run.firstUsed}};
}

QJsonObject windowObject(const PageModel::Window& window, int precision) {
    QJsonArray surfaces;
    for (const PageModel::SurfaceId surface : window.surfaces) {
        surfaces.append(static_cast<int>(surface));
    }
    return {{QStringLiteral("application"), text(window.application)},
            {QStringLiteral("node"), window.node},
            {QStringLiteral("last"), window.lastNode},
            {QStringLiteral("over"), window.over},
            {QStringLiteral("totals"), totalsObject(window.totals, precision)},
            {QStringLiteral("surfaces"), surfaces}};
}

QJsonObject surfaceObject(const PageModel::Surface& surface) {
    const CoverageTree::Totals& totals = surface.totals;
    QJsonObject object{
        {QStringLiteral("window"), surface.window},
        {QStringLiteral("node"), surface.node},
        {QStringLiteral("opener"), surface.opener},
        {QStringLiteral("bounds"), rectangle(surface.bounds)},
        {QStringLiteral("picture"), static_cast<int>(surface.picture)},
        {QStringLiteral("above"), static_cast<int>(surface.above)},
        {QStringLiteral("own"), QJsonArray{totals.elements, totals.used, totals.shown,
                                           totals.missed, totals.unavailable}}};
    if (!surface.isSeen) {
        object.insert(QStringLiteral("unseen"), true);
    }
    if (surface.isOlder) {
        object.insert(QStringLiteral("older"), true);
    }
    if (!surface.shows.isEmpty()) {
        QJsonArray shows;
        for (const PageModel::SurfaceId shown : surface.shows) {
            shows.append(static_cast<int>(shown));
        }
        object.insert(QStringLiteral("shows"), shows);
    }
    return object;
}

QJsonObject pictureObject(const PageModel::Picture& picture) {
    return {{QStringLiteral("width"), picture.size.width()},
            {QStringLiteral("height"), picture.size.height()},
            {QStringLiteral("reduced"), picture.isReduced}};
}

QJsonObject gateObject(const GateResult& gate) {
    return {{QStringLiteral("name"), text(gate.name)},
            {QStringLiteral("finding"), text(gate.finding)},
            {QStringLiteral("met"), gate.isMet}};
}

QJsonObject ruleObject(const PageModel::Rule& rule) {
    return {{QStringLiteral("rule"), text(rule.text)},
            {QStringLiteral("why"), text(rule.why)},
            {QStringLiteral("where"), text(rule.where)},
            {QStringLiteral("elements"), rule.elements},
            {QStringLiteral("used"), rule.usedElements}};
}

QJsonObject criteriaObject(const QMap<QString, QStringList>& criteria) {
    QJsonObject object;
    for (auto it = criteria.cbegin(); it != criteria.cend(); ++it) {
        object.insert(text(it.key()), strings(it.value()));
    }
    return object;
}

template <class Items, class Function>
QJsonArray array(const Items& items, Function object) {
    QJsonArray result;
    for (const auto& item : items) {
        result.append(object(item));
    }
    return result;
}

} // namespace

QJsonObject pageJson(const PageModel& model) {
    const auto run = [&](const RunHistory::Row& row) { return runObject(row, model.precision); };
    const auto window = [&](const PageModel::Window& row) {
        return windowObject(row, model.precision);
    };
    const int firstTimedRun = model.runs.size() - timedRuns;
    const auto node = [&](const PageModel::Node& row) { return nodeObject(row, firstTimedRun); };
    return {{QStringLiteral("title"), text(model.title)},
            {QStringLiteral("controls"), model.isOfControls},
            {QStringLiteral("precision"), model.precision},
            {QStringLiteral("totals"), totalsObject(model.totals, model.precision)},
            {QStringLiteral("warnings"), strings(model.warnings)},
            {QStringLiteral("notes"), strings(model.notes)},
            {QStringLiteral("gates"), array(model.gates, gateObject)},
            {QStringLiteral("rules"), array(model.rules, ruleObject)},
            {QStringLiteral("criteria"), criteriaObject(model.criteria)},
            {QStringLiteral("contexts"), strings(model.contexts)},
            {QStringLiteral("runs"), array(model.runs, run)},
            {QStringLiteral("windows"), array(model.windows, window)},
            {QStringLiteral("surfaces"), array(model.surfaces, surfaceObject)},
            {QStringLiteral("nodes"), array(model.nodes, node)},
            {QStringLiteral("pictures"), array(model.pictures, pictureObject)}};
}

} // namespace Uicov::Report::Html

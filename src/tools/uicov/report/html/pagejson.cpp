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

void addListed(const PageModel::Node& node, QJsonObject& object) {
    if (node.isCountable) {
        object.insert(QStringLiteral("state"), wordFor(node.state));
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
    if (node.picture != PageModel::PictureId::None) {
        object.insert(QStringLiteral("picture"), static_cast<int>(node.picture));
    }
}

QJsonObject nodeObject(const PageModel::Node& node) {
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
    return {{QStringLiteral("window"), surface.window},
            {QStringLiteral("node"), surface.node},
            {QStringLiteral("opener"), surface.opener},
            {QStringLiteral("bounds"), rectangle(surface.bounds)},
            {QStringLiteral("picture"), static_cast<int>(surface.picture)}};
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
    return {{QStringLiteral("title"), text(model.title)},
            {QStringLiteral("controls"), model.isOfControls},
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
            {QStringLiteral("nodes"), array(model.nodes, nodeObject)},
            {QStringLiteral("pictures"), array(model.pictures, pictureObject)}};
}

} // namespace Uicov::Report::Html

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "dump/runprinter.h"

#include "base/displaytext.h"
#include "dump/recordtext.h"
#include "run/run.h"

#include <QJsonArray>

namespace Uicov::Dump {

using Runs::Hit;
using Runs::Run;
using Runs::RunElement;

namespace {

QString key(const char* name) {
    return QLatin1String(name);
}

QString pair(const char* name, const QString& value) {
    return QLatin1Char(' ') + QLatin1String(name) + QLatin1Char('=') + quoted(value);
}

QString number(const char* name, qint64 value) {
    return QLatin1Char(' ') + QLatin1String(name) + QLatin1Char('=') + QString::number(value);
}

/** "#3 Button "Start"": as the messages of a recording call it. */
QString nameOf(const Run& run, int index) {
    const RunElement& element = run.element(index);
    QString name = QStringLiteral("#%1").arg(index + 1);
    if (!element.type.isEmpty()) {
        name += QLatin1Char(' ') + Base::escaped(element.type);
    }
    if (!element.text.isEmpty()) {
        name += QLatin1Char(' ') + quoted(element.text);
    }
    return name;
}

QString runLine(const Run& run) {
    QString line = QStringLiteral("run ") + run.uuid + pair("session", run.session) +
                   pair("application", run.application) + pair("executable", run.executable) +
                   pair("qt", run.qtVersion) + pair("platform", run.platform) +
                   pair("locale", run.locale) + pair("architecture", run.architecture) +
                   pair("started", run.started) + number("messages", run.messages);
    if (run.isComplete) {
        return line + QStringLiteral(" complete");
    }
    return line + QStringLiteral(" partial") + pair("reason", run.partialReason) +
           number("bytesLost", run.bytesLost) + number("messagesLost", run.messagesLost);
}

QString elementLine(const Run& run, int index) {
    const RunElement& element = run.element(index);
    QString line = QStringLiteral("element ") + nameOf(run, index) +
                   pair("class", element.className) + pair("id", element.id);
    line += element.isTransparentNode ? QStringLiteral(" transparent") : QString();
    line += element.isSubgraphTransparent ? QStringLiteral(" subgraphTransparent") : QString();
    line += element.isWindowNode ? QStringLiteral(" window") : QString();
    if (element.parent >= 0) {
        line += QStringLiteral(" parent=#%1").arg(element.parent + 1);
    }
    for (const int child : element.children) {
        // one whose parent is another would be known from no other line
        if (run.element(child).parent != index) {
            line += QStringLiteral(" lists=#%1").arg(child + 1);
        }
    }
    if (element.place) {
        line += QLatin1Char(' ') + printRect(*element.place);
    }
    if (!element.events.isEmpty()) {
        line += pair("events", element.events.join(QLatin1Char(',')));
    }
    if (!element.picture.isEmpty()) {
        line += QStringLiteral(" picture=") + QString::fromLatin1(element.picture.toHex());
    }
    return line;
}

QJsonObject runObject(const Run& run) {
    QJsonObject labels;
    for (auto it = run.labels.cbegin(); it != run.labels.cend(); ++it) {
        labels.insert(it.key(), it.value());
    }
    QJsonObject warnings;
    for (auto it = run.warnings.cbegin(); it != run.warnings.cend(); ++it) {
        warnings.insert(it.key(), it.value());
    }
    return {{key("run"), run.uuid},
            {key("session"), run.session},
            {key("application"), run.application},
            {key("executable"), run.executable},
            {key("qtVersion"), run.qtVersion},
            {key("platform"), run.platform},
            {key("locale"), run.locale},
            {key("architecture"), run.architecture},
            {key("started"), run.started},
            {key("labels"), labels},
            {key("complete"), run.isComplete},
            {key("partialReason"), run.partialReason},
            {key("bytesLost"), run.bytesLost},
            {key("messages"), run.messages},
            {key("messagesLost"), run.messagesLost},
            {key("contexts"), QJsonArray::fromStringList(run.contexts)},
            {key("warnings"), warnings},
            {key("elements"), static_cast<qint64>(run.elements.size())}};
}

QJsonArray hitArray(const Run& run, const RunElement& element) {
    QJsonArray hits;
    for (const Hit& hit : element.hits) {
        hits.append(QJsonObject{{key("event"), hit.event},
                                {key("context"), run.contexts.value(hit.context)},
                                {key("count"), hit.count}});
    }
    return hits;
}

QJsonObject elementObject(const Run& run, int index) {
    const RunElement& element = run.element(index);
    QJsonArray children;
    for (const int child : element.children) {
        children.append(child);
    }
    QJsonObject object{
        {key("element"), index},
        {key("of"), run.uuid},
        {key("id"), element.id},
        {key("class"), element.className},
        {key("type"), element.type},
        {key("text"), element.text.isNull() ? QJsonValue() : QJsonValue(element.text)},
        {key("transparent"), element.isTransparentNode},
        {key("subgraphTransparent"), element.isSubgraphTransparent},
        {key("window"), element.isWindowNode},
        {key("parent"), element.parent < 0 ? QJsonValue() : QJsonValue(element.parent)},
        {key("children"), children},
        {key("events"), QJsonArray::fromStringList(element.events)},
        {key("hits"), hitArray(run, element)},
        {key("picture"), element.picture.isEmpty()
                             ? QJsonValue()
                             : QJsonValue(QString::fromLatin1(element.picture.toHex()))}};
    if (element.place) {
        object.insert(key("rect"), QJsonObject{{key("left"), element.place->left()},
                                               {key("top"), element.place->top()},
                                               {key("right"), element.place->right()},
                                               {key("bottom"), element.place->bottom()}});
    }
    return object;
}

} // namespace

QStringList runLines(const Run& run) {
    QStringList lines{runLine(run)};
    for (auto it = run.labels.cbegin(); it != run.labels.cend(); ++it) {
        lines.append(QStringLiteral("label ") + quoted(it.key()) + pair("value", it.value()));
    }
    for (const QString& context : run.contexts) {
        lines.append(QStringLiteral("context ") + quoted(context));
    }
    for (auto it = run.warnings.cbegin(); it != run.warnings.cend(); ++it) {
        lines.append(QStringLiteral("warning ") + quoted(it.key()) + number("times", it.value()));
    }
    for (int index = 0; index < static_cast<int>(run.elements.size()); ++index) {
        lines.append(elementLine(run, index));
        for (const Hit& hit : run.element(index).hits) {
            lines.append(QStringLiteral("hit ") + nameOf(run, index) + pair("event", hit.event) +
                         pair("context", run.contexts.value(hit.context)) +
                         number("count", hit.count));
        }
    }
    return lines;
}

QVector<QJsonObject> runObjects(const Run& run) {
    QVector<QJsonObject> objects{runObject(run)};
    for (int index = 0; index < static_cast<int>(run.elements.size()); ++index) {
        objects.append(elementObject(run, index));
    }
    return objects;
}

} // namespace Uicov::Dump

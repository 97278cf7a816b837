// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "journalfile.h"

#include "names.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QStringList texts(const QJsonValue& value) {
    QStringList list;
    const QJsonArray array = value.toArray();
    for (const QJsonValue& one : array) {
        list.append(one.toString());
    }
    return list;
}

QString text(const QJsonObject& line, const char* key) {
    return line.value(QLatin1String(key)).toString();
}

int number(const QJsonObject& line, const char* key) {
    return line.value(QLatin1String(key)).toInt();
}

qint64 time(const QJsonObject& line) {
    return static_cast<qint64>(line.value(QLatin1String("t")).toDouble());
}

QVector<int> numbers(const QJsonObject& line, const char* key) {
    QVector<int> list;
    const QJsonArray array = line.value(QLatin1String(key)).toArray();
    for (const QJsonValue& one : array) {
        list.append(one.toInt());
    }
    return list;
}

void takeObject(const QJsonObject& line, JournalFile::Object& object) {
    object.number = number(line, "o");
    object.className = text(line, "class");
    object.bases = texts(line.value(QLatin1String("bases")));
    const QStringList names = texts(line.value(QLatin1String("names")));
    for (const QString& name : names) {
        Names::add(object.names, name);
    }
    object.chain = numbers(line, "chain");
}

} // namespace

bool JournalFile::read(const QString& path, QString& problem) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = path + QStringLiteral(": ") + file.errorString();
        return false;
    }
    int lines = 0;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        ++lines;
        // The last one of a program that ended by itself may be cut off.
        if (!takeLine(line) && !file.atEnd()) {
            problem = QStringLiteral("%1: line %2 is none of a journal").arg(path).arg(lines);
            return false;
        }
    }
    if (nodes.isEmpty()) {
        problem = path + QStringLiteral(": the plugin saw nothing");
    }
    return !nodes.isEmpty();
}

bool JournalFile::takeLine(const QByteArray& bytes) {
    const QJsonObject line = QJsonDocument::fromJson(bytes).object();
    const QString kind = text(line, "k");
    if (kind == QLatin1String("object")) {
        takeObject(line, objects[number(line, "o")]);
    } else if (kind == QLatin1String("gone")) {
        objects[number(line, "o")].successor = number(line, "next");
    } else if (kind == QLatin1String("node")) {
        takeNode(line);
    } else if (kind == QLatin1String("step")) {
        steps.append({time(line), text(line, "what")});
    } else if (kind == QLatin1String("input")) {
        inputs.append({time(line), number(line, "o"), text(line, "type"), true, number(line, "key"),
                       number(line, "entry")});
    } else if (kind == QLatin1String("signal")) {
        reactions.append({time(line), number(line, "o"), text(line, "name"),
                          line.value(QLatin1String("in")).toBool(), 0, 0});
    } else if (kind == QLatin1String("done")) {
        isDone = true;
    } else {
        return false;
    }
    return true;
}

void JournalFile::takeNode(const QJsonObject& line) {
    Node node;
    node.number = number(line, "n");
    node.object = number(line, "o");
    node.hasObject = line.value(QLatin1String("own")).toBool();
    node.role = text(line, "role");
    node.name = Names::plain(text(line, "name"));
    node.isInvisible =
        texts(line.value(QLatin1String("states"))).contains(QLatin1String("invisible"));
    node.inner = numbers(line, "inner");
    if (node.hasObject) {
        Names::add(objects[node.object].names, node.name); // as its label, which it does not know
    }
    nodes.append(node);
}

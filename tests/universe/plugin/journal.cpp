// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "journal.h"

#include "kinship.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <ctime>

Journal::Journal(const QString& path)
    : m_file(path) {
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        qFatal("universe: cannot write %s", qPrintable(path));
    }
}

qint64 Journal::now() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<qint64>(time.tv_sec) * 1000000 + time.tv_nsec / 1000;
}

int Journal::object(QObject* object) {
    const auto known = m_known.constFind(object);
    const bool isNew = known == m_known.cend();
    const QSet<QString> names = Kinship::namesOf(object);
    const std::vector<QObject*> owners = Kinship::chainOf(object);
    if (!isNew && known->names.contains(names) && known->chain == owners) {
        return known->number;
    }
    if (isNew) {
        connect(object, &QObject::destroyed, this, &Journal::forget);
        m_known[object].number = ++m_lastNumber;
    }
    const int number = m_known[object].number;
    m_known[object].names += names;
    m_known[object].chain = owners;
    QJsonArray chain;
    for (QObject* owner : owners) {
        chain.append(owner == object ? number : this->object(owner));
    }
    write({{QStringLiteral("k"), QStringLiteral("object")},
           {QStringLiteral("o"), number},
           {QStringLiteral("class"), Kinship::className(object->metaObject())},
           {QStringLiteral("bases"), QJsonArray::fromStringList(Kinship::basesOf(object))},
           {QStringLiteral("names"),
            QJsonArray::fromStringList(QStringList(names.cbegin(), names.cend()))},
           {QStringLiteral("chain"), chain}});
    return number;
}

void Journal::forget(QObject* object) {
    write({{QStringLiteral("k"), QStringLiteral("gone")},
           {QStringLiteral("o"), m_known.take(object).number},
           {QStringLiteral("next"), m_lastNumber + 1}});
}

void Journal::write(const QJsonObject& line) {
    m_file.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
}

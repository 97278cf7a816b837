// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/runwriter.h"

#include "run/keywalk.h"
#include "store/rowbatch.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Uicov::Store {

using Runs::Hit;
using Runs::KeyWalk;
using Runs::Run;
using Runs::RunElement;

namespace {

/** Ids are kept at hand for this many texts, so that memory stays bounded. */
constexpr int maximumKnownTexts = 100000;

/** What becomes NULL. */
QVariant nothing() {
    return {};
}

QString eventsAsJson(const QStringList& events) {
    return QString::fromUtf8(
        QJsonDocument(QJsonArray::fromStringList(events)).toJson(QJsonDocument::Compact));
}

QString attributesAsJson(const QMap<QString, QString>& attributes) {
    QJsonObject object;
    for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
        object.insert(it.key(), it.value());
    }
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

/** An empty text that is not null: SQLite would take a null one for NULL. */
QString notNull(const QString& text) {
    return text.isNull() ? QStringLiteral("") : text;
}

/** The key of each element at the first of its places; empty where it has none. */
struct Keys {
    explicit Keys(const Run& run)
        : key(static_cast<int>(run.elements.size()))
        , structure(static_cast<int>(run.elements.size())) {
        const std::vector<KeyWalk::Place> places = KeyWalk(run).places();
        for (const KeyWalk::Place& place : places) {
            if (key.at(place.element).isEmpty()) {
                key[place.element] = place.key;
                structure[place.element] = place.structureKey;
            }
        }
    }

    QVector<QString> key;
    QVector<QString> structure;
};

} // namespace

RunWriter::RunWriter(Sql& sql)
    : m_sql(sql) {}

void RunWriter::forgetIds() {
    m_texts.clear();
    m_events.clear();
}

DataFile::Added RunWriter::write(const Run& run, const RunRank& rank) {
    DataFile::Added result = DataFile::Added::New;
    QSqlQuery& known = m_sql.query(
        QStringLiteral("SELECT messages, is_complete, bytes_lost, digest FROM run WHERE uuid = ?"),
        {run.uuid});
    if (m_sql.next(known)) {
        const RunRank other{known.value(0).toLongLong(), known.value(1).toBool(),
                            known.value(2).toLongLong(), known.value(3).toByteArray()};
        known.finish();
        if (!(other < rank)) {
            return DataFile::Added::Known;
        }
        remove(run.uuid);
        result = DataFile::Added::Better;
    }
    const qint64 id = writeAttributes(run, rank.digest);
    writeElements(id, run);
    return result;
}

bool RunWriter::remove(const QString& uuid) {
    for (const char* table : {"hit", "further_parent", "element", "warning", "context", "label"}) {
        m_sql.changedRows(QStringLiteral("DELETE FROM %1 WHERE run = (SELECT id FROM run WHERE "
                                         "uuid = ?)")
                              .arg(QLatin1String(table)),
                          {uuid});
    }
    return m_sql.changedRows(QStringLiteral("DELETE FROM run WHERE uuid = ?"), {uuid}) > 0;
}

qint64 RunWriter::writeAttributes(const Run& run, const QByteArray& digest) {
    const qint64 id = m_sql.insert(
        QStringLiteral("INSERT INTO run (uuid, session, application, executable, qt_version, "
                       "platform, locale, architecture, started, is_complete, partial_reason, "
                       "bytes_lost, messages, messages_lost, digest, extension) "
                       "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        {run.uuid, notNull(run.session), notNull(run.application), notNull(run.executable),
         notNull(run.qtVersion), notNull(run.platform), notNull(run.locale),
         notNull(run.architecture), notNull(run.started), run.isComplete,
         notNull(run.partialReason), run.bytesLost, run.messages, run.messagesLost, digest,
         notNull(run.extension)});
    for (auto it = run.labels.cbegin(); it != run.labels.cend(); ++it) {
        m_sql.insert(QStringLiteral("INSERT INTO label VALUES (?, ?, ?)"),
                     {id, notNull(it.key()), notNull(it.value())});
    }
    for (int i = 0; i < run.contexts.size(); ++i) {
        m_sql.insert(QStringLiteral("INSERT INTO context VALUES (?, ?, ?)"),
                     {id, i, notNull(run.contexts.at(i))});
    }
    for (auto it = run.warnings.cbegin(); it != run.warnings.cend(); ++it) {
        m_sql.insert(QStringLiteral("INSERT INTO warning VALUES (?, ?, ?)"),
                     {id, notNull(it.key()), it.value()});
    }
    return id;
}

void RunWriter::writeElements(qint64 id, const Run& run) {
    const Keys keys(run);
    m_keys = keys.key;
    m_structureKeys = keys.structure;
    const int count = static_cast<int>(run.elements.size());
    QVector<int> positions(count, 0);
    for (int parent = 0; parent < count; ++parent) {
        const QVector<int>& children = run.element(parent).children;
        for (int position = 0; position < children.size(); ++position) {
            const int child = children.at(position);
            if (run.element(child).parent == parent) {
                positions[child] = position;
            } else {
                m_sql.insert(QStringLiteral("INSERT INTO further_parent VALUES (?, ?, ?, ?)"),
                             {id, parent, position, child});
            }
        }
    }
    RowBatch elements(m_sql, "element", 22);
    RowBatch hits(m_sql, "hit", 7);
    for (int i = 0; i < count && m_sql.isOk(); ++i) {
        writeElement(elements, id, run, i, positions.at(i));
        for (const Hit& hit : run.element(i).hits) {
            hits.add({id, i, textId(hit.event), hit.context, hit.count,
                      hit.first < 0 ? nothing() : QVariant(hit.first),
                      hit.last < 0 ? nothing() : QVariant(hit.last)});
        }
    }
    elements.flush();
    hits.flush();
}

void RunWriter::writeElement(RowBatch& rows, qint64 id, const Run& run, int number, int position) {
    const RunElement& element = run.element(number);
    const bool hasPlace = element.place.has_value();
    const QRect place = element.place.value_or(QRect());
    // QRect's own width and height overflow for rectangles as wide as int.
    const auto width = static_cast<qint64>(place.right()) - place.left() + 1;
    const auto height = static_cast<qint64>(place.bottom()) - place.top() + 1;
    rows.add({id,
              number,
              notNull(element.id),
              element.parent < 0 ? nothing() : QVariant(element.parent),
              position,
              textId(element.className),
              textOrNull(element.type, element.type.isEmpty()),
              textOrNull(element.text, element.text.isNull()),
              element.isTransparentNode,
              element.isSubgraphTransparent,
              element.isWindowNode,
              eventsId(element.events),
              textOrNull(m_keys.at(number), m_keys.at(number).isEmpty()),
              textOrNull(m_structureKeys.at(number), m_structureKeys.at(number).isEmpty()),
              hasPlace ? QVariant(place.left()) : nothing(),
              hasPlace ? QVariant(place.top()) : nothing(),
              hasPlace ? QVariant(width) : nothing(),
              hasPlace ? QVariant(height) : nothing(),
              pictureId(element.picture, run),
              textOrNull(attributesAsJson(element.attributes), element.attributes.isEmpty()),
              element.wasEnabled,
              element.wasSeen});
}

QVariant RunWriter::textOrNull(const QString& text, bool isNull) {
    return isNull ? nothing() : textId(text);
}

QVariant RunWriter::textId(const QString& text) {
    const auto known = m_texts.constFind(text);
    if (known != m_texts.cend()) {
        return *known;
    }
    const QString value = notNull(text);
    QVariant id = m_sql.value(QStringLiteral("SELECT id FROM text WHERE value = ?"), {value});
    if (!id.isValid()) {
        id = m_sql.insert(QStringLiteral("INSERT INTO text (value) VALUES (?)"), {value});
    }
    if (m_texts.size() >= maximumKnownTexts) {
        forgetIds();
    }
    m_texts.insert(text, id.toLongLong());
    return id;
}

QVariant RunWriter::eventsId(const QStringList& events) {
    const auto known = m_events.constFind(events);
    if (known != m_events.cend()) {
        return *known;
    }
    QVariant id = textId(eventsAsJson(events));
    if (m_events.size() >= maximumKnownTexts) {
        m_events.clear();
    }
    m_events.insert(events, id.toLongLong());
    return id;
}

QVariant RunWriter::pictureId(const QByteArray& hash, const Run& run) {
    if (hash.isEmpty()) {
        return nothing();
    }
    QVariant known = m_sql.value(QStringLiteral("SELECT id FROM picture WHERE hash = ?"), {hash});
    if (known.isValid()) {
        return known;
    }
    const auto png = run.pictures.constFind(hash);
    if (png == run.pictures.cend()) {
        return nothing(); // it was read without its pictures
    }
    return m_sql.insert(QStringLiteral("INSERT INTO picture (hash, png) VALUES (?, ?)"),
                        {hash, *png});
}

} // namespace Uicov::Store

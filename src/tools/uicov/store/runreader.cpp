// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/runreader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <limits>
#include <tuple>

namespace Uicov::Store {

using Runs::Hit;
using Runs::Run;
using Runs::RunElement;

namespace {

/** Texts kept at hand from run to run, so that memory stays bounded. */
constexpr int maximumKnownTexts = 100000;

QString damage(const char* what) {
    return QStringLiteral("the run in it is damaged: ") + QLatin1String(what);
}

bool fitsInt(qint64 number) {
    return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
}

/** From one end of what an int holds to the other, it is 2^32; a sum of it with an int is safe. */
bool isExtent(qint64 number) {
    constexpr qint64 largest = qint64{1} << 32;
    return number >= -largest && number <= largest;
}

/** No program counts that far; sums of larger ones could run over. */
bool isCount(qint64 number) {
    constexpr qint64 largest = qint64{1} << 40;
    return number > 0 && number <= largest;
}

/** Columns of the statement that reads elements. */
enum Column {
    Number,
    Id,
    Parent,
    Position,
    Class,
    Type,
    Text,
    TransparentNode,
    TransparentSubgraph,
    WindowNode,
    EventNames,
    Left,
    Top,
    Width,
    Height,
    PictureHash,
    Attributes,
    WasEnabled,
    WasSeen
};

std::optional<QRect> placeFrom(const QSqlQuery& row) {
    if (row.isNull(Left)) {
        return std::nullopt;
    }
    const qint64 left = row.value(Left).toLongLong();
    const qint64 top = row.value(Top).toLongLong();
    const qint64 width = row.value(Width).toLongLong();
    const qint64 height = row.value(Height).toLongLong();
    if (!fitsInt(left) || !fitsInt(top) || !isExtent(width) || !isExtent(height)) {
        return std::nullopt;
    }
    const qint64 right = left + width - 1;
    const qint64 bottom = top + height - 1;
    if (!fitsInt(right) || !fitsInt(bottom)) {
        return std::nullopt;
    }
    return QRect(QPoint(static_cast<int>(left), static_cast<int>(top)),
                 QPoint(static_cast<int>(right), static_cast<int>(bottom)));
}

} // namespace

RunReader::RunReader(Sql& sql)
    : m_sql(sql) {}

void RunReader::readAttributes(const QString& uuid, Run& run) {
    QSqlQuery& row = m_sql.query(
        QStringLiteral("SELECT id, uuid, session, application, executable, qt_version, platform, "
                       "locale, architecture, started, is_complete, partial_reason, bytes_lost, "
                       "messages, messages_lost, digest, ") +
            (m_isExtended ? QStringLiteral("extension") : QStringLiteral("''")) +
            QStringLiteral(" FROM run WHERE uuid = ?"),
        {uuid});
    if (!m_sql.next(row)) {
        m_sql.fail(QStringLiteral("there is no run ") + uuid + QStringLiteral(" in it"));
        return;
    }
    int column = 0;
    m_id = row.value(column++).toLongLong();
    for (QString* text :
         {&run.uuid, &run.session, &run.application, &run.executable, &run.qtVersion, &run.platform,
          &run.locale, &run.architecture, &run.started}) {
        *text = row.value(column++).toString();
    }
    run.isComplete = row.value(column++).toBool();
    run.partialReason = row.value(column++).toString();
    run.bytesLost = row.value(column++).toLongLong();
    run.messages = row.value(column++).toLongLong();
    run.messagesLost = row.value(column++).toLongLong();
    m_digest = row.value(column++).toByteArray();
    run.extension = row.value(column).toString();
    row.finish();
    if (run.bytesLost < 0 || run.messages < 0 || run.messagesLost < 0) {
        m_sql.fail(damage("it has less than nothing"));
        return;
    }
    QSqlQuery& labels =
        m_sql.query(QStringLiteral("SELECT name, value FROM label WHERE run = ?"), {m_id});
    while (m_sql.next(labels)) {
        run.labels.insert(labels.value(0).toString(), labels.value(1).toString());
    }
    QSqlQuery& contexts = m_sql.query(
        QStringLiteral("SELECT name FROM context WHERE run = ? ORDER BY number"), {m_id});
    while (m_sql.next(contexts)) {
        run.contexts.append(contexts.value(0).toString());
    }
    if (run.contexts.isEmpty()) {
        m_sql.fail(damage("it has no context"));
    }
    QSqlQuery& warnings =
        m_sql.query(QStringLiteral("SELECT line, count FROM warning WHERE run = ?"), {m_id});
    while (m_sql.next(warnings)) {
        const qint64 count = warnings.value(1).toLongLong();
        if (!isCount(count)) {
            m_sql.fail(damage("a warning was never given"));
            return;
        }
        run.warnings.insert(warnings.value(0).toString(), count);
    }
}

void RunReader::read(const QString& uuid, bool withPictures, Run& run) {
    readAttributes(uuid, run);
    readElements(run);
    linkChildren(run);
    readHits(run);
    if (withPictures) {
        readPictures(run);
    }
}

void RunReader::readElements(Run& run) {
    m_listings.clear();
    if (m_texts.size() > maximumKnownTexts) {
        m_texts.clear();
        m_events.clear();
    }
    QSqlQuery& row = m_sql.query(
        QStringLiteral(
            "SELECT number, element.id, parent, position, class, type, text, transparent_node, "
            "transparent_subgraph, window_node, events, x, y, width, height, picture.hash, ") +
            (m_isExtended ? QStringLiteral("attributes, was_enabled, was_seen ")
                          : QStringLiteral("NULL, 1, 0 ")) +
            QStringLiteral("FROM element LEFT JOIN picture ON picture.id = element.picture "
                           "WHERE run = ? ORDER BY number"),
        {m_id});
    while (m_sql.next(row)) {
        if (row.value(Number).toLongLong() != static_cast<qint64>(run.elements.size())) {
            m_sql.fail(damage("elements are missing"));
            return;
        }
        run.elements.push_back(elementFrom(row));
        if (!row.isNull(Parent)) {
            m_listings.push_back({row.value(Parent).toInt(), row.value(Position).toInt(),
                                  static_cast<int>(run.elements.size()) - 1});
        }
    }
}

RunElement RunReader::elementFrom(const QSqlQuery& row) {
    RunElement element;
    element.id = row.value(Id).toString();
    element.className = textById(row.value(Class));
    element.type = textById(row.value(Type));
    element.text = textById(row.value(Text));
    element.isTransparentNode = row.value(TransparentNode).toBool();
    element.isSubgraphTransparent = row.value(TransparentSubgraph).toBool();
    element.isWindowNode = row.value(WindowNode).toBool();
    element.parent = row.isNull(Parent) ? -1 : row.value(Parent).toInt();
    element.events = eventsById(row.value(EventNames));
    element.place = placeFrom(row);
    element.picture = row.value(PictureHash).toByteArray();
    element.attributes = attributesById(row.value(Attributes));
    element.wasEnabled = row.value(WasEnabled).toBool();
    element.wasSeen = row.value(WasSeen).toBool();
    return element;
}

void RunReader::linkChildren(Run& run) {
    QSqlQuery& row = m_sql.query(
        QStringLiteral("SELECT parent, position, element FROM further_parent WHERE run = ?"),
        {m_id});
    while (m_sql.next(row)) {
        m_listings.push_back({row.value(0).toInt(), row.value(1).toInt(), row.value(2).toInt()});
    }
    std::sort(m_listings.begin(), m_listings.end(), [](const Listing& a, const Listing& b) {
        return std::tie(a.parent, a.position, a.child) < std::tie(b.parent, b.position, b.child);
    });
    for (const Listing& listing : m_listings) {
        if (!isElement(run, listing.parent) || !isElement(run, listing.child)) {
            m_sql.fail(damage("an element hangs on one that is not there"));
            return;
        }
        run.elements[static_cast<std::size_t>(listing.parent)].children.append(listing.child);
    }
}

void RunReader::readHits(Run& run) {
    QSqlQuery& row = m_sql.query(
        QStringLiteral("SELECT element, event, context, count, ") +
            (m_isExtended ? QStringLiteral("first, last") : QStringLiteral("NULL, NULL")) +
            QStringLiteral(" FROM hit WHERE run = ?"),
        {m_id});
    while (m_sql.next(row)) {
        const int number = row.value(0).toInt();
        Hit hit{textById(row.value(1)), row.value(2).toInt(), row.value(3).toLongLong(), -1, -1};
        if (!row.isNull(4) && !row.isNull(5)) {
            hit.first = row.value(4).toLongLong();
            hit.last = row.value(5).toLongLong();
        }
        const bool isSound = isElement(run, number) && isCount(hit.count) && hit.context >= 0 &&
                             hit.context < run.contexts.size() && hit.first >= -1 &&
                             hit.last >= hit.first;
        if (!isSound) {
            m_sql.fail(damage("a count belongs to nothing"));
            return;
        }
        run.elements[static_cast<std::size_t>(number)].hits.append(hit);
    }
    for (RunElement& element : run.elements) {
        std::sort(element.hits.begin(), element.hits.end(), [](const Hit& a, const Hit& b) {
            return std::tie(a.event, a.context) < std::tie(b.event, b.context);
        });
    }
}

void RunReader::readPictures(Run& run) {
    QSqlQuery& row =
        m_sql.query(QStringLiteral("SELECT DISTINCT hash, png FROM element "
                                   "JOIN picture ON picture.id = element.picture WHERE run = ?"),
                    {m_id});
    while (m_sql.next(row)) {
        run.pictures.insert(row.value(0).toByteArray(), row.value(1).toByteArray());
    }
}

QString RunReader::textById(const QVariant& id) {
    if (id.isNull()) {
        return {};
    }
    const qint64 number = id.toLongLong();
    const auto known = m_texts.constFind(number);
    if (known != m_texts.cend()) {
        return *known;
    }
    const QVariant value =
        m_sql.value(QStringLiteral("SELECT value FROM text WHERE id = ?"), {number});
    if (!value.isValid()) {
        m_sql.fail(damage("a text is missing"));
    }
    return *m_texts.insert(number, value.toString());
}

QStringList RunReader::eventsById(const QVariant& id) {
    const qint64 number = id.toLongLong();
    const auto known = m_events.constFind(number);
    if (known != m_events.cend()) {
        return *known;
    }
    QStringList events;
    const QJsonArray names = QJsonDocument::fromJson(textById(id).toUtf8()).array();
    for (const QJsonValue& name : names) {
        events.append(name.toString());
    }
    return *m_events.insert(number, events);
}

QMap<QString, QString> RunReader::attributesById(const QVariant& id) {
    QMap<QString, QString> attributes;
    if (!id.isNull()) {
        const QJsonObject object = QJsonDocument::fromJson(textById(id).toUtf8()).object();
        for (auto it = object.begin(); it != object.end(); ++it) {
            attributes.insert(it.key(), it.value().toString());
        }
    }
    return attributes;
}

bool RunReader::isElement(const Run& run, int number) const {
    return number >= 0 && static_cast<std::size_t>(number) < run.elements.size();
}

} // namespace Uicov::Store

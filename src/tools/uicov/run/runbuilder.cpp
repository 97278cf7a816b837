// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/runbuilder.h"

#include "base/sha256.h"
#include "recording/frame.h"
#include "recording/framedecoder.h"
#include "recording/recorddecoder.h"
#include "run/storedtext.h"
#include "run/viewcontents.h"
#include "uiabstraction/elementwalk.h"

#include <QBuffer>

#include <limits>

namespace Uicov::Runs {

using Base::Sha256;
using Recording::decodeLog;
using Recording::decodeMark;
using Recording::Ending;
using Recording::Frame;
using Recording::Loss;
using Recording::Record;
using RecordingFormat::FrameType;
using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace Key = RecordingFormat::Key;

namespace {

QByteArray pngOf(const QImage& image) {
    QByteArray png;
    if (!image.isNull()) {
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
    }
    return png;
}

/** Static and dynamic context as one name. */
QString contextName(const QString& ofRun, const QString& dynamicName) {
    if (ofRun.isEmpty() || dynamicName.isEmpty()) {
        return ofRun + dynamicName;
    }
    return ofRun + QLatin1Char('|') + dynamicName;
}

QString reasonOf(const Ending& ending, const Loss& loss, qint64 unusable, qint64 records) {
    QStringList reasons;
    if (loss.others > 0) {
        reasons.append(QStringLiteral("reached its size limit"));
    }
    if (!ending.isComplete()) {
        reasons.append(ending.toString());
    }
    if (unusable > 0) {
        reasons.append(QStringLiteral("lost %1 of %2 records").arg(unusable).arg(records));
    }
    return reasons.join(QStringLiteral(", "));
}

} // namespace

void RunBuilder::add(const Frame& frame) {
    constexpr quint64 microseconds = 1000;
    m_time = static_cast<qint64>(frame.time / microseconds);
    switch (frame.type) {
    case FrameType::Process:
        takeProcess(frame.body);
        break;
    case FrameType::Message:
        takeMessage(frame.body);
        break;
    case FrameType::Log: {
        const auto line = decodeLog(frame.body);
        if (line && line->severity == RecordingFormat::Severity::Warning) {
            ++m_warnings[storedText(line->text)];
        }
        break;
    }
    case FrameType::Mark:
        if (const auto name = decodeMark(frame.body)) {
            enterContext(*name);
        }
        break;
    case FrameType::Loss:
        m_loss = Recording::decodeLoss(frame.body).value_or(m_loss);
        break;
    case FrameType::End:
        break;
    }
}

void RunBuilder::takeProcess(const QByteArray& body) {
    if (!m_process.isEmpty()) {
        return; // who the process is, the first one has told
    }
    m_process = Recording::decodeProcess(body).value_or(Recording::ProcessInfo());
    m_isNamed = !m_process.value(QLatin1String(Key::run)).isEmpty();
    // Marks in front of it, where nobody writes them, have begun contexts that are counted in.
    const QString ofRun = storedText(m_process.value(QLatin1String(Key::context)));
    m_contextIndex.clear();
    for (QString& context : m_contexts) {
        context = contextName(ofRun, context);
        m_contextIndex.insert(context, m_contextIndex.size());
    }
}

void RunBuilder::enterContext(const QString& dynamicName) {
    const QString name = contextName(m_contexts.first(), storedText(dynamicName));
    const auto known = m_contextIndex.constFind(name);
    if (known != m_contextIndex.cend()) {
        m_context = *known;
        return;
    }
    m_context = m_contexts.size();
    m_contexts.append(name);
    m_contextIndex.insert(name, m_context);
}

void RunBuilder::takeMessage(const QByteArray& body) {
    using Recording::DecodingResult;
    const auto message = Recording::decodeMessage(body);
    if (!message) {
        ++m_records;
        ++m_damagedRecords;
        return;
    }
    Record record;
    const DecodingResult result = Recording::decodeRecord(*message, record);
    m_records += result == DecodingResult::Foreign ? 0U : 1U;
    m_unknownRecords += result == DecodingResult::Unknown ? 1U : 0U;
    m_damagedRecords += result == DecodingResult::Damaged ? 1U : 0U;
    if (result == DecodingResult::Sound) {
        takeRecord(record);
    }
}

void RunBuilder::takeRecord(Record& record) {
    if (record.kind == RecordKind::ElementAdded) {
        takeAnnounced(*record.element);
    } else if (m_replay.elementById(record.elementId) != nullptr) {
        Seen& seen = m_seen[record.elementId];
        if (record.kind == RecordKind::EventRegistered) {
            seen.events[record.text].isAnnounced = true;
        } else if (record.kind == RecordKind::UsageIncreased) {
            count(seen.events[record.text], record.count);
        } else if (record.kind == RecordKind::ImageChanged && m_takesPictures &&
                   !record.picture.isEmpty()) {
            // A null picture says that there is none now, not that the last one was wrong.
            seen.picture = record.picture;
        }
    }
    const RecordKind kind = record.kind;
    const QString id = kind == RecordKind::ElementAdded ? record.element->id()
                       : kind == RecordKind::ChildAdded ? record.text
                                                        : record.elementId;
    const QByteArray png = m_takesPictures ? record.picture : QByteArray();
    const bool isPicture = kind == RecordKind::ImageChanged && !record.picture.isEmpty();
    m_replay.apply(record);
    const UIElement* const changed = m_replay.elementById(id);
    if (changed == nullptr) {
        return;
    }
    if (kind == RecordKind::ElementAdded || kind == RecordKind::ChildAdded) {
        m_states.announced(*changed);
    } else if (kind == RecordKind::AttributeChanged) {
        m_states.changed(*changed);
    } else if (isPicture && isView(*changed)) {
        m_pictured.taken(*changed, png);
    }
}

void RunBuilder::takeAnnounced(const UIElement& announced) {
    ElementWalk walk(&announced);
    while (const UIElement* element = walk.next()) {
        Seen& seen = m_seen[element->id()];
        const QMap<UIEvent, int> usage = element->usage();
        for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
            const QString name = it.key().name();
            // One that is known says nothing new: it may have happened without being announced.
            const bool isNew = !seen.events.contains(name);
            EventCount& event = seen.events[name];
            event.isAnnounced = event.isAnnounced || isNew;
            count(event, it.value());
        }
        if (m_takesPictures && !element->image().isNull()) {
            seen.picture = pngOf(element->image());
        }
    }
}

void RunBuilder::count(EventCount& event, int count) const {
    // The application sends totals; what came since the last one belongs to this context.
    if (count > event.last) {
        const bool isFirst = !event.byContext.contains(m_context);
        ContextCount& ofContext = event.byContext[m_context];
        ofContext.count += static_cast<qint64>(count) - event.last;
        ofContext.first = isFirst ? m_time : ofContext.first;
        ofContext.last = m_time;
    }
    event.last = count;
}

Run RunBuilder::build(const Ending& ending) const {
    Run run;
    const auto value = [this](const char* key) {
        return storedText(m_process.value(QLatin1String(key)));
    };
    run.uuid = value(Key::run);
    run.session = value(Key::session);
    run.application = value(Key::application);
    run.extension = value(Key::extension);
    run.executable = value(Key::executable);
    run.qtVersion = value(Key::qtVersion);
    run.platform = value(Key::platform);
    run.locale = value(Key::locale);
    run.architecture = value(Key::architecture);
    run.started = value(Key::started);
    const QString labelStart = QLatin1String(Key::label);
    for (auto it = m_process.cbegin(); it != m_process.cend(); ++it) {
        if (it.key().startsWith(labelStart)) {
            run.labels.insert(storedText(it.key().mid(labelStart.size())), storedText(it.value()));
        }
    }
    run.bytesLost = ending.lostBytes;
    run.messages = static_cast<qint64>(m_records);
    run.messagesLost =
        static_cast<qint64>(m_damagedRecords + m_unknownRecords + recordsWithoutElement());
    run.isComplete = ending.isComplete() && m_loss.others == 0 && run.messagesLost == 0;
    run.partialReason = reasonOf(ending, m_loss, run.messagesLost, run.messages);
    run.contexts = m_contexts;
    run.warnings = m_warnings;
    if (m_loss.pictures > 0) {
        run.warnings.insert(Run::picturesLeftOutLine(), static_cast<qint64>(m_loss.pictures));
    }
    fillElements(run);
    return run;
}

void RunBuilder::fillElements(Run& run) const {
    const std::vector<UIElement*>& elements = m_replay.elements();
    QHash<const UIElement*, int> indexOf;
    indexOf.reserve(static_cast<int>(elements.size()));
    for (UIElement* element : elements) {
        indexOf.insert(element, indexOf.size());
    }
    const bool isOfControls = run.isOfControls();
    run.elements.reserve(elements.size());
    for (const UIElement* source : elements) {
        RunElement element;
        element.id = storedText(source->id());
        element.className = storedText(source->concreteType());
        element.type = storedText(source->standardType().name());
        element.text = storedText(source->text());
        element.isTransparentNode = source->isTransparentNode();
        element.isSubgraphTransparent = source->isSubgraphTransparent();
        element.isWindowNode = source->isWindowNode();
        element.parent = indexOf.value(source->parent(), -1);
        const QList<UIElement*> children = source->children();
        for (const UIElement* child : children) {
            element.children.append(indexOf.value(child));
        }
        if (source->geometry().isValid()) {
            element.place = source->geometry().rect();
        }
        const QHash<QString, QString> attributes = source->attributes();
        for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
            element.attributes.insert(storedText(it.key()), storedText(it.value()));
        }
        if (isOfControls) {
            element.wasEnabled = m_states.wasEnabled(source);
            element.wasSeen = m_states.wasSeen(source);
        }
        const auto seen = m_seen.constFind(source->id());
        if (seen != m_seen.cend()) {
            fillCounts(*seen, element);
            if (!seen->picture.isEmpty()) {
                element.picture = Sha256::of(seen->picture);
                run.pictures.insert(element.picture, seen->picture);
            }
        }
        run.elements.push_back(std::move(element));
    }
    if (isOfControls) {
        fillSights(run);
    }
}

/** Controls have no pictures of their own: theirs is the one of their view that shows them. */
void RunBuilder::fillSights(Run& run) const {
    const std::vector<UIElement*>& elements = m_replay.elements();
    QHash<const QByteArray*, QByteArray> hashes;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto sight = m_pictured.sightOf(elements[i]);
        if (!sight) {
            continue;
        }
        run.elements[i].place = sight->place;
        const QByteArray& png = *sight->picture;
        if (png.isEmpty()) {
            continue;
        }
        QByteArray& hash = hashes[&png];
        if (hash.isEmpty()) {
            hash = Sha256::of(png);
            run.pictures.insert(hash, png);
        }
        run.elements[i].picture = hash;
    }
}

void RunBuilder::fillCounts(const Seen& seen, RunElement& element) {
    for (auto it = seen.events.cbegin(); it != seen.events.cend(); ++it) {
        const QString name = storedText(it.key());
        if (it->isAnnounced) {
            element.events.append(name);
        }
        for (auto hit = it->byContext.cbegin(); hit != it->byContext.cend(); ++hit) {
            element.hits.append(
                Hit{name, hit.key(), hit.value().count, hit.value().first, hit.value().last});
        }
    }
}

} // namespace Uicov::Runs

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/runrank.h"

#include "base/sha256.h"
#include "recordstream/payloadwriter.h"
#include "run/run.h"

#include <QDataStream>

#include <algorithm>
#include <tuple>
#include <utility>

namespace Uicov::Store {

using Base::Sha256;
using Runs::Hit;
using Runs::Run;
using Runs::RunElement;
using Vorsk::RecordStream::PayloadWriter;

namespace {

/** As a QDataStream of that version writes a list. */
template <class List>
void writeList(PayloadWriter& writer, const List& list) {
    writer << static_cast<qint32>(list.size());
    for (const auto& entry : list) {
        writer << entry;
    }
}

/** A data file does not tell a null text from an empty one, but for the text of an element. */
QString stored(const QString& text) {
    return text.isNull() ? QStringLiteral("") : text;
}

/** @param isExtended whether the run has what version 2 of the schema added: those of version 1
 * keep their digests */
void write(PayloadWriter& writer, const RunElement& element, bool isExtended) {
    const auto text = [isExtended](const QString& t) { return isExtended ? stored(t) : t; };
    writer << text(element.id) << text(element.className)
           << (isExtended && element.type.isEmpty() ? QString() : element.type) << element.text
           << element.isTransparentNode << element.isSubgraphTransparent << element.isWindowNode
           << element.parent;
    writeList(writer, element.children);
    writeList(writer, element.events);
    writer << element.hits.size() << element.place.has_value() << element.place.value_or(QRect())
           << element.picture;
    for (const Hit& hit : element.hits) {
        writer << hit.event << hit.context << hit.count;
        if (isExtended) {
            writer << hit.first << hit.last;
        }
    }
    if (isExtended) {
        writer << element.attributes.size() << element.wasEnabled << element.wasSeen;
        for (auto it = element.attributes.cbegin(); it != element.attributes.cend(); ++it) {
            writer << stored(it.key()) << stored(it.value());
        }
    }
}

QByteArray attributesOf(const Run& run) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_9);
    const bool isExtended = !run.extension.isEmpty();
    const auto text = [isExtended](const QString& t) { return isExtended ? stored(t) : t; };
    QMap<QString, QString> labels;
    for (auto it = run.labels.cbegin(); it != run.labels.cend(); ++it) {
        labels.insert(text(it.key()), text(it.value()));
    }
    QStringList contexts;
    for (const QString& context : run.contexts) {
        contexts.append(text(context));
    }
    stream << run.uuid << text(run.session) << text(run.application) << text(run.executable)
           << text(run.qtVersion) << text(run.platform) << text(run.locale)
           << text(run.architecture) << text(run.started) << labels << run.isComplete
           << text(run.partialReason) << run.bytesLost << run.messages << run.messagesLost
           << contexts << run.warnings;
    if (isExtended) {
        stream << run.extension;
    }
    return bytes;
}

/** Of the whole run as one QDataStream would write it. */
QByteArray digestOf(const Run& run) {
    constexpr std::size_t elementsAtOnce = 100; // a hash of a few bytes costs as one of many
    Sha256 hash;
    hash.add(attributesOf(run));
    QByteArray memory;
    for (std::size_t i = 0; i < run.elements.size();) {
        PayloadWriter writer(std::move(memory));
        const std::size_t end = std::min(i + elementsAtOnce, run.elements.size());
        for (; i < end; ++i) {
            write(writer, run.elements[i], !run.extension.isEmpty());
        }
        memory = writer.take();
        hash.add(memory);
    }
    return hash.take();
}

/**
 * Fewer lost bytes are better, so their order is reversed: by ~, since - overflows for the lowest
 * number, which a damaged file can hold.
 */
auto tied(const RunRank& rank) {
    return std::make_tuple(rank.messages, rank.isComplete, ~rank.bytesLost, rank.digest);
}

} // namespace

RunRank RunRank::of(const Run& run) {
    return {run.messages, run.isComplete, run.bytesLost, digestOf(run)};
}

bool RunRank::isAsWritten(const Run& run, const QByteArray& digest) {
    return run.extension.isEmpty() || digestOf(run) == digest;
}

bool operator<(const RunRank& a, const RunRank& b) {
    return tied(a) < tied(b);
}

} // namespace Uicov::Store

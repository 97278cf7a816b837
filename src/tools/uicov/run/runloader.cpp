// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/runloader.h"

#include "recording/recordingreader.h"

#include <QCryptographicHash>
#include <QUuid>

namespace Uicov::Runs {

using Base::Message;
using Base::Problem;
using Recording::Ending;
using Recording::Frame;

namespace {

constexpr int uuidLength = 36; // without braces

} // namespace

RunLoader::RunLoader(const QString& path)
    : m_path(path) {}

std::optional<Problem> RunLoader::load() {
    Recording::RecordingReader reader(m_path);
    if (auto problem = reader.open()) {
        return problem;
    }
    QCryptographicHash hash(QCryptographicHash::Sha1);
    Frame frame;
    while (reader.next(frame)) {
        m_builder.add(frame);
        if (!m_builder.isNamed()) {
            hash.addData(frame.body);
        }
    }
    m_ending = reader.ending();
    m_hash = hash.result();
    return std::nullopt;
}

Run RunLoader::run() const {
    Run run = m_builder.build(m_ending);
    const QUuid uuid(run.uuid);
    // A recording that does not say which run it is gets a name that is the same at each reading.
    run.uuid =
        (uuid.isNull() ? QUuid::createUuidV5(QUuid(), m_hash) : uuid).toString().mid(1, uuidLength);
    return run;
}

QVector<Problem> RunLoader::problems() const {
    QVector<Problem> problems;
    const QString start = m_path + QStringLiteral(": ");
    if (m_ending.kind == Ending::Kind::NoEndFrame) {
        problems.append(
            {Message::EndedAbnormally,
             start + m_ending.toString() + QStringLiteral("; all that it sent is used")});
    } else if (!m_ending.isComplete()) {
        const bool isTorn = m_ending.kind == Ending::Kind::Torn;
        problems.append({isTorn ? Message::RecordingTorn : Message::RecordingDamaged,
                         start + m_ending.toString() + QStringLiteral("; all before it is used")});
    }
    if (m_builder.loss().others > 0) {
        problems.append(
            {Message::RecordingFull,
             start + QStringLiteral("reached its size limit and left out all that came then, %1 "
                                    "messages or more; raise VORSK_RECORDING_MAX_BYTES")
                         .arg(m_builder.loss().others)});
    }
    const quint64 unusable =
        m_builder.damagedRecords() + m_builder.unknownRecords() + m_builder.recordsWithoutElement();
    if (unusable > 0) {
        problems.append(
            {Message::RecordsDamaged,
             start + QStringLiteral("%1 of %2 records left out: %3 damaged, %4 of a kind this "
                                    "uicov does not know, %5 about elements never announced")
                         .arg(unusable)
                         .arg(m_builder.records())
                         .arg(m_builder.damagedRecords())
                         .arg(m_builder.unknownRecords())
                         .arg(m_builder.recordsWithoutElement())});
    }
    return problems;
}

} // namespace Uicov::Runs

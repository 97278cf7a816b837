#include "recording/recordingloader.h"

#include "recording/framedecoder.h"
#include "recording/recorddecoder.h"
#include "recording/recordingreader.h"

namespace Uicov::Recording {

using Console::Message;
using Console::Problem;
using RecordingFormat::FrameType;

RecordingLoader::RecordingLoader(const QString& path)
    : m_path(path) {}

std::optional<Problem> RecordingLoader::load() {
    RecordingReader reader(m_path);
    if (auto problem = reader.open()) {
        return problem;
    }
    Frame frame;
    while (reader.next(frame)) {
        if (frame.type == FrameType::Message) {
            take(frame.body);
        } else if (frame.type == FrameType::Process) {
            m_process = FrameDecoder::process(frame.body).value_or(ProcessInfo());
        } else if (frame.type == FrameType::Log) {
            const auto line = FrameDecoder::log(frame.body);
            if (line && line->severity == RecordingFormat::Severity::Warning) {
                ++m_warnings[line->text];
            }
        }
    }
    m_ending = reader.ending();
    return std::nullopt;
}

void RecordingLoader::take(const QByteArray& body) {
    const auto message = FrameDecoder::message(body);
    if (!message) {
        ++m_damagedRecords;
        return;
    }
    Record record;
    switch (RecordDecoder::decode(*message, record)) {
    case RecordDecoder::Result::Sound:
        ++m_records;
        m_replay.apply(record);
        break;
    case RecordDecoder::Result::Unknown:
        ++m_records;
        ++m_unknownRecords;
        break;
    case RecordDecoder::Result::Damaged:
        ++m_records;
        ++m_damagedRecords;
        break;
    case RecordDecoder::Result::Foreign:
        break;
    }
}

QVector<Problem> RecordingLoader::problems() const {
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
    const quint64 unusable = m_damagedRecords + m_unknownRecords + m_replay.recordsWithoutElement();
    if (unusable > 0) {
        problems.append(
            {Message::RecordsDamaged,
             start + QStringLiteral("%1 of %2 records left out: %3 damaged, %4 of a kind this "
                                    "uicov does not know, %5 about elements never announced")
                         .arg(unusable)
                         .arg(m_records)
                         .arg(m_damagedRecords)
                         .arg(m_unknownRecords)
                         .arg(m_replay.recordsWithoutElement())});
    }
    return problems;
}

} // namespace Uicov::Recording

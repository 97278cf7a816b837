// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/recordingwriter.h"

#include "recordstream/recordkind.h"
#include "vorskhook/hostlogging.h"

#include <QFile>

namespace VorskHost {

namespace {

/** Bytes of log lines that are worth a write of their own. */
constexpr int logFlushSize = 64 * 1024;

/** Memory that is kept from one message to the next. */
constexpr int keptMemory = 4096;

/** Whether the message carries nothing but an element's picture. */
bool isPicture(const QString& name, const Vorsk::ArgumentList& args) {
    using namespace Vorsk::RecordStream;
    constexpr int kindPlace = 2;
    return args.size() > kindPlace &&
           args.at(kindPlace) == QVariant(static_cast<int>(RecordKind::ImageChanged)) &&
           name == QLatin1String(coverageMessageName);
}

} // namespace

bool RecordingWriter::open(const QString& path, const RecordingFormat::ProcessInfo& info) {
    m_waiting.clear();
    m_waiting.reserve(keptMemory);
    m_messages = 0;
    m_refusalReported = false;
    m_start = std::chrono::steady_clock::now();
    if (!m_file.create(path)) {
        reportProblem(QStringLiteral("recording-not-made: cannot make the recording %1: %2; "
                                     "nothing is recorded, check that its folder exists and can "
                                     "be written")
                          .arg(path, m_file.errorString()));
        return false;
    }
    RecordingFormat::ProcessInfo complete = info;
    // By it another process, which can only append, tells the time as this one does.
    complete.append(qMakePair(QString::fromLatin1(RecordingFormat::Key::clock),
                              QString::number(std::chrono::duration_cast<std::chrono::microseconds>(
                                                  m_start.time_since_epoch())
                                                  .count())));
    QByteArray start = RecordingFormat::processFrame(0, complete);
    if (!m_isShared || m_file.needsLeast() || !m_mapping.open(m_file, m_limit.maximum())) {
        start.prepend(RecordingFormat::fileHeader());
    }
    if (!write(start)) {
        QFile::remove(m_file.path());
        return false;
    }
    return true;
}

void RecordingWriter::mark(const QString& name) {
    const QByteArray frame = RecordingFormat::markFrame(elapsed(), name);
    if (m_file.isOpen() && m_limit.hasRoom(bytesWritten(), frame.size())) {
        write(frame);
    }
}

bool RecordingWriter::appendMessage(int channel, const QString& name,
                                    const Vorsk::ArgumentList& args) {
    if (!m_file.isOpen()) {
        return false;
    }
    if (m_testFunction.hasChanged()) {
        // Also before a message that is refused.
        m_waiting += RecordingFormat::markFrame(elapsed(), m_testFunction.name());
    }
    const int before = m_waiting.size();
    if (!RecordingFormat::appendMessageFrame(m_waiting, elapsed(), channel, encoded(name), args)) {
        if (!m_refusalReported) {
            m_refusalReported = true;
            reportProblem(QStringLiteral("message-refused: a message named %1 is larger than a "
                                         "recording can hold and was left out; take no "
                                         "screenshots of contents of that size")
                              .arg(name));
        }
        return false;
    }
    // Only a recording of limited size asks what it carries.
    const bool carriesPicture = m_limit.isSet() && isPicture(name, args);
    if (!m_limit.admits(bytesWritten(), m_waiting.size(), carriesPicture)) {
        m_waiting.resize(before);
        noteLoss(carriesPicture);
        return false;
    }
    if (!write(m_waiting)) {
        return false;
    }
    forgetWaiting();
    ++m_messages;
    return true;
}

void RecordingWriter::appendLog(RecordingFormat::Severity severity, const QString& text) {
    if (!m_file.isOpen()) {
        return;
    }
    m_waiting += RecordingFormat::logFrame(elapsed(), severity, text);
    if (m_waiting.size() >= logFlushSize) {
        if (m_limit.hasRoom(bytesWritten(), m_waiting.size())) {
            write(m_waiting);
        }
        forgetWaiting();
    }
}

void RecordingWriter::close() {
    if (!m_file.isOpen()) {
        return;
    }
    if (!m_limit.hasRoom(bytesWritten(), m_waiting.size())) {
        m_waiting.clear();
    }
    if (m_limit.pictures() + m_limit.others() > 0) {
        m_waiting += RecordingFormat::lossFrame(elapsed(), m_limit.pictures(), m_limit.others());
    }
    if (write(m_waiting + RecordingFormat::endFrame(elapsed(), m_messages))) {
        m_waiting.clear();
        m_mapping.close();
        m_file.close();
    }
}

void RecordingWriter::setTestFunction(const TestFunction& function) {
    m_testFunction = function;
}

void RecordingWriter::setWriteFunction(RecordingFile::WriteFunction function) {
    m_isShared = false;
    m_file.setWriteFunction(function);
}

void RecordingWriter::forgetWaiting() {
    if (m_waiting.capacity() > 2 * logFlushSize) {
        m_waiting.clear(); // held a picture
        m_waiting.reserve(keptMemory);
    } else {
        m_waiting.resize(0);
    }
}

/** Nearly all messages have the same name. */
const QByteArray& RecordingWriter::encoded(const QString& name) {
    if (name != m_lastName) {
        m_lastName = QString(name.constData(), name.size()); // shares no memory with the caller's
        m_encodedName = name.toUtf8();
    }
    return m_encodedName;
}

quint64 RecordingWriter::elapsed() const {
    const auto time = std::chrono::steady_clock::now() - m_start;
    return static_cast<quint64>(
        std::chrono::duration_cast<std::chrono::microseconds>(time).count());
}

/** At the first of each sort, so that a recording without an end says it too; all at close(). */
void RecordingWriter::noteLoss(bool isPicture) {
    if ((isPicture ? m_limit.pictures() : m_limit.others()) > 1) {
        return;
    }
    write(RecordingFormat::lossFrame(elapsed(), m_limit.pictures(), m_limit.others()));
    if (!isPicture) {
        m_waiting.clear();
        reportProblem(QStringLiteral("recording-full: the recording %1 has reached its size limit; "
                                     "nothing more is recorded and the application goes on, raise "
                                     "the limit or take no screenshots")
                          .arg(m_file.path()));
    }
}

bool RecordingWriter::write(const QByteArray& bytes) {
    const bool isShared = m_mapping.isOpen();
    if (isShared ? m_mapping.append(bytes) : m_file.append(bytes)) {
        return true;
    }
    m_waiting.clear();
    reportProblem(
        QStringLiteral("recording-ended: cannot write to the recording %1: %2; it ends "
                       "here and the application goes on, make room or choose another "
                       "place")
            .arg(m_file.path(), isShared ? m_mapping.errorString() : m_file.errorString()));
    return false;
}

} // namespace VorskHost

#include "vorskhook/recordingwriter.h"

#include "vorskhook/hostlogging.h"

#include <QFile>

namespace VorskHost {

namespace {

/** Bytes of log lines that are worth a write of their own. */
constexpr int logFlushSize = 64 * 1024;

/** Memory that is kept from one message to the next. */
constexpr int keptMemory = 4096;

} // namespace

bool RecordingWriter::open(const QString& path, const ProcessInfo& info) {
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
    ProcessInfo complete = info;
    // By it another process, which can only append, tells the time as this one does.
    complete.append(qMakePair(QString::fromLatin1(RecordingFormat::Key::clock),
                              QString::number(std::chrono::duration_cast<std::chrono::microseconds>(
                                                  m_start.time_since_epoch())
                                                  .count())));
    if (!write(FrameBuilder::header() + FrameBuilder::processFrame(0, complete))) {
        QFile::remove(m_file.path());
        return false;
    }
    return true;
}

void RecordingWriter::mark(const QString& name) {
    if (m_file.isOpen()) {
        write(FrameBuilder::markFrame(elapsed(), name));
    }
}

bool RecordingWriter::appendMessage(int channel, const QString& name,
                                    const Vorsk::ArgumentList& args) {
    if (!m_file.isOpen()) {
        return false;
    }
    if (m_testFunction.hasChanged()) {
        // Also before a message that is refused.
        m_waiting += FrameBuilder::markFrame(elapsed(), m_testFunction.name());
    }
    if (!FrameBuilder::appendMessageFrame(m_waiting, elapsed(), channel, name, args)) {
        if (!m_refusalReported) {
            m_refusalReported = true;
            reportProblem(QStringLiteral("message-refused: a message named %1 is larger than a "
                                         "recording can hold and was left out; take no "
                                         "screenshots of contents of that size")
                              .arg(name));
        }
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
    m_waiting += FrameBuilder::logFrame(elapsed(), severity, text);
    if (m_waiting.size() >= logFlushSize) {
        write(m_waiting);
        forgetWaiting();
    }
}

void RecordingWriter::close() {
    if (!m_file.isOpen()) {
        return;
    }
    if (write(m_waiting + FrameBuilder::endFrame(elapsed(), m_messages))) {
        m_waiting.clear();
        m_file.close();
    }
}

void RecordingWriter::setTestFunction(const TestFunction& function) {
    m_testFunction = function;
}

void RecordingWriter::setWriteFunction(RecordingFile::WriteFunction function) {
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

quint64 RecordingWriter::elapsed() const {
    const auto time = std::chrono::steady_clock::now() - m_start;
    return static_cast<quint64>(
        std::chrono::duration_cast<std::chrono::microseconds>(time).count());
}

bool RecordingWriter::write(const QByteArray& bytes) {
    if (m_file.append(bytes)) {
        return true;
    }
    m_waiting.clear();
    reportProblem(QStringLiteral("recording-ended: cannot write to the recording %1: %2; it ends "
                                 "here and the application goes on, make room or choose another "
                                 "place")
                      .arg(m_file.path(), m_file.errorString()));
    return false;
}

} // namespace VorskHost

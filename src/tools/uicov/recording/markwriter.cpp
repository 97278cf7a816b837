#include "recording/markwriter.h"

#include "checksum/crc32.h"
#include "recording/framedecoder.h"
#include "recording/recordingreader.h"

#include <QFile>
#include <QThread>
#include <QtEndian>

#include <cerrno>
#include <chrono>
#include <csignal>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Uicov::Recording {

using RecordingFormat::FrameType;

namespace {

template <class Integer>
QByteArray bigEndian(Integer value) {
    QByteArray bytes(static_cast<int>(sizeof value), Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray sealed(const QByteArray& payload) {
    const auto size = static_cast<quint32>(payload.size());
    return bigEndian(size) + bigEndian(Checksum::crc32(payload.constData(), size)) + payload;
}

QByteArray markFrame(quint64 time, const QString& name) {
    const QByteArray text = name.toUtf8();
    QByteArray payload;
    payload.append(static_cast<char>(FrameType::Mark));
    payload += bigEndian(time) + bigEndian(static_cast<quint32>(text.size())) + text;
    return sealed(payload);
}

/** What the recording's process says of itself; empty when it says nothing. */
ProcessInfo processOf(RecordingReader& reader) {
    Frame frame;
    if (reader.open() || !reader.next(frame) || frame.type != FrameType::Process) {
        return {};
    }
    return decodeProcess(frame.body).value_or(ProcessInfo());
}

QString valueOf(const ProcessInfo& info, const char* key) {
    return info.value(QLatin1String(key));
}

bool isAlive(int process) {
    return process > 0 && (::kill(process, 0) == 0 || errno == EPERM);
}

/** Microseconds since the recording was opened; 0 where nobody knows when that was. */
quint64 timeIn(const ProcessInfo& info) {
    bool isKnown = false;
    const qint64 start = valueOf(info, RecordingFormat::Key::clock).toLongLong(&isKnown);
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(
                         std::chrono::steady_clock::now().time_since_epoch())
                         .count();
    return isKnown && now > start ? static_cast<quint64>(now - start) : 0;
}

/** A frame of that many bytes that readers pass over. */
QByteArray fillerFrame(qint64 length) {
    constexpr quint8 unknownType = 0;
    return sealed(QByteArray(static_cast<int>(length) - RecordingFormat::frameHeaderSize,
                             static_cast<char>(unknownType)));
}

/** A recording of version 2: its header as memory that is shared with the application. */
class SharedHeader {
public:
    explicit SharedHeader(int descriptor)
        : m_descriptor(descriptor)
        , m_memory(::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0)) {}
    ~SharedHeader() {
        if (isMapped()) {
            ::munmap(m_memory, size);
        }
    }
    Q_DISABLE_COPY(SharedHeader)

    bool isMapped() const { return m_memory != MAP_FAILED; }

    /** Puts the frame where the next one belongs. Needs the lock on the file. */
    bool append(const QByteArray& frame) {
        if (!fillHeldPlace()) {
            return false;
        }
        const auto length = static_cast<quint64>(frame.size());
        quint64 end = load(RecordingFormat::endOffset);
        do {
            store(RecordingFormat::heldLengthOffset, length);
            store(RecordingFormat::heldPlaceOffset, end);
        } while (!moveEnd(end, end + length));
        if (!write(frame, end)) {
            return false;
        }
        store(RecordingFormat::heldPlaceOffset, 0);
        return true;
    }

private:
    static constexpr std::size_t size = RecordingFormat::sharedHeaderSize;

    quint64* field(int offset) const {
        return reinterpret_cast<quint64*>(static_cast<char*>(m_memory) + offset);
    }
    quint64 load(int offset) const {
        return qFromBigEndian(__atomic_load_n(field(offset), __ATOMIC_ACQUIRE));
    }
    void store(int offset, quint64 value) const {
        __atomic_store_n(field(offset), qToBigEndian(value), __ATOMIC_RELEASE);
    }

    /** False, with the present end, when it was moved by somebody else. */
    bool moveEnd(quint64& end, quint64 newEnd) const {
        quint64 expected = qToBigEndian(end);
        if (__atomic_compare_exchange_n(field(RecordingFormat::endOffset), &expected,
                                        qToBigEndian(newEnd), false, __ATOMIC_ACQ_REL,
                                        __ATOMIC_ACQUIRE)) {
            return true;
        }
        end = qFromBigEndian(expected);
        return false;
    }

    /** Its length last: by it a frame is there. */
    bool write(const QByteArray& frame, quint64 place) const {
        constexpr auto lengthSize = static_cast<int>(sizeof(quint32));
        return writeAt(frame.mid(lengthSize), place + lengthSize) &&
               writeAt(frame.left(lengthSize), place);
    }
    bool writeAt(const QByteArray& bytes, quint64 place) const {
        return ::pwrite(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()),
                        static_cast<off_t>(place)) == bytes.size();
    }

    /** Ends what somebody was killed at: a place that was taken and has no frame. */
    bool fillHeldPlace() const {
        const quint64 place = load(RecordingFormat::heldPlaceOffset);
        if (place == 0) {
            return true;
        }
        const quint64 length = load(RecordingFormat::heldLengthOffset);
        const quint64 end = load(RecordingFormat::endOffset);
        if (RecordingFormat::canBeHeld(place, length, end) && !hasFrame(place) &&
            !write(fillerFrame(static_cast<qint64>(length)), place)) {
            return false;
        }
        store(RecordingFormat::heldPlaceOffset, 0);
        return true;
    }

    /** Waits a little: it may be the application that has just taken the place. */
    bool hasFrame(quint64 place) const {
        constexpr int attempts = 20;
        quint32 length = 0;
        for (int attempt = 0; length == 0 && attempt < attempts; ++attempt) {
            if (attempt > 0) {
                QThread::msleep(1);
            }
            static_cast<void>(
                ::pread(m_descriptor, &length, sizeof length, static_cast<off_t>(place)));
        }
        return length != 0;
    }

    int m_descriptor;
    void* m_memory;
};

bool appendPlainly(const QString& recording, const QByteArray& frame) {
    const int descriptor = ::open(QFile::encodeName(recording).constData(),
                                  O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) {
        return false;
    }
    const ssize_t written =
        ::write(descriptor, frame.constData(), static_cast<size_t>(frame.size()));
    ::close(descriptor);
    return written == frame.size();
}

bool appendShared(const QString& recording, const QByteArray& frame) {
    const int descriptor =
        ::open(QFile::encodeName(recording).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) {
        return false;
    }
    bool isAppended = false;
    // Closing the file gives the lock back.
    if (::flock(descriptor, LOCK_EX) == 0) {
        SharedHeader header(descriptor);
        isAppended = header.isMapped() && header.append(frame);
    }
    ::close(descriptor);
    return isAppended;
}

} // namespace

bool appendMark(const QString& recording, const QString& name) {
    RecordingReader reader(recording);
    const ProcessInfo info = processOf(reader);
    if (!isAlive(valueOf(info, RecordingFormat::Key::pid).toInt())) {
        return false;
    }
    const QByteArray frame = markFrame(timeIn(info), name);
    return reader.version() == RecordingFormat::plainVersion ? appendPlainly(recording, frame)
                                                             : appendShared(recording, frame);
}

} // namespace Uicov::Recording

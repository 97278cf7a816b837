#include "store/runrank.h"

#include "store/run.h"

#include <QCryptographicHash>
#include <QDataStream>

#include <tuple>

namespace Uicov::Store {

namespace {

/** Hashes what is written to it; collected first, since a hash of a few bytes costs as one of many.
 */
class HashDevice : public QIODevice {
public:
    HashDevice() { open(QIODevice::WriteOnly); }

    QByteArray result() {
        hash();
        return m_hash.result();
    }

protected:
    qint64 readData(char* /*data*/, qint64 /*maximum*/) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        constexpr int enough = 65536;
        m_bytes.append(data, static_cast<int>(size));
        if (m_bytes.size() >= enough) {
            hash();
        }
        return size;
    }

private:
    void hash() {
        m_hash.addData(m_bytes);
        m_bytes.resize(0); // keeps its memory
    }

    QByteArray m_bytes;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
};

void write(QDataStream& stream, const RunElement& element) {
    stream << element.id << element.className << element.type << element.text
           << element.isTransparentNode << element.isSubgraphTransparent << element.isWindowNode
           << element.parent << element.children << element.events << element.hits.size()
           << element.place.has_value() << element.place.value_or(QRect()) << element.picture;
    for (const Hit& hit : element.hits) {
        stream << hit.event << hit.context << hit.count;
    }
}

QByteArray digestOf(const Run& run) {
    HashDevice device;
    QDataStream stream(&device);
    stream.setVersion(QDataStream::Qt_5_9);
    stream << run.uuid << run.session << run.application << run.executable << run.qtVersion
           << run.platform << run.locale << run.architecture << run.started << run.labels
           << run.isComplete << run.partialReason << run.bytesLost << run.messages
           << run.messagesLost << run.contexts << run.warnings;
    for (const RunElement& element : run.elements) {
        write(stream, element);
    }
    return device.result();
}

/** Turned round by ~, which unlike - every number allows: it may be that of a damaged file. */
auto tied(const RunRank& rank) {
    return std::make_tuple(rank.messages, rank.isComplete, ~rank.bytesLost, rank.digest);
}

} // namespace

RunRank RunRank::of(const Run& run) {
    return {run.messages, run.isComplete, run.bytesLost, digestOf(run)};
}

bool operator<(const RunRank& a, const RunRank& b) {
    return tied(a) < tied(b);
}

} // namespace Uicov::Store

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// How many small records a second are read back from a recording into a run, and with how much
// memory: the same few elements over and over, so that the model stays as small as it is.
#include "recording/frame.h"
#include "recording/recordingreader.h"
#include "recordingformat/frames.h"
#include "recordstream/payloadwriter.h"
#include "recordstream/recordkind.h"
#include "run/runbuilder.h"
#include "uiabstraction/uielement.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

#include <sys/resource.h>

namespace {

using Vorsk::RecordStream::PayloadWriter;
using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

constexpr int elementCount = 500;
constexpr int rounds = 5;

/** Writes a recording piece by piece. */
class Writer {
public:
    explicit Writer(const QString& path)
        : m_file(path) {
        m_file.open(QIODevice::WriteOnly);
        const RecordingFormat::ProcessInfo info{
            {QStringLiteral("run"), QStringLiteral("benchmark")}};
        m_file.write(RecordingFormat::fileHeader());
        m_file.write(RecordingFormat::processFrame(0, info));
    }

    void add(RecordKind kind, const PayloadWriter& payload) {
        m_file.write(RecordingFormat::messageFrame(
            static_cast<quint64>(++m_messages), 0, QStringLiteral("uiCoverageData"),
            {4711, 1, static_cast<int>(kind), payload.payload()}));
    }

    bool close() {
        m_file.write(RecordingFormat::endFrame(0, static_cast<quint64>(m_messages)));
        m_file.close();
        return m_file.error() == QFile::NoError;
    }

private:
    QFile m_file;
    int m_messages = 0;
};

void addElements(Writer& writer, std::vector<QString>& ids) {
    for (int i = 0; i < elementCount; ++i) {
        const UIElement element(QStringLiteral("QPushButton"),
                                StandardType(QStringLiteral("Button")), QString());
        ids.push_back(element.id());
        PayloadWriter payload;
        payload << element.id() << element;
        writer.add(RecordKind::ElementAdded, payload);
    }
}

void addSmallRecord(Writer& writer, const QString& id, int number) {
    PayloadWriter payload;
    payload << id;
    switch (number % 4) {
    case 0:
        payload << QStringLiteral("clicked") << qint32{number};
        writer.add(RecordKind::UsageIncreased, payload);
        break;
    case 1:
        payload << QRect(number, 1, 2, 3);
        writer.add(RecordKind::GeometryChanged, payload);
        break;
    case 2:
        payload << QStringLiteral("Control 4711");
        writer.add(RecordKind::TextChanged, payload);
        break;
    default:
        payload << true;
        writer.add(RecordKind::TransparentNodeChanged, payload);
    }
}

bool make(const QString& path, int records) {
    Writer writer(path);
    std::vector<QString> ids;
    addElements(writer, ids);
    for (int i = 0; i < records; ++i) {
        addSmallRecord(writer, ids[static_cast<std::size_t>(i * 7 % elementCount)], i);
    }
    return writer.close();
}

double computedSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

/** Records a second; 0 when the recording was not read as it was written. */
double replay(const QString& path, int records) {
    Uicov::Recording::RecordingReader reader(path);
    const double start = computedSeconds();
    if (reader.open()) {
        return 0;
    }
    Uicov::Runs::RunBuilder builder;
    Uicov::Recording::Frame frame;
    while (reader.next(frame)) {
        builder.add(frame);
    }
    const double seconds = computedSeconds() - start;
    const bool isSound = reader.ending().isComplete() && builder.damagedRecords() == 0 &&
                         builder.records() == static_cast<quint64>(records) + elementCount;
    return isSound ? records / seconds : 0;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("replayed.uirec"));
    QJsonObject results;
    std::printf("%10s %16s %14s\n", "records", "records/s", "memory, MB");
    for (const int records : {100000, 1000000}) {
        std::vector<double> rates;
        if (!make(path, records)) {
            return 1;
        }
        for (int round = 0; round < rounds; ++round) {
            rates.push_back(replay(path, records));
        }
        std::sort(rates.begin(), rates.end());
        if (rates.front() <= 0) {
            qCritical("the recording was not read as it was written");
            return 1;
        }
        std::printf("%10d %16.0f %14.1f\n", records, rates[rounds / 2], peakMemory() / 1e6);
        results.insert(QString::number(records),
                       QJsonObject{{QStringLiteral("recordsPerSecond"), rates[rounds / 2]},
                                   {QStringLiteral("peakBytes"), peakMemory()}});
    }
    const QStringList arguments = QCoreApplication::arguments();
    const int option = arguments.indexOf(QStringLiteral("--json"));
    if (option < 0 || option + 1 >= arguments.size()) {
        return 0;
    }
    QFile file(arguments.at(option + 1));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(results).toJson()) > 0 ? 0
                                                                                              : 1;
}

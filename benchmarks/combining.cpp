// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What "uicov combine" costs: time and memory per run, for few runs and for many.
//
//   combining [--json FILE]
//   combining --write FOLDER     only writes 30 runs there, each as a recording and as a data file,
//   for
//                                instruments that count
#include "run/runloader.h"
#include "store/datafilewriter.h"
#include "testlib/recordingbuilder.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QUuid>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using TestLib::RecordingBuilder;
using Uicov::Runs::RunLoader;
using Uicov::Store::DataFile;
using Uicov::Store::DataFileWriter;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

constexpr int windowsOfRun = 10;
constexpr int elementsOfWindow = 50;
constexpr int rounds = 5;

enum class Content {
    /** Runs of one application, as shards of one suite are: the same elements, other counts. */
    Alike,
    /** Every run has other texts, as lists of changing data have. */
    Different
};

/** A run of 500 elements; some of them were used, which ones differs from run to run. */
bool writeRecording(const QString& path, int number, Content content) {
    RecordingBuilder recording;
    recording.addProcess({{QStringLiteral("run"), QUuid::createUuid().toString().mid(1, 36)},
                          {QStringLiteral("application"), QStringLiteral("benchmark")},
                          {QStringLiteral("label.shard"), QString::number(number)}});
    recording.addMark(QStringLiteral("test %1").arg(number));
    const QString suffix =
        content == Content::Alike ? QString() : QStringLiteral(" %1").arg(number);
    for (int w = 0; w < windowsOfRun; ++w) {
        UIElement* const window =
            recording.add(nullptr, QStringLiteral("Window"), QStringLiteral("QDialog"),
                          QStringLiteral("Window %1").arg(w) + suffix, {QStringLiteral("shown")});
        window->setWindowNode(true);
        for (int i = 1; i < elementsOfWindow; ++i) {
            UIElement* const button =
                recording.add(window, QStringLiteral("Button"), QStringLiteral("QPushButton"),
                              QStringLiteral("Button %1").arg(i) + suffix,
                              {QStringLiteral("clicked"), QStringLiteral("shown")});
            button->increaseUsage(UIEvent(QStringLiteral("shown")));
            if ((i + number) % 3 == 0) {
                button->increaseUsage(UIEvent(QStringLiteral("clicked")));
            }
        }
    }
    recording.addEnd();
    return recording.write(path);
}

bool writeDataFile(const QString& recording, const QString& path) {
    RunLoader loader(recording);
    DataFileWriter writer;
    DataFile::Added added = DataFile::Added::Known;
    return !loader.load() && !writer.open(path, DataFileWriter::Mode::Replace) &&
           !writer.file().add(loader.run(), &added) && added == DataFile::Added::New &&
           !writer.commit();
}

struct Cost {
    double seconds = 0;
    double megabytes = 0;
};

/** Processor time and peak memory of the command; nothing when it fails. */
bool run(const std::vector<std::string>& arguments, Cost& cost) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, pointers.front(), nullptr, nullptr, pointers.data(), environ) != 0) {
        return false;
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || status != 0) {
        return false;
    }
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    cost.seconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    cost.megabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    return true;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

class Benchmark {
public:
    explicit Benchmark(const QString& folder)
        : m_folder(folder) {}

    bool measure(const char* name, Content content, bool combinesDataFiles) {
        const std::vector<int> sizes{100, 250, 500, 1000};
        QStringList files;
        for (int i = 0; i < sizes.back(); ++i) {
            const QString recording = QStringLiteral("%1/%2.uirec").arg(m_folder).arg(i);
            const QString dataFile = QStringLiteral("%1/%2.uicov").arg(m_folder).arg(i);
            if (!writeRecording(recording, i, content) ||
                (combinesDataFiles && !writeDataFile(recording, dataFile))) {
                return false;
            }
            files.append(combinesDataFiles ? dataFile : recording);
        }
        // All sizes in every round, so that what disturbs the machine disturbs all of them.
        std::vector<std::vector<double>> times(sizes.size());
        std::vector<double> memory(sizes.size());
        for (int round = 0; round < rounds; ++round) {
            for (std::size_t i = 0; i < sizes.size(); ++i) {
                Cost cost;
                if (!combine(files.mid(0, sizes[i]), cost)) {
                    return false;
                }
                times[i].push_back(cost.seconds);
                memory[i] = std::max(memory[i], cost.megabytes);
            }
        }
        print(name, sizes, times, memory);
        return true;
    }

    QJsonArray results() const { return m_results; }

private:
    bool combine(const QStringList& files, Cost& cost) const {
        std::vector<std::string> arguments{
            UICOV_PROGRAM, "combine", "--quiet", "-o",
            QFile::encodeName(m_folder + QStringLiteral("/all")).toStdString()};
        for (const QString& file : files) {
            arguments.push_back(QFile::encodeName(file).toStdString());
        }
        return run(arguments, cost);
    }

    void print(const char* name, const std::vector<int>& sizes,
               const std::vector<std::vector<double>>& times, const std::vector<double>& memory) {
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const double perRun = median(times[i]) / sizes[i];
            const double ratio = perRun / (median(times[0]) / sizes[0]);
            std::printf("%-34s %5d %9.2f ms %7.2f x %8.0f /s %8.1f MiB\n", name, sizes[i],
                        perRun * 1000, ratio, 1 / perRun, memory[i]);
            m_results.append(QJsonObject{{QStringLiteral("name"), QString::fromLatin1(name)},
                                         {QStringLiteral("runs"), sizes[i]},
                                         {QStringLiteral("millisecondsPerRun"), perRun * 1000},
                                         {QStringLiteral("ratioToFewest"), ratio},
                                         {QStringLiteral("peakMebibytes"), memory[i]}});
        }
        Q_UNUSED(std::fflush(stdout));
    }

    QString m_folder;
    QJsonArray m_results;
};

bool writeRuns(const QString& folder) {
    constexpr int runs = 30;
    for (int i = 0; i < runs; ++i) {
        const QString stem = QStringLiteral("%1/%2").arg(folder).arg(i);
        const QString recording = stem + QStringLiteral(".uirec");
        if (!writeRecording(recording, i, Content::Alike) ||
            !writeDataFile(recording, stem + QStringLiteral(".uicov"))) {
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("--write")) {
        return writeRuns(arguments.at(2)) ? 0 : 1;
    }
    const QTemporaryDir folder;
    std::printf("%-34s %5s %12s %9s %10s %12s\n", "combine", "runs", "a run", "to fewest", "runs",
                "peak memory");
    Benchmark benchmark(folder.path());
    if (!benchmark.measure("data files, one application", Content::Alike, true) ||
        !benchmark.measure("data files, every text different", Content::Different, true) ||
        !benchmark.measure("recordings, one application", Content::Alike, false)) {
        qCritical("combining: a file could not be written or combined");
        return 1;
    }
    const int option = arguments.indexOf(QStringLiteral("--json"));
    if (option < 0 || option + 1 >= arguments.size()) {
        return 0;
    }
    QFile file(arguments.at(option + 1));
    const QByteArray json = QJsonDocument(benchmark.results()).toJson();
    return file.open(QIODevice::WriteOnly) && file.write(json) == json.size() ? 0 : 1;
}

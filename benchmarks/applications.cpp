// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What the tool costs whole programs: each program and size in each mode, in processes of their
// own, the modes in turn and each round beginning with another one.
//
//   applications [--quick] [--json FILE]        all modes beside the bare program
//   applications --compare A B [...]            recording with the builds A and B (build folders)
//
// --rounds N, --programs KIND:LEAVES,... and --modes NAME,... choose otherwise.
#include "launcher.h"
#include "statistics.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVector>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

const QStringList phases{QStringLiteral("build"), QStringLiteral("events"),
                         QStringLiteral("disturb"), QStringLiteral("clicks"),
                         QStringLiteral("destroy")};

Mode recordingMode(const QString& name, const QString& build,
                   const QString& extension = QStringLiteral("/libqtuicoverage.so")) {
    const QString libraries = QDir(build).absoluteFilePath(QStringLiteral("lib"));
    return {name, libraries, libraries + extension, QString(), false};
}

/** The first one is what the others are compared with. */
QVector<Mode> allModes(const QString& build) {
    const QString own = build + QStringLiteral("/bench/subject/");
    Mode host = recordingMode(QStringLiteral("host"), build);
    host.extension = own + QStringLiteral("libhostonly.so");
    Mode dropping = recordingMode(QStringLiteral("dropping"), build);
    dropping.preload = own + QStringLiteral("libdroppinghook.so");
    Mode pictures = recordingMode(QStringLiteral("classic-pictures"), build);
    pictures.takesScreenshots = true;
    const QString controls = QStringLiteral("/libqtuicontrols.so");
    Mode controlsPictures = recordingMode(QStringLiteral("controls-pictures"), build, controls);
    controlsPictures.takesScreenshots = true;
    return {Mode{QStringLiteral("bare"), {}, {}, {}, false},
            host,
            dropping,
            recordingMode(QStringLiteral("classic"), build),
            pictures,
            recordingMode(QStringLiteral("controls"), build, controls),
            controlsPictures};
}

std::vector<Program> programs(const QString& list) {
    std::vector<Program> result;
    const QStringList entries = list.split(QLatin1Char(','));
    for (const QString& entry : entries) {
        const QString leaves = entry.section(QLatin1Char(':'), 1);
        result.push_back({entry.section(QLatin1Char(':'), 0, 0), leaves.toInt()});
    }
    return result;
}

/** The results of one program: by mode, then by round. */
using Rounds = QVector<QVector<QJsonObject>>;

/** Empty when a run failed. */
Rounds measure(const Launcher& launcher, const Program& program, const QVector<Mode>& modes,
               int rounds) {
    Rounds results(modes.size());
    for (int round = 0; round < rounds; ++round) {
        for (int turn = 0; turn < modes.size(); ++turn) {
            const int mode = (round + turn) % modes.size();
            const QJsonObject result = launcher.run(program, modes.at(mode));
            if (result.isEmpty()) {
                return {};
            }
            results[mode].append(result);
        }
    }
    return results;
}

double valueOf(const QJsonObject& result, const QString& phase, const QString& key) {
    return result.value(phase).toObject().value(key).toDouble();
}

/** One value of each round, as a ratio to the first mode's value in the same round. */
std::vector<double> ratios(const Rounds& rounds, int mode, const QString& phase,
                           const QString& key) {
    std::vector<double> values;
    for (int i = 0; i < rounds.at(mode).size(); ++i) {
        values.push_back(valueOf(rounds.at(mode).at(i), phase, key) /
                         valueOf(rounds.at(0).at(i), phase, key));
    }
    return values;
}

std::vector<double> values(const QVector<QJsonObject>& rounds, const QString& phase,
                           const QString& key) {
    std::vector<double> result;
    for (const QJsonObject& round : rounds) {
        result.push_back(valueOf(round, phase, key));
    }
    return result;
}

double heapPerLeaf(const QVector<QJsonObject>& rounds) {
    std::vector<double> result;
    for (const QJsonObject& round : rounds) {
        result.push_back(round.value(QStringLiteral("heapPerLeaf")).toDouble());
    }
    return summarise(result).median;
}

QJsonObject toJson(const Summary& summary) {
    return {{QStringLiteral("median"), summary.median},
            {QStringLiteral("lowerQuartile"), summary.lowerQuartile},
            {QStringLiteral("upperQuartile"), summary.upperQuartile}};
}

void printRow(const QString& name, double bare, const char* unit, const Rounds& rounds,
              const QString& phase, const QString& key) {
    std::printf("%-12s%10.1f %-3s", qPrintable(name), bare, unit);
    for (int mode = 1; mode < rounds.size(); ++mode) {
        const Summary summary = summarise(ratios(rounds, mode, phase, key));
        std::printf("  %6.2f (%.2f-%.2f)", summary.median, summary.lowerQuartile,
                    summary.upperQuartile);
    }
    std::printf("\n");
}

void printTable(const Program& program, const QVector<Mode>& modes, const Rounds& rounds) {
    std::printf("\n%s, %d leaves\n%-12s%14s", qPrintable(program.kind), program.leaves, "cpu",
                qPrintable(modes.at(0).name));
    for (int mode = 1; mode < modes.size(); ++mode) {
        std::printf("  %18s", qPrintable(modes.at(mode).name));
    }
    std::printf("\n");
    const QString cpu = QStringLiteral("cpu");
    for (const QString& phase : phases) {
        const double bare = summarise(values(rounds.at(0), phase, cpu)).median;
        printRow(phase, bare * 1e3, "ms", rounds, phase, cpu);
    }
    // The largest memory of the whole run is known at its end.
    const QString peak = QStringLiteral("peak");
    const double bare = summarise(values(rounds.at(0), phases.last(), peak)).median;
    printRow(QStringLiteral("peak memory"), bare / 1024 / 1024, "MB", rounds, phases.last(), peak);
    std::printf("%-12s%10.0f B  ", "heap a leaf", heapPerLeaf(rounds.at(0)));
    for (int mode = 1; mode < rounds.size(); ++mode) {
        std::printf("  %+17.0f ", heapPerLeaf(rounds.at(mode)) - heapPerLeaf(rounds.at(0)));
    }
    std::printf("\n");
    Q_UNUSED(std::fflush(stdout));
}

QJsonObject toJson(const Program& program, const QVector<Mode>& modes, const Rounds& rounds) {
    QJsonArray ofModes;
    for (int mode = 0; mode < modes.size(); ++mode) {
        QJsonObject ofMode{{QStringLiteral("mode"), modes.at(mode).name}};
        for (const QString& phase : phases) {
            QJsonObject ofPhase;
            for (const char* key : {"wall", "cpu", "peak"}) {
                const QString name = QString::fromLatin1(key);
                ofPhase.insert(name, toJson(summarise(values(rounds.at(mode), phase, name))));
                ofPhase.insert(name + QStringLiteral("Ratio"),
                               toJson(summarise(ratios(rounds, mode, phase, name))));
            }
            ofMode.insert(phase, ofPhase);
        }
        ofMode.insert(QStringLiteral("heapPerLeaf"), heapPerLeaf(rounds.at(mode)));
        ofMode.insert(QStringLiteral("recordingBytes"),
                      rounds.at(mode).constLast().value(QStringLiteral("recordingBytes")));
        ofModes.append(ofMode);
    }
    return {{QStringLiteral("program"), program.kind},
            {QStringLiteral("leaves"), program.leaves},
            {QStringLiteral("rounds"), rounds.at(0).size()},
            {QStringLiteral("modes"), ofModes}};
}

struct Options {
    QString json;
    QVector<Mode> modes;
    std::vector<Program> programs;
    int rounds = 7;
};

Options parse(const QCoreApplication& application) {
    QCommandLineParser parser;
    const QString quick = QStringLiteral("quick");
    parser.addOptions({{quick, QStringLiteral("small programs, three rounds")},
                       {QStringLiteral("compare"), QStringLiteral("two build folders follow")},
                       {QStringLiteral("json"), QString(), QStringLiteral("file")},
                       {QStringLiteral("rounds"), QString(), QStringLiteral("n")},
                       {QStringLiteral("programs"), QString(), QStringLiteral("list")},
                       {QStringLiteral("modes"), QString(), QStringLiteral("list")}});
    parser.addHelpOption();
    parser.process(application);
    Options options;
    options.json = parser.value(QStringLiteral("json"));
    const QStringList builds = parser.positionalArguments();
    const QString own =
        QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/..")).canonicalPath();
    const bool isComparison = parser.isSet(QStringLiteral("compare")) && builds.size() == 2;
    QString list;
    if (isComparison) {
        options.modes = {recordingMode(QStringLiteral("A"), builds.at(0)),
                         recordingMode(QStringLiteral("B"), builds.at(1))};
        list = QStringLiteral("widgets:1000,widgets:5000,quick:200,quick:1000");
    } else {
        options.modes = allModes(own);
        list = QStringLiteral(
            "widgets:1000,widgets:5000,widgets:20000,quick:200,quick:1000,quick:5000");
    }
    if (parser.isSet(quick)) {
        options.rounds = 3;
        list = QStringLiteral("widgets:1000,quick:200");
    }
    if (parser.isSet(QStringLiteral("rounds"))) {
        options.rounds = parser.value(QStringLiteral("rounds")).toInt();
    }
    if (parser.isSet(QStringLiteral("programs"))) {
        list = parser.value(QStringLiteral("programs"));
    }
    options.programs = programs(list);
    if (parser.isSet(QStringLiteral("modes"))) {
        const QStringList chosen = parser.value(QStringLiteral("modes")).split(QLatin1Char(','));
        for (const QString& name : chosen) {
            const auto hasName = [&name](const Mode& mode) { return mode.name == name; };
            if (std::none_of(options.modes.cbegin(), options.modes.cend(), hasName)) {
                qFatal("there is no mode \"%s\"", qPrintable(name));
            }
        }
        const auto isLeftOut = [&chosen](const Mode& mode) { return !chosen.contains(mode.name); };
        options.modes.erase(std::remove_if(options.modes.begin(), options.modes.end(), isLeftOut),
                            options.modes.end());
    }
    return options;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const Options options = parse(application);
    const Launcher launcher(QCoreApplication::applicationDirPath() +
                            QStringLiteral("/subject/subject-"));
    QJsonArray all;
    for (const Program& program : options.programs) {
        const Rounds rounds = measure(launcher, program, options.modes, options.rounds);
        if (rounds.isEmpty()) {
            return 1;
        }
        printTable(program, options.modes, rounds);
        all.append(toJson(program, options.modes, rounds));
    }
    if (options.json.isEmpty()) {
        return 0;
    }
    QFile file(options.json);
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(all).toJson()) > 0 ? 0 : 1;
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "comparison.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cstdio>

namespace {

void print(const Comparison::Figure& figure) {
    std::printf("%-9s %6.2f %%  %d of %d\n", qPrintable(figure.name), figure.share(), figure.good(),
                figure.total);
    for (const Comparison::Miss& miss : figure.misses) {
        std::printf("    %s\n", qPrintable(miss.text));
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: universecheck JOURNAL RECORDING\n", stderr);
        return 1;
    }
    JournalFile journal;
    ControlsRecording recording;
    QString problem;
    if (!journal.read(arguments.at(1), problem) || !recording.read(arguments.at(2), problem)) {
        std::fprintf(stderr, "universecheck: %s\n", qPrintable(problem));
        return 1;
    }
    if (qEnvironmentVariableIsSet("UNIVERSE_ELEMENTS")) {
        for (const auto& element : qAsConst(recording.elements)) {
            std::printf("%s %s %s[%s] %d uses\n", qPrintable(element.type),
                        qPrintable(element.className), element.isGroup ? "(group) " : "",
                        qPrintable(element.names.join(QLatin1String(" | ")).left(150)),
                        element.uses.size());
            for (const auto& use : element.uses) {
                std::printf("%lld use %s of %s %s [%s]\n", static_cast<long long>(use.time),
                            qPrintable(use.event), qPrintable(element.type),
                            qPrintable(element.className),
                            qPrintable(element.names.value(0).left(40)));
            }
        }
    }
    const Comparison comparison(journal, recording);
    std::printf("%d controls, %d nodes, %d left out, %d steps%s\n", comparison.controls(),
                comparison.universe().total, comparison.leftOut(), journal.steps.size(),
                journal.isDone ? "" : ", ended by itself");
    print(comparison.universe());
    print(comparison.recall());
    print(comparison.precision());
    return 0;
}

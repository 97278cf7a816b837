// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/filesizelimit.h"
#include "commands/commandline.h"
#include "console/terminal.h"

#include <QCoreApplication>

#include <string>
#include <vector>

int main(int argc, char** argv) {
    Uicov::Base::outliveFileSizeLimit();
    // Taken first: Qt takes arguments out that it knows, and they may be the application's.
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    int programArguments = qMin(argc, 1);
    const QCoreApplication application(programArguments, argv);
    Uicov::Console::Terminal terminal;
    return Uicov::Commands::CommandLine(terminal).run(arguments);
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Writes the manual pages and the completion scripts into a folder, for the installation.

#include "commands/commandline.h"
#include "console/terminal.h"
#include "help/completion.h"
#include "help/manualpage.h"
#include "help/vocabulary.h"

#include <QDir>
#include <QFile>

#include <cstdio>

#include <CLI/CLI.hpp>

namespace {

using Uicov::Help::Vocabulary;
using Shell = Uicov::Help::Shell;

bool write(const QString& path, const QString& text) {
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        static_cast<void>(std::fprintf(stderr, "%s: cannot be written\n", qPrintable(path)));
        return false;
    }
    return true;
}

bool writeAll(const QDir& folder, const Vocabulary& vocabulary) {
    // Pages of verbs that are no more would be installed for ever.
    QDir pages(folder.filePath(QStringLiteral("man1")));
    pages.removeRecursively();
    bool isWritten = folder.mkpath(pages.path()) && write(pages.filePath(QStringLiteral("uicov.1")),
                                                          Uicov::Help::manualOfProgram(vocabulary));
    for (const auto& verb : vocabulary.verbs()) {
        isWritten = write(pages.filePath(QStringLiteral("uicov-%1.1").arg(verb.name)),
                          Uicov::Help::manualOfVerb(verb, vocabulary)) &&
                    isWritten;
    }
    const auto script = [&](const char* name, Shell shell) {
        return write(folder.filePath(QLatin1String(name)),
                     Uicov::Help::completionScript(shell, vocabulary));
    };
    return isWritten && script("uicov.bash", Shell::Bash) && script("_uicov", Shell::Zsh) &&
           script("uicov.fish", Shell::Fish);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        static_cast<void>(std::fprintf(stderr, "usage: uicov_manualwriter FOLDER\n"));
        return 1;
    }
    Uicov::Console::Terminal terminal;
    Uicov::Commands::CommandLine commandLine(terminal);
    const auto app = commandLine.definitions();
    return writeAll(QDir(QFile::decodeName(argv[1])), Vocabulary(*app)) ? 0 : 1;
}

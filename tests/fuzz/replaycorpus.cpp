// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Gives each file of a folder to a fuzz target, in builds that have no fuzzer.

#include "acceptance.h"

#include <QDir>
#include <QFile>

#include <cstddef>
#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", arguments[0]);
        return 1;
    }
    const QFileInfoList files =
        QDir(QFile::decodeName(arguments[1])).entryInfoList(QDir::Files, QDir::Name);
    int seeds = 0;
    for (const QFileInfo& info : files) {
        // What a fuzzer made may be refused; what real programs sent may not.
        const bool isMade = info.fileName().startsWith(QLatin1String("finding-")) ||
                            info.fileName().startsWith(QLatin1String("found-"));
        seeds += isMade ? 0 : 1;
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(info.filePath()));
            return 1;
        }
        const QByteArray bytes = file.readAll();
        // Said before, so that the last line names the file that it broke on.
        std::printf("%s\n", qPrintable(info.fileName()));
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size()));
    }
    std::printf("%d inputs, %d could be used\n", files.size(), Fuzz::Acceptance::count());
    return seeds > 0 && Fuzz::Acceptance::count() >= seeds ? 0 : 1;
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/outputs.h"

#include "commands/cli/outputfile.h"
#include "console/terminal.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace Uicov::Commands::Cli {

Outputs::Outputs(Console::Terminal& terminal)
    : m_terminal(terminal) {}

void Outputs::add(const std::string& path, const Maker& maker, Readers readers) {
    if (!path.empty()) {
        m_outputs.push_back({path, maker, readers});
    }
}

bool Outputs::areApart() const {
    QSet<QString> places;
    for (const Output& output : m_outputs) {
        const QString path = QFile::decodeName(output.path.c_str());
        const QFileInfo info(path);
        const bool isStandardOutput = output.path == "-";
        if (!isStandardOutput && info.exists() && !info.isFile()) {
            continue; // a device or pipe takes one after the other
        }
        const QString place = isStandardOutput ? path : info.absoluteFilePath();
        if (places.contains(place)) {
            m_terminal.error({Base::Message::WrongUse,
                              (isStandardOutput ? QStringLiteral("standard output") : path) +
                                  QStringLiteral(": two outputs cannot go to one place; name "
                                                 "another for one of them")});
            return false;
        }
        places.insert(place);
    }
    return true;
}

bool Outputs::write() {
    bool isWritten = areApart();
    if (!isWritten) {
        return false;
    }
    for (const Output& output : m_outputs) {
        isWritten = writeOne(output) && isWritten;
    }
    return isWritten;
}

bool Outputs::writeOne(const Output& output) {
    OutputFile file(QFile::decodeName(output.path.c_str()));
    if (output.readers) {
        file.setReaders(*output.readers);
    }
    auto problem = file.open();
    if (!problem) {
        file.write(QString::fromUtf8(output.maker(file.isStandardOutput())));
        problem = file.close();
    }
    if (problem) {
        m_terminal.error(*problem);
    }
    return !problem;
}

} // namespace Uicov::Commands::Cli

#include "commands/outputs.h"

#include "console/outputfile.h"
#include "console/terminal.h"

#include <QFile>

namespace Uicov::Commands {

Outputs::Outputs(Console::Terminal& terminal)
    : m_terminal(terminal) {}

void Outputs::add(const std::string& path, const Maker& maker) {
    if (!path.empty()) {
        m_outputs.push_back({path, maker});
    }
}

bool Outputs::write() {
    bool isWritten = true;
    for (const Output& output : m_outputs) {
        isWritten = writeOne(output) && isWritten;
    }
    return isWritten;
}

bool Outputs::writeOne(const Output& output) {
    Console::OutputFile file(QFile::decodeName(output.path.c_str()));
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

} // namespace Uicov::Commands

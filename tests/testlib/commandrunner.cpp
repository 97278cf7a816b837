// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"

#include <QProcess>
#include <QProcessEnvironment>

namespace TestLib {

CommandRunner::CommandRunner(const QString& program)
    : m_program(program) {}

int CommandRunner::run(const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto it = m_variables.cbegin(); it != m_variables.cend(); ++it) {
        if (it.value().isNull()) {
            environment.remove(it.key());
        } else {
            environment.insert(it.key(), it.value());
        }
    }
    process.setProcessEnvironment(environment);
    if (!m_folder.isEmpty()) {
        process.setWorkingDirectory(m_folder);
    }
    process.start(m_program, arguments);
    if (!process.waitForStarted()) {
        return -1;
    }
    process.write(m_input);
    process.closeWriteChannel();
    const bool hasEnded = process.waitForFinished();
    m_output = QString::fromUtf8(process.readAllStandardOutput());
    m_errors = QString::fromUtf8(process.readAllStandardError());
    return hasEnded && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace TestLib

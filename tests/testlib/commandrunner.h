// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace TestLib {

/** Runs a program to its end and keeps what it said. */
class CommandRunner {
public:
    explicit CommandRunner(const QString& program);

    void setWorkingFolder(const QString& folder) { m_folder = folder; }
    /** A null value takes the variable away. */
    void setVariable(const QString& name, const QString& value) { m_variables[name] = value; }
    void setInput(const QByteArray& input) { m_input = input; }

    /** The exit code; -1 when it did not start, did not end or was killed. */
    int run(const QStringList& arguments);

    QString output() const { return m_output; }
    QString errors() const { return m_errors; }

private:
    QString m_program;
    QString m_folder;
    QMap<QString, QString> m_variables;
    QByteArray m_input;
    QString m_output;
    QString m_errors;
};

} // namespace TestLib

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace TestLib {

/** Runs a program with a terminal of its own, as a person would. */
class TerminalRunner {
public:
    ~TerminalRunner();

    /** @param columns width of the terminal; false when it cannot be started */
    bool start(const QString& program, const QStringList& arguments, int columns = 80);
    /** Reads until the text has appeared; false when the program ended before. */
    bool readUntil(const QByteArray& text);
    /** As if typed; Ctrl-C is "\x03". */
    void type(const QByteArray& keys);
    /** Reads to the end; the exit code, or -1 when a signal ended it. */
    int finish();

    /** All that appeared so far. */
    QByteArray output() const { return m_output; }

private:
    bool readSome();

    int m_terminal = -1;
    int m_pid = 0;
    QByteArray m_output;
};

} // namespace TestLib

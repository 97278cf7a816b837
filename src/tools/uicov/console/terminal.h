// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QByteArray>
#include <QString>

namespace Uicov::Console {

/**
 * The command's standard streams: progress and problems go to standard error, data to standard
 * output. Colour and the width of the terminal are used only where the stream is a terminal.
 */
class Terminal {
public:
    enum class Severity { Error, Warning };
    enum class Colour { Automatic, Always, Never };

    Terminal() = default;
    virtual ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /** One line: "uicov: error: text [name]". Control characters in the text are made visible. */
    void report(Severity severity, const Base::Problem& problem);
    void error(const Base::Problem& problem) { report(Severity::Error, problem); }
    void warning(const Base::Problem& problem) { report(Severity::Warning, problem); }

    /** One line of progress: "uicov: text". */
    void note(const QString& text);

    /**
     * One line of progress that the next line of any kind replaces. Only where standard error is a
     * terminal; a line that is wider than the terminal loses its middle.
     */
    void showStatus(const QString& text);
    /** Takes that line away, if there is one. */
    void clearStatus();
    virtual bool isErrorTerminal() const;
    /** Whether Progress may say something here; it may unless a command was told to be quiet. */
    bool showsProgress() const { return m_showsProgress; }
    void setShowsProgress(bool shows) { m_showsProgress = shows; }

    /** Writes data; false when not all of it could be written. */
    bool write(const QString& text);

    /** Columns of the terminal that standard output is; 0 when it is none. */
    static int outputColumns();

    /** For the whole process, as its streams are. */
    static void setColour(Colour colour);
    /**
     * Whether that stream (1 or 2) may carry colour. Where nothing else was chosen: a terminal that
     * is not a "dumb" one, and NO_COLOR unset or empty.
     */
    static bool mayUseColour(int descriptor);

protected:
    /** Writes to standard error, at once. */
    virtual void writeError(const QByteArray& bytes);
    /** Columns of the terminal that standard error is; 0 when unknown. */
    virtual int errorColumns() const;

private:
    void writeLine(const QString& line);

    bool m_showsStatus = false;
    bool m_showsProgress = true;
};

} // namespace Uicov::Console

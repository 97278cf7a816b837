#pragma once

#include "console/message.h"

#include <QString>

namespace Uicov::Console {

/**
 * The command's standard streams: progress and problems go to standard error, data to standard
 * output. Colour and the width of the terminal are used only where the stream is a terminal.
 */
class Terminal {
public:
    enum class Severity { Error, Warning };

    /** One line: "uicov: error: text [name]". Control characters in the text are made visible. */
    void report(Severity severity, const Problem& problem);
    void error(const Problem& problem) { report(Severity::Error, problem); }
    void warning(const Problem& problem) { report(Severity::Warning, problem); }

    /** One line of progress: "uicov: text". */
    void note(const QString& text);

    /** Writes data; false when not all of it could be written. */
    bool write(const QString& text);

    /** Columns of the terminal that standard output is; 0 when it is none. */
    static int outputColumns();

    /** Whether that stream (1 or 2) may carry colour: a terminal, and NO_COLOR unset or empty. */
    static bool mayUseColour(int descriptor);
};

} // namespace Uicov::Console

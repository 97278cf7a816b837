// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <csignal>
#include <optional>
#include <string>
#include <vector>

namespace Uicov::Launch {

/**
 * Runs a program in the foreground as if it had been started in this one's place: it has the same
 * standard streams, terminal and process group, and gets the signals that are sent to this process
 * alone. What a terminal sends (Ctrl-C) reaches the whole group anyway and is not sent twice.
 */
class ChildProcess {
public:
    /** What the program has blocked when it starts; as in this process where nothing is set. */
    void setSignalMask(const sigset_t& mask) { m_mask = mask; }

    /**
     * Runs the program and waits for its end. From then on what asks this process to end (SIGINT,
     * SIGTERM, SIGHUP, SIGQUIT) stays blocked: what the program left behind is to be kept first,
     * and that takes moments.
     * @param path      the file to run; a file without a header goes to /bin/sh, as in a shell
     * @param arguments what it is called first
     * @return false when it could not be started; error() then tells why
     */
    bool run(const std::string& path, const std::vector<std::string>& arguments,
             const std::vector<std::string>& environment);

    /** An errno value. */
    int error() const { return m_error; }
    int pid() const { return m_pid; }
    /** The signal that ended it; 0 when it ended by itself. */
    int signal() const;
    /** Its own status, or 128 and the signal's number. */
    int exitCode() const;

private:
    void waitForEnd();

    std::optional<sigset_t> m_mask;
    int m_error = 0;
    int m_pid = 0;
    int m_status = 0;
};

} // namespace Uicov::Launch

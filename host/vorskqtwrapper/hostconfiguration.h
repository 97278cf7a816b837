// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace VorskHost {

/**
 * What to record and how: from the INI file named by the environment variable VORSK_OPTIONS_FILE,
 * or from the environment alone. A value; read once, when the wrapper starts.
 *
 *   [host]     extension (paths), recording (path), and optional: session (text), context (text:
 *              of the run as a whole), mark (text: the context that is current when the process
 *              starts), labels (texts: NAME=VALUE)
 *   [options]  enabled, qtwidgets, qtquick, takeScreenshotsOfElements, redact (patterns): handed to
 * the extension
 *
 * Several values to a key are separated by commas. Unknown sections and keys are errors.
 */
class HostConfiguration {
public:
    using Options = std::map<std::string, std::vector<std::string>>;

    /**
     * What the environment asks for: the file that VORSK_OPTIONS_FILE names or, without one, a
     * recording of this program in the folder VORSK_RECORDING_DIR by the extension that lies beside
     * the host: the controls extension, or the one that VORSK_RECORDING_EXTENSION names, controls
     * or classic. VORSK_RECORDING_MAX_BYTES limits either, and VORSK_RECORDING_APPEND says how
     * either is appended to. Nothing when it names neither.
     * @param libraryFolder where the host's libraries are
     */
    static std::optional<HostConfiguration> fromEnvironment(const QString& libraryFolder);

    /** Reads a file. What is wrong with it is in errorString() of the result. */
    static HostConfiguration read(const QString& file);

    /** False when the file is of no use; nothing but errorString() means anything then. */
    bool isValid() const { return m_error.isEmpty(); }
    /** A short stable name, what is wrong, what to do. */
    QString errorString() const { return m_error; }

    /** Absolute paths, at least one. */
    QStringList extensions() const { return m_extensions; }
    /** Absolute path. */
    QString recording() const { return m_recording; }
    /** Bytes that the recording may have; 0 without a limit. */
    qint64 maximumSize() const { return m_maximumSize; }
    /** Whether the recording may be written through shared memory. */
    bool isShared() const { return m_isShared; }
    /** Null when none is given. */
    QString session() const { return m_session; }
    /** Of the run as a whole; null when none is given. */
    QString context() const { return m_context; }
    /**
     * The context that processes begin in: as the file has it now, since it changes during a run.
     * Empty when none is given.
     */
    QString currentMark() const;
    /** Names and values, in their order. */
    const QVector<QPair<QString, QString>>& labels() const { return m_labels; }
    /** Only the keys that were given; a key without a value has an empty list. */
    const Options& options() const { return m_options; }

private:
    void take(const QString& section, const QString& key, const QStringList& values);
    void check(const QString& file);
    static HostConfiguration forFolder(const QString& folder, const QString& libraryFolder);
    void takeMaximumSize();
    void takeWayOfAppending();

    QString m_file;
    QString m_error;
    QStringList m_extensions;
    QString m_recording;
    qint64 m_maximumSize = 0;
    bool m_isShared = true;
    QString m_session;
    QString m_context;
    QVector<QPair<QString, QString>> m_labels;
    Options m_options;
};

} // namespace VorskHost

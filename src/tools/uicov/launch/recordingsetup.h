// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "launch/installation.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>
#include <string>
#include <vector>

namespace Uicov::Launch {

/**
 * Everything that makes an application record itself: a configuration in a private folder, which
 * goes when this goes, and an environment that leads there.
 */
class RecordingSetup {
public:
    enum class Toolkit { Widgets, Quick, Both };

    /** @param session what all processes of this run write into their recordings */
    explicit RecordingSetup(const QString& session);

    void setToolkit(Toolkit toolkit) { m_toolkit = toolkit; }
    void setTakesScreenshots(bool takes) { m_takesScreenshots = takes; }
    /** Patterns over objectName, QML id and class: what is blacked out of pictures. */
    void setRedacted(const QStringList& patterns) { m_redacted = patterns; }
    /** Name of the context of the run as a whole. */
    void setContext(const QString& context) { m_context = context; }
    /** NAME=VALUE each. */
    void setLabels(const QStringList& labels) { m_labels = labels; }

    /**
     * Writes the configuration.
     * @param recording absolute path
     */
    std::optional<Base::Problem> write(const Installation& installation, const QString& recording);

    /**
     * The environment of this process with what is needed added; nothing else is replaced.
     * @param runFolder by which "uicov mark" finds the run from inside of it
     */
    std::vector<std::string> environment(const Installation& installation,
                                         const QString& runFolder) const;

    /** Lets processes that start from now on begin in that context; false where that is not
     * possible, as when the run has ended. */
    static bool setMark(const QString& configurationFile, const QString& name);

    QString configurationFile() const;

private:
    QTemporaryDir m_folder;
    QString m_session;
    Toolkit m_toolkit = Toolkit::Both;
    bool m_takesScreenshots = false;
    QStringList m_redacted;
    QString m_context;
    QStringList m_labels;
};

} // namespace Uicov::Launch

#pragma once

#include "console/message.h"
#include "launch/installation.h"

#include <QByteArray>
#include <QString>
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

    /**
     * Writes the configuration.
     * @param recording absolute path
     */
    std::optional<Console::Problem> write(const Installation& installation,
                                          const QString& recording);

    /** The environment of this process with what is needed added; nothing else is replaced. */
    std::vector<std::string> environment(const Installation& installation) const;

    QString configurationFile() const;

private:
    QTemporaryDir m_folder;
    QString m_session;
    Toolkit m_toolkit = Toolkit::Both;
    bool m_takesScreenshots = false;
};

} // namespace Uicov::Launch

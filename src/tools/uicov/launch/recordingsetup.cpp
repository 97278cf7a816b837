// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/recordingsetup.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <cstdlib>

#include <unistd.h>

namespace Uicov::Launch {

namespace {

using Variables = std::vector<std::string>;

/** The entry of that variable, which is made when there is none. */
std::string& entryOf(Variables& variables, const std::string& name) {
    const std::string start = name + '=';
    const auto it = std::find_if(variables.begin(), variables.end(), [&](const auto& entry) {
        return entry.compare(0, start.size(), start) == 0;
    });
    if (it != variables.end()) {
        return *it;
    }
    variables.push_back(start);
    return variables.back();
}

void setVariable(Variables& variables, const std::string& name, const std::string& value) {
    entryOf(variables, name) = name + '=' + value;
}

/** Adds to a list behind what stands in it, once. */
void addToVariable(Variables& variables, const std::string& name, char separator,
                   const std::string& value) {
    std::string& entry = entryOf(variables, name);
    const std::string list = entry.substr(name.size() + 1);
    const std::string framed = separator + list + separator;
    if (framed.find(separator + value + separator) == std::string::npos) {
        entry += (list.empty() ? std::string() : std::string(1, separator)) + value;
    }
}

QString number(bool isOn) {
    return isOn ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

RecordingSetup::RecordingSetup(const QString& session)
    : m_session(session) {}

QString RecordingSetup::configurationFile() const {
    return m_folder.filePath(QStringLiteral("uicov.ini"));
}

std::optional<Base::Problem> RecordingSetup::write(const Installation& installation,
                                                   const QString& recording) {
    if (m_folder.isValid()) {
        QSettings settings(configurationFile(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("host/extension"), installation.extension());
        settings.setValue(QStringLiteral("host/recording"), recording);
        settings.setValue(QStringLiteral("host/session"), m_session);
        if (!m_context.isEmpty()) {
            settings.setValue(QStringLiteral("host/context"), m_context);
        }
        if (!m_labels.isEmpty()) {
            settings.setValue(QStringLiteral("host/labels"), m_labels);
        }
        settings.setValue(QStringLiteral("options/enabled"), number(true));
        settings.setValue(QStringLiteral("options/qtwidgets"), number(m_toolkit != Toolkit::Quick));
        settings.setValue(QStringLiteral("options/qtquick"), number(m_toolkit != Toolkit::Widgets));
        settings.setValue(QStringLiteral("options/takeScreenshotsOfElements"),
                          number(m_takesScreenshots));
        if (!m_redacted.isEmpty()) {
            settings.setValue(QStringLiteral("options/redact"), m_redacted);
        }
        settings.sync();
        if (settings.status() == QSettings::NoError) {
            return std::nullopt;
        }
    }
    return Base::Problem{Base::Message::SetupFailed,
                         QStringLiteral("the configuration for the application cannot be written "
                                        "to the temporary folder ") +
                             m_folder.path() +
                             QStringLiteral("; free some space there or set TMPDIR")};
}

bool RecordingSetup::setMark(const QString& configurationFile, const QString& name) {
    if (!QFile::exists(configurationFile)) {
        return false; // a new one would be nobody's
    }
    QSettings settings(configurationFile, QSettings::IniFormat);
    settings.setValue(QStringLiteral("host/mark"), name);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

Variables RecordingSetup::environment(const Installation& installation,
                                      const QString& runFolder) const {
    Variables variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        variables.emplace_back(*entry);
    }
    setVariable(variables, "VORSK_GUI_COVERAGE", "1");
    setVariable(variables, "VORSK_OPTIONS_FILE",
                QFile::encodeName(configurationFile()).toStdString());
    setVariable(variables, "UICOV_RUN", QFile::encodeName(runFolder).toStdString());
    addToVariable(variables, "QT_PLUGIN_PATH", ':',
                  QFile::encodeName(installation.pluginFolder()).toStdString());
    addToVariable(variables, "QT_QPA_GENERIC_PLUGINS", ',', installation.pluginKey().toStdString());
    return variables;
}

} // namespace Uicov::Launch

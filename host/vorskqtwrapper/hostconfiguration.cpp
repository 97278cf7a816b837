// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/hostconfiguration.h"

#include "vorskhook/sizelimit.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace VorskHost {

namespace {

const QString hostSection = QStringLiteral("host");
const QString optionsSection = QStringLiteral("options");
const QString extensionKey = QStringLiteral("extension");
const QString recordingKey = QStringLiteral("recording");
const QString sessionKey = QStringLiteral("session");
const QString contextKey = QStringLiteral("context");
const QString markKey = QStringLiteral("mark");
const QString labelsKey = QStringLiteral("labels");

QStringList knownKeys(const QString& section) {
    if (section == hostSection) {
        return {extensionKey, recordingKey, sessionKey, contextKey, markKey, labelsKey};
    }
    return {QStringLiteral("enabled"), QStringLiteral("qtwidgets"), QStringLiteral("qtquick"),
            QStringLiteral("takeScreenshotsOfElements"), QStringLiteral("redact")};
}

/** As qEnvironmentVariable, which came with Qt 5.10. */
QString fromEnvironmentVariable(const char* name) {
    return QString::fromLocal8Bit(qgetenv(name));
}

QString unknownSection(const QString& section) {
    const QString found = section.isEmpty()
                              ? QStringLiteral("a key stands outside any section")
                              : QStringLiteral("there is no section [%1]").arg(section);
    return QStringLiteral("%1; known sections are [host] and [options]").arg(found);
}

QString unknownKey(const QString& section, const QString& key) {
    return QStringLiteral("[%1] has no key \"%2\"; it can have %3")
        .arg(section, key, knownKeys(section).join(QStringLiteral(", ")));
}

/** The values of an INI entry; an entry with nothing behind the sign of equality has none. */
QStringList valuesOf(const QSettings& settings, const QString& path) {
    const QStringList values = settings.value(path).toStringList();
    return values == QStringList(QString()) ? QStringList() : values;
}

/** Empty when the file can be read and every key in it is known. */
QString faultOf(const QString& file, QSettings& settings) {
    const QFileInfo info(file);
    if (!info.exists()) {
        return QStringLiteral("options-unreadable: there is no options file %1").arg(file);
    }
    const QStringList keys = settings.allKeys();
    if (!info.isFile() || settings.status() == QSettings::AccessError) {
        return QStringLiteral("options-unreadable: the options file %1 cannot be read").arg(file);
    }
    if (settings.status() != QSettings::NoError) {
        return QStringLiteral("options-malformed: the options file %1 is not an INI file")
            .arg(file);
    }
    for (const QString& path : keys) {
        const QString section =
            path.contains(QLatin1Char('/')) ? path.section(QLatin1Char('/'), 0, 0) : QString();
        const QString key = path.section(QLatin1Char('/'), 1);
        if (section != hostSection && section != optionsSection) {
            return QStringLiteral("options-unknown: the options file %1: %2")
                .arg(file, unknownSection(section));
        }
        if (!knownKeys(section).contains(key)) {
            return QStringLiteral("options-unknown: the options file %1: %2")
                .arg(file, unknownKey(section, key));
        }
        const bool takesSeveral = key == extensionKey || key == labelsKey;
        if (section == hostSection && !takesSeveral && valuesOf(settings, path).size() > 1) {
            return QStringLiteral("options-malformed: the options file %1 has several values for "
                                  "\"%2\"; a text with a comma needs quotation marks")
                .arg(file, key);
        }
    }
    return {};
}

const QString consequence = QStringLiteral("; nothing is recorded, ");

// Values of VORSK_RECORDING_EXTENSION.
constexpr QLatin1String controls("controls");
constexpr QLatin1String classic("classic");

} // namespace

std::optional<HostConfiguration> HostConfiguration::fromEnvironment(const QString& libraryFolder) {
    HostConfiguration result;
    if (!qEnvironmentVariableIsEmpty("VORSK_OPTIONS_FILE")) {
        result = read(fromEnvironmentVariable("VORSK_OPTIONS_FILE"));
    } else if (!qEnvironmentVariableIsEmpty("VORSK_RECORDING_DIR")) {
        result = forFolder(fromEnvironmentVariable("VORSK_RECORDING_DIR"), libraryFolder);
    } else {
        return std::nullopt;
    }
    if (result.isValid()) {
        result.takeMaximumSize();
    }
    if (result.isValid()) {
        result.takeWayOfAppending();
    }
    return result;
}

HostConfiguration HostConfiguration::forFolder(const QString& folder,
                                               const QString& libraryFolder) {
    HostConfiguration result;
    const QDir recordings(QDir::current().absoluteFilePath(folder));
    // What comes of a folder that cannot be made is said when the recording cannot be.
    recordings.mkpath(QStringLiteral("."));
    result.m_recording = recordings.filePath(
        QFileInfo(QCoreApplication::applicationFilePath()).fileName() + QStringLiteral(".uirec"));
    const QString extension = fromEnvironmentVariable("VORSK_RECORDING_EXTENSION");
    if (!extension.isEmpty() && extension != classic && extension != controls) {
        result.m_error =
            QStringLiteral("options-malformed: VORSK_RECORDING_EXTENSION is \"%1\"%2give "
                           "controls or classic")
                .arg(extension, consequence);
        return result;
    }
    result.m_extensions.append(QDir(libraryFolder)
                                   .filePath(extension == classic
                                                 ? QStringLiteral("libqtuicoverage.so")
                                                 : QStringLiteral("libqtuicontrols.so")));
    result.m_context = fromEnvironmentVariable("VORSK_RECORDING_CONTEXT");
    for (const char* option : {"enabled", "qtwidgets", "qtquick"}) {
        result.m_options[option] = {"1"};
    }
    const bool takesScreenshots = qEnvironmentVariableIntValue("VORSK_RECORDING_SCREENSHOTS") != 0;
    result.m_options["takeScreenshotsOfElements"] = {takesScreenshots ? "1" : "0"};
    return result;
}

void HostConfiguration::takeMaximumSize() {
    const QString value = fromEnvironmentVariable("VORSK_RECORDING_MAX_BYTES");
    if (value.isEmpty()) {
        return;
    }
    bool isNumber = false;
    m_maximumSize = value.toLongLong(&isNumber);
    if (!isNumber || m_maximumSize < SizeLimit::smallest) {
        m_error =
            QStringLiteral("options-malformed: VORSK_RECORDING_MAX_BYTES is \"%1\"%2give a number "
                           "of bytes, %3 or more")
                .arg(value, consequence, QString::number(SizeLimit::smallest));
    }
}

void HostConfiguration::takeWayOfAppending() {
    const QString value = fromEnvironmentVariable("VORSK_RECORDING_APPEND");
    m_isShared = value != QLatin1String("write");
    if (m_isShared && !value.isEmpty() && value != QLatin1String("map")) {
        m_error = QStringLiteral("options-malformed: VORSK_RECORDING_APPEND is \"%1\"%2give map or "
                                 "write")
                      .arg(value, consequence);
    }
}

HostConfiguration HostConfiguration::read(const QString& file) {
    HostConfiguration result;
    result.m_file = file;
    QSettings settings(file, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    const QString fault = faultOf(file, settings);
    if (!fault.isEmpty()) {
        result.m_error =
            fault + consequence + QStringLiteral("set VORSK_OPTIONS_FILE to a sound options file");
        return result;
    }
    const QStringList keys = settings.allKeys();
    for (const QString& path : keys) {
        result.take(path.section(QLatin1Char('/'), 0, 0), path.section(QLatin1Char('/'), 1),
                    valuesOf(settings, path));
    }
    result.check(file);
    return result;
}

QString HostConfiguration::currentMark() const {
    if (m_file.isEmpty()) {
        return {};
    }
    QSettings settings(m_file, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    return valuesOf(settings, hostSection + QLatin1Char('/') + markKey).value(0);
}

void HostConfiguration::take(const QString& section, const QString& key,
                             const QStringList& values) {
    if (section == optionsSection) {
        std::vector<std::string>& option = m_options[key.toStdString()];
        for (const QString& value : values) {
            option.push_back(value.toStdString());
        }
    } else if (key == extensionKey) {
        for (const QString& value : values) {
            m_extensions.append(QDir::current().absoluteFilePath(value));
        }
    } else if (key == recordingKey && !values.isEmpty()) {
        m_recording = QDir::current().absoluteFilePath(values.first());
    } else if (key == sessionKey && !values.isEmpty()) {
        m_session = values.first();
    } else if (key == contextKey && !values.isEmpty()) {
        m_context = values.first();
    } else if (key == labelsKey) {
        for (const QString& label : values) {
            m_labels.append(qMakePair(label.section(QLatin1Char('='), 0, 0),
                                      label.section(QLatin1Char('='), 1)));
        }
    }
}

void HostConfiguration::check(const QString& file) {
    QString missing;
    if (m_extensions.isEmpty()) {
        missing = extensionKey;
    } else if (m_recording.isEmpty()) {
        missing = recordingKey;
    }
    if (!missing.isEmpty()) {
        m_error = QStringLiteral("options-incomplete: the options file %1 has no value for "
                                 "\"%2\" in [host]%3add one")
                      .arg(file, missing, consequence);
    }
}

} // namespace VorskHost

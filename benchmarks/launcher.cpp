// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launcher.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace {

bool writeOptions(const QString& path, const QString& recording, const Mode& mode) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    const QString text = QStringLiteral("[host]\nextension=%1\nrecording=%2\n[options]\nenabled=1\n"
                                        "qtwidgets=1\nqtquick=1\ntakeScreenshotsOfElements=%3\n")
                             .arg(mode.extension, recording)
                             .arg(mode.takesScreenshots ? 1 : 0);
    return file.write(text.toUtf8()) > 0;
}

QProcessEnvironment environment(const Mode& mode, const QString& folder, const QString& options) {
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder);
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    variables.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    if (mode.libraries.isEmpty()) {
        return variables;
    }
    variables.insert(QStringLiteral("QT_PLUGIN_PATH"), mode.libraries + QStringLiteral("/plugins"));
    variables.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorsk"));
    variables.insert(QStringLiteral("VORSK_OPTIONS_FILE"), options);
    variables.insert(QStringLiteral("VORSK_GUI_COVERAGE"), QStringLiteral("1"));
    if (!mode.preload.isEmpty()) {
        variables.insert(QStringLiteral("LD_PRELOAD"), mode.preload);
    }
    return variables;
}

QJsonObject read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

} // namespace

Launcher::Launcher(const QString& subject)
    : m_subject(subject) {}

QJsonObject Launcher::run(const Program& program, const Mode& mode) const {
    const QTemporaryDir folder;
    const QString options = folder.filePath(QStringLiteral("host.ini"));
    const QString recording = folder.filePath(QStringLiteral("run.uirec"));
    const QString output = folder.filePath(QStringLiteral("result.json"));
    if (!folder.isValid() || !writeOptions(options, recording, mode)) {
        qCritical("cannot write to %s", qPrintable(folder.path()));
        return {};
    }
    QProcess process;
    process.setProcessEnvironment(environment(mode, folder.path(), options));
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(m_subject + program.kind, {QString::number(program.leaves), output});
    process.waitForFinished(-1);
    QJsonObject result = read(output);
    const bool isRecorded = mode.libraries.isEmpty() || QFileInfo::exists(recording);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0 ||
        result.isEmpty() || !isRecorded) {
        qCritical("%s with %d leaves failed in mode %s: %s", qPrintable(program.kind),
                  program.leaves, qPrintable(mode.name), process.readAll().constData());
        return {};
    }
    if (isRecorded && !mode.libraries.isEmpty()) {
        result.insert(QStringLiteral("recordingBytes"),
                      static_cast<double>(QFileInfo(recording).size()));
    }
    return result;
}

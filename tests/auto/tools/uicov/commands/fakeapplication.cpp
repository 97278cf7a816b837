// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordingformat/processname.h"
#include "testlib/samplerecording.h"

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QUuid>

#include <csignal>

using TestLib::RecordingBuilder;

namespace {

/** As an application's host would: the session goes into the Process frame. */
bool writeRecording(const QString& path, const QString& session, bool isEmpty,
                    bool endsInOrder = true) {
    RecordingBuilder recording;
    recording.addProcess({{QStringLiteral("session"), session},
                          {QStringLiteral("run"), QUuid::createUuid().toString().mid(1, 36)}});
    if (isEmpty) {
        recording.addLog(RecordingFormat::Severity::Warning, QStringLiteral("no extension today"));
        recording.addEnd();
    } else {
        TestLib::fillSampleRecording(recording, endsInOrder);
    }
    return recording.write(path);
}

} // namespace

/** Arguments: "empty", "cut", "child", "exit N", "signal N", "save FILE" (the configuration). */
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto has = [&](const char* word) { return arguments.contains(QLatin1String(word)); };
    const auto after = [&](const char* word) {
        return arguments.value(arguments.indexOf(QLatin1String(word)) + 1);
    };
    const QString configuration = QFile::decodeName(qgetenv("VORSK_OPTIONS_FILE"));
    QSettings settings(configuration, QSettings::IniFormat);
    const QString path = settings.value(QStringLiteral("host/recording")).toString();
    const QString session = settings.value(QStringLiteral("host/session")).toString();
    bool isWritten = writeRecording(path, session, has("empty"), !has("cut"));
    if (has("child")) {
        constexpr int process = 4711;
        isWritten =
            writeRecording(RecordingFormat::pathForProcess(path, process, 1), session, false) &&
            isWritten;
    }
    if (has("save")) {
        isWritten = QFile::copy(configuration, after("save")) && isWritten;
    }
    if (has("signal")) {
        const int number = after("signal").toInt();
        // A sanitizer would turn some of them into an exit code.
        static_cast<void>(std::signal(number, SIG_DFL));
        static_cast<void>(std::raise(number));
    }
    constexpr int notWritten = 99;
    return isWritten ? has("exit") ? after("exit").toInt() : 0 : notWritten;
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/machinechecks.h"

#include "launch/unfinishedruns.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <sys/auxv.h>
#include <sys/resource.h>

namespace Uicov::Doctor {

using Result = Finding::Result;

namespace {

constexpr qint64 mebibyte = qint64{1024} * 1024;
/** Below these a run with pictures may not, or will not, find room. */
constexpr qint64 scarceSpace = 200 * mebibyte;
constexpr qint64 noSpace = 4 * mebibyte;

QString folderOf(const QString& file) {
    return QFileInfo(QFileInfo(file).absoluteFilePath()).path();
}

QString sizeText(qint64 bytes) {
    return QStringLiteral("%1 MiB").arg(bytes / mebibyte);
}

Result resultFor(qint64 space) {
    if (space < noSpace) {
        return Result::Problem;
    }
    return space < scarceSpace ? Result::Warning : Result::Ok;
}

} // namespace

Finding checkOutputFolder(const QString& output) {
    const QString check = QStringLiteral("output-folder");
    const QString folder = folderOf(output);
    const QString advice = QStringLiteral("go to a folder that you may write to, or name a file in "
                                          "one with -o or UICOV_FILE");
    if (!QFileInfo(folder).isDir()) {
        return {Result::Problem, check, QStringLiteral("there is no folder ") + folder, advice};
    }
    // Tried, not asked for: permissions are not all that can be in the way.
    QTemporaryFile trial(folder + QStringLiteral("/.uicov-XXXXXX"));
    if (!trial.open() || trial.write("x") != 1 || !trial.flush()) {
        return {Result::Problem, check,
                QStringLiteral("no file can be made in ") + folder + QStringLiteral(" (") +
                    trial.errorString() + QLatin1Char(')'),
                advice};
    }
    return {Result::Ok, check, QStringLiteral("files can be made in ") + folder, QString()};
}

Finding checkTemporaryFolder() {
    const QString check = QStringLiteral("temporary-folder");
    const QTemporaryDir trial;
    QFile file(trial.filePath(QStringLiteral("trial")));
    if (!trial.isValid() || !file.open(QIODevice::WriteOnly) || file.write("x") != 1) {
        return {Result::Problem, check,
                QStringLiteral("no file can be made in ") + QDir::tempPath(),
                QStringLiteral("make room there, or name another folder with TMPDIR")};
    }
    return {Result::Ok, check, QStringLiteral("files can be made in ") + QDir::tempPath(),
            QString()};
}

Finding checkFreeSpace(const QString& output) {
    const QStorageInfo forOutput(folderOf(output));
    const QStorageInfo forTemporary(QDir::tempPath());
    if (!forOutput.isValid() || !forTemporary.isValid()) {
        return {Result::Warning, QStringLiteral("free-space"),
                QStringLiteral("how much room there is cannot be found out"), QString()};
    }
    const bool outputIsWorse = forOutput.bytesAvailable() <= forTemporary.bytesAvailable();
    const QStorageInfo& worse = outputIsWorse ? forOutput : forTemporary;
    const Result result = resultFor(worse.bytesAvailable());
    return {result, QStringLiteral("free-space"),
            sizeText(worse.bytesAvailable()) + QStringLiteral(" are free for ") +
                (outputIsWorse ? folderOf(output) : QDir::tempPath()),
            result == Result::Ok ? QString()
                                 : QStringLiteral("make room; a run with --screenshots may need "
                                                  "hundreds of MiB")};
}

Finding checkFileSizeLimit() {
    const QString check = QStringLiteral("file-size-limit");
    rlimit limit{};
    if (getrlimit(RLIMIT_FSIZE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) {
        return {Result::Ok, check, QStringLiteral("files may become as large as they like"),
                QString()};
    }
    constexpr auto largest = static_cast<quint64>(scarceSpace) * mebibyte;
    const auto bytes = static_cast<qint64>(qMin<quint64>(limit.rlim_cur, largest));
    const Result result = resultFor(bytes);
    return {result, check, QStringLiteral("no file may become larger than ") + sizeText(bytes),
            result == Result::Ok ? QString() : QStringLiteral("raise the limit with ulimit -f")};
}

Finding checkSandbox() {
    const QString check = QStringLiteral("sandbox");
    QString box;
    if (qEnvironmentVariableIsSet("FLATPAK_ID") ||
        QFileInfo::exists(QStringLiteral("/.flatpak-info"))) {
        box = QStringLiteral("a Flatpak");
    } else if (qEnvironmentVariableIsSet("SNAP")) {
        box = QStringLiteral("a Snap");
    } else if (qEnvironmentVariableIsSet("APPIMAGE")) {
        box = QStringLiteral("an AppImage");
    }
    if (!box.isEmpty()) {
        return {Result::Warning, check, QStringLiteral("uicov runs inside ") + box,
                QStringLiteral("only programs of the same box can be recorded; run uicov outside "
                               "for others")};
    }
    if (getauxval(AT_SECURE) != 0) {
        return {Result::Problem, check,
                QStringLiteral("uicov runs with more rights than its user's, so variables that it "
                               "needs are taken away"),
                QStringLiteral("take setuid, setgid and capabilities off uicov")};
    }
    return {Result::Ok, check, QStringLiteral("uicov runs in none"), QString()};
}

Finding checkSystemCallFilter() {
    const QString check = QStringLiteral("system-call-filter");
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly) || !status.readAll().contains("\nSeccomp:\t2\n")) {
        return {Result::Ok, check, QStringLiteral("there is none"), QString()};
    }
    return {Result::Warning, check,
            QStringLiteral("a filter of system calls (seccomp) is on, as in most containers; "
                           "recordings are written with nothing but write"),
            QStringLiteral("if the application ends with SIGSYS, let the filter allow what Qt "
                           "calls")};
}

Finding checkEarlierRuns(const QString& output) {
    const QString check = QStringLiteral("earlier-runs");
    const QStringList left = Launch::unfinishedRuns(output);
    if (left.isEmpty()) {
        return {Result::Ok, check, QStringLiteral("none was left unfinished"), QString()};
    }
    return {Result::Warning, check,
            left.first() + QStringLiteral(" holds what a run recorded that could not be finished"),
            QStringLiteral("add it with: ") + Launch::adviceForUnfinished(output, left.first())};
}

Findings checkMachine(const QString& output) {
    return {checkOutputFolder(output), checkTemporaryFolder(), checkFreeSpace(output),
            checkFileSizeLimit(),      checkSandbox(),         checkSystemCallFilter(),
            checkEarlierRuns(output)};
}

} // namespace Uicov::Doctor

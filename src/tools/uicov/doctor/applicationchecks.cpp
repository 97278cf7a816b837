// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/applicationchecks.h"

#include "doctor/displaychecks.h"
#include "doctor/installationchecks.h"
#include "launch/application.h"
#include "launch/elffile.h"
#include "launch/installation.h"
#include "launch/loader.h"

#include <QFileInfo>
#include <QStringList>

namespace Uicov::Doctor {

using Base::Message;
using Base::Problem;
using Launch::Application;
using Launch::ElfFile;
using Launch::Installation;
using Launch::QtLibraries;
using Result = Finding::Result;

namespace {

/** The checks that a problem with the application is one of, in their order. */
enum class Stage { File, Architecture, Linking, QtVersion };

Stage stageOf(Message message) {
    switch (message) {
    case Message::WrongArchitecture:
        return Stage::Architecture;
    case Message::StaticExecutable:
    case Message::StaticQt:
        return Stage::Linking;
    case Message::WrongQtVersion:
        return Stage::QtVersion;
    default:
        return Stage::File;
    }
}

QString nameOf(Stage stage) {
    switch (stage) {
    case Stage::File:
        return QStringLiteral("file");
    case Stage::Architecture:
        return QStringLiteral("architecture");
    case Stage::Linking:
        return QStringLiteral("linking");
    case Stage::QtVersion:
        break;
    }
    return QStringLiteral("qt-version");
}

QString seenWhenRight(Stage stage, const Application& application) {
    switch (stage) {
    case Stage::File:
        return QFileInfo(application.path()).absoluteFilePath() + QStringLiteral(" can be run");
    case Stage::Architecture:
        return QStringLiteral("it and the extension are built for ") +
               ElfFile(application.path()).architecture();
    case Stage::Linking:
        return QStringLiteral("it is loaded by ") +
               QString::fromLocal8Bit(application.interpreter());
    case Stage::QtVersion:
        break;
    }
    return {};
}

/** What the problem's line says is in two halves: what is so; what to do. */
Finding findingOf(Stage stage, const Problem& problem) {
    const int advice = problem.text.lastIndexOf(QLatin1String("; "));
    return {Result::Problem, nameOf(stage), problem.text.left(advice),
            advice < 0 ? QString() : problem.text.mid(advice + 2)};
}

/** The first two numbers of "5.15.8", so that they compare. */
int comparable(const QString& version) {
    constexpr int perMajor = 1000;
    return version.section(QLatin1Char('.'), 0, 0).toInt() * perMajor +
           version.section(QLatin1Char('.'), 1, 1).toInt();
}

Finding launcher(const QString& seen) {
    return {Result::Warning, QStringLiteral("linking"), seen,
            QStringLiteral("name the program that shows the windows, to have it looked at too")};
}

} // namespace

Finding checkApplicationSandbox(const Application& application) {
    const QString check = QStringLiteral("application-sandbox");
    const QFileInfo info(application.path());
    const QString path = info.absoluteFilePath();
    const QString target = info.canonicalFilePath();
    if (path.startsWith(QLatin1String("/snap/")) ||
        path.startsWith(QLatin1String("/var/lib/snapd/")) ||
        target.endsWith(QLatin1String("/bin/snap"))) {
        return {Result::Problem, check,
                path + QStringLiteral(" runs in a Snap, which neither our libraries nor our "
                                      "variables get into"),
                QStringLiteral("run a build of the application that is not in a Snap")};
    }
    if (path.contains(QLatin1String("/flatpak/exports/bin/")) ||
        info.fileName() == QLatin1String("flatpak")) {
        return {Result::Problem, check,
                path + QStringLiteral(" runs in a Flatpak, which neither our libraries nor our "
                                      "variables get into"),
                QStringLiteral("run a build of the application that is not in a Flatpak, or uicov "
                               "inside of it (flatpak run --devel --command=sh)")};
    }
    if (application.isAppImage()) {
        return {Result::Warning, check,
                path + QStringLiteral(" is an AppImage, which may replace QT_PLUGIN_PATH and bring "
                                      "a Qt of its own"),
                QStringLiteral("unpack it with --appimage-extract and name the program in it")};
    }
    return {Result::Ok, check, QStringLiteral("it runs in none that is known"), QString()};
}

Finding checkPrivileges(const Application& application) {
    const QString check = QStringLiteral("privileges");
    const QString advice = QStringLiteral("run a copy of it without setuid, setgid and "
                                          "capabilities");
    switch (application.privilege()) {
    case Application::Privilege::Other:
        return {Result::Problem, check,
                QStringLiteral("it runs with more rights than yours (setuid, setgid or "
                               "capabilities), which shuts plugins out"),
                advice};
    case Application::Privilege::SameUser:
        return {Result::Warning, check,
                QStringLiteral("it gets more rights (setuid, setgid or capabilities) when another "
                               "user starts it, which would shut plugins out"),
                advice};
    case Application::Privilege::None:
        break;
    }
    return {Result::Ok, check, QStringLiteral("it runs with your rights"), QString()};
}

Finding checkGui(const QtLibraries& qt) {
    const QString check = QStringLiteral("qt-gui");
    if (!qt.hasCore()) {
        return {Result::Problem, check, QStringLiteral("it does not load Qt when it starts"),
                QStringLiteral("name the program that shows the windows; one that loads Qt later "
                               "can be recorded all the same")};
    }
    if (!qt.hasGui()) {
        return {Result::Problem, check,
                QStringLiteral("it loads only Qt's Core, so it shows no windows"),
                QStringLiteral("name the program that shows the windows")};
    }
    return {Result::Ok, check,
            qt.hasQuick() ? QStringLiteral("it loads Qt's GUI and Qt Quick")
                          : QStringLiteral("it loads Qt's GUI"),
            QString()};
}

Finding checkQtVersion(const QtLibraries& qt, const QString& builtFor) {
    const QString check = QStringLiteral("qt-version");
    const QString seen = QStringLiteral("it uses Qt ") + qt.version() +
                         QStringLiteral(", our libraries are built for Qt ") + builtFor;
    const bool isExact = qt.version().contains(QLatin1Char('.'));
    if (isExact && comparable(qt.version()) < comparable(builtFor)) {
        return {Result::Problem, check,
                seen + QStringLiteral(", and Qt refuses plugins that are newer than itself"),
                QStringLiteral("use a uicov that is built with Qt ") +
                    qt.version().section(QLatin1Char('.'), 0, 1) + QStringLiteral(" or older")};
    }
    return {Result::Ok, check, seen, QString()};
}

Finding checkLoading(const Application& application) {
    const QString check = QStringLiteral("loading");
    const QStringList complaints = Launch::loaderComplaints(
        Launch::listLibraries(application.interpreter(), application.path()));
    if (!complaints.isEmpty()) {
        return {Result::Problem, check,
                QStringLiteral("it cannot be loaded: ") + complaints.join(QStringLiteral(", ")),
                QStringLiteral("install what is missing, or set LD_LIBRARY_PATH if it needs that "
                               "to start")};
    }
    return {Result::Ok, check, QStringLiteral("its loader finds all that it needs"), QString()};
}

Finding checkExtensionLoading(const Application& application, const Installation& installation) {
    const QString check = QStringLiteral("extension-loading");
    const QStringList complaints = Launch::loaderComplaints(Launch::listLibraries(
        application.interpreter(), application.path(), installation.extension()));
    if (!complaints.isEmpty()) {
        return {Result::Problem, check,
                QStringLiteral("the extension cannot be loaded beside it: ") +
                    complaints.join(QStringLiteral(", ")),
                QStringLiteral("use a uicov that is built with the application's Qt and compiler")};
    }
    return {Result::Ok, check, QStringLiteral("its loader finds all that the extension needs"),
            QString()};
}

Findings checkApplication(Application& application, const Installation& installation) {
    Findings findings;
    const auto problem = application.check(installation.extension());
    const Stage failed = problem ? stageOf(problem->message) : Stage::QtVersion;
    for (const Stage stage : {Stage::File, Stage::Architecture, Stage::Linking}) {
        if (problem && stage == failed) {
            break;
        }
        if (stage == Stage::File) {
            findings += {Result::Ok, nameOf(stage), seenWhenRight(stage, application), QString()};
            findings += checkApplicationSandbox(application);
            findings += checkPrivileges(application);
        } else if (!application.isScript() && !application.isAppImage()) {
            findings += {Result::Ok, nameOf(stage), seenWhenRight(stage, application), QString()};
        }
    }
    if (problem) {
        findings += findingOf(failed, *problem);
        return findings;
    }
    if (application.isScript() || application.isAppImage()) {
        findings += launcher(application.isScript()
                                 ? QStringLiteral("it is a script; what it starts is recorded, if "
                                                  "it is a Qt 5 program")
                                 : QStringLiteral("it unpacks and starts another program"));
        return findings;
    }
    // Without all of its libraries nothing is known of which Qt it loads.
    findings += checkLoading(application);
    if (findings.last().result == Result::Problem) {
        return findings;
    }
    findings += checkGui(application.qt());
    if (application.qt().hasCore()) {
        findings += checkQtVersion(application.qt(), qtVersionOf(installation));
        findings += checkExtensionLoading(application, installation);
    }
    if (application.qt().hasGui()) {
        findings += checkPlatformPlugin(application.qt(), application.path());
    }
    if (application.qt().hasQuick()) {
        findings += checkQuickBackend();
    }
    return findings;
}

} // namespace Uicov::Doctor

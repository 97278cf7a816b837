// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "doctor/finding.h"

#include <QString>
#include <QStringList>

namespace Uicov::Launch {
class QtLibraries;
}

// Where the windows of an application would appear, going by the environment alone.
namespace Uicov::Doctor {

/** The platform that Qt would take: "xcb", "offscreen", ...; empty when there is no display. */
QString displayPlatform();

/**
 * There is a display, and it answers.
 * @param devices where the system keeps its devices: a Qt that draws on a screen itself needs one
 */
Finding checkDisplay(const QString& devices = QStringLiteral("/dev"));

/** The application's Qt has the plugin for that platform. */
Finding checkPlatformPlugin(const Launch::QtLibraries& qt, const QString& executable);
/** Where Qt looks for plugins, the application's own folder last. */
QStringList platformPluginFolders(const Launch::QtLibraries& qt, const QString& executable);

/** The renderer of Qt Quick goes with the platform. */
Finding checkQuickBackend();

} // namespace Uicov::Doctor

#pragma once

#include "doctor/finding.h"

#include <QString>
#include <QStringList>

namespace Uicov::Launch {
class QtLibraries;
}

namespace Uicov::Doctor {

/** Where the windows of an application would appear, going by the environment alone. */
namespace DisplayChecks {

/** The platform that Qt would take: "xcb", "offscreen", ...; empty when there is no display. */
QString platform();

/**
 * There is a display, and it answers.
 * @param devices where the system keeps its devices: a Qt that draws on a screen itself needs one
 */
Finding display(const QString& devices = QStringLiteral("/dev"));

/** The application's Qt has the plugin for that platform. */
Finding platformPlugin(const Launch::QtLibraries& qt, const QString& executable);
/** Where Qt looks for plugins, the application's own folder last. */
QStringList pluginFolders(const Launch::QtLibraries& qt, const QString& executable);

/** The renderer of Qt Quick goes with the platform. */
Finding quickBackend();

} // namespace DisplayChecks

} // namespace Uicov::Doctor

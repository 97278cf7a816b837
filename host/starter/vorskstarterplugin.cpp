// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "starter/vorskstarterplugin.h"

#include "vorskqtwrapper/libraryplace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <dlfcn.h>

namespace VorskHost {

namespace {

Q_LOGGING_CATEGORY(starterLog, "vorsk.host")

using StartFunction = void (*)();

/** The wrapper of the same build or installation as this plugin, whatever the search path says. */
QString wrapperPath() {
    Dl_info self{};
    dladdr(reinterpret_cast<void*>(&wrapperPath), &self);
    const QFileInfo plugin(QFile::decodeName(self.dli_fname));
    return QDir(plugin.absolutePath())
        .absoluteFilePath(QStringLiteral("../../libvorskqtwrapper.so"));
}

void startWrapper() {
    const QString path = QDir::cleanPath(wrapperPath());
    const QString shared = LibraryPlace::sharedPart(path);
    if (!shared.isEmpty()) {
        qCWarning(starterLog).noquote().nospace()
            << "wrapper-unsafe: " << path << " is not loaded, because everybody can write to "
            << shared << "; nothing is recorded, take that right away (chmod o-w)";
        return;
    }
    void* handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW);
    void* entry = handle == nullptr ? nullptr : dlsym(handle, "vorsk_qtwrapper_start");
    if (entry == nullptr) {
        qCWarning(starterLog).noquote().nospace()
            << "wrapper-not-loadable: cannot load " << path << ": " << dlerror()
            << "; nothing is recorded, install the host libraries anew";
        return;
    }
    reinterpret_cast<StartFunction>(entry)();
}

} // namespace

QObject* VorskStarterPlugin::create(const QString&, const QString&) {
    if (!qEnvironmentVariableIsEmpty("VORSK_OPTIONS_FILE") ||
        !qEnvironmentVariableIsEmpty("VORSK_RECORDING_DIR")) {
        startWrapper();
    }
    // Qt owns it, but in an application that exits without destroying its application object Qt
    // forgets it first; a leak checker then finds it here.
    static QObject* object = nullptr;
    object = new QObject;
    return object;
}

} // namespace VorskHost

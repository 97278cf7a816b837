// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/wrapper.h"

#include "vorskhook/hostlogging.h"
#include "vorskhook/recordinghook.h"
#include "vorskqtwrapper/eventtap.h"
#include "vorskqtwrapper/extensionlibrary.h"

#include <vorsk/extension.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QUuid>

#include <cstdlib>

#include <dlfcn.h>

namespace VorskHost {

namespace {

Wrapper* theWrapper = nullptr;
bool isStarted = false;

QString nameOf(const ExtensionLibrary& library) {
    return QFileInfo(library.path()).completeBaseName();
}

RecordingFormat::ProcessInfo processInfo(const HostConfiguration& configuration,
                                         const std::vector<ExtensionLibrary>& libraries) {
    namespace Key = RecordingFormat::Key;
    const auto entry = [](const char* key, const QString& value) {
        return qMakePair(QString::fromLatin1(key), value);
    };
    QStringList names;
    for (const ExtensionLibrary& library : libraries) {
        names.append(nameOf(library));
    }
    RecordingFormat::ProcessInfo info{
        entry(Key::application, QCoreApplication::applicationName()),
        entry(Key::executable, QCoreApplication::applicationFilePath()),
        entry(Key::pid, QString::number(QCoreApplication::applicationPid())),
        entry(Key::run, QUuid::createUuid().toString().mid(1, 36)),
        entry(Key::session, configuration.session()),
        entry(Key::qtVersion, QString::fromLatin1(qVersion())),
        entry(Key::platform, QGuiApplication::platformName()),
        entry(Key::locale, QLocale().name()),
        entry(Key::architecture, QSysInfo::buildAbi()),
        entry(Key::started, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)),
        entry(Key::context, configuration.context()),
        entry(Key::extension, names.join(QLatin1Char(','))),
    };
    for (const auto& label : configuration.labels()) {
        info.append(entry(Key::label, label.second));
        info.last().first += label.first;
    }
    return info;
}

std::vector<ExtensionLibrary> loadExtensions(const QStringList& paths) {
    std::vector<ExtensionLibrary> loaded;
    for (const QString& path : paths) {
        const ExtensionLibrary library = ExtensionLibrary::load(path);
        if (library.isLoaded()) {
            loaded.push_back(library);
        } else {
            reportProblem(library.errorString());
        }
    }
    return loaded;
}

/**
 * Begins in the context that is current. Whoever marks a run changes the configuration first and
 * then the recordings that are there: asked once this recording is there, and until the answer
 * stays the same, one of the two reaches it whenever that happens.
 */
void enterContext(const HostConfiguration& configuration, RecordingWriter& writer) {
    QString entered;
    QString current = configuration.currentMark();
    while (current != entered) {
        writer.mark(current);
        entered = current;
        current = configuration.currentMark();
    }
}

/** Where this library lies, and the extension beside it. */
QString libraryFolder() {
    Dl_info self{};
    dladdr(reinterpret_cast<void*>(&libraryFolder), &self);
    return QFileInfo(QFile::decodeName(self.dli_fname)).absolutePath();
}

/** Calls the function while the process exits, however it exits in order. */
void callAtExit(void (*function)()) {
    // Fails only when there is no memory left; the recording then lacks its end, which readers say.
    static_cast<void>(std::atexit(function));
    static_cast<void>(std::at_quick_exit(function));
}

} // namespace

Wrapper::Wrapper(const HostConfiguration& configuration, RecordingWriter& writer)
    : m_options(configuration.options())
    , m_host(writer)
    , m_context(EventTap::instance()) {}

void Wrapper::start() {
    if (isStarted) {
        EventTap::instance().watch();
        return;
    }
    const auto configuration = HostConfiguration::fromEnvironment(libraryFolder());
    if (!configuration) {
        return;
    }
    isStarted = true;
    if (!configuration->isValid()) {
        reportProblem(configuration->errorString());
        return;
    }
    startConfigured(*configuration);
}

void Wrapper::startConfigured(const HostConfiguration& configuration) {
    // Extensions first: an application in which none can be loaded leaves no empty recording.
    const std::vector<ExtensionLibrary> libraries = loadExtensions(configuration.extensions());
    if (libraries.empty()) {
        return;
    }
    RecordingHook* hook =
        RecordingHook::start(configuration.recording(), processInfo(configuration, libraries),
                             configuration.maximumSize(), configuration.isShared());
    if (hook == nullptr) {
        return;
    }
    enterContext(configuration, hook->writer());
    theWrapper = new Wrapper(configuration, hook->writer());
    // What is registered first runs last. The objects of the extensions are made in between.
    callAtExit(closeRecording);
    for (const ExtensionLibrary& library : libraries) {
        theWrapper->activate(library);
    }
    callAtExit(finishExtensions);
}

void Wrapper::activate(const ExtensionLibrary& library) {
    Vorsk::Extension* extension = library.create(m_host);
    if (extension == nullptr) {
        reportProblem(QStringLiteral("extension-declined: init_extension of %1 gave no "
                                     "extension; the application goes on without it, see what "
                                     "that library needs")
                          .arg(library.path()));
        return;
    }
    const QByteArray path = QFile::encodeName(library.path());
    extension->name = nameOf(library).toStdString();
    extension->path.assign(path.constData(), static_cast<size_t>(path.size()));
    extension->options = &m_options;
    m_extensions.push_back(extension);
    extension->initialize(&m_context);
}

void Wrapper::finishExtensions() {
    for (Vorsk::Extension* extension : theWrapper->m_extensions) {
        extension->finish();
    }
    theWrapper->m_extensions.clear();
}

void Wrapper::closeRecording() {
    RecordingHook::instance()->writer().close();
}

} // namespace VorskHost

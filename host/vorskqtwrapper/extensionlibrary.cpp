// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/extensionlibrary.h"

#include "vorskqtwrapper/libraryplace.h"

#include <QFile>

#include <dlfcn.h>

namespace VorskHost {

ExtensionLibrary ExtensionLibrary::load(const QString& path) {
    ExtensionLibrary result;
    result.m_path = path;
    if (!QFile::exists(path)) {
        result.m_error = QStringLiteral("extension-missing: there is no extension library %1; "
                                        "correct \"extension\" in the options file")
                             .arg(path);
        return result;
    }
    const QString shared = LibraryPlace::sharedPart(path);
    if (!shared.isEmpty()) {
        result.m_error = QStringLiteral("extension-unsafe: the extension library %1 is not loaded, "
                                        "because everybody can write to %2; take that right away "
                                        "(chmod o-w) or install it elsewhere")
                             .arg(path, shared);
        return result;
    }
    void* handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_NODELETE);
    if (handle == nullptr) {
        result.m_error = QStringLiteral("extension-not-loadable: the extension library %1 cannot "
                                        "be loaded: %2; it has to be built for this application's "
                                        "architecture and Qt")
                             .arg(path, QString::fromLocal8Bit(dlerror()));
        return result;
    }
    result.m_entry = reinterpret_cast<Entry>(dlsym(handle, "init_extension"));
    if (result.m_entry == nullptr) {
        result.m_error = QStringLiteral("extension-no-entry: the library %1 has no "
                                        "\"init_extension\", so it is not an extension; correct "
                                        "\"extension\" in the options file")
                             .arg(path);
    }
    return result;
}

} // namespace VorskHost

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Vorsk {
class Extension;
class ExtensionHost;
} // namespace Vorsk

namespace VorskHost {

/**
 * One loaded extension library. A value; what is loaded stays loaded until the process ends,
 * because callbacks into it stay registered.
 */
class ExtensionLibrary {
public:
    /** Loads the library and finds its entry; what is wrong with it is in errorString(). */
    static ExtensionLibrary load(const QString& path);

    bool isLoaded() const { return m_entry != nullptr; }
    /** A short stable name, what is wrong, what to do. */
    QString errorString() const { return m_error; }
    QString path() const { return m_path; }

    /** Calls init_extension(). Null when the library declines; it owns what it returns. */
    Vorsk::Extension* create(Vorsk::ExtensionHost& host) const { return m_entry(&host); }

private:
    using Entry = Vorsk::Extension* (*)(Vorsk::ExtensionHost*);

    QString m_path;
    QString m_error;
    Entry m_entry = nullptr;
};

} // namespace VorskHost

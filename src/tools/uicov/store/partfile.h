// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QString>

#include <optional>

namespace Uicov::Store {

/**
 * The file beside a data file in which its next content is made, and which then takes its place in
 * one step: at every moment one whole file has the name. The caller holds the data file's lock, so
 * that there is one at a time, of a fixed name. Removed with this unless it took the place.
 */
class PartFile {
public:
    /** @param path of the data file; where that is a link, what it leads to is meant */
    explicit PartFile(const QString& path);
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    QString path() const { return m_path; }

    /** Makes it a copy of the data file, with the same mode; the problem when there is no room. */
    std::optional<Base::Problem> copyDataFile();
    /** Puts it in the data file's place when it is on the disk. */
    std::optional<Base::Problem> takePlace();

    /** Whether a file of that name is somebody's, which is not to be read. */
    static bool isName(const QString& name);
    /** Removes those that killed processes left. The caller holds the data file's lock. */
    static void removeLeftovers(const QString& path);
    /** Why the file cannot grow, as the system says it; for a failure that gave no reason. */
    static QString reasonOfFailedWrite(const QString& path);

private:
    Base::Problem failure() const;

    QString m_dataFile;
    /** The data file as it was named, for messages. */
    QString m_name;
    QString m_path;
};

} // namespace Uicov::Store

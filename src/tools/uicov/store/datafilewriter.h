// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "store/datafile.h"

#include <QString>

#include <optional>

namespace Uicov::Store {

/**
 * Writes a data file as a whole: what stood there before is replaced, or added to, once commit()
 * has returned, and is as it was when anything fails. The caller holds the file's lock.
 */
class DataFileWriter {
public:
    enum class Mode { Replace, Append };

    DataFileWriter() = default;
    /** Without commit() nothing has happened. */
    ~DataFileWriter();
    DataFileWriter(const DataFileWriter&) = delete;
    DataFileWriter& operator=(const DataFileWriter&) = delete;

    /** The problem when something else than a data file stands there, or none can be made. */
    std::optional<Base::Problem> open(const QString& path, Mode mode);
    DataFile& file() { return m_file; }
    std::optional<Base::Problem> commit();

    /** The problem when something else than a data file stands there. */
    static std::optional<Base::Problem> checkOutput(const QString& path);

private:
    QString m_path;
    /** Where it is written until it is whole; empty when it is written in place. */
    QString m_part;
    DataFile m_file;
};

} // namespace Uicov::Store

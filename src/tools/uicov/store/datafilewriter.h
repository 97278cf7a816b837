// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "store/datafile.h"

#include <QString>

#include <memory>
#include <optional>

namespace Uicov::Store {

class PartFile;

/**
 * Writes a data file as a whole: what stood there before is replaced, or added to, once commit()
 * has returned, and is as it was when anything fails. What is added to is copied first (about a
 * millisecond per megabyte): only so is the file whole at every moment. The caller holds the file's
 * lock.
 */
class DataFileWriter {
public:
    enum class Mode { Replace, Append };

    DataFileWriter();
    /** Without commit() nothing has happened. */
    ~DataFileWriter();
    DataFileWriter(const DataFileWriter&) = delete;
    DataFileWriter& operator=(const DataFileWriter&) = delete;

    /** The problem when something else than a data file stands there, or none can be made. */
    std::optional<Base::Problem> open(const QString& path, Mode mode);
    /** After open() only. */
    DataFile& file() { return *m_file; }
    std::optional<Base::Problem> commit();

    /** The problem when something else than a data file stands there. */
    static std::optional<Base::Problem> checkOutput(const QString& path);

private:
    std::optional<Base::Problem> makePart(const QString& path, Mode mode);

    /** Where it is written until it is whole. */
    std::unique_ptr<PartFile> m_part;
    /** What stands there, kept from changing until it is replaced; null where nothing does. */
    std::unique_ptr<DataFile> m_original;
    std::unique_ptr<DataFile> m_file;
};

} // namespace Uicov::Store

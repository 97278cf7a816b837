// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QFileDevice>
#include <QString>

#include <memory>
#include <optional>

namespace Uicov::Commands::Cli {

/**
 * Where a command's data goes: standard output, or a file that is there only once it is whole. A
 * recording is never overwritten.
 */
class OutputFile {
public:
    /** @param path "-" for standard output */
    explicit OutputFile(const QString& path);
    ~OutputFile();

    bool isStandardOutput() const;

    /** To be called before open(): nobody but the owner, and who is among these, may read the file.
     */
    void setReaders(QFileDevice::Permissions readers) { m_readers = readers; }

    std::optional<Base::Problem> open();
    /** What fails is kept and told by close(). */
    void write(const QString& text) { writeBytes(text.toUtf8()); }
    void writeBytes(const QByteArray& bytes);
    /** True when an earlier write failed, so that there is no use in going on. */
    bool hasFailed() const { return m_hasFailed; }
    /** The problem when not everything arrived; the file is then as it was before. */
    std::optional<Base::Problem> close();

private:
    QString m_path;
    std::unique_ptr<QFileDevice> m_file;
    std::optional<QFileDevice::Permissions> m_readers;
    bool m_hasFailed = false;
};

} // namespace Uicov::Commands::Cli

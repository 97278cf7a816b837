// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QTemporaryFile>

namespace TestLib {

/** Collects what the process writes to standard error, libc's own lines included, while it lives.
 */
class StderrCapture {
public:
    StderrCapture();
    ~StderrCapture();

    /** Ends the capture; everything that was written during it. */
    QByteArray take();

private:
    Q_DISABLE_COPY(StderrCapture)

    void restore();

    QTemporaryFile m_file;
    int m_saved = -1;
};

} // namespace TestLib

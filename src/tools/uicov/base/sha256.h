// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <nettle/sha2.h>

namespace Uicov::Base {

/** SHA-256 of bytes that come piece by piece. Not Qt's: that one does without the instructions
 * which processors have for it, and takes ten times as long. */
class Sha256 {
public:
    Sha256();

    void add(const QByteArray& bytes);
    /** Of all that was added; starts anew. 32 bytes. */
    QByteArray take();

    static QByteArray of(const QByteArray& bytes);

private:
    sha256_ctx m_context;
};

} // namespace Uicov::Base

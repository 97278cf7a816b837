// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/sha256.h"

namespace Uicov::Base {

Sha256::Sha256()
    : m_context() {
    sha256_init(&m_context);
}

void Sha256::add(const QByteArray& bytes) {
    sha256_update(&m_context, static_cast<std::size_t>(bytes.size()),
                  reinterpret_cast<const quint8*>(bytes.constData()));
}

QByteArray Sha256::take() {
    QByteArray result(SHA256_DIGEST_SIZE, Qt::Uninitialized);
    sha256_digest(&m_context, SHA256_DIGEST_SIZE, reinterpret_cast<quint8*>(result.data()));
    return result;
}

QByteArray Sha256::of(const QByteArray& bytes) {
    Sha256 hash;
    hash.add(bytes);
    return hash.take();
}

} // namespace Uicov::Base

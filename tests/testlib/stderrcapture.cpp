// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/stderrcapture.h"

#include <cstdio>

#include <unistd.h>

namespace TestLib {

StderrCapture::StderrCapture() {
    if (m_file.open()) {
        static_cast<void>(std::fflush(stderr));
        m_saved = ::dup(STDERR_FILENO);
        ::dup2(m_file.handle(), STDERR_FILENO);
    }
}

StderrCapture::~StderrCapture() {
    restore();
}

QByteArray StderrCapture::take() {
    restore();
    m_file.seek(0);
    return m_file.readAll();
}

void StderrCapture::restore() {
    if (m_saved >= 0) {
        static_cast<void>(std::fflush(stderr));
        ::dup2(m_saved, STDERR_FILENO);
        ::close(m_saved);
        m_saved = -1;
    }
}

} // namespace TestLib

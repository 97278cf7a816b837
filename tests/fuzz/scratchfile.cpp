// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "scratchfile.h"

#include "fuzzcheck.h"

#include <cstdlib>

#include <unistd.h>

namespace Fuzz {

ScratchFile::ScratchFile()
    : m_path(::access("/dev/shm", W_OK) == 0 ? "/dev/shm/uicov-fuzz-XXXXXX"
                                             : "/tmp/uicov-fuzz-XXXXXX")
    , m_descriptor(::mkstemp(m_path.data())) {
    FUZZ_CHECK(m_descriptor >= 0);
}

ScratchFile::~ScratchFile() {
    ::close(m_descriptor);
    ::unlink(m_path.constData());
}

void ScratchFile::setContents(const std::uint8_t* data, std::size_t size) const {
    FUZZ_CHECK(::ftruncate(m_descriptor, 0) == 0);
    FUZZ_CHECK(size == 0 || ::pwrite(m_descriptor, data, size, 0) == static_cast<ssize_t>(size));
}

QByteArray ScratchFile::contents() const {
    const off_t size = ::lseek(m_descriptor, 0, SEEK_END);
    QByteArray bytes(static_cast<int>(size), Qt::Uninitialized);
    FUZZ_CHECK(::pread(m_descriptor, bytes.data(), static_cast<std::size_t>(size), 0) == size);
    return bytes;
}

} // namespace Fuzz

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/owningprocess.h"

#include <cstddef>

#include <sys/mman.h>
#include <unistd.h>

namespace VorskHost {

namespace {

std::size_t pageSize() {
    return static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/** Null where the system cannot wipe memory at a fork. */
char* wipedPage() {
#ifdef MADV_WIPEONFORK
    constexpr int noAdvice = -1;
    // Who takes this, as emulators do, takes any advice and follows none.
    if (::madvise(nullptr, 0, noAdvice) == 0) {
        return nullptr;
    }
    void* const page =
        ::mmap(nullptr, pageSize(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED) {
        return nullptr;
    }
    if (::madvise(page, pageSize(), MADV_WIPEONFORK) == 0) {
        return static_cast<char*>(page);
    }
    ::munmap(page, pageSize());
#endif
    return nullptr;
}

} // namespace

OwningProcess::~OwningProcess() {
    if (m_page != nullptr) {
        ::munmap(const_cast<char*>(m_page), pageSize()); // NOLINT(*-const-cast): munmap's interface
    }
}

void OwningProcess::claim() {
    m_owner = ::getpid();
    if (m_page == nullptr) {
        m_page = wipedPage();
    }
    if (m_page != nullptr) {
        *m_page = 1;
    }
}

bool OwningProcess::isThis() const {
    return m_page != nullptr ? *m_page == 1 : m_owner != 0 && m_owner == ::getpid();
}

pid_t OwningProcess::idOfThis() {
    if (!isThis()) {
        claim();
    }
    return m_owner;
}

} // namespace VorskHost

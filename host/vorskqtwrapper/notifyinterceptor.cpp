// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/notifyinterceptor.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include <link.h>

namespace VorskHost {

namespace {

// In the C++ ABI of every Linux platform the word at the start of an object points behind the type
// information of its table; virtual functions follow, offsets to bases stand before. No object says
// how long its table is, so more than any sound class has is copied, within the segment.
constexpr std::ptrdiff_t wordsBefore = 64;
constexpr std::ptrdiff_t wordsBehind = 512;

/** Where the segment of a loaded file that holds an address begins and ends. */
struct Segment {
    std::uintptr_t address;
    std::uintptr_t begin;
    std::uintptr_t end;
};

int findSegment(dl_phdr_info* info, size_t, void* data) {
    auto* segment = static_cast<Segment*>(data);
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto& header = info->dlpi_phdr[i];
        const std::uintptr_t begin = info->dlpi_addr + header.p_vaddr;
        const std::uintptr_t end = begin + header.p_memsz;
        if (header.p_type == PT_LOAD && segment->address >= begin && segment->address < end) {
            segment->begin = begin;
            segment->end = end;
            return 1;
        }
    }
    return 0;
}

/** The index of notify() in the table, from how the ABI represents a pointer to it. */
std::ptrdiff_t notifySlot() {
    const auto member = &QCoreApplication::notify;
    std::ptrdiff_t words[2];
    static_assert(sizeof words == sizeof member, "not the C++ ABI that this is made for");
    std::memcpy(words, &member, sizeof words);
#if defined(__arm__) || defined(__aarch64__)
    const std::ptrdiff_t offset = words[0];
#else
    const std::ptrdiff_t offset = words[0] - 1;
#endif
    return offset / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/** Word by word and unchecked: what lies around a table is another's and of no interest. */
__attribute__((no_sanitize("address"))) void copyWords(void* const* from, void* const* to,
                                                       void** target) {
    while (from != to) {
        *target++ = *const_cast<void* const volatile*>(from++);
    }
}

std::atomic<void* const*>& tableOf(QCoreApplication* application) {
    static_assert(sizeof(std::atomic<void* const*>) == sizeof(void*));
    return *reinterpret_cast<std::atomic<void* const*>*>(application);
}

} // namespace

bool NotifyInterceptor::attach(QCoreApplication* application, Notify replacement) {
    if (isAttached(application)) {
        return true;
    }
    void* const* theirs = tableOf(application).load();
    Segment segment{reinterpret_cast<std::uintptr_t>(theirs), 0, 0};
    if (dl_iterate_phdr(findSegment, &segment) == 0) {
        return false;
    }
    const auto word = static_cast<std::ptrdiff_t>(sizeof(void*));
    const std::ptrdiff_t before =
        std::min(wordsBefore, static_cast<std::ptrdiff_t>(segment.address - segment.begin) / word);
    const std::ptrdiff_t behind =
        std::min(wordsBehind, static_cast<std::ptrdiff_t>(segment.end - segment.address) / word);
    if (behind <= notifySlot()) {
        return false;
    }
    m_tables.push_back(std::make_unique<void*[]>(static_cast<size_t>(before + behind)));
    void** copy = m_tables.back().get();
    copyWords(theirs - before, theirs + behind, copy);
    void*& slot = copy[before + notifySlot()];
    m_original.store(reinterpret_cast<Notify>(slot), std::memory_order_release);
    slot = reinterpret_cast<void*>(replacement);
    m_ours = copy + before;
    m_theirs = theirs;
    tableOf(application).store(m_ours);
    return true;
}

void NotifyInterceptor::detach(QCoreApplication* application) {
    if (isAttached(application)) {
        tableOf(application).store(m_theirs);
    }
    m_ours = nullptr;
}

} // namespace VorskHost

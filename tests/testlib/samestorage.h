// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <new>
#include <type_traits>
#include <utility>

namespace TestLib {

/**
 * Makes objects one after another at the same address, as a heap does sooner or later. The objects
 * must not have an owner. The last one is destroyed with the storage.
 */
template <class Object>
class SameStorage {
public:
    SameStorage() = default;
    ~SameStorage() { destroy(); }

    template <class... Arguments>
    Object* make(Arguments&&... arguments) {
        destroy();
        m_object = new (&m_bytes) Object(std::forward<Arguments>(arguments)...);
        return m_object;
    }

    void destroy() {
        if (m_object != nullptr) {
            std::exchange(m_object, nullptr)->~Object();
        }
    }

    /** The address, whether an object stands there or not. */
    Object* address() { return reinterpret_cast<Object*>(&m_bytes); }

private:
    Q_DISABLE_COPY(SameStorage)

    std::aligned_storage_t<sizeof(Object), alignof(Object)> m_bytes;
    Object* m_object = nullptr;
};

} // namespace TestLib

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <cstddef>
#include <utility>
#include <vector>

namespace Vorsk {
namespace UIAbstraction {

/**
 * Values by addresses, which are never followed. All entries lie in one block of memory: tables
 * that take a node for each have as much to do with the allocator as with their entries when an
 * application's objects come and go by thousands. The cost of each operation does not depend on
 * their number.
 */
template <class Value>
class PointerTable {
public:
    /** Null when there is none; good until the next entry comes or goes. */
    Value* find(const void* key) {
        return const_cast<Value*>(std::as_const(*this).find(key)); // NOLINT(*-const-cast)
    }
    const Value* find(const void* key) const {
        const std::size_t place = placeOf(key);
        return place == nowhere ? nullptr : &m_entries[place].value;
    }

    /** A copy; a default value when there is none. */
    Value value(const void* key) const {
        const Value* const found = find(key);
        return found == nullptr ? Value() : *found;
    }

    bool contains(const void* key) const { return placeOf(key) != nowhere; }

    /** The value there, made by default when there was none; good as long as find()'s. */
    Value& operator[](const void* key) {
        if (Value* const known = find(key)) {
            return *known;
        }
        if (4 * (m_size + 1) > 3 * m_entries.size()) {
            grow();
        }
        ++m_size;
        Entry& entry = m_entries[freePlaceFor(numberOf(key))];
        entry.key = numberOf(key);
        return entry.value;
    }

    bool remove(const void* key) {
        std::size_t hole = placeOf(key);
        if (hole == nowhere) {
            return false;
        }
        // What stands further on than it should, because this one stood in its way, moves up.
        for (std::size_t next = after(hole); m_entries[next].key != unused; next = after(next)) {
            const std::size_t distance = (next - firstPlaceFor(m_entries[next].key)) & mask();
            if (distance >= ((next - hole) & mask())) {
                m_entries[hole] = std::move(m_entries[next]);
                hole = next;
            }
        }
        m_entries[hole] = Entry();
        --m_size;
        return true;
    }

    /** Removes each entry for whose value the predicate holds. */
    template <class Predicate>
    void removeIf(Predicate predicate) {
        std::vector<Entry> all;
        all.swap(m_entries);
        m_size = 0;
        for (Entry& entry : all) {
            if (entry.key != unused && !predicate(std::as_const(entry.value))) {
                // NOLINTNEXTLINE(performance-no-int-to-ptr): it was one
                (*this)[reinterpret_cast<const void*>(entry.key)] = std::move(entry.value);
            }
        }
    }

    void clear() {
        m_entries.clear();
        m_size = 0;
    }

    std::size_t size() const { return m_size; }

    /** Where that value is; looks at all entries. */
    std::vector<const void*> keysOf(const Value& value) const {
        std::vector<const void*> keys;
        for (const Entry& entry : m_entries) {
            if (entry.key != unused && entry.value == value) {
                // NOLINTNEXTLINE(performance-no-int-to-ptr): it was one
                keys.push_back(reinterpret_cast<const void*>(entry.key));
            }
        }
        return keys;
    }

    /** All values, in no order. */
    std::vector<Value> values() const {
        std::vector<Value> all;
        all.reserve(m_size);
        for (const Entry& entry : m_entries) {
            if (entry.key != unused) {
                all.push_back(entry.value);
            }
        }
        return all;
    }

private:
    /** No object has that address; null is a key like others. */
    static constexpr quintptr unused = 1;
    static constexpr std::size_t nowhere = ~std::size_t{0};
    static constexpr std::size_t leastCapacity = 16;

    struct Entry {
        quintptr key = unused;
        Value value{};
    };

    static quintptr numberOf(const void* key) { return reinterpret_cast<quintptr>(key); }

    std::size_t mask() const { return m_entries.size() - 1; }
    std::size_t after(std::size_t place) const { return (place + 1) & mask(); }

    std::size_t firstPlaceFor(quintptr key) const {
        // Fibonacci hashing: objects stand at regular distances.
        constexpr quint64 factor = 0x9E3779B97F4A7C15ULL;
        constexpr unsigned upperHalf = 32;
        return static_cast<std::size_t>((quint64{key} * factor) >> upperHalf) & mask();
    }

    std::size_t placeOf(const void* key) const {
        if (m_size == 0) {
            return nowhere;
        }
        const quintptr number = numberOf(key);
        std::size_t place = firstPlaceFor(number);
        while (m_entries[place].key != number) {
            if (m_entries[place].key == unused) {
                return nowhere;
            }
            place = after(place);
        }
        return place;
    }

    std::size_t freePlaceFor(quintptr key) const {
        std::size_t place = firstPlaceFor(key);
        while (m_entries[place].key != unused) {
            place = after(place);
        }
        return place;
    }

    void grow() {
        std::vector<Entry> entries(m_entries.empty() ? leastCapacity : 2 * m_entries.size());
        m_entries.swap(entries);
        for (Entry& entry : entries) {
            if (entry.key != unused) {
                m_entries[freePlaceFor(entry.key)] = std::move(entry);
            }
        }
    }

    /** As many as a power of two, or none. */
    std::vector<Entry> m_entries;
    std::size_t m_size = 0;
};

} // namespace UIAbstraction
} // namespace Vorsk

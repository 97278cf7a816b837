// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/ownclass.h"

#include <QHash>
#include <QWidget>

#include <cstddef>
#include <cstring>

#include <dlfcn.h>

namespace Vorsk {
namespace UIControls {

namespace {

/** Whether the address lies in one of Qt's libraries. */
bool isOfQt(const void* address) {
    static QHash<const void*, bool> known;
    const auto found = known.constFind(address);
    if (found != known.constEnd()) {
        return *found;
    }
    Dl_info info;
    const bool isIt = dladdr(address, &info) != 0 && info.dli_fname != nullptr &&
                      std::strstr(info.dli_fname, "libQt5") != nullptr;
    known.insert(address, isIt);
    return isIt;
}

/** Where in a widget's table of virtual functions a member stands. */
class Slots : public QWidget {
public:
    static std::size_t ofPress() { return indexOf(&Slots::mousePressEvent); }
    static std::size_t ofTablet() { return indexOf(&Slots::tabletEvent); }

private:
    template <class Event>
    static std::size_t indexOf(void (QWidget::*member)(Event*)) {
        // The ABI's pointer to a virtual member holds its offset in the table; the lowest bit is a
        // mark on most processors.
        std::size_t parts[2];
        static_assert(sizeof(parts) == sizeof(member), "not as the Itanium C++ ABI has it");
        std::memcpy(parts, &member, sizeof(parts));
        return parts[0] / sizeof(void*);
    }
};

bool isOverriddenAt(const QWidget* widget, std::size_t index) {
    const void* const* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(widget), sizeof(table));
    return !isOfQt(table[index]);
}

} // namespace

bool isOwnClass(const QWidget* widget) {
    // The meta-object itself may have been copied into the program, what it points to is not.
    return !isOfQt(widget->metaObject()->d.stringdata);
}

bool handlesPress(const QWidget* widget) {
    static const std::size_t index = Slots::ofPress();
    return isOverriddenAt(widget, index);
}

bool handlesTablet(const QWidget* widget) {
    static const std::size_t index = Slots::ofTablet();
    return isOverriddenAt(widget, index);
}

} // namespace UIControls
} // namespace Vorsk

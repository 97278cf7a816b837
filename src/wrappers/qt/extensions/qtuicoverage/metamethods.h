// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaObject>
#include <QObject>

namespace Vorsk {
namespace UICoverage {

// For connections that are made for every object of an application: with the numbers of signal and
// slot, which are looked up once. Finding both by their texts each time costs several times as
// much, and connections to member functions need more memory.

/** The number of the class's method of that normalised signature; it has to exist. */
inline int methodNumber(const QMetaObject& cls, const char* signature) {
    const int number = cls.indexOfMethod(signature);
    Q_ASSERT(number != -1);
    return number;
}

/** Connects QObject::destroyed() of the object to a slot of that number. */
inline void connectDestroyed(const QObject* object, const QObject* receiver, int slot) {
    static const int signal = methodNumber(QObject::staticMetaObject, "destroyed(QObject*)");
    QMetaObject::connect(object, signal, receiver, slot);
}

} // namespace UICoverage
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordstream/recordkind.h"

#include <QByteArray>
#include <QDataStream>

namespace TestLib {

/** What a QDataStream of the model's version writes. */
template <class Value>
QByteArray streamed(const Value& value) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(Vorsk::RecordStream::streamVersion);
    stream << value;
    return bytes;
}

} // namespace TestLib

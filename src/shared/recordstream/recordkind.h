// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDataStream>

namespace Vorsk {
namespace RecordStream {

/** The version that every stream of the model is written in: 12 on the wire's terms. */
constexpr int streamVersion = QDataStream::Qt_4_6;

/** What stands for none, where a text's or an array's length in bytes stands. */
constexpr quint32 nullText = 0xffffffff;

/**
 * What a record tells about its element. The numbers travel as the third argument of every
 * "uiCoverageData" message and never change. A record's payload begins with the element's id
 * (QString); behind it stands, per kind:
 */
enum class RecordKind : int {
    ElementAdded = 1,               ///< the element's stream form with its whole subtree
    ChildAdded = 2,                 ///< id of the child (QString)
    EventRegistered = 3,            ///< event name (QString)
    GeometryChanged = 4,            ///< rectangle (QRect: left, top, right, bottom as qint32)
    ImageChanged = 5,               ///< image (qint32 0, or qint32 1 and a PNG)
    StandardTypeChanged = 6,        ///< type name (QString)
    TextChanged = 7,                ///< text (QString)
    TransparentNodeChanged = 8,     ///< bool, one byte
    SubgraphTransparentChanged = 9, ///< bool, one byte
    WindowNodeChanged = 10,         ///< bool, one byte
    UsageIncreased = 11,            ///< event name (QString), new count (qint32)
    AttributeChanged = 12           ///< name (QString), value (QString; null: it is gone)
};

/** The name of every message that carries a record. */
constexpr char coverageMessageName[] = "uiCoverageData";

} // namespace RecordStream
} // namespace Vorsk

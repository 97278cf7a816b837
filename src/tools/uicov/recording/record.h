// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordstream/recordkind.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QRect>
#include <QString>

#include <memory>

namespace Uicov::Recording {

/** One model change; which members count is told by the kind. */
struct Record {
    Vorsk::RecordStream::RecordKind kind = Vorsk::RecordStream::RecordKind::ElementAdded;
    /** The element that the record is about. */
    QString elementId;
    /** ElementAdded: the element with all below it. */
    std::unique_ptr<Vorsk::UIAbstraction::UIElement> element;
    /** ChildAdded: the child's id; EventRegistered, UsageIncreased: the event; StandardTypeChanged:
     * the type; TextChanged: the text; AttributeChanged: the value, null when the attribute is
     * gone.
     */
    QString text;
    /** AttributeChanged: the attribute's name. */
    QString name;
    /** GeometryChanged. */
    QRect rect;
    /** ImageChanged: the PNG as it was sent, not decoded; empty for a null image. */
    QByteArray picture;
    /** The three changes of flags. */
    bool flag = false;
    /** UsageIncreased: the new count. */
    qint32 count = 0;
};

} // namespace Uicov::Recording

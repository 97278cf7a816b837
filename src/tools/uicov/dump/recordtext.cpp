// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "dump/recordtext.h"

#include "base/displaytext.h"

namespace Uicov::Dump {

using Vorsk::RecordStream::RecordKind;

QString quoted(const QString& text) {
    if (text.isNull()) {
        return QStringLiteral("null");
    }
    QString escaped = Base::escaped(text);
    return QLatin1Char('"') + escaped.replace(QLatin1Char('"'), QLatin1String("\\\"")) +
           QLatin1Char('"');
}

QString printRect(const QRect& rect) {
    // Not QRect's width and height: they overflow on what a damaged recording may hold.
    return QStringLiteral("left=%1 top=%2 right=%3 bottom=%4")
        .arg(rect.left())
        .arg(rect.top())
        .arg(rect.right())
        .arg(rect.bottom());
}

QString kindName(RecordKind kind) {
    switch (kind) {
    case RecordKind::ElementAdded:
        return QStringLiteral("elementAdded");
    case RecordKind::ChildAdded:
        return QStringLiteral("childAdded");
    case RecordKind::EventRegistered:
        return QStringLiteral("eventRegistered");
    case RecordKind::GeometryChanged:
        return QStringLiteral("geometryChanged");
    case RecordKind::ImageChanged:
        return QStringLiteral("imageChanged");
    case RecordKind::StandardTypeChanged:
        return QStringLiteral("standardTypeChanged");
    case RecordKind::TextChanged:
        return QStringLiteral("textChanged");
    case RecordKind::TransparentNodeChanged:
        return QStringLiteral("transparentNodeChanged");
    case RecordKind::SubgraphTransparentChanged:
        return QStringLiteral("subgraphTransparentChanged");
    case RecordKind::WindowNodeChanged:
        return QStringLiteral("windowNodeChanged");
    case RecordKind::UsageIncreased:
        return QStringLiteral("usageIncreased");
    case RecordKind::AttributeChanged:
        return QStringLiteral("attributeChanged");
    }
    return {};
}

} // namespace Uicov::Dump

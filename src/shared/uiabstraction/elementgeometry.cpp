// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/elementgeometry.h"

#include <QDataStream>

namespace Vorsk {
namespace UIAbstraction {

namespace {

void registerType() {
    static const int id = [] {
        constexpr char name[] = "Vorsk::UIAbstraction::ElementGeometry";
        const int typeId = qRegisterMetaType<ElementGeometry>(name);
        qRegisterMetaTypeStreamOperators<ElementGeometry>(name);
        return typeId;
    }();
    Q_UNUSED(id);
}

} // namespace

ElementGeometry::ElementGeometry() {
    registerType();
}

ElementGeometry::ElementGeometry(const QRect& rect, bool isValid)
    : m_rect(rect)
    , m_isValid(isValid) {
    registerType();
}

ElementGeometry::ElementGeometry(QDataStream& stream) {
    registerType();
    stream >> *this;
}

QDataStream& operator<<(QDataStream& stream, const ElementGeometry& geometry) {
    return stream << geometry.rect() << geometry.isValid();
}

QDataStream& operator>>(QDataStream& stream, ElementGeometry& geometry) {
    QRect rect;
    bool isValid = false;
    stream >> rect >> isValid;
    geometry = ElementGeometry(rect, isValid);
    return stream;
}

} // namespace UIAbstraction
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/standardtype.h"

#include <QDataStream>

namespace Vorsk {
namespace UIAbstraction {

namespace {

void registerType() {
    static const int id = qRegisterMetaType<StandardType>("Vorsk::UIAbstraction::StandardType");
    Q_UNUSED(id);
}

} // namespace

StandardType::StandardType() {
    registerType();
}

StandardType::StandardType(const QString& name)
    : m_name(name) {
    registerType();
}

StandardType::StandardType(QDataStream& stream) {
    registerType();
    stream >> *this;
}

QString StandardType::toString() const {
    return m_name.isNull() ? QStringLiteral("unknown") : m_name;
}

QDataStream& operator<<(QDataStream& stream, const StandardType& type) {
    return stream << type.name();
}

QDataStream& operator>>(QDataStream& stream, StandardType& type) {
    QString name;
    stream >> name;
    type = StandardType(name);
    return stream;
}

} // namespace UIAbstraction
} // namespace Vorsk

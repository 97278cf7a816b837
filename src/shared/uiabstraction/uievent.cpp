// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/uievent.h"

#include <QDataStream>

namespace Vorsk {
namespace UIAbstraction {

namespace {

void registerType() {
    static const int id = qRegisterMetaType<UIEvent>("Vorsk::UIAbstraction::UIEvent");
    Q_UNUSED(id);
}

} // namespace

UIEvent::UIEvent() {
    registerType();
}

UIEvent::UIEvent(const QString& name)
    : m_name(name) {
    registerType();
}

UIEvent::UIEvent(QDataStream& stream) {
    registerType();
    stream >> *this;
}

QDataStream& operator<<(QDataStream& stream, const UIEvent& event) {
    return stream << event.name();
}

QDataStream& operator>>(QDataStream& stream, UIEvent& event) {
    QString name;
    stream >> name;
    event = UIEvent(name);
    return stream;
}

} // namespace UIAbstraction
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaType>
#include <QString>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIAbstraction {

/**
 * Something that can happen to an element, identified by its name alone: "clicked", "shown", ...
 * Ordered by name, because it is the key of an element's usage map. A plain value.
 */
class UIEvent {
public:
    /** A null name. */
    UIEvent();
    explicit UIEvent(const QString& name);
    /** Reads the name, as operator>> does. */
    explicit UIEvent(QDataStream& stream);

    const QString& name() const { return m_name; }

    friend bool operator==(const UIEvent& a, const UIEvent& b) { return a.m_name == b.m_name; }
    friend bool operator!=(const UIEvent& a, const UIEvent& b) { return !(a == b); }
    friend bool operator<(const UIEvent& a, const UIEvent& b) { return a.m_name < b.m_name; }

private:
    QString m_name;
};

/** One QString: the name. */
QDataStream& operator<<(QDataStream& stream, const UIEvent& event);
QDataStream& operator>>(QDataStream& stream, UIEvent& event);

} // namespace UIAbstraction
} // namespace Vorsk

Q_DECLARE_METATYPE(Vorsk::UIAbstraction::UIEvent)

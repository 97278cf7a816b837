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
 * The kind of control that an element is, toolkit-neutral, as a name: "Button", "Menu", ... The
 * model has no closed list of names; trackers choose them. A plain value.
 */
class StandardType {
public:
    /** A null name: the kind is not known. */
    StandardType();
    /** Takes the name as it is. */
    explicit StandardType(const QString& name);
    /** Reads the name, as operator>> does. */
    explicit StandardType(QDataStream& stream);

    const QString& name() const { return m_name; }
    /** The name, or "unknown" when it is null; an empty name stays empty. */
    QString toString() const;

    friend bool operator==(const StandardType& a, const StandardType& b) {
        return a.m_name == b.m_name;
    }
    friend bool operator!=(const StandardType& a, const StandardType& b) { return !(a == b); }

private:
    QString m_name;
};

/** One QString: the name. */
QDataStream& operator<<(QDataStream& stream, const StandardType& type);
QDataStream& operator>>(QDataStream& stream, StandardType& type);

} // namespace UIAbstraction
} // namespace Vorsk

Q_DECLARE_METATYPE(Vorsk::UIAbstraction::StandardType)

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaType>
#include <QRect>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIAbstraction {

/**
 * Where an element is, in pixels, in the coordinate system of the tracker that measured it, and
 * whether anybody has measured it yet. A plain value.
 */
class ElementGeometry {
public:
    /** QRect() and not valid: what an element carries until a tracker sets a geometry. */
    ElementGeometry();
    ElementGeometry(const QRect& rect, bool isValid);
    /** Reads both fields, as operator>> does. */
    explicit ElementGeometry(QDataStream& stream);

    const QRect& rect() const { return m_rect; }
    bool isValid() const { return m_isValid; }

    // NOLINTNEXTLINE(google-explicit-constructor): slots that want a QRect are connected to
    // geometry signals.
    operator QRect() const { return m_rect; }

    friend bool operator==(const ElementGeometry& a, const ElementGeometry& b) {
        return a.m_rect == b.m_rect && a.m_isValid == b.m_isValid;
    }
    friend bool operator!=(const ElementGeometry& a, const ElementGeometry& b) { return !(a == b); }

private:
    QRect m_rect;
    bool m_isValid = false;
};

/** QRect (left, top, right, bottom as qint32), then bool (one byte). */
QDataStream& operator<<(QDataStream& stream, const ElementGeometry& geometry);
QDataStream& operator>>(QDataStream& stream, ElementGeometry& geometry);

} // namespace UIAbstraction
} // namespace Vorsk

Q_DECLARE_METATYPE(Vorsk::UIAbstraction::ElementGeometry)

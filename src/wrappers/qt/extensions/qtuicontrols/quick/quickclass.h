// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementtype.h"

#include <QMetaProperty>
#include <QVariant>

#include <array>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** What an object of Qt Quick is to this extension. */
enum class QuickRole : quint8 {
    None,      ///< neither shown nor operated
    Item,      ///< an item that may hold others
    Part,      ///< belongs to what surrounds it, as a scroll bar does; not looked into
    Control,   ///< is operated as a whole; its type says as what
    Input,     ///< a text input, a control unless it is read-only
    Text,      ///< may hold links
    ItemView,  ///< shows rows of data
    Area,      ///< takes presses, not drawn by itself
    Handler,   ///< a pointer handler: no item, operated on the item that it is attached to
    Action,    ///< a command that buttons and menu items stand for
    Shortcut,  ///< a command that only keys reach
    Window,    ///< a top-level view
    Popup,     ///< a view within a window: no item itself, it has one
    PopupItem, ///< the item of a popup
    Container, ///< of Controls: its items lie below its content item
    StackView, ///< shows one of its child items at a time
    SwipeView, ///< a container that shows one of its items at a time
    StackLayout,
    Loader,
    Repeater
};

/**
 * What the classes of Qt Quick and of both generations of its Controls are known by: the nearest
 * class of Qt that an object's class extends, in C++ or, for the first generation of Controls, in
 * QML. Looked up once for each such class. GUI thread only.
 */
class QuickClass {
public:
    /** Properties that many of the classes have. */
    enum Property {
        AcceptedButtons,
        ActionProperty,
        Checkable,
        Echo,
        EnabledProperty,
        Placeholder,
        ReadOnly,
        TextProperty,
        Title,
        TriState
    };
    static constexpr int propertyCount = TriState + 1;

    /** The class that the object's class extends, itself included; lives until the process ends. */
    static const QuickClass& of(const QObject* object);

    QuickRole role() const { return m_role; }
    /** Of a control, a view or a command. */
    ElementType type() const { return m_type; }
    /** Of Controls: 1, 2, or 0 for neither. */
    int generation() const { return m_generation; }
    /** The name of Qt's class, as "QQuickButton" or, in the first generation, "BasicButton". */
    const QByteArray& name() const { return m_name; }

    /** Null when the class has none of that name. Runs no QML. */
    QVariant read(const QObject* object, Property property) const;
    /** The value of a property that is an enumeration or a set of flags; the other one where the
     * class has no such property. As read(), without the look-up of the type by its name that Qt
     * does each time. */
    int readEnum(const QObject* object, Property property, int otherwise) const;
    /** The number of the signal that tells of changes; -1 when there is none. */
    int notifier(const QObject* object, Property property) const;

private:
    friend class QuickClassTable;

    QuickRole m_role = QuickRole::None;
    ElementType m_type = ElementType::Area;
    quint8 m_generation = 0;
    QByteArray m_name;
    /** Of classes in C++; those that QML defines can die, and theirs are looked up each time. */
    std::array<QMetaProperty, propertyCount> m_properties;
};

/** Whether a class in C++ of that name is among those that the object's class extends. */
bool extendsClass(const QObject* object, const char* name);

/** The name of the object's class, whole. */
QString classNameOf(const QObject* object);

/** The name of a class, in UTF-8, without the numbers that QML adds and that differ from run to
 * run. */
QByteArray stableClassName(const QObject* object);
QByteArray withoutQmlPart(const QByteArray& className);

} // namespace UIControls
} // namespace Vorsk

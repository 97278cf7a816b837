// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVariant>

#include <array>

QT_BEGIN_NAMESPACE
class QQuickItem;
struct QMetaObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/**
 * What an item's class has of what observers look for: signals, properties and parts of its name.
 * Looking through a class by texts takes a hundred thousand instructions, so what was found is kept
 * for the next item of it. Classes that QML defines can die and others come to stand at their
 * address: what is kept of one counts only while one of its items lives. A plain value; GUI thread
 * only.
 */
class QuickItemClass {
public:
    enum Signal { Clicked, TextChanged, Triggered, CheckedStateChanged, CheckedChanged };
    enum Property {
        PartiallyCheckedEnabled,
        Checkable,
        Text,
        Title,
        PlaceholderText,
        CheckedState
    };
    enum class Kind { Other, Popup, MenuItem, Button, TextInput, CheckBox };

    static QuickItemClass of(QQuickItem* item);
    static const char* nameOf(Signal signal);
    static const char* nameOf(Property property);

    const QString& name() const { return m_name; }
    /** By the name alone. */
    Kind kind() const { return m_kind; }
    /** One of the texts, which stands for a text input where a loader is beside it. */
    bool isText() const { return m_isText; }

    bool has(Signal signal) const { return m_signals[signal] != -1; }
    bool has(Property property) const { return m_properties[property] != -1; }

    /** The number to connect to, -1 when there is none. */
    int numberOf(Signal signal) const { return m_signals[signal]; }

    /** As QObject::property() reads it from an item of the class; may run QML. */
    QVariant read(QQuickItem* item, Property property) const;

private:
    QuickItemClass();
    static QuickItemClass of(const QMetaObject& metaObject, QQuickItem* item);
    bool extend(const QMetaObject& metaObject);

    const QMetaObject* m_metaObject = nullptr;
    QString m_name;
    Kind m_kind = Kind::Other;
    bool m_isText = false;
    std::array<int, CheckedChanged + 1> m_signals;
    std::array<int, CheckedState + 1> m_properties;
};

} // namespace UICoverage
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMetaObject>

namespace TestLib {

/** An object that says of itself that its class has that name, and has nothing else to add. */
template <class Base>
class Named : public Base {
public:
    explicit Named(const QByteArray& name)
        : m_text(name)
        , m_metaObject(Base::staticMetaObject) {
        m_metaObject.d.superdata = &Base::staticMetaObject;
        m_metaObject.d.stringdata = &m_name;
        m_metaObject.d.data = m_data;
    }
    const QMetaObject* metaObject() const override { return &m_metaObject; }

private:
    QByteArray m_text;
    QByteArrayData m_name = {Q_REFCOUNT_INITIALIZE_STATIC, m_text.size(), 0, 0,
                             m_text.constData() - reinterpret_cast<const char*>(&m_name)};
    /** Revision 7, no content. */
    const uint m_data[15] = {7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    QMetaObject m_metaObject;
};

} // namespace TestLib

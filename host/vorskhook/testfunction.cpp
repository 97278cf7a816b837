// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/testfunction.h"

#include <QMetaObject>
#include <QObject>

#include <cstring>

#include <dlfcn.h>

namespace VorskHost {

namespace {

template <class Function>
Function find(const char* symbol) {
    return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, symbol));
}

/** Compares what is there and not the address, which is another's after the function's end. */
bool isSame(const QByteArray& known, const char* text) {
    return text == nullptr ? known.isEmpty() : std::strcmp(known.constData(), text) == 0;
}

} // namespace

TestFunction::TestFunction()
    : TestFunction(find<Text>("_ZN5QTest19currentTestFunctionEv"),
                   find<Text>("_ZN5QTest14currentDataTagEv"),
                   find<Object>("_ZN5QTest10testObjectEv")) {}

TestFunction::TestFunction(Text function, Text row, Object object)
    : m_currentFunction(function)
    , m_currentRow(row)
    , m_testObject(object) {}

bool TestFunction::hasChanged() {
    if (m_currentFunction == nullptr || m_currentRow == nullptr || m_testObject == nullptr) {
        return false;
    }
    const char* const function = m_currentFunction();
    const char* const row = function == nullptr ? nullptr : m_currentRow();
    if (isSame(m_function, function) && isSame(m_row, row)) {
        return false;
    }
    m_function = function;
    m_row = row;
    return true;
}

QString TestFunction::name() const {
    if (m_function.isEmpty()) {
        return {};
    }
    QString name = QString::fromUtf8(m_function);
    const QObject* const object = m_testObject();
    if (object != nullptr) {
        name.prepend(QString::fromUtf8(object->metaObject()->className()) + QStringLiteral("::"));
    }
    if (!m_row.isEmpty()) {
        name += QLatin1Char('(') + QString::fromUtf8(m_row) + QLatin1Char(')');
    }
    return name;
}

} // namespace VorskHost

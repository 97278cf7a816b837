// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <QByteArray>
#include <QString>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace VorskHost {

/**
 * Which test function runs, where the application is a Qt Test program. Qt Test itself is asked, if
 * the process has it; it is neither linked nor loaded. GUI thread only; costs a few nanoseconds
 * while nothing changes.
 */
class VORSK_HOST_EXPORT TestFunction {
public:
    using Text = const char* (*)();
    using Object = QObject* (*)();

    /** Looks for Qt Test in the process. */
    TestFunction();
    /** What is asked for function, row and test object; without one of them nothing ever runs. */
    TestFunction(Text function, Text row, Object object);

    /** True when another function, or another row of its data, runs than at the last call. */
    bool hasChanged();

    /** As of the last hasChanged(): "Class::function" or "Class::function(row)"; empty while no
     * test function runs. */
    QString name() const;

private:
    Text m_currentFunction = nullptr;
    Text m_currentRow = nullptr;
    Object m_testObject = nullptr;
    QByteArray m_function;
    QByteArray m_row;
};

} // namespace VorskHost

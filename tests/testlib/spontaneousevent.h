// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QEvent;
QT_END_NAMESPACE

namespace TestLib {

/** Has the event count as one that comes from outside of the program. */
void setSpontaneous(QEvent& event);

} // namespace TestLib

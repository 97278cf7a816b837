// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QVariant>

namespace Vorsk {

/** The arguments of one hook message, in order. */
class ArgumentList : public QList<QVariant> {
public:
    ArgumentList() = default;
    ArgumentList(std::initializer_list<QVariant> values)
        : QList<QVariant>(values) {}
};

} // namespace Vorsk

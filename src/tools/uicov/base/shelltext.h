// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Base {

/** As it can be pasted into a shell. */
QString shellQuoted(const QString& text);

} // namespace Uicov::Base

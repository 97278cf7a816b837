// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordstream/recordkind.h"

#include <QRect>
#include <QString>

// How values stand in the lines of a dump.
namespace Uicov::Dump {

/** In quotes and with escapes; null without them where there is no text. */
QString quoted(const QString& text);
QString printRect(const QRect& rect);
QString kindName(Vorsk::RecordStream::RecordKind kind);

} // namespace Uicov::Dump

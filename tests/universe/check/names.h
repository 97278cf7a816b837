// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/** Texts that controls are called by, made comparable. */
namespace Names {

/** Without mnemonics, shortcuts behind a tabulator, tags and space around. */
QString plain(const QString& text);
/** Adds it as plain text unless that is empty or in the list already. */
void add(QStringList& names, const QString& text);
/** How many texts are in both. */
int common(const QStringList& a, const QStringList& b);

} // namespace Names

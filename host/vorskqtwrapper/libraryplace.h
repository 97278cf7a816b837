// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace VorskHost {

/** Where a library lies, which says who could have put it there. */
namespace LibraryPlace {

/**
 * The file or folder on the way to the library that users other than its owner and group can write
 * to, so that anybody's code may be in its place; empty when there is none. Links are followed. A
 * folder above the library's own may be shared where its sticky bit keeps others from renaming.
 */
QString sharedPart(const QString& library);

} // namespace LibraryPlace

} // namespace VorskHost

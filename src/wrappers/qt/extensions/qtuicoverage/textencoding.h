// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace Vorsk {
namespace UICoverage {

/**
 * Converts between character encodings as iconv names them; an empty name is the locale's encoding.
 * Returns an empty text when anything in the input cannot be converted, never a part of it, with
 * one line "iconv_open: ..." or "iconv: ..." on standard error.
 */
std::string convertEncoding(std::string input, const char* fromCode, const char* toCode);

std::string utf8ToLocal(std::string text);
std::string localToUtf8(std::string text);

} // namespace UICoverage
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/textencoding.h"

#include <cstdio>
#include <utility>

#include <iconv.h>

namespace Vorsk {
namespace UICoverage {

namespace {

/** No encoding that a locale can have needs more bytes for one byte of another. */
constexpr std::size_t outputBytesPerInputByte = 4;

} // namespace

std::string convertEncoding(std::string input, const char* fromCode, const char* toCode) {
    if (input.empty()) {
        return {};
    }
    iconv_t converter = iconv_open(toCode, fromCode);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): libc's own sign of failure
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        std::perror("iconv_open");
        return {};
    }
    std::string output(input.size() * outputBytesPerInputByte, '\0');
    char* in = input.data();
    char* out = output.data();
    std::size_t inLeft = input.size();
    std::size_t outLeft = output.size();
    const std::size_t converted = iconv(converter, &in, &inLeft, &out, &outLeft);
    if (converted != static_cast<std::size_t>(-1) && inLeft == 0) {
        output.resize(output.size() - outLeft);
    } else {
        std::perror("iconv");
        output.clear();
    }
    iconv_close(converter);
    return output;
}

std::string utf8ToLocal(std::string text) {
    return convertEncoding(std::move(text), "UTF-8", "");
}

std::string localToUtf8(std::string text) {
    return convertEncoding(std::move(text), "", "UTF-8");
}

} // namespace UICoverage
} // namespace Vorsk

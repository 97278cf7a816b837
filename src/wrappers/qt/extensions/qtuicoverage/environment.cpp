// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/environment.h"

#include "tracking/textencoding.h"

#include <cstdlib>
#include <utility>

namespace Vorsk {
namespace UICoverage {

std::string getEnvironmentVariable(std::string name) {
    const std::string localName = utf8ToLocal(std::move(name));
    if (localName.empty()) {
        return {};
    }
    const char* const value = ::getenv(localName.c_str()); // NOLINT(concurrency-mt-unsafe)
    return value == nullptr ? std::string() : localToUtf8(value);
}

void setEnvironmentVariable(std::string name, std::string value) {
    const std::string localName = utf8ToLocal(std::move(name));
    const std::string localValue = utf8ToLocal(std::move(value));
    if (!localName.empty()) {
        ::setenv(localName.c_str(), localValue.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    }
}

void unsetEnvironmentVariable(std::string name) {
    const std::string localName = utf8ToLocal(std::move(name));
    if (!localName.empty()) {
        ::unsetenv(localName.c_str()); // NOLINT(concurrency-mt-unsafe)
    }
}

} // namespace UICoverage
} // namespace Vorsk

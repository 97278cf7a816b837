// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/fakehost.h"

namespace TestLib {

void FakeLogger::info(const std::string& message) {
    lines.append(QStringLiteral("info: ") + QString::fromLocal8Bit(message.c_str()));
}

void FakeLogger::warning(const std::string& message) {
    lines.append(QStringLiteral("warning: ") + QString::fromLocal8Bit(message.c_str()));
}

Vorsk::HostLogger* FakeExtensionHost::logger() {
    ++loggerRequests;
    return &fakeLogger;
}

bool FakeOptionSet::contains(const std::string& key) const {
    return options.count(key) > 0;
}

const std::vector<std::string>& FakeOptionSet::values(const std::string& key) const {
    static const std::vector<std::string> none;
    const auto it = options.find(key);
    return it == options.end() ? none : it->second;
}

void FakeWrapperContext::registerEventCallback(const QMetaObject* cls, EventCallback callback) {
    registrations.append({cls, callback});
}

} // namespace TestLib

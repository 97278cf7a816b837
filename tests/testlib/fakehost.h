// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/extensionhost.h>
#include <vorsk/hostlogger.h>
#include <vorsk/optionset.h>
#include <vorsk/wrappercontext.h>

#include <QList>
#include <QStringList>

#include <map>
#include <string>
#include <vector>

namespace TestLib {

/** Keeps every line, in order, as "info: ..." or "warning: ...". */
class FakeLogger : public Vorsk::HostLogger {
public:
    void info(const std::string& message) override;
    void warning(const std::string& message) override;

    QStringList lines;
};

/** Hands out its logger and counts how often it was asked. */
class FakeExtensionHost : public Vorsk::ExtensionHost {
public:
    void reserved3() override {}
    Vorsk::HostLogger* logger() override;

    FakeLogger fakeLogger;
    int loggerRequests = 0;
};

class FakeOptionSet : public Vorsk::OptionSet {
public:
    bool contains(const std::string& key) const override;
    const std::vector<std::string>& values(const std::string& key) const override;

    std::map<std::string, std::vector<std::string>> options;
};

/** Keeps what was registered and can play the host's deliveries. */
class FakeWrapperContext : public Vorsk::WrapperContext {
public:
    struct Registration {
        const QMetaObject* cls;
        EventCallback callback;
    };

    void reserved3() override {}
    void reserved4() override {}
    void reserved5() override {}
    void reserved6() override {}
    void reserved7() override {}
    void reserved8() override {}
    void reserved9() override {}
    void registerEventCallback(const QMetaObject* cls, EventCallback callback) override;

    QList<Registration> registrations;
};

} // namespace TestLib

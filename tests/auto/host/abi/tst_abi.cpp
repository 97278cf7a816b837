// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/abi/extensionlayout.h"
#include "testlib/testcase.h"

#include <vorsk/argumentlist.h>
#include <vorsk/extension.h>
#include <vorsk/extensionhost.h>
#include <vorsk/hook.h>
#include <vorsk/hostlogger.h>
#include <vorsk/optionset.h>
#include <vorsk/wrappercontext.h>

#include <QEvent>
#include <QTest>

#include <cstring>

/*
 * The interface between host and extension is a binary one: both may be built from headers of their
 * own. So the operations are called here by their place in the virtual table, as a caller from
 * elsewhere does, and never by name. Places count from one; a destructor takes two.
 */

namespace {

QStringList calls;

template <typename Function>
Function slot(const void* object, int place) {
    void** table = nullptr;
    std::memcpy(&table, object, sizeof table);
    Function function = nullptr;
    std::memcpy(&function, table + (place - 1), sizeof function);
    return function;
}

class Options final : public Vorsk::OptionSet {
public:
    ~Options() override { calls.append(QStringLiteral("~Options")); }
    bool contains(const std::string& key) const override {
        calls.append(QStringLiteral("contains ") + QString::fromStdString(key));
        return key == "there";
    }
    const std::vector<std::string>& values(const std::string& key) const override {
        calls.append(QStringLiteral("values ") + QString::fromStdString(key));
        return m_values;
    }

private:
    std::vector<std::string> m_values{"one", "two"};
};

class Logger final : public Vorsk::HostLogger {
public:
    ~Logger() override { calls.append(QStringLiteral("~Logger")); }
    void info(const std::string& message) override {
        calls.append(QStringLiteral("info ") + QString::fromStdString(message));
    }
    void warning(const std::string& message) override {
        calls.append(QStringLiteral("warning ") + QString::fromStdString(message));
    }
};

class Host final : public Vorsk::ExtensionHost {
public:
    ~Host() override { calls.append(QStringLiteral("~Host")); }
    void reserved3() override { calls.append(QStringLiteral("reserved")); }
    Vorsk::HostLogger* logger() override {
        calls.append(QStringLiteral("logger"));
        return &theLogger;
    }
    Logger theLogger;
};

void callback(QObject*, QEvent*) {}

class Context final : public Vorsk::WrapperContext {
public:
    ~Context() override { calls.append(QStringLiteral("~Context")); }
    void reserved3() override { reserved(3); }
    void reserved4() override { reserved(4); }
    void reserved5() override { reserved(5); }
    void reserved6() override { reserved(6); }
    void reserved7() override { reserved(7); }
    void reserved8() override { reserved(8); }
    void reserved9() override { reserved(9); }
    void registerEventCallback(const QMetaObject* cls, EventCallback registered) override {
        calls.append(QStringLiteral("register %1 %2")
                         .arg(QString::fromLatin1(cls->className()))
                         .arg(registered == callback));
    }

private:
    static void reserved(int place) { calls.append(QStringLiteral("reserved %1").arg(place)); }
};

class TestExtension final : public Vorsk::Extension {
public:
    ~TestExtension() override { calls.append(QStringLiteral("~TestExtension")); }
    void initialize(Vorsk::WrapperContext* context) override {
        calls.append(QStringLiteral("initialize %1").arg(context == nullptr));
    }
    void finish() override { calls.append(QStringLiteral("finish")); }
};

class LazyExtension final : public Vorsk::Extension {
public:
    void initialize(Vorsk::WrapperContext*) override {}
};

class BareHook : public Vorsk::Hook {
public:
    BareHook() = default;
};

} // namespace

class tst_Abi : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void optionSet();
    void hostLogger();
    void extensionHost();
    void wrapperContext();
    void extension();
    void extensionThatDoesNotFinish();
    void extensionLayout();
    void extensionMembersAtTheirOffsets();
    void deletingDestructors_data();
    void deletingDestructors();
    void hook();
    void argumentList();
};

void tst_Abi::init() {
    TestCase::init();
    calls.clear();
}

void tst_Abi::optionSet() {
    const Options options;
    using Contains = bool (*)(const void*, const std::string&);
    using Values = const std::vector<std::string>& (*)(const void*, const std::string&);
    QVERIFY(slot<Contains>(&options, 3)(&options, "there"));
    QVERIFY(!slot<Contains>(&options, 3)(&options, "elsewhere"));
    const std::vector<std::string>& values = slot<Values>(&options, 4)(&options, "any");
    QVERIFY(values == (std::vector<std::string>{"one", "two"}));
    QCOMPARE(calls,
             (QStringList{QStringLiteral("contains there"), QStringLiteral("contains elsewhere"),
                          QStringLiteral("values any")}));
}

void tst_Abi::hostLogger() {
    Logger logger;
    using Log = void (*)(void*, const std::string&);
    slot<Log>(&logger, 3)(&logger, "a");
    slot<Log>(&logger, 4)(&logger, "b");
    QCOMPARE(calls, (QStringList{QStringLiteral("info a"), QStringLiteral("warning b")}));
}

void tst_Abi::extensionHost() {
    Host host;
    using Logger = Vorsk::HostLogger* (*)(void*);
    QCOMPARE(slot<Logger>(&host, 4)(&host), static_cast<Vorsk::HostLogger*>(&host.theLogger));
    QCOMPARE(calls, QStringList(QStringLiteral("logger")));
}

void tst_Abi::wrapperContext() {
    Context context;
    using Reserved = void (*)(void*);
    using Register = void (*)(void*, const QMetaObject*, Vorsk::WrapperContext::EventCallback);
    slot<Register>(&context, 10)(&context, &QObject::staticMetaObject, callback);
    QCOMPARE(calls, QStringList(QStringLiteral("register QObject 1")));
    calls.clear();
    QStringList expected;
    for (int place = 3; place <= 9; ++place) {
        slot<Reserved>(&context, place)(&context);
        expected.append(QStringLiteral("reserved %1").arg(place));
    }
    QCOMPARE(calls, expected);
}

void tst_Abi::extension() {
    TestExtension extension;
    using Initialize = void (*)(void*, Vorsk::WrapperContext*);
    using Finish = void (*)(void*);
    slot<Initialize>(&extension, 3)(&extension, nullptr);
    slot<Finish>(&extension, 4)(&extension);
    QCOMPARE(calls, (QStringList{QStringLiteral("initialize 1"), QStringLiteral("finish")}));
}

void tst_Abi::extensionThatDoesNotFinish() {
    LazyExtension extension;
    using Finish = void (*)(void*);
    slot<Finish>(&extension, 4)(&extension);
    QVERIFY(extension.options == nullptr);
    QVERIFY(extension.name.empty());
    QVERIFY(extension.path.empty());
}

void tst_Abi::extensionLayout() {
    // The numbers themselves are checked by the compiler; these hold on any platform.
    QCOMPARE(nameOffset, sizeof(void*));
    QCOMPARE(pathOffset, sizeof(void*) + sizeof(std::string));
    QCOMPARE(optionsOffset, sizeof(void*) + 2 * sizeof(std::string));
    QCOMPARE(sizeof(Vorsk::Extension), 2 * sizeof(void*) + 2 * sizeof(std::string));
}

void tst_Abi::extensionMembersAtTheirOffsets() {
    TestExtension extension;
    Options options;
    extension.name = "a name";
    extension.path = "a path";
    extension.options = &options;
    const char* start = reinterpret_cast<const char*>(static_cast<Vorsk::Extension*>(&extension));
    QCOMPARE(*reinterpret_cast<const std::string*>(start + nameOffset), std::string("a name"));
    QCOMPARE(*reinterpret_cast<const std::string*>(start + pathOffset), std::string("a path"));
    Vorsk::OptionSet* found = nullptr;
    std::memcpy(&found, start + optionsOffset, sizeof(void*));
    QCOMPARE(found, static_cast<Vorsk::OptionSet*>(&options));
}

void tst_Abi::deletingDestructors_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"Options", "Logger", "Host", "Context", "TestExtension"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

/** The first place destroys an object, the second also frees it; a leak checker sees the latter. */
void tst_Abi::deletingDestructors() {
    QFETCH(QString, name);
    using Destroy = void (*)(void*);
    const auto destroyBothWays = [](auto* onHeap, auto* inPlace) {
        slot<Destroy>(onHeap, 2)(onHeap);
        slot<Destroy>(inPlace, 1)(inPlace);
    };
    alignas(std::max_align_t) char memory[256];
    if (name == QStringLiteral("Options")) {
        destroyBothWays(new Options, new (memory) Options);
    } else if (name == QStringLiteral("Logger")) {
        destroyBothWays(new Logger, new (memory) Logger);
    } else if (name == QStringLiteral("Host")) {
        destroyBothWays(new Host, new (memory) Host);
    } else if (name == QStringLiteral("Context")) {
        destroyBothWays(new Context, new (memory) Context);
    } else {
        destroyBothWays(new TestExtension, new (memory) TestExtension);
    }
    QCOMPARE(calls.count(QLatin1Char('~') + name), 2);
}

void tst_Abi::hook() {
    // Not virtual: an extension links its operations by name and reads the channel in place.
    static_assert(!std::is_polymorphic_v<Vorsk::Hook>);
    static_assert(sizeof(BareHook) == sizeof(int));
    static_assert(std::is_same_v<decltype(Vorsk::Hook::hook), Vorsk::Hook*>);
    static_assert(
        std::is_same_v<decltype(&Vorsk::Hook::send),
                       bool (Vorsk::Hook::*)(int, const QString&, const Vorsk::ArgumentList&)>);
    BareHook bare;
    bare.channel = 42;
    int first = 0;
    std::memcpy(&first, static_cast<void*>(&bare), sizeof first);
    QCOMPARE(first, 42);
}

void tst_Abi::argumentList() {
    const Vorsk::ArgumentList list{1, QByteArray("b")};
    const QList<QVariant>& asList = list;
    static_assert(sizeof(Vorsk::ArgumentList) == sizeof(QList<QVariant>));
    QCOMPARE(asList.size(), 2);
    QCOMPARE(asList.last(), QVariant(QByteArray("b")));
}

QTEST_GUILESS_MAIN(tst_Abi)
#include "tst_abi.moc"

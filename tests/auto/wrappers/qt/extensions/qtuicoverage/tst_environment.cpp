// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/stderrcapture.h"
#include "testlib/testcase.h"
#include "tracking/environment.h"

#include <QTest>

#include <clocale>
#include <cstring>
#include <string>

#include <unistd.h>

namespace {

int getenvCalls = 0;

constexpr char variable[] = "UICOV_TEST_VARIABLE";
constexpr char invalidUtf8[] = "UICOV_TEST_\xFF";

} // namespace

/** In place of libc's, to count the calls. */
char* getenv(const char* name) noexcept {
    ++getenvCalls;
    const std::size_t length = std::strlen(name);
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (std::strncmp(*entry, name, length) == 0 && (*entry)[length] == '=') {
            return *entry + length + 1;
        }
    }
    return nullptr;
}

using namespace Vorsk::UICoverage;

class tst_Environment : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        TestCase::init();
        QVERIFY(std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr);
        ::unsetenv(variable);
        getenvCalls = 0;
    }

    void unsetVariableIsEmpty() {
        QCOMPARE(getEnvironmentVariable(variable), std::string());
        QCOMPARE(getenvCalls, 1);
    }

    void emptyVariableIsEmpty() {
        ::setenv(variable, "", 1);
        QCOMPARE(getEnvironmentVariable(variable), std::string());
    }

    void valueIsUtf8_data() {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("ASCII") << QByteArray("1");
        QTest::newRow("spaces stay") << QByteArray(" 1 ");
        QTest::newRow("beyond ASCII") << QByteArray("\xC3\xA9\xE2\x82\xAC");
    }

    void valueIsUtf8() {
        QFETCH(QByteArray, value);
        ::setenv(variable, value.constData(), 1);
        QCOMPARE(QByteArray::fromStdString(getEnvironmentVariable(variable)), value);
    }

    void nameThatCannotBeConvertedIsNotLookedUp() {
        TestLib::StderrCapture capture;
        const std::string value = getEnvironmentVariable(invalidUtf8);
        QVERIFY(capture.take().startsWith("iconv: "));
        QCOMPARE(value, std::string());
        QCOMPARE(getenvCalls, 0);
    }

    void emptyNameIsNotLookedUp() {
        QCOMPARE(getEnvironmentVariable(""), std::string());
        QCOMPARE(getenvCalls, 0);
    }

    void valueThatCannotBeConvertedIsEmpty() {
        ::setenv(variable, "good\xFF", 1);
        TestLib::StderrCapture capture;
        const std::string value = getEnvironmentVariable(variable);
        QVERIFY(capture.take().startsWith("iconv: "));
        QCOMPARE(value, std::string());
    }

    void setReplacesAnEarlierValue() {
        setEnvironmentVariable(variable, "old");
        setEnvironmentVariable(variable, "\xC3\xA9");
        QCOMPARE(getEnvironmentVariable(variable), std::string("\xC3\xA9"));
    }

    void unsetRemovesTheVariable() {
        setEnvironmentVariable(variable, "value");
        unsetEnvironmentVariable(variable);
        QVERIFY(::getenv(variable) == nullptr);
    }

    void changesUnderANameThatCannotBeConvertedDoNothing() {
        int before = 0;
        while (environ[before] != nullptr) {
            ++before;
        }
        TestLib::StderrCapture capture;
        setEnvironmentVariable(invalidUtf8, "value");
        unsetEnvironmentVariable(invalidUtf8);
        setEnvironmentVariable("", "value");
        unsetEnvironmentVariable("");
        QCOMPARE(capture.take().count("iconv: "), 2);
        int after = 0;
        while (environ[after] != nullptr) {
            ++after;
        }
        QCOMPARE(after, before);
    }
};

QTEST_GUILESS_MAIN(tst_Environment)
#include "tst_environment.moc"

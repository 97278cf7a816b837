// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/stderrcapture.h"
#include "testlib/testcase.h"
#include "tracking/textencoding.h"

#include <QTest>

#include <clocale>
#include <string>

using namespace Vorsk::UICoverage;

namespace {

constexpr char eAcute[] = "\xC3\xA9"; // U+00E9 in UTF-8
constexpr char euro[] = "\xE2\x82\xAC";
constexpr char grin[] = "\xF0\x9F\x98\x80";

/** The process's locale, set back at the end. */
class LocaleScope {
public:
    explicit LocaleScope(const char* name)
        : m_saved(std::setlocale(LC_CTYPE, nullptr))
        , m_isSet(std::setlocale(LC_CTYPE, name) != nullptr) {}
    ~LocaleScope() { static_cast<void>(std::setlocale(LC_CTYPE, m_saved.c_str())); }
    Q_DISABLE_COPY(LocaleScope)

    bool isSet() const { return m_isSet; }

private:
    std::string m_saved;
    bool m_isSet;
};

} // namespace

class tst_TextEncoding : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void emptyInputOpensNoConverter() {
        TestLib::StderrCapture capture;
        // Encodings that do not exist would give an error line, were a converter opened.
        const std::string result = convertEncoding("", "no-such-encoding", "nor-this-one");
        QCOMPARE(capture.take(), QByteArray());
        QVERIFY(result.empty());
    }

    void converts_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("ASCII") << QByteArray("VORSK") << QByteArray("UTF-8") << QByteArray("ASCII")
                               << QByteArray("VORSK");
        QTest::newRow("shorter") << QByteArray(eAcute) << QByteArray("UTF-8")
                                 << QByteArray("ISO-8859-1") << QByteArray("\xE9");
        QTest::newRow("longer") << QByteArray("\xE9x\xE9") << QByteArray("ISO-8859-1")
                                << QByteArray("UTF-8") << QByteArray("\xC3\xA9x\xC3\xA9");
        QTest::newRow("one to three") << QByteArray("\xA4") << QByteArray("ISO-8859-15")
                                      << QByteArray("UTF-8") << QByteArray(euro);
        QTest::newRow("four times as long")
            << QByteArray("ab") << QByteArray("ASCII") << QByteArray("UTF-32LE")
            << QByteArray("a\0\0\0b\0\0\0", 8);
        QTest::newRow("zeros inside") << QByteArray("a\0b", 3) << QByteArray("UTF-8")
                                      << QByteArray("UTF-16BE") << QByteArray("\0a\0\0\0b", 6);
        QTest::newRow("beyond the basic plane")
            << QByteArray(grin) << QByteArray("UTF-8") << QByteArray("UTF-16BE")
            << QByteArray("\xD8\x3D\xDE\x00", 4);
    }

    void converts() {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QByteArray, output);
        TestLib::StderrCapture capture;
        const std::string result = convertEncoding(input.toStdString(), from, to);
        QCOMPARE(capture.take(), QByteArray());
        QCOMPARE(QByteArray::fromStdString(result), output);
    }

    void failureGivesNothingAndOneErrorLine_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QByteArray>("call");
        const QByteArray utf8("UTF-8");
        const QByteArray latin1("ISO-8859-1");
        QTest::newRow("unknown source encoding")
            << QByteArray("a") << QByteArray("no-such") << utf8 << QByteArray("iconv_open: ");
        QTest::newRow("unknown target encoding")
            << QByteArray("a") << utf8 << QByteArray("no-such") << QByteArray("iconv_open: ");
        QTest::newRow("invalid UTF-8 at the start")
            << QByteArray("\xFFgood") << utf8 << latin1 << QByteArray("iconv: ");
        QTest::newRow("invalid UTF-8 behind something good")
            << QByteArray("good\x80more") << utf8 << latin1 << QByteArray("iconv: ");
        QTest::newRow("input ends inside a character")
            << QByteArray("good\xE2\x82") << utf8 << latin1 << QByteArray("iconv: ");
        QTest::newRow("no such character in the target")
            << QByteArray(euro) << utf8 << latin1 << QByteArray("iconv: ");
        // A byte order mark and one character are eight bytes.
        QTest::newRow("output needs more than four bytes for one")
            << QByteArray("a") << utf8 << QByteArray("UTF-32") << QByteArray("iconv: ");
    }

    void failureGivesNothingAndOneErrorLine() {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QByteArray, call);
        TestLib::StderrCapture capture;
        const std::string result = convertEncoding(input.toStdString(), from, to);
        const QByteArray errors = capture.take();
        QVERIFY2(errors.startsWith(call), errors.constData());
        QCOMPARE(errors.count('\n'), 1);
        QVERIFY(errors.size() > call.size() + 1); // libc's own text stands behind
        QVERIFY(result.empty());
    }

    void localEncodingIsTheLocales() {
        const LocaleScope locale("C.UTF-8");
        QVERIFY(locale.isSet());
        QCOMPARE(utf8ToLocal(euro), std::string(euro));
        QCOMPARE(localToUtf8(euro), std::string(euro));
    }

    void localEncodingOfThePlainLocaleIsAscii() {
        const LocaleScope locale("C");
        QVERIFY(locale.isSet());
        TestLib::StderrCapture capture;
        const std::string toLocal = utf8ToLocal(euro);
        const std::string fromLocal = localToUtf8(euro);
        const std::string ascii = utf8ToLocal("plain");
        QCOMPARE(capture.take().count("iconv: "), 2);
        QVERIFY(toLocal.empty());
        QVERIFY(fromLocal.empty());
        QCOMPARE(ascii, std::string("plain"));
    }
};

QTEST_GUILESS_MAIN(tst_TextEncoding)
#include "tst_textencoding.moc"

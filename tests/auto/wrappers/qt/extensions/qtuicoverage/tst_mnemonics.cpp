// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "tracking/mnemonics.h"

#include <QTest>

using Vorsk::UICoverage::stripMnemonics;

class tst_Mnemonics : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void strips_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("stripped");
        const auto row = [](const char* text, const char* stripped) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(stripped);
        };
        row("Open", "Open");
        row("&Open", "Open");
        row("O&pen", "Open");
        row("Open&", "Open");
        row("A&&B", "A&B");
        row("&&&X", "&X");
        row("&&&&", "&&");
        row("&&", "&");
        row("X&&", "X&");
        row("X&&&", "X&");
        row("&&X", "&X");
        row("&A&&&B", "A&B");
        row("& A", " A");
        row("Save && E&xit", "Save & Exit");
        row("\u00dcber &\u00c4nderungen", "\u00dcber \u00c4nderungen");
        row("&\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80");
    }

    void strips() {
        QFETCH(QString, text);
        QTEST(stripMnemonics(text), "stripped");
    }

    void nothingButEmptyPartsIsNull_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("null") << QString();
        QTest::newRow("empty") << QStringLiteral("");
        QTest::newRow("one mark") << QStringLiteral("&");
    }

    void nothingButEmptyPartsIsNull() {
        QFETCH(QString, text);
        QVERIFY(stripMnemonics(text).isNull());
    }
};

QTEST_GUILESS_MAIN(tst_Mnemonics)
#include "tst_mnemonics.moc"

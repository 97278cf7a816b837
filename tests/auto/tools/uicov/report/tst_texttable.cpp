// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/texttable.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Report::TextTable;

class TestTextTable : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void columnsAreAsWideAsTheirWidestCell() {
        TextTable table;
        table.addRow({QStringLiteral("Window"), QStringLiteral("N"), QStringLiteral("Cover")});
        table.addRule();
        table.addRow({QString::fromUtf8("日本"), QStringLiteral("1234"), QStringLiteral("9%")});
        table.addLine(QStringLiteral("  a line that is longer than all of the table"));
        QCOMPARE(table.toString(),
                 QString::fromUtf8("Window     N  Cover\n"
                                   "-------------------\n"
                                   "日本    1234     9%\n"
                                   "  a line that is longer than all of the table\n"));
    }

    void anEmptyTableIsNoText() { QCOMPARE(TextTable().toString(), QString()); }
};

QTEST_GUILESS_MAIN(TestTextTable)
#include "tst_texttable.moc"

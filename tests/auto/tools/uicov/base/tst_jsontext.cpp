// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/jsontext.h"
#include "testlib/testcase.h"

#include <QJsonArray>
#include <QTest>

class TestJsonText : public TestLib::TestCase {
    Q_OBJECT

    static QByteArray written(const QString& text) {
        return Uicov::Base::jsonText(QJsonDocument(QJsonArray{text}), QJsonDocument::Compact);
    }

private Q_SLOTS:
    void controlCharactersAreEscaped_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("none") << QStringLiteral("Save") << QByteArray("[\"Save\"]");
        QTest::newRow("empty") << QString() << QByteArray("[\"\"]");
        QTest::newRow("escape") << QString(QChar(0x1b)) << QByteArray("[\"\\u001b\"]");
        QTest::newRow("delete") << QString(QChar(0x7f)) << QByteArray("[\"\\u007f\"]");
        QTest::newRow("first above") << QString(QChar(0x80)) << QByteArray("[\"\\u0080\"]");
        QTest::newRow("last above") << QString(QChar(0x9f)) << QByteArray("[\"\\u009f\"]");
        QTest::newRow("in a row") << QString(QChar(0x9b)) + QChar(0x9b) + QLatin1Char('m')
                                  << QByteArray("[\"\\u009b\\u009bm\"]");
        QTest::newRow("first that is none") << QString(QChar(0xa0)) << QByteArray("[\"\xc2\xa0\"]");
        QTest::newRow("same bytes in letters") << QString::fromUtf8("\xe3\x82\x9b\xc4\x9b")
                                               << QByteArray("[\"\xe3\x82\x9b\xc4\x9b\"]");
    }

    void controlCharactersAreEscaped() {
        QFETCH(QString, text);
        QFETCH(QByteArray, json);
        QCOMPARE(written(text), json);
    }

    void everyTextReadsBackAsItIs() {
        QString all;
        for (ushort code = 1; code < 0x3000; ++code) {
            all += QChar(code);
        }
        QCOMPARE(QJsonDocument::fromJson(written(all)).array().at(0).toString(), all);
    }
};

QTEST_GUILESS_MAIN(TestJsonText)
#include "tst_jsontext.moc"

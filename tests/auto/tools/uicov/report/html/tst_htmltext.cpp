// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/htmltext.h"
#include "testlib/testcase.h"

#include <QJsonDocument>
#include <QTest>

class TestHtmlText : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void content_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("html");

        const auto row = [](const char* name, const QString& text, const char* html) {
            QTest::newRow(name) << text << QString::fromUtf8(html);
        };
        row("empty", QString(), "<bdi></bdi>");
        row("plain", QStringLiteral("Apply now"), "<bdi>Apply now</bdi>");
        row("markup", QStringLiteral("<b>&'\""), "<bdi>&lt;b&gt;&amp;&#39;&quot;</bdi>");
        row("backslash", QStringLiteral("a\\b"), "<bdi>a\\b</bdi>");
        row("line break", QStringLiteral("a\nb"), "<bdi>a<span class=\"unseen\">\\n</span>b</bdi>");
        row("turns the direction", QString(QChar(0x202e)),
            "<bdi><span class=\"unseen\">\\u202e</span></bdi>");
        row("right to left", QString::fromUtf8("שלום"), "<bdi>שלום</bdi>");
        row("beyond 16 bits", QString::fromUtf8("🙂"), "<bdi>🙂</bdi>");
        row("half a character", QString(QChar(0xd800)),
            "<bdi><span class=\"unseen\">\\ud800</span></bdi>");
    }

    void content() {
        QFETCH(QString, text);
        QFETCH(QString, html);
        QCOMPARE(Uicov::Report::Html::htmlContent(text), html);
    }

    void attributesHaveNoMarkup() {
        QCOMPARE(Uicov::Report::Html::htmlAttribute(QStringLiteral("\"><i>\n")),
                 QStringLiteral("&quot;&gt;&lt;i&gt;\\n"));
    }

    void longTextsLoseTheirMiddleAndSaySo() {
        const QString whole = QStringLiteral("x").repeated(2000);
        QCOMPARE(Uicov::Report::Html::cappedText(whole), whole);
        const QString capped = Uicov::Report::Html::cappedText(whole + QLatin1Char('y'));
        QVERIFY(capped.size() < 2000);
        QVERIFY(capped.contains(QStringLiteral("(2001 characters)")));
        QVERIFY(capped.endsWith(QLatin1Char('y')));
    }

    void jsonCannotEndItsElement() {
        const QString hostile =
            QStringLiteral("</script><!--") + QChar(0x2028) + QChar(0x2029) + QLatin1Char('"');
        const QJsonObject object{{hostile, hostile}};
        const QByteArray json = Uicov::Report::Html::scriptJson(object);
        QVERIFY(!json.contains('<'));
        QVERIFY(!json.contains('>'));
        QVERIFY(!json.contains("\xe2\x80\xa8"));
        QVERIFY(!json.contains("\xe2\x80\xa9"));
        QCOMPARE(QJsonDocument::fromJson(json).object(), object);
    }
};

QTEST_GUILESS_MAIN(TestHtmlText)

#include "tst_htmltext.moc"

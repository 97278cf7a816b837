// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/htmlpage.h"
#include "testlib/testcase.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

using Uicov::Report::Html::HtmlPage;
using Uicov::Report::Html::PageModel;
using Uicov::Report::Html::PictureLinks;

namespace {

PageModel sample() {
    PageModel model;
    model.title = QStringLiteral("{{policy}} <title>");
    PageModel::Node window;
    window.step.kind = QStringLiteral("Window");
    window.step.label = QStringLiteral("Panel");
    window.isCountable = true;
    model.nodes = {window};
    PageModel::Window row;
    row.node = 0;
    row.lastNode = 0;
    row.totals.elements = 1;
    row.totals.missed = 1;
    row.surfaces = {PageModel::SurfaceId(0)};
    model.windows = {row};
    PageModel::Surface surface;
    surface.window = 0;
    surface.node = 0;
    surface.bounds = QRect(0, 0, 10, 5);
    surface.picture = PageModel::PictureId(0);
    model.surfaces = {surface};
    model.pictures = {{"not really a picture", QSize(10, 5), false}};
    model.totals = row.totals;
    return model;
}

QByteArray between(const QByteArray& text, const QByteArray& begin, const QByteArray& end) {
    const int from = text.indexOf(begin) + begin.size();
    return text.mid(from, text.indexOf(end, from) - from);
}

QByteArray hash(const QByteArray& text) {
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256).toBase64();
}

} // namespace

class TestHtmlPage : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void thePolicyAllowsJustWhatIsInThePage() {
        const PageModel model = sample();
        const QByteArray page = HtmlPage(model).singleFile();
        const QByteArray policy = between(page, "Content-Security-Policy\" content=\"", "\"");
        const QByteArray script = between(page, "<script>", "</script>");
        const QByteArray style = between(page, "<style>", "</style>");
        QCOMPARE(policy, "default-src 'none'; script-src 'sha256-" + hash(script) +
                             "'; style-src 'sha256-" + hash(style) +
                             "'; img-src data:; base-uri 'none'; form-action 'none'");
        QCOMPARE(page.count("<script>"), 1);
        QCOMPARE(page.count("<style>"), 1);
    }

    void theTitleIsDataAndNoPlaceToFill() {
        const PageModel model = sample();
        const QByteArray page = HtmlPage(model).singleFile();
        QVERIFY(page.contains("<title>{{policy}} &lt;title&gt;</title>"));
    }

    void dataIsReadBack() {
        const PageModel model = sample();
        const QByteArray page = HtmlPage(model).singleFile();
        const QJsonObject data =
            QJsonDocument::fromJson(between(page, "id=\"data\">", "</script>")).object();
        QCOMPARE(data.value(QStringLiteral("title")).toString(), model.title);
        QCOMPARE(data.value(QStringLiteral("nodes")).toArray().size(), 1);
        QVERIFY(!data.contains(QStringLiteral("files")));
    }

    void equalModelsGiveEqualPages() {
        const PageModel model = sample();
        QCOMPARE(HtmlPage(model).singleFile(), HtmlPage(sample()).singleFile());
    }

    void besideFilesNothingIsInline() {
        const PageModel model = sample();
        const QByteArray page =
            HtmlPage(model).indexFile(PictureLinks(QStringList{QStringLiteral("pictures/a.png")}));
        QVERIFY(page.contains("href=\"pictures/a.png\""));
        QVERIFY(!page.contains("<style"));
        QVERIFY(!page.contains("data:"));
        QVERIFY(!page.contains("<script>"));
        QCOMPARE(page.count("<script src="), 2);
    }

    void withFilesAndNoPictureNothingIsTakenForInline() {
        PageModel model = sample();
        model.pictures.clear();
        model.surfaces.first().picture = PageModel::PictureId::None;
        const QByteArray data = HtmlPage(model).dataFile(PictureLinks(QStringList()));
        QVERIFY(data.startsWith("globalThis.uicovData = {"));
        QVERIFY(data.contains("\"files\":[]"));
    }

    void pagesAreKnownByTheirBeginning() {
        const PageModel model = sample();
        constexpr int read = 4096;
        QVERIFY(HtmlPage::isPage(HtmlPage(model).singleFile().left(read)));
        QVERIFY(HtmlPage::isPage(
            HtmlPage(model).indexFile(PictureLinks({QStringLiteral("a.png")})).left(read)));
        QVERIFY(!HtmlPage::isPage("<!DOCTYPE html><title>uicov html</title>"));
        QVERIFY(!HtmlPage::isPage(QByteArray()));
    }

    void theSourcesBuildNoMarkupFromText() {
        const QByteArray script = HtmlPage::script();
        for (const char* const word : {"innerHTML", "outerHTML", "insertAdjacentHTML", "eval(",
                                       "document.write", "http://", "https://"}) {
            QByteArray known = script;
            known.replace("http://www.w3.org/2000/svg", "");
            QVERIFY2(!known.contains(word), word);
        }
        QVERIFY(!HtmlPage::styleSheet().contains("url("));
    }
};

QTEST_GUILESS_MAIN(TestHtmlPage)

#include "tst_htmlpage.moc"

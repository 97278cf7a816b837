// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QDesktopServices>
#include <QLabel>
#include <QTest>
#include <QTextBrowser>

using namespace TestLib;

/** Opens links in place of the desktop's programs. */
class Opener : public QObject {
    Q_OBJECT

public:
    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl& url) { opened.append(url); }
};

class tst_LinkUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theAnchorsOfALabelAreKnownAtOnce();
    void theLinkThatWasFollowedCounts();
    void byKey();
    void aLabelThatOpensItsLinksItself();
    void aBrowserFollowsItsLinks();
    void whatTheProgramEmitsDoesNotCount();
    void manyAnchorsAreData();
};

void tst_LinkUses::theAnchorsOfALabelAreKnownAtOnce() {
    UsesFixture fixture;
    fixture.add(new QLabel(text("See <a href=\"one\">the <b>first</b> page</a> or "
                                "<a href=\"two\">two</a>.")));
    fixture.add(new QLabel(text("no <b>links</b> here")));
    fixture.add(new QLabel(text("<a>an anchor that leads nowhere</a>")));
    fixture.show();
    QCOMPARE(fixture.probe().count(text("Link")), 2);
    QVERIFY(fixture.probe().find(text("Link"), text("the first page")) != nullptr);
    QVERIFY(fixture.probe().find(text("Link"), text("two")) != nullptr);
}

void tst_LinkUses::theLinkThatWasFollowedCounts() {
    UsesFixture fixture;
    auto* const label =
        fixture.add(new QLabel(text("<a href=\"one\">first</a><br/><a href=\"two\">second</a>")));
    fixture.show();
    const int half = label->fontMetrics().height();
    const int top = (label->height() - label->sizeHint().height()) / 2;
    QCOMPARE(fixture.counted([&] { click(label, QPoint(8, top + half / 2)); }),
             lines({"first followed"}));
    QCOMPARE(fixture.counted([&] { click(label, QPoint(8, top + half + half / 2)); }),
             lines({"second followed"}));
    QCOMPARE(fixture.counted([&] { click(label, QPoint(label->width() - 3, top + half / 2)); }),
             QStringList());
}

void tst_LinkUses::byKey() {
    UsesFixture fixture;
    auto* const label = fixture.add(new QLabel(text("<a href=\"one\">first</a>")));
    label->setTextInteractionFlags(Qt::TextBrowserInteraction);
    fixture.show();
    QCOMPARE(fixture.counted([&] {
        label->setFocus();
        key(Qt::Key_Tab); // to its first link
        key(Qt::Key_Return);
    }),
             lines({"first followed"}));
}

void tst_LinkUses::aLabelThatOpensItsLinksItself() {
    Opener opener;
    QDesktopServices::setUrlHandler(text("test"), &opener, "open");
    UsesFixture fixture;
    auto* const label = fixture.add(new QLabel(text("<a href=\"test:page\">page</a>")));
    label->setOpenExternalLinks(true);
    fixture.show();
    QCOMPARE(fixture.counted([&] {
        moveTo(label, QPoint(8, label->height() / 2));
        click(label, QPoint(8, label->height() / 2));
    }),
             lines({"page followed"}));
    QCOMPARE(opener.opened.size(), 1);
    QDesktopServices::unsetUrlHandler(text("test"));
}

void tst_LinkUses::aBrowserFollowsItsLinks() {
    UsesFixture fixture;
    auto* const browser = fixture.add(new QTextBrowser);
    browser->setHtml(text("<a href=\"#below\">below</a>"));
    fixture.show();
    QVERIFY(fixture.probe().find(text("Link"), text("below")) != nullptr);
    const QPoint at = browser->cursorRect().center() + QPoint(8, 0);
    QCOMPARE(fixture.counted([&] { click(browser->viewport(), at); }), lines({"below followed"}));
}

void tst_LinkUses::whatTheProgramEmitsDoesNotCount() {
    UsesFixture fixture;
    auto* const label = fixture.add(new QLabel(text("<a href=\"one\">first</a>")));
    fixture.show();
    click(label, QPoint(8, label->height() / 2));
    QCOMPARE(fixture.take(), lines({"first followed"}));
    Q_EMIT label->linkActivated(text("one"));
    QCOMPARE(fixture.take(), QStringList());
}

void tst_LinkUses::manyAnchorsAreData() {
    UsesFixture fixture;
    auto* const browser = fixture.add(new QTextBrowser);
    QString page;
    for (int i = 0; i < 60; ++i) {
        page += text("<p><a href=\"#%1\">number %1</a></p>").arg(i);
    }
    browser->setHtml(page);
    fixture.show();
    QCOMPARE(fixture.probe().count(text("Link")), 50);
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_LinkUses test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_linkuses.moc"

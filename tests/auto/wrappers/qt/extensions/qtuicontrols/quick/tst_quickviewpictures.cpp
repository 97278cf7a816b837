// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickscene.h"
#include "testlib/surveyprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QImage>
#include <QTest>

using namespace Vorsk::UIControls;
using TestLib::QuickScene;
using TestLib::SurveyProbe;

namespace {

constexpr auto controls2 = QuickScene::Imports::Controls2;

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

TrackerOptions pictures(const QStringList& redacted = {}) {
    TrackerOptions options;
    options.takesPictures = true;
    options.redacted = redacted;
    return options;
}

QImage pictureOf(SurveyProbe& probe, const QObject* object) {
    const UIElement* const element = probe.element(object);
    return element == nullptr ? QImage() : element->image();
}

QRgb middleOf(const QImage& image) {
    return image.isNull() ? 0 : image.pixel(image.rect().center()) | 0xff000000U;
}

} // namespace

class tst_QuickViewPictures : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aViewHasAPictureOnceItIsShown();
    void thereAreNoneUnlessTheyAreAskedFor();
    void aPopupHasItsPartOfTheWindow();
    void aPageHasAPictureOfItsOwnWhenItIsShown();
    void aPageThatSlidesInIsPicturedWhenItIsThere();
    void whatAPictureShowsHasItsPlace();
    void rowsThatAPictureShowsHaveTheirPlaces();
    void whatAPictureCutsOffHasNoPlace();
    void whatHidesItsInputIsBlack();
    void whatIsRedactedIsBlack_data();
    void whatIsRedactedIsBlack();
    void nothingIsRenderedOntoNothing();
};

void tst_QuickViewPictures::aViewHasAPictureOnceItIsShown() {
    SurveyProbe probe(pictures());
    QuickScene scene("Rectangle { width: 400; height: 300; color: 'red' }");
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(probe, scene.window()).isNull());
    QCOMPARE(pictureOf(probe, scene.window()).size(), QSize(400, 300));
    QCOMPARE(middleOf(pictureOf(probe, scene.window())), qRgb(255, 0, 0));
}

void tst_QuickViewPictures::thereAreNoneUnlessTheyAreAskedFor() {
    SurveyProbe with(pictures());
    SurveyProbe without;
    QuickScene scene("Rectangle { width: 400; height: 300; color: 'red' }");
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(with, scene.window()).isNull());
    QVERIFY(pictureOf(without, scene.window()).isNull());
}

void tst_QuickViewPictures::aPopupHasItsPartOfTheWindow() {
    SurveyProbe probe(pictures());
    QuickScene scene("Item { width: 400; height: 300; Popup { objectName: 'popup'; x: 10; y: 20; "
                     "width: 50; height: 40; "
                     "background: Rectangle { color: 'blue' } } }",
                     controls2);
    QVERIFY(scene.show());
    QObject* const popup = scene.object("popup");
    QTRY_VERIFY(probe.element(popup) != nullptr);
    QVERIFY(pictureOf(probe, popup).isNull());
    QMetaObject::invokeMethod(popup, "open");
    QTRY_VERIFY(!pictureOf(probe, popup).isNull());
    QCOMPARE(pictureOf(probe, popup).size(), QSize(50, 40));
    QCOMPARE(middleOf(pictureOf(probe, popup)), qRgb(0, 0, 255));
    QCOMPARE(probe.element(popup)->geometry().rect(), QRect(10, 20, 50, 40));
}

void tst_QuickViewPictures::aPageHasAPictureOfItsOwnWhenItIsShown() {
    SurveyProbe probe(pictures());
    QuickScene scene("StackLayout { objectName: 'stack'; anchors.fill: parent; "
                     "Rectangle { objectName: 'a'; color: 'red' } Rectangle { objectName: 'b'; "
                     "color: 'blue' } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(middleOf(pictureOf(probe, scene.item("a"))), qRgb(255, 0, 0));
    QVERIFY(pictureOf(probe, scene.item("b")).isNull());
    scene.item("stack")->setProperty("currentIndex", 1);
    QTRY_VERIFY(!pictureOf(probe, scene.item("b")).isNull());
    QCOMPARE(middleOf(pictureOf(probe, scene.item("b"))), qRgb(0, 0, 255));
    QCOMPARE(middleOf(pictureOf(probe, scene.item("a"))), qRgb(255, 0, 0));
}

void tst_QuickViewPictures::whatAPictureShowsHasItsPlace() {
    SurveyProbe probe(pictures());
    QuickScene scene("Item { MouseArea { objectName: 'a'; x: 10; y: 20; width: 30; height: 40 } "
                     "MouseArea { objectName: 'b'; visible: false; width: 30; height: 40 } }");
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(probe, scene.window()).isNull());
    QCOMPARE(probe.element(scene.item("a"))->geometry().rect(), QRect(10, 20, 30, 40));
    QVERIFY(!probe.element(scene.item("b"))->geometry().isValid());
}

void tst_QuickViewPictures::aPageThatSlidesInIsPicturedWhenItIsThere() {
    SurveyProbe probe(pictures());
    QuickScene scene("SwipeView { objectName: 'view'; anchors.fill: parent; "
                     "Rectangle { objectName: 'a'; color: 'red' } Rectangle { objectName: 'b'; "
                     "color: 'blue' } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(probe, scene.item("a")).isNull());
    const QSize size = pictureOf(probe, scene.item("a")).size();
    scene.item("view")->setProperty("currentIndex", 1);
    QTRY_VERIFY(!pictureOf(probe, scene.item("b")).isNull());
    QCOMPARE(pictureOf(probe, scene.item("b")).size(), size);
    QCOMPARE(probe.element(scene.item("b"))->geometry().rect().topLeft(), QPoint(0, 0));
    const QImage picture = pictureOf(probe, scene.item("b"));
    QCOMPARE(picture.pixel(0, 0) | 0xff000000U, qRgb(0, 0, 255));
}

void tst_QuickViewPictures::rowsThatAPictureShowsHaveTheirPlaces() {
    SurveyProbe probe(pictures());
    QuickScene scene("SwipeView { objectName: 'view'; anchors.fill: parent; Item {} "
                     "Column { objectName: 'page'; ListView { width: 100; height: 90; "
                     "model: ['a', 'b', 'c']; delegate: ItemDelegate { objectName: modelData; "
                     "width: 100; height: 30; text: modelData } } } }",
                     controls2);
    QVERIFY(scene.show());
    scene.item("view")->setProperty("currentIndex", 1);
    QTRY_VERIFY(!pictureOf(probe, scene.item("page")).isNull());
    int y = 0;
    for (const char* const row : {"a", "b", "c"}) {
        QCOMPARE(probe.element(scene.item(row))->geometry().rect(), QRect(0, y, 100, 30));
        y += 30;
    }
}

void tst_QuickViewPictures::whatAPictureCutsOffHasNoPlace() {
    SurveyProbe probe(pictures());
    QuickScene scene("Item { Flickable { x: 10; y: 10; width: 100; height: 50; clip: true; "
                     "MouseArea { objectName: 'in'; width: 30; height: 40 } "
                     "MouseArea { objectName: 'cut'; x: 40; y: 30; width: 30; height: 40 } "
                     "MouseArea { objectName: 'out'; y: 60; width: 30; height: 40 } } }");
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(probe, scene.window()).isNull());
    QCOMPARE(probe.element(scene.item("in"))->geometry().rect(), QRect(10, 10, 30, 40));
    QCOMPARE(probe.element(scene.item("cut"))->geometry().rect(), QRect(50, 40, 30, 20));
    QVERIFY(probe.element(scene.item("out"))->geometry().rect().isEmpty());
}

void tst_QuickViewPictures::whatHidesItsInputIsBlack() {
    SurveyProbe probe(pictures());
    QuickScene scene(
        "Rectangle { width: 400; height: 300; color: 'red'; "
        "TextInput { x: 100; y: 100; width: 200; height: 100; echoMode: TextInput.Password } }");
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(probe, scene.window()).isNull());
    const QImage picture = pictureOf(probe, scene.window());
    QCOMPARE(middleOf(picture), qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(101, 101) | 0xff000000U, qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(298, 198) | 0xff000000U, qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(98, 98) | 0xff000000U, qRgb(255, 0, 0));
    QCOMPARE(picture.pixel(302, 202) | 0xff000000U, qRgb(255, 0, 0));
}

void tst_QuickViewPictures::whatIsRedactedIsBlack_data() {
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isBlack");
    QTest::newRow("object name") << text("sec*") << true;
    QTest::newRow("id") << text("ident?") << true;
    QTest::newRow("class") << text("QQuickMouseArea") << true;
    QTest::newRow("part of a name") << text("sec") << false;
}

void tst_QuickViewPictures::whatIsRedactedIsBlack() {
    QFETCH(QString, pattern);
    QFETCH(bool, isBlack);
    SurveyProbe probe(pictures({pattern}));
    QuickScene scene("Rectangle { width: 400; height: 300; color: 'red'; "
                     "MouseArea { id: ident1; objectName: 'secret'; x: 100; y: 100; width: 200; "
                     "height: 100 } }");
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(probe, scene.window()).isNull());
    QCOMPARE(middleOf(pictureOf(probe, scene.window())), isBlack ? qRgb(0, 0, 0) : qRgb(255, 0, 0));
}

void tst_QuickViewPictures::nothingIsRenderedOntoNothing() {
    SurveyProbe probe(pictures());
    QuickScene scene(
        "Item { width: 400; height: 300; "
        "Popup { objectName: 'empty'; width: 0; height: 0; visible: true; modal: false } "
        "Popup { objectName: 'popup'; width: 10; height: 10; visible: true; modal: false } }",
        controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(!pictureOf(probe, scene.object("popup")).isNull());
    QVERIFY(pictureOf(probe, scene.object("empty")).isNull());
}

QTEST_MAIN(tst_QuickViewPictures)
#include "tst_quickviewpictures.moc"

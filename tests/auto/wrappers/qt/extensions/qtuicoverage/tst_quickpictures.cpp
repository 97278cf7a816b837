// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "qtuicoverage/quickgrab.h"
#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"
#include "tracking/grab.h"
#include "uiabstraction/uielement.h"

#include <QQuickRenderControl>
#include <QTest>

#include <limits>

using TestLib::QuickProbe;
using TestLib::QuickScene;
using Vorsk::UICoverage::copyImage;
using Vorsk::UICoverage::grabWindow;

using Imports = QuickScene::Imports;
using Pictures = QuickProbe::Pictures;

namespace {

constexpr int largest = std::numeric_limits<int>::max();

/** Four squares of 10 x 10 pixels in different colours. */
QImage fourColours() {
    QImage image(20, 20, QImage::Format_RGB32);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            image.setPixelColor(x, y, QColor(x < 10 ? 255 : 0, y < 10 ? 255 : 0, 128));
        }
    }
    return image;
}

const char redAndGreen[] = "Rectangle { width: 400; height: 300; color: '#ff0000';"
                           " Rectangle { objectName: 'inner'; x: 50; y: 60; width: 30; height: 20;"
                           "  color: '#00ff00' } }";

} // namespace

/** Pictures of Qt Quick windows, on a display. */
class tst_QuickPictures : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void grabWindowShowsTheWindow();
    void grabWindowOfAWindowBeyondReasonIsNull();
    void grabWindowOfAnEmptyWindowIsNullAndSilent();
    void copyImageGivesWhatQtGives_data();
    void copyImageGivesWhatQtGives();
    void copyImageOfTheWholeSharesItsPixels();
    void copyImageOfANullImageIsNull();
    void copyImageBeyondReasonIsNull_data();
    void copyImageBeyondReasonIsNull();
    void keyPressPicturesAnUnknownWindowOnce();
    void pressPicturesAWindowOnce();
    void windowIsPicturedBeforeTheClickCounts();
    void focusInCutsPicturesOutOfTheWindows();
    void focusInReplacesPictures();
    void itemOutsideThePictureGetsItAllTheSame();
    void pressOnAnItemPicturesTheWholeScene();
    void keyPressOnAnItemPicturesTheWholeScene();
    void pressOnAnItemInAPopupPicturesThePopup();
    void withoutPicturesNoneIsMade();
};

void tst_QuickPictures::grabWindowShowsTheWindow() {
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    const QImage image = grabWindow(scene.window());
    QCOMPARE(image.size(), QSize(400, 300));
    QCOMPARE(image.pixelColor(0, 0), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(50, 60), QColor(0, 255, 0));
    QCOMPARE(image.pixelColor(79, 79), QColor(0, 255, 0));
    QCOMPARE(image.pixelColor(80, 80), QColor(255, 0, 0));
}

void tst_QuickPictures::grabWindowOfAWindowBeyondReasonIsNull() {
    QQuickWindow window;
    window.resize(10000, 10000);
    QVERIFY(grabWindow(&window).isNull());
}

void tst_QuickPictures::grabWindowOfAnEmptyWindowIsNullAndSilent() {
    QQuickRenderControl control; // as a QQuickWidget has one
    QQuickWindow window(&control);
    control.initialize(nullptr);
    QVERIFY(window.size().isEmpty());
    QVERIFY(grabWindow(&window).isNull());
    window.resize(20, 0);
    QVERIFY(grabWindow(&window).isNull());
    window.resize(20, 10);
    QVERIFY(!grabWindow(&window).isNull());
}

void tst_QuickPictures::copyImageGivesWhatQtGives_data() {
    QTest::addColumn<QRect>("rectangle");
    QTest::newRow("inside") << QRect(5, 5, 10, 10);
    QTest::newRow("over the edge") << QRect(15, 15, 10, 10);
    QTest::newRow("over the first edge") << QRect(-5, -5, 10, 10);
    QTest::newRow("around it") << QRect(-5, -5, 40, 50);
    QTest::newRow("to the right of it") << QRect(20, 0, 7, 7);
    QTest::newRow("far below it") << QRect(0, 1000000, 7, 7);
    QTest::newRow("before it") << QRect(-100, -7, 7, 7);
    QTest::newRow("the whole") << QRect(0, 0, 20, 20);
    QTest::newRow("no area at the origin, which is the whole") << QRect(0, 0, 0, 0);
    QTest::newRow("no area elsewhere, which is the whole") << QRect(5, 5, 0, 0);
    QTest::newRow("no width") << QRect(5, 5, 0, 4);
    QTest::newRow("negative size") << QRect(5, 5, -4, -4);
}

void tst_QuickPictures::copyImageGivesWhatQtGives() {
    QFETCH(QRect, rectangle);
    const QImage image = fourColours();
    QCOMPARE(copyImage(image, rectangle), image.copy(rectangle));
}

void tst_QuickPictures::copyImageOfTheWholeSharesItsPixels() {
    const QImage image = fourColours();
    QCOMPARE(copyImage(image, image.rect()).cacheKey(), image.cacheKey());
}

void tst_QuickPictures::copyImageOfANullImageIsNull() {
    QVERIFY(copyImage(QImage(), QRect(0, 0, 10, 10)).isNull());
    QVERIFY(copyImage(QImage(), QRect()).isNull());
}

void tst_QuickPictures::copyImageBeyondReasonIsNull_data() {
    QTest::addColumn<QRect>("rectangle");
    const auto corners = [](int left, int top, int right, int bottom) {
        return QRect(QPoint(left, top), QPoint(right, bottom));
    };
    QTest::newRow("one row too many") << QRect(0, 0, 8192, 8193);
    QTest::newRow("as large as numbers are") << corners(0, 0, largest - 1, largest - 1);
    QTest::newRow("from one end to the other") << corners(-largest, -largest, largest, largest);
    QTest::newRow("very wide") << corners(-largest, 0, largest, 0);
}

void tst_QuickPictures::copyImageBeyondReasonIsNull() {
    QFETCH(QRect, rectangle);
    QVERIFY(copyImage(fourColours(), rectangle).isNull());
}

void tst_QuickPictures::keyPressPicturesAnUnknownWindowOnce() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.pressKey(scene.window());
    QVERIFY(probe.element(scene.item("inner")));
    QCOMPARE(probe.element(scene.window())->image(), scene.window()->grabWindow());
    QCOMPARE(probe.takeRecords(5).join(QLatin1Char('\n')),
             QStringLiteral("kind 5 imageChanged #1 image 400x300"));
    probe.pressKey(scene.window());
    probe.press(scene.window());
    QCOMPARE(probe.takeRecords(5), QStringList());
}

void tst_QuickPictures::pressPicturesAWindowOnce() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.show(scene.window());
    QCOMPARE(probe.takeRecords(5), QStringList());
    probe.press(scene.window());
    QCOMPARE(probe.takeRecords(5).size(), 1);
    probe.press(scene.window());
    probe.pressKey(scene.window());
    QCOMPARE(probe.takeRecords(5), QStringList());
}

void tst_QuickPictures::windowIsPicturedBeforeTheClickCounts() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.tracker().setTakeScreenshotsOfElements(false);
    probe.focusIn(scene.window());
    probe.tracker().setTakeScreenshotsOfElements(true);
    probe.takeRecords();
    probe.press(scene.window(), QPointF(399, 299));
    QCOMPARE(probe.takeRecords().join(QLatin1Char('\n')),
             QStringLiteral("kind 5 imageChanged #1 image 400x300\n"
                            "kind 11 usageIncreased #1 clicked=1\n"
                            "kind 11 usageIncreased #2 clicked=1\n"
                            "kind 11 usageIncreased #3 clicked=1"));
}

void tst_QuickPictures::focusInCutsPicturesOutOfTheWindows() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.pressKey(scene.window());
    probe.takeRecords();
    probe.focusIn(scene.window());
    QCOMPARE(probe.takeRecords(5).join(QLatin1Char('\n')),
             QStringLiteral("kind 5 imageChanged #2 image 400x300\n"
                            "kind 5 imageChanged #3 image 400x300\n"
                            "kind 5 imageChanged #4 image 30x20"));
    QImage green(30, 20, QImage::Format_RGB32);
    green.fill(QColor(0, 255, 0));
    QCOMPARE(probe.element(scene.item("inner"))->image().convertToFormat(QImage::Format_RGB32),
             green);
}

void tst_QuickPictures::focusInReplacesPictures() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.pressKey(scene.window());
    probe.focusIn(scene.window());
    // It moves onto what was red when the window was pictured, and no new picture is taken.
    scene.item("inner")->setX(200);
    probe.focusIn(scene.window());
    QCOMPARE(probe.element(scene.item("inner"))->image().pixelColor(0, 0), QColor(255, 0, 0));
}

void tst_QuickPictures::itemOutsideThePictureGetsItAllTheSame() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.pressKey(scene.window());
    scene.item("inner")->setX(1000);
    probe.focusIn(scene.window());
    const QImage image = probe.element(scene.item("inner"))->image();
    QCOMPARE(image.size(), QSize(30, 20));
    QCOMPARE(image, probe.element(scene.window())->image().copy(QRect(1000, 60, 30, 20)));
}

void tst_QuickPictures::pressOnAnItemPicturesTheWholeScene() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.show(scene.window());
    probe.takeRecords();
    probe.press(scene.item("inner"));
    QCOMPARE(probe.takeRecords().join(QLatin1Char('\n')),
             QStringLiteral("kind 5 imageChanged #2 image 400x300"));
    QCOMPARE(probe.element(scene.window()->contentItem())->image(), scene.window()->grabWindow());
    QVERIFY(probe.element(scene.item("inner"))->image().isNull());
    probe.press(scene.root());
    QCOMPARE(probe.takeRecords(), QStringList());
}

void tst_QuickPictures::keyPressOnAnItemPicturesTheWholeScene() {
    QuickProbe probe(Pictures::On);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.show(scene.window());
    probe.takeRecords();
    probe.pressKey(scene.item("inner"));
    probe.pressKey(scene.item("inner"));
    QCOMPARE(probe.takeRecords().join(QLatin1Char('\n')),
             QStringLiteral("kind 5 imageChanged #2 image 400x300"));
}

void tst_QuickPictures::pressOnAnItemInAPopupPicturesThePopup() {
    QuickProbe probe(Pictures::On);
    QuickScene scene("ApplicationWindow { width: 300; height: 200; color: '#ffffff';"
                     " T.Popup { objectName: 'popup'; x: 20; y: 30; width: 100; height: 50;"
                     "  background: Rectangle { color: '#0000ff' }"
                     "  T.Button { objectName: 'inside'; width: 40; height: 20 } } }",
                     Imports::Templates2);
    QVERIFY(scene.show());
    QVERIFY(QMetaObject::invokeMethod(scene.object("popup"), "open"));
    probe.show(scene.window());
    QQuickItem* popupItem = scene.item("inside");
    while (qstrcmp(popupItem->metaObject()->className(), "QQuickPopupItem") != 0) {
        popupItem = popupItem->parentItem();
    }
    probe.takeRecords();
    probe.press(scene.item("inside"));
    QCOMPARE(probe.takeRecords(5).size(), 1);
    QVERIFY(probe.element(scene.item("inside"))->image().isNull());
    const QImage image = probe.element(popupItem)->image();
    QCOMPARE(image.size(), QSize(100, 50));
    QCOMPARE(image.pixelColor(0, 0), QColor(0, 0, 255));
    QCOMPARE(image.pixelColor(99, 49), QColor(0, 0, 255));
    probe.press(scene.item("inside"));
    QCOMPARE(probe.takeRecords(5), QStringList());
}

void tst_QuickPictures::withoutPicturesNoneIsMade() {
    QuickProbe probe(Pictures::Off);
    QuickScene scene(redAndGreen);
    QVERIFY(scene.show());
    probe.press(scene.window());
    probe.pressKey(scene.window());
    probe.press(scene.root());
    probe.focusIn(scene.window());
    QCOMPARE(probe.takeRecords(5), QStringList());
    QVERIFY(probe.element(scene.window())->image().isNull());
}

QTEST_MAIN(tst_QuickPictures)

#include "tst_quickpictures.moc"

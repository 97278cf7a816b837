// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

class tst_ViewPictures : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aViewHasAPictureWhenItHasSettled();
    void withoutPicturesNoneAreTaken();
    void controlsHaveTheirPlacesInAPicture();
    void hiddenControlsHaveNoPlace();
    void whatIsScrolledOutOfSightHasNoPlaceAnyMore();
    void commandsAndTabsHaveTheirPlaces();
    void eachPageHasItsOwn();
    void aPictureIsTakenAnewWhenMuchHasChanged();
    void aPictureIsNotTakenAnewForLittle();
    void passwordsAreBlack();
    void namedWidgetsAreBlack();
    void namedClassesAreBlackInPagesAndWindows();
    void whatIsNotPaintedIsBlack();
    void aMenusPictureIsTaken();
    void inputTakesWhatIsDueFirst();
    void aViewThatDiesWhileItIsPaintedIsLeftAlone();
};

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void showAndWait(QWidget& window) {
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

TrackerOptions pictures(const QStringList& redacted = {}) {
    TrackerOptions options;
    options.takesPictures = true;
    options.redacted = redacted;
    return options;
}

/** Of one colour, which it may change. */
class Patch : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
    QColor colour = Qt::red;

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter(this).fillRect(rect(), colour);
    }
};

class ClaimsToBeOpaque : public QWidget {
    Q_OBJECT

public:
    ClaimsToBeOpaque() {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
    }
};

class DiesAsItIsRendered : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        // Painted into its window first, then into a picture.
        if (++m_painted == 2) {
            deleteLater();
            hide();
        }
    }

private:
    int m_painted = 0;
};

} // namespace

void tst_ViewPictures::aViewHasAPictureWhenItHasSettled() {
    ControlsProbe probe(pictures());
    Patch window;
    window.resize(200, 100);
    showAndWait(window);
    QTRY_COMPARE(probe.element(&window)->image().size(), QSize(200, 100));
    QCOMPARE(probe.element(&window)->image().pixelColor(100, 50), QColor(Qt::red));
    QCOMPARE(probe.element(&window)->geometry().rect(), QRect(0, 0, 200, 100));
}

void tst_ViewPictures::withoutPicturesNoneAreTaken() {
    ControlsProbe probe;
    ControlsProbe* const known = &probe;
    QTabWidget window;
    window.addTab(new Patch, text("One"));
    window.addTab(new Patch, text("Two"));
    showAndWait(window);
    window.setCurrentIndex(1);
    QTRY_COMPARE(known->usage(known->find(text("Page"), text("Two")), "seen"), 1);
    QVERIFY(known->element(&window)->image().isNull());
    QVERIFY(known->find(text("Page"), text("Two"))->image().isNull());
}

void tst_ViewPictures::controlsHaveTheirPlacesInAPicture() {
    ControlsProbe probe(pictures());
    QWidget window;
    QWidget panel(&window);
    panel.setGeometry(10, 20, 100, 100);
    QPushButton button(&panel);
    button.setGeometry(1, 2, 30, 20);
    window.resize(200, 200);
    showAndWait(window);
    QTRY_COMPARE(probe.element(&button)->geometry().rect(), QRect(11, 22, 30, 20));
}

void tst_ViewPictures::whatIsScrolledOutOfSightHasNoPlaceAnyMore() {
    ControlsProbe probe(pictures());
    QScrollArea window;
    window.setFrameShape(QFrame::NoFrame);
    window.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const content = new Patch;
    content->resize(100, 400);
    QPushButton first(content);
    QPushButton cut(content);
    QPushButton last(content);
    first.setGeometry(0, 0, 50, 20);
    cut.setGeometry(0, 90, 50, 20);
    last.setGeometry(0, 350, 50, 20);
    window.setWidget(content);
    window.resize(100, 100);
    showAndWait(window);
    QTRY_COMPARE(probe.element(&first)->geometry().rect(), QRect(0, 0, 50, 20));
    QCOMPARE(probe.element(&cut)->geometry().rect(), QRect(0, 90, 50, 10));
    QVERIFY(probe.element(&last)->geometry().rect().isEmpty());
    window.verticalScrollBar()->setValue(300);
    content->colour = Qt::blue;
    window.viewport()->update();
    content->update();
    QTRY_COMPARE(probe.element(&last)->geometry().rect(), QRect(0, 50, 50, 20));
    QVERIFY(probe.element(&first)->geometry().rect().isEmpty());
}

void tst_ViewPictures::hiddenControlsHaveNoPlace() {
    ControlsProbe probe(pictures());
    QWidget window;
    QPushButton button(&window);
    button.hide();
    window.resize(200, 200);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    QVERIFY(probe.element(&button)->geometry().rect().isEmpty());
}

void tst_ViewPictures::commandsAndTabsHaveTheirPlaces() {
    ControlsProbe probe(pictures());
    QMainWindow window;
    QToolBar* const bar = window.addToolBar(text("Main"));
    QAction* const cut = bar->addAction(text("Cut"));
    auto* const tabs = new QTabWidget;
    tabs->addTab(new QWidget, text("One"));
    tabs->addTab(new QWidget, text("Two"));
    window.setCentralWidget(tabs);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    const QWidget* const button = bar->widgetForAction(cut);
    QCOMPARE(probe.element(cut)->geometry().rect(),
             QRect(button->mapTo(&window, QPoint(0, 0)), button->size()));
    const QRect tab = tabs->tabBar()->tabRect(1);
    QCOMPARE(probe.find(text("Tab"), text("Two"))->geometry().rect(),
             tab.translated(tabs->tabBar()->mapTo(&window, QPoint(0, 0))));
}

void tst_ViewPictures::eachPageHasItsOwn() {
    ControlsProbe probe(pictures());
    QTabWidget window;
    auto* const one = new Patch;
    auto* const two = new Patch;
    two->colour = Qt::blue;
    window.addTab(one, text("One"));
    window.addTab(two, text("Two"));
    window.resize(200, 200);
    showAndWait(window);
    QTRY_COMPARE(probe.element(one)->image().size(), one->size());
    QCOMPARE(probe.element(one)->image().pixelColor(5, 5), QColor(Qt::red));
    QVERIFY(probe.element(two)->image().isNull());
    window.setCurrentIndex(1);
    QTRY_COMPARE(probe.element(two)->image().size(), two->size());
    QCOMPARE(probe.element(two)->image().pixelColor(5, 5), QColor(Qt::blue));
}

void tst_ViewPictures::aPictureIsTakenAnewWhenMuchHasChanged() {
    ControlsProbe probe(pictures());
    Patch window;
    window.resize(200, 100);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    window.colour = Qt::blue;
    window.update();
    QTRY_COMPARE(probe.element(&window)->image().pixelColor(100, 50), QColor(Qt::blue));
}

void tst_ViewPictures::aPictureIsNotTakenAnewForLittle() {
    ControlsProbe probe(pictures());
    QWidget window;
    Patch small(&window);
    small.setGeometry(0, 0, 20, 20);
    Patch other(nullptr);
    window.resize(200, 200);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    small.colour = Qt::blue;
    small.update();
    // Another view's picture is due at the same time, and comes.
    showAndWait(other);
    QTRY_VERIFY(!probe.element(&other)->image().isNull());
    QCOMPARE(probe.element(&window)->image().pixelColor(5, 5), QColor(Qt::red));
}

void tst_ViewPictures::passwordsAreBlack() {
    ControlsProbe probe(pictures());
    QWidget window;
    window.setStyleSheet(text("background: white"));
    QLineEdit edit(&window);
    edit.setGeometry(10, 10, 100, 30);
    edit.setEchoMode(QLineEdit::Password);
    edit.setText(text("secret"));
    window.resize(200, 100);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    const QImage picture = probe.element(&window)->image();
    for (const QPoint& point : {QPoint(10, 10), QPoint(60, 25), QPoint(109, 39)}) {
        QCOMPARE(picture.pixelColor(point), QColor(Qt::black));
    }
    QCOMPARE(picture.pixelColor(9, 9), QColor(Qt::white));
}

void tst_ViewPictures::namedWidgetsAreBlack() {
    ControlsProbe probe(pictures({text("account*")}));
    QWidget window;
    Patch panel(&window);
    panel.setObjectName(text("accountPanel"));
    panel.setGeometry(0, 0, 50, 50);
    Patch other(&window);
    other.setObjectName(text("myaccount"));
    other.setGeometry(50, 0, 50, 50);
    window.resize(100, 50);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    QCOMPARE(probe.element(&window)->image().pixelColor(25, 25), QColor(Qt::black));
    QCOMPARE(probe.element(&window)->image().pixelColor(75, 25), QColor(Qt::red));
}

void tst_ViewPictures::namedClassesAreBlackInPagesAndWindows() {
    ControlsProbe probe(pictures({text("Pa?ch")}));
    QTabWidget window;
    auto* const page = new QWidget;
    auto* const patch = new Patch(page);
    patch->setGeometry(0, 0, 20, 20);
    window.addTab(page, text("Page"));
    window.resize(200, 200);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    QTRY_VERIFY(!probe.element(page)->image().isNull());
    QCOMPARE(probe.element(page)->image().pixelColor(10, 10), QColor(Qt::black));
    const QPoint inWindow = patch->mapTo(&window, QPoint(10, 10));
    QCOMPARE(probe.element(&window)->image().pixelColor(inWindow), QColor(Qt::black));
}

void tst_ViewPictures::whatIsNotPaintedIsBlack() {
    ControlsProbe probe(pictures());
    ClaimsToBeOpaque window;
    window.resize(50, 50);
    showAndWait(window);
    QTRY_VERIFY(!probe.element(&window)->image().isNull());
    QImage black(window.size(), QImage::Format_RGB32);
    black.fill(Qt::black);
    QCOMPARE(probe.element(&window)->image().convertToFormat(black.format()), black);
}

void tst_ViewPictures::aMenusPictureIsTaken() {
    ControlsProbe probe(pictures());
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    QAction* const open = menu->addAction(text("Open"));
    showAndWait(window);
    menu->popup(QPoint(10, 10));
    QTRY_COMPARE(probe.element(menu)->image().size(), menu->size());
    QCOMPARE(probe.element(open)->geometry().rect(), menu->actionGeometry(open));
    menu->hide();
}

void tst_ViewPictures::inputTakesWhatIsDueFirst() {
    ControlsProbe probe(pictures());
    Patch window;
    window.resize(100, 100);
    showAndWait(window);
    // Before any timer has had its turn.
    QTest::mouseClick(&window, Qt::LeftButton);
    QVERIFY(!probe.element(&window)->image().isNull());
}

void tst_ViewPictures::aViewThatDiesWhileItIsPaintedIsLeftAlone() {
    ControlsProbe probe(pictures());
    QPointer<DiesAsItIsRendered> window = new DiesAsItIsRendered;
    window->resize(100, 100);
    showAndWait(*window);
    QTRY_VERIFY(window.isNull());
    QWidget other;
    showAndWait(other);
    QTRY_VERIFY(!probe.element(&other)->image().isNull());
}

QTEST_MAIN(tst_ViewPictures)
#include "tst_viewpictures.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <QTabletEvent>
#include <QTest>
#include <QTouchDevice>
#include <QTouchEvent>
#include <QWindow>

using namespace TestLib;

namespace {

/** Takes what its attributes and switches say. */
class Pad : public QWidget {
    Q_OBJECT

public:
    bool takesTouch = false;
    bool takesPen = false;
    bool takesMouse = false;

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::TouchBegin) {
            event->setAccepted(takesTouch);
            return takesTouch;
        }
        return QWidget::event(event);
    }
    void tabletEvent(QTabletEvent* event) override { event->setAccepted(takesPen); }
    void mousePressEvent(QMouseEvent* event) override { event->setAccepted(takesMouse); }
};

/** Leaves a pen to the mouse. */
class MousePad : public QWidget {
    Q_OBJECT

protected:
    void mousePressEvent(QMouseEvent*) override {}
};

QPoint inWindow(const QWidget* widget, const QPoint& at) {
    return widget->mapTo(widget->window(), at);
}

/** By the window, so that what nobody accepts becomes the mouse's. */
void touch(const QWidget* widget, const QPoint& from, const QPoint& to) {
    static QTouchDevice* const device = QTest::createTouchDevice();
    QWindow* const window = widget->window()->windowHandle();
    QTest::touchEvent(window, device).press(0, inWindow(widget, from), window);
    if (from != to) {
        QTest::touchEvent(window, device).move(0, inWindow(widget, (from + to) / 2), window);
        QTest::touchEvent(window, device).move(0, inWindow(widget, to), window);
    }
    QTest::touchEvent(window, device).release(0, inWindow(widget, to), window);
}

void touch(const QWidget* widget) {
    touch(widget, middleOf(widget), middleOf(widget));
}

bool sendPen(QWidget* widget, QEvent::Type type) {
    const QPointF at = inWindow(widget, middleOf(widget));
    QWindow* const window = widget->window()->windowHandle();
    QTabletEvent event(type, at, QPointF(window->mapToGlobal(at.toPoint())), QTabletEvent::Stylus,
                       QTabletEvent::Pen, type == QEvent::TabletRelease ? 0 : 1, 0, 0, 0, 0, 0,
                       Qt::NoModifier, 1, Qt::LeftButton,
                       type == QEvent::TabletRelease ? Qt::NoButton : Qt::LeftButton);
    event.setAccepted(false);
    QCoreApplication::sendEvent(window, &event);
    return event.isAccepted();
}

/** What a window system's plugin does: a pen that nobody wants is the mouse. */
void pen(QWidget* widget) {
    if (!sendPen(widget, QEvent::TabletPress)) {
        press(widget, middleOf(widget));
    }
    if (!sendPen(widget, QEvent::TabletRelease)) {
        release(widget, middleOf(widget));
    }
}

using Act = void (*)(QWidget*);

void byTouch(QWidget* widget) {
    touch(widget);
}

} // namespace

Q_DECLARE_METATYPE(Act)

class tst_TouchAndPen : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void controlsAreOperated_data();
    void controlsAreOperated();
    void aFingerMovesASlider();
    void nothingDisabledIsOperated_data();
    void nothingDisabledIsOperated();
    void anAreaIsPressedOnce_data();
    void anAreaIsPressedOnce();
    void whatIgnoresBothIsNoArea();
    void aPenIsTheMouseForWhatDoesNotKnowIt();
};

void tst_TouchAndPen::controlsAreOperated_data() {
    QTest::addColumn<Act>("act");
    QTest::newRow("touch") << Act(byTouch);
    QTest::newRow("pen") << Act(pen);
}

void tst_TouchAndPen::controlsAreOperated() {
    QFETCH(Act, act);
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton(text("OK")), "button");
    auto* const check = fixture.add(new QCheckBox(text("Check")), "check");
    auto* const line = fixture.add(new QLineEdit, "line");
    auto* const tabs = fixture.add(new QTabBar, "tabs");
    tabs->addTab(text("a tab with a long text"));
    tabs->setExpanding(true);
    auto* const list = fixture.add(new QListWidget, "list");
    list->addItems(lines({"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l"}));
    connect(button, &QPushButton::clicked, line, [line] { line->setText(text("set")); });
    fixture.show();
    QCOMPARE(fixture.counted([&] { act(button); }), lines({"button clicked"}));
    QCOMPARE(fixture.counted([&] { act(check); }), lines({"check checked"}));
    QCOMPARE(fixture.counted([&] { act(line); }), QStringList());
    QCOMPARE(fixture.counted([&] { act(tabs); }), lines({"tabs chosen"}));
    const QStringList chosen = fixture.counted([&] { act(list->viewport()); });
    QVERIFY2(chosen.contains(text("list chosen")), qPrintable(chosen.join(QLatin1Char(','))));
}

void tst_TouchAndPen::aFingerMovesASlider() {
    UsesFixture fixture;
    auto* const slider = fixture.add(new QSlider(Qt::Horizontal), "slider");
    fixture.show();
    QCOMPARE(fixture.counted([&] {
        touch(slider, QPoint(6, slider->height() / 2), QPoint(150, slider->height() / 2));
    }),
             lines({"slider moved"}));
}

void tst_TouchAndPen::nothingDisabledIsOperated_data() {
    controlsAreOperated_data();
}

void tst_TouchAndPen::nothingDisabledIsOperated() {
    QFETCH(Act, act);
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton(text("OK")), "button");
    auto* const pad = fixture.add(new Pad, "pad");
    pad->takesPen = true;
    pad->takesTouch = true;
    pad->setAttribute(Qt::WA_AcceptTouchEvents);
    button->setEnabled(false);
    pad->setEnabled(false);
    fixture.show();
    QCOMPARE(fixture.counted([&] {
        act(button);
        act(pad);
    }),
             QStringList());
}

void tst_TouchAndPen::anAreaIsPressedOnce_data() {
    QTest::addColumn<Act>("act");
    QTest::addColumn<bool>("takesItself");
    QTest::newRow("touch") << Act(byTouch) << true;
    QTest::newRow("touch that it leaves to the mouse") << Act(byTouch) << false;
    QTest::newRow("pen") << Act(pen) << true;
    QTest::newRow("pen that it leaves to the mouse") << Act(pen) << false;
}

void tst_TouchAndPen::anAreaIsPressedOnce() {
    QFETCH(Act, act);
    QFETCH(bool, takesItself);
    UsesFixture fixture;
    auto* const pad = fixture.add(new Pad, "pad");
    pad->setAttribute(Qt::WA_AcceptTouchEvents);
    pad->takesTouch = takesItself;
    pad->takesPen = takesItself;
    pad->takesMouse = !takesItself;
    fixture.show();
    QCOMPARE(fixture.counted([&] { act(pad); }), lines({"pad pressed"}));
    QCOMPARE(fixture.counted([&] { act(pad); }), lines({"pad pressed"}));
}

void tst_TouchAndPen::whatIgnoresBothIsNoArea() {
    UsesFixture fixture;
    auto* const outer = fixture.add(new MousePad, "outer");
    auto* const pad = new Pad;
    pad->setParent(outer);
    pad->setObjectName(text("pad"));
    pad->setGeometry(5, 5, 50, 50);
    fixture.show();
    QCOMPARE(fixture.counted([&] { pen(pad); }), lines({"outer pressed"}));
    QCOMPARE(fixture.counted([&] { touch(pad); }), lines({"outer pressed"}));
}

void tst_TouchAndPen::aPenIsTheMouseForWhatDoesNotKnowIt() {
    UsesFixture fixture;
    auto* const pad = fixture.add(new MousePad, "pad");
    fixture.show();
    QCOMPARE(fixture.counted([&] { pen(pad); }), lines({"pad pressed"}));
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_TouchAndPen test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_touchandpen.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QCheckBox>
#include <QFrame>
#include <QGraphicsObject>
#include <QGraphicsProxyWidget>
#include <QGraphicsRectItem>
#include <QGraphicsView>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTabBar>
#include <QTest>
#include <QTextBrowser>

using namespace TestLib;

namespace {

/** Takes presses, or only looks at them. */
template <class Base>
class Pressable : public Base {
public:
    bool isTaking = true;

protected:
    void mousePressEvent(QMouseEvent* event) override { event->setAccepted(isTaking); }
};

class Knob : public Pressable<QWidget> {
    Q_OBJECT
};

/** Eats presses for a widget that would ignore them. */
class Eater : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        return event->type() == QEvent::MouseButtonPress;
    }
};

class Piece : public QGraphicsObject {
    Q_OBJECT

public:
    QRectF boundingRect() const override { return {0, 0, 30, 30}; }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent*) override {}
};

class OwnTabs : public Pressable<QTabBar> {
    Q_OBJECT

protected:
    void mousePressEvent(QMouseEvent* event) override { QTabBar::mousePressEvent(event); }
};

} // namespace

class tst_AreaUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatTakesAPressIsAnArea();
    void whatPassesAPressOnIsNone();
    void aWidgetWhoseFilterTakesThePressIsAnArea();
    void aDisabledOneIsNone();
    void aWindowThatTakesPressesHasAnArea();
    void aScrollAreaTakesWhatItsViewportGets();
    void whatTakesPressesForQtIsNone_data();
    void whatTakesPressesForQtIsNone();
    void tabsOfAnOwnClassAreTabsOnly();
    void whatLiesInAGroupIsAnArea();
    void dragging();
    void graphicsItems();
    void aControlInAGraphicsScene();
};

void tst_AreaUses::whatTakesAPressIsAnArea() {
    UsesFixture fixture;
    auto* const knob = fixture.add(new Knob, "knob");
    fixture.show();
    QVERIFY(fixture.probe().element(knob) == nullptr);
    QCOMPARE(fixture.counted([&] { click(knob); }), lines({"knob pressed"}));
    QCOMPARE(fixture.counted([&] { click(knob); }), lines({"knob pressed"}));
    QCOMPARE(fixture.probe().line(knob), text("Area {pressed=2}"));
}

void tst_AreaUses::whatPassesAPressOnIsNone() {
    UsesFixture fixture;
    auto* const outer = fixture.add(new Knob, "outer");
    auto* const inner = new Knob;
    inner->setParent(outer);
    inner->setObjectName(text("inner"));
    inner->setGeometry(5, 5, 50, 50);
    inner->isTaking = false;
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(inner); }), lines({"outer pressed"}));
    outer->isTaking = false;
    QCOMPARE(fixture.counted([&] { click(inner); }), QStringList());
}

void tst_AreaUses::aWidgetWhoseFilterTakesThePressIsAnArea() {
    UsesFixture fixture;
    auto* const label = fixture.add(new QLabel(text("press me")), "label");
    auto* const frame = fixture.add(new QFrame, "frame");
    frame->setMinimumHeight(20);
    Eater eater;
    label->installEventFilter(&eater);
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(label); }), lines({"label pressed"}));
    QCOMPARE(fixture.counted([&] { click(frame); }), QStringList());
}

void tst_AreaUses::aDisabledOneIsNone() {
    UsesFixture fixture;
    auto* const knob = fixture.add(new Knob, "knob");
    fixture.show();
    knob->setEnabled(false);
    QCOMPARE(fixture.counted([&] { click(knob); }), QStringList());
}

void tst_AreaUses::aWindowThatTakesPressesHasAnArea() {
    UsesFixture fixture;
    fixture.show();
    Knob board;
    board.setWindowTitle(text("Board"));
    board.resize(100, 100);
    board.show();
    QVERIFY(QTest::qWaitForWindowExposed(&board));
    fixture.take();
    QCOMPARE(fixture.counted([&] { click(&board); }), lines({" pressed"}));
    QCOMPARE(fixture.counted([&] { click(&board); }), lines({" pressed"}));
    QCOMPARE(fixture.probe().count(text("Area")), 1);
    // One that does nothing about presses ignores them.
    QCOMPARE(fixture.counted([&] { click(&fixture.window(), QPoint(3, 390)); }), QStringList());
}

void tst_AreaUses::aScrollAreaTakesWhatItsViewportGets() {
    UsesFixture fixture;
    auto* const own = fixture.add(new Pressable<QAbstractScrollArea>, "own");
    auto* const plain = fixture.add(new QScrollArea, "plain");
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(own->viewport()); }), lines({"own pressed"}));
    QCOMPARE(fixture.counted([&] { click(plain->viewport()); }), QStringList());
}

void tst_AreaUses::whatTakesPressesForQtIsNone_data() {
    QTest::addColumn<std::function<QWidget*()>>("maker");
    QTest::newRow("scroll bar") << std::function<QWidget*()>([] { return new QScrollBar; });
    QTest::newRow("browser") << std::function<QWidget*()>([] { return new QTextBrowser; });
    QTest::newRow("text that can be selected") << std::function<QWidget*()>([] {
        auto* const label = new QLabel(text("select me"));
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        return label;
    });
    QTest::newRow("splitter") << std::function<QWidget*()>([] {
        auto* const splitter = new QSplitter;
        splitter->addWidget(new QLabel(text("left")));
        splitter->addWidget(new QLabel(text("right")));
        return splitter;
    });
}

void tst_AreaUses::whatTakesPressesForQtIsNone() {
    QFETCH(std::function<QWidget*()>, maker);
    UsesFixture fixture;
    QWidget* const widget = fixture.add(maker(), "widget");
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(widget); }), QStringList());
    QCOMPARE(fixture.probe().count(text("Area")), 0);
}

void tst_AreaUses::tabsOfAnOwnClassAreTabsOnly() {
    UsesFixture fixture;
    auto* const tabs = fixture.add(new OwnTabs);
    tabs->addTab(text("one"));
    tabs->addTab(text("two"));
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(tabs, tabs->tabRect(1).center()); }),
             lines({"two chosen"}));
    QCOMPARE(fixture.probe().count(text("Area")), 0);
}

void tst_AreaUses::whatLiesInAGroupIsAnArea() {
    UsesFixture fixture;
    auto* const group = fixture.add(new QGroupBox(text("Group")), "group");
    group->setCheckable(true);
    group->setMinimumHeight(80);
    Knob knob;
    knob.setParent(group);
    knob.setObjectName(text("knob"));
    knob.setGeometry(10, 30, 40, 30);
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(&knob); }), lines({"knob pressed"}));
    knob.setParent(nullptr);
}

void tst_AreaUses::dragging() {
    UsesFixture fixture;
    auto* const knob = fixture.add(new Knob, "knob");
    knob->setMinimumSize(100, 60);
    fixture.show();
    QCOMPARE(fixture.counted([&] { drag(knob, QPoint(5, 5), QPoint(8, 6)); }),
             lines({"knob pressed"}));
    QCOMPARE(fixture.counted([&] { drag(knob, QPoint(5, 5), QPoint(90, 50)); }),
             lines({"knob dragged", "knob pressed"}));
}

void tst_AreaUses::graphicsItems() {
    UsesFixture fixture;
    QGraphicsScene scene(0, 0, 200, 100);
    auto* const piece = new Piece;
    piece->setObjectName(text("piece"));
    scene.addItem(piece);
    for (int i = 0; i < 2; ++i) {
        scene.addRect(60 + 60 * i, 0, 40, 40)->setFlag(QGraphicsItem::ItemIsMovable);
    }
    auto* const view = fixture.add(new QGraphicsView(&scene), "view");
    view->setMinimumSize(240, 140);
    fixture.show();
    const auto at = [&](int x, int y) { return view->mapFromScene(x, y); };
    QCOMPARE(fixture.counted([&] { click(view->viewport(), at(10, 10)); }),
             lines({"piece pressed"}));
    // Items that are no objects are one area for each class.
    QCOMPARE(fixture.counted([&] { click(view->viewport(), at(70, 10)); }), lines({" pressed"}));
    QCOMPARE(fixture.counted([&] { click(view->viewport(), at(130, 10)); }), lines({" pressed"}));
    QCOMPARE(fixture.probe().count(text("Area")), 2);
    QCOMPARE(fixture.counted([&] { drag(view->viewport(), at(70, 10), at(90, 60)); }),
             lines({" dragged", " pressed"}));
    QCOMPARE(fixture.counted([&] { click(view->viewport(), at(180, 90)); }), QStringList());
}

void tst_AreaUses::aControlInAGraphicsScene() {
    UsesFixture fixture;
    QGraphicsScene scene(0, 0, 200, 100);
    auto* const box = new QCheckBox(text("inside"));
    box->setObjectName(text("inside"));
    scene.addWidget(box);
    auto* const view = fixture.add(new QGraphicsView(&scene), "view");
    view->setMinimumSize(240, 140);
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(view->viewport(), view->mapFromScene(8, 8)); }),
             lines({"inside checked"}));
    QCOMPARE(fixture.probe().count(text("Area")), 0);
}

Q_DECLARE_METATYPE(std::function<QWidget*()>)

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_AreaUses test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_areauses.moc"

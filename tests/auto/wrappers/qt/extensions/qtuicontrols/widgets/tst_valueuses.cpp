// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QDateTimeEdit>
#include <QDial>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTest>

using namespace TestLib;

namespace {

/** Tells its value by its text alone. */
class OwnSpinBox : public QAbstractSpinBox {
    Q_OBJECT

public:
    void stepBy(int steps) override {
        m_value += steps;
        lineEdit()->setText(QString::number(m_value));
    }

protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

private:
    int m_value = 0;
};

QPoint upArrow(QAbstractSpinBox* box) {
    QStyleOptionSpinBox option;
    option.initFrom(box);
    option.subControls = QStyle::SC_All;
    option.buttonSymbols = box->buttonSymbols();
    option.frame = box->hasFrame();
    return box->style()
        ->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, box)
        .center();
}

} // namespace

class tst_ValueUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsAnnounced();
    void eachKindOfSpinBoxIsChanged_data();
    void eachKindOfSpinBoxIsChanged();
    void whatASlotSetsIsNotChanged();
    void anArrowThatIsHeldCountsOnce();
    void aTimerOfTheProgramMeanwhileDoesNotCount();
    void atItsEndNothingIsChanged();
    void aSliderWithoutTrackingIsMoved();
    void aDisabledOneIsNot();
    void aScrollBarIsNone();
    void aClientSetsAValue();
};

void tst_ValueUses::whatIsAnnounced() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    auto* const slider = fixture.add(new QSlider, "slider");
    auto* const dial = fixture.add(new QDial, "dial");
    fixture.show();
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(spin)), lines({"changed"}));
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(slider)), lines({"moved"}));
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(dial)), lines({"moved"}));
}

void tst_ValueUses::eachKindOfSpinBoxIsChanged_data() {
    QTest::addColumn<QAbstractSpinBox*>("box");
    QTest::newRow("whole numbers") << static_cast<QAbstractSpinBox*>(new QSpinBox);
    QTest::newRow("numbers") << static_cast<QAbstractSpinBox*>(new QDoubleSpinBox);
    QTest::newRow("dates") << static_cast<QAbstractSpinBox*>(new QDateEdit(QDate(2020, 5, 15)));
    QTest::newRow("times") << static_cast<QAbstractSpinBox*>(new QTimeEdit(QTime(12, 30)));
    QTest::newRow("the application's own") << static_cast<QAbstractSpinBox*>(new OwnSpinBox);
}

void tst_ValueUses::eachKindOfSpinBoxIsChanged() {
    QFETCH(QAbstractSpinBox*, box);
    UsesFixture fixture;
    fixture.add(box, "box");
    fixture.show();
    QCOMPARE(fixture.counted([&] { keyOn(box, Qt::Key_Up); }), lines({"box changed"}));
    QCOMPARE(fixture.counted([&] { wheel(box, 1); }), lines({"box changed"}));
    QCOMPARE(fixture.counted([&] { click(box, upArrow(box)); }), lines({"box changed"}));
    QCOMPARE(fixture.counted([&] { box->stepUp(); }), QStringList());
}

void tst_ValueUses::whatASlotSetsIsNotChanged() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    auto* const own = fixture.add(new QSpinBox, "own");
    auto* const spin = fixture.add(new QSpinBox, "spin");
    auto* const slider = fixture.add(new QSlider(Qt::Horizontal), "slider");
    connect(button, &QPushButton::clicked, this, [=] {
        spin->setValue(spin->value() + 1);
        slider->setValue(slider->value() + 1);
    });
    connect(own, QOverload<int>::of(&QSpinBox::valueChanged), slider, &QSlider::setValue);
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    QCOMPARE(fixture.counted([&] { keyOn(own, Qt::Key_Up); }), lines({"own changed"}));
}

void tst_ValueUses::anArrowThatIsHeldCountsOnce() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    spin->setAccelerated(true);
    fixture.show();
    press(spin, upArrow(spin));
    QTRY_VERIFY(spin->value() > 2);
    release(spin, upArrow(spin));
    QCOMPARE(fixture.take(), lines({"spin changed"}));
}

void tst_ValueUses::aTimerOfTheProgramMeanwhileDoesNotCount() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    auto* const other = fixture.add(new QSpinBox, "other");
    spin->setMaximum(1);
    fixture.show();
    press(spin, upArrow(spin));
    bool isDone = false;
    UsesFixture::runLater([&] {
        other->setValue(7);
        isDone = true;
    });
    QTRY_VERIFY(isDone);
    release(spin, upArrow(spin));
    QCOMPARE(fixture.take(), lines({"spin changed"}));
}

void tst_ValueUses::atItsEndNothingIsChanged() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    auto* const slider = fixture.add(new QSlider(Qt::Horizontal), "slider");
    fixture.show();
    QCOMPARE(fixture.counted([&] { keyOn(spin, Qt::Key_Down); }), QStringList());
    QCOMPARE(fixture.counted([&] { keyOn(slider, Qt::Key_Left); }), QStringList());
}

void tst_ValueUses::aSliderWithoutTrackingIsMoved() {
    UsesFixture fixture;
    auto* const slider = fixture.add(new QSlider(Qt::Horizontal), "slider");
    slider->setTracking(false);
    fixture.show();
    const int middle = slider->height() / 2;
    QCOMPARE(fixture.counted([&] { drag(slider, QPoint(6, middle), QPoint(150, middle)); }),
             lines({"slider moved"}));
    QVERIFY(slider->value() > 0);
}

void tst_ValueUses::aDisabledOneIsNot() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    auto* const dial = fixture.add(new QDial, "dial");
    spin->setEnabled(false);
    dial->setEnabled(false);
    fixture.show();
    const QStringList counted = fixture.counted([&] {
        click(spin, upArrow(spin));
        wheel(spin, 1);
        wheel(dial, 1);
        spin->setValue(5);
    });
    QCOMPARE(counted, QStringList());
}

void tst_ValueUses::aScrollBarIsNone() {
    UsesFixture fixture;
    auto* const bar = fixture.add(new QScrollBar(Qt::Vertical), "bar");
    fixture.show();
    QCOMPARE(fixture.counted([&] { wheel(bar, -1); }), QStringList());
    QVERIFY(bar->value() > 0);
    QVERIFY(fixture.probe().element(bar) == nullptr);
}

void tst_ValueUses::aClientSetsAValue() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    auto* const slider = fixture.add(new QSlider, "slider");
    connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), slider, &QSlider::setValue);
    fixture.show();
    const QStringList counted = fixture.countedByClient([&] { spin->setValue(3); });
    QCOMPARE(slider->value(), 3);
    QEXPECT_FAIL("", "the slot was connected first, so that what it sets signals first", Continue);
    QCOMPARE(counted, lines({"spin changed"}));
    for (const int value : {9, 12}) {
        QCOMPARE(fixture.countedByClient([&] { slider->setValue(value); }),
                 lines({"slider moved"}));
    }
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_ValueUses test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_valueuses.moc"

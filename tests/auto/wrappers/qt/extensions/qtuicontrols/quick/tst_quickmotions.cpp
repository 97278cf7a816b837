// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/inputattribution.h"
#include "qtuicontrols/quick/quickmotions.h"
#include "testlib/testcase.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <memory>

using Vorsk::UIControls::InputAttribution;
using Vorsk::UIControls::QuickMotions;
using End = QuickMotions::End;

namespace {

/** Moves as it is told. */
class View : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool moving MEMBER isMoving)

public:
    bool isMoving = false;
};

struct Scene {
    InputAttribution attribution;
    QuickMotions motions{attribution};
    View view;

    bool isGoingOn() const { return attribution.isArmed(&view); }
};

} // namespace

class tst_QuickMotions : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsHeldEndsWithTheRelease();
    void whatMovesEndsAtAStandstill();
    void whatIsHeldDoesNotEndBeforeItMoves();
    void whatRestsEndsWithTheNextPress();
    void endingEndsOne();
    void theDeadEnd();
    void renderLoopsAdvanceAnimations();
};

void tst_QuickMotions::whatIsHeldEndsWithTheRelease() {
    Scene scene;
    scene.motions.begin(&scene.view, End::Release);
    scene.motions.begin(&scene.view, End::Release);
    scene.motions.noteOther(QEvent::Timer);
    QVERIFY(scene.isGoingOn());
    scene.motions.noteRelease();
    QVERIFY(!scene.isGoingOn());
}

void tst_QuickMotions::whatMovesEndsAtAStandstill() {
    Scene scene;
    scene.motions.begin(&scene.view, End::Standstill);
    scene.motions.noteRelease();
    scene.view.isMoving = true;
    scene.motions.noteOther(QEvent::Timer);
    QVERIFY(scene.isGoingOn());
    scene.view.isMoving = false;
    scene.motions.noteOther(QEvent::Polish); // may be within what sets it moving again
    QVERIFY(scene.isGoingOn());
    scene.motions.noteOther(QEvent::UpdateRequest);
    QVERIFY(!scene.isGoingOn());
}

void tst_QuickMotions::whatIsHeldDoesNotEndBeforeItMoves() {
    Scene scene;
    scene.motions.begin(&scene.view, End::Standstill);
    scene.motions.noteOther(QEvent::Timer);
    QVERIFY(scene.isGoingOn());
}

void tst_QuickMotions::whatRestsEndsWithTheNextPress() {
    Scene scene;
    scene.motions.begin(&scene.view, End::Standstill);
    scene.view.isMoving = true;
    scene.motions.noteBegin();
    QVERIFY(scene.isGoingOn());
    scene.view.isMoving = false;
    scene.motions.noteBegin();
    QVERIFY(!scene.isGoingOn());
}

void tst_QuickMotions::endingEndsOne() {
    Scene scene;
    View other;
    scene.motions.begin(&scene.view, End::Standstill);
    scene.motions.begin(&other, End::Standstill);
    scene.motions.end(&scene.view);
    QVERIFY(!scene.isGoingOn());
    QVERIFY(scene.attribution.isArmed(&other));
}

void tst_QuickMotions::theDeadEnd() {
    Scene scene;
    auto dying = std::make_unique<View>();
    scene.motions.begin(dying.get(), End::Standstill);
    scene.motions.begin(&scene.view, End::Standstill);
    dying.reset();
    scene.motions.noteRelease();
    QVERIFY(scene.isGoingOn());
    scene.motions.noteBegin();
    QVERIFY(!scene.isGoingOn());
}

void tst_QuickMotions::renderLoopsAdvanceAnimations() {
    QWindow window;
    QVERIFY(QuickMotions::advancesAnimations(&window));
    QTimer timer;
    QVERIFY(!QuickMotions::advancesAnimations(&timer));
    QVERIFY(!QuickMotions::advancesAnimations(qApp));
}

QTEST_MAIN(tst_QuickMotions)

#include "tst_quickmotions.moc"

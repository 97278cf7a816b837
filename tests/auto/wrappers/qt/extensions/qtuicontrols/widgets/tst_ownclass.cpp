// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/ownclass.h"
#include "testlib/testcase.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Vorsk::UIControls;

namespace {

class OwnWidget : public QWidget {
    Q_OBJECT
};

class OwnButton : public QPushButton {
    Q_OBJECT
};

/** Looks like a QLabel to the meta-object system. */
class WithoutMetaObject : public QLabel {
protected:
    void mousePressEvent(QMouseEvent*) override {}
};

class Further : public WithoutMetaObject {};

class Drawing : public QWidget {
protected:
    void tabletEvent(QTabletEvent*) override {}
};

} // namespace

class tst_OwnClass : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theApplicationsClassesAreToldFromQts();
    void codeForAPressIsFoundInWhateverClassHasIt();
    void codeForAPenIsFound();
};

void tst_OwnClass::theApplicationsClassesAreToldFromQts() {
    const QWidget plain;
    const QPushButton button;
    const OwnWidget own;
    const OwnButton ownButton;
    const WithoutMetaObject hidden;
    QVERIFY(!isOwnClass(&plain));
    QVERIFY(!isOwnClass(&button));
    QVERIFY(isOwnClass(&own));
    QVERIFY(isOwnClass(&ownButton));
    QVERIFY(!isOwnClass(&hidden)); // as its documentation says
}

void tst_OwnClass::codeForAPressIsFoundInWhateverClassHasIt() {
    const QWidget plain;
    const QPushButton button; // has Qt's
    const OwnWidget own;
    const WithoutMetaObject pressed;
    const Further further;
    const Drawing drawing;
    QVERIFY(!handlesPress(&plain));
    QVERIFY(!handlesPress(&button));
    QVERIFY(!handlesPress(&own));
    QVERIFY(handlesPress(&pressed));
    QVERIFY(handlesPress(&further));
    QVERIFY(!handlesPress(&drawing));
}

void tst_OwnClass::codeForAPenIsFound() {
    const QWidget plain;
    const WithoutMetaObject pressed;
    const Drawing drawing;
    QVERIFY(!handlesTablet(&plain));
    QVERIFY(!handlesTablet(&pressed));
    QVERIFY(handlesTablet(&drawing));
}

QTEST_MAIN(tst_OwnClass)
#include "tst_ownclass.moc"

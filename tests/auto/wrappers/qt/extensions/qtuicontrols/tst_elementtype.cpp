// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/elementtype.h"
#include "testlib/testcase.h"

#include <QTest>

using namespace Vorsk::UIControls;

class tst_ElementType : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyItemOfAnEnumerationHasItsName();
    void viewsAreTheFirstSixTypes();
    void aSetOfUsesHoldsWhatWasPutIn();
};

void tst_ElementType::everyItemOfAnEnumerationHasItsName() {
    QCOMPARE(nameOf(ElementType::Window), "Window");
    QCOMPARE(nameOf(ElementType::Page), "Page");
    QCOMPARE(nameOf(ElementType::Button), "Button");
    QCOMPARE(nameOf(ElementType::Command), "Command");
    QCOMPARE(nameOf(ElementType::SpinBox), "SpinBox");
    QCOMPARE(nameOf(ElementType::Tab), "Tab");
    QCOMPARE(nameOf(ElementType::Table), "Table");
    QCOMPARE(nameOf(ElementType::Area), "Area");
    QCOMPARE(nameOf(Use::Activated), "activated");
    QCOMPARE(nameOf(Use::Edited), "edited");
    QCOMPARE(nameOf(Use::PartiallyChecked), "partiallyChecked");
    QCOMPARE(nameOf(Use::Seen), "seen");
    QCOMPARE(nameOf(Use::Unchecked), "unchecked");
    QCOMPARE(nameOf(Attribute::AccessibleName), "accessibleName");
    QCOMPARE(nameOf(Attribute::Hidden), "hidden");
    QCOMPARE(nameOf(Attribute::Placeholder), "placeholder");
    QCOMPARE(nameOf(Attribute::Ways), "ways");
    QCOMPARE(nameOf(Way::Menu), "menu");
    QCOMPARE(nameOf(Way::ContextMenu), "contextMenu");
}

void tst_ElementType::viewsAreTheFirstSixTypes() {
    for (const ElementType view : {ElementType::Window, ElementType::Dialog, ElementType::Menu,
                                   ElementType::Popup, ElementType::Drawer, ElementType::Page}) {
        QVERIFY(isView(view));
    }
    QVERIFY(!isView(ElementType::Button));
    QVERIFY(!isView(ElementType::Area));
}

void tst_ElementType::aSetOfUsesHoldsWhatWasPutIn() {
    constexpr Uses none;
    static_assert(none.isEmpty());
    Uses uses{Use::Clicked, Use::Unchecked};
    QVERIFY(uses.contains(Use::Clicked));
    QVERIFY(uses.contains(Use::Unchecked));
    QVERIFY(!uses.contains(Use::Checked));
    uses.add(Use::Activated);
    QVERIFY(uses.contains(Use::Activated));
}

QTEST_GUILESS_MAIN(tst_ElementType)
#include "tst_elementtype.moc"

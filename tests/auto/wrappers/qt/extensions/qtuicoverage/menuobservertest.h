// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/testcase.h"
#include "testlib/widgetsprobe.h"

#include <memory>

QT_BEGIN_NAMESPACE
class QAction;
class QPoint;
class QRect;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {
class QtWidgetObserver;
}
} // namespace Vorsk

/**
 * The tests that menus and menu bars have in common. A subclass says what it tests; Qt Test runs
 * the slots of both classes.
 */
class MenuObserverTest : public TestLib::TestCase {
    Q_OBJECT

public:
    using Observer = Vorsk::UICoverage::QtWidgetObserver;
    using UIElement = Vorsk::UIAbstraction::UIElement;

    MenuObserverTest();
    ~MenuObserverTest() override;

protected:
    virtual QWidget* newWidget() = 0;
    virtual Observer* newObserver(QWidget* widget, UIElement* element) = 0;
    virtual const QMetaObject& observerMetaObject() = 0;
    virtual QString typeName() = 0;
    virtual QRect actionGeometry(QWidget* widget, QAction* action) = 0;
    virtual void countUsageAt(Observer* observer, const QPoint& position) = 0;
    virtual void grabActionImages(Observer* observer) = 0;

protected Q_SLOTS:
    void init();
    void cleanup();
    void noteTriggered(QAction* action);
    void deleteTriggered(QAction* action);

private Q_SLOTS:
    void hasThreePrivateSlotsInOrder();
    void separatorsGetNoItem();
    void itemsAreCompleteWhenTheyAreAnnounced();
    void itemTextIsStripped();
    void itemIsNamedAfterTheActionsClass();
    void itemRectanglesAreInTheWidgetsOwnCoordinates();
    void laterChangesOfActionsAreNotFollowed();
    void laterActionsGetNoItem();
    void subMenuHangsBelowTheItemThatOpensIt();
    void subMenuThatHasAnElementIsReusedAndLinked();
    void menuSharedByTwoActionsHangsBelowBoth();
    void worksWithoutAnExporter();

    void triggeredActionIsFoundByItsStrippedText();
    void triggeredActionsWithEqualTextsCountTheFirst();
    void triggeredActionsOfSubMenusAreIgnored();
    void triggeredActionWithoutAChildOfItsTextIsReported();
    void triggeredActionWithTheTextOfAnotherTypeIsReported_data();
    void triggeredActionWithTheTextOfAnotherTypeIsReported();
    void addressOfADeadActionStaysObserved();
    void triggeredActionThatTheApplicationDeletesFirstIsIgnored();
    void triggeredNewActionAtADeadOnesAddressElsewhereIsReported();

    void pressCountsOnTheActionsOwnItem();
    void pressOnNoActionIsReported_data();
    void pressOnNoActionIsReported();
    void pressOnALaterActionIsReported();
    void pressOnANewActionAtADeadOnesAddressIsReported();

    void grabbingSetsAPictureOfEachItemAndReportsTheOthers();
    void grabbingAnActionWithoutPlaceStoresNoPicture();

protected:
    /** An action of the widget under test. */
    QAction* addAction(const char* text);
    QAction* addSeparator();
    /** Makes the observer for what the widget holds now. */
    void observe();
    QString printed();
    UIElement* item(int index);
    int clicks(int index);

    std::unique_ptr<TestLib::WidgetsProbe> m_probe;
    std::unique_ptr<QWidget> m_widget;
    UIElement* m_element = nullptr;
    QAction* m_triggered = nullptr;
    std::unique_ptr<Observer> m_observer;
};

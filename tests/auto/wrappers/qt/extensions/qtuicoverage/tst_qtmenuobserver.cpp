// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "menuobservertest.h"
#include "qtuicoverage/names.h"
#include "qtuicoverage/qtmenuobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "uiabstraction/uielement.h"

#include <QMenu>
#include <QTest>

using namespace Vorsk::UICoverage;

class tst_QtMenuObserver : public MenuObserverTest {
    Q_OBJECT

protected:
    QWidget* newWidget() override { return new QMenu; }
    Observer* newObserver(QWidget* widget, UIElement* element) override {
        return new QtMenuObserver(qobject_cast<QMenu*>(widget), element, &m_probe->tracker());
    }
    const QMetaObject& observerMetaObject() override { return QtMenuObserver::staticMetaObject; }
    QString typeName() override { return QStringLiteral("Menu"); }
    QRect actionGeometry(QWidget* widget, QAction* action) override {
        return qobject_cast<QMenu*>(widget)->actionGeometry(action);
    }
    void countUsageAt(Observer* observer, const QPoint& position) override {
        qobject_cast<QtMenuObserver*>(observer)->countUsageAt(position, Events::clicked());
    }
    void grabActionImages(Observer* observer) override {
        qobject_cast<QtMenuObserver*>(observer)->grabActionImages();
    }

private Q_SLOTS:
    void menuIsAWindow() {
        observe();
        QVERIFY(m_element->isWindowNode());
        QCOMPARE(m_probe->takeRecords(),
                 QStringList{QStringLiteral("kind 10 windowNodeChanged #1 true")});
    }

    /** Once for the press, once for the action that it triggers. */
    void aMouseClickOnAnItemCountsTwo() {
        QAction* const action = addAction("One");
        observe();
        m_probe->start();
        auto* const menu = qobject_cast<QMenu*>(m_widget.get());
        menu->popup(QPoint());
        QVERIFY(QTest::qWaitForWindowExposed(menu));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        QCOMPARE(clicks(0), 2);
    }

    void pressOnASeparatorIsReported() {
        addAction("One");
        QAction* const separator = addSeparator();
        addAction("Two");
        observe();
        countUsageAt(m_observer.get(), actionGeometry(m_widget.get(), separator).center());
        QCOMPARE(m_probe->takeLog(),
                 QStringList{QStringLiteral("warning: Unregistered action occurred: { text='' }")});
    }

    void menusThatOpenEachOtherAreWatched() {
        QMenu other(QStringLiteral("Other"));
        auto* const menu = qobject_cast<QMenu*>(m_widget.get());
        menu->setTitle(QStringLiteral("Menu"));
        menu->addMenu(&other);
        other.addMenu(menu);
        observe();
        UIElement* const otherElement = m_probe->element(&other);
        const QtMenuObserver otherObserver(&other, otherElement, &m_probe->tracker());
        QCOMPARE(item(0)->children(), QList<UIElement*>{otherElement});
        QCOMPARE(otherElement->children().at(0)->children(), QList<UIElement*>{m_element});
        // Both walks go round once.
        m_element->increaseUsageAt(Events::clicked(), item(0)->geometry().rect().center());
        QCOMPARE(clicks(0), 1);
        QCOMPARE(printed().count(QLatin1Char('\n')), 4);
    }
};

QTEST_MAIN(tst_QtMenuObserver)
#include "tst_qtmenuobserver.moc"

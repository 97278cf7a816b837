// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "menuobservertest.h"
#include "qtuicoverage/names.h"
#include "qtuicoverage/qtmenubarobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "uiabstraction/uielement.h"

#include <QMenuBar>
#include <QTest>

using namespace Vorsk::UICoverage;

class tst_QtMenuBarObserver : public MenuObserverTest {
    Q_OBJECT

protected:
    QWidget* newWidget() override { return new QMenuBar; }
    Observer* newObserver(QWidget* widget, UIElement* element) override {
        return new QtMenuBarObserver(qobject_cast<QMenuBar*>(widget), element, &m_probe->tracker());
    }
    const QMetaObject& observerMetaObject() override { return QtMenuBarObserver::staticMetaObject; }
    QString typeName() override { return QStringLiteral("MenuBar"); }
    QRect actionGeometry(QWidget* widget, QAction* action) override {
        return qobject_cast<QMenuBar*>(widget)->actionGeometry(action);
    }
    void countUsageAt(Observer* observer, const QPoint& position) override {
        qobject_cast<QtMenuBarObserver*>(observer)->countUsageAt(position, Events::clicked());
    }
    void grabActionImages(Observer* observer) override {
        qobject_cast<QtMenuBarObserver*>(observer)->grabActionImages();
    }

private Q_SLOTS:
    void menuBarIsNoWindow() {
        observe();
        QVERIFY(!m_element->isWindowNode());
        QCOMPARE(m_probe->takeRecords(), QStringList());
    }

    void pressBehindTheLastItemIsReported() {
        QAction* const action = addAction("One");
        observe();
        const QRect last = actionGeometry(m_widget.get(), action);
        countUsageAt(m_observer.get(), QPoint(last.right() + 40, last.center().y()));
        QCOMPARE(m_probe->takeLog(),
                 QStringList{QStringLiteral("warning: No action at given position: (%1,%2)")
                                 .arg(last.right() + 40)
                                 .arg(last.center().y())});
    }
};

QTEST_MAIN(tst_QtMenuBarObserver)
#include "tst_qtmenubarobserver.moc"

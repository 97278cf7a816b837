// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qttoolbarobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/treeprinter.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QSignalSpy>
#include <QTest>
#include <QToolBar>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

class tst_QtToolBarObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void addsNothingToAWidgetObserversSlots() {
        const QMetaObject& meta = QtToolBarObserver::staticMetaObject;
        QCOMPARE(meta.superClass(), &QtWidgetObserver::staticMetaObject);
        QCOMPARE(meta.methodCount(), meta.methodOffset());
    }

    void elementIsNeitherAWindowNorGetsAText() {
        QToolBar toolBar(QStringLiteral("Tools"));
        toolBar.addAction(QStringLiteral("action"));
        UIElement element(QStringLiteral("QToolBar"), StandardType(), QString());
        QSignalSpy windowNodeChanged(&element, &UIElement::windowNodeChanged);
        QSignalSpy textChanged(&element, &UIElement::textChanged);
        QSignalSpy eventRegistered(&element, &UIElement::eventRegistered);
        const QtToolBarObserver observer(&toolBar, &element, &m_probe.tracker());
        QCOMPARE(windowNodeChanged.count() + textChanged.count() + eventRegistered.count(), 0);
        QCOMPARE(TestLib::TreePrinter().print(element), QStringLiteral("unknown/QToolBar\n"));
        QCOMPARE(observer.widget(), &toolBar);
    }

private:
    TestLib::WidgetsProbe m_probe;
};

QTEST_MAIN(tst_QtToolBarObserver)
#include "tst_qttoolbarobserver.moc"

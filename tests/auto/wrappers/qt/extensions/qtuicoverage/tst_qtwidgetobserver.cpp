// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtwidgetobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

class tst_QtWidgetObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        TestCase::init();
        m_probe = std::make_unique<TestLib::WidgetsProbe>();
        m_window = std::make_unique<QWidget>();
        m_window->setObjectName(QStringLiteral("w\u00e4ndow"));
        m_window->resize(300, 200);
    }

    void cleanup() {
        m_window.reset();
        m_probe.reset();
        TestCase::cleanup();
    }

    void hasOnePublicSlot() {
        const QMetaObject& meta = QtWidgetObserver::staticMetaObject;
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        const QMetaMethod slot = meta.method(meta.methodOffset());
        QCOMPARE(slot.methodType(), QMetaMethod::Slot);
        QCOMPARE(slot.access(), QMetaMethod::Public);
        QCOMPARE(slot.methodSignature(), QByteArray("init()"));
    }

    void widgetIsTheObservedObject() {
        auto widget = std::make_unique<QWidget>();
        UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
        const QtWidgetObserver observer(widget.get(), &element, &m_probe->tracker());
        QCOMPARE(observer.widget(), widget.get());
        QCOMPARE(observer.observedObject(), widget.get());
        widget.reset();
        QCOMPARE(observer.widget(), nullptr);
    }

    void initOfATopLevelGivesARectangleAtTheOrigin() {
        mapWindow(false);
        UIElement* const element = m_probe->element(m_window.get());
        QtWidgetObserver observer(m_window.get(), element, &m_probe->tracker());
        observer.init();
        QCOMPARE(element->geometry(), ElementGeometry(QRect(0, 0, 300, 200), true));
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void initGivesWindowRelativeCoordinates_data() {
        QTest::addColumn<QRect>("inner");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("inside") << QRect(3, 4, 50, 20) << QRect(13, 24, 50, 20);
        QTest::newRow("left of and above the window")
            << QRect(-30, -40, 5, 6) << QRect(-20, -20, 5, 6);
        QTest::newRow("no size") << QRect(1, 1, 0, 0) << QRect(11, 21, 0, 0);
    }

    void initGivesWindowRelativeCoordinates() {
        QFETCH(QRect, inner);
        QFETCH(QRect, expected);
        mapWindow(false);
        QWidget outer(m_window.get());
        outer.setGeometry(10, 20, 100, 100);
        QPushButton button(&outer);
        button.setGeometry(inner);
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        QtWidgetObserver observer(&button, &element, &m_probe->tracker());
        observer.init();
        QCOMPARE(element.geometry(), ElementGeometry(expected, true));
    }

    void initAnnouncesAnUnchangedGeometryAgain() {
        mapWindow(false);
        UIElement* const element = m_probe->element(m_window.get());
        QtWidgetObserver observer(m_window.get(), element, &m_probe->tracker());
        QSignalSpy changed(element, &UIElement::geometryChanged);
        observer.init();
        observer.init();
        QCOMPARE(changed.count(), 2);
    }

    void initWithoutAnElementOfTheWindowWarnsAndStillSetsTheGeometry() {
        QPushButton button(m_window.get());
        button.setObjectName(QStringLiteral("b\u00fctton"));
        button.setGeometry(7, 8, 9, 10);
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        QtWidgetObserver observer(&button, &element, &m_probe->tracker());
        observer.init();
        QCOMPARE(m_probe->takeLog(),
                 QStringList{QStringLiteral("warning: Unregistered window/top-level occurred, "
                                            "element: {objectName: 'b\u00fctton', class: "
                                            "'QPushButton'}, ancestor: {objectName: "
                                            "'w\u00e4ndow', class: 'QWidget'}")});
        QCOMPARE(element.geometry(), ElementGeometry(QRect(7, 8, 9, 10), true));
    }

    void initWithATransparentWindowWarnsAndStillSetsTheGeometry() {
        mapWindow(true);
        QPushButton button(m_window.get());
        button.setGeometry(7, 8, 9, 10);
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        QtWidgetObserver observer(&button, &element, &m_probe->tracker());
        observer.init();
        QCOMPARE(m_probe->takeLog(),
                 QStringList{QStringLiteral("warning: Window/top-level is transparent node, "
                                            "element: {objectName: '', class: 'QPushButton'}, "
                                            "ancestor: {objectName: 'w\u00e4ndow', class: "
                                            "'QWidget'}")});
        QCOMPARE(element.geometry(), ElementGeometry(QRect(7, 8, 9, 10), true));
    }

    void elementOfATransparentParentThatIsNoWindowDoesNotWarn() {
        mapWindow(false);
        QWidget outer(m_window.get());
        m_probe->tracker().createGenericElement(&outer, StandardType());
        QPushButton button(&outer);
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        QtWidgetObserver observer(&button, &element, &m_probe->tracker());
        observer.init();
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

private:
    void mapWindow(bool isTransparent) {
        UIElement* const element =
            m_probe->tracker().createGenericElement(m_window.get(), StandardType());
        element->setTransparentNode(isTransparent);
    }

    std::unique_ptr<TestLib::WidgetsProbe> m_probe;
    std::unique_ptr<QWidget> m_window;
};

QTEST_MAIN(tst_QtWidgetObserver)
#include "tst_qtwidgetobserver.moc"

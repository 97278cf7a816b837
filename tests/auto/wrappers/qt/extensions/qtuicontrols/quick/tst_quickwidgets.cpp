// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickplaces.h"
#include "testlib/surveyprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QLabel>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWidget>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

using namespace Vorsk::UIControls;
using TestLib::SurveyProbe;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/** Shows the text, which goes with it. */
class Scene : public QQuickWidget {
public:
    explicit Scene(const QByteArray& qml) {
        QQmlComponent component(engine());
        component.setData("import QtQuick 2.9; import QtQuick.Controls 2.3; " + qml,
                          QUrl(text("qrc:/Scene.qml")));
        m_root.reset(component.create());
        auto* const item = qobject_cast<QQuickItem*>(m_root.get());
        item->setParentItem(quickWindow()->contentItem());
        setMinimumSize(100, 80);
    }

    QObject* object(const char* name) const {
        return m_root->objectName() == text(name) ? m_root.get()
                                                  : m_root->findChild<QObject*>(text(name));
    }

private:
    std::unique_ptr<QObject> m_root;
};

Description window() {
    Description what;
    what.type = ElementType::Window;
    what.className = text("QWidget");
    what.uses = {Use::Seen};
    return what;
}

} // namespace

class tst_QuickWidgets : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void controlsOfASceneBelongToTheViewOfItsWidget();
    void aSceneWithoutAViewAroundItIsOne();
    void placesAreThoseInTheWindow();
    void aPictureOfTheWidgetHasItsPlacesAndHidesWhatIsHidden();
    void aPopupOnAHiddenWidgetIsNotSeen();
    void aWidgetThatDiesTakesItsSceneWithIt();
};

void tst_QuickWidgets::controlsOfASceneBelongToTheViewOfItsWidget() {
    SurveyProbe probe;
    QWidget top;
    QVBoxLayout layout(&top);
    Scene scene("Column { Button { text: 'OK' } }");
    layout.addWidget(&scene);
    probe.book().add(&top, window(), nullptr);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_COMPARE(probe.tree(&top), text("Window\n  Button \"OK\"\n"));
    QVERIFY(probe.element(scene.quickWindow()) == nullptr);
}

void tst_QuickWidgets::aSceneWithoutAViewAroundItIsOne() {
    SurveyProbe probe;
    Scene scene("Button { text: 'OK' }");
    scene.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
    QTRY_VERIFY(probe.tree(scene.quickWindow()).startsWith(text("Window")));
    QCOMPARE(probe.below(scene.quickWindow()), QStringList{text("Button \"OK\"")});
}

void tst_QuickWidgets::placesAreThoseInTheWindow() {
    SurveyProbe probe;
    QWidget top;
    QVBoxLayout layout(&top);
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setSpacing(0);
    QLabel above;
    above.setFixedHeight(20);
    Scene scene("Item { width: 90; height: 70; MouseArea { objectName: 'area'; x: 10; y: 30; "
                "width: 20; height: 5 } }");
    layout.addWidget(&above);
    layout.addWidget(&scene);
    probe.book().add(&top, window(), nullptr);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_VERIFY(probe.element(scene.object("area")) != nullptr);
    QCOMPARE(placeOf(scene.object("area")), QRect(10, 50, 20, 5));
}

void tst_QuickWidgets::aPictureOfTheWidgetHasItsPlacesAndHidesWhatIsHidden() {
    SurveyProbe probe;
    QVERIFY(probe.scenes() != nullptr);
    QWidget top;
    QVBoxLayout layout(&top);
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setSpacing(0);
    QLabel above;
    above.setFixedHeight(20);
    Scene scene("Item { width: 90; height: 70; "
                "TextInput { objectName: 'open'; x: 10; y: 10; width: 20; height: 5 } "
                "TextInput { objectName: 'secret'; x: 10; y: 30; width: 20; height: 5; "
                "echoMode: TextInput.Password } }");
    layout.addWidget(&above);
    layout.addWidget(&scene);
    probe.book().add(&top, window(), nullptr);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_VERIFY(probe.element(scene.object("secret")) != nullptr);
    QCOMPARE(probe.scenes()->pictured(&top), QVector<QRect>{QRect(10, 50, 20, 5)});
    QCOMPARE(probe.element(scene.object("open"))->geometry().rect(), QRect(10, 30, 20, 5));
    QCOMPARE(probe.scenes()->pictured(&scene), QVector<QRect>{QRect(10, 50, 20, 5)});
    QVERIFY(probe.scenes()->pictured(&above).isEmpty());
}

void tst_QuickWidgets::aPopupOnAHiddenWidgetIsNotSeen() {
    SurveyProbe probe;
    QTabWidget tabs;
    Scene scene("Item { Popup { objectName: 'popup'; width: 10; height: 10; visible: true; enter: "
                "null } }");
    QWidget other;
    tabs.addTab(&scene, QString());
    tabs.addTab(&other, QString());
    probe.book().add(&tabs, window(), nullptr);
    tabs.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tabs));
    QObject* const popup = scene.object("popup");
    QTRY_COMPARE(probe.line(popup, {text("showing")}), text("Popup showing=true {seen}"));
    tabs.setCurrentIndex(1);
    QTRY_COMPARE(probe.line(popup, {text("showing")}), text("Popup {seen}"));
    tabs.setCurrentIndex(0);
    QTRY_COMPARE(probe.line(popup, {text("showing")}), text("Popup showing=true {seen=2}"));
    tabs.clear();
    scene.setParent(nullptr);
    other.setParent(nullptr);
}

void tst_QuickWidgets::aWidgetThatDiesTakesItsSceneWithIt() {
    SurveyProbe probe;
    QWidget top;
    QVBoxLayout layout(&top);
    auto* const scene = new Scene("Button { objectName: 'button'; text: 'OK' }");
    layout.addWidget(scene);
    probe.book().add(&top, window(), nullptr);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));
    QTRY_VERIFY(probe.element(scene->object("button")) != nullptr);
    const QObject* const button = scene->object("button");
    delete scene;
    QVERIFY(probe.element(button) == nullptr);
    probe.survey().update();
}

QTEST_MAIN(tst_QuickWidgets)
#include "tst_quickwidgets.moc"

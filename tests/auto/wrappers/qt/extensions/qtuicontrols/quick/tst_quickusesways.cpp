// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickstage.h"
#include "testlib/testcase.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWidget>
#include <QTest>

#include <functional>

using TestLib::QuickScene;
using TestLib::QuickStage;
using TestLib::QuickUsesProbe;
using Vorsk::UIControls::Attribute;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

/** The ways by which input comes: commands and their ways, widgets, accessibility clients. */
class tst_QuickUsesWays : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void commandsTellTheirWays_data();
    void commandsTellTheirWays();
    void aQuickWidgetIsLikeAWindow();
    void accessibilityClientsOperateWhatSignalsLast();
};

void tst_QuickUsesWays::commandsTellTheirWays_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("ways");
    const auto row = [](const char* name, const char* script, const char* ways) {
        QTest::newRow(name) << QByteArray(script) << text(ways);
    };
    row("shortcut", "key Ctrl+S => save triggered", "shortcut");
    row("shortcut after the menu was open",
        "call menu open => nothing\nuntil menu opened true => nothing\ncall menu close => nothing\n"
        "until menu visible false => nothing\nkey Ctrl+S => save triggered",
        "shortcut");
    row("tool bar", "click tool => save triggered", "toolBar");
    row("menu by mouse",
        "call menu open => nothing\nuntil menu opened true => nothing\nclick item => save "
        "triggered",
        "menu");
    row("menu by keys",
        "call menu open => nothing\nuntil menu opened true => nothing\nkey Down => nothing\n"
        "key Return => save triggered",
        "menu");
    row("context menu",
        "call context open => nothing\nuntil context opened true => nothing\n"
        "click contextItem => save triggered",
        "contextMenu");
    row("two ways", "key Ctrl+S => save triggered\nclick tool => save triggered",
        "shortcut toolBar");
}

void tst_QuickUsesWays::commandsTellTheirWays() {
    QFETCH(QByteArray, script);
    QFETCH(QString, ways);
    QuickStage stage(
        "Item { id: top; width: 300; height: 200; "
        "Action { id: save; objectName: 'save'; text: '&Save'; shortcut: 'Ctrl+S' } "
        "ToolBar { y: 100; Row { ToolButton { objectName: 'tool'; action: save } "
        "ToolButton { text: 'Menu'; Menu { objectName: 'menu'; "
        "MenuItem { objectName: 'item'; action: save } } } } } "
        "Menu { objectName: 'context'; MenuItem { objectName: 'contextItem'; action: save } } }");
    QVERIFY(stage.isReady);
    const QStringList failures = stage.script.run(script);
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
    QCOMPARE(stage.probe.attribute(stage.scene.object("save"), Attribute::UsedWays), ways);
}

void tst_QuickUsesWays::aQuickWidgetIsLikeAWindow() {
    QuickUsesProbe probe;
    QuickScene scene("Item {}");
    QQuickWidget widget;
    QQmlComponent component(widget.engine());
    component.setData(
        "import QtQuick 2.15; import QtQuick.Controls 2.15\n"
        "Item { width: 200; height: 100; Button { objectName: 'x'; width: 80; height: 40;"
        " onClicked: box.toggle() } CheckBox { id: box; y: 50; objectName: 'box' } }",
        QUrl(text("qrc:/widget.qml")));
    widget.setContent(QUrl(), &component, component.create());
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, QPoint(40, 20));
    QCOMPARE(probe.takeUses(), QStringList{text("x clicked")});
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, QPoint(15, 70));
    QCOMPARE(probe.takeUses(), QStringList{text("box unchecked")});
}

/** Has the name of the class that Qt's bridge to D-Bus gives to what clients call. */
class AtSpiAdaptor : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    std::function<void()> call;

public Q_SLOTS:
    void handle() { call(); }
};

void tst_QuickUsesWays::accessibilityClientsOperateWhatSignalsLast() {
    QuickStage stage(
        "Column { Button { id: b; objectName: 'x'; onClicked: { box.toggle(); box.toggled() } } "
        "CheckBox { id: box; objectName: 'box' } Slider { objectName: 'slider' } }");
    QVERIFY(stage.isReady);
    AtSpiAdaptor bridge;
    const auto call = [&](std::function<void()> action) {
        bridge.call = std::move(action);
        QMetaObject::invokeMethod(&bridge, "handle", Qt::QueuedConnection);
        QCoreApplication::processEvents();
        QEvent next(QEvent::User); // only then the call is known to be over
        QCoreApplication::sendEvent(&bridge, &next);
        return stage.probe.takeUses();
    };
    QObject* const button = stage.scene.object("x");
    QCOMPARE(call([&] { QMetaObject::invokeMethod(button, "clicked"); }),
             QStringList{text("x clicked")});
    QObject* const box = stage.scene.object("box");
    const bool wasChecked = box->property("checked").toBool();
    QCOMPARE(call([&] { QMetaObject::invokeMethod(box, "toggle"); }),
             QStringList{text(wasChecked ? "box unchecked" : "box checked")});
    QObject* const slider = stage.scene.object("slider");
    QCOMPARE(call([&] { slider->setProperty("value", 0.5); }), QStringList{text("slider moved")});
}

int main(int argc, char* argv[]) {
    return TestLib::runWithDeliveries<tst_QuickUsesWays>(argc, argv);
}

#include "tst_quickusesways.moc"

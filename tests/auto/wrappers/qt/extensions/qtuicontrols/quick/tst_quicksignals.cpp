// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quicksignals.h"
#include "qtuicontrols/quick/quickusehub.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"

#include <QMetaMethod>
#include <QQuickItem>
#include <QTest>

#include <memory>

using TestLib::QuickScene;
using namespace Vorsk::UIControls;

namespace {

/** Notes which slots are called; has those of QuickUseHub. */
class Receiver : public QObject {
    Q_OBJECT

public:
    QStringList calls;

public Q_SLOTS:
    void onActivated() { calls.append(QStringLiteral("activated")); }
    void onActiveChanged() { calls.append(QStringLiteral("active")); }
    void onChanged() { calls.append(QStringLiteral("changed")); }
    void onChosen() { calls.append(QStringLiteral("chosen")); }
    void onClicked() { calls.append(QStringLiteral("clicked")); }
    void onConfirmed() { calls.append(QStringLiteral("confirmed")); }
    void onCurrentChanged() { calls.append(QStringLiteral("current")); }
    void onEdited() { calls.append(QStringLiteral("edited")); }
    void onExpanded() { calls.append(QStringLiteral("expanded")); }
    void onLinkActivated() { calls.append(QStringLiteral("link")); }
    void onMoved() { calls.append(QStringLiteral("moved")); }
    void onMovingChanged() {}
    void onPageChanged() { calls.append(QStringLiteral("page")); }
    void onPartEdited() { calls.append(QStringLiteral("part")); }
    void onPinched() { calls.append(QStringLiteral("pinched")); }
    void onPressedChanged() { calls.append(QStringLiteral("pressed")); }
    void onRowClicked() { calls.append(QStringLiteral("row")); }
    void onSorted() { calls.append(QStringLiteral("sorted")); }
    void onTapped() { calls.append(QStringLiteral("tapped")); }
    void onToggled() { calls.append(QStringLiteral("toggled")); }
    void onTouched() { calls.append(QStringLiteral("touched")); }
    void onTriggered() { calls.append(QStringLiteral("triggered")); }
};

using Imports = QuickScene::Imports;

} // namespace

Q_DECLARE_METATYPE(ElementType)

class tst_QuickSignals : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void eachClassTellsOfItsUses_data();
    void eachClassTellsOfItsUses();
    void slotsOfTheReceiverExist();
    void connectingTwiceConnectsOnce();
    void textsWithLinksAreLeftAlone();
    void clientsAreToldOfSetValues();
};

void tst_QuickSignals::eachClassTellsOfItsUses_data() {
    QTest::addColumn<Imports>("imports");
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<ElementType>("type");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("call");
    const auto row = [](const char* qml, ElementType type, const char* signal, const char* call,
                        Imports imports = Imports::Latest2) {
        QTest::newRow(QByteArray(qml) + (imports == Imports::Controls1 ? " 1 " : " ") + signal)
            << imports << QByteArray(qml) << type << QByteArray(signal)
            << QString::fromLatin1(call);
    };
    row("Button {}", ElementType::Button, "clicked()", "clicked");
    row("Button {}", ElementType::Button, "toggled()", "toggled");
    row("DelayButton {}", ElementType::Button, "activated()", "clicked");
    row("CheckBox {}", ElementType::CheckBox, "toggled()", "toggled");
    row("TabButton {}", ElementType::Tab, "clicked()", "clicked");
    row("ComboBox {}", ElementType::ComboBox, "accepted()", "confirmed");
    row("TextField {}", ElementType::TextInput, "textEdited()", "edited");
    row("TextField {}", ElementType::TextInput, "accepted()", "confirmed");
    row("TextArea {}", ElementType::TextInput, "textChanged()", "edited");
    row("SpinBox {}", ElementType::SpinBox, "valueModified()", "changed");
    row("Tumbler {}", ElementType::SpinBox, "currentIndexChanged()", "changed");
    row("Slider {}", ElementType::Slider, "moved()", "moved");
    row("Dial {}", ElementType::Dial, "moved()", "moved");
    row("ListView {}", ElementType::List, "currentIndexChanged()", "current");
    row("MenuItem {}", ElementType::Command, "triggered()", "triggered");
    row("MouseArea {}", ElementType::Area, "pressedChanged()", "pressed");
    row("TextEdit {}", ElementType::Link, "linkActivated(QString)", "link");
    row("Button {}", ElementType::Button, "clicked()", "clicked", Imports::Controls1);
    row("CheckBox {}", ElementType::CheckBox, "checkedStateChanged()", "toggled",
        Imports::Controls1);
    row("RadioButton {}", ElementType::RadioButton, "checkedChanged()", "toggled",
        Imports::Controls1);
    row("Switch {}", ElementType::Switch, "checkedChanged()", "toggled", Imports::Controls1);
    row("SpinBox {}", ElementType::SpinBox, "valueChanged()", "changed", Imports::Controls1);
    row("Slider {}", ElementType::Slider, "valueChanged()", "moved", Imports::Controls1);
    row("TableView {}", ElementType::Table, "currentRowChanged()", "current", Imports::Controls1);
    row("TableView {}", ElementType::Table, "sortIndicatorColumnChanged()", "sorted",
        Imports::Controls1);
}

void tst_QuickSignals::eachClassTellsOfItsUses() {
    QFETCH(Imports, imports);
    QFETCH(QByteArray, qml);
    QFETCH(ElementType, type);
    QFETCH(QByteArray, signal);
    QFETCH(QString, call);
    const QuickScene scene("Item {}", Imports::Quick);
    QuickScene made(qml, imports);
    Receiver receiver;
    QuickSignals connections(Receiver::staticMetaObject,
                             [&receiver](const QObject*) { return &receiver; });
    connections.connect(made.root(), type);
    const QMetaObject* const cls = made.root()->metaObject();
    const int number = cls->indexOfSignal(signal.constData());
    QVERIFY2(number != -1, signal.constData());
    QString link = QStringLiteral("a");
    void* arguments[] = {nullptr, &link};
    QMetaObject::activate(made.root(), number, arguments);
    QVERIFY2(receiver.calls.contains(call), qPrintable(receiver.calls.join(QLatin1Char(' '))));
}

void tst_QuickSignals::slotsOfTheReceiverExist() {
    const QMetaObject& used = QuickUseHub::staticMetaObject;
    const QMetaObject& known = Receiver::staticMetaObject;
    for (int i = used.methodOffset(); i < used.methodCount(); ++i) {
        const QByteArray slot = used.method(i).methodSignature();
        QVERIFY2(known.indexOfSlot(slot.constData()) != -1, slot.constData());
    }
    for (int i = known.methodOffset(); i < known.methodCount(); ++i) {
        const QByteArray slot = known.method(i).methodSignature();
        QVERIFY2(used.indexOfSlot(slot.constData()) != -1, slot.constData());
    }
}

void tst_QuickSignals::connectingTwiceConnectsOnce() {
    QuickScene scene("Button {}", Imports::Latest2);
    Receiver receiver;
    QuickSignals connections(Receiver::staticMetaObject,
                             [&receiver](const QObject*) { return &receiver; });
    connections.connect(scene.root(), ElementType::Button);
    connections.connect(scene.root(), ElementType::Button);
    QMetaObject::invokeMethod(scene.root(), "clicked");
    QCOMPARE(receiver.calls, QStringList{QStringLiteral("clicked")});
}

void tst_QuickSignals::textsWithLinksAreLeftAlone() {
    QuickScene scene("Text { text: '<a href=\"a\">b</a>' }", Imports::Latest2);
    Receiver receiver;
    QuickSignals connections(Receiver::staticMetaObject,
                             [&receiver](const QObject*) { return &receiver; });
    connections.connect(scene.root(), ElementType::Link);
    QMetaObject::invokeMethod(scene.root(), "linkActivated", Q_ARG(QString, QStringLiteral("a")));
    QCOMPARE(receiver.calls, QStringList());
}

void tst_QuickSignals::clientsAreToldOfSetValues() {
    QuickScene scene("Slider {}", Imports::Latest2);
    Receiver receiver;
    QuickSignals connections(Receiver::staticMetaObject,
                             [&receiver](const QObject*) { return &receiver; });
    connections.connectForClients(scene.root(), ElementType::Slider);
    scene.root()->setProperty("value", 0.5);
    QCOMPARE(receiver.calls, QStringList{QStringLiteral("moved")});
}

QTEST_MAIN(tst_QuickSignals)

#include "tst_quicksignals.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "qtuicoverage/qtquickitemobserver.h"
#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"
#include "tracking/observerpool.h"
#include "uiabstraction/uielement.h"

#include <QRegularExpression>
#include <QTest>

using TestLib::QuickProbe;
using TestLib::QuickScene;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UICoverage::QtQuickItemObserver;

using Imports = QuickScene::Imports;

namespace {

/** The element alone, printed on one line. The number in a QML type's class is new in every run. */
QString described(const UIElement* element) {
    const QString tree = TestLib::TreePrinter().print(*element);
    QString line = tree.left(tree.indexOf(QLatin1Char('\n')));
    return line.replace(QRegularExpression(QStringLiteral("_QML(TYPE)?_\\d+")),
                        QStringLiteral("_QML\\1_n"));
}

QStringList numbersHidden(QStringList lines) {
    return lines.replaceInStrings(QRegularExpression(QStringLiteral("_QMLTYPE_\\d+")),
                                  QStringLiteral("_QMLTYPE_n"));
}

} // namespace

// Items with the name of a control and without what the control must have.

class QQuickPopupItemLookAlike : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool checkable READ isCheckable CONSTANT)
public:
    using QQuickItem::QQuickItem;
    bool isCheckable() const { return true; }
Q_SIGNALS:
    void clicked();
    void triggered();
};

class QQuickMenuItemLookAlike : public QQuickItem {
    Q_OBJECT
public:
    using QQuickItem::QQuickItem;
};

/** Says something else each time it is asked. */
class Undecided : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool checkable READ isCheckable CONSTANT)
public:
    explicit Undecided(bool first)
        : m_next(!first) {}
    bool isCheckable() {
        ++asked;
        m_next = !m_next;
        return m_next;
    }
    int asked = 0;

private:
    bool m_next;
};

/** Deletes an item, itself perhaps, when its text is read. */
class Treacherous : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString text READ text CONSTANT)
    Q_PROPERTY(QString title READ text CONSTANT)
public:
    using QQuickItem::QQuickItem;
    QString text() const {
        delete victim;
        return QStringLiteral("gone");
    }
    QPointer<QQuickItem> victim;
};

/** What an item is made into: standard type, flags, text and events. */
class tst_QtQuickItemObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void realControls_data();
    void realControls();
    void textInputByTheLoaderBesideIt_data();
    void textInputByTheLoaderBesideIt();
    void itemWithoutAParentItemIsNoTextInput();
    void popupItemKeepsItsOtherEvents();
    void buttonTypeWithoutClickedIsStillAButton();
    void menuItemWithoutSignalsIsReportedTwice();
    void checkBoxWithoutCheckedStateIsReported();
    void invalidPropertyIsReported_data();
    void invalidPropertyIsReported();
    void invalidTextLeavesTheTitleAlone();
    void invalidPlaceholderLeavesTheText();
    void checkableIsReadTwiceWhenTrue();
    void checkableIsReadOnceWhenFalse();
    void eachStepLeavesItsRecordInOrder();
    void concreteTypeIsTheClassNameAsItIs();
    void worksWithoutATracker();
    void survivesAnItemThatDiesWhileItIsRead();
    void survivesASiblingThatDiesWhileTheItemIsRead();
    void itemIsSeenAsWhatItIsWhileItsConstructorRuns();
};

void tst_QtQuickItemObserver::realControls_data() {
    QTest::addColumn<Imports>("imports");
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("element");
    const auto row = [](const char* name, Imports imports, const char* qml, const char* element) {
        QTest::newRow(name) << imports << QByteArray(qml) << QString::fromLatin1(element);
    };

    row("1: button", Imports::Controls1, "Button { text: '&Save && E&xit' }",
        "Button/Button_QMLTYPE_n \"Save & Exit\" subgraphTransparent {clicked=0}");
    row("1: checkable button", Imports::Controls1, "Button { checkable: true }",
        "Button/Button_QMLTYPE_n subgraphTransparent {checked=0, clicked=0, unchecked=0}");
    row("1: tool button", Imports::Controls1, "ToolButton { text: 'Cut' }",
        "Button/ToolButton_QMLTYPE_n \"Cut\" subgraphTransparent {clicked=0}");
    row("1: radio button", Imports::Controls1, "RadioButton { text: 'FM' }",
        "Button/RadioButton_QMLTYPE_n \"FM\" subgraphTransparent {clicked=0}");
    row("1: check box", Imports::Controls1, "CheckBox { text: '&Night' }",
        "CheckBox/CheckBox_QMLTYPE_n \"Night\" subgraphTransparent "
        "{checked=0, clicked=0, unchecked=0}");
    row("1: check box with three states", Imports::Controls1,
        "CheckBox { text: 'Pump'; partiallyCheckedEnabled: true }",
        "CheckBox/CheckBox_QMLTYPE_n \"Pump\" subgraphTransparent "
        "{checked=0, clicked=0, partiallyChecked=0, unchecked=0}");
    row("1: group box", Imports::Controls1, "GroupBox { title: 'A&B' }",
        "unknown/GroupBox_QMLTYPE_n \"A&B\" transparent");
    row("1: slider", Imports::Controls1, "Slider { }", "unknown/Slider_QMLTYPE_n transparent");

    row("2: button", Imports::Controls2, "Button { text: '&Go' }",
        "Button/Button_QMLTYPE_n \"Go\" subgraphTransparent {clicked=0}");
    row("2: button with a property of its own", Imports::Controls2,
        "Button { property int level: 1; text: 'Up' }",
        "Button/Button_QMLTYPE_n_QML_n \"Up\" subgraphTransparent {clicked=0}");
    row("2: round button", Imports::Controls2, "RoundButton { }",
        "Button/RoundButton_QMLTYPE_n subgraphTransparent {clicked=0}");
    row("2: check box", Imports::Controls2, "CheckBox { text: 'C' }",
        "CheckBox/CheckBox_QMLTYPE_n \"C\" subgraphTransparent "
        "{checked=0, clicked=0, unchecked=0}");
    row("2: switch", Imports::Controls2, "Switch { text: 'S' }",
        "unknown/Switch_QMLTYPE_n \"S\" transparent {checked=0, clicked=0, unchecked=0}");
    row("2: page", Imports::Controls2, "Page { title: '&Home' }",
        "unknown/Page_QMLTYPE_n \"&Home\" transparent");

    row("templates: button", Imports::Templates2, "T.Button { text: '&Go' }",
        "Button/QQuickButton \"Go\" subgraphTransparent {clicked=0}");
    row("templates: tab button", Imports::Templates2, "T.TabButton { text: 'Tab' }",
        "Button/QQuickTabButton \"Tab\" subgraphTransparent {checked=0, clicked=0, unchecked=0}");
    row("templates: tool button", Imports::Templates2, "T.ToolButton { }",
        "Button/QQuickToolButton subgraphTransparent {clicked=0}");
    row("templates: round button", Imports::Templates2, "T.RoundButton { }",
        "Button/QQuickRoundButton subgraphTransparent {clicked=0}");
    row("templates: hidden button", Imports::Templates2, "T.Button { visible: false }",
        "Button/QQuickButton transparent subgraphTransparent {clicked=0}");
    row("templates: transparent button", Imports::Templates2, "T.Button { opacity: 0 }",
        "Button/QQuickButton transparent subgraphTransparent {clicked=0}");
    row("templates: menu item", Imports::Templates2, "T.MenuItem { text: '&Open' }",
        "MenuItem/QQuickMenuItem \"Open\" transparent {clicked=0, triggered=0}");
    row("templates: text field", Imports::Templates2,
        "T.TextField { text: 'typed'; placeholderText: '&Name' }",
        "TextInput/QQuickTextField \"&Name\" subgraphTransparent {textChanged=0}");
    row("templates: text field without a placeholder", Imports::Templates2,
        "T.TextField { text: 'typed' }",
        "TextInput/QQuickTextField subgraphTransparent {textChanged=0}");
    row("templates: text area", Imports::Templates2, "T.TextArea { placeholderText: 'Notes' }",
        "TextInput/QQuickTextArea \"Notes\" subgraphTransparent {textChanged=0}");
    row("templates: check box", Imports::Templates2, "T.CheckBox { text: 'C' }",
        "unknown/QQuickCheckBox \"C\" transparent {checked=0, clicked=0, unchecked=0}");
    row("rectangle", Imports::Quick, "Rectangle { }", "unknown/QQuickRectangle transparent");
    row("text", Imports::Quick, "Text { text: '&Label' }",
        "unknown/QQuickText \"Label\" transparent");
    row("mouse area", Imports::Quick, "MouseArea { }", "unknown/QQuickMouseArea transparent");
}

void tst_QtQuickItemObserver::realControls() {
    QFETCH(Imports, imports);
    QFETCH(QByteArray, qml);
    QFETCH(QString, element);
    // Below another item, as nearly every control is: the control is then no QML file's root.
    QuickScene scene("Item { " + qml + " }", imports);
    QuickProbe probe;
    probe.pressKey(scene.window()); // of no interest while there are no pictures
    QCOMPARE(probe.element(scene.window()), nullptr);
    probe.show(scene.window());
    const UIElement* const found = probe.element(scene.root()->childItems().constFirst());
    QVERIFY(found);
    QCOMPARE(described(found), element);
}

void tst_QtQuickItemObserver::textInputByTheLoaderBesideIt_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("type");
    const auto row = [](const char* name, const char* qml, const char* type) {
        QTest::newRow(name) << QByteArray(qml) << QString::fromLatin1(type);
    };
    row("text beside a loader", "Item { Text { objectName: 'it' } Loader { } }", "TextInput");
    row("loader first", "Item { Loader { } Text { objectName: 'it' } }", "TextInput");
    row("text alone", "Item { Text { objectName: 'it' } Item { } }", "unknown");
    row("a loader one level up", "Item { Loader { } Item { Text { objectName: 'it' } } }",
        "unknown");
    row("a loader below it", "Item { Text { objectName: 'it'; Loader { } } }", "unknown");
    row("a loader of another class",
        "Item { Text { objectName: 'it' } Loader { property int n: 1 } }", "unknown");
    row("a text that can be edited", "Item { TextEdit { objectName: 'it' } Loader { } }",
        "TextInput");
    row("any other item beside a loader", "Item { Rectangle { objectName: 'it' } Loader { } }",
        "unknown");
}

void tst_QtQuickItemObserver::textInputByTheLoaderBesideIt() {
    QFETCH(QByteArray, qml);
    QFETCH(QString, type);
    QuickScene scene(qml);
    QuickProbe probe;
    probe.show(scene.window());
    QCOMPARE(probe.element(scene.item("it"))->standardType().toString(), type);
}

void tst_QtQuickItemObserver::itemWithoutAParentItemIsNoTextInput() {
    QuickProbe probe;
    QuickScene scene("Text { }");
    scene.root()->setParentItem(nullptr);
    UIElement element(QStringLiteral("QQuickText"), StandardType(), QString());
    const QtQuickItemObserver observer(scene.root(), &element, &probe.tracker());
    QVERIFY(element.standardType().name().isNull());
}

void tst_QtQuickItemObserver::popupItemKeepsItsOtherEvents() {
    QuickProbe probe;
    QQuickWindow window;
    QQuickPopupItemLookAlike item(window.contentItem());
    probe.show(&window);
    QCOMPARE(described(probe.element(&item)),
             QStringLiteral("Dialog/QQuickPopupItemLookAlike window transparent "
                            "{checked=0, clicked=0, triggered=0, unchecked=0}"));
}

void tst_QtQuickItemObserver::buttonTypeWithoutClickedIsStillAButton() {
    QuickProbe probe;
    QuickScene scene("Item { }", Imports::Quick, QStringLiteral("Button"));
    probe.show(scene.window());
    QCOMPARE(described(probe.element(scene.root())),
             QStringLiteral("Button/Button_QMLTYPE_n subgraphTransparent {clicked=0}"));
    QCOMPARE(numbersHidden(probe.takeLog()),
             QStringList(QStringLiteral("warning: Missing signal: Button_QMLTYPE_n::clicked()")));
}

void tst_QtQuickItemObserver::menuItemWithoutSignalsIsReportedTwice() {
    QuickProbe probe;
    QQuickWindow window;
    QQuickMenuItemLookAlike item(window.contentItem());
    probe.show(&window);
    QCOMPARE(described(probe.element(&item)),
             QStringLiteral("MenuItem/QQuickMenuItemLookAlike transparent"));
    QCOMPARE(
        probe.takeLog(),
        QStringList(
            {QStringLiteral("warning: Missing signal: QQuickMenuItemLookAlike::clicked()"),
             QStringLiteral("warning: Missing signal: QQuickMenuItemLookAlike::triggered()")}));
}

void tst_QtQuickItemObserver::checkBoxWithoutCheckedStateIsReported() {
    QuickProbe probe;
    QuickScene scene("Item { CheckBox { } }", Imports::Controls2);
    probe.show(scene.window());
    QCOMPARE(
        numbersHidden(probe.takeLog()),
        QStringList(QStringLiteral("warning: Missing property: CheckBox_QMLTYPE_n::checkedState")));
}

void tst_QtQuickItemObserver::invalidPropertyIsReported_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("log");
    const auto row =
        [](const char* property) {
            QTest::newRow(property)
                << QByteArray("Item { property var ") + property + " }"
                << QStringLiteral("warning: Invalid property: '%1'").arg(QLatin1String(property));
        };
    row("partiallyCheckedEnabled");
    row("checkable");
    row("text");
    row("title");
}

void tst_QtQuickItemObserver::invalidPropertyIsReported() {
    QFETCH(QByteArray, qml);
    QFETCH(QString, log);
    QuickProbe probe;
    QuickScene scene(qml);
    probe.show(scene.window());
    QCOMPARE(described(probe.element(scene.root())),
             QStringLiteral("unknown/Scene_QMLTYPE_n transparent"));
    QCOMPARE(probe.takeLog(), QStringList(log));
}

void tst_QtQuickItemObserver::invalidTextLeavesTheTitleAlone() {
    QuickProbe probe;
    QuickScene scene("Item { property var text; property string title: 'Title' }");
    probe.show(scene.window());
    QVERIFY(probe.element(scene.root())->text().isNull());
    QCOMPARE(probe.takeLog(), QStringList(QStringLiteral("warning: Invalid property: 'text'")));
}

void tst_QtQuickItemObserver::invalidPlaceholderLeavesTheText() {
    QuickProbe probe;
    QuickScene scene("Item { property string text: 'Text'; property var placeholderText }",
                     Imports::Quick, QStringLiteral("TextInput"));
    probe.show(scene.window());
    QCOMPARE(probe.element(scene.root())->standardType().toString(), QStringLiteral("TextInput"));
    QCOMPARE(probe.element(scene.root())->text(), QStringLiteral("Text"));
    QCOMPARE(probe.takeLog(),
             QStringList(QStringLiteral("warning: Invalid property: 'placeholderText'")));
}

void tst_QtQuickItemObserver::checkableIsReadTwiceWhenTrue() {
    QuickProbe probe;
    Undecided item(true);
    UIElement element(QStringLiteral("Undecided"), StandardType(), QString());
    const QtQuickItemObserver observer(&item, &element, &probe.tracker());
    QCOMPARE(item.asked, 2);
    QCOMPARE(described(&element), QStringLiteral("unknown/Undecided {checked=0}"));
}

void tst_QtQuickItemObserver::checkableIsReadOnceWhenFalse() {
    QuickProbe probe;
    Undecided item(false);
    UIElement element(QStringLiteral("Undecided"), StandardType(), QString());
    const QtQuickItemObserver observer(&item, &element, &probe.tracker());
    QCOMPARE(item.asked, 1);
    QCOMPARE(described(&element), QStringLiteral("unknown/Undecided"));
}

void tst_QtQuickItemObserver::eachStepLeavesItsRecordInOrder() {
    QuickProbe probe;
    QuickScene scene("Item { T.TextField { text: 'typed'; placeholderText: 'Name' } }",
                     Imports::Templates2);
    probe.show(scene.window());
    const QStringList records = probe.takeRecords();
    const QString name =
        probe.nameOf(scene.root()->childItems().constFirst()); // after the printing, which names
    QCOMPARE(records.filter(QRegularExpression(QStringLiteral(" %1( |$)").arg(name)))
                 .join(QLatin1Char('\n')),
             QStringLiteral("kind 1 elementAdded #4 unknown/QQuickTextField transparent\n"
                            "kind 7 textChanged #4 \"typed\"\n"
                            "kind 6 standardTypeChanged #4 TextInput\n"
                            "kind 8 transparentNodeChanged #4 false\n"
                            "kind 9 subgraphTransparentChanged #4 true\n"
                            "kind 3 eventRegistered #4 textChanged\n"
                            "kind 7 textChanged #4 \"Name\"\n"
                            "kind 2 childAdded #3 #4"));
}

void tst_QtQuickItemObserver::concreteTypeIsTheClassNameAsItIs() {
    QuickProbe probe;
    QuickScene scene("Item { Button { } }", Imports::Controls2);
    probe.show(scene.window());
    QQuickItem* const button = scene.root()->childItems().constFirst();
    const QString className = QLatin1String(button->metaObject()->className());
    QVERIFY2(className.startsWith(QLatin1String("Button_QMLTYPE_")), qPrintable(className));
    QCOMPARE(probe.element(button)->concreteType(), className);
}

void tst_QtQuickItemObserver::worksWithoutATracker() {
    QQuickItem item;
    UIElement element(QStringLiteral("QQuickItem"), StandardType(), QString());
    const QtQuickItemObserver observer(&item, &element, nullptr);
    QCOMPARE(observer.tracker(), nullptr);
    const QQuickItem child(&item);
    QVERIFY(element.children().isEmpty());
}

void tst_QtQuickItemObserver::survivesAnItemThatDiesWhileItIsRead() {
    QuickProbe probe;
    QQuickWindow window;
    auto* const item = new Treacherous(window.contentItem());
    QQuickItem sibling(window.contentItem());
    item->victim = item;
    const QPointer<QQuickItem> guard(item);
    probe.show(&window);
    QVERIFY(guard.isNull());
    QVERIFY(probe.element(&sibling));
    QCOMPARE(probe.tracker().elementStore().elements().size(), 3);
    QCOMPARE(probe.usage(&window, "shown"), 1);
}

void tst_QtQuickItemObserver::survivesASiblingThatDiesWhileTheItemIsRead() {
    QuickProbe probe;
    QQuickWindow window;
    Treacherous item(window.contentItem());
    item.victim = new QQuickItem(window.contentItem());
    QQuickItem last(window.contentItem());
    probe.show(&window);
    QVERIFY(item.victim.isNull());
    QCOMPARE(probe.element(&item)->text(), QStringLiteral("gone"));
    QVERIFY(probe.element(&last));
}

void tst_QtQuickItemObserver::itemIsSeenAsWhatItIsWhileItsConstructorRuns() {
    QuickProbe probe;
    QQuickWindow window;
    probe.show(&window);
    // Given to its parent before it is more than a plain item.
    QQuickMenuItemLookAlike item(window.contentItem());
    QCOMPARE(described(probe.element(&item)), QStringLiteral("unknown/QQuickItem transparent"));
    QVERIFY(probe.takeLog().isEmpty());
}

QTEST_MAIN(tst_QtQuickItemObserver)

#include "tst_qtquickitemobserver.moc"

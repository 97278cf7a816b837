// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <functional>
#include <memory>

using namespace Vorsk::UICoverage;
using TestLib::WidgetsProbe;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

using Factory = std::function<QWidget*()>;
Q_DECLARE_METATYPE(Factory)

namespace {

template <class Widget>
QWidget* make() {
    return new Widget;
}

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

class SpecialButton : public QPushButton {
    Q_OBJECT
};

} // namespace

class tst_QtWidgetsCoverageTracker : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("fusion")); }

    void init() {
        TestCase::init();
        m_probe = std::make_unique<WidgetsProbe>(WidgetsProbe::Pictures::Off,
                                                 TestLib::TreePrinter::Sizes::Hidden);
    }

    void cleanup() {
        m_probe.reset();
        TestCase::cleanup();
    }

    void declaresNothingInItsMetaObject() {
        const QMetaObject& meta = QtWidgetsCoverageTracker::staticMetaObject;
        QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
        QCOMPARE(meta.methodCount(), meta.methodOffset());
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
        QCOMPARE(m_probe->tracker().parent(), nullptr);
    }

    void eventFilterFeedsAndNeverConsumes() {
        QPushButton button;
        QShowEvent event;
        QVERIFY(!m_probe->tracker().eventFilter(&button, &event));
        QCOMPARE(m_probe->usage(&button, "shown"), 1);
    }

    void classification_data() {
        QTest::addColumn<Factory>("factory");
        QTest::addColumn<QString>("printed");
        const auto row = [](const char* name, const Factory& factory, const char* printed) {
            QTest::newRow(name) << factory << QString::fromLatin1(printed);
        };
        row("menu bar", make<QMenuBar>, "MenuBar/QMenuBar (rect) {shown=1}\n");
        row("menu", make<QMenu>, "Menu/QMenu window (rect) {shown=1}\n");
        row("check box", make<QCheckBox>,
            "CheckBox/QCheckBox (rect) {checked=0, clicked=0, shown=1, unchecked=0}\n");
        row("push button", make<QPushButton>, "Button/QPushButton (rect) {clicked=0, shown=1}\n");
        row("subclass of a push button", make<SpecialButton>,
            "Button/SpecialButton (rect) {clicked=0, shown=1}\n");
        row("line edit", make<QLineEdit>,
            "TextInput/QLineEdit (rect) {confirmed=0, shown=1, textChanged=0, textEdited=0}\n");
        row("table view", make<QTableView>, "Table/QTableView (rect) {shown=1}\n");
        row("table widget", make<QTableWidget>, "Table/QTableWidget (rect) {shown=1}\n");
        row("main window", make<QMainWindow>, "Window/QMainWindow window (rect) {shown=1}\n");
        row("dialog", make<QDialog>, "Dialog/QDialog window (rect) {shown=1}\n");
        row("tool bar", make<QToolBar>, "ToolBar/QToolBar (rect) {shown=1}\n");
        // No observer, hence no geometry.
        row("tool button", make<QToolButton>, "unknown/QToolButton transparent {shown=1}\n");
        row("radio button", make<QRadioButton>, "unknown/QRadioButton transparent {shown=1}\n");
        row("list view", make<QListView>, "unknown/QListView transparent {shown=1}\n");
        row("label", make<QLabel>, "unknown/QLabel transparent {shown=1}\n");
        row("plain widget", make<QWidget>, "unknown/QWidget transparent {shown=1}\n");
    }

    void classification() {
        QFETCH(Factory, factory);
        QFETCH(QString, printed);
        const std::unique_ptr<QWidget> widget(factory());
        widget->show(); // before the tracker looks, so that no part of it is tracked on its own
        m_probe->show(widget.get());
        QCOMPARE(m_probe->tree(widget.get()), printed);
        QCOMPARE(m_probe->takeLog(), QStringList());
        QVERIFY(m_probe->element(widget.get())->isRoot());
        // Nothing is made a second time.
        UIElement* const element = m_probe->element(widget.get());
        QCOMPARE(m_probe->tracker().trackWidget(widget.get()), element);
        m_probe->show(widget.get());
        QCOMPARE(m_probe->tree(widget.get()),
                 QString(printed).replace(text("shown=1"), text("shown=2")));
    }

    void mainWindowWithMenuBarButtonAndLabel() {
        QMainWindow window;
        window.setWindowTitle(text("Main"));
        window.menuBar()->addMenu(text("&File"));
        auto* const container = new QWidget;
        new QLabel(text("label"), container);
        new QPushButton(text("&Press"), container);
        window.setCentralWidget(container);
        m_probe->start();
        window.show();
        QCOMPARE(m_probe->tree(&window),
                 text("Window/QMainWindow \"Main\" window (rect) {shown=1}\n"
                      "  MenuBar/QMenuBar (rect) {shown=1}\n"
                      "    MenuItem/QAction \"File\" (rect) {clicked=0, shown=1}\n"
                      "      Menu/QMenu transparent {shown=0}\n"
                      "  unknown/QWidget transparent {shown=1}\n"
                      "    unknown/QLabel transparent {shown=1}\n"
                      "    Button/QPushButton \"Press\" (rect) {clicked=0, shown=1}\n"));
        QCOMPARE(m_probe->takeLog(), QStringList());
        window.hide();
        window.show();
        QCOMPARE(m_probe->usage(&window, "shown"), 2);
        QCOMPARE(m_probe->usage(container, "shown"), 2);
    }

    void widgetTrackedWhileInvisibleGetsItsObserverLater() {
        QDialog dialog;
        dialog.setWindowTitle(text("title"));
        QPushButton button(&dialog);
        m_probe->show(&button); // as a parent of what is shown
        QCOMPARE(m_probe->tree(&dialog), text("Dialog/QDialog {shown=0}\n"
                                              "  Button/QPushButton {shown=1}\n"));
        dialog.show();
        m_probe->show(&dialog);
        QCOMPARE(m_probe->tree(&dialog), text("Dialog/QDialog \"title\" window (rect) {shown=1}\n"
                                              "  Button/QPushButton {shown=1}\n"));
        m_probe->show(&button);
        QCOMPARE(m_probe->tree(&button), text("Button/QPushButton (rect) {clicked=0, shown=2}\n"));
    }

    void transparencyIsAnnouncedWithEveryMatchingStep() {
        QPushButton button;
        m_probe->tracker().trackWidget(&button);
        m_probe->tracker().trackWidget(&button);
        QCOMPARE(m_probe->takeRecords(),
                 (QStringList{text("kind 1 elementAdded #1 Button/QPushButton {shown=0}"),
                              text("kind 8 transparentNodeChanged #1 false"),
                              text("kind 8 transparentNodeChanged #1 false")}));
    }

    void subMenuIsTransparentUntilItIsShown() {
        QMenu menu;
        UIElement* const element =
            m_probe->tracker().createGenericElement(&menu, StandardType(text("Menu")));
        QCOMPARE(m_probe->tree(&menu), text("Menu/QMenu transparent\n"));
        m_probe->tracker().trackWidget(&menu);
        QVERIFY(element->isTransparentNode()); // known and still hidden
        menu.show();
        m_probe->show(&menu);
        QCOMPARE(m_probe->tree(&menu), text("Menu/QMenu window (rect) {shown=1}\n"));
    }

    void genericElementIsMadeOnce() {
        QLabel label;
        UIElement* const element =
            m_probe->tracker().createGenericElement(&label, StandardType(text("Kind")));
        QCOMPARE(m_probe->takeRecords(),
                 QStringList{text("kind 1 elementAdded #1 Kind/QLabel transparent")});
        QCOMPARE(m_probe->tracker().createGenericElement(&label, StandardType()), element);
        QCOMPARE(m_probe->takeRecords(), QStringList());
    }

    void widgetWithoutAParentAtFirstSightStaysARoot() {
        QWidget window;
        auto button = std::make_unique<QPushButton>();
        m_probe->show(button.get());
        button->setParent(&window);
        m_probe->show(button.get());
        QVERIFY(m_probe->element(button.get())->isRoot());
        QCOMPARE(m_probe->element(&window), nullptr);
    }

    void knownParentEndsTheClimb() {
        QWidget window;
        QWidget middle;
        m_probe->show(&middle);
        middle.setParent(&window);
        QPushButton button(&middle);
        m_probe->show(&button);
        QCOMPARE(m_probe->element(&button)->parent(), m_probe->element(&middle));
        QCOMPARE(m_probe->element(&window), nullptr);
    }

    void eventsOfOtherObjectsAndOfOtherTypesAreIgnored() {
        QObject object;
        QShowEvent show;
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(), Qt::LeftButton, Qt::LeftButton, {});
        m_probe->tracker().handleEvent(&object, &show);
        m_probe->tracker().handleEvent(&object, &press);
        QPushButton button;
        for (int type = QEvent::None; type < QEvent::User; ++type) {
            if (type != QEvent::Show && type != QEvent::MouseButtonPress && type != QEvent::Paint) {
                QEvent event(static_cast<QEvent::Type>(type));
                m_probe->tracker().handleEvent(&button, &event);
            }
        }
        QPaintEvent paint(button.rect());
        m_probe->tracker().handleEvent(&button, &paint);
        m_probe->tracker().handleEvent(&button, &press);
        QCOMPARE(m_probe->takeRecords(), QStringList());
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void showingAMenuCountsShownOnItsItems() {
        QMenu menu;
        menu.addAction(text("One"));
        menu.addSeparator();
        menu.addMenu(text("Two"));
        m_probe->start();
        menu.popup(QPoint(0, 0));
        QCOMPARE(m_probe->tree(&menu),
                 text("Menu/QMenu window (rect) {shown=1}\n"
                      "  MenuItem/QAction \"One\" (rect) {clicked=0, shown=1}\n"
                      "  MenuItem/QAction \"Two\" (rect) {clicked=0, shown=1}\n"
                      "    Menu/QMenu transparent {shown=0}\n"));
        menu.hide();
        menu.popup(QPoint(0, 0));
        QCOMPARE(m_probe->tree(&menu).count(text("shown=2")), 3);
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void leftPressOnAMenuBarOrMenuCountsClicked_data() {
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("clicks");
        QTest::newRow("left") << int(Qt::LeftButton) << 1;
        QTest::newRow("right") << int(Qt::RightButton) << 0;
        QTest::newRow("middle") << int(Qt::MiddleButton) << 0;
    }

    void leftPressOnAMenuBarOrMenuCountsClicked() {
        QFETCH(int, button);
        QFETCH(int, clicks);
        const auto pressed = static_cast<Qt::MouseButton>(button);
        QMenuBar menuBar;
        QAction* const barAction = menuBar.addAction(text("Bar"));
        QMenu menu;
        QAction* const menuAction = menu.addAction(text("Item"));
        menuBar.show();
        menu.show();
        m_probe->show(&menuBar);
        m_probe->show(&menu);
        m_probe->press(&menuBar, menuBar.actionGeometry(barAction).center(), pressed);
        m_probe->press(&menu, menu.actionGeometry(menuAction).center(), pressed);
        QCOMPARE(m_probe->tree(&menuBar).count(QStringLiteral("clicked=%1").arg(clicks)), 1);
        QCOMPARE(m_probe->tree(&menu).count(QStringLiteral("clicked=%1").arg(clicks)), 1);
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void pressPositionIsRounded() {
        QMenuBar menuBar;
        menuBar.addAction(text("One"));
        menuBar.resize(600, 30);
        menuBar.show();
        m_probe->show(&menuBar);
        m_probe->press(&menuBar, QPointF(590.5, 3.4));
        m_probe->press(&menuBar, QPointF(590.49, 3.5));
        QCOMPARE(m_probe->takeLog(),
                 (QStringList{text("warning: No action at given position: (591,3)"),
                              text("warning: No action at given position: (590,4)")}));
    }

    void pressOnAnUnknownMenuOrOneWithoutObserverIsNotCounted() {
        QMenu menu;
        QAction* const action = menu.addAction(text("Item"));
        m_probe->press(&menu, menu.actionGeometry(action).center());
        QCOMPARE(m_probe->element(&menu), nullptr);
        m_probe->tracker().trackWidget(&menu); // hidden: no observer
        m_probe->takeRecords();
        m_probe->press(&menu, menu.actionGeometry(action).center());
        QCOMPARE(m_probe->takeRecords(), QStringList());
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void pressOnAnyOtherWidgetIsIgnored() {
        QPushButton button;
        button.show();
        m_probe->show(&button);
        m_probe->takeRecords();
        m_probe->press(&button, QPointF(5, 5));
        QCOMPARE(m_probe->takeRecords(), QStringList());
    }

    void trackChildWidgetsTracksWhatIsVisible() {
        QWidget window;
        window.setObjectName(text("window"));
        auto* const group = new QWidget(&window);
        group->setObjectName(text("group"));
        auto* const button = new QPushButton(group);
        button->setObjectName(QStringLiteral("b\u00fctton"));
        new QObject(&window);
        auto* const hidden = new QWidget(&window);
        hidden->setObjectName(text("hidden"));
        new QPushButton(hidden);
        hidden->hide();
        m_probe->tracker().trackWidget(&window);
        QTest::ignoreMessage(QtDebugMsg, "handling 'group'");
        QTest::ignoreMessage(QtDebugMsg, "handling 'b\xC3\xBCtton'");
        QTest::ignoreMessage(QtDebugMsg, "skipping hidden 'hidden'");
        m_probe->tracker().trackChildWidgets(&window);
        QCOMPARE(m_probe->tree(&window), text("unknown/QWidget transparent {shown=0}\n"
                                              "  unknown/QWidget transparent {shown=0}\n"
                                              "    Button/QPushButton {shown=0}\n"));
        QVERIFY(m_probe->element(button) != nullptr);
        QCOMPARE(m_probe->element(hidden), nullptr);
        QCOMPARE(m_probe->element(hidden->children().first()), nullptr);
    }

    void trackChildWidgetsDescendsIntoKnownChildrenWithoutLinkingThemAgain() {
        QWidget window;
        auto* const group = new QWidget(&window);
        auto* const button = new QPushButton(group);
        group->setObjectName(text("group"));
        button->setObjectName(text("button"));
        group->setParent(nullptr);
        m_probe->tracker().trackWidget(group); // a root by now
        group->setParent(&window);
        group->show();
        m_probe->tracker().trackWidget(&window);
        QTest::ignoreMessage(QtDebugMsg, "handling 'group'");
        QTest::ignoreMessage(QtDebugMsg, "handling 'button'");
        m_probe->tracker().trackChildWidgets(&window);
        QVERIFY(m_probe->element(group)->isRoot());
        QCOMPARE(m_probe->element(button)->parent(), m_probe->element(group));
    }

    void trackChildWidgetsOfAnUnknownWidgetMakesItsElement() {
        QWidget window;
        auto* const button = new QPushButton(&window);
        button->setObjectName(text("button"));
        QTest::ignoreMessage(QtDebugMsg, "handling 'button'");
        m_probe->tracker().trackChildWidgets(&window);
        QCOMPARE(m_probe->tree(&window), text("unknown/QWidget transparent {shown=0}\n"
                                              "  Button/QPushButton {shown=0}\n"));
    }

    void plainTopLevelIsReportedForEachClassifiedChild() {
        QWidget window;
        QPushButton button(&window);
        QLabel label(&window);
        m_probe->start();
        window.show();
        QCOMPARE(m_probe->takeLog(),
                 QStringList{text("warning: Window/top-level is transparent node, element: "
                                  "{objectName: '', class: 'QPushButton'}, ancestor: "
                                  "{objectName: '', class: 'QWidget'}")});
    }

    void destroyingTheTrackerEndsTheCountingAndKeepsTheElements() {
        QPushButton button;
        button.show();
        m_probe->show(&button);
        const QPointer<UIElement> element = m_probe->element(&button);
        m_probe->takeRecords();
        m_probe->destroyTracker();
        button.click();
        QVERIFY(!element.isNull());
        QCOMPARE(m_probe->takeRecords(), QStringList());
    }

private:
    std::unique_ptr<WidgetsProbe> m_probe;
};

QTEST_MAIN(tst_QtWidgetsCoverageTracker)
#include "tst_qtwidgetscoveragetracker.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragecollector.h"
#include "run/runloader.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>

using TestLib::RecordingBuilder;
using Uicov::Coverage::CoverageCollector;
using Uicov::Coverage::CoverageTree;
using Uicov::Runs::RunLoader;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

const QStringList shown{QStringLiteral("shown")};
const QStringList clickable{QStringLiteral("clicked"), QStringLiteral("shown")};

} // namespace

class TestCoverageCollector : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    RecordingBuilder* m_recording = nullptr;
    std::unique_ptr<RecordingBuilder> m_owner;

    /** All recordings begun since the test began, as countable keys with their counts. */
    QStringList m_lines;
    CoverageTree m_tree;
    std::unique_ptr<CoverageCollector> m_collector;

    void begin() {
        m_owner = std::make_unique<RecordingBuilder>();
        m_recording = m_owner.get();
    }

    UIElement* add(UIElement* parent, const char* type, const char* concreteType,
                   const QString& text = QString(), const QStringList& events = shown) {
        return m_recording->add(parent, QLatin1String(type), QLatin1String(concreteType), text,
                                events);
    }

    UIElement* addWindow(const QString& title, UIElement* parent = nullptr,
                         const char* type = "Window", const char* concreteType = "MainWindow") {
        UIElement* const window = add(parent, type, concreteType, title);
        window->setWindowNode(true);
        return window;
    }

    UIElement* addTransparent(UIElement* parent, const char* concreteType = "QWidget") {
        UIElement* const element = add(parent, "", concreteType);
        element->setTransparentNode(true);
        return element;
    }

    UIElement* addButton(UIElement* parent, const QString& text) {
        return add(parent, "Button", "QPushButton", text, clickable);
    }

    void collect(const QString& application = QString()) {
        const QString path = m_folder.filePath(QStringLiteral("x.uirec"));
        QVERIFY(m_recording->write(path));
        RunLoader loader(path);
        QVERIFY(!loader.load());
        Uicov::Runs::Run run = loader.run();
        run.application = application;
        m_collector->collect(run);
        m_lines.clear();
        const auto windows = m_tree.windows();
        for (const auto window : windows) {
            for (const auto node : m_tree.nodesOf(window)) {
                if (!m_tree.node(node).isCountable) {
                    continue;
                }
                QString line = m_tree.keyOf(node).toString();
                const auto events = m_tree.node(node).events;
                for (auto it = events.cbegin(); it != events.cend(); ++it) {
                    line += QStringLiteral(" %1=%2").arg(it.key()).arg(it->count);
                }
                m_lines.append(line);
            }
        }
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_tree = CoverageTree();
        m_collector = std::make_unique<CoverageCollector>(m_tree);
        begin();
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void transparentNodesAreNoStepAndDoNotCount() {
        UIElement* const window = addWindow(QStringLiteral("A"));
        UIElement* const box = addTransparent(addTransparent(window));
        addButton(box, QStringLiteral("OK"))->increaseUsage(UIEvent(QStringLiteral("clicked")));
        collect();
        QCOMPARE(m_lines,
                 QStringList({QStringLiteral("Window \"A\" shown=0"),
                              QStringLiteral("Window \"A\" > Button \"OK\" clicked=1 shown=0")}));
    }

    void whatIsBelowATransparentSubgraphDoesNotCount() {
        UIElement* const window = addWindow(QStringLiteral("A"));
        UIElement* const button = addButton(window, QStringLiteral("OK"));
        button->setSubgraphTransparent(true);
        addButton(addTransparent(button), QStringLiteral("inner"));
        collect();
        QCOMPARE(m_lines.size(), 2);
        QCOMPARE(m_lines.at(1), QStringLiteral("Window \"A\" > Button \"OK\" clicked=0 shown=0"));
    }

    void elementsWithoutEventsAreStepsButDoNotCount() {
        UIElement* const bar =
            add(addWindow(QStringLiteral("A")), "ToolBar", "QToolBar", QString(), {});
        addButton(bar, QStringLiteral("OK"));
        collect();
        QCOMPARE(m_lines.at(1),
                 QStringLiteral("Window \"A\" > ToolBar > Button \"OK\" clicked=0 shown=0"));
        QCOMPARE(m_lines.size(), 2);
    }

    void aDialogBelowAWindowIsARowOfItsOwn() {
        UIElement* const window = addWindow(QStringLiteral("A"));
        UIElement* const dialog =
            addWindow(QStringLiteral("About"), addTransparent(window), "Dialog", "QDialog");
        addButton(dialog, QStringLiteral("Close"));
        collect();
        QCOMPARE(
            m_lines,
            QStringList({QStringLiteral("Dialog \"About\" shown=0"),
                         QStringLiteral("Dialog \"About\" > Button \"Close\" clicked=0 shown=0"),
                         QStringLiteral("Window \"A\" shown=0")}));
    }

    void menusBelongToTheWindowThatOpensThem() {
        UIElement* const bar = add(addWindow(QStringLiteral("A")), "MenuBar", "QMenuBar");
        UIElement* const item = add(bar, "MenuItem", "QAction", QStringLiteral("File"), clickable);
        UIElement* const menu = add(item, "Menu", "QMenu");
        menu->setWindowNode(true);
        add(menu, "MenuItem", "QAction", QStringLiteral("Quit"), clickable);
        collect();
        QCOMPARE(m_tree.windows().size(), 1);
        QCOMPARE(m_lines.last(),
                 QStringLiteral("Window \"A\" > MenuBar > MenuItem \"File\" > Menu > MenuItem "
                                "\"Quit\" clicked=0 shown=0"));
    }

    void aContextMenuBelongsToItsWindowOrStandsAlone() {
        UIElement* const inside = add(addWindow(QStringLiteral("A")), "Menu", "QMenu");
        inside->setWindowNode(true);
        UIElement* const alone = add(nullptr, "Menu", "QMenu");
        alone->setWindowNode(true);
        collect();
        QCOMPARE(m_lines, QStringList({QStringLiteral("Menu (QMenu) shown=0"),
                                       QStringLiteral("Window \"A\" shown=0"),
                                       QStringLiteral("Window \"A\" > Menu shown=0")}));
    }

    void menusNeverOpenedAreToldApart() {
        UIElement* const bar = add(addWindow(QStringLiteral("A")), "MenuBar", "QMenuBar");
        UIElement* const item = add(bar, "MenuItem", "QAction", QStringLiteral("File"), clickable);
        add(item, "Menu", "QMenu")->setTransparentNode(true);
        collect();
        QCOMPARE(m_tree.unopenedMenus(), 1);
        QCOMPARE(m_lines.size(), 3); // not the menu itself
    }

    void aMenuThatWasOpenedInOneInstanceOfItsWindowIsNotUnopened() {
        for (const bool isOpened : {false, true, false}) {
            UIElement* const bar = add(addWindow(QStringLiteral("A")), "MenuBar", "QMenuBar");
            UIElement* const item =
                add(bar, "MenuItem", "QAction", QStringLiteral("File"), clickable);
            add(item, "Menu", "QMenu")->setTransparentNode(!isOpened);
        }
        collect();
        QCOMPARE(m_tree.unopenedMenus(), 0);
    }

    void windowsOfTwoApplicationsAreNotOne() {
        addWindow(QStringLiteral("A"));
        collect(QStringLiteral("one"));
        collect(QStringLiteral("one"));
        QCOMPARE(m_tree.windows().size(), 1);
        collect(QStringLiteral("two"));
        QCOMPARE(m_tree.windows().size(), 2);
    }

    void aRootThatIsNoWindowNodeIsAWindow() {
        addButton(addTransparent(nullptr, "PanelWidget"), QStringLiteral("OK"));
        collect();
        QCOMPARE(m_lines, QStringList{QStringLiteral(
                              "Window (PanelWidget) > Button \"OK\" clicked=0 shown=0")});
    }

    void equalSiblingsAreNumberedAndOthersAreNot() {
        UIElement* const window = addWindow(QStringLiteral("A"));
        addButton(addTransparent(window), QStringLiteral("OK"));
        addButton(window, QStringLiteral("Cancel"));
        addButton(window, QStringLiteral("OK"));
        add(window, "TextInput", "QLineEdit", QStringLiteral("x"));
        add(window, "TextInput", "QLineEdit", QStringLiteral("y"));
        collect();
        QStringList keys;
        for (const QString& line : qAsConst(m_lines)) {
            keys.append(line.section(QStringLiteral(" > "), 1)
                            .section(QStringLiteral(" clicked"), 0, 0)
                            .section(QStringLiteral(" shown"), 0, 0));
        }
        QCOMPARE(keys,
                 QStringList({QString(), QStringLiteral("Button \"Cancel\""),
                              QStringLiteral("Button \"OK\""), QStringLiteral("Button \"OK\" #2"),
                              QStringLiteral("TextInput"), QStringLiteral("TextInput #2")}));
    }

    void anElementBelowTwoParentsCountsOncePerWindow() {
        UIElement* const window = addWindow(QStringLiteral("A"));
        UIElement* const bar = add(window, "ToolBar", "QToolBar");
        UIElement* const button = addButton(bar, QStringLiteral("OK"));
        add(window, "ToolBar", "QToolBar")->addChild(button);
        addWindow(QStringLiteral("B"))->addChild(button);
        collect();
        QCOMPARE(
            m_lines.filter(QStringLiteral("OK")),
            QStringList({QStringLiteral("Window \"A\" > ToolBar > Button \"OK\" clicked=0 shown=0"),
                         QStringLiteral("Window \"B\" > Button \"OK\" clicked=0 shown=0")}));
    }

    void ringsEnd() {
        UIElement* const window = addWindow(QStringLiteral("A"));
        UIElement* const first = add(window, "ToolBar", "QToolBar");
        UIElement* const second = add(first, "ToolBar", "QToolBar");
        second->addChild(first);
        second->addChild(window);
        UIElement* const lonely = addButton(nullptr, QStringLiteral("x"));
        UIElement* const other = addButton(lonely, QStringLiteral("y"));
        other->addChild(lonely);
        collect();
        QCOMPARE(m_lines.size(), 5);
    }

    void windowsOfOneTitleAreInstancesOfOneThing() {
        for (int i = 0; i < 3; ++i) {
            UIElement* const window = addWindow(QStringLiteral("A"));
            UIElement* const button = addButton(window, QStringLiteral("OK"));
            addButton(window, QStringLiteral("OK"));
            if (i == 1) {
                button->increaseUsage(UIEvent(QStringLiteral("clicked")));
            }
        }
        collect();
        QCOMPARE(
            m_lines,
            QStringList({QStringLiteral("Window \"A\" shown=0"),
                         QStringLiteral("Window \"A\" > Button \"OK\" clicked=1 shown=0"),
                         QStringLiteral("Window \"A\" > Button \"OK\" #2 clicked=0 shown=0")}));
    }

    void windowsWithoutAnyNameStayApart() {
        addWindow(QString(), nullptr, "Dialog", "QDialog");
        addWindow(QString(), nullptr, "Dialog", "QDialog");
        addWindow(QString(), nullptr, "Dialog", "FindDialog");
        addWindow(QString(), nullptr, "Dialog", "FindDialog");
        collect();
        QCOMPARE(m_lines, QStringList({QStringLiteral("Dialog (FindDialog) shown=0"),
                                       QStringLiteral("Dialog (QDialog) shown=0"),
                                       QStringLiteral("Dialog (QDialog) #2 shown=0")}));
    }

    void recordingsMergeByKey() {
        addButton(addWindow(QStringLiteral("A")), QStringLiteral("OK"))
            ->increaseUsage(UIEvent(QStringLiteral("clicked")));
        collect();
        begin();
        UIElement* const window = addWindow(QStringLiteral("A"));
        addButton(window, QStringLiteral("OK"))->increaseUsage(UIEvent(QStringLiteral("shown")));
        addButton(window, QStringLiteral("New"));
        collect();
        QCOMPARE(m_lines,
                 QStringList({QStringLiteral("Window \"A\" shown=0"),
                              QStringLiteral("Window \"A\" > Button \"New\" clicked=0 shown=0"),
                              QStringLiteral("Window \"A\" > Button \"OK\" clicked=1 shown=1")}));
    }

    void engineNumbersDoNotKeepRecordingsApart() {
        for (const char* name : {"Panel_QMLTYPE_4", "Panel_QMLTYPE_9"}) {
            add(addWindow(QStringLiteral("A")), "", name);
            collect();
            begin();
        }
        QCOMPARE(m_lines, QStringList({QStringLiteral("Window \"A\" shown=0"),
                                       QStringLiteral("Window \"A\" > Panel shown=0")}));
    }

    void aDeepChainNeitherOverflowsNorLingers() {
        UIElement* element = addWindow(QStringLiteral("A"));
        constexpr int depth = 10000;
        for (int i = 0; i < depth; ++i) {
            element = m_recording->add(element, QString(), QStringLiteral("C"), QString(), shown);
        }
        const QString path = m_folder.filePath(QStringLiteral("x.uirec"));
        QVERIFY(m_recording->write(path));
        RunLoader loader(path);
        QVERIFY(!loader.load());
        m_collector->collect(loader.run());
        QCOMPARE(m_tree.totalsOf(m_tree.windows().first()).elements, depth + 1);
    }
};

QTEST_GUILESS_MAIN(TestCoverageCollector)
#include "tst_coveragecollector.moc"

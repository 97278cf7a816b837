#include "session.h"
#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "testlib/widgetdriver.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QDial>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QEventLoop>
#include <QGraphicsView>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace TestLib;

/**
 * A person works through a window with every kind of control while the program changes others by
 * itself, in slots, in timers and in nested event loops. Each step has to count what was operated
 * and nothing else.
 */
class tst_WidgetSession : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyStepCountsWhatWasOperated_data();
    void everyStepCountsWhatWasOperated();

private:
    void pushButtons();
    void choiceButtons();
    void texts();
    void textMenus();
    void combos();
    void values();
    void tabsAndViews();
    void trees();
    void menus();
    void shortcuts();
    void others();
    void dialogs();
    void theProgramAlone();

    Session* m_session = nullptr;
    Controls* m_own = nullptr;
    Stage* m_stage = nullptr;
};

namespace {

QString text(const char* literal) {
    return QString::fromLatin1(literal);
}

QStringList uses(std::initializer_list<const char*> lines) {
    QStringList list;
    for (const char* const line : lines) {
        list.append(QString::fromLatin1(line));
    }
    return list;
}

/** Where a style draws a part of a spin box or check box is its own business: near the right edge,
 * upper and lower half. */
QPoint upArrow(const QWidget* widget) {
    return {widget->width() - 6, widget->height() / 4};
}

QPoint downArrow(const QWidget* widget) {
    return {widget->width() - 6, widget->height() * 3 / 4};
}

/** Waits for events until the condition holds. */
template <class Condition>
void waitUntil(const Condition& condition) {
    if (!QTest::qWaitFor(condition)) {
        qWarning("a condition that a step waits for never held");
    }
}

} // namespace

void tst_WidgetSession::everyStepCountsWhatWasOperated_data() {
    QTest::addColumn<bool>("tellsEnds");
    QTest::newRow("the host tells ends of deliveries") << true;
    QTest::newRow("the host tells begins only") << false;
}

void tst_WidgetSession::everyStepCountsWhatWasOperated() {
    QFETCH(bool, tellsEnds);
    HostApplication::setTellsEnds(tellsEnds);
    Session session;
    m_session = &session;
    m_stage = &session.stage();
    m_own = m_stage->own;
    pushButtons();
    choiceButtons();
    texts();
    textMenus();
    combos();
    values();
    tabsAndViews();
    trees();
    menus();
    shortcuts();
    others();
    dialogs();
    theProgramAlone();
    // One line each, since a long text is cut off.
    const QStringList mistakes = session.mistakes();
    for (const QString& mistake : mistakes) {
        qInfo("%s", qPrintable(mistake));
    }
    QCOMPARE(mistakes.size(), 0);
    QVERIFY(session.steps() >= 150);
}

void tst_WidgetSession::pushButtons() {
    Session& s = *m_session;
    Controls& own = *m_own;
    s.step(
        text("click a push button"), [&] { click(own.push); }, uses({"push clicked"}));
    s.step(
        text("space on a push button"), [&] { keyOn(own.push, Qt::Key_Space); },
        uses({"push clicked"}));
    s.nothing(text("press, leave and release"), [&] {
        press(own.push, middleOf(own.push));
        moveTo(own.push, QPoint(5, own.push->height() + 300));
        release(own.push, QPoint(5, own.push->height() + 300));
    });
    s.step(
        text("press, leave, come back and release"),
        [&] {
            press(own.push, middleOf(own.push));
            moveTo(own.push, QPoint(5, own.push->height() + 300));
            moveTo(own.push, middleOf(own.push));
            release(own.push, middleOf(own.push));
        },
        uses({"push clicked"}));
    s.nothing(text("space and then escape"), [&] {
        own.push->setFocus();
        keyPress(Qt::Key_Space);
        keyPress(Qt::Key_Escape);
        keyRelease(Qt::Key_Escape);
        keyRelease(Qt::Key_Space);
    });
    s.nothing(text("the right button"),
              [&] { click(own.push, middleOf(own.push), Qt::RightButton); });
    s.nothing(text("click a disabled button"), [&] {
        own.push->setEnabled(false);
        click(own.push);
        own.push->setEnabled(true);
    });
    s.nothing(text("click where a hidden button was"), [&] {
        const QPoint at = own.push->mapTo(own.push->window(), middleOf(own.push));
        own.push->setVisible(false);
        QTest::mousePress(m_stage->windowHandle(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(m_stage->windowHandle(), Qt::LeftButton, {}, at);
        own.push->setVisible(true);
        QCoreApplication::processEvents();
    });
    s.step(
        text("its shortcut"),
        [&] {
            own.push->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_P));
            int clicks = 0;
            const auto counting = connect(own.push, &QPushButton::clicked, [&] { ++clicks; });
            key(Qt::Key_P, Qt::ControlModifier);
            waitUntil([&] { return clicks == 1; });
            disconnect(counting);
        },
        uses({"push clicked"}));
    s.step(
        text("a button that cut all its connections"),
        [&] {
            own.push->disconnect();
            click(own.push);
        },
        uses({"push clicked"}));
    s.step(
        text("hold a button that repeats"),
        [&] {
            int clicks = 0;
            const auto counting = connect(own.repeating, &QPushButton::clicked, [&] { ++clicks; });
            press(own.repeating, middleOf(own.repeating));
            waitUntil([&] { return clicks == 3; });
            release(own.repeating, middleOf(own.repeating));
            disconnect(counting);
        },
        uses({"repeating clicked"}));
    s.step(
        text("click a tool button"), [&] { click(own.tool); }, uses({"tool clicked"}));
    s.step(
        text("a slot that runs its own event loop"),
        [&] {
            QEventLoop loop;
            const auto running = connect(own.push, &QPushButton::clicked, [&] {
                QTimer::singleShot(30, &loop, &QEventLoop::quit);
                loop.exec();
            });
            click(own.push);
            disconnect(running);
        },
        uses({"push clicked"}));
    s.step(
        text("a slot that handles events, with another click among them"),
        [&] {
            const auto running = connect(own.push, &QPushButton::clicked, [&] {
                click(own.tool);
                QCoreApplication::processEvents();
            });
            click(own.push);
            disconnect(running);
        },
        uses({"push clicked", "tool clicked"}));
}

void tst_WidgetSession::choiceButtons() {
    Session& s = *m_session;
    Controls& own = *m_own;
    s.step(
        text("check a button"), [&] { click(own.toggle); }, uses({"toggle checked"}));
    s.step(
        text("uncheck it"), [&] { keyOn(own.toggle, Qt::Key_Space); }, uses({"toggle unchecked"}));
    const QPoint mark(8, own.check->height() / 2);
    s.step(
        text("check a box"), [&] { click(own.check, mark); }, uses({"check checked"}));
    s.step(
        text("uncheck it by key"), [&] { keyOn(own.check, Qt::Key_Space); },
        uses({"check unchecked"}));
    s.step(
        text("first state of three"), [&] { click(own.tristate, mark); },
        uses({"tristate partiallyChecked"}));
    s.step(
        text("second state of three"), [&] { click(own.tristate, mark); },
        uses({"tristate checked"}));
    s.step(
        text("third state of three"), [&] { click(own.tristate, mark); },
        uses({"tristate unchecked"}));
    s.step(
        text("choose the other radio button"), [&] { click(own.radioB, mark); },
        uses({"radioB checked"}));
    s.step(
        text("arrow key to the first one"), [&] { keyOn(own.radioB, Qt::Key_Up); },
        uses({"radioA checked"}));
    s.step(
        text("arrow key to the second one"), [&] { key(Qt::Key_Down); }, uses({"radioB checked"}));
    s.step(
        text("the group's box"), [&] { click(own.group, QPoint(10, 8)); },
        uses({"group unchecked"}));
    s.step(
        text("the group's box by key"), [&] { keyOn(own.group, Qt::Key_Space); },
        uses({"group checked"}));
    s.nothing(text("the inside of a group"),
              [&] { click(own.group, QPoint(own.group->width() / 2, own.group->height() - 5)); });
    s.step(
        text("a slot that sets forty others"),
        [&] {
            const auto setting =
                connect(own.check, &QCheckBox::clicked, m_own, [&] { m_stage->victims->change(); });
            click(own.check, mark);
            disconnect(setting);
        },
        uses({"check checked"}));
    s.step(
        text("a slot that takes the check back"),
        [&] {
            const auto setting =
                connect(own.toggle, &QPushButton::toggled, [&] { own.radioA->setChecked(true); });
            click(own.toggle);
            disconnect(setting);
        },
        uses({"toggle checked"}));
}

void tst_WidgetSession::texts() {
    Session& s = *m_session;
    Controls& own = *m_own;
    s.step(
        text("type into a line"), [&] { typeInto(own.line, text("ab")); }, uses({"line edited 2"}));
    s.step(
        text("return in a line"), [&] { keyOn(own.line, Qt::Key_Return); },
        uses({"line confirmed"}));
    s.step(
        text("backspace"), [&] { keyOn(own.line, Qt::Key_Backspace); }, uses({"line edited"}));
    s.nothing(text("move the cursor"), [&] { keyOn(own.line, Qt::Key_Home); });
    s.nothing(text("a click into a line"), [&] { click(own.line); });
    s.nothing(text("the focus goes elsewhere"), [&] {
        own.line->setFocus();
        own.push->setFocus();
    });
    s.step(
        text("paste"),
        [&] {
            QGuiApplication::clipboard()->setText(text("pasted"));
            keyOn(own.line, Qt::Key_V, Qt::ControlModifier);
        },
        uses({"line edited"}));
    s.step(
        text("undo"), [&] { keyOn(own.line, Qt::Key_Z, Qt::ControlModifier); },
        uses({"line edited"}));
    s.step(
        text("an input method commits"),
        [&] {
            own.line->setFocus();
            compose(own.line, text("é"));
        },
        uses({"line edited"}));
    s.nothing(text("an input method composes"), [&] { preedit(own.line, text("x")); });
    s.step(
        text("and commits it"), [&] { compose(own.line, text("x")); }, uses({"line edited"}));
    s.step(
        text("drop a text on a line"), [&] { drop(own.line, text("dropped")); },
        uses({"line edited"}));
    s.step(
        text("a slot that clears the line"),
        [&] {
            const auto clearing =
                connect(own.line, &QLineEdit::returnPressed, own.line, &QLineEdit::clear);
            keyOn(own.line, Qt::Key_Return);
            disconnect(clearing);
        },
        uses({"line confirmed"}));
    s.nothing(text("type into a line that is read-only"), [&] {
        own.line->setReadOnly(true);
        typeInto(own.line, text("a"));
        own.line->setReadOnly(false);
    });
    for (QWidget* const edit :
         {static_cast<QWidget*>(own.plain), static_cast<QWidget*>(own.rich)}) {
        const QString edited = edit->objectName() + text(" edited");
        s.step(text("type into a text"), [&] { typeInto(edit, text("x")); }, {edited});
        s.step(text("return in a text"), [&] { keyOn(edit, Qt::Key_Return); }, {edited});
        s.nothing(text("select all"), [&] { keyOn(edit, Qt::Key_A, Qt::ControlModifier); });
        s.step(text("cut"), [&] { keyOn(edit, Qt::Key_X, Qt::ControlModifier); }, {edited});
        s.nothing(text("compose in a text"), [&] { preedit(edit, text("x")); });
        s.step(text("commit in a text"), [&] { compose(edit, text("x")); }, {edited});
        s.nothing(text("click into a text"), [&] {
            auto* const area = static_cast<QAbstractScrollArea*>(edit);
            click(area->viewport(), QPoint(5, 5));
        });
        s.step(text("drop on a text"),
               [&] { drop(static_cast<QAbstractScrollArea*>(edit)->viewport(), text("dropped")); },
               {edited});
    }
    s.step(
        text("a key sequence"),
        [&] {
            bool isFinished = false;
            const auto finishing =
                connect(own.keys, &QKeySequenceEdit::editingFinished, [&] { isFinished = true; });
            keyOn(own.keys, Qt::Key_F5, Qt::ShiftModifier);
            waitUntil([&] { return isFinished; });
            disconnect(finishing);
        },
        uses({"keys edited"}));
    s.nothing(text("the program sets a key sequence while a person types one"),
              [&] { m_stage->victims->keys->setKeySequence(QKeySequence(Qt::Key_F9)); });
}

void tst_WidgetSession::textMenus() {
    Session& s = *m_session;
    Controls& own = *m_own;
    const auto choose = [&](const char* name) {
        QMenu* const menu = openMenu();
        if (menu == nullptr) {
            qWarning("no context menu");
            return;
        }
        const QList<QAction*> actions = menu->actions();
        for (QAction* const action : actions) {
            if (action->text().startsWith(QLatin1String(name))) {
                clickItem(menu, action);
                return;
            }
        }
        qWarning("no %s", name);
    };
    s.nothing(text("the context menu of a line"), [&] {
        own.line->setText(text("some text"));
        own.line->setFocus();
        own.line->selectAll();
        askForMenu(own.line, middleOf(own.line));
    });
    s.step(
        text("cut by the context menu"), [&] { choose("Cu&t"); }, uses({"line edited"}));
    s.step(
        text("paste by the context menu of a text"),
        [&] {
            own.plain->setFocus();
            askForMenu(own.plain->viewport(), QPoint(10, 10));
            choose("&Paste");
        },
        uses({"plain edited"}));
    s.nothing(text("select all by a context menu"), [&] {
        askForMenu(own.plain->viewport(), QPoint(10, 10));
        choose("Select All");
    });
    s.nothing(text("escape a context menu"), [&] {
        askForMenu(own.line, middleOf(own.line));
        key(Qt::Key_Escape);
    });
}

void tst_WidgetSession::combos() {
    Session& s = *m_session;
    Controls& own = *m_own;
    QComboBox& box = *own.combo;
    const auto row = [&](QComboBox& of, int index) {
        waitUntil([&] { return of.view()->isVisible(); });
        const QPoint at = of.view()->visualRect(of.model()->index(index, 0)).center();
        moveTo(of.view()->viewport(), at);
        click(of.view()->viewport(), at);
    };
    s.nothing(text("open the popup of a combo box"), [&] { click(&box); });
    s.step(
        text("choose in the popup"), [&] { row(box, 1); }, uses({"combo chosen", "two chosen"}));
    s.step(
        text("wheel on a combo box"), [&] { wheel(&box, -1); },
        uses({"combo chosen", "three chosen"}));
    s.step(
        text("a key on a combo box"), [&] { keyOn(&box, Qt::Key_Up); },
        uses({"combo chosen", "two chosen"}));
    s.step(
        text("a letter on a combo box"), [&] { typeInto(&box, text("o")); },
        uses({"combo chosen", "one chosen"}));
    s.step(
        text("return in the popup"),
        [&] {
            keyOn(&box, Qt::Key_Space);
            waitUntil([&] { return box.view()->isVisible(); });
            key(Qt::Key_Down);
            key(Qt::Key_Return);
        },
        uses({"combo chosen", "two chosen"}));
    s.nothing(text("escape in the popup"), [&] {
        keyOn(&box, Qt::Key_Space);
        waitUntil([&] { return box.view()->isVisible(); });
        key(Qt::Key_Down);
        key(Qt::Key_Escape);
    });
    s.nothing(text("wheel on a disabled combo box"), [&] {
        box.setEnabled(false);
        wheel(&box, 1);
        box.setEnabled(true);
    });
    QComboBox& editable = *own.editableCombo;
    s.step(
        text("type into a combo box"),
        [&] {
            editable.lineEdit()->clear();
            typeInto(&editable, text("zz"));
        },
        uses({"editableCombo edited 2"}));
    s.step(
        text("wheel on an editable one"),
        [&] {
            editable.setCurrentIndex(0);
            wheel(&editable, -1);
        },
        uses({"editableCombo chosen", "two chosen"}));
    s.step(
        text("choose in its popup"),
        [&] {
            click(&editable, QPoint(editable.width() - 8, editable.height() / 2));
            row(editable, 2);
        },
        uses({"editableCombo chosen", "three chosen"}));
}

void tst_WidgetSession::values() {
    Session& s = *m_session;
    Controls& own = *m_own;
    for (QWidget* const spin :
         {static_cast<QWidget*>(own.spin), static_cast<QWidget*>(own.doubleSpin),
          static_cast<QWidget*>(own.date)}) {
        const QString changed = spin->objectName() + text(" changed");
        if (spin != own.date) {
            s.step(text("the upper arrow"), [&] { click(spin, upArrow(spin)); }, {changed});
            s.step(text("the lower arrow"), [&] { click(spin, downArrow(spin)); }, {changed});
        }
        s.step(text("the up key"), [&] { keyOn(spin, Qt::Key_Up); }, {changed});
        s.step(text("the wheel"), [&] { wheel(spin, 1); }, {changed});
    }
    s.step(
        text("type into a spin box"),
        [&] {
            own.spin->selectAll();
            typeInto(own.spin, text("7"));
        },
        uses({"spin changed"}));
    s.nothing(text("the focus leaves a spin box"), [&] { own.push->setFocus(); });
    s.step(
        text("hold an arrow"),
        [&] {
            const int before = own.spin->value();
            press(own.spin, upArrow(own.spin));
            waitUntil([&] { return own.spin->value() > before + 1; });
            release(own.spin, upArrow(own.spin));
        },
        uses({"spin changed"}));
    s.step(
        text("choose in the popup of a date"),
        [&] {
            own.date->setDate(QDate(2020, 5, 15));
            click(own.date, QPoint(own.date->width() - 6, own.date->height() / 2));
            waitUntil([&] { return QApplication::activePopupWidget() != nullptr; });
            key(Qt::Key_Right);
            key(Qt::Key_Return);
        },
        uses({"date changed"}));
    s.step(
        text("a key on a slider"), [&] { keyOn(own.slider, Qt::Key_Right); },
        uses({"slider moved"}));
    s.step(
        text("the wheel on a slider"), [&] { wheel(own.slider, 1); }, uses({"slider moved"}));
    s.step(
        text("a page of a slider"),
        [&] {
            own.slider->setValue(0);
            click(own.slider, QPoint(own.slider->width() - 20, own.slider->height() / 2));
        },
        uses({"slider moved"}));
    s.step(
        text("drag a slider"),
        [&] {
            own.slider->setValue(0);
            drag(own.slider, QPoint(6, own.slider->height() / 2),
                 QPoint(90, own.slider->height() / 2));
        },
        uses({"slider moved"}));
    s.nothing(text("press a slider's handle"), [&] {
        own.slider->setValue(0);
        click(own.slider, QPoint(6, own.slider->height() / 2));
    });
    s.step(
        text("a key on a dial"), [&] { keyOn(own.dial, Qt::Key_Up); }, uses({"dial moved"}));
    s.step(
        text("the wheel on a dial"), [&] { wheel(own.dial, 1); }, uses({"dial moved"}));
    s.step(
        text("drag a dial"), [&] { drag(own.dial, QPoint(15, 40), QPoint(45, 20)); },
        uses({"dial moved"}));
    s.nothing(text("the wheel on a disabled dial"), [&] {
        own.dial->setEnabled(false);
        wheel(own.dial, 1);
        own.dial->setEnabled(true);
    });
}

void tst_WidgetSession::tabsAndViews() {
    Session& s = *m_session;
    Controls& own = *m_own;
    QTabBar& bar = *own.tabs->tabBar();
    s.step(
        text("click a tab"), [&] { click(&bar, bar.tabRect(1).center()); },
        uses({"Second chosen"}));
    s.step(
        text("click the tab that is current"), [&] { click(&bar, bar.tabRect(1).center()); },
        uses({"Second chosen"}));
    s.step(
        text("the wheel on the tabs"), [&] { wheel(&bar, -1, bar.tabRect(1).center()); },
        uses({"Third chosen"}));
    s.step(
        text("a key on the tabs"), [&] { keyOn(&bar, Qt::Key_Left); }, uses({"Second chosen"}));
    s.step(
        text("control and tab inside a page"),
        [&] { keyOn(own.tabs->currentWidget(), Qt::Key_Tab, Qt::ControlModifier); },
        uses({"Third chosen"}));
    s.nothing(text("a disabled tab"), [&] {
        bar.setTabEnabled(0, false);
        click(&bar, bar.tabRect(0).center());
        bar.setTabEnabled(0, true);
    });
    s.nothing(text("beside the tabs"),
              [&] { click(own.tabs, QPoint(own.tabs->width() - 4, bar.height() / 2)); });
    QListWidget& list = *own.list;
    const auto item = [&](int index) { return list.visualItemRect(list.item(index)).center(); };
    s.step(
        text("click a row"), [&] { click(list.viewport(), item(1)); },
        uses({"list chosen", "green chosen"}));
    s.step(
        text("a key in a list"), [&] { keyOn(&list, Qt::Key_Down); },
        uses({"list chosen", "blue chosen"}));
    s.step(
        text("return in a list"), [&] { keyOn(&list, Qt::Key_Return); },
        uses({"list activated", "blue chosen"}));
    s.nothing(text("scroll a list"), [&] { wheel(list.viewport(), -1); });
    QTableWidget& table = *own.table;
    const auto cell = [&](int row, int column) {
        return table.visualItemRect(table.item(row, column)).center();
    };
    s.step(
        text("click a cell"), [&] { click(table.viewport(), cell(1, 1)); },
        uses({"table chosen", "b chosen"}));
    s.step(
        text("click the header of a column"),
        [&] { click(table.horizontalHeader()->viewport(), QPoint(10, 8)); },
        uses({"table chosen"}));
    s.step(
        text("tick an item"),
        [&] {
            const QRect rect = table.visualItemRect(table.item(2, 0));
            click(table.viewport(), QPoint(rect.left() + 9, rect.center().y()));
        },
        uses({"2 chosen", "table chosen", "table edited"}));
    s.step(
        text("edit a cell"), [&] { click(table.viewport(), cell(0, 1)); },
        uses({"a chosen", "table chosen"}));
    s.step(
        text("type and press return"),
        [&] {
            key(Qt::Key_F2);
            type(text("q"));
            key(Qt::Key_Return);
        },
        uses({"table edited"}));
    s.nothing(text("escape an editor"), [&] {
        key(Qt::Key_F2);
        type(text("w"));
        key(Qt::Key_Escape);
    });
    s.step(
        text("leave an editor by a click elsewhere"),
        [&] {
            key(Qt::Key_F2);
            type(text("e"));
            click(own.push);
        },
        uses({"push clicked", "table edited"}));
}

void tst_WidgetSession::trees() {
    Session& s = *m_session;
    Controls& own = *m_own;
    QTreeWidget& tree = *own.tree;
    QTreeWidgetItem* const fruit = tree.findItems(text("fruit"), Qt::MatchExactly).constFirst();
    s.step(
        text("open a branch"),
        [&] {
            const QRect rect = tree.visualItemRect(fruit);
            click(tree.viewport(), QPoint(rect.left() - 10, rect.center().y()));
        },
        uses({"tree expanded"}));
    s.step(
        text("click an item of a tree"),
        [&] { click(tree.viewport(), tree.visualItemRect(fruit->child(0)).center()); },
        uses({"apple chosen", "tree chosen"}));
    s.step(
        text("close a branch by key"),
        [&] {
            tree.setCurrentItem(fruit);
            keyOn(&tree, Qt::Key_Left);
        },
        uses({"tree expanded"}));
    s.step(
        text("sort by a header"),
        [&] { click(tree.header()->viewport(), QPoint(20, tree.header()->height() / 2)); },
        uses({"tree sorted"}));
    QCalendarWidget& calendar = *own.calendar;
    s.step(
        text("a key in a calendar"),
        [&] {
            calendar.setFocus();
            key(Qt::Key_Right);
        },
        uses({"calendar chosen"}));
    s.step(
        text("the next month of a calendar"),
        [&] { click(calendar.findChild<QToolButton*>(text("qt_calendar_nextmonth"))); },
        uses({"calendar chosen"}));
    s.step(
        text("a day of a calendar"),
        [&] {
            auto* const view = calendar.findChild<QAbstractItemView*>();
            click(view->viewport(), middleOf(view->viewport()));
        },
        uses({"calendar chosen"}));
}

void tst_WidgetSession::menus() {
    Session& s = *m_session;
    Stage& stage = *m_stage;
    QMenuBar& bar = *stage.menuBar();
    const auto openFile = [&] {
        click(&bar, bar.actionGeometry(stage.fileMenu->menuAction()).center());
        waitUntil([&] { return stage.fileMenu->isVisible(); });
    };
    const auto openSub = [&] {
        openFile();
        clickItem(stage.fileMenu, stage.subMenu->menuAction());
        waitUntil([&] { return stage.subMenu->isVisible(); });
    };
    s.nothing(text("open a menu and close it"), [&] {
        openFile();
        key(Qt::Key_Escape);
        key(Qt::Key_Escape);
    });
    s.step(
        text("click a menu item"),
        [&] {
            openFile();
            clickItem(stage.fileMenu, stage.open);
        },
        uses({"Open triggered"}));
    s.nothing(text("click a disabled item"), [&] {
        stage.open->setEnabled(false);
        openFile();
        clickItem(stage.fileMenu, stage.open);
        key(Qt::Key_Escape);
        key(Qt::Key_Escape);
        stage.open->setEnabled(true);
    });
    s.step(
        text("return on a menu item"),
        [&] {
            openFile();
            stage.fileMenu->setActiveAction(stage.save);
            key(Qt::Key_Return);
        },
        uses({"Save triggered"}));
    s.step(
        text("a mnemonic in a menu"),
        [&] {
            openFile();
            key(Qt::Key_O);
        },
        uses({"Open triggered"}));
    s.step(
        text("an item of a sub menu"),
        [&] {
            openSub();
            clickItem(stage.subMenu, stage.inSub);
        },
        uses({"Inner triggered"}));
    s.step(
        text("a choice: the other one goes off"),
        [&] {
            openSub();
            clickItem(stage.subMenu, stage.choiceB);
        },
        uses({"choiceB triggered"}));
    s.step(
        text("the mnemonic of the menu bar"),
        [&] {
            key(Qt::Key_F, Qt::AltModifier);
            waitUntil([&] { return stage.fileMenu->isVisible(); });
            key(Qt::Key_S);
        },
        uses({"Save triggered"}));
    s.step(
        text("an action whose slot triggers another one of its menu"),
        [&] {
            const auto triggering =
                connect(stage.open, &QAction::triggered, stage.save, &QAction::trigger);
            openFile();
            clickItem(stage.fileMenu, stage.open);
            disconnect(triggering);
        },
        uses({"Open triggered"}));
    s.step(
        text("an action whose slot deletes it"),
        [&] {
            openFile();
            clickItem(stage.fileMenu, stage.dying);
            QCoreApplication::processEvents();
            click(m_own->tool); // tells that the action has died
        },
        uses({"Dying triggered", "tool clicked"}));
    s.step(
        text("a tool button of an action"),
        [&] { click(stage.toolBar->widgetForAction(stage.save)); }, uses({"Save triggered"}));
    s.step(
        text("a checkable action in a tool bar"),
        [&] { click(stage.toolBar->widgetForAction(m_own->checkableAction)); },
        uses({"checkableAction triggered"}));
    s.nothing(text("a disabled action in a tool bar"), [&] {
        m_own->action->setEnabled(false);
        click(stage.toolBar->widgetForAction(m_own->action));
        m_own->action->setEnabled(true);
    });
    s.step(
        text("a context menu that a slot runs"),
        [&] {
            stage.canvas->setContextMenuPolicy(Qt::CustomContextMenu);
            QAction chosen(text("Chosen"), nullptr);
            const auto asking =
                connect(stage.canvas, &QWidget::customContextMenuRequested, [&](const QPoint& at) {
                    QMenu menu;
                    menu.addAction(&chosen);
                    QTimer::singleShot(0, &menu, [&] { clickItem(&menu, &chosen); });
                    menu.exec(stage.canvas->mapToGlobal(at));
                });
            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                    stage.canvas->mapToGlobal(QPoint(5, 5)));
            QCoreApplication::sendEvent(stage.canvas, &event);
            disconnect(asking);
        },
        uses({"Chosen triggered"}));
}

void tst_WidgetSession::shortcuts() {
    Session& s = *m_session;
    Stage& stage = *m_stage;
    s.step(
        text("the shortcut of an action"), [&] { key(Qt::Key_S, Qt::ControlModifier); },
        uses({"Save triggered"}));
    s.nothing(text("the shortcut of a disabled action"), [&] {
        stage.save->setEnabled(false);
        key(Qt::Key_S, Qt::ControlModifier);
        stage.save->setEnabled(true);
    });
    s.step(
        text("a shortcut without an action"), [&] { key(Qt::Key_J, Qt::ControlModifier); },
        uses({"shortcut triggered"}));
    s.nothing(text("it is disabled"), [&] {
        stage.shortcut->setEnabled(false);
        key(Qt::Key_J, Qt::ControlModifier);
        stage.shortcut->setEnabled(true);
    });
    s.step(
        text("a shortcut whose slot clicks a button"),
        [&] {
            const auto clicking =
                connect(stage.shortcut, &QShortcut::activated, m_own->check, &QCheckBox::click);
            key(Qt::Key_J, Qt::ControlModifier);
            disconnect(clicking);
        },
        uses({"shortcut triggered"}));
    using Vorsk::UIControls::Attribute;
    s.nothing(text("by which ways it was reached"), [&] {
        QCOMPARE(s.probe().attribute(stage.save, Attribute::Ways), text("menu toolBar shortcut"));
        QCOMPARE(s.probe().attribute(stage.save, Attribute::UsedWays),
                 text("menu toolBar shortcut"));
    });
}

void tst_WidgetSession::others() {
    Session& s = *m_session;
    Stage& stage = *m_stage;
    s.step(
        text("follow a link of a label"),
        [&] { click(stage.link, QPoint(15, stage.link->height() / 2)); },
        uses({"follow me followed"}));
    s.nothing(text("beside the link"),
              [&] { click(stage.link, QPoint(stage.link->width() - 2, 2)); });
    s.step(
        text("follow a link of a browser"),
        [&] {
            click(stage.browser->viewport(), stage.browser->cursorRect().center() + QPoint(8, 0));
        },
        uses({"browse followed"}));
    s.step(
        text("press what takes presses"), [&] { click(stage.canvas); }, uses({"canvas pressed"}));
    s.step(
        text("drag on it"), [&] { drag(stage.canvas, QPoint(10, 10), QPoint(80, 40)); },
        uses({"canvas dragged", "canvas pressed"}));
    s.nothing(text("press what takes none"),
              [&] { click(stage.centralWidget(), QPoint(stage.centralWidget()->width() / 2, 3)); });
    s.step(
        text("press a graphics item"),
        [&] { click(stage.graphics->viewport(), stage.graphics->mapFromScene(10, 10)); },
        uses({" pressed"}));
    s.nothing(text("press beside the graphics items"),
              [&] { click(stage.graphics->viewport(), stage.graphics->mapFromScene(70, 10)); });
    s.step(
        text("a slot that runs a dialog, whose button is clicked"),
        [&] {
            QDialog dialog;
            auto* const ok = new QPushButton(text("OK"), &dialog);
            ok->setObjectName(text("ok"));
            connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
            const auto running = connect(m_own->push, &QPushButton::clicked, [&] {
                QTimer::singleShot(0, &dialog, [&] {
                    waitUntil([&] { return dialog.isActiveWindow(); });
                    click(ok);
                });
                dialog.exec();
            });
            click(m_own->push);
            disconnect(running);
        },
        uses({"ok clicked", "push clicked"}));
}

void tst_WidgetSession::dialogs() {
    Session& s = *m_session;
    Stage& stage = *m_stage;
    s.step(
        text("an action that runs a dialog counts before it"),
        [&] {
            QDialog dialog;
            int countedInside = -1;
            const auto running = connect(stage.open, &QAction::triggered, [&] {
                QTimer::singleShot(0, &dialog, [&] {
                    countedInside =
                        ControlsProbe::usage(s.probe().element(stage.open), "triggered");
                    dialog.reject();
                });
                dialog.exec();
            });
            const int before = ControlsProbe::usage(s.probe().element(stage.open), "triggered");
            QMenuBar& bar = *stage.menuBar();
            click(&bar, bar.actionGeometry(stage.fileMenu->menuAction()).center());
            waitUntil([&] { return stage.fileMenu->isVisible(); });
            clickItem(stage.fileMenu, stage.open);
            disconnect(running);
            QCOMPARE(countedInside, before + 1);
        },
        uses({"Open triggered"}));
    QDialog dialog;
    auto* const column = new QVBoxLayout(&dialog);
    auto* const edit = new QLineEdit;
    edit->setObjectName(text("edit"));
    auto* const label = new QLabel(text("&Buddy"));
    auto* const buddy = new QPushButton(text("buddied"));
    buddy->setObjectName(text("buddied"));
    buddy->setAutoDefault(false);
    label->setBuddy(buddy);
    auto* const accept = new QPushButton(text("Accept"));
    accept->setObjectName(text("accept"));
    accept->setDefault(true);
    for (QWidget* const widget : {static_cast<QWidget*>(edit), static_cast<QWidget*>(label),
                                  static_cast<QWidget*>(buddy), static_cast<QWidget*>(accept)}) {
        column->addWidget(widget);
    }
    dialog.show();
    dialog.activateWindow();
    waitUntil([&] { return dialog.isActiveWindow(); });
    s.step(
        text("return in a dialog's text clicks its default button"),
        [&] { keyOn(edit, Qt::Key_Return); }, uses({"accept clicked", "edit confirmed"}));
    s.step(
        text("the mnemonic of a button's label"),
        [&] {
            int clicks = 0;
            const auto counting = connect(buddy, &QPushButton::clicked, [&] { ++clicks; });
            key(Qt::Key_B, Qt::AltModifier);
            waitUntil([&] { return clicks == 1; });
            disconnect(counting);
        },
        uses({"buddied clicked"}));
    s.step(
        text("a button that ends its dialog"),
        [&] {
            connect(accept, &QPushButton::clicked, &dialog, &QDialog::accept);
            click(accept);
        },
        uses({"accept clicked"}));
}

void tst_WidgetSession::theProgramAlone() {
    Session& s = *m_session;
    m_stage->activateWindow();
    waitUntil([&] { return m_stage->isActiveWindow(); });
    for (int i = 0; i < 5; ++i) {
        s.nothing(text("the program changes what a person has operated"), [&] { m_own->change(); });
        s.nothing(text("it does so in a timer"), [&] {
            bool isDone = false;
            QTimer::singleShot(0, m_own, [&] {
                m_own->change();
                isDone = true;
            });
            waitUntil([&] { return isDone; });
        });
        s.step(
            text("it does so in the slot of another control"),
            [&] {
                auto* const button = m_stage->findChild<QWidget*>(text("tool"));
                const auto changing = connect(m_own->tool, &QToolButton::clicked, m_stage->victims,
                                              &Controls::change);
                click(button);
                disconnect(changing);
            },
            uses({"tool clicked"}));
    }
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_WidgetSession test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_widgetsession.moc"

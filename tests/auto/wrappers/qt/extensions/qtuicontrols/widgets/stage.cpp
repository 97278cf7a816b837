#include "stage.h"

#include <QAction>
#include <QActionGroup>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDial>
#include <QDoubleSpinBox>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSlider>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextBrowser>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

void Canvas::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

Controls::Controls(const QString& prefix)
    : m_prefix(prefix) {
    auto* const columns = new QHBoxLayout(this);
    for (int i = 0; i < 3; ++i) {
        columns->addLayout(new QVBoxLayout);
    }
    makeButtons();
    makeInputs();
    makeViews();
    action = new QAction(m_prefix + QStringLiteral("Action"), this);
    name(action, "action");
    checkableAction = new QAction(m_prefix + QStringLiteral("Checkable"), this);
    checkableAction->setCheckable(true);
    name(checkableAction, "checkableAction");
}

void Controls::name(QObject* object, const char* is) {
    object->setObjectName(m_prefix + QLatin1String(is));
}

void Controls::makeButtons() {
    auto* const column = static_cast<QVBoxLayout*>(layout()->itemAt(0)->layout());
    const auto add = [&](QWidget* widget, const char* is) {
        name(widget, is);
        column->addWidget(widget);
    };
    add(push = new QPushButton(QStringLiteral("Push")), "push");
    add(toggle = new QPushButton(QStringLiteral("Toggle")), "toggle");
    toggle->setCheckable(true);
    add(repeating = new QPushButton(QStringLiteral("Repeat")), "repeating");
    repeating->setAutoRepeat(true);
    repeating->setAutoRepeatDelay(20);
    repeating->setAutoRepeatInterval(10);
    add(tool = new QToolButton, "tool");
    add(radioA = new QRadioButton(QStringLiteral("A")), "radioA");
    add(radioB = new QRadioButton(QStringLiteral("B")), "radioB");
    radioA->setChecked(true);
    add(check = new QCheckBox(QStringLiteral("Check")), "check");
    add(tristate = new QCheckBox(QStringLiteral("Three")), "tristate");
    tristate->setTristate(true);
    add(group = new QGroupBox(QStringLiteral("Group")), "group");
    group->setCheckable(true);
    group->setLayout(new QVBoxLayout);
    group->layout()->addWidget(new QLabel(QStringLiteral("inside")));
    column->addStretch();
}

void Controls::makeInputs() {
    auto* const column = static_cast<QVBoxLayout*>(layout()->itemAt(1)->layout());
    const auto add = [&](QWidget* widget, const char* is) {
        name(widget, is);
        column->addWidget(widget);
    };
    const QStringList options{QStringLiteral("one"), QStringLiteral("two"),
                              QStringLiteral("three")};
    add(combo = new QComboBox, "combo");
    combo->addItems(options);
    add(editableCombo = new QComboBox, "editableCombo");
    editableCombo->setEditable(true);
    editableCombo->addItems(options);
    add(line = new QLineEdit, "line");
    add(plain = new QPlainTextEdit, "plain");
    add(rich = new QTextEdit, "rich");
    plain->setFixedHeight(50);
    rich->setFixedHeight(50);
    add(keys = new QKeySequenceEdit, "keys");
    add(spin = new QSpinBox, "spin");
    spin->setRange(0, 1000000);
    add(doubleSpin = new QDoubleSpinBox, "doubleSpin");
    doubleSpin->setRange(0, 1000000);
    add(date = new QDateEdit(QDate(2020, 5, 15)), "date");
    date->setCalendarPopup(true);
    add(slider = new QSlider(Qt::Horizontal), "slider");
    slider->setRange(0, 1000);
    add(dial = new QDial, "dial");
    dial->setRange(0, 1000);
    dial->setFixedSize(60, 60);
    column->addStretch();
}

void Controls::makeViews() {
    auto* const column = static_cast<QVBoxLayout*>(layout()->itemAt(2)->layout());
    const auto add = [&](QWidget* widget, const char* is) {
        name(widget, is);
        column->addWidget(widget);
    };
    add(tabs = new QTabWidget, "tabs");
    for (const char* const title : {"First", "Second", "Third"}) {
        tabs->addTab(new QLineEdit, m_prefix + QLatin1String(title));
    }
    tabs->setFixedHeight(70);
    add(list = new QListWidget, "list");
    list->addItems({m_prefix + QStringLiteral("red"), m_prefix + QStringLiteral("green"),
                    m_prefix + QStringLiteral("blue")});
    add(tree = new QTreeWidget, "tree");
    auto* const fruit = new QTreeWidgetItem(tree, {m_prefix + QStringLiteral("fruit")});
    fruit->addChild(new QTreeWidgetItem({m_prefix + QStringLiteral("apple")}));
    new QTreeWidgetItem(tree, {m_prefix + QStringLiteral("herbs")});
    tree->setSortingEnabled(true);
    tree->setHeaderLabel(QStringLiteral("Names"));
    add(table = new QTableWidget(3, 2), "table");
    for (int row = 0; row < 3; ++row) {
        auto* const item = new QTableWidgetItem(m_prefix + QString::number(row));
        item->setCheckState(Qt::Unchecked);
        table->setItem(row, 0, item);
        table->setItem(row, 1,
                       new QTableWidgetItem(m_prefix + QString(QLatin1Char(char('a' + row)))));
    }
    list->setFixedHeight(90);
    tree->setFixedHeight(100);
    table->setFixedHeight(140);
    add(calendar = new QCalendarWidget, "calendar");
    calendar->setSelectedDate(QDate(2020, 5, 15));
    column->addStretch();
}

void Controls::change() {
    ++m_round;
    const QString text = QString::number(m_round);
    push->click();
    toggle->toggle();
    repeating->click();
    tool->click();
    (radioA->isChecked() ? radioB : radioA)->setChecked(true);
    check->click();
    tristate->setCheckState(Qt::CheckState(m_round % 3));
    group->setChecked(!group->isChecked());
    combo->setCurrentIndex(m_round % 3);
    editableCombo->setEditText(text);
    line->setText(text);
    plain->setPlainText(text);
    rich->insertPlainText(text);
    keys->setKeySequence(QKeySequence(Qt::CTRL + Qt::Key_A + m_round % 20));
    spin->setValue(m_round);
    doubleSpin->stepUp();
    date->setDate(QDate(2020, 1, 1).addDays(m_round));
    slider->triggerAction(m_round % 1000 == 999 ? QSlider::SliderToMinimum
                                                : QSlider::SliderSingleStepAdd);
    dial->setValue(m_round % 1000);
    tabs->setCurrentIndex(m_round % 3);
    list->setCurrentRow(m_round % 3);
    tree->topLevelItem(0)->setExpanded(m_round % 2 == 0);
    tree->sortItems(0, m_round % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
    table->selectRow(m_round % 3);
    table->item(0, 0)->setCheckState(m_round % 2 == 0 ? Qt::Checked : Qt::Unchecked);
    calendar->setSelectedDate(QDate(2020, 1, 1).addDays(m_round));
    action->trigger();
    checkableAction->setChecked(!checkableAction->isChecked());
}

Stage::Stage()
    : own(new Controls(QString()))
    , victims(new Controls(QStringLiteral("victim "))) {
    auto* const central = new QWidget;
    auto* const columns = new QHBoxLayout(central);
    columns->addWidget(own);
    auto* const others = new QVBoxLayout;
    columns->addLayout(others);
    link = new QLabel(QStringLiteral("<a href=\"there\">follow me</a>"));
    others->addWidget(link);
    browser = new QTextBrowser;
    browser->setHtml(QStringLiteral("<a href=\"#here\">browse</a>"));
    browser->setOpenLinks(false);
    browser->setFixedHeight(60);
    others->addWidget(browser);
    canvas = new Canvas;
    canvas->setObjectName(QStringLiteral("canvas"));
    canvas->setFixedSize(100, 60);
    others->addWidget(canvas);
    auto* const scene = new QGraphicsScene(0, 0, 80, 60, this);
    scene->addRect(0, 0, 40, 60)->setFlag(QGraphicsItem::ItemIsSelectable);
    graphics = new QGraphicsView(scene);
    graphics->setFixedSize(100, 80);
    others->addWidget(graphics);
    others->addStretch();
    columns->addWidget(victims);
    setCentralWidget(central);
    makeMenus();
    // Whatever a person does to one set has the program change the other.
    upset(this);
    m_timer.setInterval(7);
    connect(&m_timer, &QTimer::timeout, victims, &Controls::change);
    m_timer.start();
}

void Stage::makeMenus() {
    fileMenu = menuBar()->addMenu(QStringLiteral("&File"));
    const auto add = [this](QMenu* menu, const char* is) {
        QAction* const action = menu->addAction(QLatin1String(is));
        action->setObjectName(QString(QLatin1String(is)).remove(QLatin1Char('&')));
        return action;
    };
    open = add(fileMenu, "&Open");
    save = add(fileMenu, "&Save");
    save->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_S));
    fileMenu->addSeparator();
    subMenu = fileMenu->addMenu(QStringLiteral("S&ub"));
    inSub = add(subMenu, "&Inner");
    auto* const choices = new QActionGroup(this);
    choiceA = add(subMenu, "choice&A");
    choiceB = add(subMenu, "choice&B");
    for (QAction* const choice : {choiceA, choiceB}) {
        choice->setCheckable(true);
        choices->addAction(choice);
    }
    choiceA->setChecked(true);
    dying = add(fileMenu, "&Dying");
    connect(dying, &QAction::triggered, dying, [this] { delete dying; });
    toolBar = addToolBar(QStringLiteral("Tools"));
    toolBar->addAction(save);
    toolBar->addAction(own->action);
    toolBar->addAction(own->checkableAction);
    toolBar->addAction(victims->action);
    shortcut = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_J), this);
    shortcut->setObjectName(QStringLiteral("shortcut"));
}

/** Connects every signal of the person's controls to what changes the others. */
void Stage::upset(QWidget* root) {
    const int slot = victims->metaObject()->indexOfSlot("change()");
    const QObjectList objects = root->findChildren<QObject*>();
    for (QObject* const object : objects) {
        const bool isVictim =
            object->objectName().startsWith(QLatin1String("victim")) ||
            (object->isWidgetType() && victims->isAncestorOf(static_cast<QWidget*>(object)));
        if (isVictim || object->objectName().isEmpty()) {
            continue;
        }
        for (const char* const signal :
             {"clicked(bool)", "pressed()", "toggled(bool)", "activated(int)",
              "textEdited(QString)", "textChanged()", "returnPressed()", "valueChanged(int)",
              "dateTimeChanged(QDateTime)", "currentChanged(int)", "pressed(QModelIndex)",
              "activated(QModelIndex)", "triggered(bool)", "activated()",
              "keySequenceChanged(QKeySequence)", "valueChanged(double)", "selectionChanged()",
              "linkActivated(QString)"}) {
            const int number = object->metaObject()->indexOfSignal(signal);
            if (number != -1) {
                QMetaObject::connect(object, number, victims, slot);
            }
        }
    }
}

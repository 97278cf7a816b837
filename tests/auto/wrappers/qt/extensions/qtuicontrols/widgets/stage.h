// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

QT_BEGIN_NAMESPACE
class QAction;
class QButtonGroup;
class QCalendarWidget;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QDial;
class QGraphicsScene;
class QGraphicsView;
class QGroupBox;
class QKeySequenceEdit;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QShortcut;
class QSlider;
class QSpinBox;
class QDoubleSpinBox;
class QTabWidget;
class QTableWidget;
class QTextBrowser;
class QTextEdit;
class QToolBar;
class QToolBox;
class QToolButton;
class QTreeWidget;
class QVBoxLayout;
QT_END_NAMESPACE

/** Takes presses, and is none of Qt's controls. */
class Canvas : public QWidget {
    Q_OBJECT

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};

/** Every kind of control once, each called by its object name. */
class Controls : public QWidget {
    Q_OBJECT

public:
    /** @param prefix goes before the name of each */
    explicit Controls(const QString& prefix);

    QPushButton* push;
    QPushButton* toggle;
    QPushButton* repeating;
    QToolButton* tool;
    QRadioButton* radioA;
    QRadioButton* radioB;
    QCheckBox* check;
    QCheckBox* tristate;
    QGroupBox* group;
    QComboBox* combo;
    QComboBox* editableCombo;
    QLineEdit* line;
    QPlainTextEdit* plain;
    QTextEdit* rich;
    QKeySequenceEdit* keys;
    QSpinBox* spin;
    QDoubleSpinBox* doubleSpin;
    QDateEdit* date;
    QSlider* slider;
    QDial* dial;
    QTabWidget* tabs;
    QListWidget* list;
    QTreeWidget* tree;
    QTableWidget* table;
    QCalendarWidget* calendar;
    QAction* action;
    QAction* checkableAction;

public Q_SLOTS:
    /** Changes every control by its program's interface. */
    void change();

private:
    void makeButtons();
    void makeInputs();
    void makeViews();
    void name(QObject* object, const char* is);

    QString m_prefix;
    int m_round = 0;
};

/**
 * A window with every kind of control, and another set of them that nobody touches: a timer changes
 * these all the time, and so does whatever the touched ones signal. Nothing of them may count.
 */
class Stage : public QMainWindow {
    Q_OBJECT

public:
    Stage();

    /** The set that a person operates. */
    Controls* own;
    /** The set that only the program changes. */
    Controls* victims;
    QMenu* fileMenu;
    QMenu* subMenu;
    QAction* open;
    QAction* save;
    QAction* choiceA;
    QAction* choiceB;
    QAction* inSub;
    QAction* dying;
    QToolBar* toolBar;
    QShortcut* shortcut;
    QLabel* link;
    QTextBrowser* browser;
    Canvas* canvas;
    QGraphicsView* graphics;

private:
    void makeMenus();
    void upset(QWidget* root);

    QTimer m_timer;
};

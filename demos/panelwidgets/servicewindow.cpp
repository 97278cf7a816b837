// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "panelwidgets/servicewindow.h"

#include "panelwidgets/gauge.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDial>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace Panel {

ServiceWindow::ServiceWindow(QWidget* parent)
    : QMainWindow(parent) {
    setWindowTitle(tr("Service"));
    setAttribute(Qt::WA_DeleteOnClose);

    auto* const pages = new QTabWidget;
    pages->addTab(createCircuitPage(), tr("Circuit"));
    pages->addTab(createPlanPage(), tr("Plan"));
    pages->addTab(createLogPage(), tr("Log"));
    pages->addTab(createDiagnosisPage(), tr("Diagnosis"));
    setCentralWidget(pages);

    // For those who know it: no menu and no tool bar shows it.
    auto* const vent = new QAction(tr("Vent the circuit"), this);
    vent->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    connect(vent, &QAction::triggered, this, [this] { showStatus(tr("Venting")); });
    addAction(vent);
    showStatus(tr("Ready"));
}

QWidget* ServiceWindow::createCircuitPage() {
    auto* const mode = new QComboBox;
    mode->addItems({tr("Comfort"), tr("Economy"), tr("Frost protection only")});
    auto* const hours = new QSpinBox;
    hours->setRange(0, 24);
    auto* const curve = new QSlider(Qt::Horizontal);
    auto* const speed = new QDial;
    auto* const form = new QFormLayout;
    form->addRow(new QRadioButton(tr("Hea&ting")));
    form->addRow(new QRadioButton(tr("&Cooling")));
    form->addRow(tr("Mode"), mode);
    form->addRow(tr("Pause in hours"), hours);
    form->addRow(tr("Heating curve"), curve);
    form->addRow(tr("Pump speed"), speed);

    auto* const holiday = new QGroupBox(tr("Holiday"));
    holiday->setCheckable(true);
    holiday->setChecked(false);
    auto* const holidayLayout = new QVBoxLayout(holiday);
    holidayLayout->addWidget(new QCheckBox(tr("Keep the water hot")));

    auto* const calibrate = new QPushButton(tr("Calibrate"));
    calibrate->setEnabled(false);
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addWidget(holiday);
    layout->addWidget(calibrate);
    return page;
}

QWidget* ServiceWindow::createPlanPage() {
    auto* const days = new QListWidget;
    days->setAccessibleName(tr("Days"));
    days->addItems({tr("Workday"), tr("Weekend"), tr("Holiday")});

    auto* const rooms = new QTreeWidget;
    rooms->setAccessibleName(tr("Rooms"));
    rooms->setHeaderHidden(true);
    auto* const floor = new QTreeWidgetItem(rooms, {tr("Ground floor")});
    new QTreeWidgetItem(floor, {tr("Hall")});
    new QTreeWidgetItem(floor, {tr("Living room")});

    auto* const times = new QTableWidget(2, 2);
    times->setAccessibleName(tr("Times"));
    times->setHorizontalHeaderLabels({tr("From"), tr("To")});
    times->setItem(0, 0, new QTableWidgetItem(tr("06:00")));
    times->setItem(0, 1, new QTableWidgetItem(tr("09:00")));
    times->setItem(1, 0, new QTableWidgetItem(tr("16:00")));
    times->setItem(1, 1, new QTableWidgetItem(tr("22:00")));

    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(days);
    layout->addWidget(rooms);
    layout->addWidget(times);
    return page;
}

QWidget* ServiceWindow::createLogPage() {
    auto* const note = new QPlainTextEdit;
    note->setPlaceholderText(tr("Note for the next visit"));
    auto* const gauge = new Gauge;
    connect(gauge, &Gauge::reset, this, [this] { showStatus(tr("Highest pressure reset")); });
    auto* const manual = new QLabel(tr("<a href=\"manual\">Manual</a>"));
    connect(manual, &QLabel::linkActivated, this, [this] { showStatus(tr("Manual opened")); });

    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(note);
    layout->addWidget(gauge);
    layout->addWidget(manual);
    return page;
}

QWidget* ServiceWindow::createDiagnosisPage() {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(new QCheckBox(tr("Write a protocol")));
    layout->addWidget(new QPushButton(tr("Test the pump")));
    layout->addWidget(new QPushButton(tr("Test the valve")));
    layout->addStretch();
    return page;
}

void ServiceWindow::showStatus(const QString& text) {
    statusBar()->showMessage(text);
}

} // namespace Panel

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "panelwidgets/panelwindow.h"

#include "panelwidgets/servicewindow.h"
#include "panelwidgets/settingsdialog.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace Panel {

PanelWindow::PanelWindow() {
    setWindowTitle(tr("Heating panel"));
    createMenus();

    auto* const tools = addToolBar(tr("Tools"));
    tools->addAction(tr("Refresh"), this, [this] { showStatus(tr("Values refreshed")); });
    tools->addAction(tr("Print"), this, [this] { showStatus(tr("Printed")); });
    tools->addAction(tr("Service..."), this, [this] { (new ServiceWindow(this))->show(); });

    auto* const page = new QWidget;
    auto* const layout = new QHBoxLayout(page);
    layout->addWidget(createCircuitPage());
    layout->addWidget(createSensorTable(), 1);
    setCentralWidget(page);
    showStatus(tr("Ready"));
    resize(760, 420);
}

void PanelWindow::createMenus() {
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Load profile"), this, [this] { showStatus(tr("Profile loaded")); });
    file->addAction(tr("&Save profile"), this, [this] { showStatus(tr("Profile saved")); });
    QMenu* const exportMenu = file->addMenu(tr("&Export"));
    exportMenu->addAction(tr("As &table"), this, [this] { showStatus(tr("Exported as table")); });
    exportMenu->addAction(tr("As &chart"), this, [this] { showStatus(tr("Exported as chart")); });
    file->addSeparator();
    file->addAction(tr("&Quit"), qApp, &QApplication::quit);

    QMenu* const view = menuBar()->addMenu(tr("&View"));
    view->addAction(tr("Show &alarms"))->setCheckable(true);
    view->addAction(tr("Show &trends"))->setCheckable(true);

    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About this device"), this, &PanelWindow::openAbout);
}

QWidget* PanelWindow::createCircuitPage() {
    m_roomName = new QLineEdit;
    m_roomName->setPlaceholderText(tr("Room name"));
    m_setPoint = new QLineEdit;
    m_setPoint->setPlaceholderText(tr("Set point in °C"));
    m_nightSetback = new QCheckBox(tr("&Night setback"));
    m_frostProtection = new QCheckBox(tr("F&rost protection"));
    m_pumpSchedule = new QCheckBox(tr("&Pump schedule"));
    m_pumpSchedule->setTristate(true);

    auto* const form = new QFormLayout;
    form->addRow(tr("Room"), m_roomName);
    form->addRow(tr("Set point"), m_setPoint);

    auto* const applyButton = new QPushButton(tr("App&ly"));
    auto* const resetButton = new QPushButton(tr("R&eset"));
    auto* const settingsButton = new QPushButton(tr("&Settings..."));
    connect(applyButton, &QPushButton::clicked, this, &PanelWindow::apply);
    connect(resetButton, &QPushButton::clicked, this, &PanelWindow::reset);
    connect(settingsButton, &QPushButton::clicked, this, &PanelWindow::openSettings);

    auto* const circuit = new QGroupBox(tr("Heating circuit"));
    auto* const layout = new QVBoxLayout(circuit);
    layout->addLayout(form);
    layout->addWidget(m_nightSetback);
    layout->addWidget(m_frostProtection);
    layout->addWidget(m_pumpSchedule);
    layout->addStretch();
    layout->addWidget(applyButton);
    layout->addWidget(resetButton);
    layout->addWidget(settingsButton);
    return circuit;
}

QTableWidget* PanelWindow::createSensorTable() {
    struct Sensor {
        QString name;
        QString value;
    };
    const QList<Sensor> sensors = {{tr("Boiler"), tr("62.5 °C")},
                                   {tr("Flow"), tr("48.0 °C")},
                                   {tr("Return"), tr("39.5 °C")},
                                   {tr("Outside"), tr("-2.0 °C")}};
    auto* const table = new QTableWidget(sensors.size(), 2);
    table->setHorizontalHeaderLabels({tr("Sensor"), tr("Value")});
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    for (int row = 0; row < sensors.size(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(sensors.at(row).name));
        table->setItem(row, 1, new QTableWidgetItem(sensors.at(row).value));
    }
    return table;
}

void PanelWindow::showStatus(const QString& text) {
    statusBar()->showMessage(text);
}

void PanelWindow::apply() {
    showStatus(tr("Applied to %1").arg(m_roomName->text()));
}

void PanelWindow::reset() {
    m_roomName->clear();
    m_setPoint->clear();
    m_nightSetback->setChecked(false);
    m_frostProtection->setChecked(false);
    showStatus(tr("Reset"));
}

void PanelWindow::openSettings() {
    auto* const dialog = new SettingsDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void PanelWindow::openAbout() {
    auto* const dialog = new QDialog(this);
    dialog->setWindowTitle(tr("About"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    auto* const layout = new QVBoxLayout(dialog);
    layout->addWidget(new QLabel(tr("Heating panel, firmware 4.2")));
    auto* const close = new QPushButton(tr("Close"));
    connect(close, &QPushButton::clicked, dialog, &QDialog::close);
    layout->addWidget(close);
    dialog->open();
}

} // namespace Panel

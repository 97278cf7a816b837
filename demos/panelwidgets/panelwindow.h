// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QLineEdit;
class QPushButton;
class QTableWidget;
QT_END_NAMESPACE

namespace Panel {

/** The main window of the panel: menus, tool bar, settings of one heating circuit, table of
 * sensors. */
class PanelWindow : public QMainWindow {
    Q_OBJECT

public:
    PanelWindow();

private:
    void createMenus();
    QWidget* createCircuitPage();
    QTableWidget* createSensorTable();
    void showStatus(const QString& text);
    void apply();
    void reset();
    void openSettings();
    void openAbout();

    QLineEdit* m_roomName = nullptr;
    QLineEdit* m_setPoint = nullptr;
    QCheckBox* m_nightSetback = nullptr;
    QCheckBox* m_frostProtection = nullptr;
    QCheckBox* m_pumpSchedule = nullptr;
};

} // namespace Panel

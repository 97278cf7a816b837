// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>

namespace Panel {

/** What the technician who looks after the device works with: a page each for the circuit, the
 * weekly plan, the log and the diagnosis. Deletes itself when it is closed. */
class ServiceWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit ServiceWindow(QWidget* parent);

private:
    QWidget* createCircuitPage();
    QWidget* createPlanPage();
    QWidget* createLogPage();
    QWidget* createDiagnosisPage();
    void showStatus(const QString& text);
};

} // namespace Panel

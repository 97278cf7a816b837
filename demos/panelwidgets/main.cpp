// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "panelwidgets/panelwindow.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("panel-widgets"));
    const QApplication application(argc, argv);
    Panel::PanelWindow window;
    window.show();
    return QApplication::exec();
}

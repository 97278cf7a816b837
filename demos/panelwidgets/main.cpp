#include "panelwidgets/panelwindow.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("panel-widgets"));
    Panel::PanelWindow window;
    window.show();
    return QApplication::exec();
}

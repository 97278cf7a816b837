// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("panel-quick"));
    const QGuiApplication application(argc, argv);
    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/panelquick/PanelWindow.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}

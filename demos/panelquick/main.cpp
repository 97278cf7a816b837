#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("panel-quick"));
    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/panelquick/PanelWindow.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}

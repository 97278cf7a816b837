#include "xserver.h"

#include <QRegularExpression>

XServer::XServer() {
    // The server chooses a free display number and says which.
    m_process.start(QStringLiteral("Xvfb"),
                    {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                     QStringLiteral("0"), QStringLiteral("1280x1024x24"),
                     QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    while (!m_process.canReadLine() && m_process.state() != QProcess::NotRunning) {
        if (!m_process.waitForReadyRead()) {
            break;
        }
    }
    const QString number = QString::fromLatin1(m_process.readLine()).trimmed();
    if (number.isEmpty()) {
        m_why = m_process.errorString() + QString::fromLocal8Bit(m_process.readAllStandardError());
    } else {
        m_display = QLatin1Char(':') + number;
    }
}

XServer::~XServer() {
    m_process.terminate();
    m_process.waitForFinished();
}

QString XServer::xdotool(const QStringList& arguments) const {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished();
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

QList<XServer::Window> XServer::visibleWindows() const {
    const QStringList ids = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                     QStringLiteral("--maxdepth"), QStringLiteral("1"),
                                     QStringLiteral("--name"), QStringLiteral("")})
                                .split(QLatin1Char('\n'));
    static const QRegularExpression pattern(
        QStringLiteral("X=(-?\\d+)\\s+Y=(-?\\d+)\\s+WIDTH=(\\d+)\\s+HEIGHT=(\\d+)"));
    QList<Window> windows;
    for (const QString& id : ids) {
        const auto match = pattern.match(
            id.isEmpty()
                ? QString()
                : xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), id}));
        if (match.hasMatch()) {
            windows.append({id, QRect(match.captured(1).toInt(), match.captured(2).toInt(),
                                      match.captured(3).toInt(), match.captured(4).toInt())});
        }
    }
    return windows;
}

void XServer::moveMouse(const QPoint& position) const {
    xdotool({QStringLiteral("mousemove"), QString::number(position.x()),
             QString::number(position.y())});
}

void XServer::click(const QPoint& position) const {
    moveMouse(position);
    xdotool({QStringLiteral("click"), QStringLiteral("1")});
}

void XServer::type(const QString& text) const {
    xdotool({QStringLiteral("type"), text});
}

void XServer::press(const QString& key) const {
    xdotool({QStringLiteral("key"), key});
}

void XServer::focus(const Window& window) const {
    xdotool({QStringLiteral("windowfocus"), window.id});
}

void XServer::saveScreen(const QString& path) const {
    QProcess::execute(QStringLiteral("sh"),
                      {QStringLiteral("-c"),
                       QStringLiteral("xwd -root -silent -display \"$0\" >\"$1\""), m_display,
                       path});
}

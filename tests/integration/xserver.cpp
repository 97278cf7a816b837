// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "xserver.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

#include <algorithm>

XServer::XServer() {
    // The server chooses a free display number and says which.
    m_process.start(QStringLiteral("Xvfb"),
                    {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                     QStringLiteral("0"), QStringLiteral("1280x1024x24"),
                     QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                     // Else it starts anew when one program has ended, under the next one's feet.
                     QStringLiteral("-noreset")});
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
                                     QStringLiteral("--name"), QString()})
                                .split(QLatin1Char('\n'));
    static const QRegularExpression pattern(
        QStringLiteral("X=(-?\\d+)\nY=(-?\\d+)\nWIDTH=(\\d+)\nHEIGHT=(\\d+)\nSCREEN=\\d+\n(.*)"));
    QList<Window> windows;
    for (const QString& id : ids) {
        if (id.isEmpty()) {
            continue;
        }
        const auto match =
            pattern.match(xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"),
                                   id, QStringLiteral("getwindowname"), id}));
        if (match.hasMatch() && !match.captured(5).trimmed().isEmpty()) { // the root has no name
            windows.append({id, match.captured(5).trimmed(),
                            QRect(match.captured(1).toInt(), match.captured(2).toInt(),
                                  match.captured(3).toInt(), match.captured(4).toInt())});
        }
    }
    return windows;
}

XServer::Window XServer::windowOf(const QSize& size, const QString& title) const {
    constexpr int leastSide = 16; // toolkits keep tiny windows for their own purposes
    const QList<Window> windows = visibleWindows();
    const auto newest = [&windows](const auto& isWanted) {
        const auto it = std::find_if(windows.crbegin(), windows.crend(), isWanted);
        return it == windows.crend() ? Window() : *it;
    };
    Window found = newest([&size](const Window& window) { return window.place.size() == size; });
    if (found.place.isNull() && !title.isEmpty()) {
        found = newest([&title](const Window& window) { return window.title == title; });
    }
    if (found.place.isNull() && size.isEmpty()) {
        found = newest([](const Window& window) {
            return qMin(window.place.width(), window.place.height()) >= leastSide;
        });
    }
    return found;
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

void XServer::focusNothing() const {
    const QString root = xdotool({QStringLiteral("search"), QStringLiteral("--maxdepth"),
                                  QStringLiteral("0"), QStringLiteral("--name"), QString()});
    xdotool({QStringLiteral("windowfocus"), root.trimmed()});
}

void XServer::saveScreen(const QString& name) const {
    // Beside the test program: the working folder may be somebody's checkout.
    const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(name);
    QProcess::execute(QStringLiteral("sh"),
                      {QStringLiteral("-c"),
                       QStringLiteral("xwd -root -silent -display \"$0\" >\"$1\""), m_display,
                       path});
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QProcess>
#include <QRect>
#include <QString>

/**
 * A display of its own (Xvfb), without a window manager, and a mouse and a keyboard (xdotool) on
 * it. Ends with this object.
 */
class XServer {
public:
    struct Window {
        QString id;
        QString title;
        /** In pixels of the screen. */
        QRect place;
    };

    XServer();
    ~XServer();

    /** False when the server did not start; why() says the reason. */
    bool isRunning() const { return !m_display.isEmpty(); }
    QString why() const { return m_why; }
    /** ":N" */
    QString display() const { return m_display; }

    /** The windows that can be seen, older ones first. */
    QList<Window> visibleWindows() const;

    /**
     * The newest window of that size; else the newest of that title; else, when no size is known,
     * the newest that is large enough to show something. Without an id and with a null place when
     * there is none.
     */
    Window windowOf(const QSize& size, const QString& title) const;

    void click(const QPoint& position) const;
    void moveMouse(const QPoint& position) const;
    void type(const QString& text) const;
    /** @param key as xdotool names it: "Return", "alt+f" */
    void press(const QString& key) const;
    /** Gives the window the keyboard, as a window manager would. */
    void focus(const Window& window) const;
    /** Takes the keyboard away from every window. */
    void focusNothing() const;
    /** For a person to look at when a test has failed: a file of that name beside the test program.
     */
    void saveScreen(const QString& name) const;

private:
    Q_DISABLE_COPY(XServer)

    QString xdotool(const QStringList& arguments) const;

    QProcess m_process;
    QString m_display;
    QString m_why;
};

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/runloader.h"

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

class XServer;

namespace Vorsk {
namespace UIAbstraction {
class UIElement;
}
} // namespace Vorsk

/**
 * An unmodified program that runs under "uicov run" on a display, used as a person uses it. Where
 * to click is taken from the recording while it grows: so every click also shows that the recorded
 * geometry is where the thing really is on the screen.
 */
class GuiSession {
public:
    /** An element as a test names it. */
    struct Name {
        QString type; ///< standard type
        QString text;
    };

    /** @param server not owned, outlives the session */
    GuiSession(const XServer& server, const QString& program, const QStringList& arguments = {},
               const QStringList& uicovOptions = {});
    ~GuiSession();

    /** False when no such element has been shown within the time that a slow machine needs. */
    bool waitForShown(const Name& name);
    /** Clicks on the element where it takes clicks; false when it is not on the screen. */
    bool click(const Name& name);
    /** Gives the keyboard to the window that the element is in. */
    bool focusWindowOf(const Name& name);
    /** Waits until the event's count is that; false when it is another in the end. */
    bool waitForUsage(const Name& name, const QString& event, int count);
    /** -1 when the element or its event is not known. The newest element of that name counts. */
    int usage(const Name& name, const QString& event);
    /** Ends the program as a session manager does and waits for uicov; its exit code, or -1. */
    int end();
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /** Waits for the program to end by itself; uicov's exit code, or -1. */
    int waitForEnd();

    /** Reads the recording as far as it goes now. */
    const Uicov::Runs::RunLoader& recording();
    QString recordingPath() const { return m_recordingPath; }
    /** Valid when the program has ended. */
    QString dataFilePath() const { return m_dataFilePath; }
    /** What uicov and the program wrote to standard error. */
    QString errors() const { return m_errors; }

private:
    Q_DISABLE_COPY(GuiSession)

    const Vorsk::UIAbstraction::UIElement* find(const Name& name);
    /** The element's rectangle on the screen; null while it cannot be seen. */
    QRect placeOnScreen(const Vorsk::UIAbstraction::UIElement& element) const;

    const XServer& m_server;
    QTemporaryDir m_directory;
    QString m_recordingPath;
    QString m_dataFilePath;
    QProcess m_process;
    QString m_errors;
    std::unique_ptr<Uicov::Runs::RunLoader> m_recording;
};

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "guisession.h"

#include "uiabstraction/uielement.h"
#include "xserver.h"

#include <QFileInfo>
#include <QTest>

#include <algorithm>

using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

/** Until then a slow and busy machine has done what was asked of it. */
constexpr int patience = 30000;

/** The element of the top-level window, dialog or menu that the element's geometry is relative to.
 */
const UIElement& topLevelOf(const UIElement& element) {
    const UIElement* top = &element;
    while (!top->isWindowNode() && top->parent() != nullptr) {
        top = top->parent();
    }
    return *top;
}

QProcessEnvironment environmentOf(const XServer& server, const QString& home) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), server.display());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("QT_XCB_GL_INTEGRATION"), QStringLiteral("none"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
    environment.insert(QStringLiteral("HOME"), home);
    return environment;
}

} // namespace

GuiSession::GuiSession(const XServer& server, const QString& program, const QStringList& arguments,
                       const QStringList& uicovOptions)
    : m_server(server)
    , m_recordingPath(
          m_directory.filePath(QFileInfo(program).fileName() + QStringLiteral(".uirec")))
    , m_dataFilePath(m_directory.filePath(QStringLiteral("session.uicov"))) {
    m_process.setProcessEnvironment(environmentOf(server, m_directory.path()));
    m_process.setWorkingDirectory(m_directory.path());
    m_process.start(QStringLiteral(UICOV_PROGRAM),
                    QStringList{QStringLiteral("run"), QStringLiteral("-o"), m_dataFilePath,
                                QStringLiteral("--recording"), m_recordingPath} +
                        uicovOptions + QStringList{QStringLiteral("--"), program} + arguments);
}

GuiSession::~GuiSession() {
    if (QTest::currentTestFailed()) {
        m_server.saveScreen(QLatin1String(QTest::currentTestFunction()) + QLatin1String(".xwd"));
        qInfo("the program %s", isRunning() ? "was still running" : "had ended");
        qInfo("%zu elements in the recording", recording().replay().elements().size());
    }
    if (isRunning()) {
        end();
    }
    if (QTest::currentTestFailed()) {
        m_errors += QString::fromLocal8Bit(m_process.readAllStandardError());
        qInfo("it ended with %d and said: %s", m_process.exitCode(), qPrintable(m_errors));
    }
}

const Uicov::Runs::RunLoader& GuiSession::recording() {
    m_recording = std::make_unique<Uicov::Runs::RunLoader>(m_recordingPath);
    m_recording->load(); // nothing there yet is nothing to find yet
    return *m_recording;
}

const UIElement* GuiSession::find(const Name& name) {
    const auto& elements = recording().replay().elements();
    const auto it =
        std::find_if(elements.crbegin(), elements.crend(), [&name](const UIElement* element) {
            return element->standardType().name() == name.type && element->text() == name.text;
        });
    return it == elements.crend() ? nullptr : *it;
}

int GuiSession::usage(const Name& name, const QString& event) {
    const UIElement* const element = find(name);
    return element == nullptr ? -1 : element->usage().value(UIEvent(event), -1);
}

bool GuiSession::waitForUsage(const Name& name, const QString& event, int count) {
    return QTest::qWaitFor([&] { return usage(name, event) == count; }, patience);
}

bool GuiSession::waitForShown(const Name& name) {
    return QTest::qWaitFor(
        [&] {
            const UIElement* const element = find(name);
            return element != nullptr && !placeOnScreen(*element).isNull();
        },
        patience);
}

QRect GuiSession::placeOnScreen(const UIElement& element) const {
    const UIElement& top = topLevelOf(element);
    if (top.usage().value(UIEvent(QStringLiteral("shown")), 0) == 0) {
        return {};
    }
    const QRect window = m_server.windowOf(top.geometry().rect().size(), top.text()).place;
    if (window.isNull()) {
        return {};
    }
    QPoint origin = window.topLeft();
    if (element.standardType().name() == QLatin1String("MenuItem") && element.parent() != &top) {
        origin += element.parent()->geometry().rect().topLeft(); // of the menu bar
    }
    const QRect rectangle =
        &element == &top ? QRect(QPoint(), window.size()) : element.geometry().rect();
    return rectangle.translated(origin);
}

bool GuiSession::click(const Name& name) {
    if (!waitForShown(name)) {
        return false;
    }
    const QRect place = placeOnScreen(*find(name));
    // A check box takes clicks only where its box and its text are, and those stand at its left.
    const bool isCheckBox = name.type == QLatin1String("CheckBox");
    m_server.click(isCheckBox ? QPoint(place.left() + place.height() / 2, place.center().y())
                              : place.center());
    return true;
}

bool GuiSession::focusWindowOf(const Name& name) {
    if (!waitForShown(name)) {
        return false;
    }
    const UIElement& top = topLevelOf(*find(name));
    const XServer::Window window = m_server.windowOf(top.geometry().rect().size(), top.text());
    if (window.place.isNull()) {
        return false;
    }
    m_server.focus(window);
    return true;
}

int GuiSession::end() {
    m_process.terminate();
    return waitForEnd();
}

int GuiSession::waitForEnd() {
    const bool ended = isRunning() ? m_process.waitForFinished(patience) : true;
    m_errors += QString::fromLocal8Bit(m_process.readAllStandardError());
    if (!ended) {
        m_process.kill();
        m_process.waitForFinished();
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

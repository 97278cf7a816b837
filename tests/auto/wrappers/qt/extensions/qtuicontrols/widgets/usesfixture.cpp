// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "usesfixture.h"

#include "uiabstraction/uielement.h"

#include <QCoreApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

void AtSpiAdaptor::call() {
    action();
}

OnMenu::OnMenu(const std::function<void(QMenu*)>& action) {
    QObject::connect(&m_timer, &QTimer::timeout, [this, action] {
        QMenu* const menu = TestLib::openMenu();
        if (menu != nullptr && menu->isVisible()) {
            m_timer.stop();
            m_isDone = true;
            action(menu);
        }
    });
    m_timer.start(1);
}

UsesFixture::UsesFixture() {
    new QVBoxLayout(&m_window);
    m_window.resize(300, 400);
}

void UsesFixture::put(QWidget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    m_window.layout()->addWidget(widget);
}

void UsesFixture::show() {
    m_window.show();
    m_window.activateWindow();
    if (!QTest::qWaitForWindowActive(&m_window)) {
        qWarning("the window is not active");
    }
    m_ledger = std::make_unique<TestLib::UsesLedger>(m_probe);
}

QStringList UsesFixture::take() {
    QCoreApplication::processEvents();
    return m_ledger->take();
}

QStringList UsesFixture::counted(const std::function<void()>& action) {
    action();
    return take();
}

QStringList UsesFixture::countedByClient(const std::function<void()>& action) {
    m_bridge.action = action;
    QMetaObject::invokeMethod(&m_bridge, "call", Qt::QueuedConnection);
    return take();
}

QStringList UsesFixture::eventsOf(const TestLib::ControlsProbe::UIElement* element) {
    QStringList names;
    if (element != nullptr) {
        const auto usage = element->usage();
        for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
            names.append(it.key().name());
        }
    }
    names.sort();
    return names;
}

void UsesFixture::runLater(const std::function<void()>& action) {
    QTimer::singleShot(0, QCoreApplication::instance(), action);
}

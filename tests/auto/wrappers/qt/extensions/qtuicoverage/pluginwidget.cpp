// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// A library that is unloaded again: a class of widgets that only it knows.
#include <QPushButton>

/** A button of a plugin. */
class PluginButton : public QPushButton {
    Q_OBJECT

public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent* event) override { QPushButton::paintEvent(event); }
};

extern "C" Q_DECL_EXPORT QPushButton* makePluginButton(QWidget* parent) {
    return new PluginButton(QStringLiteral("Plugged in"), parent);
}

extern "C" Q_DECL_EXPORT void giveTitleOfPlugin(QWidget* window) {
    window->setWindowTitle(QStringLiteral("Plugged in"));
}

#include "pluginwidget.moc"

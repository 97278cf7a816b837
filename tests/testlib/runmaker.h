// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/run.h"

#include <QString>
#include <QStringList>

namespace TestLib {

/** Puts a run together by hand, without a recording. */
class RunMaker {
public:
    /** A run of that application with one context without a name. */
    explicit RunMaker(int number = 1, const QString& application = QStringLiteral("panel"));

    /** @return the window's number; it announces "shown" and was shown once */
    int addWindow(const QString& title, const char* className = "MainWindow",
                  const char* type = "Window");
    /** @param parent -1 for a root. @param events separated by spaces. @return its number */
    int add(int parent, const char* type, const char* className, const QString& text,
            const char* events);
    /** "shown" and "clicked", shown once. */
    int addButton(int parent, const QString& text);
    /** In the context of that name, which begins if it has not. */
    void hit(int element, const char* event, int count = 1, const QString& context = QString());

    Uicov::Runs::RunElement& element(int number);

    Uicov::Runs::Run run;
};

/**
 * A run of which everything is odd: names with markup, quotes, control characters, separators,
 * right-to-left text and half a surrogate pair.
 */
Uicov::Runs::Run hostileRun();

/** A main window, a dialog, a menu that was never opened; some of it used, in two tests. */
Uicov::Runs::Run panelRun(int number = 1);

/**
 * A run of the controls extension: a window whose buttons are used, seen and disabled, a command
 * with two ways, a group of three, a page that was seen, and a page that was not and the tab that
 * opens it.
 */
Uicov::Runs::Run controlsRun(int number = 1);

} // namespace TestLib

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// A program that ends in the ways that are hard on the extension; tst_qtuicoverageextension runs
// it. Says "done" and ends with 0 when it came to its end.
#include "qtuicoverage/qtuicoverageextension.h"
#include "testlib/fakehook.h"
#include "testlib/fakehost.h"

#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QShowEvent>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// The host's objects live as long as the process.
TestLib::FakeExtensionHost host;
TestLib::FakeHook hook;
TestLib::FakeOptionSet options;
TestLib::FakeWrapperContext context;
QPushButton* lateWidget = nullptr;

void say(const char* line) {
    static_cast<void>(std::fputs(line, stdout));
    static_cast<void>(std::fflush(stdout));
}

/** Destroyed after the extension, which is made later. */
struct AfterTheExtension {
    ~AfterTheExtension() {
        if (lateWidget != nullptr) {
            const int before = hook.messages.size();
            QShowEvent show;
            context.registrations.first().callback(lateWidget, &show);
            if (hook.messages.size() != before) {
                say("an event was handled by a dead extension\n");
                std::_Exit(1);
            }
        }
        say("done\n");
    }
};

AfterTheExtension afterTheExtension;

void activate() {
    qputenv("VORSK_GUI_COVERAGE", "1");
    options.options = {{"enabled", {"1"}}, {"qtwidgets", {"1"}}, {"qtquick", {"1"}}};
    Vorsk::Extension* const extension = Vorsk::QtWrapper::QtUiCoverageExtension::instance(&host);
    extension->options = &options;
    extension->initialize(&context);
}

void show(QWidget* widget) {
    widget->show();
    QShowEvent event;
    context.registrations.first().callback(widget, &event);
}

} // namespace

int main(int argc, char** argv) {
    const bool lateEvent = argc > 1 && std::strcmp(argv[1], "late-event") == 0;
    // Never destroyed when a widget has to outlive everything.
    static auto* application = new QApplication(argc, argv);
    activate();
    static auto* const button = new QPushButton; // not owned by anybody
    static auto* const menu = new QMenu;
    menu->addAction(QStringLiteral("One"));
    show(button);
    show(menu);
    if (hook.messages.isEmpty()) {
        return EXIT_FAILURE;
    }
    if (lateEvent) {
        lateWidget = button;
        return EXIT_SUCCESS;
    }
    // What watches the two widgets dies when the application object is long gone.
    delete application;
    application = nullptr;
    return EXIT_SUCCESS;
}

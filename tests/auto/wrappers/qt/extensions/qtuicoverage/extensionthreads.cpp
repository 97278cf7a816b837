// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// A program in which the extension is built by the thread and at the time that the argument names;
// tst_qtuicoverageextension runs it. Prints the kinds of the records that a button sends before its
// Show returns, then again for another one in its place, and "late" when records came later.
#include "qtuicoverage/qtuicoverageextension.h"
#include "testlib/fakehook.h"
#include "testlib/fakehost.h"

#include <QApplication>
#include <QPushButton>
#include <QShowEvent>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <semaphore.h>

using Vorsk::QtWrapper::QtUiCoverageExtension;

namespace {

// The host's objects live as long as the process.
TestLib::FakeExtensionHost host;
TestLib::FakeHook hook;
TestLib::FakeOptionSet options;
TestLib::FakeWrapperContext context;

void build() {
    QtUiCoverageExtension::instance(&host);
}

void buildOnAnotherThread() {
    std::thread(build).join();
}

void buildOnAThreadThatGoesOn() {
    static sem_t built;
    sem_init(&built, 0, 0);
    std::thread([] {
        build();
        sem_post(&built);
        for (;;) {
            sem_t never;
            sem_init(&never, 0, 0);
            sem_wait(&never);
        }
    }).detach();
    sem_wait(&built);
}

void buildOnManyThreads() {
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back(build);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void printRecords(const char* what) {
    std::printf("%s:", what);
    for (const auto& message : qAsConst(hook.messages)) {
        std::printf(" %d", message.args.at(2).toInt());
    }
    std::printf("\n");
    hook.messages.clear();
}

} // namespace

int main(int argc, char** argv) {
    const std::string how = argc > 1 ? argv[1] : "";
    const bool isBefore = how.rfind("before-", 0) == 0;
    const std::string where = isBefore ? how.substr(7) : how;
    void (*const builder)() = where == "gui-thread"      ? build
                              : where == "other-thread"  ? buildOnAnotherThread
                              : where == "living-thread" ? buildOnAThreadThatGoesOn
                              : where == "many-threads"  ? buildOnManyThreads
                                                         : nullptr;
    if (builder == nullptr) {
        return EXIT_FAILURE;
    }
    if (isBefore) {
        builder();
    }
    QApplication application(argc, argv);
    if (!isBefore) {
        builder();
    }
    qputenv("VORSK_GUI_COVERAGE", "1");
    options.options = {{"enabled", {"1"}}, {"qtwidgets", {"1"}}, {"qtquick", {"1"}}};
    Vorsk::Extension* const extension = QtUiCoverageExtension::instance(&host);
    extension->options = &options;
    extension->initialize(&context);
    const Vorsk::WrapperContext::EventCallback callback = context.registrations.first().callback;

    // The second one lies at the address of the first, whose death has to be known by then.
    alignas(QPushButton) static unsigned char place[sizeof(QPushButton)];
    for (const char* which : {"first", "second"}) {
        auto* const button = new (place) QPushButton(QString::fromLatin1(which));
        button->show(); // hidden ones are not watched
        QShowEvent show;
        callback(button, &show);
        printRecords(which);
        button->click();
        printRecords("clicked");
        button->~QPushButton();
    }
    QCoreApplication::processEvents();
    if (!hook.messages.isEmpty()) {
        printRecords("late");
    }
    static_cast<void>(std::fflush(stdout));
    std::_Exit(EXIT_SUCCESS); // one of the threads may still be there
}

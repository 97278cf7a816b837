// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/deferredend.h"
#include "testlib/testcase.h"

#include <QTest>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

using Uicov::Base::DeferredEnd;

namespace {

constexpr int reachedTheEnd = 7;

/** How a process of its own ends that does this: its exit code, or 128 and the signal's number. */
template <class Action>
int endOf(const Action& action) {
    constexpr int signalBase = 128;
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            static_cast<void>(std::signal(number, SIG_DFL)); // Qt Test has its own
        }
        const sigset_t all = DeferredEnd::signalSet();
        sigprocmask(SIG_UNBLOCK, &all, nullptr);
        action();
        ::_exit(reachedTheEnd);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? signalBase + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

class TestDeferredEnd : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatAsksToEndWaitsForTheScope_data() {
        QTest::addColumn<int>("number");
        QTest::newRow("INT") << SIGINT;
        QTest::newRow("TERM") << SIGTERM;
        QTest::newRow("HUP") << SIGHUP;
        QTest::newRow("QUIT") << SIGQUIT;
    }

    void whatAsksToEndWaitsForTheScope() {
        QFETCH(int, number);
        constexpr int sawIt = 3;
        QCOMPARE(endOf([number] {
                     const DeferredEnd outer;
                     if (DeferredEnd::isRequested()) {
                         ::_exit(1);
                     }
                     static_cast<void>(::kill(::getpid(), number));
                     { const DeferredEnd inner; }
                     ::_exit(DeferredEnd::isRequested() ? sawIt : 2);
                 }),
                 sawIt);
        QCOMPARE(endOf([number] {
                     const DeferredEnd scope;
                     static_cast<void>(::kill(::getpid(), number));
                 }),
                 128 + number);
    }

    void whatIsIgnoredAsksForNothing() {
        QCOMPARE(endOf([] {
                     static_cast<void>(std::signal(SIGHUP, SIG_IGN)); // as nohup does
                     const DeferredEnd scope;
                     static_cast<void>(::kill(::getpid(), SIGHUP));
                     if (DeferredEnd::isRequested()) {
                         ::_exit(1);
                     }
                 }),
                 reachedTheEnd);
    }

    void whatIsKeptWaitsForTheRestOfTheProcess() {
        QCOMPARE(endOf([] {
                     {
                         DeferredEnd scope;
                         scope.keep();
                     }
                     static_cast<void>(::kill(::getpid(), SIGTERM));
                 }),
                 reachedTheEnd);
    }
};

QTEST_GUILESS_MAIN(TestDeferredEnd)
#include "tst_deferredend.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/inachild.h"
#include "testlib/emulation.h"
#include "testlib/testcase.h"
#include "vorskhook/busguard.h"

#include <QTemporaryFile>
#include <QTest>

#include <csignal>

#include <sys/mman.h>

namespace BusGuard = VorskHost::BusGuard;

namespace {

constexpr int pageSize = 4096;

void exitWithThree(int) {
    ::_exit(3);
}

void exitWithFour(int, siginfo_t*, void*) {
    ::_exit(4);
}

void setHandler(void (*handler)(int)) {
    static_cast<void>(::signal(SIGBUS, handler));
}

bool isHandler(void (*handler)(int)) {
    struct sigaction now {};
    ::sigaction(SIGBUS, nullptr, &now);
    return now.sa_handler == handler;
}

/** Two pages of a file in memory. */
class MappedFile {
public:
    MappedFile() {
        if (m_file.open() && m_file.resize(size)) {
            m_memory = static_cast<char*>(
                ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, m_file.handle(), 0));
        }
    }

    char* memory() { return m_memory; }
    void watch() { BusGuard::watch(m_memory, size); }
    void cutShort() { m_file.resize(0); }
    volatile char& at(int place) { return *(m_memory + place); }

    static constexpr int size = 2 * pageSize;

private:
    QTemporaryFile m_file;
    char* m_memory = nullptr;
};

/** An access that has nothing to do with what is watched. */
int readWhereNoPageIs() {
    MappedFile other;
    other.cutShort();
    return static_cast<int>(other.at(0)) + 100;
}

} // namespace

/** What happens when a file loses its pages; each in a child, which the signal may end. */
class TestBusGuard : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void lostPagesBecomeMemoryThatCanBeUsed() {
#ifdef __arm__
        if (TestLib::isEmulated()) {
            QSKIP("the emulator names the page behind the one that was lost");
        }
#endif
        QCOMPARE(inAChild([] {
                     setHandler(SIG_DFL); // Qt Test has one
                     MappedFile file;
                     file.watch();
                     file.at(pageSize) = 'a';
                     if (BusGuard::wasHit()) {
                         return 1;
                     }
                     file.cutShort();
                     file.at(pageSize) = 'b';
                     file.at(0) = 'c';
                     const bool isUsed = file.at(pageSize) == 'b' && file.at(0) == 'c';
                     return BusGuard::wasHit() && isUsed ? 0 : 2;
                 }),
                 0);
    }

    void whatIsWatchedNextIsNotHitYet() {
        QCOMPARE(inAChild([] {
                     MappedFile first;
                     first.watch();
                     first.cutShort();
                     first.at(0) = 'x';
                     MappedFile second;
                     second.watch();
                     const bool wasHit = BusGuard::wasHit();
                     second.cutShort();
                     second.at(0) = 'y';
                     return !wasHit && BusGuard::wasHit() ? 0 : 1;
                 }),
                 0);
    }

    void whatIsNotWatchedAnyMoreEndsTheProcess() {
        QCOMPARE(inAChild([] {
                     setHandler(SIG_DFL);
                     MappedFile file;
                     file.watch();
                     BusGuard::stopWatching();
                     file.cutShort();
                     return static_cast<int>(file.at(0)) + 100;
                 }),
                 -SIGBUS);
    }

    void othersGetTheirOwnBusErrors() {
        const auto with = [](void (*handler)(int), const std::function<int()>& fault) {
            return inAChild([&] {
                setHandler(handler);
                MappedFile file;
                file.watch();
                return fault();
            });
        };
        const auto raise = [] { return ::raise(SIGBUS); };
        QCOMPARE(with(SIG_DFL, readWhereNoPageIs), -SIGBUS);
        QCOMPARE(with(SIG_DFL, raise), -SIGBUS);
        QCOMPARE(with(exitWithThree, readWhereNoPageIs), 3);
        QCOMPARE(with(exitWithThree, raise), 3);
        QCOMPARE(with(SIG_IGN, readWhereNoPageIs), -SIGBUS);
        QCOMPARE(with(SIG_IGN, raise), 0);
    }

    void aHandlerThatWantsToKnowMoreIsCalledAsWell() {
        QCOMPARE(inAChild([] {
                     struct sigaction action {};
                     action.sa_sigaction = exitWithFour;
                     action.sa_flags = SA_SIGINFO;
                     ::sigaction(SIGBUS, &action, nullptr);
                     MappedFile file;
                     file.watch();
                     return readWhereNoPageIs();
                 }),
                 4);
    }

    void theFormerHandlerIsGivenBack() {
        QCOMPARE(inAChild([] {
                     setHandler(exitWithThree);
                     MappedFile file;
                     file.watch();
                     file.watch(); // the second time there is nothing to remember
                     BusGuard::stopWatching();
                     return isHandler(exitWithThree) ? 0 : 1;
                 }),
                 0);
    }

    /** As crash handlers do: what they found is called by theirs. */
    void afterTheEndNothingIsWatchedThroughALaterHandler() {
        static struct sigaction found {};
        QCOMPARE(inAChild([] {
                     setHandler(exitWithThree);
                     MappedFile file;
                     file.watch();
                     struct sigaction later {};
                     later.sa_flags = SA_SIGINFO;
                     later.sa_sigaction = [](int number, siginfo_t* info, void* context) {
                         found.sa_sigaction(number, info, context);
                     };
                     ::sigaction(SIGBUS, &later, &found);
                     BusGuard::stopWatching();
                     file.cutShort();
                     return static_cast<int>(file.at(0)) + 100;
                 }),
                 3);
    }

    void aHandlerThatCameLaterStays() {
        QCOMPARE(inAChild([] {
                     setHandler(SIG_DFL);
                     MappedFile file;
                     file.watch();
                     setHandler(exitWithThree);
                     BusGuard::stopWatching();
                     return isHandler(exitWithThree) ? 0 : 1;
                 }),
                 0);
    }
};

QTEST_GUILESS_MAIN(TestBusGuard)
#include "tst_busguard.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskhook/owningprocess.h"

#include <QTest>

#include <sys/wait.h>
#include <unistd.h>

using VorskHost::OwningProcess;

namespace {

/** What a child says when it is asked whether it is the owner; -1 when it says nothing. */
int answerOfChild(OwningProcess& process, bool claims) {
    const pid_t child = fork();
    if (child == 0) {
        if (claims) {
            process.claim();
        }
        _exit(process.isThis() ? 1 : 0);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

/** Who the owner is. */
class tst_OwningProcess : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nobodyAtFirst();
    void claimed();
    void childIsAnother();
    void childClaims();
    void claimedAgain();
    void numberOfThisProcess();
};

void tst_OwningProcess::nobodyAtFirst() {
    OwningProcess process;
    QVERIFY(!process.isThis());
    QCOMPARE(answerOfChild(process, false), 0);
}

void tst_OwningProcess::claimed() {
    OwningProcess process;
    process.claim();
    QVERIFY(process.isThis());
}

void tst_OwningProcess::childIsAnother() {
    OwningProcess process;
    process.claim();
    QCOMPARE(answerOfChild(process, false), 0);
    QVERIFY(process.isThis());
}

void tst_OwningProcess::childClaims() {
    OwningProcess process;
    process.claim();
    QCOMPARE(answerOfChild(process, true), 1);
    QVERIFY(process.isThis());
}

void tst_OwningProcess::claimedAgain() {
    OwningProcess process;
    process.claim();
    process.claim();
    QVERIFY(process.isThis());
    QCOMPARE(answerOfChild(process, false), 0);
}

void tst_OwningProcess::numberOfThisProcess() {
    OwningProcess process;
    QCOMPARE(process.idOfThis(), ::getpid());
    QVERIFY(process.isThis());
    const pid_t child = fork();
    if (child == 0) {
        _exit(process.idOfThis() == ::getpid() && process.idOfThis() != ::getppid() ? 0 : 1);
    }
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QCOMPARE(process.idOfThis(), ::getpid());
}

QTEST_GUILESS_MAIN(tst_OwningProcess)
#include "tst_owningprocess.moc"

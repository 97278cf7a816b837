// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/lazyconnections.h"
#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QPushButton>
#include <QTest>

#include <memory>
#include <vector>

using Vorsk::UIControls::LazyConnections;
using Vorsk::UICoverage::methodNumber;

namespace {

/** Many times more than are kept. */
constexpr std::size_t many = 1000;

/** Signals, and tells how many connections that leads to. */
class Sender : public QObject {
    Q_OBJECT

public:
    bool isConnected() const { return receivers(SIGNAL(told())) > 0; }
    int connections() const { return receivers(SIGNAL(told())); }

Q_SIGNALS:
    void told();
};

class Hub : public QObject {
    Q_OBJECT

public:
    int calls = 0;

public Q_SLOTS:
    void hear() { ++calls; }
};

struct Senders {
    Senders() {
        for (std::size_t i = 0; i < many; ++i) {
            all.push_back(std::make_unique<Sender>());
        }
    }

    void connect(LazyConnections& connections, std::size_t i) {
        connections.connect(all[i].get(), methodNumber(Sender::staticMetaObject, "told()"), &hub,
                            methodNumber(Hub::staticMetaObject, "hear()"));
    }
    void connectAll(LazyConnections& connections) {
        for (std::size_t i = 0; i < many; ++i) {
            connect(connections, i);
        }
    }
    std::size_t connected() const {
        std::size_t number = 0;
        for (const std::unique_ptr<Sender>& sender : all) {
            number += sender->isConnected() ? 1 : 0;
        }
        return number;
    }

    Hub hub;
    std::vector<std::unique_ptr<Sender>> all;
};

} // namespace

class tst_LazyConnections : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void onlyTheLatestAreKept();
    void whatWasGivenUpIsConnectedAgain();
    void nothingIsConnectedTwice();
    void allAreKeptWhereThatIsWanted();
    void sendersMayDie();
    void eachOfManyButtonsCounts();
};

void tst_LazyConnections::onlyTheLatestAreKept() {
    Senders senders;
    LazyConnections connections;
    senders.connectAll(connections);
    QVERIFY(senders.connected() < many / 2);
    QVERIFY(senders.connected() > many / 20);
    QVERIFY(!senders.all.front()->isConnected());
    QVERIFY(senders.all.back()->isConnected());
}

void tst_LazyConnections::whatWasGivenUpIsConnectedAgain() {
    Senders senders;
    LazyConnections connections;
    senders.connectAll(connections);
    senders.connect(connections, 0);
    Q_EMIT senders.all.front()->told();
    QCOMPARE(senders.hub.calls, 1);
}

void tst_LazyConnections::nothingIsConnectedTwice() {
    Senders senders;
    LazyConnections connections;
    for (std::size_t i = 0; i < many; ++i) {
        senders.connect(connections, 0);
        senders.connect(connections, 1);
    }
    QCOMPARE(senders.all[0]->connections(), 1);
    QCOMPARE(senders.all[1]->connections(), 1);
}

void tst_LazyConnections::allAreKeptWhereThatIsWanted() {
    Senders senders;
    LazyConnections connections;
    senders.connect(connections, 0);
    connections.keepAll();
    senders.connectAll(connections);
    QCOMPARE(senders.connected(), many);
}

void tst_LazyConnections::sendersMayDie() {
    Senders senders;
    LazyConnections connections;
    senders.connect(connections, 0);
    senders.all[0] = std::make_unique<Sender>();
    senders.connectAll(connections);
    QVERIFY(senders.all.back()->isConnected());
}

void tst_LazyConnections::eachOfManyButtonsCounts() {
    constexpr int buttons = 60; // with three connections each
    UsesFixture fixture;
    std::vector<QPushButton*> all;
    for (int i = 0; i < buttons; ++i) {
        all.push_back(fixture.add(new QPushButton, qPrintable(QStringLiteral("b%1").arg(i))));
        all.back()->setFixedSize(10, 4);
    }
    fixture.show();
    for (int round = 0; round < 2; ++round) {
        for (QPushButton* const button : all) {
            QCOMPARE(fixture.counted([button] { TestLib::click(button); }),
                     QStringList(button->objectName() + QStringLiteral(" clicked")));
        }
    }
}

int main(int argc, char** argv) {
    TestLib::HostApplication application(argc, argv);
    tst_LazyConnections test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_lazyconnections.moc"

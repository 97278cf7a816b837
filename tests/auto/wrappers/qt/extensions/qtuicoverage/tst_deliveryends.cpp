// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/fakehost.h"
#include "testlib/testcase.h"
#include "tracking/deliveryends.h"

#include <QTest>

using Vorsk::UICoverage::registerDeliveryEndCallback;

namespace {

void ignore(QObject*, QEvent*) {}

} // namespace

/* That a host which can tell is found is shown with the whole stand-in, in tst_hoststandin. */
class tst_DeliveryEnds : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aHostWithoutTheFunctionIsNoError() {
        TestLib::FakeWrapperContext context;
        QVERIFY(!registerDeliveryEndCallback(context, ignore));
    }
};

QTEST_GUILESS_MAIN(tst_DeliveryEnds)
#include "tst_deliveryends.moc"

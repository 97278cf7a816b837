// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskqtwrapper/hostoptionset.h"

#include <QTest>

using VorskHost::HostConfiguration;
using VorskHost::HostOptionSet;

class tst_HostOptionSet : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void keyWithValues();
    void keyWithoutValues();
    void keyThatIsNotThere();
};

void tst_HostOptionSet::keyWithValues() {
    const HostOptionSet options(HostConfiguration::Options{{"enabled", {"1", "0"}}});
    QVERIFY(options.contains("enabled"));
    QVERIFY(options.values("enabled") == (std::vector<std::string>{"1", "0"}));
}

void tst_HostOptionSet::keyWithoutValues() {
    const HostOptionSet options(HostConfiguration::Options{{"enabled", {}}});
    QVERIFY(options.contains("enabled"));
    QVERIFY(options.values("enabled").empty());
}

void tst_HostOptionSet::keyThatIsNotThere() {
    const HostOptionSet options(HostConfiguration::Options{{"enabled", {"1"}}});
    QVERIFY(!options.contains("Enabled"));
    QVERIFY(!options.contains(""));
    QVERIFY(options.values("Enabled").empty());
    QVERIFY(!options.contains("Enabled"));
}

QTEST_GUILESS_MAIN(tst_HostOptionSet)
#include "tst_hostoptionset.moc"

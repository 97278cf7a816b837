// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/quickscene.h"
#include "testlib/quickscript.h"
#include "testlib/quickusesprobe.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTest>

namespace TestLib {

/** A scene in an active window that a script operates, and what that counts. */
struct QuickStage {
    explicit QuickStage(const QByteArray& qml,
                        QuickScene::Imports imports = QuickScene::Imports::Latest2);

    // Tables of scenes and scripts.
    static void addColumns();
    static void addRow(const char* name, const QByteArray& qml, const QByteArray& script);
    /** What failed of the present row. */
    static QStringList runRow();

    QuickUsesProbe probe;
    QuickScene scene;
    QuickScript script;
    /** Whether the window came up. */
    bool isReady = false;
};

/** In place of QTEST_MAIN, for tests that listen to deliveries. */
template <class Test>
int runWithDeliveries(int argc, char* argv[]) {
    DeliveringApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace TestLib

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickstage.h"

namespace TestLib {

QuickStage::QuickStage(const QByteArray& qml, QuickScene::Imports imports)
    : scene(qml, imports)
    , script(*scene.window(), [this] { return probe.takeUses(); })
    , isReady(scene.show()) {
    scene.window()->requestActivate();
    isReady = isReady && QTest::qWaitForWindowActive(scene.window());
}

void QuickStage::addColumns() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QByteArray>("script");
}

void QuickStage::addRow(const char* name, const QByteArray& qml, const QByteArray& script) {
    QTest::newRow(name) << qml << script;
}

QStringList QuickStage::runRow() {
    QFETCH(QByteArray, qml);
    QFETCH(QByteArray, script);
    QuickStage stage(qml);
    return stage.isReady ? stage.script.run(script)
                         : QStringList{QStringLiteral("the window did not come up")};
}

} // namespace TestLib

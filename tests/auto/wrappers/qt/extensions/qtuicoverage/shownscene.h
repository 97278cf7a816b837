// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "uiabstraction/uielement.h"

#include <QStringList>

/** The element's counts, as "checked=1 clicked=0". */
inline QString usageText(const Vorsk::UIAbstraction::UIElement* element) {
    QStringList parts;
    const auto usage = element->usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        parts.append(QStringLiteral("%1=%2").arg(it.key().name()).arg(it.value()));
    }
    return parts.join(QLatin1Char(' '));
}

/** Items in a window that the probe knows by its Show. */
class ShownScene {
public:
    explicit ShownScene(const QByteArray& qml,
                        TestLib::QuickScene::Imports imports = TestLib::QuickScene::Imports::Quick)
        : scene("Item { width: 300; height: 200; " + qml + " }", imports) {
        probe.show(scene.window());
        probe.takeRecords();
    }

    QString usage(const char* objectName = "it") {
        return usageText(probe.element(scene.item(objectName)));
    }

    TestLib::QuickProbe probe;
    TestLib::QuickScene scene;
};

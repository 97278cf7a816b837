// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QGenericPlugin>

/**
 * Brings the monkey into an application that knows nothing of it, where QT_QPA_GENERIC_PLUGINS
 * names "uicovmonkey".
 */
class MonkeyPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "monkeyplugin.json")

public:
    QObject* create(const QString& key, const QString& settings) override;
};

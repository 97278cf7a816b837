// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QGenericPlugin>

/**
 * Brings the player and what watches it into an application that knows nothing of them, where
 * QT_QPA_GENERIC_PLUGINS names "uicovuniverse". Environment: UICOV_UNIVERSE_JOURNAL is the file to
 * write, UICOV_UNIVERSE_SEED and UICOV_UNIVERSE_STEPS say what is done; 0 steps: nothing.
 */
class UniversePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "universeplugin.json")

public:
    QObject* create(const QString& key, const QString& settings) override;
};

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QGenericPlugin>

namespace VorskHost {

/**
 * Brings the host into an application that knows nothing of it. Qt makes the plugin within the
 * constructor of QGuiApplication when QT_QPA_GENERIC_PLUGINS names "vorsk". Without
 * VORSK_OPTIONS_FILE it does nothing at all.
 */
class VorskStarterPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "vorskstarter.json")

public:
    /** Starts the host. Never null, because Qt warns of a plugin that makes no object. */
    QObject* create(const QString& key, const QString& settings) override;
};

} // namespace VorskHost

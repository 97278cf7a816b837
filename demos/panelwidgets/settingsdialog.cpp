// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "panelwidgets/settingsdialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QVBoxLayout>

namespace Panel {

SettingsDialog::SettingsDialog(QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(tr("Settings"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const serverName = new QLineEdit;
    serverName->setPlaceholderText(tr("Time server"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(new QCheckBox(tr("Key &clicks")));
    layout->addWidget(new QCheckBox(tr("Summer &time")));
    layout->addWidget(serverName);
    layout->addWidget(buttons);
}

} // namespace Panel

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "recording/ending.h"
#include "run/runbuilder.h"

#include <QString>
#include <QVector>

#include <optional>

namespace Uicov::Runs {

/** Reads one recording from its start to its end into a run. */
class RunLoader {
public:
    explicit RunLoader(const QString& path);

    /** To be called before load(). */
    void setTakesPictures(bool takes) { m_builder.setTakesPictures(takes); }

    /** The problem when nothing of the file can be used. */
    std::optional<Base::Problem> load();

    /** What is wrong with the file although it could be used; empty when nothing is. */
    QVector<Base::Problem> problems() const;

    /** Valid after load(). */
    Run run() const;
    const Recording::Replay& replay() const { return m_builder.replay(); }
    const Recording::Ending& ending() const { return m_ending; }

private:
    QString m_path;
    RunBuilder m_builder;
    Recording::Ending m_ending;
    /** Of the file's sound part; what a run is called that has no name. */
    QByteArray m_hash;
};

} // namespace Uicov::Runs

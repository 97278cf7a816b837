// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "stage.h"
#include "testlib/controlsprobe.h"
#include "testlib/usesledger.h"

#include <QStringList>

#include <functional>
#include <memory>

/** A person's session with the stage: steps, what each has to count, and what went wrong. */
class Session {
public:
    Session();

    /** Does something and compares what was counted with what is expected, each "name event". */
    void step(const QString& name, const std::function<void()>& action,
              const QStringList& expected);
    /** The same with input that must not count at all. */
    void nothing(const QString& name, const std::function<void()>& action) {
        step(name, action, {});
    }

    int steps() const { return m_steps; }
    /** One line for each step that counted something else; empty when all were right. */
    QStringList mistakes() const { return m_mistakes; }

    Stage& stage() { return *m_stage; }
    TestLib::ControlsProbe& probe() { return m_probe; }

private:
    TestLib::ControlsProbe m_probe;
    std::unique_ptr<Stage> m_stage;
    std::unique_ptr<TestLib::UsesLedger> m_ledger;
    int m_steps = 0;
    QStringList m_mistakes;
};

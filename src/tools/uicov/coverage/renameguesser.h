// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/comparedelements.h"
#include "coverage/comparison.h"

#include <QSet>
#include <QVector>

namespace Uicov::Coverage {

/** Collects pairs of an old and a new element, each element in no more than one. */
class RenameGuesser {
public:
    /** Both outlive this. */
    RenameGuesser(const Entries& before, const Entries& now)
        : m_before(before)
        , m_now(now) {}

    /** Of elements that stand in one place with another caption. */
    void addSamePlaces(const QVector<Identity>& removed, const QVector<Identity>& added);
    /** Of elements whose captions are nearly the same. */
    void addNearCaptions(const QVector<Identity>& removed, const QVector<Identity>& added);

    const QVector<Comparison::Guess>& guesses() const { return m_guesses; }

private:
    void add(const Identity& old, const Identity& fresh, const QString& why);
    QVector<Identity> without(const QVector<Identity>& names) const;

    const Entries& m_before;
    const Entries& m_now;
    QSet<Identity> m_guessed;
    QVector<Comparison::Guess> m_guesses;
};

} // namespace Uicov::Coverage

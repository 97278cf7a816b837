// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/renameguesser.h"

#include "base/spelling.h"

#include <algorithm>
#include <iterator>

namespace Uicov::Coverage {

namespace {

/** By application and structure key, those of which there is only one. */
QMap<Identity, Identity> uniqueByStructure(const QVector<Identity>& names, const Entries& entries) {
    QMap<Identity, Identity> unique;
    QSet<Identity> seen;
    for (const Identity& name : names) {
        const Identity structure = qMakePair(name.first, entries[name].structureKey);
        if (seen.contains(structure)) {
            unique.remove(structure);
        } else {
            unique.insert(structure, name);
        }
        seen.insert(structure);
    }
    return unique;
}

/** What has to be equal for a caption to be compared: application, place and type. */
using Neighbourhood = QPair<Identity, QString>;

QMap<Neighbourhood, QVector<Identity>> byNeighbourhood(const QVector<Identity>& names,
                                                       const Entries& entries) {
    QMap<Neighbourhood, QVector<Identity>> groups;
    for (const Identity& name : names) {
        const Entry& entry = *entries.constFind(name);
        if (!entry.label.isEmpty()) {
            groups[qMakePair(qMakePair(name.first, entry.above), entry.type)].append(name);
        }
    }
    return groups;
}

/** The one whose caption differs least, in no more than a third of its characters; -1 for none. */
int mostAlike(const QString& label, const QVector<Identity>& names, const Entries& entries) {
    constexpr int share = 3;
    int nearest = -1;
    int least = 0;
    for (int i = 0; i < names.size(); ++i) {
        const QString& other = entries.constFind(names.at(i))->label;
        const int longest = qMax(label.size(), other.size());
        if (qAbs(label.size() - other.size()) * share > longest) {
            continue; // they differ in that much at least
        }
        const int distance = Base::editDistance(label, other);
        if (distance * share <= longest && (nearest < 0 || distance < least)) {
            nearest = i;
            least = distance;
        }
    }
    return nearest;
}

} // namespace

void RenameGuesser::addSamePlaces(const QVector<Identity>& removed,
                                  const QVector<Identity>& added) {
    const auto oldOnes = uniqueByStructure(removed, m_before);
    const auto newOnes = uniqueByStructure(added, m_now);
    for (auto it = oldOnes.cbegin(); it != oldOnes.cend(); ++it) {
        const auto other = newOnes.constFind(it.key());
        if (other != newOnes.cend()) {
            add(it.value(), other.value(), QStringLiteral("stands in the same place"));
        }
    }
}

void RenameGuesser::addNearCaptions(const QVector<Identity>& removed,
                                    const QVector<Identity>& added) {
    // Among very many that are alike, as the rows of a list, a guess would mean nothing.
    constexpr int most = 200;
    const auto oldGroups = byNeighbourhood(without(removed), m_before);
    auto newGroups = byNeighbourhood(without(added), m_now);
    for (auto it = oldGroups.cbegin(); it != oldGroups.cend(); ++it) {
        QVector<Identity>& candidates = newGroups[it.key()];
        if (it->size() > most || candidates.size() > most) {
            continue;
        }
        for (const Identity& old : it.value()) {
            const QString& label = m_before.constFind(old)->label;
            const int nearest = mostAlike(label, candidates, m_now);
            if (nearest >= 0) {
                add(old, candidates.at(nearest), QStringLiteral("has nearly the same caption"));
                candidates.remove(nearest);
            }
        }
    }
}

void RenameGuesser::add(const Identity& old, const Identity& fresh, const QString& why) {
    m_guesses.append({old.first, old.second, fresh.second, why});
    m_guessed.insert(old);
    m_guessed.insert(fresh);
}

QVector<Identity> RenameGuesser::without(const QVector<Identity>& names) const {
    QVector<Identity> rest;
    std::copy_if(names.cbegin(), names.cend(), std::back_inserter(rest),
                 [this](const Identity& name) { return !m_guessed.contains(name); });
    return rest;
}

} // namespace Uicov::Coverage

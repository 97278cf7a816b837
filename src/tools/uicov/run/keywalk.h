// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/controlnames.h"
#include "run/elementkey.h"
#include "run/namerules.h"

#include <QHash>
#include <QPair>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace Uicov::Runs {

struct Run;
struct RunElement;

/**
 * Finds the place that each element of a run has for people: the windows, and below each the
 * elements that are a step of keys, each once in each window however many parents list it. One walk
 * a run.
 */
class KeyWalk {
public:
    using LabelRule = NameRules::LabelRule;

    struct Place {
        /** Index into Run::elements. */
        int element;
        /** Index of the place above; -1 for a window. Comes before this one. */
        int above;
        ElementKey::Step step;
        /** The step in the structure key. */
        ElementKey::Step structure;
        /** The steps from the window down to this one, as ElementKey::toKey() writes them. */
        QString key;
        QString structureKey;
        /** Whether it is one of those that are one thing to people, however many there are. */
        bool isOfGroup = false;
    };

    /**
     * @param run   outlives this
     * @param rules how the project wants elements to be called
     */
    explicit KeyWalk(const Run& run, NameRules rules = {});

    /** Each window, followed by what is in it, each place before those below it. */
    std::vector<Place> places();

    /** A menu is a window to the toolkit, but to people it is a part of the one it opens over. */
    static bool isMenu(const RunElement& element);

private:
    struct Visit {
        int element;
        int above;
    };
    using StepCounts = QHash<QPair<int, ElementKey::Step>, int>;

    const RunElement& element(int index) const;
    std::vector<int> entryPoints() const;
    void addReachable(int start, std::vector<bool>& reached) const;
    void add(int element, int above, const ElementKey::Step& step,
             const ElementKey::Step& structure);
    bool isGrouped(int element, int above, ElementKey::Step& step) const;
    void walkWindow(int window);
    void visit(const Visit& visit);
    void enqueueChildren(int index, int above);
    ElementKey::Step labelled(ElementKey::Step step) const;
    ElementKey::Step named(ElementKey::Step step, int element) const;
    ElementKey::Step windowStructure(const ElementKey::Step& step, int window);

    const Run& m_run;
    NameRules m_rules;
    /** Of a run of the controls extension. */
    std::optional<ControlNames> m_names;
    std::vector<Place> m_places;
    std::vector<bool> m_isKnownWindow;
    std::vector<int> m_windowsToCome;
    StepCounts m_unnamedWindows;
    StepCounts m_unnamedStructures;
    // Of the window that is being walked:
    std::vector<int> m_visitedIn;
    int m_window = 0;
    std::vector<Visit> m_open;
    StepCounts m_ordinals;
    StepCounts m_structureOrdinals;
};

} // namespace Uicov::Runs

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "controlsrecording.h"
#include "journalfile.h"

#include <QHash>
#include <QSet>
#include <QVector>

/**
 * Which elements of a recording stand for which objects of the journal. Neither side knows the
 * other's identities, so it goes by class and by names: an element stands for an object whose class
 * it names, or which that extends, when both are called the same, or when one of them has no name
 * and nobody else is called so. Each element stands for one object at a time, unless it is a group:
 * what is made anew, as dialogs are, is the same control.
 */
class Matching {
public:
    /** Both are borrowed and outlive this. */
    Matching(const JournalFile& journal, const ControlsRecording& recording);

    /** Indices of elements that may stand for the object; empty when it is not known. */
    const QVector<int>& elementsOf(int object) const;
    /** The element that was given to it alone; -1 when there were too few. */
    int elementOf(int object) const { return m_given.value(object, -1); }
    bool mayBe(int element, int object) const { return elementsOf(object).contains(element); }
    /** Indices of elements of one of the types that are called so. */
    QVector<int> named(const QString& name, const QSet<QString>& types) const;

private:
    QVector<int> candidatesOf(const JournalFile::Object& object) const;
    bool isForeignName(int element, const JournalFile::Object& object) const;
    bool isFree(int element, int object) const;
    void give(const QVector<int>& order, bool byName);

    const JournalFile& m_journal;
    const ControlsRecording& m_recording;
    /** Controls' indices by the class that they name. */
    QHash<QString, QVector<int>> m_byClass;
    QHash<QString, QVector<int>> m_byName;
    /** Names of the objects of each class, with how many have them. */
    QHash<QString, QHash<QString, int>> m_namesOfClass;
    QHash<int, QVector<int>> m_candidates;
    QHash<int, int> m_given;
    /** By element: its objects. */
    QHash<int, QVector<int>> m_objectsOf;
};

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recording/record.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

namespace Uicov::Recording {

/**
 * Rebuilds the element model from its records, in the order in which they were sent, and owns all
 * of it. An element is there once however often it is announced; it may stand below two parents or
 * below itself, as it may in the application. Memory is bounded by the model: pictures are not
 * kept, since nothing that is counted depends on them.
 */
class Replay {
public:
    Replay();
    ~Replay();
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;

    /** Changes the model; a record about an element that was never announced changes nothing. */
    void apply(Record& record);

    /** Every element in the order in which it was first announced. */
    const std::vector<Vorsk::UIAbstraction::UIElement*>& elements() const { return m_elements; }

    /**
     * Where to begin to reach every element: the roots in the order of elements(), then, for each
     * ring of elements that no root leads to, the first of it.
     */
    QVector<const Vorsk::UIAbstraction::UIElement*> entryPoints() const;

    /** Null when no element has that id. */
    Vorsk::UIAbstraction::UIElement* elementById(const QString& id) const;

    /** Records about elements, or children, that were never announced. */
    quint64 recordsWithoutElement() const { return m_recordsWithoutElement; }

private:
    void addElement(std::unique_ptr<Vorsk::UIAbstraction::UIElement> announced);
    bool isNewThroughout(const Vorsk::UIAbstraction::UIElement& announced) const;
    void adopt(Vorsk::UIAbstraction::UIElement* element);
    Vorsk::UIAbstraction::UIElement* merge(const Vorsk::UIAbstraction::UIElement& announced);
    void change(Vorsk::UIAbstraction::UIElement& element, const Record& record);

    std::vector<Vorsk::UIAbstraction::UIElement*> m_elements;
    QHash<QString, Vorsk::UIAbstraction::UIElement*> m_byId;
    quint64 m_recordsWithoutElement = 0;
};

} // namespace Uicov::Recording

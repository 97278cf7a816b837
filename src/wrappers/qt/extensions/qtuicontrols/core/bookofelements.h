// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/core/objecttable.h"
#include "qtuicontrols/elementbook.h"
#include "uiabstraction/pointertable.h"

#include <QHash>

#include <memory>
#include <vector>

namespace Vorsk {

namespace UICoverage {
class StreamUIElementExporter;
}

namespace UIControls {

/**
 * The extension's ElementBook: the elements of the model, and the exporter that tells the host of
 * each change. An element whose object has died is used again when the same thing is made anew
 * below the same parent (the boxes of a page that is visited once more, a dialog that is built for
 * each use), so that it stays one element and memory does not grow with each visit. GUI thread
 * only.
 */
class BookOfElements final : public ElementBook {
public:
    /** @param exporter is told of every element; not owned, outlives this */
    explicit BookOfElements(UICoverage::StreamUIElementExporter& exporter);
    ~BookOfElements();

    /** Those without a parent, in the order in which they came. */
    const std::vector<UIElement*>& roots() const { return m_roots; }

    UIElement* elementOf(const QObject* object) override { return m_objects.elementOf(object); }
    QObject* objectOf(const UIElement* element) override { return m_objects.objectOf(element); }
    UIElement* add(QObject* object, const Description& what, UIElement* parent) override;
    void addObject(QObject* object, UIElement* element) override;
    void setText(UIElement* element, const QString& text) override;
    void setAttribute(UIElement* element, Attribute attribute, const QString& value) override;
    QString attribute(const UIElement* element, Attribute attribute) const override;
    void setPlace(UIElement* element, const QRect& place) override;
    void setPicture(UIElement* element, const QImage& picture) override;
    void announceUse(UIElement* element, Use use) override;
    void countUse(UIElement* element, Use use) override;
    ElementType typeOf(const UIElement* element) const override;
    QString idOf(const UIElement* element) const override;
    UIElement* parentOf(const UIElement* element) const override;
    UIElement* viewOf(UIElement* element) const override;
    void beginBatch() override { ++m_openBatches; }
    void endBatch() override;

private:
    struct Entry {
        ElementType type = ElementType::Area;
        bool isAnnounced = false;
        /** Stands for an object, of whose death it can be known. */
        bool hasObject = false;
        /** Of what it was made as. */
        quint64 likeness = 0;
        /** How often it was used again, and which of the parent's lives it belongs to when it has
         * no object. */
        int life = 0;
        int parentsLife = 0;
        /** Children that were looked at for ones to use again, and those that came since. */
        int sweptChildren = 0;
        int newChildren = 0;
    };

    UIElement* reusable(UIElement* parent, quint64 likeness);
    bool isDead(const UIElement* element, int parentsLife) const;
    void sweep(UIElement* parent);
    void renew(UIElement* element, const Description& what);
    static UIElement* make(const Description& what);
    void announce(UIElement* root);
    Entry& entryOf(const UIElement* element) { return m_entries[element]; }

    UICoverage::StreamUIElementExporter& m_exporter;
    ObjectTable m_objects;
    UIAbstraction::PointerTable<Entry> m_entries;
    /** Elements without a parent. */
    std::vector<UIElement*> m_roots;
    /** By parent and likeness: those whose object has died, the first to be used again last. */
    QHash<const UIElement*, QHash<quint64, std::vector<UIElement*>>> m_reusable;
    int m_openBatches = 0;
    /** What was added since the batch began and has no parent that is announced already. */
    struct Pending {
        UIElement* root;
        UIElement* parent;
    };
    std::vector<Pending> m_pending;
};

} // namespace UIControls
} // namespace Vorsk

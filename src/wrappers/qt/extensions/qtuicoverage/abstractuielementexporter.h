// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/elementstore.h"
#include "uiabstraction/uielement.h"

#include <QImage>
#include <QObject>
#include <QRect>
#include <QString>

#include <memory>

namespace Vorsk {
namespace UICoverage {

/**
 * Sees every change of the elements of the stores that it is given: it attaches itself to each
 * element that a store announces. A concrete exporter implements one slot for each kind of change.
 *
 * Elements that it is neither attached to nor shown by a store are seen only as part of their
 * ancestors. What is attached ends with either side. GUI thread only.
 */
class AbstractUIElementExporter : public QObject {
    Q_OBJECT

public:
    AbstractUIElementExporter();
    ~AbstractUIElementExporter() override;

    /**
     * Attaches to every element that the store announces from now on. What the store holds already
     * is left to onElementStoreAdded(). The store is not kept.
     */
    void addElementStore(const Vorsk::UIAbstraction::ElementStore* store);

    /**
     * Attaches to the element without announcing it: what is in its place is told by the
     * announcement of an element above it. Nothing happens where this is attached already.
     */
    void attachTo(const Vorsk::UIAbstraction::UIElement* element);

    /**
     * Attaches to the element and to all below it, then announces the element alone: the whole tree
     * in one record, where a store's announcements make one for each element.
     */
    void announceTree(const Vorsk::UIAbstraction::UIElement* root);

protected Q_SLOTS:
    virtual void onElementStoreAdded(const Vorsk::UIAbstraction::ElementStore* elementStore) = 0;
    virtual void onElementAdded(const Vorsk::UIAbstraction::UIElement* element) = 0;
    virtual void onChildAdded(const Vorsk::UIAbstraction::UIElement* element,
                              const Vorsk::UIAbstraction::UIElement* child) = 0;
    virtual void onEventRegistered(const Vorsk::UIAbstraction::UIElement* element,
                                   Vorsk::UIAbstraction::UIEvent event) = 0;
    /** The rectangle alone: whether it is valid is not passed on. */
    virtual void onGeometryChanged(const Vorsk::UIAbstraction::UIElement* element,
                                   QRect geometry) = 0;
    virtual void onImageChanged(const Vorsk::UIAbstraction::UIElement* element, QImage image) = 0;
    virtual void onStandardTypeChanged(const Vorsk::UIAbstraction::UIElement* element,
                                       Vorsk::UIAbstraction::StandardType standardType) = 0;
    virtual void onSubgraphTransparentChanged(const Vorsk::UIAbstraction::UIElement* element,
                                              bool isSubgraphTransparent) = 0;
    virtual void onTextChanged(const Vorsk::UIAbstraction::UIElement* element, QString text) = 0;
    virtual void onTransparentNodeChanged(const Vorsk::UIAbstraction::UIElement* element,
                                          bool isTransparentNode) = 0;
    virtual void onUsageIncreased(const Vorsk::UIAbstraction::UIElement* element,
                                  Vorsk::UIAbstraction::UIEvent event, int usage) = 0;
    virtual void onWindowNodeChanged(const Vorsk::UIAbstraction::UIElement* element,
                                     bool isWindowNode) = 0;

protected:
    /**
     * The value is null when the attribute is gone. Behind the others and no slot, so that theirs
     * keep their places; an exporter that does not know attributes has nothing to do.
     */
    virtual void onAttributeChanged(const Vorsk::UIAbstraction::UIElement* element,
                                    const QString& name, const QString& value);

private Q_SLOTS:
    void onElementAdded_internal(const Vorsk::UIAbstraction::UIElement* element);

private:
    class Listener;

    /** Shared by all elements that this is attached to; the last of them deletes it. */
    std::shared_ptr<Listener> m_listener;
};

} // namespace UICoverage
} // namespace Vorsk

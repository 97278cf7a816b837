// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/mappingelementstore.h"

#include <QtPlugin>

namespace Vorsk {
namespace UICoverage {

class AbstractUIElementExporter;

/**
 * The half of a tracker that knows no toolkit: its elements, the screenshot switch and the exporter
 * that sees every element of the store. A concrete tracker derives from QObject first and from this
 * second. Elements outlive the tracker: they belong to their tree. GUI thread only.
 */
class UICoverageTracker {
public:
    /** @param exporter attached to the store at once; not owned, may be null */
    explicit UICoverageTracker(AbstractUIElementExporter* exporter);
    virtual ~UICoverageTracker();

    /** Tracks the children of an object whose children changed. Does nothing here. */
    virtual void trackChildren(QObject* object);

    /** The element that stands for the object; null when there is none. */
    UIAbstraction::UIElement* element(QObject* object);
    QList<UIAbstraction::UIElement*> rootElements() const;

    /** Whether elements get a picture when they are shown; takes effect with the next one shown. */
    bool takeScreenshotsOfElements() const { return m_takeScreenshotsOfElements; }
    void setTakeScreenshotsOfElements(bool takeScreenshots);

    AbstractUIElementExporter* exporter() const { return m_exporter; }
    MappingElementStore& elementStore() { return m_elementStore; }

protected:
    /** A new element of the object's class, which the store does not know yet. */
    static UIAbstraction::UIElement* makeElement(const QObject* object,
                                                 const UIAbstraction::StandardType& standardType);

private:
    Q_DISABLE_COPY(UICoverageTracker)

    MappingElementStore m_elementStore;
    bool m_takeScreenshotsOfElements = true;
    AbstractUIElementExporter* m_exporter;
};

} // namespace UICoverage
} // namespace Vorsk

Q_DECLARE_INTERFACE(Vorsk::UICoverage::UICoverageTracker, "UICoverageTracker")

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QImage;
class QString;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIAbstraction {

class ElementGeometry;
class StandardType;
class UIElement;
class UIEvent;

/**
 * Is called for every change of the elements that it was added to: what connections to all their
 * signals would do, at a small part of the time and memory. One operation for each signal of
 * UIElement, called right before that is emitted. Must not delete the element. GUI thread only.
 */
class ElementListener {
public:
    ElementListener() = default;
    virtual ~ElementListener() = default;
    Q_DISABLE_COPY(ElementListener)

    virtual void childAdded(const UIElement* element, const UIElement* child) = 0;
    virtual void eventRegistered(const UIElement* element, const UIEvent& event) = 0;
    virtual void geometryChanged(const UIElement* element, const ElementGeometry& geometry) = 0;
    virtual void imageChanged(const UIElement* element, const QImage& image) = 0;
    virtual void standardTypeChanged(const UIElement* element,
                                     const StandardType& standardType) = 0;
    virtual void subgraphTransparentChanged(const UIElement* element,
                                            bool isSubgraphTransparent) = 0;
    virtual void textChanged(const UIElement* element, const QString& text) = 0;
    virtual void transparentNodeChanged(const UIElement* element, bool isTransparentNode) = 0;
    virtual void usageIncreased(const UIElement* element, const UIEvent& event, int usage) = 0;
    virtual void windowNodeChanged(const UIElement* element, bool isWindowNode) = 0;
    virtual void attributeChanged(const UIElement* element, const QString& name,
                                  const QString& value) = 0;
};

} // namespace UIAbstraction
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/abstractuielementexporter.h"

#include "uiabstraction/elementlistener.h"
#include "uiabstraction/elementwalk.h"

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::ElementGeometry;
using UIAbstraction::ElementStore;
using UIAbstraction::StandardType;
using UIAbstraction::UIElement;
using UIAbstraction::UIEvent;

/** Passes what elements tell on to an exporter that may have died meanwhile. */
class AbstractUIElementExporter::Listener : public UIAbstraction::ElementListener {
public:
    explicit Listener(AbstractUIElementExporter* exporter)
        : m_exporter(exporter) {}

    void forgetExporter() { m_exporter = nullptr; }

    void childAdded(const UIElement* element, const UIElement* child) override {
        pass(&AbstractUIElementExporter::onChildAdded, element, child);
    }
    void eventRegistered(const UIElement* element, const UIEvent& event) override {
        pass(&AbstractUIElementExporter::onEventRegistered, element, event);
    }
    void geometryChanged(const UIElement* element, const ElementGeometry& geometry) override {
        pass(&AbstractUIElementExporter::onGeometryChanged, element, geometry.rect());
    }
    void imageChanged(const UIElement* element, const QImage& image) override {
        pass(&AbstractUIElementExporter::onImageChanged, element, image);
    }
    void standardTypeChanged(const UIElement* element, const StandardType& standardType) override {
        pass(&AbstractUIElementExporter::onStandardTypeChanged, element, standardType);
    }
    void subgraphTransparentChanged(const UIElement* element, bool isSubgraphTransparent) override {
        pass(&AbstractUIElementExporter::onSubgraphTransparentChanged, element,
             isSubgraphTransparent);
    }
    void textChanged(const UIElement* element, const QString& text) override {
        pass(&AbstractUIElementExporter::onTextChanged, element, text);
    }
    void transparentNodeChanged(const UIElement* element, bool isTransparentNode) override {
        pass(&AbstractUIElementExporter::onTransparentNodeChanged, element, isTransparentNode);
    }
    void usageIncreased(const UIElement* element, const UIEvent& event, int usage) override {
        pass(&AbstractUIElementExporter::onUsageIncreased, element, event, usage);
    }
    void windowNodeChanged(const UIElement* element, bool isWindowNode) override {
        pass(&AbstractUIElementExporter::onWindowNodeChanged, element, isWindowNode);
    }
    void attributeChanged(const UIElement* element, const QString& name,
                          const QString& value) override {
        pass(&AbstractUIElementExporter::onAttributeChanged, element, name, value);
    }

private:
    template <class... Parameters, class... Values>
    void pass(void (AbstractUIElementExporter::*change)(Parameters...), const Values&... values) {
        if (m_exporter != nullptr) {
            (m_exporter->*change)(values...);
        }
    }

    AbstractUIElementExporter* m_exporter;
};

AbstractUIElementExporter::AbstractUIElementExporter()
    : m_listener(std::make_shared<Listener>(this)) {}

AbstractUIElementExporter::~AbstractUIElementExporter() {
    m_listener->forgetExporter();
}

void AbstractUIElementExporter::addElementStore(const ElementStore* store) {
    connect(store, &ElementStore::elementAdded, this,
            &AbstractUIElementExporter::onElementAdded_internal);
    onElementStoreAdded(store);
}

void AbstractUIElementExporter::attachTo(const UIElement* element) {
    if (!element->hasListener(m_listener)) {
        element->addListener(m_listener);
    }
}

void AbstractUIElementExporter::announceTree(const UIElement* root) {
    UIAbstraction::ElementWalk walk(root);
    while (const UIElement* element = walk.next()) {
        attachTo(element);
    }
    onElementAdded(root);
}

void AbstractUIElementExporter::onAttributeChanged(const UIElement* /*element*/,
                                                   const QString& /*name*/,
                                                   const QString& /*value*/) {}

void AbstractUIElementExporter::onElementAdded_internal(const UIElement* element) {
    element->addListener(m_listener);
    onElementAdded(element);
}

} // namespace UICoverage
} // namespace Vorsk

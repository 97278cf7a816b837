#include "abstractuielementexporter.h"

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::ElementStore;
using UIAbstraction::UIElement;

AbstractUIElementExporter::AbstractUIElementExporter() = default;

AbstractUIElementExporter::~AbstractUIElementExporter() = default;

void AbstractUIElementExporter::addElementStore(const ElementStore* store) {
    connect(store, &ElementStore::elementAdded, this,
            &AbstractUIElementExporter::onElementAdded_internal);
    onElementStoreAdded(store);
}

void AbstractUIElementExporter::onElementAdded_internal(const UIElement* element) {
    using Self = AbstractUIElementExporter;
    connect(element, &UIElement::childAdded, this, &Self::onChildAdded);
    connect(element, &UIElement::eventRegistered, this, &Self::onEventRegistered);
    connect(element, &UIElement::geometryChanged, this, &Self::onGeometryChanged);
    connect(element, &UIElement::imageChanged, this, &Self::onImageChanged);
    connect(element, &UIElement::standardTypeChanged, this, &Self::onStandardTypeChanged);
    connect(element, &UIElement::subgraphTransparentChanged, this,
            &Self::onSubgraphTransparentChanged);
    connect(element, &UIElement::textChanged, this, &Self::onTextChanged);
    connect(element, &UIElement::transparentNodeChanged, this, &Self::onTransparentNodeChanged);
    connect(element, &UIElement::usageIncreased, this, &Self::onUsageIncreased);
    connect(element, &UIElement::windowNodeChanged, this, &Self::onWindowNodeChanged);
    onElementAdded(element);
}

} // namespace UICoverage
} // namespace Vorsk

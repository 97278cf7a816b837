#include "operations.h"

#include "mappingelementstore.h"
#include "observerpool.h"
#include "qtobjectobserver.h"
#include "qtquickcoveragetracker.h"
#include "qtwidgetscoveragetracker.h"
#include "streamuielementexporter.h"
#include "uiabstraction/uielement.h"

#include <QDialog>
#include <QEvent>
#include <QPushButton>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVBoxLayout>

#include <memory>

namespace {

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;
using Work = Operation::Work;

UIElement* newElement() {
    return new UIElement(QStringLiteral("QPushButton"), StandardType(QStringLiteral("Button")),
                         QString());
}

/** Both trackers and the exporter that they share, as the extension has them. */
struct Trackers {
    Trackers() {
        widgets.setTakeScreenshotsOfElements(false);
        quick.setTakeScreenshotsOfElements(false);
    }

    StreamUIElementExporter exporter;
    QtWidgetsCoverageTracker widgets{&exporter};
    QtQuickCoverageTracker quick{&exporter};
};

Work eventsOfNoInterest(int items) {
    const auto trackers = std::make_shared<Trackers>();
    return [trackers, items] {
        QEvent event(QEvent::User);
        for (int i = 0; i < items; ++i) {
            trackers->widgets.handleEvent(nullptr, &event);
            trackers->quick.handleEvent(nullptr, &event);
        }
    };
}

struct ExportedElement {
    ExportedElement() {
        exporter.addElementStore(&store);
        store.addElement(element.get());
    }

    StreamUIElementExporter exporter;
    ElementStore store;
    const std::unique_ptr<UIElement> element{newElement()};
};

Work recordsOfAFlag(int items) {
    const auto exported = std::make_shared<ExportedElement>();
    return [exported, items] {
        for (int i = 0; i < items; ++i) {
            exported->element->setTransparentNode(true);
        }
    };
}

Work recordsOfAText(int items) {
    const auto exported = std::make_shared<ExportedElement>();
    return [exported, items] {
        const QString text = QStringLiteral("Control 4711");
        for (int i = 0; i < items; ++i) {
            exported->element->setText(text);
        }
    };
}

Work usageCounts(int items) {
    const auto exported = std::make_shared<ExportedElement>();
    const UIEvent clicked(QStringLiteral("clicked"));
    exported->element->registerEvent(clicked);
    return [exported, clicked, items] {
        for (int i = 0; i < items; ++i) {
            exported->element->increaseUsage(clicked);
        }
    };
}

Work childrenAdded(int items) {
    const auto exported = std::make_shared<ExportedElement>();
    auto children = std::make_shared<std::vector<UIElement*>>();
    for (int i = 0; i < items; ++i) {
        children->push_back(newElement());
    }
    return [exported, children] {
        for (UIElement* child : *children) {
            exported->element->addChild(child);
        }
    };
}

Work hitTest(int items) {
    const auto exported = std::make_shared<ExportedElement>();
    for (int i = 0; i < items; ++i) {
        UIElement* const child = newElement();
        child->setGeometry(ElementGeometry(QRect(10, 10 * i, 10, 10), true));
        exported->element->addChild(child);
    }
    return [exported] {
        exported->element->increaseUsageAt(UIEvent(QStringLiteral("clicked")), QPoint(15, 15));
    };
}

/** Objects that a store knows, with observers that a pool owns; they die first to last. */
Work objectsDestroyed(int items) {
    struct State {
        ~State() { qDeleteAll(elements); }

        std::vector<UIElement*> elements;
        std::vector<std::unique_ptr<QObject>> objects;
        MappingElementStore store;
        ObserverPool pool;
    };
    const auto state = std::make_shared<State>();
    for (int i = 0; i < items; ++i) {
        auto object = std::make_unique<QObject>();
        UIElement* const element = newElement();
        state->store.addMapping(object.get(), element);
        state->pool.addObserver(element, new QtObjectObserver(object.get(), element, nullptr));
        state->elements.push_back(element);
        state->objects.push_back(std::move(object));
    }
    return [state] {
        for (std::unique_ptr<QObject>& object : state->objects) {
            object.reset();
        }
    };
}

/** A window full of buttons that is not shown, so that its events come from here alone. */
struct Buttons {
    explicit Buttons(int count) {
        auto* const layout = new QVBoxLayout(&window);
        for (int i = 0; i < count; ++i) {
            auto* const button = new QPushButton(QStringLiteral("Button %1").arg(i));
            layout->addWidget(button);
            all.push_back(button);
        }
    }

    void show() {
        QEvent event(QEvent::Show);
        for (QPushButton* button : all) {
            trackers.widgets.handleEvent(button, &event);
        }
    }

    Trackers trackers;
    QDialog window;
    std::vector<QPushButton*> all;
};

Work newWidgets(int items) {
    const auto buttons = std::make_shared<Buttons>(items);
    return [buttons] { buttons->show(); };
}

Work knownWidgets(int items) {
    const auto buttons = std::make_shared<Buttons>(items);
    buttons->show();
    return [buttons] { buttons->show(); };
}

/** A Qt Quick window whose items are all known. */
struct Items {
    explicit Items(int count) {
        for (int i = 0; i < count; ++i) {
            auto* const item = new QQuickItem(window.contentItem());
            item->setSize(QSizeF(10, 10));
        }
        send(QEvent::Show);
    }

    void send(QEvent::Type type) {
        QEvent event(type);
        trackers.quick.handleEvent(&window, &event);
    }

    Trackers trackers;
    QQuickWindow window;
};

Work itemsInFocus(int items) {
    const auto window = std::make_shared<Items>(items);
    return [window] { window->send(QEvent::FocusIn); };
}

Work itemsDestroyed(int items) {
    const auto window = std::make_shared<Items>(items);
    return [window] { qDeleteAll(window->window.contentItem()->childItems()); };
}

} // namespace

const std::vector<Operation>& operations() {
    static const std::vector<Operation> all{
        {"event of no interest", eventsOfNoInterest},
        {"record of a flag", recordsOfAFlag},
        {"record of a text", recordsOfAText},
        {"usage count", usageCounts},
        {"child added", childrenAdded},
        {"hit test, for each child", hitTest},
        {"observed object destroyed", objectsDestroyed},
        {"Show of a new widget", newWidgets},
        {"Show of a known widget", knownWidgets},
        {"focus in, for each item", itemsInFocus},
        {"Qt Quick item destroyed", itemsDestroyed},
    };
    return all;
}

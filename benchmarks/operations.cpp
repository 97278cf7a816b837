// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "operations.h"

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/mappingelementstore.h"
#include "tracking/observerpool.h"
#include "tracking/qtobjectobserver.h"
#include "tracking/streamuielementexporter.h"
#include "uiabstraction/uielement.h"

#include <QDialog>
#include <QEvent>
#include <QImage>
#include <QPushButton>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVBoxLayout>

#include <functional>
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

/** One change of one element, made again and again. */
Work recordsOf(int items, const std::function<void(UIElement&)>& change) {
    const auto exported = std::make_shared<ExportedElement>();
    return [exported, items, change] {
        for (int i = 0; i < items; ++i) {
            change(*exported->element);
        }
    };
}

Work recordsOfAFlag(int items) {
    return recordsOf(items, [](UIElement& element) { element.setTransparentNode(true); });
}

Work recordsOfASubgraphFlag(int items) {
    return recordsOf(items, [](UIElement& element) { element.setSubgraphTransparent(true); });
}

Work recordsOfAWindowFlag(int items) {
    return recordsOf(items, [](UIElement& element) { element.setWindowNode(true); });
}

Work recordsOfAText(int items) {
    // With characters of its own, as a widget's.
    const QString text = QString::fromLatin1("Control 4711");
    return recordsOf(items, [text](UIElement& element) { element.setText(text); });
}

Work recordsOfAType(int items) {
    const StandardType type(QStringLiteral("Button"));
    return recordsOf(items, [type](UIElement& element) { element.setStandardType(type); });
}

Work recordsOfAPlace(int items) {
    const ElementGeometry place(QRect(10, 20, 80, 24), true);
    return recordsOf(items, [place](UIElement& element) { element.setGeometry(place); });
}

/** A picture that is gone; what a real one costs is its encoding, which is measured elsewhere. */
Work recordsOfNoPicture(int items) {
    return recordsOf(items, [](UIElement& element) { element.setImage(QImage()); });
}

/** Elements that are in no store yet. */
struct ExportedElements {
    explicit ExportedElements(int count) {
        exporter.addElementStore(&store);
        for (int i = 0; i < count; ++i) {
            elements.push_back(newElement());
        }
    }
    ~ExportedElements() { qDeleteAll(elements); }
    Q_DISABLE_COPY(ExportedElements)

    StreamUIElementExporter exporter;
    ElementStore store;
    std::vector<UIElement*> elements;
};

/** One event for each of many elements, as they have few each. */
Work eventsRegistered(int items) {
    const auto state = std::make_shared<ExportedElements>(items);
    for (UIElement* element : state->elements) {
        state->store.addElement(element);
    }
    const UIEvent shown(QStringLiteral("shown"));
    return [state, shown] {
        for (UIElement* element : state->elements) {
            element->registerEvent(shown);
        }
    };
}

Work elementsAdded(int items) {
    const auto state = std::make_shared<ExportedElements>(items);
    return [state] {
        for (UIElement* element : state->elements) {
            state->store.addElement(element);
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

/** The first look at so many makes the next ones short. */
Work hitTestAgain(int items) {
    Work test = hitTest(items);
    test();
    return test;
}

/** Objects with their elements, a store and a pool. */
struct Objects {
    explicit Objects(int count) {
        for (int i = 0; i < count; ++i) {
            all.push_back(std::make_unique<QObject>());
            elements.push_back(newElement());
        }
    }
    ~Objects() { qDeleteAll(elements); }
    Q_DISABLE_COPY(Objects)

    void map() {
        for (std::size_t i = 0; i < all.size(); ++i) {
            store.addMapping(all[i].get(), elements[i]);
        }
    }

    void observe() {
        for (std::size_t i = 0; i < all.size(); ++i) {
            pool.addObserver(elements[i], new QtObjectObserver(all[i].get(), elements[i], nullptr));
        }
    }

    /** They die first to last. */
    void destroy() {
        for (std::unique_ptr<QObject>& object : all) {
            object.reset();
        }
    }

    std::vector<UIElement*> elements;
    std::vector<std::unique_ptr<QObject>> all;
    MappingElementStore store;
    ObserverPool pool{&store};
};

Work mappingsAdded(int items) {
    const auto objects = std::make_shared<Objects>(items);
    return [objects] { objects->map(); };
}

Work mappedObjectsDestroyed(int items) {
    const auto objects = std::make_shared<Objects>(items);
    objects->map();
    return [objects] { objects->destroy(); };
}

Work observersAdded(int items) {
    const auto objects = std::make_shared<Objects>(items);
    objects->map();
    return [objects] { objects->observe(); };
}

Work observedObjectsDestroyed(int items) {
    const auto objects = std::make_shared<Objects>(items);
    objects->map();
    objects->observe();
    return [objects] { objects->destroy(); };
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
    } // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the window owns its layout

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
        {"record of an element", elementsAdded},
        {"child added", childrenAdded},
        {"record of an event", eventsRegistered},
        {"record of a place", recordsOfAPlace},
        {"record of no picture", recordsOfNoPicture},
        {"record of a type", recordsOfAType},
        {"record of a text", recordsOfAText},
        {"record of a flag", recordsOfAFlag},
        {"record of a subgraph flag", recordsOfASubgraphFlag},
        {"record of a window flag", recordsOfAWindowFlag},
        {"usage count", usageCounts},
        {"hit test, for each child", hitTest},
        {"hit test again, for each child", hitTestAgain},
        {"object mapped", mappingsAdded},
        {"mapped object destroyed", mappedObjectsDestroyed},
        {"observer added", observersAdded},
        {"observed object destroyed", observedObjectsDestroyed},
        {"Show of a new widget", newWidgets},
        {"Show of a known widget", knownWidgets},
        {"focus in, for each item", itemsInFocus},
        {"Qt Quick item destroyed", itemsDestroyed},
    };
    return all;
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What the heap holds for one tracked object, piece by piece.
#include "discardinghook.h"
#include "tracking/mappingelementstore.h"
#include "tracking/observerpool.h"
#include "tracking/qtobjectobserver.h"
#include "tracking/streamuielementexporter.h"
#include "uiabstraction/uielement.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <functional>
#include <vector>

#include <malloc.h>

namespace {

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

constexpr int count = 4096;

double heap() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

/** Prints and keeps it for each of them. */
void note(QJsonObject& results, const char* name, double bytes) {
    std::printf("%-56s %7.0f\n", name, bytes / count);
    results.insert(QString::fromLatin1(name), bytes / count);
}

void measure(QJsonObject& results, const char* name, const std::function<void()>& work) {
    const double before = heap();
    work();
    note(results, name, heap() - before);
}

QJsonObject measureAll() {
    QJsonObject results;
    const DiscardingHook hook;
    StreamUIElementExporter exporter;
    MappingElementStore silent;
    MappingElementStore exported;
    exporter.addElementStore(&exported);
    ObserverPool pool(&silent);
    const UIEvent shown(QStringLiteral("shown"));
    const UIEvent clicked(QStringLiteral("clicked"));
    std::vector<UIElement*> elements;
    elements.reserve(count);
    const double atFirst = heap();
    std::vector<QObject> objects(count);
    std::vector<QObject> others(count);
    std::printf("%-56s %7s\n", "bytes for each object", "");
    // All objects of a class share its name.
    const QString className = QString::fromLatin1("QPushButton");
    measure(results, "element with its id", [&] {
        for (int i = 0; i < count; ++i) {
            elements.push_back(
                new UIElement(className, StandardType(QStringLiteral("Button")), QString()));
        }
    });
    measure(results, "its text and two events", [&] {
        for (UIElement* element : elements) {
            element->setText(QString::fromLatin1("Control 4711"));
            element->registerEvent(shown);
            element->registerEvent(clicked);
        }
    });
    measure(results, "its entries in the store, with the object's guard", [&] {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            silent.addMapping(&objects[i], elements[i]);
        }
    });
    measure(results, "the same, with the exporter listening", [&] {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            exported.addMapping(&others[i], elements[i]);
        }
    });
    measure(results, "its observer and the entries in the pool", [&] {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            pool.addObserver(elements[i], new QtObjectObserver(&objects[i], elements[i], nullptr));
        }
    });
    std::vector<QObject>().swap(objects);
    std::vector<QObject>().swap(others);
    note(results, "what stays of all that without the objects", heap() - atFirst);
    qDeleteAll(elements);
    return results;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const QJsonObject results = measureAll();
    const QStringList arguments = QCoreApplication::arguments();
    const int option = arguments.indexOf(QStringLiteral("--json"));
    if (option < 0 || option + 1 >= arguments.size()) {
        return 0;
    }
    QFile file(arguments.at(option + 1));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(results).toJson()) > 0 ? 0
                                                                                              : 1;
}

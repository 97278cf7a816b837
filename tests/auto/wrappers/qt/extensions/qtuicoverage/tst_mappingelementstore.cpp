// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "tracking/mappingelementstore.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <array>
#include <memory>
#include <vector>

using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UICoverage::MappingElementStore;

namespace {

UIElement* newElement(const char* id) {
    return new UIElement(QStringLiteral("Type"), StandardType(), QLatin1String(id));
}

/** What the store promises, in the plainest form. */
struct PlainStore {
    QHash<QObject*, UIElement*> mapping;
    QList<UIElement*> list;
    QList<const UIElement*> announced;

    void addMapping(QObject* object, UIElement* element) {
        mapping[object] = element;
        list.append(element);
        announced.append(element);
    }

    void objectDestroyed(QObject* object) {
        list.removeOne(mapping.value(object));
        mapping.remove(object);
    }
};

/** Objects that come and go at fixed addresses, told to both stores. */
class History {
public:
    static constexpr int objectCount = 6;
    static constexpr int elementCount = 9;

    explicit History(quint32 seed)
        : m_random(seed) {
        for (int i = 0; i < elementCount; ++i) {
            m_elements.push_back(
                std::make_unique<UIElement>(QStringLiteral("Type"), StandardType(), QString()));
        }
        QObject::connect(&m_store, &MappingElementStore::elementAdded,
                         [this](const UIElement* element) { m_announced.append(element); });
    }

    void step() {
        const auto i = static_cast<std::size_t>(m_random.bounded(objectCount));
        QObject* const object = m_objects[i].address();
        switch (m_random.bounded(5)) {
        case 0:
            if (m_isAlive[i]) {
                m_objects[i].destroy();
                m_plain.objectDestroyed(object);
                m_isAlive[i] = false;
            }
            break;
        case 1:
            if (m_isAlive[i]) {
                object->disconnect();
            }
            break;
        default: {
            if (!m_isAlive[i]) {
                m_objects[i].make();
                m_isAlive[i] = true;
            }
            const auto element = static_cast<std::size_t>(m_random.bounded(elementCount));
            m_store.addMapping(object, m_elements[element].get());
            m_plain.addMapping(object, m_elements[element].get());
        }
        }
    }

    void compare() {
        for (TestLib::SameStorage<QObject>& object : m_objects) {
            QCOMPARE(m_store.elementForObject(object.address()),
                     m_plain.mapping.value(object.address()));
        }
        QCOMPARE(m_store.elements(), m_plain.list);
        QCOMPARE(m_announced, m_plain.announced);
        for (const std::unique_ptr<UIElement>& element : m_elements) {
            QObject* const object = m_store.objectForElement(element.get());
            const QList<QObject*> mapped = m_plain.mapping.keys(element.get());
            QVERIFY(mapped.isEmpty() ? object == nullptr : mapped.contains(object));
        }
    }

private:
    QRandomGenerator m_random;
    MappingElementStore m_store;
    PlainStore m_plain;
    QList<const UIElement*> m_announced;
    std::vector<std::unique_ptr<UIElement>> m_elements;
    std::array<TestLib::SameStorage<QObject>, objectCount> m_objects;
    std::array<bool, objectCount> m_isAlive{};
};

} // namespace

class tst_MappingElementStore : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasOnePrivateSlotAndNoSignalOfItsOwn() {
        const QMetaObject& meta = MappingElementStore::staticMetaObject;
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        const QMetaMethod slot = meta.method(meta.methodOffset());
        QCOMPARE(slot.methodType(), QMetaMethod::Slot);
        QCOMPARE(slot.access(), QMetaMethod::Private);
        QCOMPARE(slot.methodSignature(), QByteArray("objectDestroyed(QObject*)"));
        QCOMPARE(slot.parameterNames(), QList<QByteArray>{"object"});
    }

    void mappingIsThereWhenTheElementIsAnnounced() {
        const std::unique_ptr<UIElement> element(newElement("a"));
        QObject object;
        MappingElementStore store;
        UIElement* found = nullptr;
        connect(&store, &MappingElementStore::elementAdded, this,
                [&] { found = store.elementForObject(&object); });
        store.addMapping(&object, element.get());
        QCOMPARE(found, element.get());
        QCOMPARE(store.objectForElement(element.get()), &object);
        QCOMPARE(store.elements(), QList<UIElement*>{element.get()});
    }

    void destroyedObjectIsForgottenAndItsElementStaysInTheTree() {
        const std::unique_ptr<UIElement> parent(newElement("parent"));
        UIElement* const child = newElement("child");
        QObject parentObject;
        auto childObject = std::make_unique<QObject>();
        QObject* const address = childObject.get();
        MappingElementStore store;
        store.addMapping(&parentObject, parent.get());
        store.addMapping(address, child);
        parent->addChild(child);
        childObject.reset();
        QCOMPARE(store.elementForObject(address), nullptr);
        QCOMPARE(store.objectForElement(child), nullptr);
        QCOMPARE(store.elements(), QList<UIElement*>{parent.get()});
        QCOMPARE(parent->children(), QList<UIElement*>{child});
    }

    void objectMappedTwiceIsListedAndAnnouncedTwiceAndRemovedOnce() {
        const std::unique_ptr<UIElement> element(newElement("a"));
        auto object = std::make_unique<QObject>();
        MappingElementStore store;
        QSignalSpy added(&store, &MappingElementStore::elementAdded);
        store.addMapping(object.get(), element.get());
        store.addMapping(object.get(), element.get());
        QCOMPARE(added.count(), 2);
        QCOMPARE(store.elements(), (QList<UIElement*>{element.get(), element.get()}));
        object.reset();
        QCOMPARE(store.elements(), QList<UIElement*>{element.get()});
    }

    void replacedElementStaysListed() {
        const std::unique_ptr<UIElement> first(newElement("first"));
        const std::unique_ptr<UIElement> second(newElement("second"));
        auto object = std::make_unique<QObject>();
        MappingElementStore store;
        store.addMapping(object.get(), first.get());
        store.addMapping(object.get(), second.get());
        QCOMPARE(store.elementForObject(object.get()), second.get());
        QCOMPARE(store.objectForElement(first.get()), nullptr);
        object.reset();
        QCOMPARE(store.elements(), QList<UIElement*>{first.get()});
    }

    void whatWasNeverMappedIsNull() {
        const std::unique_ptr<UIElement> element(newElement("a"));
        QObject object;
        MappingElementStore store;
        QCOMPARE(store.objectForElement(element.get()), nullptr);
        QCOMPARE(store.objectForElement(nullptr), nullptr);
        QCOMPARE(store.elementForObject(&object), nullptr);
        QCOMPARE(store.elementForObject(nullptr), nullptr);
    }

    void destroyingTheStoreLeavesElementsAlone() {
        QObject object;
        const std::unique_ptr<UIElement> element(newElement("a"));
        const QPointer<UIElement> guard(element.get());
        {
            MappingElementStore store;
            store.addMapping(&object, element.get());
        }
        QVERIFY(!guard.isNull());
    }

    void objectThatDiedUnnoticedCountsAsDestroyed() {
        const std::unique_ptr<UIElement> element(newElement("a"));
        TestLib::SameStorage<QObject> storage;
        QObject* const object = storage.make();
        MappingElementStore store;
        store.addMapping(object, element.get());
        object->disconnect();
        storage.destroy();
        QCOMPARE(store.objectForElement(element.get()), nullptr);
        QCOMPARE(store.elementForObject(object), nullptr);
        QVERIFY(store.elements().isEmpty());
    }

    void newObjectAtTheAddressDoesNotInheritTheElement() {
        const std::unique_ptr<UIElement> oldElement(newElement("old"));
        const std::unique_ptr<UIElement> newerElement(newElement("new"));
        TestLib::SameStorage<QObject> storage;
        MappingElementStore store;
        QObject* const object = storage.make();
        store.addMapping(object, oldElement.get());
        object->disconnect();
        QCOMPARE(storage.make(), object);
        QCOMPARE(store.elementForObject(object), nullptr);
        store.addMapping(object, newerElement.get());
        QCOMPARE(store.elementForObject(object), newerElement.get());
        QCOMPARE(store.elements(), QList<UIElement*>{newerElement.get()});
    }

    void newObjectAtTheAddressCanBeMappedWithoutAsking() {
        const std::unique_ptr<UIElement> oldElement(newElement("old"));
        const std::unique_ptr<UIElement> newerElement(newElement("new"));
        TestLib::SameStorage<QObject> storage;
        MappingElementStore store;
        QObject* const object = storage.make();
        store.addMapping(object, oldElement.get());
        object->disconnect();
        storage.make();
        store.addMapping(object, newerElement.get());
        QCOMPARE(store.elements(), QList<UIElement*>{newerElement.get()});
        QCOMPARE(store.objectForElement(oldElement.get()), nullptr);
    }

    void randomHistoriesAgreeWithThePlainForm_data() {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 40; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }

    void randomHistoriesAgreeWithThePlainForm() {
        QFETCH(quint32, seed);
        History history(seed);
        for (int i = 0; i < 200 && !QTest::currentTestFailed(); ++i) {
            history.step();
            history.compare();
        }
    }
};

QTEST_GUILESS_MAIN(tst_MappingElementStore)
#include "tst_mappingelementstore.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "tracking/mappingelementstore.h"
#include "tracking/observerpool.h"
#include "uiabstraction/uielement.h"

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <memory>
#include <vector>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

std::unique_ptr<UIElement> makeElement() {
    return std::make_unique<UIElement>(QStringLiteral("Type"), StandardType(), QString());
}

/** Gives the pool a new observer; null once it is deleted. */
QPointer<QtObjectObserver> addTo(ObserverPool& pool, UIElement* element, QObject* object) {
    auto* const observer = new QtObjectObserver(object, element, nullptr);
    pool.addObserver(element, observer);
    return observer;
}

class CountingObject : public QObject {
public:
    int destroyedReceivers() const { return receivers(SIGNAL(destroyed(QObject*))); }
};

/** What the pool promises, in the plainest form: everything is searched. */
struct PlainPool {
    QList<QPair<UIElement*, QtObjectObserver*>> byElement;
    QList<QPair<QObject*, QtObjectObserver*>> byObject;

    void addObserver(UIElement* element, QObject* object, QtObjectObserver* observer) {
        for (int i = byElement.size() - 1; i >= 0; --i) {
            if (byElement.at(i).first == element) {
                byElement.removeAt(i);
            }
        }
        byElement.append({element, observer});
        byObject.append({object, observer});
    }

    QtObjectObserver* observerForElement(UIElement* element) const {
        for (const auto& entry : byElement) {
            if (entry.first == element) {
                return entry.second;
            }
        }
        return nullptr;
    }

    void observerDestroyed(QtObjectObserver* observer) {
        for (int i = byElement.size() - 1; i >= 0; --i) {
            if (byElement.at(i).second == observer) {
                byElement.removeAt(i);
            }
        }
        for (int i = byObject.size() - 1; i >= 0; --i) {
            if (byObject.at(i).second == observer) {
                byObject.removeAt(i);
            }
        }
    }

    QList<QtObjectObserver*> observersOf(QObject* object) const {
        QList<QtObjectObserver*> observers;
        for (const auto& entry : byObject) {
            if (entry.first == object) {
                observers.append(entry.second);
            }
        }
        return observers;
    }
};

/** Objects and observers that come and go, told to both pools. */
class History {
public:
    static constexpr std::size_t objectCount = 5;
    static constexpr std::size_t elementCount = 7;

    /** @param mapped that many of the objects, the first ones, are known to the pool's store */
    History(quint32 seed, std::size_t mapped)
        : m_random(seed)
        , m_pool(std::make_unique<ObserverPool>(&m_store))
        , m_mapped(mapped) {
        for (std::size_t i = 0; i < elementCount; ++i) {
            m_elements.push_back(makeElement());
        }
        for (std::size_t i = 0; i < objectCount; ++i) {
            makeObject(i);
        }
    }

    ~History() {
        // Observers that were replaced belong to their object's end, not to the pool's.
        const QList<QPointer<QtObjectObserver>> all = m_observers;
        m_pool.reset();
        for (const QPointer<QtObjectObserver>& observer : all) {
            delete observer;
        }
    }

    void step() {
        const std::size_t place = m_random.bounded(quint32{objectCount});
        const std::unique_ptr<QObject>& object = m_objects[place];
        switch (m_random.bounded(4)) {
        case 0: {
            const QList<QtObjectObserver*> observers = m_plain.observersOf(object.get());
            makeObject(place);
            for (QtObjectObserver* observer : observers) {
                expectDeath(observer);
            }
            break;
        }
        case 1:
            if (!m_observers.isEmpty()) {
                QtObjectObserver* const observer =
                    m_observers.at(static_cast<int>(m_random.bounded(quint32(m_observers.size()))));
                delete observer;
                expectDeath(observer);
            }
            break;
        default: {
            UIElement* const element = m_elements[m_random.bounded(quint32{elementCount})].get();
            auto* const observer = new QtObjectObserver(object.get(), element, nullptr);
            m_observers.append(observer);
            m_deaths.insert(observer, 0);
            QObject::connect(observer, &QObject::destroyed,
                             [this](QObject* dying) { ++m_deaths[dying]; });
            m_pool->addObserver(element, observer);
            m_plain.addObserver(element, object.get(), observer);
        }
        }
    }

    void compare() {
        for (const std::unique_ptr<UIElement>& element : m_elements) {
            QtObjectObserver* const expected = m_plain.observerForElement(element.get());
            QCOMPARE(m_pool->observerForElement(element.get()), expected);
            QCOMPARE(m_pool->hasObserver(element.get()), expected != nullptr);
        }
        for (const QPointer<QtObjectObserver>& observer : qAsConst(m_observers)) {
            QVERIFY(!observer.isNull());
        }
        QVERIFY(std::all_of(m_deaths.cbegin(), m_deaths.cend(), [](int n) { return n == 0; }));
    }

    void destroyPool() {
        QList<QtObjectObserver*> listed;
        for (const auto& entry : qAsConst(m_plain.byElement)) {
            listed.append(entry.second);
        }
        m_pool.reset();
        for (QtObjectObserver* observer : qAsConst(listed)) {
            expectDeath(observer);
        }
        // What was replaced before is not the pool's to delete any more.
        for (const QPointer<QtObjectObserver>& observer : qAsConst(m_observers)) {
            QVERIFY(!observer.isNull());
        }
    }

private:
    /** In place of the one that was there. */
    void makeObject(std::size_t place) {
        m_objects[place] = std::make_unique<QObject>();
        if (place < m_mapped) {
            m_store.addMapping(m_objects[place].get(), m_elements[place].get());
        }
    }

    void expectDeath(QtObjectObserver* observer) {
        QCOMPARE(m_deaths.take(observer), 1);
        m_plain.observerDestroyed(observer);
        m_observers.removeIf_([](const QPointer<QtObjectObserver>& o) { return o.isNull(); });
    }

    class Observers : public QList<QPointer<QtObjectObserver>> {
    public:
        template <class Predicate>
        void removeIf_(Predicate predicate) {
            erase(std::remove_if(begin(), end(), predicate), end());
        }
    };

    QRandomGenerator m_random;
    MappingElementStore m_store;
    std::unique_ptr<ObserverPool> m_pool;
    std::size_t m_mapped;
    PlainPool m_plain;
    std::vector<std::unique_ptr<UIElement>> m_elements;
    std::array<std::unique_ptr<QObject>, objectCount> m_objects;
    Observers m_observers;
    QHash<QObject*, int> m_deaths;
};

} // namespace

class tst_ObserverPool : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasTwoPrivateSlotsInOrder() {
        const QMetaObject& meta = ObserverPool::staticMetaObject;
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
        const char* const signatures[] = {"observedObjectDestroyed(QObject*)",
                                          "observerDestroyed(QObject*)"};
        for (int i = 0; i < 2; ++i) {
            const QMetaMethod slot = meta.method(meta.methodOffset() + i);
            QCOMPARE(slot.methodType(), QMetaMethod::Slot);
            QCOMPARE(slot.access(), QMetaMethod::Private);
            QCOMPARE(slot.methodSignature(), QByteArray(signatures[i]));
            QCOMPARE(slot.parameterNames(), QList<QByteArray>{"object"});
        }
    }

    void unknownElementHasNoObserver() {
        const auto element = makeElement();
        ObserverPool pool;
        QVERIFY(!pool.hasObserver(element.get()));
        QCOMPARE(pool.observerForElement(element.get()), nullptr);
        QVERIFY(!pool.hasObserver(nullptr));
    }

    void destroyingTheObjectDeletesItsObserver() {
        const auto element = makeElement();
        auto object = std::make_unique<QObject>();
        ObserverPool pool;
        const QPointer<QtObjectObserver> observer = addTo(pool, element.get(), object.get());
        QVERIFY(pool.hasObserver(element.get()));
        object.reset();
        QVERIFY(observer.isNull());
        QVERIFY(!pool.hasObserver(element.get()));
    }

    void destroyingTheObjectDeletesAllItsObserversInOrder() {
        const auto first = makeElement();
        const auto second = makeElement();
        auto object = std::make_unique<QObject>();
        ObserverPool pool;
        QStringList order;
        for (UIElement* element : {first.get(), second.get()}) {
            auto* const observer = new QtObjectObserver(object.get(), element, nullptr);
            const QString name =
                element == first.get() ? QStringLiteral("first") : QStringLiteral("second");
            connect(observer, &QObject::destroyed, this, [&order, name] { order.append(name); });
            pool.addObserver(element, observer);
        }
        object.reset();
        QCOMPARE(order, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
        QVERIFY(!pool.hasObserver(first.get()));
        QVERIFY(!pool.hasObserver(second.get()));
    }

    void observerDeletedDirectlyLeavesThePool() {
        const auto element = makeElement();
        auto object = std::make_unique<QObject>();
        ObserverPool pool;
        auto* const observer = new QtObjectObserver(object.get(), element.get(), nullptr);
        pool.addObserver(element.get(), observer);
        delete observer;
        QVERIFY(!pool.hasObserver(element.get()));
        // A pointer left behind would be deleted again here and with the pool.
        object.reset();
    }

    void destroyingThePoolDeletesEveryObserverOnce() {
        const auto first = makeElement();
        const auto second = makeElement();
        QObject object;
        QHash<QObject*, int> deaths;
        {
            ObserverPool pool;
            for (UIElement* element : {first.get(), second.get()}) {
                auto* const observer = new QtObjectObserver(&object, element, nullptr);
                deaths.insert(observer, 0);
                connect(observer, &QObject::destroyed, this,
                        [&deaths](QObject* dying) { ++deaths[dying]; });
                pool.addObserver(element, observer);
            }
            // The same one for two elements, as well.
            const auto third = makeElement();
            pool.addObserver(third.get(), pool.observerForElement(first.get()));
        }
        QCOMPARE(deaths.values(), (QList<int>{1, 1}));
    }

    void replacedObserverIsNotDeleted() {
        const auto element = makeElement();
        auto object = std::make_unique<QObject>();
        ObserverPool pool;
        const QPointer<QtObjectObserver> first = addTo(pool, element.get(), object.get());
        const QPointer<QtObjectObserver> second = addTo(pool, element.get(), object.get());
        QVERIFY(!first.isNull());
        QCOMPARE(pool.observerForElement(element.get()), second.data());
        object.reset();
        QVERIFY(first.isNull());
        QVERIFY(second.isNull());
    }

    void objectThatDiedUnnoticedLosesItsObserverWhenAskedFor() {
        const auto element = makeElement();
        auto object = std::make_unique<QObject>();
        ObserverPool pool;
        const QPointer<QtObjectObserver> observer = addTo(pool, element.get(), object.get());
        object->disconnect();
        object.reset();
        QCOMPARE(pool.observerForElement(element.get()), nullptr);
        QVERIFY(observer.isNull());
        QVERIFY(!pool.hasObserver(element.get()));
    }

    void newObjectAtTheAddressDoesNotInheritTheObserver() {
        const auto oldElement = makeElement();
        const auto newElement = makeElement();
        TestLib::SameStorage<QObject> storage;
        ObserverPool pool;
        QObject* const object = storage.make();
        const QPointer<QtObjectObserver> oldObserver = addTo(pool, oldElement.get(), object);
        object->disconnect();
        storage.make();
        const QPointer<QtObjectObserver> newObserver = addTo(pool, newElement.get(), object);
        QVERIFY(oldObserver.isNull());
        QVERIFY(!pool.hasObserver(oldElement.get()));
        QCOMPARE(pool.observerForElement(newElement.get()), newObserver.data());
        storage.destroy();
        QVERIFY(newObserver.isNull());
    }

    void connectsOnlyToObjectsThatTheStoreDoesNotMap() {
        const auto mappedElement = makeElement();
        const auto otherElement = makeElement();
        CountingObject mapped;
        CountingObject other;
        MappingElementStore store;
        ObserverPool pool(&store);
        store.addMapping(&mapped, mappedElement.get());
        QCOMPARE(mapped.destroyedReceivers(), 1);
        addTo(pool, mappedElement.get(), &mapped);
        addTo(pool, otherElement.get(), &other);
        QCOMPARE(mapped.destroyedReceivers(), 1);
        QCOMPARE(other.destroyedReceivers(), 1);
    }

    void deathThatTheStoreTellsOfDeletesTheObserver() {
        const auto element = makeElement();
        auto object = std::make_unique<QObject>();
        MappingElementStore store;
        ObserverPool pool(&store);
        store.addMapping(object.get(), element.get());
        const QPointer<QtObjectObserver> observer = addTo(pool, element.get(), object.get());
        // The store has forgotten the object by then, as whoever looks its element up there sees.
        bool isForgotten = false;
        connect(observer.data(), &QObject::destroyed, this,
                [&] { isForgotten = store.elements().isEmpty(); });
        object.reset();
        QVERIFY(observer.isNull());
        QVERIFY(isForgotten);
        QVERIFY(!pool.hasObserver(element.get()));
    }

    void mappedObjectThatDiedUnnoticedLosesItsObserverWhenAskedFor() {
        const auto element = makeElement();
        auto object = std::make_unique<QObject>();
        QObject* const address = object.get();
        MappingElementStore store;
        ObserverPool pool(&store);
        store.addMapping(address, element.get());
        const QPointer<QtObjectObserver> observer = addTo(pool, element.get(), address);
        object->disconnect();
        object.reset();
        // Whoever asks the store may be the observer itself.
        QCOMPARE(store.elementForObject(address), nullptr);
        QVERIFY(!observer.isNull());
        QCOMPARE(pool.observerForElement(element.get()), nullptr);
        QVERIFY(observer.isNull());
    }

    void storeTellsNobodyOnceThePoolIsGone() {
        const auto element = makeElement();
        auto object = std::make_unique<QObject>();
        MappingElementStore store;
        {
            ObserverPool pool(&store);
            store.addMapping(object.get(), element.get());
            addTo(pool, element.get(), object.get());
        }
        object.reset();
        QVERIFY(store.elements().isEmpty());
    }

    void randomHistoriesAgreeWithThePlainForm_data() {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("mapped");
        constexpr int some = 3;
        for (quint32 seed = 1; seed <= 20; ++seed) {
            for (int mapped : {0, some, static_cast<int>(History::objectCount)}) {
                QTest::addRow("seed %u, %d mapped", seed, mapped) << seed << mapped;
            }
        }
    }

    void randomHistoriesAgreeWithThePlainForm() {
        QFETCH(quint32, seed);
        QFETCH(int, mapped);
        History history(seed, static_cast<std::size_t>(mapped));
        for (int i = 0; i < 200 && !QTest::currentTestFailed(); ++i) {
            history.step();
            history.compare();
        }
        history.destroyPool();
    }
};

QTEST_GUILESS_MAIN(tst_ObserverPool)
#include "tst_observerpool.moc"

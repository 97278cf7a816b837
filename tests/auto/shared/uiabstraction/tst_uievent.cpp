// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/childprocess.h"
#include "testlib/testcase.h"
#include "uiabstraction/uievent.h"

#include <QByteArray>
#include <QDataStream>
#include <QMap>
#include <QMetaType>
#include <QTest>

#include <functional>

using Vorsk::UIAbstraction::UIEvent;

namespace {

constexpr char typeName[] = "Vorsk::UIAbstraction::UIEvent";

QByteArray toBytes(const UIEvent& event) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_6);
    stream << event;
    return bytes;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void()>)

class tst_UIEvent : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    // First, before anything here has made a value of the type.
    void everyConstructorRegistersTheType_data();
    void everyConstructorRegistersTheType();
    void registersNoStreamOperators();
    void defaultHasNullName();
    void comparesByName_data();
    void comparesByName();
    void equalNamesAreOneMapKey();
    void nullAndEmptyNamesAreOneMapKey();
    void mapIsInOrderOfNames();
    void streamBytes_data();
    void streamBytes();
    void roundTrip_data();
    void roundTrip();
};

void tst_UIEvent::everyConstructorRegistersTheType_data() {
    QTest::addColumn<std::function<void()>>("construct");
    QTest::newRow("default") << std::function<void()>([] { const UIEvent event; });
    QTest::newRow("from name") << std::function<void()>(
        [] { const UIEvent event{QStringLiteral("clicked")}; });
    QTest::newRow("from stream") << std::function<void()>([] {
        QDataStream stream(QByteArray(4, '\0'));
        const UIEvent event(stream);
    });
}

void tst_UIEvent::everyConstructorRegistersTheType() {
    QFETCH(std::function<void()>, construct);
    QVERIFY(TestLib::holdsInChildProcess([&construct] {
        const int before = QMetaType::type(typeName);
        construct();
        const int after = QMetaType::type(typeName);
        construct();
        return before == QMetaType::UnknownType && after != QMetaType::UnknownType &&
               QMetaType::type(typeName) == after;
    }));
}

void tst_UIEvent::registersNoStreamOperators() {
    const UIEvent event(QStringLiteral("clicked"));
    const int id = QMetaType::type(typeName);
    QCOMPARE(QByteArray(QMetaType::typeName(id)), QByteArray(typeName));
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    QVERIFY(!QMetaType::save(stream, id, &event));
    QVERIFY(bytes.isEmpty());
}

void tst_UIEvent::defaultHasNullName() {
    QVERIFY(UIEvent().name().isNull());
}

void tst_UIEvent::comparesByName_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("order"); // -1: a before b, 0: equal, 1: b before a
    QTest::newRow("equal") << QStringLiteral("shown") << QStringLiteral("shown") << 0;
    QTest::newRow("before") << QStringLiteral("clicked") << QStringLiteral("shown") << -1;
    QTest::newRow("after") << QStringLiteral("unchecked") << QStringLiteral("checked") << 1;
    QTest::newRow("upper case before lower")
        << QStringLiteral("Clicked") << QStringLiteral("clicked") << -1;
    QTest::newRow("prefix first") << QStringLiteral("textChanged") << QStringLiteral("text") << 1;
    QTest::newRow("null and empty") << QString() << QStringLiteral("") << 0;
    QTest::newRow("null first") << QString() << QStringLiteral("a") << -1;
}

void tst_UIEvent::comparesByName() {
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(int, order);
    QCOMPARE(UIEvent(a) == UIEvent(b), order == 0);
    QCOMPARE(UIEvent(a) != UIEvent(b), order != 0);
    QCOMPARE(UIEvent(a) < UIEvent(b), order < 0);
    QCOMPARE(UIEvent(b) < UIEvent(a), order > 0);
}

void tst_UIEvent::equalNamesAreOneMapKey() {
    QMap<UIEvent, int> map;
    map[UIEvent(QStringLiteral("clicked"))] = 1;
    map[UIEvent(QStringLiteral("Clicked"))] = 2;
    map[UIEvent(QStringLiteral("click") + QStringLiteral("ed"))] = 3;
    QCOMPARE(map.size(), 2);
    QCOMPARE(map.value(UIEvent(QStringLiteral("clicked"))), 3);
    QCOMPARE(map.value(UIEvent(QStringLiteral("Clicked"))), 2);
}

void tst_UIEvent::nullAndEmptyNamesAreOneMapKey() {
    QMap<UIEvent, int> map;
    map[UIEvent()] = 1;
    map[UIEvent(QStringLiteral(""))] = 2;
    QCOMPARE(map.size(), 1);
}

void tst_UIEvent::mapIsInOrderOfNames() {
    QMap<UIEvent, int> map;
    for (const char* name : {"triggered", "shown", "checked", "Z", "clicked"}) {
        map.insert(UIEvent(QLatin1String(name)), 0);
    }
    QStringList names;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        names.append(it.key().name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("Z checked clicked shown triggered"));
}

void tst_UIEvent::streamBytes_data() {
    QTest::addColumn<UIEvent>("event");
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("name") << UIEvent(QStringLiteral("shown"))
                          << QByteArray("0000000a 00730068006f0077006e");
    QTest::newRow("null") << UIEvent() << QByteArray("ffffffff");
    QTest::newRow("empty") << UIEvent(QStringLiteral("")) << QByteArray("00000000");
}

void tst_UIEvent::streamBytes() {
    QFETCH(UIEvent, event);
    QFETCH(QByteArray, hex);
    QCOMPARE(toBytes(event).toHex(), hex.replace(' ', ""));
}

void tst_UIEvent::roundTrip_data() {
    streamBytes_data();
}

void tst_UIEvent::roundTrip() {
    QFETCH(UIEvent, event);
    const QByteArray bytes = toBytes(event);
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_4_6);
    const UIEvent constructed(stream);
    QVERIFY(stream.atEnd());
    stream.device()->seek(0);
    UIEvent assigned(QStringLiteral("before"));
    stream >> assigned;
    QVERIFY(stream.atEnd());
    QCOMPARE(stream.status(), QDataStream::Ok);
    for (const UIEvent& read : {constructed, assigned}) {
        QCOMPARE(read, event);
        QCOMPARE(read.name().isNull(), event.name().isNull());
    }
}

QTEST_GUILESS_MAIN(tst_UIEvent)
#include "tst_uievent.moc"

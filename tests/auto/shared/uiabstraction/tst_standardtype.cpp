// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/childprocess.h"
#include "testlib/testcase.h"
#include "uiabstraction/standardtype.h"

#include <QByteArray>
#include <QDataStream>
#include <QMetaType>
#include <QTest>

#include <functional>

using Vorsk::UIAbstraction::StandardType;

namespace {

constexpr char typeName[] = "Vorsk::UIAbstraction::StandardType";

QByteArray toBytes(const StandardType& type) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_6);
    stream << type;
    return bytes;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void()>)

class tst_StandardType : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    // First, before anything here has made a value of the type.
    void everyConstructorRegistersTheType_data();
    void everyConstructorRegistersTheType();
    void registersNoStreamOperators();
    void defaultPrintsAsUnknown();
    void emptyNamePrintsAsEmpty();
    void takesNameUnchanged_data();
    void takesNameUnchanged();
    void comparesByName_data();
    void comparesByName();
    void streamBytes_data();
    void streamBytes();
    void roundTrip_data();
    void roundTrip();
    void readsNothingFromTruncatedStream();
};

void tst_StandardType::everyConstructorRegistersTheType_data() {
    QTest::addColumn<std::function<void()>>("construct");
    QTest::newRow("default") << std::function<void()>([] { const StandardType type; });
    QTest::newRow("from name") << std::function<void()>(
        [] { const StandardType type{QStringLiteral("Button")}; });
    QTest::newRow("from stream") << std::function<void()>([] {
        QDataStream stream(QByteArray(4, '\0'));
        const StandardType type(stream);
    });
}

void tst_StandardType::everyConstructorRegistersTheType() {
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

void tst_StandardType::registersNoStreamOperators() {
    const StandardType type(QStringLiteral("Button"));
    const int id = QMetaType::type(typeName);
    QCOMPARE(QByteArray(QMetaType::typeName(id)), QByteArray(typeName));
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    QVERIFY(!QMetaType::save(stream, id, &type));
    QVERIFY(bytes.isEmpty());
}

void tst_StandardType::defaultPrintsAsUnknown() {
    QVERIFY(StandardType().name().isNull());
    QCOMPARE(StandardType().toString(), QStringLiteral("unknown"));
    QCOMPARE(StandardType(QString()).toString(), QStringLiteral("unknown"));
}

void tst_StandardType::emptyNamePrintsAsEmpty() {
    const StandardType type(QStringLiteral(""));
    QVERIFY(!type.name().isNull());
    QVERIFY(!type.toString().isNull());
    QVERIFY(type.toString().isEmpty());
}

void tst_StandardType::takesNameUnchanged_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("usual") << QStringLiteral("MenuItem");
    QTest::newRow("no known name") << QStringLiteral(" no such THING ");
    QTest::newRow("unknown") << QStringLiteral("unknown");
}

void tst_StandardType::takesNameUnchanged() {
    QFETCH(QString, name);
    QCOMPARE(StandardType(name).name(), name);
    QCOMPARE(StandardType(name).toString(), name);
}

void tst_StandardType::comparesByName_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<bool>("equal");
    QTest::newRow("equal") << QStringLiteral("Menu") << QStringLiteral("Menu") << true;
    QTest::newRow("other case") << QStringLiteral("Menu") << QStringLiteral("menu") << false;
    QTest::newRow("other name") << QStringLiteral("Menu") << QStringLiteral("MenuBar") << false;
    QTest::newRow("null and null") << QString() << QString() << true;
    QTest::newRow("null and empty") << QString() << QStringLiteral("") << true;
    QTest::newRow("null and unknown") << QString() << QStringLiteral("unknown") << false;
}

void tst_StandardType::comparesByName() {
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(bool, equal);
    QCOMPARE(StandardType(a) == StandardType(b), equal);
    QCOMPARE(StandardType(a) != StandardType(b), !equal);
}

void tst_StandardType::streamBytes_data() {
    QTest::addColumn<StandardType>("type");
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("name") << StandardType(QStringLiteral("Menu"))
                          << QByteArray("00000008 004d0065006e0075");
    QTest::newRow("null") << StandardType() << QByteArray("ffffffff");
    QTest::newRow("empty") << StandardType(QStringLiteral("")) << QByteArray("00000000");
}

void tst_StandardType::streamBytes() {
    QFETCH(StandardType, type);
    QFETCH(QByteArray, hex);
    QCOMPARE(toBytes(type).toHex(), hex.replace(' ', ""));
}

void tst_StandardType::roundTrip_data() {
    streamBytes_data();
}

void tst_StandardType::roundTrip() {
    QFETCH(StandardType, type);
    const QByteArray bytes = toBytes(type);
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_4_6);
    const StandardType constructed(stream);
    QVERIFY(stream.atEnd());
    stream.device()->seek(0);
    StandardType assigned(QStringLiteral("before"));
    stream >> assigned;
    QVERIFY(stream.atEnd());
    QCOMPARE(stream.status(), QDataStream::Ok);
    for (const StandardType& read : {constructed, assigned}) {
        QCOMPARE(read, type);
        QCOMPARE(read.name().isNull(), type.name().isNull());
        QCOMPARE(read.toString(), type.toString());
    }
}

void tst_StandardType::readsNothingFromTruncatedStream() {
    const QByteArray bytes = toBytes(StandardType(QStringLiteral("Menu")));
    QDataStream stream(bytes.left(bytes.size() - 1));
    stream.setVersion(QDataStream::Qt_4_6);
    const StandardType type(stream);
    QVERIFY(stream.status() != QDataStream::Ok);
    QVERIFY(type.name().isEmpty());
}

QTEST_GUILESS_MAIN(tst_StandardType)
#include "tst_standardtype.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/childprocess.h"
#include "testlib/testcase.h"
#include "uiabstraction/elementgeometry.h"

#include <QByteArray>
#include <QDataStream>
#include <QMetaType>
#include <QTest>

#include <functional>

using Vorsk::UIAbstraction::ElementGeometry;

namespace {

constexpr char typeName[] = "Vorsk::UIAbstraction::ElementGeometry";

QByteArray toBytes(const ElementGeometry& geometry) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_6);
    stream << geometry;
    return bytes;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void()>)

class tst_ElementGeometry : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    // First, before anything here has made a value of the type.
    void everyConstructorRegistersTheType_data();
    void everyConstructorRegistersTheType();
    void registersStreamOperators();
    void defaultIsNullRectAndNotValid();
    void comparesRectAndFlag_data();
    void comparesRectAndFlag();
    void convertsToRectAndDropsFlag();
    void streamBytes_data();
    void streamBytes();
    void roundTrip_data();
    void roundTrip();
};

void tst_ElementGeometry::everyConstructorRegistersTheType_data() {
    QTest::addColumn<std::function<void()>>("construct");
    QTest::newRow("default") << std::function<void()>([] { const ElementGeometry geometry; });
    QTest::newRow("from rectangle and flag")
        << std::function<void()>([] { const ElementGeometry geometry(QRect(1, 2, 3, 4), true); });
    QTest::newRow("from stream") << std::function<void()>([] {
        QDataStream stream(QByteArray(17, '\0'));
        const ElementGeometry geometry(stream);
    });
}

void tst_ElementGeometry::everyConstructorRegistersTheType() {
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

void tst_ElementGeometry::registersStreamOperators() {
    const ElementGeometry geometry(QRect(1, 2, 3, 4), true);
    const int id = QMetaType::type(typeName);
    QCOMPARE(QByteArray(QMetaType::typeName(id)), QByteArray(typeName));
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_4_6);
    QVERIFY(QMetaType::save(out, id, &geometry));
    QCOMPARE(bytes, toBytes(geometry));
    ElementGeometry loaded;
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_4_6);
    QVERIFY(QMetaType::load(in, id, &loaded));
    QCOMPARE(loaded, geometry);
}

void tst_ElementGeometry::defaultIsNullRectAndNotValid() {
    const ElementGeometry geometry;
    QCOMPARE(geometry.rect().left(), 0);
    QCOMPARE(geometry.rect().top(), 0);
    QCOMPARE(geometry.rect().right(), -1);
    QCOMPARE(geometry.rect().bottom(), -1);
    QVERIFY(!geometry.isValid());
}

void tst_ElementGeometry::comparesRectAndFlag_data() {
    const ElementGeometry reference(QRect(QPoint(1, 2), QPoint(30, 40)), true);
    QTest::addColumn<ElementGeometry>("a");
    QTest::addColumn<ElementGeometry>("b");
    QTest::addColumn<bool>("equal");
    QTest::newRow("default and default") << ElementGeometry() << ElementGeometry() << true;
    QTest::newRow("default and valid null rectangle")
        << ElementGeometry() << ElementGeometry(QRect(), true) << false;
    QTest::newRow("equal") << reference << ElementGeometry(QRect(1, 2, 30, 39), true) << true;
    QTest::newRow("left") << reference << ElementGeometry(QRect(QPoint(0, 2), QPoint(30, 40)), true)
                          << false;
    QTest::newRow("top") << reference << ElementGeometry(QRect(QPoint(1, 3), QPoint(30, 40)), true)
                         << false;
    QTest::newRow("right") << reference
                           << ElementGeometry(QRect(QPoint(1, 2), QPoint(31, 40)), true) << false;
    QTest::newRow("bottom") << reference
                            << ElementGeometry(QRect(QPoint(1, 2), QPoint(30, 39)), true) << false;
    QTest::newRow("flag") << reference
                          << ElementGeometry(QRect(QPoint(1, 2), QPoint(30, 40)), false) << false;
}

void tst_ElementGeometry::comparesRectAndFlag() {
    QFETCH(ElementGeometry, a);
    QFETCH(ElementGeometry, b);
    QFETCH(bool, equal);
    QCOMPARE(a == b, equal);
    QCOMPARE(b == a, equal);
    QCOMPARE(a != b, !equal);
}

void tst_ElementGeometry::convertsToRectAndDropsFlag() {
    const QRect notValid = ElementGeometry(QRect(1, 2, 3, 4), false);
    const QRect valid = ElementGeometry(QRect(1, 2, 3, 4), true);
    QCOMPARE(notValid, QRect(1, 2, 3, 4));
    QCOMPARE(valid, notValid);
}

void tst_ElementGeometry::streamBytes_data() {
    QTest::addColumn<ElementGeometry>("geometry");
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("default") << ElementGeometry()
                             << QByteArray("00000000 00000000 ffffffff ffffffff 00");
    QTest::newRow("valid null rectangle")
        << ElementGeometry(QRect(), true) << QByteArray("00000000 00000000 ffffffff ffffffff 01");
    QTest::newRow("edges, not sizes") << ElementGeometry(QRect(1, 2, 30, 40), true)
                                      << QByteArray("00000001 00000002 0000001e 00000029 01");
    QTest::newRow("negative") << ElementGeometry(QRect(-2, -3, 1, 1), false)
                              << QByteArray("fffffffe fffffffd fffffffe fffffffd 00");
}

void tst_ElementGeometry::streamBytes() {
    QFETCH(ElementGeometry, geometry);
    QFETCH(QByteArray, hex);
    QCOMPARE(toBytes(geometry).toHex(), hex.replace(' ', ""));
}

void tst_ElementGeometry::roundTrip_data() {
    streamBytes_data();
}

void tst_ElementGeometry::roundTrip() {
    QFETCH(ElementGeometry, geometry);
    const QByteArray bytes = toBytes(geometry);
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_4_6);
    const ElementGeometry constructed(stream);
    QVERIFY(stream.atEnd());
    stream.device()->seek(0);
    ElementGeometry assigned(QRect(9, 9, 9, 9), !geometry.isValid());
    stream >> assigned;
    QVERIFY(stream.atEnd());
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(constructed, geometry);
    QCOMPARE(assigned, geometry);
}

QTEST_GUILESS_MAIN(tst_ElementGeometry)
#include "tst_elementgeometry.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "checksum/crc32.h"
#include "testlib/testcase.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QTest>

#include <zlib.h>

namespace {

QByteArray randomBytes(int size, quint32 seed) {
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes) {
        byte = static_cast<char>(random.bounded(256));
    }
    return bytes;
}

quint32 expected(const char* data, int size) {
    return static_cast<quint32>(
        ::crc32(0, reinterpret_cast<const Bytef*>(data), static_cast<uInt>(size)));
}

} // namespace

class tst_Crc32 : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingHasZero();
    void hasTheValueThatTheStandardNames();
    void isThatOfZlibAtEveryLength();
    void isThatOfZlibAtEveryPlace();
    void isThatOfZlibForMuch();
    void tellsOneBitApart();
};

void tst_Crc32::nothingHasZero() {
    QCOMPARE(Checksum::crc32(nullptr, 0), 0U);
    QCOMPARE(Checksum::crc32ByTables(nullptr, 0), 0U);
}

void tst_Crc32::hasTheValueThatTheStandardNames() {
    const QByteArray digits("123456789");
    QCOMPARE(Checksum::crc32(digits.constData(), 9), 0xCBF43926U);
    QCOMPARE(Checksum::crc32ByTables(digits.constData(), 9), 0xCBF43926U);
}

void tst_Crc32::isThatOfZlibAtEveryLength() {
    const QByteArray bytes = randomBytes(600, 1);
    for (int size = 1; size <= bytes.size(); ++size) {
        const quint32 value = expected(bytes.constData(), size);
        QCOMPARE(Checksum::crc32(bytes.constData(), static_cast<std::size_t>(size)), value);
        QCOMPARE(Checksum::crc32ByTables(bytes.constData(), static_cast<std::size_t>(size)), value);
    }
}

void tst_Crc32::isThatOfZlibAtEveryPlace() {
    const QByteArray bytes = randomBytes(200, 2);
    for (int start = 0; start < 64; ++start) {
        const char* const data = bytes.constData() + start;
        QCOMPARE(Checksum::crc32(data, 130), expected(data, 130));
        QCOMPARE(Checksum::crc32ByTables(data, 130), expected(data, 130));
    }
}

void tst_Crc32::isThatOfZlibForMuch() {
    for (const QByteArray& bytes :
         {randomBytes(1000003, 3), QByteArray(1000003, '\0'), QByteArray(1000003, '\xff')}) {
        const auto size = static_cast<std::size_t>(bytes.size());
        QCOMPARE(Checksum::crc32(bytes.constData(), size),
                 expected(bytes.constData(), bytes.size()));
    }
}

void tst_Crc32::tellsOneBitApart() {
    const QByteArray bytes = randomBytes(100, 4);
    const quint32 value = Checksum::crc32(bytes.constData(), 100);
    for (int bit = 0; bit < 8 * bytes.size(); ++bit) {
        QByteArray changed = bytes;
        changed[bit / 8] = static_cast<char>(changed.at(bit / 8) ^ (1 << (bit % 8)));
        QVERIFY(Checksum::crc32(changed.constData(), 100) != value);
    }
}

QTEST_APPLESS_MAIN(tst_Crc32)

#include "tst_crc32.moc"

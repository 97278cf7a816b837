// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/elementid.h"

#include <QSet>
#include <QTest>
#include <QUuid>

#include <array>

#include <sys/wait.h>
#include <unistd.h>

using Vorsk::UIAbstraction::newElementId;

class tst_ElementId : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isRandomUuidInBraces();
    void isNewEachTime();
    void everyBitChanges();
    void forkedChildHasOthers();
};

void tst_ElementId::isRandomUuidInBraces() {
    for (int i = 0; i < 1000; ++i) {
        const QString id = newElementId();
        const QUuid uuid(id);
        QCOMPARE(uuid.toString(), id);
        QCOMPARE(uuid.version(), QUuid::Random);
        QCOMPARE(uuid.variant(), QUuid::DCE);
    }
}

void tst_ElementId::isNewEachTime() {
    QSet<QString> ids;
    for (int i = 0; i < 100000; ++i) {
        ids.insert(newElementId());
    }
    QCOMPARE(ids.size(), 100000);
}

/** All but the six that say that it is random. */
void tst_ElementId::everyBitChanges() {
    const QByteArray first = QUuid(newElementId()).toRfc4122();
    std::array<quint8, 16> changed{};
    for (int i = 0; i < 200; ++i) {
        const QByteArray id = QUuid(newElementId()).toRfc4122();
        for (int byte = 0; byte < id.size(); ++byte) {
            changed[static_cast<std::size_t>(byte)] |=
                static_cast<quint8>(id.at(byte) ^ first.at(byte));
        }
    }
    for (std::size_t byte = 0; byte < changed.size(); ++byte) {
        const quint8 expected = byte == 6 ? 0x0F : byte == 8 ? 0x3F : 0xFF;
        QCOMPARE(changed[byte], expected);
    }
}

void tst_ElementId::forkedChildHasOthers() {
    newElementId();
    std::array<int, 2> ends{};
    QCOMPARE(pipe(ends.data()), 0);
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        const QByteArray id = newElementId().toLatin1();
        const ssize_t written = write(ends[1], id.constData(), static_cast<size_t>(id.size()));
        _exit(written == id.size() ? 0 : 1);
    }
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    const QString ours = newElementId();
    QByteArray theirs(ours.size(), '\0');
    QCOMPARE(read(ends[0], theirs.data(), static_cast<size_t>(theirs.size())),
             static_cast<ssize_t>(theirs.size()));
    close(ends[0]);
    close(ends[1]);
    QVERIFY(!QUuid(QString::fromLatin1(theirs)).isNull());
    QVERIFY(QString::fromLatin1(theirs) != ours);
}

QTEST_APPLESS_MAIN(tst_ElementId)

#include "tst_elementid.moc"

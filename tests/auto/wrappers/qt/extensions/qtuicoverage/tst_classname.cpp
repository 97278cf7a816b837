// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/named.h"
#include "testlib/testcase.h"
#include "tracking/classname.h"

#include <QObject>
#include <QTest>
#include <QTimer>

using TestLib::Named;
using Vorsk::UICoverage::className;

class tst_ClassName : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isTheNameOfTheMetaObject();
    void isOneTextForAllObjectsOfAClass();
    void outlivesTheClass();
    void isRightHoweverManyClassesThereAre();
};

void tst_ClassName::isTheNameOfTheMetaObject() {
    const QObject object;
    const QTimer timer;
    QCOMPARE(className(&object), QStringLiteral("QObject"));
    QCOMPARE(className(&timer), QStringLiteral("QTimer"));
    QCOMPARE(className(this), QStringLiteral("tst_ClassName"));
    const Named<QObject> foreign("\xc3\x9c"
                                 "bersicht_QMLTYPE_0");
    QCOMPARE(className(&foreign), QStringLiteral(u"\u00dcbersicht_QMLTYPE_0"));
    const Named<QObject> broken("Caf\xe9");
    QCOMPARE(className(&broken), QStringLiteral(u"Caf\ufffd"));
    const Named<QObject> nameless("");
    QCOMPARE(className(&nameless), QStringLiteral(""));
}

void tst_ClassName::isOneTextForAllObjectsOfAClass() {
    const QTimer first;
    const QTimer second;
    QCOMPARE(className(&first).constData(), className(&second).constData());
    // Two classes of one name, as two QML engines make them.
    const Named<QObject> one("Button_QMLTYPE_3");
    const Named<QObject> other("Button_QMLTYPE_3");
    QCOMPARE(className(&one).constData(), className(&other).constData());
}

void tst_ClassName::outlivesTheClass() {
    QString name;
    {
        const Named<QObject> object("Passing");
        name = className(&object);
    }
    QCOMPARE(name, QStringLiteral("Passing"));
    const Named<QObject> successor("Passing");
    QCOMPARE(className(&successor), name);
}

void tst_ClassName::isRightHoweverManyClassesThereAre() {
    constexpr int many = 2500;
    for (int i = 0; i < many; ++i) {
        const QByteArray name = "Made_up_" + QByteArray::number(i);
        const Named<QObject> object(name);
        QCOMPARE(className(&object), QString::fromLatin1(name));
        QCOMPARE(className(this), QStringLiteral("tst_ClassName"));
    }
}

QTEST_GUILESS_MAIN(tst_ClassName)
#include "tst_classname.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/quickitemclass.h"
#include "testlib/named.h"
#include "testlib/testcase.h"

#include <QMetaMethod>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>

#include <memory>

using Vorsk::UICoverage::QuickItemClass;

/** Its signal is seen under two texts, of which one is never emitted. */
class DefaultingItem : public QQuickItem {
    Q_OBJECT

Q_SIGNALS:
    void clicked(bool = false);
    void triggered();
};

/** Has the signal once more, with another number. */
class HidingItem : public DefaultingItem {
    Q_OBJECT

Q_SIGNALS:
    void added();
    void clicked(int = 1);
    void titleChanged();
};

class UnreadableItem : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString text WRITE setText)

public:
    void setText(const QString&) {}
};

namespace {

using Kind = QuickItemClass::Kind;

/** What a class has, found without keeping anything. */
QString described(const QMetaObject& metaObject) {
    QStringList found{QString::fromLatin1(metaObject.className())};
    for (const char* signal : {"clicked()", "textChanged()", "triggered()", "checkedStateChanged()",
                               "checkedChanged()"}) {
        found.append(QString::number(metaObject.indexOfSignal(signal) != -1));
    }
    for (const char* property : {"partiallyCheckedEnabled", "checkable", "text", "title",
                                 "placeholderText", "checkedState"}) {
        found.append(QString::number(metaObject.indexOfProperty(property) != -1));
    }
    return found.join(QLatin1Char(' '));
}

QString described(const QuickItemClass& cls) {
    QStringList found{cls.name()};
    for (int signal = 0; signal <= QuickItemClass::CheckedChanged; ++signal) {
        found.append(QString::number(cls.has(static_cast<QuickItemClass::Signal>(signal))));
    }
    for (int property = 0; property <= QuickItemClass::CheckedState; ++property) {
        found.append(QString::number(cls.has(static_cast<QuickItemClass::Property>(property))));
    }
    return found.join(QLatin1Char(' '));
}

} // namespace

class tst_QuickItemClass : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void tellsTheKindByTheName_data();
    void tellsTheKindByTheName();
    void numberIsThatOfTheSignalThatIsEmitted();
    void numberIsThatOfTheClassItself();
    void isFoundAsByTexts_data();
    void isFoundAsByTexts();
    void readsAsTheObjectDoes();
    void readsWhatCannotBeReadAsTheObjectDoes();
    void readsFromAnItemOfAnotherClass();
    void isTheSameForEachItem();
    void outlivesTheItemThatItWasLearntFrom();
    void takesNoClassForOneThatIsGone();
};

namespace {

using NamedItem = TestLib::Named<QQuickItem>;

} // namespace

void tst_QuickItemClass::tellsTheKindByTheName_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("isText");
    const auto add = [](const char* name, Kind kind, bool isText = false) {
        QTest::newRow(name) << QByteArray(name) << static_cast<int>(kind) << isText;
    };
    add("QQuickItem", Kind::Other);
    add("QQuickPopupItem", Kind::Popup);
    add("QQuickPopupItemButton_QMLTYPE_3", Kind::Popup);
    add("QQuickMenuItem", Kind::MenuItem);
    add("QQuickMenuItemButton_QMLTYPE_3", Kind::MenuItem);
    add("Button_QMLTYPE_7", Kind::Button);
    add("QQuickButton", Kind::Button);
    add("QQuickTabButton", Kind::Button);
    add("QQuickToolButton", Kind::Button);
    add("QQuickRoundButton", Kind::Button);
    add("QQuickRadioButton", Kind::Other);
    add("QQuickbutton", Kind::Other);
    add("QQuickText", Kind::Other, true);
    add("QQuickTextField", Kind::TextInput, true);
    add("QQuickTextArea", Kind::TextInput, true);
    add("TextInput_QMLTYPE_1", Kind::TextInput);
    add("CheckBox_QMLTYPE_12", Kind::CheckBox);
    add("CheckBox_QMLTYPE_12_QQuickText", Kind::CheckBox, true);
    add("\xc3\x9c"
        "bersichtButton_QMLTYPE_0",
        Kind::Button);
}

void tst_QuickItemClass::tellsTheKindByTheName() {
    QFETCH(QByteArray, name);
    QFETCH(int, kind);
    QFETCH(bool, isText);
    NamedItem item(name);
    const QuickItemClass cls = QuickItemClass::of(&item);
    QCOMPARE(cls.name(), QString::fromUtf8(name));
    QCOMPARE(static_cast<int>(cls.kind()), kind);
    QCOMPARE(cls.isText(), isText);
}

void tst_QuickItemClass::numberIsThatOfTheSignalThatIsEmitted() {
    DefaultingItem item;
    const QuickItemClass cls = QuickItemClass::of(&item);
    const QMetaObject& metaObject = DefaultingItem::staticMetaObject;
    QCOMPARE(cls.numberOf(QuickItemClass::Clicked), metaObject.indexOfSignal("clicked(bool)"));
    QVERIFY(metaObject.indexOfSignal("clicked()") != metaObject.indexOfSignal("clicked(bool)"));
    QCOMPARE(cls.numberOf(QuickItemClass::Triggered), metaObject.indexOfSignal("triggered()"));
    QCOMPARE(cls.numberOf(QuickItemClass::TextChanged), -1);
}

void tst_QuickItemClass::numberIsThatOfTheClassItself() {
    HidingItem hiding;
    const QuickItemClass cls = QuickItemClass::of(&hiding);
    const QMetaObject& metaObject = HidingItem::staticMetaObject;
    QCOMPARE(cls.numberOf(QuickItemClass::Clicked), metaObject.indexOfSignal("clicked(int)"));
    QCOMPARE(cls.numberOf(QuickItemClass::Triggered), metaObject.indexOfSignal("triggered()"));
    DefaultingItem plain;
    QCOMPARE(QuickItemClass::of(&plain).numberOf(QuickItemClass::Clicked),
             metaObject.indexOfSignal("clicked(bool)"));
}

void tst_QuickItemClass::isFoundAsByTexts_data() {
    QTest::addColumn<QByteArray>("delegate");
    QTest::newRow("nothing of its own") << QByteArray("Button { text: index }");
    QTest::newRow("a property") << QByteArray("Button { property string title: index }");
    QTest::newRow("a signal") << QByteArray("Item { signal clicked(); signal added(int number) }");
    QTest::newRow("both") << QByteArray("Control { signal clicked(); property string text }");
    QTest::newRow("several") << QByteArray(
        "Column { CheckBox { tristate: true } TextField {} Menu { MenuItem {} } Text {} }");
}

/** Also where each item that a delegate makes has a class of its own. */
void tst_QuickItemClass::isFoundAsByTexts() {
    QFETCH(QByteArray, delegate);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(
        "import QtQuick 2.9\nimport QtQuick.Controls 2.2\nItem { Repeater { model: 3; " + delegate +
            " } }",
        QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QList<QQuickItem*> items{qobject_cast<QQuickItem*>(object.get())};
    for (int i = 0; i < items.size(); ++i) {
        items.append(items.at(i)->childItems());
    }
    QVERIFY(items.size() >= 4);
    for (QQuickItem* item : qAsConst(items)) {
        const QMetaObject& metaObject = *item->metaObject();
        const QuickItemClass cls = QuickItemClass::of(item);
        QCOMPARE(described(cls), described(metaObject));
        for (const auto signal :
             {QuickItemClass::Clicked, QuickItemClass::TextChanged, QuickItemClass::Triggered}) {
            int number = metaObject.indexOfSignal(QuickItemClass::nameOf(signal));
            while (number != -1 &&
                   (metaObject.method(number).attributes() & QMetaMethod::Cloned) != 0) {
                --number;
            }
            QCOMPARE(cls.numberOf(signal), number);
        }
        for (const auto property : {QuickItemClass::Text, QuickItemClass::Title}) {
            QCOMPARE(cls.read(item, property), item->property(QuickItemClass::nameOf(property)));
        }
    }
}

void tst_QuickItemClass::readsAsTheObjectDoes() {
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.9\nText { text: 'some' + 'thing' }", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto* const item = qobject_cast<QQuickItem*>(object.get());
    const QuickItemClass cls = QuickItemClass::of(item);
    QCOMPARE(cls.read(item, QuickItemClass::Text).toString(), QStringLiteral("something"));
    QVERIFY(!cls.read(item, QuickItemClass::Title).isValid());
    item->setProperty("title", QStringLiteral("added"));
    QCOMPARE(cls.read(item, QuickItemClass::Title).toString(), QStringLiteral("added"));
}

void tst_QuickItemClass::readsWhatCannotBeReadAsTheObjectDoes() {
    UnreadableItem item;
    const QuickItemClass cls = QuickItemClass::of(&item);
    QVERIFY(cls.has(QuickItemClass::Text));
    const QVariant value = cls.read(&item, QuickItemClass::Text);
    QCOMPARE(value.isValid(), item.property("text").isValid());
    QCOMPARE(value, item.property("text"));
}

void tst_QuickItemClass::readsFromAnItemOfAnotherClass() {
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.9\nItem { property int other; property string text: 'x' }",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    UnreadableItem unreadable;
    const QuickItemClass cls = QuickItemClass::of(&unreadable);
    auto* const item = qobject_cast<QQuickItem*>(object.get());
    QCOMPARE(cls.read(item, QuickItemClass::Text).toString(), QStringLiteral("x"));
}

void tst_QuickItemClass::isTheSameForEachItem() {
    DefaultingItem first;
    DefaultingItem second;
    const QString expected = described(DefaultingItem::staticMetaObject);
    QCOMPARE(described(QuickItemClass::of(&first)), expected);
    QCOMPARE(described(QuickItemClass::of(&second)), expected);
}

void tst_QuickItemClass::outlivesTheItemThatItWasLearntFrom() {
    auto first = std::make_unique<DefaultingItem>();
    DefaultingItem second;
    const QString expected = described(QuickItemClass::of(first.get()));
    first.reset();
    QCOMPARE(described(QuickItemClass::of(&second)), expected);
    QCOMPARE(described(QuickItemClass::of(&second)), expected);
}

/** Classes of QML come and go with their engine, and new ones take their place in memory. */
void tst_QuickItemClass::takesNoClassForOneThatIsGone() {
    const QStringList parts{
        QStringLiteral("signal clicked()"),        QStringLiteral("signal triggered()"),
        QStringLiteral("property string text"),    QStringLiteral("property string title"),
        QStringLiteral("property bool checkable"), QStringLiteral("property int checkedState")};
    QSet<const QMetaObject*> places;
    int reused = 0;
    for (int round = 0; round < 200; ++round) {
        // As many of them each time, so that the class is as large as the last one.
        QString body;
        for (int i = 0; i < 3; ++i) {
            body += parts.at((round + i * (1 + round % 2)) % parts.size()) + QLatin1Char('\n');
        }
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQuick 2.9\nItem {\n" + body.toUtf8() + "}", QUrl());
        const std::unique_ptr<QObject> object(component.create());
        auto* const item = qobject_cast<QQuickItem*>(object.get());
        QVERIFY2(item != nullptr, qPrintable(component.errorString()));
        reused += places.contains(item->metaObject()) ? 1 : 0;
        places.insert(item->metaObject());
        QCOMPARE(described(QuickItemClass::of(item)), described(*item->metaObject()));
    }
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    Q_UNUSED(reused); // memory that was freed is kept back
#else
    QVERIFY(reused > 0);
#endif
}

QTEST_MAIN(tst_QuickItemClass)

#include "tst_quickitemclass.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/childprocess.h"
#include "testlib/testcase.h"
#include "uiabstraction/elementlistener.h"
#include "uiabstraction/uielement.h"

#include <QMetaMethod>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>

using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

using Change = std::function<void(UIElement&)>;
Q_DECLARE_METATYPE(Change)

/** What an element is and what it announces. */
class tst_UIElement : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    // First, before anything here has made an element.
    void firstElementRegistersPointerTypes();
    void newElementHasDefaults();
    void takesIdAsGiven_data();
    void takesIdAsGiven();
    void emptyIdBecomesBracedUuid_data();
    void emptyIdBecomesBracedUuid();
    void generatedIdsAreNeverShared();
    void hasNoQObjectParent();
    void signalsStandInOrder_data();
    void signalsStandInOrder();
    void declaresElevenSignalsAndNothingElse();
    void setterAnnouncesEqualValueAgain_data();
    void setterAnnouncesEqualValueAgain();
    void setterStoresBeforeItAnnounces();
    void signalsCanBeQueued();
    void attributeIsAnnouncedWhenItChanges_data();
    void attributeIsAnnouncedWhenItChanges();
    void attributesArePartOfTheElementForm();
    void setExtraStringsAnnouncesNothing();
    void listenerIsCalledBeforeTheSignal();
    void listenerIsCalledAsOftenAsItWasAdded();
    void listenerAddedMeanwhileIsCalledFromTheNextChangeOn();
    void textHasItsOwnCharacters();
};

namespace {

constexpr char ownName[] = "Vorsk::UIAbstraction::UIElement*";
constexpr char constName[] = "const Vorsk::UIAbstraction::UIElement*";

UIElement* newElement(const char* concreteType) {
    return new UIElement(QLatin1String(concreteType), StandardType(), QString());
}

/** Notes the texts that it is told of; what else happens is of no interest here. */
class TextListener : public Vorsk::UIAbstraction::ElementListener {
public:
    std::function<void(const UIElement*, const QString&)> whenTextChanged;

    void childAdded(const UIElement* /*element*/, const UIElement* /*child*/) override {}
    void eventRegistered(const UIElement* /*element*/, const UIEvent& /*event*/) override {}
    void geometryChanged(const UIElement* /*element*/,
                         const ElementGeometry& /*geometry*/) override {}
    void imageChanged(const UIElement* /*element*/, const QImage& /*image*/) override {}
    void standardTypeChanged(const UIElement* /*element*/, const StandardType& /*type*/) override {}
    void subgraphTransparentChanged(const UIElement* /*element*/, bool /*is*/) override {}
    void textChanged(const UIElement* element, const QString& text) override {
        whenTextChanged(element, text);
    }
    void transparentNodeChanged(const UIElement* /*element*/, bool /*is*/) override {}
    void usageIncreased(const UIElement* /*element*/, const UIEvent& /*event*/,
                        int /*usage*/) override {}
    void windowNodeChanged(const UIElement* /*element*/, bool /*is*/) override {}
    void attributeChanged(const UIElement* /*element*/, const QString& /*name*/,
                          const QString& /*value*/) override {}
};

std::shared_ptr<TextListener> listenerInto(QStringList& calls, const char* name) {
    auto listener = std::make_shared<TextListener>();
    listener->whenTextChanged = [&calls, name](const UIElement* element, const QString& text) {
        QCOMPARE(element->text(), text);
        calls.append(QLatin1String(name) + text);
    };
    return listener;
}

} // namespace

void tst_UIElement::firstElementRegistersPointerTypes() {
    QVERIFY(TestLib::holdsInChildProcess([] {
        const bool before = QMetaType::type(ownName) == QMetaType::UnknownType &&
                            QMetaType::type(constName) == QMetaType::UnknownType;
        const UIElement element{QString(), StandardType(), QString()};
        return before && QMetaType::type(ownName) != QMetaType::UnknownType &&
               QMetaType::type(constName) != QMetaType::UnknownType;
    }));
    const UIElement element{QString(), StandardType(), QString()};
    QCOMPARE(QByteArray(QMetaType::typeName(QMetaType::type(ownName))), QByteArray(ownName));
    QCOMPARE(QByteArray(QMetaType::typeName(QMetaType::type(constName))), QByteArray(constName));
}

void tst_UIElement::newElementHasDefaults() {
    const UIElement element(QStringLiteral("QLabel"), StandardType(QStringLiteral("Window")),
                            QStringLiteral("id"));
    QCOMPARE(element.concreteType(), QStringLiteral("QLabel"));
    QCOMPARE(element.standardType(), StandardType(QStringLiteral("Window")));
    QVERIFY(!element.isTransparentNode());
    QVERIFY(!element.isSubgraphTransparent());
    QVERIFY(!element.isWindowNode());
    QVERIFY(element.image().isNull());
    QVERIFY(element.children().isEmpty());
    QCOMPARE(element.parent(), nullptr);
    QVERIFY(element.isRoot());
    QVERIFY(element.usage().isEmpty());
    QVERIFY(element.text().isEmpty());
    QCOMPARE(element.geometry(), ElementGeometry());
    QVERIFY(element.extraString1().isEmpty());
    QVERIFY(element.extraString2().isEmpty());
    QVERIFY(element.extraString3().isEmpty());
    QVERIFY(element.extraString4().isEmpty());
    QVERIFY(element.extraStrings().isEmpty());
    QVERIFY(element.extraAttributes1().isEmpty());
    QVERIFY(element.extraAttributes2().isEmpty());
}

void tst_UIElement::takesIdAsGiven_data() {
    QTest::addColumn<QString>("id");
    QTest::newRow("word") << QStringLiteral("id");
    QTest::newRow("blank") << QStringLiteral(" ");
    QTest::newRow("UUID without braces") << QStringLiteral("0f8fad5b-d9cb-469f-a165-70867728950e");
}

void tst_UIElement::takesIdAsGiven() {
    QFETCH(QString, id);
    QCOMPARE(UIElement(QString(), StandardType(), id).id(), id);
}

void tst_UIElement::emptyIdBecomesBracedUuid_data() {
    QTest::addColumn<QString>("id");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QStringLiteral("");
}

void tst_UIElement::emptyIdBecomesBracedUuid() {
    QFETCH(QString, id);
    const QRegularExpression braced(QStringLiteral(
        "^\\{[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}\\}$"));
    const QString made = UIElement(QString(), StandardType(), id).id();
    QVERIFY2(braced.match(made).hasMatch(), qPrintable(made));
}

void tst_UIElement::generatedIdsAreNeverShared() {
    constexpr int count = 1000;
    QSet<QString> ids;
    for (int i = 0; i < count; ++i) {
        ids.insert(UIElement(QString(), StandardType(), QString()).id());
    }
    QCOMPARE(ids.size(), count);
}

void tst_UIElement::hasNoQObjectParent() {
    UIElement parent{QString(), StandardType(), QString()};
    UIElement* child = newElement("Child");
    parent.addChild(child);
    QCOMPARE(child->parent(), &parent);
    QCOMPARE(static_cast<QObject*>(child)->parent(), nullptr);
    QVERIFY(static_cast<QObject&>(parent).children().isEmpty());
}

void tst_UIElement::signalsStandInOrder_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QList<QByteArray>>("names");
    const QByteArray element = "const Vorsk::UIAbstraction::UIElement*";
    const auto row = [&element](int index, const char* name, const QByteArray& type,
                                const char* argument) {
        QTest::newRow(name) << index << QByteArray(name) + '(' + element + ',' + type + ')'
                            << QList<QByteArray>{"element", argument};
    };
    row(0, "childAdded", element, "child");
    row(1, "eventRegistered", "Vorsk::UIAbstraction::UIEvent", "event");
    row(2, "geometryChanged", "Vorsk::UIAbstraction::ElementGeometry", "geometry");
    row(3, "imageChanged", "QImage", "image");
    row(4, "standardTypeChanged", "Vorsk::UIAbstraction::StandardType", "standardType");
    row(5, "subgraphTransparentChanged", "bool", "isSubgraphTransparent");
    row(6, "textChanged", "QString", "text");
    row(7, "transparentNodeChanged", "bool", "isTransparentNode");
    QTest::newRow("usageIncreased")
        << 8 << QByteArray("usageIncreased(" + element + ",Vorsk::UIAbstraction::UIEvent,int)")
        << QList<QByteArray>{"element", "event", "usage"};
    row(9, "windowNodeChanged", "bool", "isWindowNode");
    QTest::newRow("attributeChanged")
        << 10 << QByteArray("attributeChanged(" + element + ",QString,QString)")
        << QList<QByteArray>{"element", "name", "value"};
}

void tst_UIElement::signalsStandInOrder() {
    QFETCH(int, index);
    const QMetaObject& meta = UIElement::staticMetaObject;
    const QMetaMethod method = meta.method(meta.methodOffset() + index);
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QTEST(method.methodSignature(), "signature");
    QTEST(method.parameterNames(), "names");
    QCOMPARE(method.returnType(), int(QMetaType::Void));
}

void tst_UIElement::declaresElevenSignalsAndNothingElse() {
    const QMetaObject& meta = UIElement::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("Vorsk::UIAbstraction::UIElement"));
    QCOMPARE(QByteArray(meta.superClass()->className()), QByteArray("QObject"));
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 11);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

void tst_UIElement::setterAnnouncesEqualValueAgain_data() {
    QTest::addColumn<Change>("set");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QVariant>("value");
    QImage image(2, 1, QImage::Format_RGB32);
    image.fill(Qt::red);
    const ElementGeometry geometry(QRect(1, 2, 3, 4), true);
    const auto row = [](const char* tag, const char* signal, const Change& set,
                        const QVariant& value) {
        QTest::newRow(tag) << set << QByteArray(signal) << value;
    };
    row(
        "text", "textChanged", [](UIElement& e) { e.setText(QStringLiteral("a")); },
        QStringLiteral("a"));
    row(
        "default text", "textChanged", [](UIElement& e) { e.setText(QString()); }, QString());
    row(
        "type", "standardTypeChanged",
        [](UIElement& e) { e.setStandardType(StandardType(QStringLiteral("Menu"))); },
        QVariant::fromValue(StandardType(QStringLiteral("Menu"))));
    row(
        "geometry", "geometryChanged", [=](UIElement& e) { e.setGeometry(geometry); },
        QVariant::fromValue(geometry));
    row(
        "image", "imageChanged", [=](UIElement& e) { e.setImage(image); }, image);
    row(
        "null image", "imageChanged", [](UIElement& e) { e.setImage(QImage()); }, QImage());
    row(
        "window", "windowNodeChanged", [](UIElement& e) { e.setWindowNode(true); }, true);
    row(
        "no window", "windowNodeChanged", [](UIElement& e) { e.setWindowNode(false); }, false);
    row(
        "node", "transparentNodeChanged", [](UIElement& e) { e.setTransparentNode(true); }, true);
    row(
        "subgraph", "subgraphTransparentChanged",
        [](UIElement& e) { e.setSubgraphTransparent(true); }, true);
}

void tst_UIElement::setterAnnouncesEqualValueAgain() {
    QFETCH(Change, set);
    QFETCH(QByteArray, signal);
    QFETCH(QVariant, value);
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    const QMetaObject& meta = UIElement::staticMetaObject;
    int others = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QSignalSpy spy(&element, QByteArray("2") + meta.method(i).methodSignature());
        set(element);
        set(element);
        if (meta.method(i).name() != signal) {
            others += spy.size();
            continue;
        }
        QCOMPARE(spy.size(), 2);
        for (const QList<QVariant>& arguments : spy) {
            QCOMPARE(arguments.at(0).value<const UIElement*>(), &element);
            if (value.userType() == qMetaTypeId<ElementGeometry>()) {
                QCOMPARE(arguments.at(1).value<ElementGeometry>(), value.value<ElementGeometry>());
            } else if (value.userType() == qMetaTypeId<StandardType>()) {
                QCOMPARE(arguments.at(1).value<StandardType>(), value.value<StandardType>());
            } else {
                QCOMPARE(arguments.at(1), value);
            }
        }
    }
    QCOMPARE(others, 0);
}

void tst_UIElement::setterStoresBeforeItAnnounces() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    int seen = 0;
    const auto see = [&seen](bool isNew) { seen += isNew ? 1 : 0; };
    connect(&element, &UIElement::textChanged, this,
            [&see](const UIElement* e, const QString& text) { see(e->text() == text); });
    connect(&element, &UIElement::geometryChanged, this,
            [&see](const UIElement* e, const ElementGeometry& g) { see(e->geometry() == g); });
    connect(&element, &UIElement::imageChanged, this,
            [&see](const UIElement* e, const QImage& i) { see(e->image() == i); });
    connect(&element, &UIElement::standardTypeChanged, this,
            [&see](const UIElement* e, const StandardType& t) { see(e->standardType() == t); });
    connect(&element, &UIElement::windowNodeChanged, this,
            [&see](const UIElement* e, bool is) { see(e->isWindowNode() == is); });
    connect(&element, &UIElement::transparentNodeChanged, this,
            [&see](const UIElement* e, bool is) { see(e->isTransparentNode() == is); });
    connect(&element, &UIElement::subgraphTransparentChanged, this,
            [&see](const UIElement* e, bool is) { see(e->isSubgraphTransparent() == is); });
    element.setText(QStringLiteral("new"));
    element.setGeometry(ElementGeometry(QRect(1, 1, 1, 1), true));
    element.setImage(QImage(1, 1, QImage::Format_Mono));
    element.setStandardType(StandardType(QStringLiteral("Menu")));
    element.setWindowNode(true);
    element.setTransparentNode(true);
    element.setSubgraphTransparent(true);
    QCOMPARE(seen, 7);
}

void tst_UIElement::signalsCanBeQueued() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    QStringList order;
    const auto note = [&order](const char* name) {
        return [&order, name] { order.append(QLatin1String(name)); };
    };
    const auto queued = Qt::QueuedConnection;
    connect(&element, &UIElement::childAdded, this, note("child"), queued);
    connect(&element, &UIElement::geometryChanged, this, note("geometry"), queued);
    connect(&element, &UIElement::standardTypeChanged, this, note("type"), queued);
    connect(&element, &UIElement::usageIncreased, this, note("usage"), queued);
    element.increaseUsage(UIEvent(QStringLiteral("shown")));
    element.setGeometry(ElementGeometry());
    element.setStandardType(StandardType());
    element.addChild(newElement("Child"));
    QVERIFY(order.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("usage geometry type child"));
}

void tst_UIElement::attributeIsAnnouncedWhenItChanges_data() {
    QTest::addColumn<QString>("old");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("isAnnounced");
    const QString empty = QStringLiteral("");
    QTest::newRow("new") << QString() << QStringLiteral("true") << true;
    QTest::newRow("another value") << QStringLiteral("true") << QStringLiteral("false") << true;
    QTest::newRow("the same value") << QStringLiteral("true") << QStringLiteral("true") << false;
    QTest::newRow("gone") << QStringLiteral("true") << QString() << true;
    QTest::newRow("empty") << QString() << empty << true;
    QTest::newRow("empty again") << empty << empty << false;
    QTest::newRow("empty and gone") << empty << QString() << true;
    QTest::newRow("never there") << QString() << QString() << false;
}

void tst_UIElement::attributeIsAnnouncedWhenItChanges() {
    QFETCH(QString, old);
    QFETCH(QString, value);
    QFETCH(bool, isAnnounced);
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    const QString name = QStringLiteral("enabled");
    element.setAttribute(name, old);
    QSignalSpy spy(&element, &UIElement::attributeChanged);
    connect(&element, &UIElement::attributeChanged, this, [&] {
        QCOMPARE(element.attribute(name), value); // stored before it is announced
    });
    element.setAttribute(name, value);
    QCOMPARE(spy.size(), isAnnounced ? 1 : 0);
    if (isAnnounced) {
        QCOMPARE(spy.at(0).at(0).value<const UIElement*>(), &element);
        QCOMPARE(spy.at(0).at(1).toString(), name);
        QCOMPARE(spy.at(0).at(2).toString(), value);
        QCOMPARE(spy.at(0).at(2).toString().isNull(), value.isNull());
    }
    QCOMPARE(element.attribute(name).isNull(), value.isNull());
    QCOMPARE(element.attributes().contains(name), !value.isNull());
}

void tst_UIElement::attributesArePartOfTheElementForm() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    QVERIFY(element.attributes().isEmpty());
    element.setAttribute(QStringLiteral("label"), QStringLiteral("Name:"));
    element.setAttribute(QStringLiteral("page"), QStringLiteral("2"));
    element.setAttribute(QStringLiteral("label"), QStringLiteral("Age:"));
    const QHash<QString, QString> expected{{QStringLiteral("label"), QStringLiteral("Age:")},
                                           {QStringLiteral("page"), QStringLiteral("2")}};
    QCOMPARE(element.attributes(), expected);
    QCOMPARE(element.extraAttributes1(), expected);
    QVERIFY(element.extraAttributes2().isEmpty());
    element.setExtraStrings({QStringLiteral("kept")});
    element.setAttribute(QStringLiteral("label"), QString());
    element.setAttribute(QStringLiteral("page"), QString());
    QVERIFY(element.attributes().isEmpty());
    QCOMPARE(element.extraStrings(), QStringList{QStringLiteral("kept")});
}

void tst_UIElement::setExtraStringsAnnouncesNothing() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    int announced = 0;
    const QMetaObject& meta = UIElement::staticMetaObject;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        spies.push_back(std::make_unique<QSignalSpy>(
            &element, QByteArray("2") + meta.method(i).methodSignature()));
    }
    const QStringList texts{QStringLiteral("a"), QString(), QStringLiteral("")};
    element.setExtraStrings(texts);
    QCOMPARE(element.extraStrings(), texts);
    QVERIFY(element.extraStrings().isSharedWith(texts));
    // An equal list of another origin takes the first one's place.
    QStringList copy = texts;
    copy.detach();
    element.setExtraStrings(copy);
    QVERIFY(element.extraStrings().isSharedWith(copy));
    for (const auto& spy : spies) {
        announced += spy->size();
    }
    QCOMPARE(announced, 0);
}

void tst_UIElement::listenerIsCalledBeforeTheSignal() {
    QStringList calls;
    const std::unique_ptr<UIElement> element(newElement("A"));
    connect(element.get(), &UIElement::textChanged, this,
            [&calls](const UIElement* /*element*/, const QString& text) {
                calls.append(QLatin1String("signal ") + text);
            });
    element->addListener(listenerInto(calls, "listener "));
    element->setText(QStringLiteral("t"));
    QCOMPARE(calls, (QStringList{QStringLiteral("listener t"), QStringLiteral("signal t")}));
}

void tst_UIElement::listenerIsCalledAsOftenAsItWasAdded() {
    QStringList calls;
    const std::unique_ptr<UIElement> element(newElement("A"));
    const auto first = listenerInto(calls, "1 ");
    element->addListener(first);
    element->addListener(listenerInto(calls, "2 "));
    element->addListener(first);
    element->setText(QStringLiteral("t"));
    QCOMPARE(calls,
             (QStringList{QStringLiteral("1 t"), QStringLiteral("2 t"), QStringLiteral("1 t")}));
}

void tst_UIElement::listenerAddedMeanwhileIsCalledFromTheNextChangeOn() {
    QStringList calls;
    const std::unique_ptr<UIElement> element(newElement("A"));
    const auto adding = std::make_shared<TextListener>();
    adding->whenTextChanged = [&](const UIElement* changed, const QString& text) {
        calls.append(text);
        changed->addListener(listenerInto(calls, "new "));
    };
    element->addListener(adding);
    element->setText(QStringLiteral("a"));
    QCOMPARE(calls, QStringList{QStringLiteral("a")});
    element->setText(QStringLiteral("b"));
    QCOMPARE(calls,
             (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("new b")}));
}

/** Those of a literal are gone with the plugin that it is in, those that were lent with the lender.
 */
void tst_UIElement::textHasItsOwnCharacters() {
    UIElement element(QStringLiteral("X"), StandardType(), QStringLiteral("id"));
    const QString literal = QStringLiteral("Open");
    element.setText(literal);
    QCOMPARE(element.text(), literal);
    QVERIFY(element.text().constData() != literal.constData());
    const QChar lent[] = {QLatin1Char('a'), QLatin1Char('b')};
    element.setText(QString::fromRawData(lent, 2));
    QCOMPARE(element.text(), QStringLiteral("ab"));
    QVERIFY(element.text().constData() != lent);
    const QString empty = QStringLiteral("");
    element.setText(empty);
    QVERIFY(element.text().isEmpty() && !element.text().isNull());
    QVERIFY(element.text().constData() != empty.constData());
    element.setText(QString());
    QVERIFY(element.text().isNull());
    const QString own = QString::number(12345);
    element.setText(own);
    QVERIFY(element.text().constData() == own.constData()); // shared, as texts are
}

QTEST_GUILESS_MAIN(tst_UIElement)
#include "tst_uielement.moc"

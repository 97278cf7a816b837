// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QMap>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

/** Events and counts of UIElement. */
class tst_UIElementUsage : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void registerEventTwiceAnnouncesOnceAndKeepsCount();
    void usageIsInOrderOfNames();
    void setUsageOfUnregisteredEventWarnsAndRegisters_data();
    void setUsageOfUnregisteredEventWarnsAndRegisters();
    void setUsageWarnsOnce();
    void warningNamesElementAndEvent_data();
    void warningNamesElementAndEvent();
    void warningHasCategoryFileAndFunction();
    void setUsageAnnouncesGrowthOnly_data();
    void setUsageAnnouncesGrowthOnly();
    void increaseUsageOfUnregisteredEventIsSilent();
    void increaseUsageCountsUpFromLowerValue();
    void increaseUsageStopsAtLargestCount();
    void countIsStoredBeforeItIsAnnounced();
    void increaseUsageOfChildrenReachesDirectChildrenInOrder();
    void increaseUsageOfChildrenTakesListFirst();
};

namespace {

UIEvent clicked() {
    return UIEvent(QStringLiteral("clicked"));
}

UIElement* newElement() {
    return new UIElement(QStringLiteral("QWidget"), StandardType(), QString());
}

int clicks(const UIElement* element) {
    return element->usage().value(clicked());
}

QString warningFor(const char* type, const char* concreteType, const char* text,
                   const char* event) {
    return QStringLiteral("Unregistered event occured on { standardType='%1', concreteType='%2', "
                          "text='%3' }: '%4'")
        .arg(QString::fromUtf8(type), QString::fromUtf8(concreteType), QString::fromUtf8(text),
             QString::fromUtf8(event));
}

} // namespace

void tst_UIElementUsage::registerEventTwiceAnnouncesOnceAndKeepsCount() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    const QSignalSpy spy(&element, &UIElement::eventRegistered);
    element.registerEvent(clicked());
    QCOMPARE(element.usage(), (QMap<UIEvent, int>{{clicked(), 0}}));
    element.setUsage(clicked(), 5);
    element.registerEvent(clicked());
    QCOMPARE(element.usage(), (QMap<UIEvent, int>{{clicked(), 5}}));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).value<const UIElement*>(), &element);
    QCOMPARE(spy.at(0).at(1).value<UIEvent>(), clicked());
}

void tst_UIElementUsage::usageIsInOrderOfNames() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    for (const char* name : {"shown", "checked", "Z", "clicked"}) {
        element.registerEvent(UIEvent(QLatin1String(name)));
    }
    QStringList names;
    const QMap<UIEvent, int> usage = element.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        names.append(it.key().name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("Z checked clicked shown"));
}

void tst_UIElementUsage::setUsageOfUnregisteredEventWarnsAndRegisters_data() {
    QTest::addColumn<int>("usage");
    QTest::addColumn<int>("announced");
    QTest::newRow("positive") << 3 << 1;
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("negative") << -1 << 0;
}

void tst_UIElementUsage::setUsageOfUnregisteredEventWarnsAndRegisters() {
    QFETCH(int, usage);
    QFETCH(int, announced);
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    const QSignalSpy registered(&element, &UIElement::eventRegistered);
    const QSignalSpy increased(&element, &UIElement::usageIncreased);
    expectWarning(warningFor("unknown", "QWidget", "", "clicked"));
    element.setUsage(clicked(), usage);
    QCOMPARE(element.usage(), (QMap<UIEvent, int>{{clicked(), usage}}));
    QCOMPARE(registered.size(), 0);
    QCOMPARE(increased.size(), announced);
    if (announced > 0) {
        QCOMPARE(increased.at(0).at(0).value<const UIElement*>(), &element);
        QCOMPARE(increased.at(0).at(1).value<UIEvent>(), clicked());
        QCOMPARE(increased.at(0).at(2).toInt(), usage);
    }
}

void tst_UIElementUsage::setUsageWarnsOnce() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    expectWarning(warningFor("unknown", "QWidget", "", "clicked"));
    element.setUsage(clicked(), 1);
    element.setUsage(clicked(), 2);
    QCOMPARE(clicks(&element), 2);
}

void tst_UIElementUsage::warningNamesElementAndEvent_data() {
    QTest::addColumn<StandardType>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<UIEvent>("event");
    QTest::addColumn<QString>("warning");
    QTest::newRow("all there") << StandardType(QStringLiteral("Button")) << QStringLiteral("OK")
                               << clicked() << warningFor("Button", "QWidget", "OK", "clicked");
    QTest::newRow("nothing there")
        << StandardType() << QString() << UIEvent() << warningFor("unknown", "QWidget", "", "");
    QTest::newRow("empty type") << StandardType(QStringLiteral("")) << QString() << clicked()
                                << warningFor("", "QWidget", "", "clicked");
    QTest::newRow("percent and quote")
        << StandardType() << QStringLiteral("100 %s '") << clicked()
        << QStringLiteral("Unregistered event occured on { standardType='unknown', "
                          "concreteType='QWidget', text='100 %s '' }: 'clicked'");
    QTest::newRow("not ASCII") << StandardType() << QStringLiteral("\u00fcber") << clicked()
                               << warningFor("unknown", "QWidget", "\u00fcber", "clicked");
}

void tst_UIElementUsage::warningNamesElementAndEvent() {
    QFETCH(StandardType, type);
    QFETCH(QString, text);
    QFETCH(UIEvent, event);
    QFETCH(QString, warning);
    UIElement element(QStringLiteral("QWidget"), type, QString());
    element.setText(text);
    expectWarning(warning);
    element.setUsage(event, 1);
    QCOMPARE(element.usage().value(event), 1);
}

namespace {

struct Logged {
    QtMsgType type;
    QByteArray category;
    QByteArray file;
    QByteArray function;
};
QList<Logged> logged;

void keepContext(QtMsgType type, const QMessageLogContext& context, const QString&) {
    logged.append({type, context.category, context.file, context.function});
}

} // namespace

void tst_UIElementUsage::warningHasCategoryFileAndFunction() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    logged.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepContext);
    element.setUsage(clicked(), 1);
    qInstallMessageHandler(previous);
    QCOMPARE(logged.size(), 1);
    QCOMPARE(logged.at(0).type, QtWarningMsg);
    QCOMPARE(logged.at(0).category, QByteArray("default"));
    QCOMPARE(logged.at(0).file, QByteArray("uielement.cpp"));
    QCOMPARE(logged.at(0).function, QByteArray("void Vorsk::UIAbstraction::UIElement::setUsage("
                                               "const Vorsk::UIAbstraction::UIEvent&, int)"));
}

void tst_UIElementUsage::setUsageAnnouncesGrowthOnly_data() {
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<int>("announced");
    QTest::newRow("higher") << 3 << 4 << 1;
    QTest::newRow("equal") << 3 << 3 << 0;
    QTest::newRow("lower") << 3 << 2 << 0;
    QTest::newRow("negative") << 3 << -7 << 0;
    QTest::newRow("up, still negative") << -7 << -6 << 1;
    QTest::newRow("lowest to highest")
        << std::numeric_limits<int>::min() << std::numeric_limits<int>::max() << 1;
}

void tst_UIElementUsage::setUsageAnnouncesGrowthOnly() {
    QFETCH(int, before);
    QFETCH(int, after);
    QFETCH(int, announced);
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    element.registerEvent(clicked());
    element.setUsage(clicked(), before);
    const QSignalSpy increased(&element, &UIElement::usageIncreased);
    element.setUsage(clicked(), after);
    QCOMPARE(clicks(&element), after);
    QCOMPARE(increased.size(), announced);
    if (announced > 0) {
        QCOMPARE(increased.at(0).at(2).toInt(), after);
    }
}

void tst_UIElementUsage::increaseUsageOfUnregisteredEventIsSilent() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    const QSignalSpy registered(&element, &UIElement::eventRegistered);
    const QSignalSpy increased(&element, &UIElement::usageIncreased);
    element.increaseUsage(clicked());
    QCOMPARE(registered.size(), 0);
    QCOMPARE(increased.size(), 1);
    QCOMPARE(increased.at(0).at(1).value<UIEvent>(), clicked());
    QCOMPARE(increased.at(0).at(2).toInt(), 1);
    // It counts as registered from then on.
    element.registerEvent(clicked());
    element.setUsage(clicked(), 2);
    QCOMPARE(registered.size(), 0);
    QCOMPARE(clicks(&element), 2);
}

void tst_UIElementUsage::increaseUsageCountsUpFromLowerValue() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    element.registerEvent(clicked());
    element.setUsage(clicked(), 10);
    element.setUsage(clicked(), 3);
    const QSignalSpy increased(&element, &UIElement::usageIncreased);
    element.increaseUsage(clicked());
    QCOMPARE(clicks(&element), 4);
    QCOMPARE(increased.size(), 1);
    QCOMPARE(increased.at(0).at(2).toInt(), 4);
}

void tst_UIElementUsage::increaseUsageStopsAtLargestCount() {
    constexpr int largest = std::numeric_limits<int>::max();
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    element.registerEvent(clicked());
    element.setUsage(clicked(), largest);
    const QSignalSpy increased(&element, &UIElement::usageIncreased);
    element.increaseUsage(clicked());
    QCOMPARE(clicks(&element), largest);
    QCOMPARE(increased.size(), 0);
}

void tst_UIElementUsage::countIsStoredBeforeItIsAnnounced() {
    UIElement element(QStringLiteral("QWidget"), StandardType(), QString());
    QList<int> seen;
    connect(&element, &UIElement::usageIncreased, this,
            [&seen](const UIElement* e, const UIEvent& event) {
                seen.append(e->usage().value(event));
            });
    connect(&element, &UIElement::eventRegistered, this,
            [&seen](const UIElement* e, const UIEvent& event) {
                seen.append(e->usage().value(event, -1));
            });
    element.registerEvent(clicked());
    element.increaseUsage(clicked());
    QCOMPARE(seen, (QList<int>{0, 1}));
}

void tst_UIElementUsage::increaseUsageOfChildrenReachesDirectChildrenInOrder() {
    UIElement root(QStringLiteral("Root"), StandardType(), QString());
    UIElement* first = newElement();
    UIElement* second = newElement();
    UIElement* below = newElement();
    root.addChild(first);
    root.addChild(second);
    first->addChild(below);
    QList<const UIElement*> order;
    for (const UIElement* element :
         {static_cast<const UIElement*>(second), static_cast<const UIElement*>(first)}) {
        connect(element, &UIElement::usageIncreased, this,
                [&order](const UIElement* e) { order.append(e); });
    }
    root.increaseUsageOfChildren(clicked());
    QCOMPARE(order, (QList<const UIElement*>{first, second}));
    QCOMPARE(clicks(first), 1);
    QCOMPARE(clicks(second), 1);
    QVERIFY(root.usage().isEmpty());
    QVERIFY(below->usage().isEmpty());
}

void tst_UIElementUsage::increaseUsageOfChildrenTakesListFirst() {
    UIElement root(QStringLiteral("Root"), StandardType(), QString());
    UIElement* first = newElement();
    UIElement* late = newElement();
    root.addChild(first);
    connect(first, &UIElement::usageIncreased, this, [&] { root.addChild(late); });
    root.increaseUsageOfChildren(clicked());
    QCOMPARE(root.children(), (QList<UIElement*>{first, late}));
    QVERIFY(late->usage().isEmpty());
}

QTEST_GUILESS_MAIN(tst_UIElementUsage)
#include "tst_uielementusage.moc"

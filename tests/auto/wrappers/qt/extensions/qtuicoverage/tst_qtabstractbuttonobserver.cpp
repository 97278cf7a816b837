// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtabstractbuttonobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/treeprinter.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <memory>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

class tst_QtAbstractButtonObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasOnePrivateSlot() {
        const QMetaObject& meta = QtAbstractButtonObserver::staticMetaObject;
        QCOMPARE(meta.superClass(), &QtWidgetObserver::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("buttonClicked()"));
        QCOMPARE(meta.method(meta.methodOffset()).access(), QMetaMethod::Private);
    }

    void constructionSetsTheTextThenRegistersClicked() {
        QPushButton button(QStringLiteral("Save && E&xit"));
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        QStringList order;
        connect(&element, &UIElement::textChanged, this,
                [&](const UIElement*, const QString& text) { order << text; });
        connect(&element, &UIElement::eventRegistered, this,
                [&](const UIElement*, const Vorsk::UIAbstraction::UIEvent& registered) {
                    order << registered.name();
                });
        const QtAbstractButtonObserver observer(&button, &element, &m_probe.tracker());
        QCOMPARE(order, (QStringList{QStringLiteral("Save & Exit"), QStringLiteral("clicked")}));
    }

    void elementGetsTheStrippedText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printed");
        QTest::newRow("no text") << QString()
                                 << QStringLiteral("unknown/QPushButton {clicked=0}\n");
        QTest::newRow("A&&B") << QStringLiteral("A&&B")
                              << QStringLiteral("unknown/QPushButton \"A&B\" {clicked=0}\n");
        QTest::newRow("&&&X") << QStringLiteral("&&&X")
                              << QStringLiteral("unknown/QPushButton \"&X\" {clicked=0}\n");
        QTest::newRow("&Open") << QStringLiteral("&Open")
                               << QStringLiteral("unknown/QPushButton \"Open\" {clicked=0}\n");
    }

    void elementGetsTheStrippedText() {
        QFETCH(QString, text);
        QPushButton button(text);
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        const QtAbstractButtonObserver observer(&button, &element, &m_probe.tracker());
        QTEST(TestLib::TreePrinter().print(element), "printed");
    }

    void emptyTextIsAnnouncedAsWell() {
        QPushButton button;
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        QSignalSpy textChanged(&element, &UIElement::textChanged);
        const QtAbstractButtonObserver observer(&button, &element, &m_probe.tracker());
        QCOMPARE(textChanged.count(), 1);
        QVERIFY(element.text().isNull());
    }

    void laterTextIsNotFollowed() {
        QPushButton button(QStringLiteral("old"));
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        const QtAbstractButtonObserver observer(&button, &element, &m_probe.tracker());
        button.setText(QStringLiteral("new"));
        QCOMPARE(element.text(), QStringLiteral("old"));
    }

    void everyClickCountsOnceOnAnyButton_data() {
        QTest::addColumn<QString>("kind");
        QTest::newRow("push button") << QStringLiteral("push");
        QTest::newRow("radio button") << QStringLiteral("radio");
        QTest::newRow("tool button") << QStringLiteral("tool");
    }

    void everyClickCountsOnceOnAnyButton() {
        QFETCH(QString, kind);
        std::unique_ptr<QAbstractButton> button;
        if (kind == QLatin1String("push")) {
            button = std::make_unique<QPushButton>();
        } else if (kind == QLatin1String("radio")) {
            button = std::make_unique<QRadioButton>();
        } else {
            button = std::make_unique<QToolButton>();
        }
        button->resize(60, 30);
        UIElement element(QStringLiteral("Class"), StandardType(), QString());
        const QtAbstractButtonObserver observer(button.get(), &element, &m_probe.tracker());
        QTest::mouseClick(button.get(), Qt::LeftButton, {}, QPoint(8, 15));
        QCOMPARE(TestLib::TreePrinter().print(element),
                 QStringLiteral("unknown/Class {clicked=1}\n"));
        button->click();
        QTest::keyClick(button.get(), Qt::Key_Space);
        QCOMPARE(TestLib::TreePrinter().print(element),
                 QStringLiteral("unknown/Class {clicked=3}\n"));
    }

    void pressAndReleaseOutsideCountNothing() {
        QPushButton button;
        button.resize(60, 30);
        UIElement element(QStringLiteral("QPushButton"), StandardType(), QString());
        const QtAbstractButtonObserver observer(&button, &element, &m_probe.tracker());
        QTest::mousePress(&button, Qt::LeftButton);
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(200, 200));
        QTest::mouseClick(&button, Qt::RightButton);
        button.setEnabled(false);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(TestLib::TreePrinter().print(element),
                 QStringLiteral("unknown/QPushButton {clicked=0}\n"));
    }

    void widgetDeletedInItsOwnClickedSlotIsStillCounted() {
        auto* const button = new QPushButton(QStringLiteral("Close"));
        button->setAttribute(Qt::WA_DontShowOnScreen);
        m_probe.start();
        button->show();
        UIElement* const element = m_probe.element(button);
        const QPointer<QWidget> guard(button);
        connect(button, &QPushButton::clicked, button, [button] { delete button; });
        QTest::mousePress(button, Qt::LeftButton);
        QTest::mouseRelease(button, Qt::LeftButton);
        m_probe.stop();
        QVERIFY(guard.isNull());
        QCOMPARE(m_probe.element(button), nullptr);
        QCOMPARE(TestLib::TreePrinter(TestLib::TreePrinter::Sizes::Hidden).print(*element),
                 QStringLiteral("Button/QPushButton \"Close\" (rect) {clicked=1, shown=1}\n"));
    }

private:
    TestLib::WidgetsProbe m_probe;
};

QTEST_MAIN(tst_QtAbstractButtonObserver)
#include "tst_qtabstractbuttonobserver.moc"

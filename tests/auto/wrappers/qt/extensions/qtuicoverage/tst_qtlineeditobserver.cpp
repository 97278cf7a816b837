// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtlineeditobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/treeprinter.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QIntValidator>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

class tst_QtLineEditObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        TestCase::init();
        m_lineEdit = std::make_unique<QLineEdit>();
        m_element =
            std::make_unique<UIElement>(QStringLiteral("QLineEdit"), StandardType(), QString());
    }

    void cleanup() {
        m_observer.reset();
        m_lineEdit.reset();
        m_element.reset();
        TestCase::cleanup();
    }

    void hasThreePrivateSlotsInOrder() {
        const QMetaObject& meta = QtLineEditObserver::staticMetaObject;
        QCOMPARE(meta.superClass(), &QtWidgetObserver::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 3);
        const char* const signatures[] = {"onReturnPressed()", "onTextChanged()", "onTextEdited()"};
        for (int i = 0; i < 3; ++i) {
            const QMetaMethod slot = meta.method(meta.methodOffset() + i);
            QCOMPARE(slot.methodSignature(), QByteArray(signatures[i]));
            QCOMPARE(slot.access(), QMetaMethod::Private);
        }
    }

    void eventsAreRegisteredInOrder() {
        QStringList events;
        connect(m_element.get(), &UIElement::eventRegistered, this,
                [&](const UIElement*, const UIEvent& registered) { events << registered.name(); });
        watch();
        QCOMPARE(events, (QStringList{QStringLiteral("confirmed"), QStringLiteral("textChanged"),
                                      QStringLiteral("textEdited")}));
    }

    void contentIsNeverCopied() {
        m_lineEdit->setText(QStringLiteral("secret"));
        QSignalSpy textChanged(m_element.get(), &UIElement::textChanged);
        watch();
        QTest::keyClicks(m_lineEdit.get(), QStringLiteral("more"));
        m_lineEdit->setText(QStringLiteral("else"));
        QCOMPARE(textChanged.count(), 0);
        QVERIFY(m_element->text().isNull());
    }

    void typingOneCharacterCountsEditedAndChanged() {
        watch();
        QTest::keyClick(m_lineEdit.get(), Qt::Key_A);
        QCOMPARE(usage(), QStringLiteral("{confirmed=0, textChanged=1, textEdited=1}"));
    }

    void textSetByTheApplicationCountsChangedOnly() {
        watch();
        m_lineEdit->setText(QStringLiteral("text"));
        QCOMPARE(usage(), QStringLiteral("{confirmed=0, textChanged=1, textEdited=0}"));
        m_lineEdit->setText(QStringLiteral("text")); // no change
        QCOMPARE(usage(), QStringLiteral("{confirmed=0, textChanged=1, textEdited=0}"));
    }

    void returnCountsConfirmedEachTime() {
        watch();
        QTest::keyClick(m_lineEdit.get(), Qt::Key_Return);
        QTest::keyClick(m_lineEdit.get(), Qt::Key_Enter);
        QCOMPARE(usage(), QStringLiteral("{confirmed=2, textChanged=0, textEdited=0}"));
    }

    void returnThatAValidatorRejectsCountsNothing() {
        QIntValidator validator(10, 99, nullptr);
        m_lineEdit->setValidator(&validator);
        m_lineEdit->setText(QStringLiteral("1"));
        watch();
        QTest::keyClick(m_lineEdit.get(), Qt::Key_Return);
        QCOMPARE(usage(), QStringLiteral("{confirmed=0, textChanged=0, textEdited=0}"));
        m_lineEdit->setText(QStringLiteral("11"));
        QTest::keyClick(m_lineEdit.get(), Qt::Key_Return);
        QCOMPARE(usage(), QStringLiteral("{confirmed=1, textChanged=1, textEdited=0}"));
        m_lineEdit->setValidator(nullptr);
    }

    void readOnlyLineEditIsNotEdited() {
        m_lineEdit->setReadOnly(true);
        watch();
        QTest::keyClick(m_lineEdit.get(), Qt::Key_A);
        QCOMPARE(usage(), QStringLiteral("{confirmed=0, textChanged=0, textEdited=0}"));
    }

private:
    void watch() {
        m_observer = std::make_unique<QtLineEditObserver>(m_lineEdit.get(), m_element.get(),
                                                          &m_probe.tracker());
    }

    QString usage() const {
        return TestLib::TreePrinter().print(*m_element).section(QLatin1Char(' '), 1).trimmed();
    }

    TestLib::WidgetsProbe m_probe;
    std::unique_ptr<QLineEdit> m_lineEdit;
    std::unique_ptr<UIElement> m_element;
    std::unique_ptr<QtLineEditObserver> m_observer;
};

QTEST_MAIN(tst_QtLineEditObserver)
#include "tst_qtlineeditobserver.moc"

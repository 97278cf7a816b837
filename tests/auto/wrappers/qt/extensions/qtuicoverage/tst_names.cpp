// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/names.h"
#include "testlib/testcase.h"

#include <QTest>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIEvent;

using EventFunction = const UIEvent& (*)();
using TypeFunction = const StandardType& (*)();
Q_DECLARE_METATYPE(EventFunction)
Q_DECLARE_METATYPE(TypeFunction)

class tst_Names : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void events_data() {
        QTest::addColumn<EventFunction>("function");
        const auto row = [](const char* name, EventFunction function) {
            QTest::newRow(name) << function;
        };
        row("checked", &Events::checked);
        row("clicked", &Events::clicked);
        row("confirmed", &Events::confirmed);
        row("partiallyChecked", &Events::partiallyChecked);
        row("shown", &Events::shown);
        row("textChanged", &Events::textChanged);
        row("textEdited", &Events::textEdited);
        row("triggered", &Events::triggered);
        row("unchecked", &Events::unchecked);
    }

    void events() {
        QFETCH(EventFunction, function);
        QCOMPARE(function().name(), QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(&function(), &function());
    }

    void standardTypes_data() {
        QTest::addColumn<TypeFunction>("function");
        const auto row = [](const char* name, TypeFunction function) {
            QTest::newRow(name) << function;
        };
        row("Button", &StandardTypes::button);
        row("CheckBox", &StandardTypes::checkBox);
        row("Dialog", &StandardTypes::dialog);
        row("Menu", &StandardTypes::menu);
        row("MenuBar", &StandardTypes::menuBar);
        row("MenuItem", &StandardTypes::menuItem);
        row("Table", &StandardTypes::table);
        row("TextInput", &StandardTypes::textInput);
        row("ToolBar", &StandardTypes::toolBar);
        row("Window", &StandardTypes::window);
    }

    void standardTypes() {
        QFETCH(TypeFunction, function);
        QCOMPARE(function().name(), QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(&function(), &function());
    }
};

QTEST_GUILESS_MAIN(tst_Names)
#include "tst_names.moc"

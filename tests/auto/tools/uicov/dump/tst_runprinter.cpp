// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "dump/runprinter.h"
#include "run/run.h"
#include "testlib/testcase.h"

#include <QJsonDocument>
#include <QTest>

using Uicov::Runs::Hit;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;

namespace {

Run sample() {
    Run run;
    run.uuid = QStringLiteral("u-1");
    run.session = QStringLiteral("s-1");
    run.application = QStringLiteral("panel");
    run.qtVersion = QStringLiteral("5.15.8");
    run.labels = {{QStringLiteral("build"), QStringLiteral("a b")}};
    run.isComplete = false;
    run.partialReason = QStringLiteral("was \"killed\"");
    run.bytesLost = 7;
    run.messages = 20;
    run.messagesLost = 1;
    run.contexts = QStringList{QString(), QStringLiteral("login")};
    run.warnings = {{QStringLiteral("no\tpicture"), 3}};
    RunElement window;
    window.id = QStringLiteral("{w}");
    window.className = QStringLiteral("QMainWindow");
    window.type = QStringLiteral("Window");
    window.isWindowNode = true;
    window.children = {1, 0}; // it stands below itself, too
    RunElement button;
    button.id = QStringLiteral("{b}");
    button.className = QStringLiteral("QPushButton");
    button.type = QStringLiteral("Button");
    button.text = QStringLiteral("Go\n");
    button.parent = 0;
    button.events = QStringList{QStringLiteral("clicked"), QStringLiteral("shown")};
    button.hits = {Hit{QStringLiteral("clicked"), 1, 2}};
    button.place = QRect(1, 2, 3, 4);
    button.picture = QByteArray("\x01\xab", 2);
    run.elements = {window, button};
    return run;
}

/** JSON with its quotes written as apostrophes, to be read more easily. */
QString json(const char* text) {
    return QString::fromLatin1(text).replace(QLatin1Char('\''), QLatin1Char('"'));
}

} // namespace

class TestRunPrinter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void forPeople() {
        QCOMPARE(
            Uicov::Dump::runLines(sample()).join(QLatin1Char('\n')),
            QStringLiteral(
                "run u-1 session=\"s-1\" application=\"panel\" executable=null qt=\"5.15.8\" "
                "platform=null locale=null architecture=null started=null messages=20 partial "
                "reason=\"was \\\"killed\\\"\" bytesLost=7 messagesLost=1\n"
                "label \"build\" value=\"a b\"\n"
                "context null\n"
                "context \"login\"\n"
                "warning \"no\\tpicture\" times=3\n"
                "element #1 Window class=\"QMainWindow\" id=\"{w}\" window lists=#1\n"
                "element #2 Button \"Go\\n\" class=\"QPushButton\" id=\"{b}\" parent=#1 left=1 "
                "top=2 right=3 bottom=5 events=\"clicked,shown\" picture=01ab\n"
                "hit #2 Button \"Go\\n\" event=\"clicked\" context=\"login\" count=2"));
    }

    void forTools() {
        const auto objects = Uicov::Dump::runObjects(sample());
        QCOMPARE(objects.size(), 3);
        const auto text = [&objects](int index) {
            return QString::fromUtf8(
                QJsonDocument(objects.at(index)).toJson(QJsonDocument::Compact));
        };
        QCOMPARE(text(0), json("{'application':'panel','architecture':'','bytesLost':7,"
                               "'complete':false,'contexts':['','login'],'elements':2,"
                               "'executable':'','labels':{'build':'a b'},'locale':'',"
                               "'messages':20,'messagesLost':1,'partialReason':'was \\'killed\\'',"
                               "'platform':'','qtVersion':'5.15.8','run':'u-1','session':'s-1',"
                               "'started':'','warnings':{'no\\tpicture':3}}"));
        QVERIFY(text(1).contains(json("'parent':null")));
        QVERIFY(text(1).contains(json("'text':null")));
        QVERIFY(!text(1).contains(QStringLiteral("rect")));
        QCOMPARE(
            text(2),
            json("{'children':[],'class':'QPushButton','element':1,'events':['clicked','shown'],"
                 "'hits':[{'context':'login','count':2,'event':'clicked'}],'id':'{b}',"
                 "'of':'u-1','parent':0,'picture':'01ab',"
                 "'rect':{'bottom':5,'left':1,'right':3,'top':2},'subgraphTransparent':false,"
                 "'text':'Go\\n','transparent':false,'type':'Button','window':false}"));
    }

    void anEmptyRunIsStillARun() {
        const Run run;
        QCOMPARE(Uicov::Dump::runLines(run).size(), 1);
        QVERIFY(Uicov::Dump::runLines(run).first().endsWith(QStringLiteral(" complete")));
        QCOMPARE(Uicov::Dump::runObjects(run).size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestRunPrinter)
#include "tst_runprinter.moc"

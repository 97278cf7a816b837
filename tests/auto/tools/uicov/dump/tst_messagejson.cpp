// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "dump/messagejson.h"
#include "recording/recordingreader.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using TestLib::RecordingBuilder;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

/** JSON with its quotes written as apostrophes, to be read more easily. */
QString json(const char* text) {
    return QString::fromLatin1(text).replace(QLatin1Char('\''), QLatin1Char('"'));
}

} // namespace

class TestMessageJson : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;

    QStringList print(const RecordingBuilder& recording) const {
        const QString path = m_folder.filePath(QStringLiteral("x.uirec"));
        QStringList lines;
        RecordingReader reader(path);
        if (!recording.write(path) || reader.open()) {
            return lines;
        }
        Frame frame;
        while (reader.next(frame)) {
            lines.append(QString::fromUtf8(
                QJsonDocument(Uicov::Dump::frameJson(frame)).toJson(QJsonDocument::Compact)));
        }
        return lines;
    }

    static UIElement* element(const char* id) {
        return new UIElement(QStringLiteral("C"), StandardType(QStringLiteral("T")),
                             QLatin1String(id));
    }

private Q_SLOTS:
    void everyFrameIsOneObject() {
        RecordingBuilder recording;
        recording.addProcess({{QStringLiteral("application"), QStringLiteral("a \"b\"\n")}});
        recording.setTime(61000042);
        recording.addLog(RecordingFormat::Severity::Warning, QStringLiteral("oh"));
        recording.addMark(QStringLiteral("test 1"));
        recording.addMessage(QStringLiteral("other"), {1, -2});
        recording.addEnd();
        const QStringList expected{
            json("{'frame':'process','microseconds':0,'process':"
                 "{'application':'a \\'b\\'\\n'}}"),
            json("{'frame':'log','microseconds':61000042,'severity':'warning',"
                 "'text':'oh'}"),
            json("{'context':'test 1','frame':'mark','microseconds':61000042}"),
            json("{'arguments':[1,-2],'channel':7,'frame':'message',"
                 "'microseconds':61000042,'name':'other'}"),
            json("{'frame':'end','messages':1,'microseconds':61000042}")};
        QCOMPARE(print(recording).join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
    }

    void everyRecordSaysWhatChanged() {
        RecordingBuilder recording;
        UIElement* const window = element("{w}");
        UIElement* const button = element("{b}");
        recording.announce(window);
        recording.announce(button);
        window->addChild(button);
        button->registerEvent(UIEvent(QStringLiteral("clicked")));
        button->setGeometry(ElementGeometry(QRect(1, 2, 3, 4), true));
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(Qt::blue);
        button->setImage(image);
        button->setStandardType(StandardType(QStringLiteral("Button")));
        button->setText(QString());
        button->setText(QStringLiteral("OK"));
        button->setTransparentNode(true);
        button->setSubgraphTransparent(true);
        button->setWindowNode(true);
        button->increaseUsage(UIEvent(QStringLiteral("clicked")));
        button->setAttribute(QStringLiteral("label"), QStringLiteral("Name:"));
        button->setAttribute(QStringLiteral("label"), QString());
        const QStringList lines = print(recording);
        const char* const parts[] = {
            "'child':'{b}','frame':'message','id':'{w}','microseconds':0,'record':'childAdded'",
            ("'event':'clicked','frame':'message','id':'{b}','microseconds':0,"
             "'record':'eventRegistered'"),
            "'record':'geometryChanged','rect':{'bottom':5,'left':1,'right':3,'top':2}",
            "'height':3,'width':4},'record':'imageChanged'",
            "'record':'standardTypeChanged','type':'Button'",
            "'record':'textChanged','text':'OK'",
            "'record':'transparentNodeChanged','value':true",
            "'record':'subgraphTransparentChanged','value':true",
            "'record':'windowNodeChanged','value':true",
            ("'count':1,'event':'clicked','frame':'message','id':'{b}','microseconds':0,"
             "'record':'usageIncreased'"),
            ("'attribute':'label','frame':'message','id':'{b}','microseconds':0,"
             "'record':'attributeChanged','value':'Name:'"),
            ("'attribute':'label','frame':'message','id':'{b}','microseconds':0,"
             "'record':'attributeChanged','value':null")};
        for (const char* part : parts) {
            const QStringList found = lines.filter(json(part));
            QVERIFY2(found.size() == 1, part);
        }
    }

    void anAddedElementBringsAllBelowItEachOnce() {
        RecordingBuilder recording;
        UIElement* const window = element("{w}");
        UIElement* const child = element("{c}");
        window->addChild(child);
        UIElement* const other = element("{o}");
        UIElement* const shared = element("{s}");
        window->addChild(other);
        child->addChild(shared);
        other->addChild(shared); // one that two list
        child->addChild(window); // two that stand below each other
        recording.announce(window);
        const QStringList lines = print(recording);
        QCOMPARE(lines.size(), 1);
        const QString& line = lines.first();
        const QString root = json("'id':'{w}','microseconds':0,'record':'elementAdded'");
        const QString children = json("'children':[");
        const QString noText = json("'text':null");
        QVERIFY2(line.contains(root), qPrintable(line));
        QCOMPARE(line.count(children), 4);
        QVERIFY(line.contains(noText));
    }

    void whatIsDamagedSaysSo() {
        RecordingBuilder recording;
        for (quint8 type = 1; type <= 5; ++type) {
            recording.addFrame(type, QByteArray("\xff", 1));
        }
        recording.addRecord(7, QByteArray("x"));
        recording.addRecord(99, QByteArray("x"));
        const QStringList lines = print(recording);
        QCOMPARE(lines.size(), 7);
        const QString damagedFrame = json("'damaged':true");
        const QString damagedRecord = json("'record':'damaged'");
        const QString unknownRecord = json("'record':'unknown'");
        for (int i = 0; i < 5; ++i) {
            QVERIFY2(lines.at(i).contains(damagedFrame), qPrintable(lines.at(i)));
        }
        QVERIFY2(lines.at(5).contains(damagedRecord), qPrintable(lines.at(5)));
        QVERIFY2(lines.at(6).contains(unknownRecord), qPrintable(lines.at(6)));
    }
};

QTEST_MAIN(TestMessageJson)
#include "tst_messagejson.moc"

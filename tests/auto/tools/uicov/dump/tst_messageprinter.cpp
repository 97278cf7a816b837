// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "dump/messageprinter.h"
#include "recording/recordingreader.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>

using TestLib::RecordingBuilder;
using Uicov::Dump::MessagePrinter;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

class TestMessagePrinter : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;

    QStringList print(const RecordingBuilder& recording) {
        const QString path = m_folder.filePath(QStringLiteral("x.uirec"));
        QStringList lines;
        RecordingReader reader(path);
        if (!recording.write(path) || reader.open()) {
            return lines;
        }
        MessagePrinter printer;
        Frame frame;
        while (reader.next(frame)) {
            lines.append(printer.print(frame));
        }
        return lines;
    }

private Q_SLOTS:
    void everyFrameAndRecordIsOneLine() {
        RecordingBuilder recording;
        recording.addProcess({{QStringLiteral("application"), QStringLiteral("a \"b\"")},
                              {QStringLiteral("pid"), QStringLiteral("7")}});
        recording.setTime(61000042);
        auto* const window =
            new UIElement(QStringLiteral("MainWindow"), StandardType(QStringLiteral("Window")),
                          QStringLiteral("{w}"));
        auto* const button =
            new UIElement(QStringLiteral("QPushButton"), StandardType(), QStringLiteral("{b}"));
        recording.announce(window);
        recording.announce(button);
        window->addChild(button);
        button->registerEvent(UIEvent(QStringLiteral("clicked")));
        button->setGeometry(ElementGeometry(QRect(1, 2, 3, 4), true));
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(Qt::blue);
        button->setImage(QImage());
        button->setStandardType(StandardType(QStringLiteral("Button")));
        button->setText(QStringLiteral("O\nK"));
        button->setTransparentNode(false);
        button->setSubgraphTransparent(true);
        button->setWindowNode(true);
        button->increaseUsage(UIEvent(QStringLiteral("clicked")));
        button->setText(QString());
        button->setAttribute(QStringLiteral("enabled"), QStringLiteral("false"));
        button->setAttribute(QStringLiteral("enabled"), QString());
        recording.addLog(RecordingFormat::Severity::Warning, QStringLiteral("No %1 \x1b"));
        recording.addLog(RecordingFormat::Severity::Info, QStringLiteral("hello"));
        recording.addMark(QStringLiteral("test one"));
        recording.addEnd();

        const QStringList expected{
            QStringLiteral("+0.000000 process application=\"a \\\"b\\\"\" pid=\"7\""),
            QStringLiteral("+61.000042 elementAdded #1 Window class=\"MainWindow\" id=\"{w}\""),
            QStringLiteral("+61.000042 elementAdded #2 class=\"QPushButton\" id=\"{b}\""),
            QStringLiteral("+61.000042 childAdded #1 Window child=#2"),
            QStringLiteral("+61.000042 eventRegistered #2 event=\"clicked\""),
            QStringLiteral("+61.000042 geometryChanged #2 left=1 top=2 right=3 bottom=5"),
            QStringLiteral("+61.000042 imageChanged #2 picture=null"),
            QStringLiteral("+61.000042 standardTypeChanged #2 type=\"Button\""),
            QStringLiteral("+61.000042 textChanged #2 Button text=\"O\\nK\""),
            QStringLiteral(
                "+61.000042 transparentNodeChanged #2 Button \"O\\nK\" transparent=false"),
            QStringLiteral("+61.000042 subgraphTransparentChanged #2 Button \"O\\nK\" "
                           "subgraphTransparent=true"),
            QStringLiteral("+61.000042 windowNodeChanged #2 Button \"O\\nK\" window=true"),
            QStringLiteral(
                "+61.000042 usageIncreased #2 Button \"O\\nK\" event=\"clicked\" count=1"),
            QStringLiteral("+61.000042 textChanged #2 Button \"O\\nK\" text=null"),
            QStringLiteral("+61.000042 attributeChanged #2 Button attribute=\"enabled\" "
                           "value=\"false\""),
            QStringLiteral(
                "+61.000042 attributeChanged #2 Button attribute=\"enabled\" value=null"),
            QStringLiteral("+61.000042 log warning \"No %1 \\x1b\""),
            QStringLiteral("+61.000042 log info \"hello\""),
            QStringLiteral("+61.000042 mark \"test one\""),
            QStringLiteral("+61.000042 end messages=15"),
        };
        QCOMPARE(print(recording).join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
    }

    void aPictureIsShownByItsSize() {
        RecordingBuilder recording;
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(Qt::blue);
        recording.addRecord(5, RecordingBuilder::payload(QStringLiteral("{b}"), image));
        const QString line = print(recording).value(0);
        QVERIFY2(line.startsWith(QStringLiteral("+0.000000 imageChanged #1 picture=4x3 bytes=")),
                 qPrintable(line));
    }

    void aTreeIsOneLineWithItsFirstElements() {
        RecordingBuilder recording;
        auto* const root =
            new UIElement(QStringLiteral("W"), StandardType(), QStringLiteral("{r}"));
        root->setTransparentNode(true);
        root->setSubgraphTransparent(true);
        root->setWindowNode(true);
        root->setGeometry(ElementGeometry(QRect(0, 0, 2, 2), true));
        root->increaseUsage(UIEvent(QStringLiteral("shown")));
        root->setAttribute(QStringLiteral("page"), QStringLiteral("1"));
        root->setAttribute(QStringLiteral("enabled"), QStringLiteral("true"));
        for (int i = 0; i < 12; ++i) {
            root->addChild(new UIElement(QStringLiteral("C"),
                                         StandardType(QStringLiteral("Button")),
                                         QStringLiteral("{%1}").arg(i)));
        }
        recording.announce(root);
        QCOMPARE(
            print(recording).value(0),
            QStringLiteral("+0.000000 elementAdded #1 class=\"W\" id=\"{r}\" shown=1 transparent "
                           "subgraphTransparent window left=0 top=0 right=1 bottom=1 "
                           "enabled=\"true\" page=\"1\" with 12 below: #2 Button, #3 Button, #4 "
                           "Button, #5 Button, #6 Button, #7 "
                           "Button, #8 Button, #9 Button, ..."));
    }

    void whatIsDamagedOrUnknownSaysSo() {
        RecordingBuilder recording;
        recording.addRecord(7, QByteArray("??"));
        recording.addRecord(13, QByteArray("??"));
        recording.addMessage(QStringLiteral("other"), {1, -2});
        for (quint8 type = 1; type <= 5; ++type) {
            recording.addFrame(type, QByteArray("?"));
        }
        QCOMPARE(
            print(recording),
            QStringList(
                {QStringLiteral("+0.000000 record damaged \"uiCoverageData\" (4711, 1, 7, <2 "
                                "bytes>)"),
                 QStringLiteral("+0.000000 record unknown \"uiCoverageData\" (4711, 1, 13, <2 "
                                "bytes>)"),
                 QStringLiteral("+0.000000 message \"other\" (1, -2)"),
                 QStringLiteral("+0.000000 process damaged"),
                 QStringLiteral("+0.000000 message damaged"),
                 QStringLiteral("+0.000000 log damaged"), QStringLiteral("+0.000000 mark damaged"),
                 QStringLiteral("+0.000000 end damaged")}));
    }

    void rectanglesOfAnySizeArePrinted() {
        RecordingBuilder recording;
        QRect rect;
        rect.setCoords(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
        recording.addRecord(4, RecordingBuilder::payload(QStringLiteral("{b}"), rect));
        QVERIFY(print(recording).value(0).contains(QStringLiteral("right=2147483647")));
    }
};

QTEST_GUILESS_MAIN(TestMessagePrinter)
#include "tst_messageprinter.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/runloader.h"
#include "testlib/randomrun.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QCryptographicHash>
#include <QTemporaryDir>
#include <QTest>

using TestLib::RecordingBuilder;
using Uicov::Runs::Hit;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;
using Uicov::Runs::RunLoader;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

class TestRunBuilder : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<RecordingBuilder> m_recording;

    Run run(bool withPictures = false) {
        const QString path = m_folder.filePath(QStringLiteral("x.uirec"));
        if (!m_recording->write(path)) {
            return {};
        }
        RunLoader loader(path);
        loader.setTakesPictures(withPictures);
        return loader.load() ? Run() : loader.run();
    }

    UIElement* addButton(UIElement* parent, const QStringList& events) {
        return m_recording->add(parent, QStringLiteral("Button"), QStringLiteral("QPushButton"),
                                QStringLiteral("OK"), events);
    }

    /** "event@context=count ..." */
    static QString hitsOf(const RunElement& element, const Run& run) {
        QStringList hits;
        for (const Hit& hit : element.hits) {
            hits.append(QStringLiteral("%1@%2=%3")
                            .arg(hit.event, run.contexts.at(hit.context))
                            .arg(hit.count));
        }
        return hits.join(QLatin1Char(' '));
    }

    static void click(UIElement* element) {
        element->increaseUsage(UIEvent(QStringLiteral("clicked")));
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_recording = std::make_unique<RecordingBuilder>();
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void theProcessFrameSaysWhatTheRunIsCalled() {
        m_recording->addProcess(
            {{QStringLiteral("run"), QStringLiteral("{7E57AB1E-0000-4000-8000-000000000001}")},
             {QStringLiteral("session"), QStringLiteral("s")},
             {QStringLiteral("application"), QStringLiteral("panel")},
             {QStringLiteral("executable"), QStringLiteral("/bin/panel")},
             {QStringLiteral("qt-version"), QStringLiteral("5.15.8")},
             {QStringLiteral("platform"), QStringLiteral("xcb")},
             {QStringLiteral("locale"), QStringLiteral("de_DE")},
             {QStringLiteral("architecture"), QStringLiteral("arm")},
             {QStringLiteral("started"), QStringLiteral("2024")},
             {QStringLiteral("context"), QStringLiteral("nightly")},
             {QStringLiteral("label.branch"), QStringLiteral("main")},
             {QStringLiteral("label."), QStringLiteral("odd")},
             {QStringLiteral("unheard-of"), QStringLiteral("x")}});
        m_recording->addEnd();
        const Run read = run();
        QCOMPARE(read.uuid, QStringLiteral("7e57ab1e-0000-4000-8000-000000000001"));
        QCOMPARE((QStringList{read.session, read.application, read.executable, read.qtVersion,
                              read.platform, read.locale, read.architecture, read.started}),
                 QString::fromLatin1("s,panel,/bin/panel,5.15.8,xcb,de_DE,arm,2024")
                     .split(QLatin1Char(',')));
        QCOMPARE(read.labels,
                 (QMap<QString, QString>{{QStringLiteral("branch"), QStringLiteral("main")},
                                         {QString(QStringLiteral("")), QStringLiteral("odd")}}));
        QCOMPARE(read.contexts, QStringList{QStringLiteral("nightly")});
        QVERIFY(read.isComplete);
        QCOMPARE(read.partialReason, QString());
    }

    void aRunWithoutNameIsCalledTheSameAtEachReading() {
        addButton(nullptr, {});
        const QString first = run().uuid;
        QCOMPARE(first.size(), 36);
        QCOMPARE(run().uuid, first);
        addButton(nullptr, {});
        QVERIFY(run().uuid != first);
    }

    void countsBelongToTheContextInWhichTheyGrew() {
        m_recording->addProcess({{QStringLiteral("context"), QStringLiteral("ci")}});
        UIElement* const button = addButton(nullptr, {QStringLiteral("clicked")});
        click(button);
        m_recording->addMark(QStringLiteral("login"));
        click(button);
        click(button);
        m_recording->addMark(QStringLiteral("logout"));
        m_recording->addMark(QString());
        click(button);
        m_recording->addMark(QStringLiteral("login"));
        click(button);
        const Run read = run();
        QCOMPARE(read.contexts, QStringList({QStringLiteral("ci"), QStringLiteral("ci|login"),
                                             QStringLiteral("ci|logout")}));
        QCOMPARE(hitsOf(read.element(0), read), QStringLiteral("clicked@ci=2 clicked@ci|login=3"));
    }

    void aProcessFrameBehindMarksNamesTheirContextsToo() {
        UIElement* const button = addButton(nullptr, {QStringLiteral("clicked")});
        m_recording->addMark(QStringLiteral("login"));
        click(button);
        m_recording->addProcess({{QStringLiteral("context"), QStringLiteral("ci")}});
        click(button);
        m_recording->addMark(QString());
        click(button);
        const Run read = run();
        QCOMPARE(read.contexts, QStringList({QStringLiteral("ci"), QStringLiteral("ci|login")}));
        QCOMPARE(hitsOf(read.element(0), read), QStringLiteral("clicked@ci=1 clicked@ci|login=2"));
    }

    void withoutAContextOfTheRunTheMarkAloneIsTheName() {
        UIElement* const button = addButton(nullptr, {QStringLiteral("clicked")});
        m_recording->addMark(QStringLiteral("login"));
        click(button);
        const Run read = run();
        QCOMPARE(read.contexts, QStringList({QString(), QStringLiteral("login")}));
        QCOMPARE(hitsOf(read.element(0), read), QStringLiteral("clicked@login=1"));
    }

    void whatIsAnnouncedWithACountIsCountedOnce() {
        auto* const button = new UIElement(QStringLiteral("QAction"), {}, QStringLiteral("{1}"));
        click(button);
        m_recording->addMark(QStringLiteral("a"));
        m_recording->announce(button);
        auto* const menu = new UIElement(QStringLiteral("QMenu"), {}, QStringLiteral("{2}"));
        menu->addChild(button);
        m_recording->addMark(QStringLiteral("b"));
        m_recording->announce(menu); // tells of the button once more
        click(button);
        const Run read = run();
        QCOMPARE(read.element(0).events, QStringList{QStringLiteral("clicked")});
        QCOMPARE(hitsOf(read.element(0), read), QStringLiteral("clicked@a=1 clicked@b=1"));
    }

    void whatHappenedWithoutBeingAnnouncedIsNotAnEvent() {
        UIElement* const button = addButton(nullptr, {QStringLiteral("shown")});
        click(button);
        auto* const parent = new UIElement(QStringLiteral("W"), {}, QStringLiteral("{p}"));
        parent->addChild(button);
        m_recording->announce(parent); // with all that the button counted
        const Run read = run();
        QCOMPARE(read.element(0).events, QStringList{QStringLiteral("shown")});
        QCOMPARE(hitsOf(read.element(0), read), QStringLiteral("clicked@=1"));
    }

    void elementsKeepAllThatWasSaid() {
        UIElement* const window = m_recording->add(nullptr, QStringLiteral("Window"),
                                                   QStringLiteral("W_QMLTYPE_3"), QString());
        window->setWindowNode(true);
        window->setGeometry(ElementGeometry(QRect(1, 2, 30, 40), true));
        UIElement* const button = addButton(window, {});
        button->setTransparentNode(true);
        button->setSubgraphTransparent(true);
        button->addChild(window); // a ring
        const Run read = run();
        QCOMPARE(read.elements.size(), std::size_t{2});
        const RunElement& first = read.element(0);
        QCOMPARE(first.id, window->id());
        QCOMPARE(first.className, QStringLiteral("W_QMLTYPE_3"));
        QCOMPARE(first.type, QStringLiteral("Window"));
        QVERIFY(first.text.isNull());
        QVERIFY(first.isWindowNode && !first.isTransparentNode && !first.isSubgraphTransparent);
        QCOMPARE(first.place, std::optional<QRect>(QRect(1, 2, 30, 40)));
        QCOMPARE(first.children, QVector<int>{1});
        const RunElement& second = read.element(1);
        QVERIFY(!second.isWindowNode && second.isTransparentNode && second.isSubgraphTransparent);
        QVERIFY(!second.place);
        QCOMPARE(second.parent, 0);
        QCOMPARE(second.children, QVector<int>{0});
        QCOMPARE(second.text, QStringLiteral("OK"));
    }

    void theLastPictureOfAnElementStays() {
        UIElement* const button = addButton(nullptr, {});
        QImage image(3, 2, QImage::Format_RGB32);
        for (const auto colour : {Qt::red, Qt::green}) {
            image.fill(colour);
            button->setImage(image);
        }
        button->setImage(QImage()); // has none at this moment
        QVERIFY(run().element(0).picture.isEmpty());
        const Run read = run(true);
        const QByteArray png = read.pictures.value(read.element(0).picture);
        QCOMPARE(read.pictures.size(), 1);
        QCOMPARE(QCryptographicHash::hash(png, QCryptographicHash::Sha256),
                 read.element(0).picture);
        QCOMPARE(QImage::fromData(png).pixelColor(0, 0), QColor(Qt::green));
    }

    void aPictureInsideAnAnnouncementCounts() {
        auto* const window = new UIElement(QStringLiteral("W"), {}, QStringLiteral("{1}"));
        QImage image(1, 1, QImage::Format_RGB32);
        image.fill(Qt::blue);
        window->setImage(image);
        m_recording->announce(window);
        const Run read = run(true);
        QCOMPARE(QImage::fromData(read.pictures.value(read.element(0).picture)).pixelColor(0, 0),
                 QColor(Qt::blue));
    }

    void aControlHasThePictureOfItsViewThatShowsIt() {
        m_recording->addProcess({{QStringLiteral("extension"), QStringLiteral("libqtuicontrols")}});
        UIElement* const window =
            m_recording->add(nullptr, QStringLiteral("Window"), QStringLiteral("QWidget"));
        UIElement* const button = addButton(window, {});
        UIElement* const other = addButton(window, {});
        QImage image(100, 50, QImage::Format_RGB32);
        window->setGeometry(ElementGeometry(QRect(0, 0, 100, 50), true));
        button->setGeometry(ElementGeometry(QRect(1, 2, 30, 40), true));
        other->setGeometry(ElementGeometry(QRect(50, 2, 30, 40), true));
        image.fill(Qt::red);
        window->setImage(image);
        button->setGeometry(ElementGeometry(QRect(), true)); // scrolled out of sight
        image.fill(Qt::green);
        window->setImage(image);
        const Run read = run(true);
        QCOMPARE(read.pictures.size(), 2);
        const auto colourOf = [&](int element) {
            return QImage::fromData(read.pictures.value(read.element(element).picture))
                .pixelColor(0, 0);
        };
        QCOMPARE(colourOf(0), QColor(Qt::green));
        QCOMPARE(colourOf(1), QColor(Qt::red));
        QCOMPARE(colourOf(2), QColor(Qt::green));
        QCOMPARE(read.element(1).place, std::make_optional(QRect(1, 2, 30, 40)));
        // The places are the same where nobody asks for pictures.
        QCOMPARE(run().element(1).place, std::make_optional(QRect(1, 2, 30, 40)));
        QVERIFY(run().pictures.isEmpty());
    }

    void whatIsMissingMakesTheRunPartial() {
        addButton(nullptr, {});
        m_recording->addRecord(99, QByteArray());
        const Run read = run();
        QVERIFY(!read.isComplete);
        QVERIFY2(read.partialReason.startsWith(QStringLiteral("ended abnormally")) &&
                     read.partialReason.endsWith(QStringLiteral("lost 1 of 2 records")),
                 qPrintable(read.partialReason));
        QCOMPARE(read.messages, qint64{2});
        QCOMPARE(read.messagesLost, qint64{1});
    }

    void aLoneSurrogateIsReplacedWhereverItStands() {
        const QString lone = QString(QChar(0xd800));
        const QString other = QString(QChar(QChar::ReplacementCharacter));
        m_recording->add(nullptr, lone, lone, lone, {lone});
        const Run read = run();
        const RunElement& element = read.element(0);
        QCOMPARE((QStringList{element.type, element.className, element.text, element.events.at(0)}),
                 QStringList({other, other, other, other}));
    }
};

QTEST_GUILESS_MAIN(TestRunBuilder)
#include "tst_runbuilder.moc"

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/replay.h"
#include "recordstream/elementstream.h"
#include "run/runloader.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>

using TestLib::RecordingBuilder;
using Uicov::Recording::Replay;
using Uicov::Runs::RunLoader;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

UIElement* newElement(const char* id) {
    return new UIElement(QStringLiteral("QWidget"), StandardType(), QLatin1String(id));
}

QStringList idsOf(const QList<UIElement*>& elements) {
    QStringList ids;
    for (const UIElement* element : elements) {
        ids.append(element->id());
    }
    return ids;
}

} // namespace

class TestReplay : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<RunLoader> m_loader;

    const Replay& replay(const RecordingBuilder& recording) {
        const QString path = m_folder.filePath(QStringLiteral("x.uirec"));
        if (recording.write(path)) {
            m_loader = std::make_unique<RunLoader>(path);
            m_loader->load();
        }
        return m_loader->replay();
    }

    QStringList elementIds(const Replay& model) {
        QStringList ids;
        for (const UIElement* element : model.elements()) {
            ids.append(element->id());
        }
        return ids;
    }

    QStringList entryIds(const Replay& model) {
        QStringList ids;
        const auto starts = model.entryPoints();
        for (const UIElement* element : starts) {
            ids.append(element->id());
        }
        return ids;
    }

private Q_SLOTS:
    void everyChangeArrives() {
        RecordingBuilder recording;
        UIElement* const element = newElement("{a}");
        UIElement* const child = newElement("{b}");
        recording.announce(element);
        recording.announce(child);
        element->addChild(child);
        element->registerEvent(UIEvent(QStringLiteral("clicked")));
        element->setGeometry(ElementGeometry(QRect(1, 2, 3, 4), true));
        element->setStandardType(StandardType(QStringLiteral("Button")));
        element->setText(QStringLiteral("OK"));
        element->setTransparentNode(true);
        element->setSubgraphTransparent(true);
        element->setWindowNode(true);
        element->increaseUsage(UIEvent(QStringLiteral("clicked")));
        element->setAttribute(QStringLiteral("enabled"), QStringLiteral("true"));
        element->setAttribute(QStringLiteral("enabled"), QStringLiteral("false"));
        element->setAttribute(QStringLiteral("label"), QStringLiteral("Name:"));
        element->setAttribute(QStringLiteral("label"), QString());

        const Replay& model = replay(recording);
        const UIElement* const copy = model.elementById(QStringLiteral("{a}"));
        QVERIFY(copy != nullptr);
        QVERIFY(*copy == *element);
        QCOMPARE(copy->usage(), element->usage());
        QCOMPARE(copy->attributes(), element->attributes());
        QVERIFY(copy->geometry().isValid());
        QCOMPARE(model.recordsWithoutElement(), quint64{0});
        QVERIFY(model.elementById(QStringLiteral("{c}")) == nullptr);
    }

    void aTreeArrivesInOneRecord() {
        RecordingBuilder recording;
        UIElement* const root = newElement("{a}");
        UIElement* const middle = newElement("{b}");
        root->addChild(middle);
        middle->addChild(newElement("{c}"));
        root->addChild(newElement("{d}"));
        recording.announce(root);

        const Replay& model = replay(recording);
        QCOMPARE(elementIds(model), QStringList({QStringLiteral("{a}"), QStringLiteral("{b}"),
                                                 QStringLiteral("{c}"), QStringLiteral("{d}")}));
        QCOMPARE(entryIds(model), QStringList{QStringLiteral("{a}")});
    }

    void recordsAboutElementsOfATreeFindThem() {
        RecordingBuilder recording;
        UIElement* const root = newElement("{a}");
        root->addChild(newElement("{b}"));
        recording.announce(root);
        recording.addRecord(7,
                            RecordingBuilder::payload(QStringLiteral("{b}"), QStringLiteral("x")));
        QCOMPARE(replay(recording).elementById(QStringLiteral("{b}"))->text(), QStringLiteral("x"));
    }

    void anElementAnnouncedTwiceIsThereOnce() {
        RecordingBuilder recording;
        UIElement* const root = newElement("{a}");
        UIElement* const child = newElement("{b}");
        recording.announce(root);
        recording.announce(child);
        root->addChild(child);
        child->registerEvent(UIEvent(QStringLiteral("clicked")));
        child->increaseUsage(UIEvent(QStringLiteral("clicked")));
        root->setText(QStringLiteral("new"));
        recording.addRecord(1, RecordingBuilder::payload(QStringLiteral("{a}"), *root));
        recording.addRecord(1, RecordingBuilder::payload(QStringLiteral("{a}"), *root));

        const Replay& model = replay(recording);
        QCOMPARE(model.elements().size(), std::size_t{2});
        const UIElement* const copy = model.elementById(QStringLiteral("{a}"));
        QCOMPARE(idsOf(copy->children()), QStringList{QStringLiteral("{b}")});
        QCOMPARE(copy->children().first()->usage().value(UIEvent(QStringLiteral("clicked"))), 1);
        QCOMPARE(copy->text(), QStringLiteral("new"));
    }

    /** As when an item that nobody tracked enters a tracked tree with children that are known. */
    void aTreeWithAKnownElementTakesItIn() {
        RecordingBuilder recording;
        UIElement* const known = newElement("{b}");
        recording.announce(known);
        known->increaseUsage(UIEvent(QStringLiteral("shown")));
        UIElement* const root = newElement("{a}");
        root->addChild(known);
        root->addChild(newElement("{c}"));
        recording.announce(root);

        const Replay& model = replay(recording);
        QCOMPARE(model.elements().size(), std::size_t{3});
        QCOMPARE(idsOf(model.elementById(QStringLiteral("{a}"))->children()),
                 QStringList({QStringLiteral("{b}"), QStringLiteral("{c}")}));
        QCOMPARE(entryIds(model), QStringList{QStringLiteral("{a}")});
    }

    void anElementThatStandsTwiceInATreeIsOneElement() {
        RecordingBuilder recording;
        UIElement* const root = newElement("{a}");
        UIElement* const left = newElement("{l}");
        UIElement* const right = newElement("{r}");
        UIElement* const shared = newElement("{s}");
        root->addChild(left);
        root->addChild(right);
        left->addChild(shared);
        right->addChild(shared);
        recording.announce(root);
        const Replay& model = replay(recording);
        QCOMPARE(model.elements().size(), std::size_t{4});
        const UIElement* const copy = model.elementById(QStringLiteral("{s}"));
        QVERIFY(model.elementById(QStringLiteral("{l}"))
                    ->children()
                    .contains(const_cast<UIElement*>(copy)));
        QVERIFY(model.elementById(QStringLiteral("{r}"))
                    ->children()
                    .contains(const_cast<UIElement*>(copy)));
    }

    void twoParentsByLinks() {
        RecordingBuilder recording;
        UIElement* const first = newElement("{a}");
        UIElement* const second = newElement("{b}");
        UIElement* const shared = newElement("{s}");
        for (UIElement* element : {first, second, shared}) {
            recording.announce(element);
        }
        first->addChild(shared);
        second->addChild(shared);
        const Replay& model = replay(recording);
        QCOMPARE(model.elementById(QStringLiteral("{s}"))->parent()->id(), QStringLiteral("{a}"));
        QCOMPARE(idsOf(model.elementById(QStringLiteral("{b}"))->children()),
                 QStringList{QStringLiteral("{s}")});
    }

    void ringsAreReachedAndReleased() {
        RecordingBuilder recording;
        UIElement* const a = newElement("{a}");
        UIElement* const b = newElement("{b}");
        UIElement* const self = newElement("{self}");
        UIElement* const root = newElement("{root}");
        for (UIElement* element : {a, b, self, root}) {
            recording.announce(element);
        }
        a->addChild(b);
        b->addChild(a);
        self->addChild(self);
        const Replay& model = replay(recording);
        QCOMPARE(entryIds(model), QStringList({QStringLiteral("{root}"), QStringLiteral("{a}"),
                                               QStringLiteral("{self}")}));
    }

    void recordsAboutUnknownElementsAreCounted() {
        RecordingBuilder recording;
        recording.announce(newElement("{a}"));
        recording.addRecord(7, RecordingBuilder::payload(QStringLiteral("{x}"), QString()));
        recording.addRecord(
            2, RecordingBuilder::payload(QStringLiteral("{x}"), QStringLiteral("{a}")));
        recording.addRecord(
            2, RecordingBuilder::payload(QStringLiteral("{a}"), QStringLiteral("{x}")));
        const Replay& model = replay(recording);
        QCOMPARE(model.recordsWithoutElement(), quint64{3});
        QCOMPARE(model.elements().size(), std::size_t{1});
    }

    /** An application counts some events without registering them; that is no reason to warn. */
    void aCountOfAnUnregisteredEventIsTakenInSilence() {
        RecordingBuilder recording;
        recording.announce(newElement("{a}"));
        recording.addRecord(11, RecordingBuilder::payload(QStringLiteral("{a}"),
                                                          QStringLiteral("clicked"), qint32{5}));
        const auto usage = replay(recording).elementById(QStringLiteral("{a}"))->usage();
        QCOMPARE(usage.value(UIEvent(QStringLiteral("clicked"))), 5);
    }

    void picturesAreNotKept() {
        RecordingBuilder recording;
        UIElement* const element = newElement("{a}");
        QImage image(10, 10, QImage::Format_RGB32);
        image.fill(Qt::red);
        element->setImage(image);
        recording.announce(element);
        element->setImage(image);
        QVERIFY(replay(recording).elementById(QStringLiteral("{a}"))->image().isNull());
    }

    void aChainOfManyElementsNeitherOverflowsNorLingers() {
        constexpr int depth = 20000;
        RecordingBuilder recording;
        UIElement* above = nullptr;
        for (int i = 0; i < depth; ++i) {
            above = recording.add(above, QString(), QStringLiteral("QWidget"));
        }
        const Replay& model = replay(recording);
        QCOMPARE(model.elements().size(), std::size_t{depth});
        QCOMPARE(model.entryPoints().size(), 1);
        m_loader.reset();
    }
};

QTEST_GUILESS_MAIN(TestReplay)
#include "tst_replay.moc"

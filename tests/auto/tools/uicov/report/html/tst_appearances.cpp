// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragecollector.h"
#include "report/html/appearances.h"
#include "run/run.h"
#include "testlib/testcase.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

using Uicov::Coverage::CoverageCollector;
using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::NodeId;
using Uicov::Report::Html::Appearances;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;

namespace {

QByteArray png(const QSize& size, const QColor& colour) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

int add(Run& run, int parent, const char* type, const char* text,
        const std::optional<QRect>& place = std::nullopt,
        const QByteArray& picture = QByteArray()) {
    RunElement element;
    element.type = QLatin1String(type);
    element.text = QString::fromUtf8(text);
    element.className = QLatin1Char('Q') + element.type;
    element.isWindowNode = element.type == QLatin1String("Window");
    element.events = QStringList{QStringLiteral("shown")};
    element.place = place;
    element.picture = picture; // its own bytes do as a name
    element.parent = parent;
    run.pictures.insert(picture, picture);
    const int index = static_cast<int>(run.elements.size());
    run.elements.push_back(element);
    if (parent >= 0) {
        run.elements[static_cast<std::size_t>(parent)].children.append(index);
    }
    return index;
}

Run windowRun(const QByteArray& picture, int buttons = 1,
              const QRect& place = QRect(0, 0, 40, 30)) {
    Run run;
    run.contexts = QStringList{QString()};
    const int window = add(run, -1, "Window", "Panel", place, picture);
    for (int i = 0; i < buttons; ++i) {
        add(run, window, "Button", i == 0 ? "OK" : "Cancel", QRect(1, 2 + 10 * i, 8, 6));
    }
    return run;
}

} // namespace

class TestAppearances : public TestLib::TestCase {
    Q_OBJECT

    CoverageTree m_tree;
    Appearances m_appearances;

    void take(const Run& run) {
        CoverageCollector(m_tree).collect(run);
        m_appearances.add(run, m_tree);
    }

    Uicov::Coverage::WindowId window() const { return m_tree.windows().first(); }

    NodeId nodeOf(const char* label) const {
        for (const NodeId node : m_tree.nodesOf(window())) {
            if (m_tree.node(node).step.label == QLatin1String(label)) {
                return node;
            }
        }
        return NodeId::None;
    }

private Q_SLOTS:
    void init() {
        m_tree = CoverageTree();
        m_appearances = Appearances();
    }

    void whatWasNeverMetIsEmpty() {
        QVERIFY(m_appearances.surface(NodeId(0)) == nullptr);
        QVERIFY(!m_appearances.element(NodeId(0)).hasPlace);
    }

    void aWindowWithItsPlacesAndPicture() {
        const QByteArray picture = png(QSize(40, 30), Qt::red);
        take(windowRun(picture));
        const Appearances::Surface* const surface = m_appearances.surface(window());
        QVERIFY(surface != nullptr);
        QCOMPARE(surface->png, picture);
        QCOMPARE(surface->bounds, QRect(0, 0, 40, 30));
        QCOMPARE(surface->places.value(nodeOf("OK")), QRect(1, 2, 8, 6));
        QCOMPARE(m_appearances.element(nodeOf("OK")).className, QStringLiteral("QButton"));
        QVERIFY(m_appearances.element(nodeOf("OK")).hasPlace);
    }

    void aNewerPictureReplacesAnOlderOne_data() {
        QTest::addColumn<int>("olderButtons");
        QTest::addColumn<int>("newerButtons");
        QTest::newRow("alike") << 1 << 1;
        QTest::newRow("with less on it") << 2 << 1;
    }

    void aNewerPictureReplacesAnOlderOne() {
        QFETCH(int, olderButtons);
        QFETCH(int, newerButtons);
        take(windowRun(png(QSize(40, 30), Qt::red), olderButtons));
        const QByteArray newer = png(QSize(50, 30), Qt::blue);
        take(windowRun(newer, newerButtons, QRect(0, 0, 50, 30)));
        QCOMPARE(m_appearances.surface(window())->png, newer);
        QCOMPARE(m_appearances.surface(window())->bounds, QRect(0, 0, 50, 30));
        QCOMPARE(m_appearances.surface(window())->places.size(), 1 + newerButtons);
    }

    void aRunWithoutPicturesLeavesAnOlderPicture() {
        const QByteArray picture = png(QSize(40, 30), Qt::red);
        take(windowRun(picture));
        take(windowRun(QByteArray(), 2));
        QCOMPARE(m_appearances.surface(window())->png, picture);
        QVERIFY(!m_appearances.surface(window())->places.contains(nodeOf("Cancel")));
        QVERIFY(m_appearances.element(nodeOf("Cancel")).hasPlace);
    }

    void ofSeveralInstancesInARunTheFullerOneIsKept() {
        Run run = windowRun(png(QSize(40, 30), Qt::red), 2);
        add(run, -1, "Window", "Panel", QRect(0, 0, 40, 30), png(QSize(40, 30), Qt::blue));
        take(run);
        QCOMPARE(m_appearances.surface(window())->png, png(QSize(40, 30), Qt::red));
    }

    void boundsComeFromThePicture_data() {
        QTest::addColumn<QRect>("place");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QRect>("bounds");
        QTest::newRow("fits") << QRect(0, 0, 40, 30) << QSize(40, 30) << QRect(0, 0, 40, 30);
        QTest::newRow("two pixels a point")
            << QRect(0, 0, 40, 30) << QSize(80, 60) << QRect(0, 0, 40, 30);
        QTest::newRow("resized since")
            << QRect(0, 0, 40, 30) << QSize(40, 90) << QRect(0, 0, 40, 90);
        QTest::newRow("in a scene") << QRect(5, 7, 40, 30) << QSize(40, 30) << QRect(5, 7, 40, 30);
        QTest::newRow("no picture") << QRect(5, 7, 40, 30) << QSize() << QRect(5, 7, 40, 30);
    }

    void boundsComeFromThePicture() {
        QFETCH(QRect, place);
        QFETCH(QSize, picture);
        QFETCH(QRect, bounds);
        take(windowRun(picture.isEmpty() ? QByteArray() : png(picture, Qt::red), 1, place));
        QCOMPARE(m_appearances.surface(window())->bounds, bounds);
    }

    void itemsOfAMenuBarAreMovedIntoTheWindow() {
        Run run;
        run.contexts = QStringList{QString()};
        const int panel = add(run, -1, "Window", "Panel", QRect(0, 0, 90, 60));
        const int bar = add(run, panel, "MenuBar", "", QRect(5, 10, 80, 20));
        const int file = add(run, bar, "MenuItem", "File", QRect(3, 1, 30, 18));
        const int menu = add(run, file, "Menu", "", QRect(0, 0, 50, 40));
        add(run, menu, "MenuItem", "Open", QRect(0, 20, 50, 20));
        take(run);
        const Appearances::Surface* const surface = m_appearances.surface(window());
        QCOMPARE(surface->places.value(nodeOf("File")), QRect(8, 11, 30, 18));
        QVERIFY(!surface->places.contains(nodeOf("Open")));
        const NodeId menuNode = m_tree.node(nodeOf("Open")).parent;
        QCOMPARE(m_appearances.surface(menuNode)->places.value(nodeOf("Open")),
                 QRect(0, 20, 50, 20));
        QCOMPARE(Appearances::surfaceOf(m_tree, nodeOf("Open")), menuNode);
        QCOMPARE(Appearances::surfaceOf(m_tree, nodeOf("File")), NodeId(window()));
    }

    void labelsAreComparedAsTheyWereCollected() {
        const Uicov::Runs::NameRules rule =
            Uicov::Runs::NameRules::LabelRule([](const QString& label) { return label.left(1); });
        CoverageCollector collector(m_tree);
        collector.setNameRules(rule);
        m_appearances.setNameRules(rule);
        const Run run = windowRun(png(QSize(40, 30), Qt::red));
        collector.collect(run);
        m_appearances.add(run, m_tree);
        QCOMPARE(nodeOf("OK"), NodeId::None);
        QCOMPARE(m_appearances.element(nodeOf("O")).text, QStringLiteral("OK"));
        QCOMPARE(m_appearances.surface(window())->places.value(nodeOf("O")), QRect(1, 2, 8, 6));
    }

    void aDialogBelongsToTheWindowThatItIsIn() {
        Run run = windowRun(QByteArray());
        const int overlay = add(run, 0, "", "");
        run.elements[static_cast<std::size_t>(overlay)].isTransparentNode = true;
        const int dialog = add(run, overlay, "Window", "Settings");
        const int own = add(run, -1, "Window", "About");
        // Two that stand below one another, as cycles of items can.
        run.elements[static_cast<std::size_t>(own)].parent = own;
        take(run);
        QHash<QString, NodeId> windows;
        for (const auto node : m_tree.windows()) {
            windows.insert(m_tree.node(node).step.label, node);
        }
        QVERIFY(dialog > 0);
        QCOMPARE(m_appearances.owner(windows.value(QStringLiteral("Settings"))),
                 windows.value(QStringLiteral("Panel")));
        QCOMPARE(m_appearances.owner(windows.value(QStringLiteral("Panel"))), NodeId::None);
        QCOMPARE(m_appearances.owner(windows.value(QStringLiteral("About"))), NodeId::None);
    }

    void anItemOfAMenuBarWithoutPlaceHasNone() {
        Run run;
        run.contexts = QStringList{QString()};
        const int panel = add(run, -1, "Window", "Panel", QRect(0, 0, 90, 60));
        const int bar = add(run, panel, "MenuBar", "");
        add(run, bar, "MenuItem", "File", QRect(3, 1, 30, 18));
        take(run);
        QVERIFY(!m_appearances.element(nodeOf("File")).hasPlace);
    }
};

QTEST_GUILESS_MAIN(TestAppearances)

#include "tst_appearances.moc"

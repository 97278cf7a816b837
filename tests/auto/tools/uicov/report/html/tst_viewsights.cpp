// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrun.h"
#include "coverage/coveragecollector.h"
#include "report/html/appearances.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageCollector;
using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::NodeId;
using Uicov::Report::Html::Appearances;
using Uicov::Report::Html::picturedBounds;
using Uicov::Report::Html::ViewSights;

namespace {

const QSize size(40, 30);
const QRect whole(QPoint(0, 0), size);
const QRect place(1, 2, 8, 6);

} // namespace

class TestViewSights : public TestLib::TestCase {
    Q_OBJECT

    CoverageTree m_tree;
    Appearances m_appearances;

    void take(const ControlsRun& made) {
        CoverageCollector(m_tree).collect(made.run);
        m_appearances.add(made.run, m_tree);
    }

    NodeId nodeOf(const char* label) const {
        for (const NodeId node : m_tree.nodesOf(m_tree.windows().first())) {
            if (m_tree.node(node).step.label == QLatin1String(label)) {
                return node;
            }
        }
        return NodeId::None;
    }

    QVector<ViewSights::Sight> sightsOf(const char* label) const {
        return m_appearances.sights().sights(nodeOf(label));
    }

    QByteArray pictureOfView(const char* label) const {
        const auto view = m_appearances.sights().view(nodeOf(label));
        return view ? view->picture : QByteArray("no view");
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_tree = CoverageTree();
        m_appearances = Appearances();
    }

    void boundsComeFromThePicture_data() {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QRect>("bounds");
        QTest::newRow("fits") << size << whole;
        QTest::newRow("two pixels a point") << 2 * size << whole;
        QTest::newRow("another shape") << QSize(50, 30) << QRect(0, 0, 50, 30);
    }

    void boundsComeFromThePicture() {
        QFETCH(QSize, picture);
        QFETCH(QRect, bounds);
        QCOMPARE(picturedBounds(ControlsRun::striped(picture, 2), whole), bounds);
        QCOMPARE(picturedBounds(QByteArray(), whole), whole);
    }

    void aViewAndItsControl() {
        const QByteArray png = ControlsRun::striped(size, 2);
        ControlsRun made;
        const int window = made.add(-1, "Window", "Panel", whole, png);
        made.use(made.add(window, "Button", "OK", place, png));
        take(made);
        QCOMPARE(pictureOfView("Panel"), png);
        QCOMPARE(sightsOf("OK").size(), 1);
        QCOMPARE(sightsOf("OK").first().place, place);
        QVERIFY(sightsOf("OK").first().isUsed);
        QCOMPARE(m_appearances.sights().picture(png)->png, png);
        QCOMPARE(m_appearances.sights().picture(png)->bounds, whole);
        QVERIFY(!m_appearances.sights().view(nodeOf("OK")));
    }

    void anOlderPictureIsKeptForWhatIsOnItAlone() {
        const QByteArray older = ControlsRun::striped(QSize(80, 20), 2);
        const QByteArray newer = ControlsRun::striped(2 * size, 4);
        ControlsRun made;
        const int window = made.add(-1, "Window", "Panel", whole, newer);
        made.run.pictures.insert(older, older);
        made.add(window, "Button", "OK", place, older);
        take(made);
        QCOMPARE(pictureOfView("Panel"), newer);
        QCOMPARE(sightsOf("OK").first().picture, older);
        // As many pixels a point as the newest has.
        QCOMPARE(m_appearances.sights().picture(older)->bounds, QRect(0, 0, 40, 10));
    }

    void aPictureThatNobodyNeedsIsDropped() {
        const QByteArray older = ControlsRun::striped(size, 2);
        const QByteArray newer = ControlsRun::striped(size, 4);
        for (const QByteArray& png : {older, newer}) {
            ControlsRun made;
            const int window = made.add(-1, "Window", "Panel", whole, png);
            made.add(window, "Button", "OK", place, png);
            take(made);
        }
        QVERIFY(m_appearances.sights().picture(older) == nullptr);
        QCOMPARE(sightsOf("OK").first().picture, newer);
    }

    void whatANewerRunDoesNotPictureStaysAsItWas() {
        const QByteArray older = ControlsRun::striped(size, 2);
        ControlsRun first;
        const int window = first.add(-1, "Window", "Panel", whole, older);
        first.add(window, "Button", "OK", place, older);
        take(first);
        ControlsRun second;
        second.add(second.add(-1, "Window", "Panel", whole), "Button", "OK", QRect(5, 5, 5, 5));
        take(second);
        QCOMPARE(pictureOfView("Panel"), older);
        QCOMPARE(sightsOf("OK").first().place, place);
    }

    void ofSeveralInstancesTheFullerOneIsShownWithItsOwnPlaces() {
        const QByteArray fuller = ControlsRun::striped(size, 2);
        const QByteArray emptier = ControlsRun::striped(size, 4);
        ControlsRun made;
        for (const QByteArray& png : {emptier, fuller, emptier}) {
            const int window = made.add(-1, "Window", "Panel", whole, png);
            made.add(window, "Button", "OK", png == fuller ? place : QRect(9, 9, 9, 9), png);
            if (png == fuller) {
                made.add(window, "Button", "Cancel", place, png);
                made.add(window, "Button", "Help", place, png);
                made.add(window, "Button", "Apply", place, png);
            }
        }
        take(made);
        QCOMPARE(pictureOfView("Panel"), fuller);
        QCOMPARE(sightsOf("OK").first().picture, fuller);
        QCOMPARE(sightsOf("OK").first().place, place);
    }

    void aGroupHasAllItsMembers() {
        const QByteArray png = ControlsRun::striped(size, 2);
        ControlsRun made;
        const int window = made.add(-1, "Window", "Panel", whole, png);
        for (const char* const name : {"one", "two", "three"}) {
            const int row = made.add(window, "Button", name, place, png);
            made.set(row, Uicov::Runs::AttributeName::group(), "Row");
            if (name[1] == 'w') {
                made.use(row);
            }
        }
        take(made);
        QStringList names;
        const QVector<ViewSights::Sight> members = sightsOf("Row");
        for (const ViewSights::Sight& member : members) {
            names.append(member.name + (member.isUsed ? QStringLiteral("!") : QString()));
        }
        QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("one two! three"));
    }
};

QTEST_GUILESS_MAIN(TestViewSights)
#include "tst_viewsights.moc"

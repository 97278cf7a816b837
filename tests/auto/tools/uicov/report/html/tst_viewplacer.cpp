// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrun.h"
#include "coverage/coverageresult.h"
#include "report/html/appearances.h"
#include "report/html/pagemodelbuilder.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Report::Html::Appearances;
using Uicov::Report::Html::PageModel;
using Uicov::Report::Html::PageModelBuilder;
using Apart = PageModel::Apart;
using SurfaceId = PageModel::SurfaceId;

namespace {

const QSize size(80, 60);
const QRect whole(QPoint(0, 0), size);
const QRect pagePlace(20, 10, 40, 40);

PageModel modelOf(const QVector<ControlsRun>& runs) {
    const Configuration configuration;
    CoverageResult coverage(configuration);
    Appearances appearances;
    for (const ControlsRun& made : runs) {
        coverage.add(made.run);
        appearances.add(made.run, coverage.tree());
    }
    coverage.finish();
    PageModel model;
    PageModelBuilder(coverage.tree(), appearances).build(model);
    return model;
}

PageModel::Node nodeOf(const PageModel& model, const char* label) {
    for (const PageModel::Node& node : model.nodes) {
        if (node.step.label == QLatin1String(label)) {
            return node;
        }
    }
    return {};
}

QString labelOf(const PageModel& model, SurfaceId surface) {
    return surface == SurfaceId::None ? QStringLiteral("none")
                                      : model.nodes.at(model.surface(surface).node).step.label;
}

/** The window's picture with another one in the place of the page. */
QByteArray windowWith(const QByteArray& page) {
    QImage window = QImage::fromData(ControlsRun::striped(size, 10));
    QPainter painter(&window);
    painter.drawImage(pagePlace.topLeft(), QImage::fromData(page));
    painter.end();
    return ControlsRun::png(window);
}

} // namespace

class TestViewPlacer : public TestLib::TestCase {
    Q_OBJECT

    const QByteArray m_first = ControlsRun::striped(pagePlace.size(), 2);
    const QByteArray m_second = ControlsRun::striped(pagePlace.size(), 5);

    /** A window with two pages in one place, of which it shows the second. */
    ControlsRun pages() const {
        ControlsRun made;
        const int window = made.add(-1, "Window", "Panel", whole, windowWith(m_second));
        made.add(window, "Button", "OK", QRect(1, 1, 8, 6), windowWith(m_second));
        const int first = made.add(window, "Page", "First", pagePlace, m_first);
        made.use(made.add(first, "Button", "A", QRect(22, 12, 8, 6), m_first));
        const int second = made.add(window, "Page", "Second", pagePlace, m_second);
        made.add(second, "Button", "B", QRect(22, 12, 8, 6), m_second);
        return made;
    }

private Q_SLOTS:
    void eachViewIsASurfaceWithWhatBelongsToIt() {
        const PageModel model = modelOf({pages()});
        QStringList surfaces;
        for (const SurfaceId id : model.windows.first().surfaces) {
            surfaces.append(labelOf(model, id));
        }
        QCOMPARE(surfaces.join(QLatin1Char(' ')), QStringLiteral("Panel First Second"));
        QCOMPARE(labelOf(model, nodeOf(model, "OK").surface), QStringLiteral("Panel"));
        QCOMPARE(labelOf(model, nodeOf(model, "A").surface), QStringLiteral("First"));
        QCOMPARE(labelOf(model, nodeOf(model, "B").surface), QStringLiteral("Second"));
        QCOMPARE(nodeOf(model, "A").place, std::make_optional(QRect(22, 12, 8, 6)));
        const PageModel::Surface& page = model.surface(nodeOf(model, "A").home);
        QCOMPARE(page.bounds, pagePlace);
        QCOMPARE(labelOf(model, page.above), QStringLiteral("Panel"));
        QCOMPARE(page.totals.elements, 1);
        QCOMPARE(page.totals.used, 1);
        QCOMPARE(model.surface(nodeOf(model, "OK").home).totals.elements, 1);
    }

    void theWindowShowsThePageThatIsOnItsPicture() {
        const PageModel model = modelOf({pages()});
        const PageModel::Surface& window = model.surface(nodeOf(model, "Panel").home);
        QCOMPARE(window.shows.size(), 1);
        QCOMPARE(labelOf(model, window.shows.first()), QStringLiteral("Second"));
    }

    void aPictureThatShowsNoPageHasNone() {
        ControlsRun made = pages();
        const QByteArray other = windowWith(ControlsRun::striped(pagePlace.size(), 9));
        made.run.pictures.insert(other, other);
        made.element(0).picture = other;
        QVERIFY(modelOf({made}).surfaces.first().shows.isEmpty());
    }

    void whatIsOnlyOnAnOlderPictureHasASurfaceForThat() {
        ControlsRun made = pages();
        const QByteArray older = ControlsRun::striped(pagePlace.size(), 3);
        made.run.pictures.insert(older, older);
        made.element(3).picture = older;
        const PageModel model = modelOf({made});
        const PageModel::Node node = nodeOf(model, "A");
        QVERIFY(node.surface != node.home);
        QVERIFY(model.surface(node.surface).isOlder);
        QCOMPARE(labelOf(model, node.surface), QStringLiteral("First"));
        QCOMPARE(model.picture(model.surface(node.surface).picture).png, older);
        QCOMPARE(model.windows.first().surfaces.size(), 4);
    }

    void whatIsOnNoPictureIsApart_data() {
        QTest::addColumn<QRect>("place");
        QTest::addColumn<int>("apart");
        QTest::newRow("never placed") << QRect() << static_cast<int>(Apart::NeverPlaced);
        QTest::newRow("placed by a use alone")
            << QRect(1, 1, 8, 6) << static_cast<int>(Apart::ElsewhereThen);
    }

    void whatIsOnNoPictureIsApart() {
        QFETCH(QRect, place);
        QFETCH(int, apart);
        ControlsRun made = pages();
        made.add(0, "Button", "X", place.isNull() ? std::nullopt : std::make_optional(place));
        const PageModel::Node node = nodeOf(modelOf({made}), "X");
        QVERIFY(!node.place);
        QCOMPARE(static_cast<int>(node.apart), apart);
    }

    void aViewThatNobodySawIsThereWithWhatOpensIt() {
        ControlsRun made = pages();
        const int dialog = made.add(-1, "Dialog", "Settings");
        made.element(dialog).hits.clear();
        made.element(dialog).id = QStringLiteral("7");
        made.add(dialog, "Button", "Close");
        made.set(1, Uicov::Runs::AttributeName::opens(), "7");
        const PageModel model = modelOf({made});
        const PageModel::Node view = nodeOf(model, "Settings");
        QVERIFY(view.isView);
        QVERIFY(view.isUnopenedMenu);
        const PageModel::Surface& surface = model.surface(view.home);
        QVERIFY(!surface.isSeen);
        QCOMPARE(model.nodes.at(surface.opener).step.label, QStringLiteral("OK"));
        QCOMPARE(nodeOf(model, "OK").opens, view.home);
    }

    void whatWasNeverEnabledIsListedAndNotCounted() {
        ControlsRun made = pages();
        made.element(1).wasEnabled = false;
        made.set(1, Uicov::Runs::AttributeName::enabled(), "false");
        const PageModel model = modelOf({made});
        const PageModel::Node node = nodeOf(model, "OK");
        QVERIFY(node.isUnavailable());
        QVERIFY(node.isListed());
        QVERIFY(!node.isCountable);
        QVERIFY(node.isDisabled);
        QCOMPARE(model.totals.elements, 2);
        QCOMPARE(model.surface(node.home).totals.unavailable, 1);
    }

    void membersOfAGroupAreOutlinedOneByOne() {
        ControlsRun made = pages();
        for (int i = 0; i < 2; ++i) {
            const int row =
                made.add(0, "Button", "row", QRect(1, 20 + 10 * i, 8, 6), windowWith(m_second));
            made.set(row, Uicov::Runs::AttributeName::group(), "Row");
            if (i == 1) {
                made.use(row);
            }
        }
        const PageModel::Node node = nodeOf(modelOf({made}), "Row");
        QCOMPARE(node.members, 2);
        QCOMPARE(node.usedMembers, 1);
        QCOMPARE(node.group.size(), 2);
        QVERIFY(!node.group.at(0).isUsed);
        QVERIFY(node.group.at(1).isUsed);
        QCOMPARE(node.group.at(1).place, std::make_optional(QRect(1, 30, 8, 6)));
    }

    void theWindowThatIsUsedTheLeastComesFirst() {
        ControlsRun made;
        for (const char* const name : {"A", "B", "C"}) {
            const int window = made.add(-1, "Window", name);
            // 1 of 4, 0 of 1, 2 of 4
            const int controls = name[0] == 'B' ? 1 : 4;
            const int used = name[0] == 'A' ? 1 : name[0] == 'B' ? 0 : 2;
            for (int i = 0; i < controls; ++i) {
                const int button = made.add(window, "Button", "x");
                if (i < used) {
                    made.use(button);
                }
            }
        }
        const PageModel model = modelOf({made});
        QStringList names;
        for (const PageModel::Window& window : model.windows) {
            names.append(model.nodes.at(window.node).step.label);
        }
        QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("B A C"));
    }
};

QTEST_GUILESS_MAIN(TestViewPlacer)
#include "tst_viewplacer.moc"

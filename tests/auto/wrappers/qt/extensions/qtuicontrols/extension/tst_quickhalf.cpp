// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/bookofelements.h"
#include "qtuicontrols/core/inputattribution.h"
#include "qtuicontrols/extension/quickhalf.h"
#include "testlib/fakehook.h"
#include "testlib/fakehost.h"
#include "testlib/testcase.h"
#include "tracking/logging.h"
#include "tracking/streamuielementexporter.h"

#include <QFile>
#include <QTest>

#include <dlfcn.h>

using namespace Vorsk::UIControls;

namespace {

bool isLoaded(const char* library) {
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library);
}

/** The half between fakes. */
struct Scene {
    explicit Scene(const char* folder)
        : half({book, attribution, options}, folder) {
        Vorsk::UICoverage::setExtensionHost(&host);
    }
    ~Scene() { Vorsk::UICoverage::setExtensionHost(nullptr); }
    Q_DISABLE_COPY(Scene)

    void deliver() {
        QObject receiver;
        QEvent event(QEvent::User);
        half.handleEvent(&receiver, &event);
    }

    TestLib::FakeExtensionHost host;
    TestLib::FakeHook hook;
    Vorsk::UICoverage::StreamUIElementExporter exporter;
    BookOfElements book{exporter};
    InputAttribution attribution;
    TrackerOptions options;
    QuickHalf half;
};

} // namespace

/** The program is not linked with Qt Quick. The functions depend on their order: what was loaded
 * stays. */
class tst_QuickHalf : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLoadedForAProgramWithoutQtQuick();
    void aMissingHalfIsOneWarning();
    void theHalfComesWithTheNextEventOnceTheProgramHasLoadedQtQuick();
};

void tst_QuickHalf::nothingIsLoadedForAProgramWithoutQtQuick() {
    Scene scene(UICOV_LIBRARIES);
    scene.deliver();
    QVERIFY(dlopen("libQt5Sql.so.5", RTLD_LAZY) != nullptr); // any library may come
    scene.deliver();
    QVERIFY(!isLoaded("libQt5Quick"));
    QVERIFY(!isLoaded("libQt5Qml"));
    QVERIFY(!isLoaded("libqtuicontrolsquick"));
    QCOMPARE(scene.host.fakeLogger.lines, QStringList());
}

void tst_QuickHalf::aMissingHalfIsOneWarning() {
    Scene scene("/nowhere/");
    QVERIFY(dlopen("libQt5Quick.so.5", RTLD_LAZY) != nullptr);
    scene.deliver();
    QVERIFY(dlopen("libQt5Xml.so.5", RTLD_LAZY) != nullptr);
    scene.deliver();
    QCOMPARE(scene.host.fakeLogger.lines.size(), 1);
    const QString line = scene.host.fakeLogger.lines.first();
    QVERIFY2(line.startsWith(QLatin1String(
                 "warning: Qt Quick is not recorded: /nowhere/libqtuicontrolsquick.so:")),
             qPrintable(line));
}

void tst_QuickHalf::theHalfComesWithTheNextEventOnceTheProgramHasLoadedQtQuick() {
    Scene scene(UICOV_LIBRARIES);
    QVERIFY(!isLoaded("libqtuicontrolsquick"));
    scene.deliver();
    QVERIFY(isLoaded("libqtuicontrolsquick"));
    QCOMPARE(scene.host.fakeLogger.lines, QStringList());
}

QTEST_MAIN(tst_QuickHalf)
#include "tst_quickhalf.moc"

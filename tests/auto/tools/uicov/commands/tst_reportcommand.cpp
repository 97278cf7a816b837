#include "testlib/commandrunner.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::RecordingBuilder;

class TestReportCommand : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void look() {
        QTemporaryDir folder;
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording);
        QVERIFY(recording.write(QStringLiteral("/tmp/sample.uirec")));
    }
};

QTEST_GUILESS_MAIN(TestReportCommand)
#include "tst_reportcommand.moc"

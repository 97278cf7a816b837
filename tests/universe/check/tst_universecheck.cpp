// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "check/comparison.h"
#include "check/exceptions.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>

using TestLib::RecordingBuilder;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

constexpr qint64 second = 1000000;

const QString clicked = QStringLiteral("clicked");

} // namespace

/** The check itself, on journals and recordings that are made up: it must be able to fail. */
class TestUniverseCheck : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void whatIsKnownIsFound();
    void aControlThatIsMissingIsAMiss();
    void anElementStandsForOneObjectAtATime();
    void whatIsMadeAnewIsTheSameControl();
    void aGroupStandsForMany();
    void anotherNameIsAnotherControl();
    void aPartIsKnownByItsControl();
    void scrollBarsAreLeftOut();
    void aTabIsKnownByItsText();
    void aViewIsNoControl();

    void aPressThatIsCountedIsRecalled();
    void aPressThatIsNotCountedIsAMiss();
    void aUseIsThatOfOnePress();
    void whatASlotSetIsNoReaction();

    void aUseWithoutInputIsWrong();
    void aUseLongAfterTheInputIsWrong();
    void aSlotThatTakesLongDelaysTheUse();
    void anEntryIsUsedByTheInputOfItsControl();
    void returnPressesTheDefaultButton();
    void anArrowKeyChoosesTheNeighbour_data();
    void anArrowKeyChoosesTheNeighbour();

    void exceptionsAreTakenOut();
    void exceptionsNeedAReason();
    void aBrokenJournalIsRefused();

private:
    void journal(const QByteArray& line) { QVERIFY2(m_journal.takeLine(line), line.constData()); }
    /** An object that is a control and a node of its own. */
    void object(int number, const char* className, const char* name);
    void press(qint64 time, int object, bool reacts);
    UIElement* control(const char* type, const char* className, const char* text);
    void use(UIElement* element, qint64 time, const QString& event = clicked);
    Comparison compare();

    QTemporaryDir m_folder;
    JournalFile m_journal;
    ControlsRecording m_recording;
    std::unique_ptr<RecordingBuilder> m_builder;
    UIElement* m_window = nullptr;
};

void TestUniverseCheck::init() {
    TestCase::init();
    m_journal = JournalFile();
    m_recording = ControlsRecording();
    m_builder = std::make_unique<RecordingBuilder>();
    m_builder->addProcess({{QLatin1String(RecordingFormat::Key::clock), QStringLiteral("0")}});
    m_window = m_builder->add(nullptr, QStringLiteral("Window"), QStringLiteral("QWidget"));
}

void TestUniverseCheck::object(int number, const char* className, const char* name) {
    journal(
        QByteArray(
            R"({"k":"object","o":%1,"class":"%2","bases":["QAbstractButton"],"names":["%3"],"chain":[%1]})")
            .replace("%1", QByteArray::number(number))
            .replace("%2", className)
            .replace("%3", name));
    journal(
        QByteArray(R"({"k":"node","n":%1,"o":%1,"own":true,"role":"Button","name":"","states":[]})")
            .replace("%1", QByteArray::number(number)));
}

void TestUniverseCheck::press(qint64 time, int object, bool reacts) {
    const QByteArray number = QByteArray::number(object);
    journal(R"({"k":"step","what":"press","t":)" + QByteArray::number(time) + "}");
    journal(R"({"k":"input","type":"MouseButtonPress","t":)" + QByteArray::number(time + 1) +
            R"(,"o":)" + number + "}");
    if (reacts) {
        journal(R"({"k":"signal","name":"clicked","in":true,"t":)" + QByteArray::number(time + 2) +
                R"(,"o":)" + number + "}");
    }
}

UIElement* TestUniverseCheck::control(const char* type, const char* className, const char* text) {
    return m_builder->add(m_window, QString::fromLatin1(type), QString::fromLatin1(className),
                          QString::fromLatin1(text), {clicked});
}

void TestUniverseCheck::use(UIElement* element, qint64 time, const QString& event) {
    m_builder->setTime(static_cast<quint64>(time));
    element->increaseUsage(UIEvent(event));
}

Comparison TestUniverseCheck::compare() {
    m_builder->addEnd();
    const QString path = m_folder.filePath(QStringLiteral("made-up.uirec"));
    QString problem;
    if (!m_builder->write(path) || !m_recording.read(path, problem)) {
        qFatal("%s", qPrintable(problem));
    }
    return {m_journal, m_recording};
}

void TestUniverseCheck::whatIsKnownIsFound() {
    object(1, "QPushButton", "&OK");
    control("Button", "QPushButton", "OK");
    const Comparison comparison = compare();
    QCOMPARE(comparison.universe().total, 1);
    QCOMPARE(comparison.universe().good(), 1);
}

void TestUniverseCheck::aControlThatIsMissingIsAMiss() {
    object(1, "QPushButton", "OK");
    control("Slider", "QSlider", "OK");
    const Comparison comparison = compare();
    QCOMPARE(comparison.universe().good(), 0);
    QCOMPARE(comparison.universe().misses.first().className, QStringLiteral("QPushButton"));
    QCOMPARE(comparison.universe().share(), 0.0);
}

void TestUniverseCheck::anElementStandsForOneObjectAtATime() {
    object(1, "QToolButton", "");
    object(2, "QToolButton", "");
    control("Button", "QToolButton", "");
    QCOMPARE(compare().universe().good(), 1);
}

void TestUniverseCheck::whatIsMadeAnewIsTheSameControl() {
    object(1, "QToolButton", "");
    journal(R"({"k":"gone","o":1,"next":2})");
    object(2, "QToolButton", "");
    control("Button", "QToolButton", "");
    QCOMPARE(compare().universe().good(), 2);
}

void TestUniverseCheck::aGroupStandsForMany() {
    object(1, "QToolButton", "");
    object(2, "QToolButton", "");
    control("Button", "QToolButton", "")
        ->setAttribute(QStringLiteral("group"), QStringLiteral("delegate"));
    QCOMPARE(compare().universe().good(), 2);
}

void TestUniverseCheck::anotherNameIsAnotherControl() {
    object(1, "QPushButton", "OK");
    object(2, "QPushButton", "Cancel");
    control("Button", "QPushButton", "OK");
    control("Button", "QPushButton", "OK");
    const Comparison comparison = compare();
    QCOMPARE(comparison.universe().good(), 1);
    QVERIFY(comparison.universe().misses.first().text.contains(QLatin1String("Cancel")));
}

void TestUniverseCheck::aPartIsKnownByItsControl() {
    object(1, "QSpinBox", "Copies");
    object(2, "QLineEdit", "");
    journal(
        R"({"k":"object","o":2,"class":"QLineEdit","bases":["QWidget"],"names":[],"chain":[2,1]})");
    control("SpinBox", "QSpinBox", "Copies");
    QCOMPARE(compare().universe().good(), 2);
}

void TestUniverseCheck::scrollBarsAreLeftOut() {
    object(1, "QScrollBar", "");
    control("Button", "QPushButton", "OK");
    const Comparison comparison = compare();
    QCOMPARE(comparison.universe().total, 0);
    QCOMPARE(comparison.leftOut(), 1);
}

void TestUniverseCheck::aTabIsKnownByItsText() {
    journal(R"({"k":"object","o":1,"class":"QTabBar","bases":[],"names":[],"chain":[1]})");
    for (const char* const name : {"First", "Second"}) {
        journal(QByteArray(R"({"k":"node","n":1,"o":1,"own":false,"role":"PageTab","name":"%1"})")
                    .replace("%1", name));
    }
    control("Tab", "QTabBar", "First");
    const Comparison comparison = compare();
    QCOMPARE(comparison.universe().total, 2);
    QCOMPARE(comparison.universe().good(), 1);
}

void TestUniverseCheck::aViewIsNoControl() {
    object(1, "QPushButton", "OK");
    control("Page", "QPushButton", "OK");
    QCOMPARE(compare().universe().good(), 0);
}

void TestUniverseCheck::aPressThatIsCountedIsRecalled() {
    object(1, "QPushButton", "OK");
    press(1 * second, 1, true);
    use(control("Button", "QPushButton", "OK"), 1 * second + 3);
    const Comparison comparison = compare();
    QCOMPARE(comparison.recall().total, 1);
    QCOMPARE(comparison.recall().good(), 1);
    QCOMPARE(comparison.precision().total, 1);
    QCOMPARE(comparison.precision().good(), 1);
}

void TestUniverseCheck::aPressThatIsNotCountedIsAMiss() {
    object(1, "QPushButton", "OK");
    object(2, "QPushButton", "Cancel");
    press(1 * second, 1, true);
    control("Button", "QPushButton", "OK");
    use(control("Button", "QPushButton", "Cancel"), 1 * second + 3);
    const Comparison comparison = compare();
    QCOMPARE(comparison.recall().good(), 0);
    QCOMPARE(comparison.precision().good(), 0); // and another is used that was given nothing
}

void TestUniverseCheck::aUseIsThatOfOnePress() {
    object(1, "QPushButton", "OK");
    press(1 * second, 1, true);
    press(2 * second, 1, true);
    press(3 * second, 1, false); // nothing came of it
    use(control("Button", "QPushButton", "OK"), 2 * second + 3);
    const Comparison comparison = compare();
    QCOMPARE(comparison.recall().total, 2);
    QCOMPARE(comparison.recall().good(), 1);
}

void TestUniverseCheck::whatASlotSetIsNoReaction() {
    object(1, "QPushButton", "Reset");
    object(2, "QCheckBox", "Bold");
    press(1 * second, 1, true);
    journal(R"({"k":"signal","name":"clicked","in":true,"t":1000003,"o":2})");
    use(control("Button", "QPushButton", "Reset"), 1 * second + 3);
    control("CheckBox", "QCheckBox", "Bold");
    const Comparison comparison = compare();
    QCOMPARE(comparison.recall().total, 1);
    QCOMPARE(comparison.recall().good(), 1);
}

void TestUniverseCheck::aUseWithoutInputIsWrong() {
    object(1, "QPushButton", "OK");
    object(2, "QCheckBox", "Bold");
    press(1 * second, 1, true);
    use(control("Button", "QPushButton", "OK"), 1 * second + 3);
    use(control("CheckBox", "QCheckBox", "Bold"), 1 * second + 4);
    const Comparison comparison = compare();
    QCOMPARE(comparison.precision().total, 2);
    QCOMPARE(comparison.precision().good(), 1);
    QCOMPARE(comparison.precision().misses.first().className, QStringLiteral("QCheckBox"));
}

void TestUniverseCheck::aUseLongAfterTheInputIsWrong() {
    object(1, "QPushButton", "OK");
    object(2, "QPushButton", "Cancel");
    press(1 * second, 1, true);
    press(5 * second, 2, true);
    press(6 * second, 2, true);
    UIElement* const button = control("Button", "QPushButton", "OK");
    use(button, 1 * second + 3);
    use(button, 6 * second + 3);
    QCOMPARE(compare().precision().good(), 0);
}

void TestUniverseCheck::aSlotThatTakesLongDelaysTheUse() {
    object(1, "QPushButton", "OK");
    object(2, "QPushButton", "Cancel");
    press(1 * second, 1, false);
    press(3 * second, 2, false);
    press(5 * second, 2, false);
    use(control("Button", "QPushButton", "OK"), 9 * second);
    QCOMPARE(compare().precision().good(), 0);
    journal(R"({"k":"signal","name":"clicked","in":false,"t":9000001,"o":1})");
    QCOMPARE(compare().precision().good(), 1);
}

void TestUniverseCheck::anEntryIsUsedByTheInputOfItsControl() {
    object(1, "QComboBox", "Style");
    press(1 * second, 1, true);
    UIElement* const box = control("ComboBox", "QComboBox", "Style");
    UIElement* const entry =
        m_builder->add(box, QStringLiteral("Option"), QStringLiteral("QStandardItemModel"),
                       QStringLiteral("Fusion"), {QStringLiteral("chosen")});
    use(entry, 1 * second + 3, QStringLiteral("chosen"));
    QCOMPARE(compare().precision().good(), 1);
}

void TestUniverseCheck::returnPressesTheDefaultButton() {
    object(1, "QPushButton", "OK");
    journal(
        R"({"k":"object","o":2,"class":"Settings","bases":["QDialog"],"names":[],"chain":[2]})");
    journal(R"({"k":"step","what":"key","t":1000000})");
    journal(R"({"k":"input","type":"KeyPress","t":1000001,"o":2,"key":16777220})");
    use(control("Button", "QPushButton", "OK"), 1 * second + 3);
    QCOMPARE(compare().precision().good(), 1);
}

void TestUniverseCheck::anArrowKeyChoosesTheNeighbour_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("isRight");
    QTest::newRow("left") << int(Qt::Key_Left) << true;
    QTest::newRow("down") << int(Qt::Key_Down) << true;
    QTest::newRow("space") << int(Qt::Key_Space) << false;
}

void TestUniverseCheck::anArrowKeyChoosesTheNeighbour() {
    QFETCH(int, key);
    object(1, "QRadioButton", "Portrait");
    object(2, "QRadioButton", "Landscape");
    journal(R"({"k":"step","what":"key","t":1000000})");
    journal(R"({"k":"input","type":"KeyPress","t":1000001,"o":1,"key":)" + QByteArray::number(key) +
            "}");
    control("RadioButton", "QRadioButton", "Portrait");
    use(control("RadioButton", "QRadioButton", "Landscape"), 1 * second + 3);
    QTEST(compare().precision().good() == 1, "isRight");
}

void TestUniverseCheck::exceptionsAreTakenOut() {
    object(1, "QPushButton", "OK");
    object(2, "Extension", "");
    control("Slider", "QSlider", "");
    Exceptions exceptions;
    QVERIFY(exceptions.takeLine(QStringLiteral("universe calc Extension is never seen")));
    const Comparison comparison = compare();
    const auto rest = exceptions.without(comparison.universe(), QStringLiteral("calc"));
    QCOMPARE(rest.total, 1);
    QCOMPARE(rest.misses.size(), 1);
    QCOMPARE(exceptions.without(comparison.universe(), QStringLiteral("edit")).total, 2);
}

void TestUniverseCheck::exceptionsNeedAReason() {
    Exceptions exceptions;
    QVERIFY(exceptions.takeLine(QStringLiteral("# a comment")));
    QVERIFY(!exceptions.takeLine(QStringLiteral("universe * Extension")));
    QVERIFY(!exceptions.takeLine(QStringLiteral("coverage * Extension is never seen")));
}

void TestUniverseCheck::aBrokenJournalIsRefused() {
    JournalFile broken;
    QVERIFY(!broken.takeLine("{\"k\":\"nod"));
    QVERIFY(!broken.takeLine("{\"k\":\"other\"}"));
    QString problem;
    QVERIFY(!broken.read(m_folder.filePath(QStringLiteral("missing")), problem));
    QVERIFY(problem.contains(QLatin1String("missing")));
}

QTEST_GUILESS_MAIN(TestUniverseCheck)
#include "tst_universecheck.moc"

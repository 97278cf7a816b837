// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

using namespace TestLib;

namespace {

/** As editors are that draw and lay out their text themselves. */
class OwnEditor : public QAbstractScrollArea {
    Q_OBJECT
    Q_PROPERTY(bool readOnly MEMBER m_isReadOnly)

public Q_SLOTS:
    void paste() { append(); }
    void append() { Q_EMIT textChanged(); }

Q_SIGNALS:
    void textChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->text().isEmpty()) {
            QAbstractScrollArea::keyPressEvent(event);
        } else {
            append();
        }
    }

private:
    bool m_isReadOnly = false;
};

} // namespace

class tst_TextUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatACompleterPutsInIsEdited_data();
    void whatACompleterPutsInIsEdited();
    void theButtonThatClearsEdits();
    void aPasswordIsEdited();
    void theFocusConfirmsNothing();
    void anEditorThatIsNotQts();
    void anEditorThatIsReadOnlyIsNoControl();
    void theMiddleButtonPastes();
    void biggerLettersAreNoEdit();
    void whatTheApplicationPutsIntoTheMenuIsACommand();
    void theMenuOfASpinBoxIsItsOwn();
    void aTextThatTheProgramChangesWhileItIsClicked();
    void aKeySequenceThatTheProgramSetsMeanwhile();
    void aLineEditThatDiesAtReturn();
    void aClientSetsAText();
};

void tst_TextUses::whatACompleterPutsInIsEdited_data() {
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("by the mouse") << true;
    QTest::newRow("by return") << false;
}

void tst_TextUses::whatACompleterPutsInIsEdited() {
    QFETCH(bool, byMouse);
    UsesFixture fixture;
    auto* const line = fixture.add(new QLineEdit, "line");
    auto* const completer = new QCompleter(lines({"alpha", "alps"}), line);
    line->setCompleter(completer);
    fixture.show();
    QCOMPARE(fixture.counted([&] { typeInto(line, text("al")); }), lines({"line edited 2"}));
    QAbstractItemView* const popup = completer->popup();
    QVERIFY(QTest::qWaitFor([&] { return popup->isVisible(); }));
    QCOMPARE(fixture.counted([&] { key(Qt::Key_P); }), lines({"line edited"}));
    const QStringList counted = fixture.counted([&] {
        if (byMouse) {
            click(popup->viewport(), popup->visualRect(popup->model()->index(1, 0)).center());
        } else {
            key(Qt::Key_Down);
            key(Qt::Key_Return);
        }
    });
    QCOMPARE(counted, byMouse ? lines({"line edited"}) : lines({"line confirmed", "line edited"}));
}

void tst_TextUses::theButtonThatClearsEdits() {
    UsesFixture fixture;
    auto* const line = fixture.add(new QLineEdit(text("some text")), "line");
    line->setClearButtonEnabled(true);
    fixture.show();
    auto* const button = line->findChild<QToolButton*>();
    QVERIFY(button != nullptr);
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"line edited"}));
    QVERIFY(line->text().isEmpty());
}

void tst_TextUses::aPasswordIsEdited() {
    UsesFixture fixture;
    auto* const line = fixture.add(new QLineEdit, "line");
    line->setEchoMode(QLineEdit::Password);
    fixture.show();
    QCOMPARE(fixture.counted([&] { typeInto(line, text("s")); }), lines({"line edited"}));
}

void tst_TextUses::theFocusConfirmsNothing() {
    UsesFixture fixture;
    auto* const line = fixture.add(new QLineEdit, "line");
    auto* const other = fixture.add(new QLineEdit, "other");
    fixture.show();
    typeInto(line, text("s"));
    fixture.take();
    QCOMPARE(fixture.counted([&] { click(other); }), QStringList());
    QVERIFY(other->hasFocus());
}

void tst_TextUses::anEditorThatIsNotQts() {
    UsesFixture fixture;
    auto* const editor = fixture.add(new OwnEditor, "editor");
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(editor->viewport(), QPoint(5, 5)); }), QStringList());
    QCOMPARE(fixture.counted([&] { typeInto(editor, text("ab")); }), lines({"editor edited 2"}));
    QCOMPARE(fixture.counted([&] { editor->append(); }), QStringList());
}

void tst_TextUses::anEditorThatIsReadOnlyIsNoControl() {
    UsesFixture fixture;
    auto* const editor = fixture.add(new OwnEditor, "editor");
    editor->setProperty("readOnly", true);
    fixture.show();
    QCOMPARE(fixture.counted([&] { typeInto(editor, text("ab")); }), QStringList());
}

void tst_TextUses::theMiddleButtonPastes() {
    UsesFixture fixture;
    auto* const edit = fixture.add(new QPlainTextEdit, "edit");
    fixture.show();
    // Where there is no selection to paste, another change stands for it.
    connect(edit, &QPlainTextEdit::cursorPositionChanged, this, [] {});
    edit->installEventFilter(this);
    bool isPasted = false;
    class Paster : public QObject {
    public:
        Paster(QPlainTextEdit* to, bool* isDone)
            : m_edit(to)
            , m_isDone(isDone) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::MouseButtonRelease) {
                m_edit->insertPlainText(text("pasted"));
                *m_isDone = true;
            }
            return false;
        }

    private:
        QPlainTextEdit* m_edit;
        bool* m_isDone;
    };
    Paster paster(edit, &isPasted);
    edit->viewport()->installEventFilter(&paster);
    QCOMPARE(fixture.counted([&] { click(edit->viewport(), QPoint(5, 5), Qt::MiddleButton); }),
             lines({"edit edited"}));
    QVERIFY(isPasted);
    // By the left button, whatever changes the text is the program.
    QCOMPARE(fixture.counted([&] { click(edit->viewport(), QPoint(5, 5)); }), QStringList());
}

void tst_TextUses::biggerLettersAreNoEdit() {
    UsesFixture fixture;
    auto* const edit = fixture.add(new QTextEdit(text("text")), "edit");
    fixture.show();
    connect(edit->document(), &QTextDocument::cursorPositionChanged, this, [] {});
    QCOMPARE(fixture.counted([&] {
        edit->zoomIn();
        wheel(edit->viewport(), 1);
    }),
             QStringList());
}

void tst_TextUses::whatTheApplicationPutsIntoTheMenuIsACommand() {
    UsesFixture fixture;
    auto* const edit = fixture.add(new QLineEdit(text("text")), "edit");
    edit->setContextMenuPolicy(Qt::CustomContextMenu);
    fixture.show();
    connect(edit, &QWidget::customContextMenuRequested, this, [&](const QPoint& at) {
        QMenu* const menu = edit->createStandardContextMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addAction(text("Insert date"), edit, [edit] { edit->insert(text("today")); });
        menu->popup(edit->mapToGlobal(at));
    });
    const auto choose = [&](const char* name) {
        askForMenu(edit, QPoint(5, 5));
        QVERIFY(openMenu() != nullptr);
        const QList<QAction*> actions = openMenu()->actions();
        for (QAction* const action : actions) {
            if (action->text().startsWith(text(name))) {
                clickItem(openMenu(), action);
                return;
            }
        }
        QFAIL("no such item");
    };
    QCOMPARE(fixture.counted([&] { choose("Insert date"); }), lines({"Insert date triggered"}));
    edit->selectAll();
    QCOMPARE(fixture.counted([&] { choose("Delete"); }), lines({"edit edited"}));
}

void tst_TextUses::theMenuOfASpinBoxIsItsOwn() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    fixture.show();
    QCOMPARE(fixture.counted([&] {
        const OnMenu choosing([](QMenu* menu) {
            const QList<QAction*> actions = menu->actions();
            for (QAction* const action : actions) {
                if (action->text() == text("&Step up")) {
                    clickItem(menu, action);
                    return;
                }
            }
        });
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                spin->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(spin, &event);
    }),
             lines({"spin changed"}));
    QCOMPARE(spin->value(), 1);
    QCOMPARE(fixture.probe().count(text("Command")), 0);
}

void tst_TextUses::aTextThatTheProgramChangesWhileItIsClicked() {
    UsesFixture fixture;
    auto* const edit = fixture.add(new QPlainTextEdit, "edit");
    fixture.show();
    typeInto(edit, text("ab"));
    fixture.take();
    connect(edit, &QPlainTextEdit::cursorPositionChanged, this, [edit] {
        const QSignalBlocker blocker(edit->document());
        edit->appendPlainText(text("more"));
    });
    QCOMPARE(fixture.counted([&] { click(edit->viewport(), QPoint(2, 5)); }), QStringList());
}

void tst_TextUses::aKeySequenceThatTheProgramSetsMeanwhile() {
    UsesFixture fixture;
    auto* const keys = fixture.add(new QKeySequenceEdit, "keys");
    auto* const others = fixture.add(new QKeySequenceEdit, "others");
    fixture.show();
    keyOn(keys, Qt::Key_F2);
    UsesFixture::runLater([&] {
        others->setKeySequence(QKeySequence(Qt::Key_F7));
        keys->setKeySequence(QKeySequence(Qt::Key_F8));
    });
    QCOMPARE(fixture.take(), QStringList());
    QCOMPARE(fixture.counted([&] {
        QSignalSpy finished(keys, &QKeySequenceEdit::editingFinished);
        keyOn(keys, Qt::Key_F3);
        QVERIFY(finished.wait());
    }),
             lines({"keys edited"}));
}

void tst_TextUses::aLineEditThatDiesAtReturn() {
    UsesFixture fixture;
    auto* const line = fixture.add(new QLineEdit, "line");
    fixture.show();
    typeInto(line, text("a"));
    fixture.take();
    connect(line, &QLineEdit::returnPressed, line, &QObject::deleteLater);
    QCOMPARE(fixture.counted([&] { key(Qt::Key_Return); }), lines({"line confirmed"}));
}

void tst_TextUses::aClientSetsAText() {
    UsesFixture fixture;
    auto* const line = fixture.add(new QLineEdit, "line");
    fixture.show();
    QCOMPARE(fixture.countedByClient([&] { line->setText(text("dictated")); }),
             lines({"line edited"}));
    line->setText(text("by the program"));
    QCOMPARE(fixture.take(), QStringList());
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_TextUses test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_textuses.moc"

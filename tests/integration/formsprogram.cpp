// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Forms of many programs in one, as they are or as their makers might change them: the first
// argument is the change, without one there is none. What each widget and action is, its
// description says, whatever becomes of its names and its place.

#include "forms.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QTest>
#include <QTranslator>

#include <memory>
#include <vector>

namespace {

/** A language in which every text is another. */
class OtherLanguage : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* /*context*/, const char* sourceText,
                      const char* /*disambiguation*/, int /*n*/) const override {
        return QStringLiteral("Übersetzt: ") + QString::fromUtf8(sourceText);
    }
};

template <class Form, class Top>
std::unique_ptr<QWidget> made(const char* program) {
    auto top = std::make_unique<Top>();
    Form form;
    form.setupUi(top.get());
    // Each is the only one of its program, and all are in one here.
    top->setObjectName(QString::fromLatin1(program) + top->objectName());
    return top;
}

std::vector<std::unique_ptr<QWidget>> allForms() {
    std::vector<std::unique_ptr<QWidget>> forms;
#define UICOV_FORM(form, top, program) forms.push_back(made<Ui::form, top>(program));
    UICOV_FORMS
#undef UICOV_FORM
    return forms;
}

void describe(QWidget& form) {
    int number = 0;
    const QList<QWidget*> widgets = form.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        widget->setWhatsThis(QStringLiteral("%1 %2").arg(form.objectName()).arg(++number));
    }
    const QList<QAction*> actions = form.findChildren<QAction*>();
    for (QAction* action : actions) {
        action->setWhatsThis(QStringLiteral("%1 %2").arg(form.objectName()).arg(++number));
    }
}

/** The text property of every third widget and action says something more. */
void rename(QWidget& form) {
    constexpr int third = 3;
    int number = 0;
    const QList<QObject*> objects = form.findChildren<QObject*>();
    for (QObject* object : objects) {
        const QVariant text = object->property("text");
        const bool isCaption = object->inherits("QAbstractButton") || object->inherits("QLabel") ||
                               object->inherits("QAction");
        if (isCaption && !text.toString().isEmpty() && ++number % third == 0) {
            object->setProperty("text", text.toString() + QStringLiteral(" now"));
        }
    }
}

/** Siblings, and the entries of menus and tool bars, stand the other way round. */
void reorder(QWidget& form) {
    const QList<QWidget*> widgets = form.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const QList<QAction*> actions = widget->actions();
        for (QAction* action : actions) {
            widget->removeAction(action);
        }
        for (int i = actions.size() - 1; i >= 0; --i) {
            widget->addAction(actions.at(i));
        }
        widget->lower(); // to the front of its parent's children
    }
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("forms"));
    const QApplication application(argc, argv);
    const QString change = QCoreApplication::arguments().value(1);
    OtherLanguage language;
    if (change == QLatin1String("translated")) {
        QCoreApplication::installTranslator(&language);
    }
    const std::vector<std::unique_ptr<QWidget>> forms = allForms();
    for (const std::unique_ptr<QWidget>& form : forms) {
        describe(*form);
        if (change == QLatin1String("renamed")) {
            rename(*form);
        } else if (change == QLatin1String("reordered")) {
            reorder(*form);
        }
    }
    // The buttons of tool bars that were filled anew.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // All are known from the moment at which the first is shown.
    for (const std::unique_ptr<QWidget>& form : forms) {
        form->show();
        if (!QTest::qWaitForWindowExposed(form.get())) {
            return 1;
        }
    }
    return 0;
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "operations.h"
#include "qtuicontrols/core/bookofelements.h"
#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/core/inputattribution.h"
#include "qtuicontrols/quick/quicktracker.h"
#include "qtuicontrols/widgets/widgetstracker.h"
#include "tracking/streamuielementexporter.h"

#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPushButton>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVBoxLayout>

#include <memory>
#include <vector>

namespace {

using namespace Vorsk::UIControls;
using Work = Operation::Work;

/** A toolkit's half with what the extension gives to it, handed each event as the extension does.
 */
template <class Tracker>
class Half {
public:
    void deliver(QObject* receiver, QEvent* event) {
        if (m_attribution.begin(receiver, event)) {
            m_tracker.handleEvent(receiver, event);
        }
    }
    void end(QObject* receiver, QEvent* event) { m_attribution.end(receiver, event); }

    void deliver(QObject* receiver, QEvent::Type type) {
        QEvent event(type);
        deliver(receiver, &event);
        end(receiver, &event);
    }

private:
    Vorsk::UICoverage::StreamUIElementExporter m_exporter;
    BookOfElements m_book{m_exporter};
    InputAttribution m_attribution;
    TrackerOptions m_options;
    Tracker m_tracker{TrackerServices{m_book, m_attribution, m_options}};
};

/** A window full of buttons that is not shown, so that its events come from here alone. */
struct Buttons {
    explicit Buttons(int count) {
        auto* const layout = new QVBoxLayout(&window);
        for (int i = 0; i < count; ++i) {
            auto* const button = new QPushButton(QStringLiteral("Button %1").arg(i));
            layout->addWidget(button);
            all.push_back(button);
        }
    } // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the window owns its layout

    /** A press and a release, of which the button is told between its begin and its end. */
    void click(QPushButton* button) {
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const bool isPress = type == QEvent::MouseButtonPress;
            QMouseEvent event(type, QPointF(1, 1), Qt::LeftButton,
                              isPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            half.deliver(button, &event);
            if (isPress) {
                Q_EMIT button->pressed();
            } else {
                Q_EMIT button->released();
                Q_EMIT button->clicked();
            }
            half.end(button, &event);
        }
    }

    Half<WidgetsTracker> half;
    QDialog window;
    std::vector<QPushButton*> all;
};

Work eventsOfNoInterest(int items) {
    const auto buttons = std::make_shared<Buttons>(1);
    return [buttons, items] {
        QEvent event(QEvent::User);
        for (int i = 0; i < items; ++i) {
            buttons->half.deliver(&buttons->window, &event);
        }
    };
}

Work widgetsSurveyed(int items) {
    const auto buttons = std::make_shared<Buttons>(items);
    return [buttons] { buttons->half.deliver(&buttons->window, QEvent::Show); };
}

Work buttonsClicked(int items) {
    const auto buttons = std::make_shared<Buttons>(items);
    buttons->half.deliver(&buttons->window, QEvent::Show);
    return [buttons] {
        for (QPushButton* const button : buttons->all) {
            buttons->click(button);
        }
    };
}

Work widgetsPainted(int items) {
    const auto buttons = std::make_shared<Buttons>(items);
    buttons->half.deliver(&buttons->window, QEvent::Show);
    return [buttons] {
        QPaintEvent event(QRect(0, 0, 1, 1));
        for (QPushButton* const button : buttons->all) {
            buttons->half.deliver(button, &event);
        }
    };
}

/** A window of Qt Quick with areas, made one by one or by a Repeater, that is not shown. */
struct Areas {
    Areas(int count, bool areRows) {
        engine.rootContext()->setContextProperty(QStringLiteral("number"), areRows ? count : 0);
        QQmlComponent rows(&engine);
        rows.setData("import QtQuick 2.9\nItem { Repeater { model: number; MouseArea {} } }",
                     QUrl());
        root.reset(qobject_cast<QQuickItem*>(rows.create()));
        QQmlComponent area(&engine);
        area.setData("import QtQuick 2.9\nMouseArea {}", QUrl());
        for (int i = 0; i < (areRows ? 0 : count); ++i) {
            auto* const item = qobject_cast<QQuickItem*>(area.create());
            item->setParent(root.get());
            item->setParentItem(root.get());
        }
        root->setParentItem(window.contentItem());
    }

    void survey() {
        half.deliver(&window, QEvent::Expose);
        // Before which everything is looked at.
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Shift, Qt::NoModifier);
        half.deliver(&window, &key);
        half.end(&window, &key);
    }

    void destroy() { root.reset(); }

    Half<QuickTracker> half;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> root;
};

Work itemsSurveyed(int items) {
    const auto areas = std::make_shared<Areas>(items, false);
    return [areas] { areas->survey(); };
}

Work rowsSurveyed(int items) {
    const auto areas = std::make_shared<Areas>(items, true);
    return [areas] { areas->survey(); };
}

} // namespace

const std::vector<Operation>& controlsOperations() {
    static const std::vector<Operation> all{
        {"controls: event of no interest", eventsOfNoInterest},
        {"controls: widget surveyed", widgetsSurveyed},
        {"controls: click on a widget", buttonsClicked},
        {"controls: paint of a widget", widgetsPainted},
        {"controls: Qt Quick item surveyed", itemsSurveyed},
        {"controls: row of Qt Quick surveyed", rowsSurveyed},
    };
    return all;
}

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/core/bookofelements.h"
#include "qtuicontrols/core/inputattribution.h"
#include "testlib/fakehook.h"
#include "testlib/fakehost.h"
#include "tracking/streamuielementexporter.h"

#include <QApplication>
#include <QStringList>

#include <memory>

namespace Vorsk {
namespace UIControls {
class QuickTracker;
}
} // namespace Vorsk

namespace TestLib {

/** Hands each delivery to who is interested before the receiver gets it, and says when it is over.
 */
class DeliveringApplication : public QApplication {
    Q_OBJECT

public:
    class Host {
    public:
        virtual void begin(QObject* receiver, QEvent* event) = 0;
        virtual void end(QObject* receiver, QEvent* event) = 0;

    protected:
        ~Host() = default;
    };

    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;

    /** Null for nobody. */
    static void setHost(Host* host);
};

/**
 * The half for Qt Quick with a real element book, played to by the application's deliveries. Keeps
 * a line for each use that was counted: "save clicked", with the objectName of what was used, or
 * with its class and text where it has none, or with its
 * type and text where it stands for no object.
 */
class QuickUsesProbe final : private DeliveringApplication::Host {
public:
    /** Whether the host tells when a delivery has ended. */
    enum class Ends { Told, Untold };

    explicit QuickUsesProbe(Ends ends = Ends::Told);
    ~QuickUsesProbe();

    /** Sorted; since the last call. */
    QStringList takeUses();
    QString attribute(const QObject* object, Vorsk::UIControls::Attribute attribute) const;
    Vorsk::UIControls::ElementBook& book();
    Vorsk::UIControls::Attribution& attribution() { return m_attribution; }

private:
    class Book;

    void begin(QObject* receiver, QEvent* event) override;
    void end(QObject* receiver, QEvent* event) override;

    FakeExtensionHost m_host;
    FakeHook m_hook;
    Vorsk::UICoverage::StreamUIElementExporter m_exporter;
    std::unique_ptr<Book> m_book;
    Vorsk::UIControls::InputAttribution m_attribution;
    Vorsk::UIControls::TrackerOptions m_options;
    std::unique_ptr<Vorsk::UIControls::QuickTracker> m_tracker;
    Ends m_ends;
};

} // namespace TestLib

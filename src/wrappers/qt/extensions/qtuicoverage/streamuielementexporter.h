// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordstream/recordkind.h"
#include "tracking/abstractuielementexporter.h"

#include <vorsk/argumentlist.h>

#include <QByteArray>
#include <QQueue>
#include <QString>

namespace Vorsk {

class Hook;

namespace UICoverage {

/**
 * Turns every change into one binary record and hands each record to the host's hook as one message
 * "uiCoverageData". Records made while there is no hook wait, and leave in order with the first
 * record made once there is one; those still waiting when the exporter dies are dropped. GUI thread
 * only.
 */
class StreamUIElementExporter : public AbstractUIElementExporter {
    Q_OBJECT

public:
    StreamUIElementExporter();
    ~StreamUIElementExporter() override;

private Q_SLOTS:
    void onElementStoreAdded(const Vorsk::UIAbstraction::ElementStore* elementStore) override;
    void onElementAdded(const Vorsk::UIAbstraction::UIElement* element) override;
    void onChildAdded(const Vorsk::UIAbstraction::UIElement* element,
                      const Vorsk::UIAbstraction::UIElement* child) override;
    void onEventRegistered(const Vorsk::UIAbstraction::UIElement* element,
                           Vorsk::UIAbstraction::UIEvent event) override;
    void onGeometryChanged(const Vorsk::UIAbstraction::UIElement* element, QRect geometry) override;
    void onImageChanged(const Vorsk::UIAbstraction::UIElement* element, QImage image) override;
    void onStandardTypeChanged(const Vorsk::UIAbstraction::UIElement* element,
                               Vorsk::UIAbstraction::StandardType standardType) override;
    void onSubgraphTransparentChanged(const Vorsk::UIAbstraction::UIElement* element,
                                      bool isSubgraphTransparent) override;
    void onTextChanged(const Vorsk::UIAbstraction::UIElement* element, QString text) override;
    void onTransparentNodeChanged(const Vorsk::UIAbstraction::UIElement* element,
                                  bool isTransparentNode) override;
    void onUsageIncreased(const Vorsk::UIAbstraction::UIElement* element,
                          Vorsk::UIAbstraction::UIEvent event, int usage) override;
    void onWindowNodeChanged(const Vorsk::UIAbstraction::UIElement* element,
                             bool isWindowNode) override;

protected:
    void onAttributeChanged(const Vorsk::UIAbstraction::UIElement* element, const QString& name,
                            const QString& value) override;

private:
    struct Record {
        RecordStream::RecordKind kind;
        QByteArray payload;
    };

    template <class... Items>
    void exportRecord(RecordStream::RecordKind kind, const UIAbstraction::UIElement* element,
                      const Items&... items);
    void deliver(Record&& record);
    void send(Hook& hook, const Record& record);

    QQueue<Record> m_pending;
    QString m_messageName;
    /** Used for one message after the other, so that each does not need a list of its own. */
    ArgumentList m_arguments;
    /** For the next payload. */
    QByteArray m_memory;
    bool m_isKeptByHost = false;
    bool m_isSending = false;
};

} // namespace UICoverage
} // namespace Vorsk

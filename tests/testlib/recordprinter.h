// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/treeprinter.h"

#include <QHash>
#include <QString>

QT_BEGIN_NAMESPACE
class QByteArray;
class QDataStream;
QT_END_NAMESPACE

namespace TestLib {

/**
 * Prints records as text that a test can hold as its expectation, one line each:
 *
 *   kind 1 elementAdded #1 Button/QPushButton "OK" {clicked=0}
 *   kind 11 usageIncreased #1 clicked=1
 *
 * Ids, which are new in every run, are shown as #1, #2, ... in the order in which this printer
 * meets them, children of a kind 1 record included. Use one printer for a whole sequence.
 */
class RecordPrinter {
public:
    explicit RecordPrinter(TreePrinter::Sizes sizes = TreePrinter::Sizes::Shown);

    /**
     * The record as one line without a newline. A kind that there is not, a payload that cannot be
     * decoded and bytes that are left over give a line that begins with "error: ".
     */
    QString print(int kind, const QByteArray& payload);

    /** The short name of an id; a new one when the id was not met before. */
    QString nameOf(const QString& id);

private:
    QString printItems(int kind, QDataStream& stream);
    QString printElement(QDataStream& stream);

    TreePrinter m_treePrinter;
    QHash<QString, QString> m_names;
};

} // namespace TestLib

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/**
 * The name of the object's class, which its meta-object has in UTF-8. All objects of a class share
 * one text: an application has thousands of objects and few classes. GUI thread only.
 */
QString className(const QObject* object);

} // namespace UICoverage
} // namespace Vorsk

// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QString;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIAbstraction {

/**
 * A random UUID in braces that no other element has, of version 4 as QUuid::createUuid() makes
 * them. That one asks the processor or the system for every bit, which takes a microsecond; this
 * one only for a beginning. GUI thread only.
 */
QString newElementId();

} // namespace UIAbstraction
} // namespace Vorsk

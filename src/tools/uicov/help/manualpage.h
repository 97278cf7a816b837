// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Manual pages in the man macro language, one for the command and one for each verb.
namespace Uicov::Help {

class Vocabulary;
struct Verb;

/** uicov(1): what there is, and what holds for all verbs. */
QString manualOfProgram(const Vocabulary& vocabulary);
/** uicov-VERB(1). */
QString manualOfVerb(const Verb& verb, const Vocabulary& vocabulary);

} // namespace Uicov::Help

#pragma once

#include <QString>

namespace Uicov::Help {

class Vocabulary;
struct Verb;

/** Manual pages in the man macro language, one for the command and one for each verb. */
namespace ManualPage {

/** uicov(1): what there is, and what holds for all verbs. */
QString ofProgram(const Vocabulary& vocabulary);
/** uicov-VERB(1). */
QString ofVerb(const Verb& verb, const Vocabulary& vocabulary);

} // namespace ManualPage

} // namespace Uicov::Help

#pragma once

#include "tests/support/rules/CallAccount.h"
#include "tests/support/rules/Play.h"
#include "tests/support/rules/Tape.h"

#include <string>

namespace test {

/// A step in words.
std::string Told(const Step& step);

/// Holds one run against the rules, which `play` plays; says in words what differs in the result, the steps, the
/// contents or an open transaction, and nothing where all is as prescribed.
std::string Difference(const PlayedCall& call, CallAccount& account, const Tape& tape, const std::string& result,
                       Play& play);

} // namespace test

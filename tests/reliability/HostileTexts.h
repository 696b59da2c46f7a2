#pragma once

#include <string>
#include <vector>

namespace test {

/// A text that a caller without good intentions may send as a request.
struct HostileText {
    const char* name;
    std::string text;
};

/// `piece`, so many times.
std::string Repeat(std::size_t count, std::string_view piece);

/// Texts that no document is read from, each of the kinds of harm that XML is known for, and ill-formed ones.
const std::vector<HostileText>& UnreadableTexts();

/// Texts that are read like any other, however odd: a request of the class ClsInvSubject with one row, whose
/// `cWhCode` is 01 and whose `cInvHead` is 140301.
const std::vector<HostileText>& ReadableTexts();

} // namespace test

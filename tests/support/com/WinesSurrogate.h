#pragma once

#include <string>

namespace test {

/// Wine's surrogate. Wine starts the one of the 32-bit system folder whatever the size of the class, and has none there
/// where its 32-bit half is not installed: the 64-bit one takes its place then. Nor does Wine ever end it; this does.
class WinesSurrogate {
public:
    WinesSurrogate();
    ~WinesSurrogate();
    WinesSurrogate(const WinesSurrogate&) = delete;
    WinesSurrogate& operator=(const WinesSurrogate&) = delete;

    /// Whether it is of this program's size.
    bool IsOfThisSize() const;

private:
    /// The one that Wine starts; empty where there is one system folder.
    std::wstring file_;
};

} // namespace test

#pragma once

#include "server/com/Platform.h"

#include <new>
#include <string_view>
#include <utility>

namespace server {

/// Holds one BSTR and frees it. A null BSTR is the empty text.
class BString {
public:
    BString() noexcept = default;
    /// Copies `text`, embedded zeros included. Throws std::bad_alloc.
    explicit BString(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
        if (!text_)
            throw std::bad_alloc();
    }
    BString(const BString&) = delete;
    BString(BString&& other) noexcept : text_(other.Detach()) {}
    BString& operator=(BString other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    ~BString() { SysFreeString(text_); }

    /// Takes over a BSTR that the caller owns.
    static BString Adopt(BSTR text) noexcept {
        BString string;
        string.text_ = text;
        return string;
    }

    BSTR Get() const noexcept { return text_; }
    std::wstring_view View() const noexcept { return {text_ ? text_ : L"", SysStringLen(text_)}; }
    /// Where a function stores the BSTR that it hands out.
    BSTR* Put() noexcept {
        *this = BString();
        return &text_;
    }
    /// Hands the BSTR to the caller.
    BSTR Detach() noexcept { return std::exchange(text_, nullptr); }

private:
    BSTR text_ = nullptr;
};

} // namespace server

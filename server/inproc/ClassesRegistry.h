#pragma once

#include "server/com/Platform.h"

#include <string>
#include <vector>

namespace server {

/// For whom classes are registered: everybody on the machine, which needs administrator rights, or the current user.
enum class Scope { machine, user };

/// What the registry, or a rule of the registration, refuses.
struct RegistrationError {
    /// What `regsvr32` shows.
    HRESULT result;
    /// In UTF-8; may be empty.
    std::string description;
};

/// The part of the registry that tells of classes: keys and values below Software\Classes of one scope. Paths are
/// relative to that. A value without name, null, is its key's default value; every value is text.
class ClassesRegistry {
public:
    explicit ClassesRegistry(Scope scope) noexcept : scope_(scope) {}

    /// A value's text; empty when there is none. Throws `RegistrationError` when it cannot be read.
    std::wstring Read(const std::wstring& path, const wchar_t* name = nullptr) const;
    /// Whether a key is there. Throws `RegistrationError` when it cannot be opened.
    /// @param view 0, or the flag that asks for the registry of the other size
    bool Exists(const std::wstring& path, REGSAM view = 0) const;
    /// Whether a key is there and has keys below it. Throws as above.
    bool HasKeys(const std::wstring& path) const;

    /// Writes a value, with the keys above it, and remembers what stood there. Throws `RegistrationError`.
    void Write(const std::wstring& path, const wchar_t* name, const std::wstring& text);
    /// Removes a value; one that is not there is no error. Throws `RegistrationError`.
    void RemoveValue(const std::wstring& path, const wchar_t* name);
    /// Removes a key and what is below it; one that is not there is no error. Throws `RegistrationError`.
    void RemoveKey(const std::wstring& path);

    /// Gives back what stood in the registry before the first `Write`.
    void GiveBack() noexcept;

private:
    /// What a `Write` found: a value as it stood, or the topmost key that was not there.
    struct Former {
        std::wstring path;
        bool hadKey;
        std::wstring name;
        bool hadValue;
        DWORD type;
        std::vector<BYTE> data;
    };
    /// The topmost key on the way to `path` that is not there; empty when all are.
    std::wstring FirstMissing(const std::wstring& path) const;
    Former Remembered(const std::wstring& path, const wchar_t* name) const;

    Scope scope_;
    std::vector<Former> former_;
};

} // namespace server

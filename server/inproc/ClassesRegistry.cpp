#include "server/inproc/ClassesRegistry.h"

#include "server/com/ComError.h"

#include <ranges>
#include <utility>

namespace server {

namespace {

HKEY Root(Scope scope) noexcept { return scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

std::wstring Full(const std::wstring& path) { return L"Software\\Classes\\" + path; }

bool IsMissing(LSTATUS status) noexcept { return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND; }

void ThrowIfRefused(LSTATUS status) {
    if (status == ERROR_SUCCESS)
        return;
    const HRESULT result = HRESULT_FROM_WIN32(static_cast<unsigned long>(status));
    throw RegistrationError{result, SystemDescription(result)};
}

void ThrowUnlessMissing(LSTATUS status) {
    if (!IsMissing(status))
        ThrowIfRefused(status);
}

/// Holds an open key and closes it.
class Key {
public:
    Key(HKEY root, const std::wstring& path, REGSAM access) noexcept
        : status_(RegOpenKeyExW(root, path.c_str(), 0, access, &key_)) {}
    ~Key() {
        if (status_ == ERROR_SUCCESS)
            RegCloseKey(key_);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    LSTATUS status() const noexcept { return status_; }
    HKEY Get() const noexcept { return key_; }

private:
    HKEY key_ = nullptr;
    LSTATUS status_;
};

} // namespace

std::wstring ClassesRegistry::Read(const std::wstring& path, const wchar_t* name) const {
    std::wstring text;
    DWORD size = 0;
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        text.resize(size / sizeof(wchar_t));
        status = RegGetValueW(Root(scope_), Full(path).c_str(), name, RRF_RT_REG_SZ, nullptr,
                              text.empty() ? nullptr : text.data(), &size);
        if (status == ERROR_SUCCESS && text.empty())
            status = ERROR_MORE_DATA;
    }
    ThrowUnlessMissing(status);
    return IsMissing(status) ? std::wstring() : std::wstring(text.c_str());
}

bool ClassesRegistry::Exists(const std::wstring& path, REGSAM view) const {
    const Key key(Root(scope_), Full(path), KEY_READ | view);
    ThrowUnlessMissing(key.status());
    return key.status() == ERROR_SUCCESS;
}

bool ClassesRegistry::HasKeys(const std::wstring& path) const {
    const Key key(Root(scope_), Full(path), KEY_READ);
    if (IsMissing(key.status()))
        return false;
    ThrowIfRefused(key.status());
    DWORD keys = 0;
    ThrowIfRefused(RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr));
    return keys != 0;
}

std::wstring ClassesRegistry::FirstMissing(const std::wstring& path) const {
    std::size_t end = 0;
    do {
        end = path.find(L'\\', end + 1);
        if (std::wstring key = path.substr(0, end); !Exists(key))
            return key;
    } while (end != std::wstring::npos);
    return {};
}

ClassesRegistry::Former ClassesRegistry::Remembered(const std::wstring& path, const wchar_t* name) const {
    if (std::wstring missing = FirstMissing(path); !missing.empty())
        return {std::move(missing), false, {}, false, REG_NONE, {}};
    Former former{path, true, name ? name : L"", true, REG_NONE, {}};
    const Key key(Root(scope_), Full(path), KEY_READ);
    ThrowIfRefused(key.status());
    DWORD size = 0;
    LSTATUS status = RegQueryValueExW(key.Get(), name, nullptr, &former.type, nullptr, &size);
    if (status == ERROR_SUCCESS) {
        former.data.resize(size);
        status = RegQueryValueExW(key.Get(), name, nullptr, &former.type, former.data.data(), &size);
    }
    ThrowUnlessMissing(status);
    former.hadValue = status == ERROR_SUCCESS;
    return former;
}

void ClassesRegistry::Write(const std::wstring& path, const wchar_t* name, const std::wstring& text) {
    former_.push_back(Remembered(path, name));
    ThrowIfRefused(RegSetKeyValueW(Root(scope_), Full(path).c_str(), name, REG_SZ, text.c_str(),
                                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

void ClassesRegistry::RemoveValue(const std::wstring& path, const wchar_t* name) {
    ThrowUnlessMissing(RegDeleteKeyValueW(Root(scope_), Full(path).c_str(), name));
}

void ClassesRegistry::RemoveKey(const std::wstring& path) {
    ThrowUnlessMissing(RegDeleteTreeW(Root(scope_), Full(path).c_str()));
}

void ClassesRegistry::GiveBack() noexcept {
    for (const Former& former : former_ | std::views::reverse) {
        const std::wstring path = Full(former.path);
        if (!former.hadKey)
            RegDeleteTreeW(Root(scope_), path.c_str());
        else if (former.hadValue)
            RegSetKeyValueW(Root(scope_), path.c_str(), former.name.c_str(), former.type, former.data.data(),
                            static_cast<DWORD>(former.data.size()));
        else
            RegDeleteKeyValueW(Root(scope_), path.c_str(), former.name.c_str());
    }
    former_.clear();
}

} // namespace server

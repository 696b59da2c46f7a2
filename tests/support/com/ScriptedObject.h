#pragma once

#include "server/inproc/Automation.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// A member of a scripted object, property or method; the one without a name is the default property. What it throws is
/// raised.
using ScriptedMember = std::function<server::VariantHolder(const server::Arguments& arguments)>;
using ScriptedMembers = std::vector<std::pair<std::wstring, ScriptedMember>>;

/// An automation object whose members a test writes. What it lacks is asked of `rest`, when there is one.
server::ComPtr<IDispatch> MakeObject(ScriptedMembers members, server::ComPtr<IDispatch> rest = {});

/// A member with a constant value.
ScriptedMember Returns(host::Value value);
/// A member that raises an error.
ScriptedMember Raises(host::ErrorNumber number, std::string description);

/// Creates the class `progId`, which must be registered, through `create` on this thread as long as it lives.
class ReplacedClass {
public:
    ReplacedClass(const wchar_t* progId, std::function<server::ComPtr<IDispatch>()> create);
    ~ReplacedClass();
    ReplacedClass(const ReplacedClass&) = delete;
    ReplacedClass& operator=(const ReplacedClass&) = delete;

    /// An object of the class as registered.
    server::ComPtr<IDispatch> Original() const;

private:
    server::ComPtr<IClassFactory> original_;
    DWORD registration_ = 0;
};

} // namespace test

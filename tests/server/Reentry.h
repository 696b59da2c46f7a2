#pragma once

#include "server/com/DispatchObject.h"
#include "tests/support/com/ScriptedObject.h"

#include <functional>
#include <memory>
#include <vector>

namespace test {

/// As long as it lives, every component, connection and recordset that this thread makes by its name calls something
/// from inside of each call, as a component does that lets messages be taken.
class Reentry {
public:
    /// @param callBack what is called; not from inside of itself
    explicit Reentry(std::function<void()> callBack);

    /// `object`, which calls back likewise.
    server::DispatchObject Wrap(const server::DispatchObject& object);

private:
    server::ComPtr<IDispatch> Wrap(server::ComPtr<IDispatch> object);
    void CallBack();

    std::function<void()> callBack_;
    bool inside_ = false;
    std::vector<std::unique_ptr<ReplacedClass>> classes_;
};

} // namespace test

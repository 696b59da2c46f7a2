#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace ModPub {

template <class Signature> class FunctionRef;

/// Refers to a callable that outlives it. Unlike a `std::function` it takes no memory, so that nothing fails outside
/// the trap that the callable is handed to.
template <class Result, class... Arguments> class FunctionRef<Result(Arguments...)> {
public:
    template <class Callable>
    requires(!std::is_same_v<Callable, FunctionRef> && std::is_invocable_r_v<Result, const Callable&, Arguments...>)
        FunctionRef(const Callable& callable)
    noexcept
        : callable_(std::addressof(callable)), call_([](const void* object, Arguments... arguments) -> Result {
              return (*static_cast<const Callable*>(object))(std::forward<Arguments>(arguments)...);
          }) {}

    Result operator()(Arguments... arguments) const { return call_(callable_, std::forward<Arguments>(arguments)...); }

private:
    const void* callable_;
    Result (*call_)(const void* object, Arguments... arguments);
};

} // namespace ModPub

#pragma once

#include "host/Error.h"
#include "server/com/Platform.h"

#include <string>

namespace server {

/// The error that a trap sees for a failed call: the run-time's own number where it has one for `result`, the low word
/// of an HRESULT of FACILITY_CONTROL, else the HRESULT as signed number.
host::ErrorNumber ErrorNumberOf(HRESULT result) noexcept;

/// The HRESULT by which `number` travels to a COM client; the opposite of the above.
HRESULT HresultOf(host::ErrorNumber number) noexcept;

/// What the system says of `result`, without the line break behind it; empty when it has no text.
std::string SystemDescription(HRESULT result);

/// Throws `host::Error` when `result` is a failure, with the description of the thread's error information object when
/// there is one, else the run-time's or the system's text.
void ThrowIfFailed(HRESULT result);

/// Throws the error that an automation object raised. Takes over the texts in `exception`; the thread's error
/// information object, which says the same where there is one, is taken away.
[[noreturn]] void ThrowException(EXCEPINFO& exception);

/// Throws error 91.
[[noreturn]] void RaiseObjectNotSet();
/// Throws error 13.
[[noreturn]] void RaiseTypeMismatch();

/// Leaves `error` as the thread's error information object. @return the HRESULT for the client
HRESULT SetErrorObject(const host::Error& error) noexcept;

/// Takes away what an earlier failure left as the thread's error information object, so that no later one is described
/// by it.
void ForgetErrorObject() noexcept;

/// The error being handled, whatever its type, as `host::Error`. To be called inside a catch block.
host::Error CurrentError() noexcept;

} // namespace server

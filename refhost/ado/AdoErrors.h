#pragma once

namespace refhost {

/// ADO's own errors; each throws `host::Error` with ADO's number and message (Microsoft's ADO error reference).
[[noreturn]] void RaiseObjectOpen();
[[noreturn]] void RaiseObjectClosed();
[[noreturn]] void RaiseItemNotFound();
[[noreturn]] void RaiseNoCurrentRecord();
[[noreturn]] void RaiseWrongArguments();
[[noreturn]] void RaiseProviderNotFound();

} // namespace refhost

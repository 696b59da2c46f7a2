#include "refhost/trace/HostCall.h"

/// Whether the calling thread is inside a component's work for itself: 1 or 0. A database layer in the same process
/// that traces what is asked of it tells by this what the host asked and what its caller did.
extern "C" int KovraHostCallActive() { return refhost::HostCall::Active() ? 1 : 0; }

#pragma once

namespace server {

/// Gives back what the run-time would leave behind when the library is unloaded: 74,752 bytes that libstdc++ sets aside
/// for exceptions. To be called last.
void ReleaseRunTime() noexcept;

} // namespace server

#pragma once

#include <filesystem>

namespace test {

/// The word that starts this program as a service; a folder follows it.
inline constexpr const wchar_t* serviceWord = L"--service";
/// Files of that folder: the login and the request that the service reads, and the results that it writes, or the
/// errors in their place.
inline constexpr const wchar_t* serviceLogin = L"login.xml";
inline constexpr const wchar_t* serviceRequest = L"request.xml";
inline constexpr const wchar_t* resultInProcess = L"in-process.xml";
inline constexpr const wchar_t* resultOfSurrogate = L"surrogate.xml";

/// What this program does as a service: it has Kovra.ClsInvSubject import the request twice, by an instance in its own
/// process and by one in the system's surrogate, and stops. @return the program's exit status
int RunImportService(const std::filesystem::path& folder);

} // namespace test

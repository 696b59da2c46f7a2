#include "ModPub/Trap.h"

#include "ModPub/RuntimeErrors.h"

#include <exception>
#include <new>
#include <string>

namespace ModPub {

host::Error PendingError() {
    try {
        throw;
    } catch (const host::Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        constexpr host::ErrorNumber number = host::error_number::outOfMemory;
        return {number, std::string(RuntimeErrorDescription(number))};
    } catch (const std::exception& error) {
        return {host::error_number::unspecified, error.what()};
    } catch (...) {
        return {host::error_number::unspecified, {}};
    }
}

} // namespace ModPub

#include "refhost/ado/AdoErrors.h"

#include "host/Error.h"

namespace refhost {

void RaiseObjectOpen() {
    throw host::Error(host::error_number::objectOpen, "Operation is not allowed when the object is open.");
}

void RaiseObjectClosed() {
    throw host::Error(host::error_number::objectClosed, "Operation is not allowed when the object is closed.");
}

void RaiseItemNotFound() {
    throw host::Error(host::error_number::itemNotFound,
                      "Item cannot be found in the collection corresponding to the requested name or ordinal.");
}

void RaiseNoCurrentRecord() {
    throw host::Error(host::error_number::noCurrentRecord,
                      "Either BOF or EOF is True, or the current record has been deleted. "
                      "Requested operation requires a current record.");
}

void RaiseWrongArguments() {
    constexpr host::ErrorNumber wrongArguments = 3001;
    throw host::Error(wrongArguments,
                      "Arguments are of the wrong type, are out of acceptable range, or are in conflict with one "
                      "another.");
}

void RaiseProviderNotFound() {
    throw host::Error(host::error_number::providerNotFound,
                      "Provider cannot be found. It may not be properly installed.");
}

} // namespace refhost

#pragma once

#include "host/Database.h"
#include "host/VoucherComponents.h"
#include "refhost/trace/Trace.h"

#include <memory>
#include <utility>

namespace refhost {

/// `connection` with everything that is asked of it noted; as it is when there is no trace.
/// @param trace outlives the connection
std::unique_ptr<host::Connection> WithTrace(Trace* trace, std::unique_ptr<host::Connection> connection);

/// `recordset` with everything that it is opened on noted; as it is when there is no trace.
/// @param trace outlives the recordset
std::unique_ptr<host::Recordset> WithTrace(Trace* trace, std::unique_ptr<host::Recordset> recordset);

/// `component` with the texts noted that it is handed to open, for a component that opens them out of our sight. They
/// are noted as the component is bound to open them: static, read-only, as a command's text.
/// @param trace outlives the component; the component is as it is when there is none
std::unique_ptr<host::ZendaT> WithTracedTexts(Trace* trace, std::unique_ptr<host::ZendaT> component);

/// An implementation of `host::Environment`, everything asked of its databases noted: by whoever creates connections
/// and recordsets from it, its own components included.
template <class Environment> class Traced : public Environment {
public:
    /// @param trace where to note, or nullptr; it outlives everything created here
    /// @param arguments what an `Environment` is made from
    template <class... Arguments>
    explicit Traced(Trace* trace, Arguments&&... arguments)
        : Environment(std::forward<Arguments>(arguments)...), trace_(trace) {}

    std::unique_ptr<host::Connection> CreateConnection() override {
        return WithTrace(trace_, Environment::CreateConnection());
    }
    std::unique_ptr<host::Recordset> CreateRecordset() override {
        return WithTrace(trace_, Environment::CreateRecordset());
    }

private:
    Trace* trace_;
};

} // namespace refhost

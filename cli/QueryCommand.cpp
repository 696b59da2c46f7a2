#include "ClsKovraProof/ClsKovraProof.h"
#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "cli/Host.h"
#include "cli/Output.h"
#include "refhost/trace/Trace.h"
#include "refhost/xml/FileText.h"
#include "text/Fault.h"

#include <optional>

#include <fmt/format.h>

namespace cli {
namespace {

/// The conditions of a file: the child elements `condition` of its root.
host::DOMNodeList ReadConditions(const std::string& path, host::DOMDocument& document) {
    if (!document.LoadXML(refhost::xml::ReadXmlFile(path))) {
        throw text::Fault({"'" + path + "' is not well-formed XML", "'" + path + "' 不是格式正确的 XML"});
    }
    host::DOMNodeList conditions = document.DocumentElement()->SelectNodes("*");
    for (const host::DOMNodePtr& condition : conditions) {
        if (condition->NodeName() != "condition") {
            const std::string name = condition->NodeName();
            throw text::Fault(
                {fmt::format("'{}' holds <{}>; conditions are <condition name operation value logic>", path, name),
                 fmt::format("'{}' 中有 <{}>；条件的写法是 <condition name operation value logic>", path, name)});
        }
    }
    return conditions;
}

/// Opens the connection of `instance` as every caller of the class does: by `Transact`, here with a request that
/// imports nothing. Returns the error that `Transact` ended in: the connection may be open by then, as after a failed
/// login into the subsystem.
std::optional<host::Error> OpenConnection(kovra::ClsKovraProof& instance, host::Environment& environment,
                                          host::HostLogin& login) {
    const std::string result = instance.Transact("<qxinterface roottag=\"document\" docid=\"\" proc=\"ADD\"/>", &login);
    const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    document->LoadXML(result);
    const host::DOMNodePtr root = document->DocumentElement();
    if (!root || root->NodeName() == "error") {
        host::EaiHelper& eaiHelper = environment.GetEaiHelper();
        return host::Error(ModPub::ToInt32(eaiHelper.GetAttr(root.get(), "code")),
                           eaiHelper.GetAttr(root.get(), "dsc"));
    }
    return std::nullopt;
}

} // namespace

int RunQuery(const QueryArguments& arguments) {
    std::string envelope = refhost::xml::ReadXmlFile(arguments.envelope);
    std::optional<refhost::Trace> trace;
    if (!arguments.trace.empty()) {
        trace.emplace(arguments.trace, refhost::Trace::Begin::empty,
                      arguments.traceTimes ? refhost::Trace::Times::told : refhost::Trace::Times::untold);
    }
    const std::unique_ptr<Host> host = OpenHost(arguments.host, trace ? &*trace : nullptr);
    host::Environment& environment = host->environment();
    const std::unique_ptr<host::DOMDocument> conditionsFile = environment.CreateDOMDocument();
    host::DOMNodeList conditions;
    if (!arguments.conditions.empty()) {
        conditions = ReadConditions(arguments.conditions, *conditionsFile);
    }
    host::HostLogin& login = host->ReadLogin(arguments.login);
    kovra::ClsKovraProof instance(environment);
    const std::optional<host::Error> failure = OpenConnection(instance, environment, login);
    try {
        // The class always answers false: what it found is in the envelope.
        instance.QueryProc(conditions, envelope);
    } catch (const host::Error& error) {
        if (failure && error.number() == host::error_number::objectClosed) {
            throw host::Error(*failure);
        }
        throw;
    }
    WriteOutput(envelope + "\n");
    if (trace) {
        trace->Flush();
    }
    return exit_status::done;
}

} // namespace cli

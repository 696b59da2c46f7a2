#include "cli/Classes.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Traced.h"
#include "refhost/xml/FileText.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace cli {
namespace {

const ImportClass& FindClass(const std::string& name, const UsageTexts& texts) {
    const std::vector<ImportClass>& classes = ImportClasses();
    const auto found = std::ranges::find(classes, name, &ImportClass::name);
    if (found == classes.end()) {
        throw std::runtime_error(Fill(texts.unknownClass, name, ClassNames()));
    }
    return *found;
}

} // namespace

int RunTransact(const TransactArguments& arguments, Console& console) {
    const ImportClass& importClass = FindClass(arguments.className, console.messages().usage);
    const std::string request = refhost::xml::ReadXmlFile(arguments.request);
    std::optional<refhost::Trace> trace;
    if (!arguments.trace.empty()) {
        trace.emplace(arguments.trace);
    }
    refhost::Traced<refhost::Environment> environment(trace ? &*trace : nullptr);
    refhost::Login login(refhost::xml::ReadXmlFile(arguments.login), environment);
    std::string result = importClass.transact(environment, request, &login, nullptr);
    if (!result.empty()) {
        result.push_back('\n');
    }
    WriteOutput(result);
    if (trace) {
        trace->Flush();
    }
    return exit_status::done;
}

} // namespace cli

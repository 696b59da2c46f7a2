#include "cli/AccountCodes.h"
#include "cli/Commands.h"
#include "import/writing/Template.h"

#include <filesystem>
#include <stdexcept>

namespace cli {

int RunTemplate(const TemplateArguments& arguments, Console& console) {
    const Messages& messages = console.messages();
    const importing::ClassFields& classFields = FieldsOfClass(arguments.className, messages.usage);
    // What someone has filled in is not overwritten.
    if (std::filesystem::exists(std::filesystem::u8path(arguments.output))) {
        throw std::runtime_error(Fill(messages.sheet.templateThere, arguments.output));
    }
    importing::CodeLists codes;
    if (!arguments.login.empty()) {
        codes = CodesOfAccount(arguments.login, classFields);
    }
    WriteTemplate(arguments.output, classFields, codes, console.language());
    console.Say(Fill(messages.sheet.templateWritten, arguments.output));
    return exit_status::done;
}

} // namespace cli

#include "ModPub/XmlText.h"
#include "cli/Commands.h"
#include "cli/Platform.h"

#include <ctime>

#include <fmt/chrono.h>

namespace cli {

int RunLoginInit(const LoginInitArguments& arguments, Console& console) {
    const std::tm today = fmt::localtime(std::time(nullptr));
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<login";
    const auto add = [&xml](std::string_view name, std::string_view value) {
        ModPub::AppendXmlAttribute(xml, name, value);
        xml.append("\n      ");
    };
    add("QxDbName", arguments.connection);
    add("cAcc_Id", arguments.account);
    add("cIYear", arguments.year.empty() ? fmt::format("{:%Y}", today) : arguments.year);
    add("cUserId", arguments.user);
    add("cUserName", arguments.userName.empty() ? arguments.user : arguments.userName);
    add("cUserPassWord", "");
    add("CurDate", fmt::format("{:%Y-%m-%d}", today));
    add("cServer", "localhost");
    add("cSerial", "");
    add("iMonth", std::to_string(today.tm_mon + 1));
    ModPub::AppendXmlAttribute(xml, "iStartPeriod", "1");
    platform::CreatePrivateFile(arguments.file, xml + "/>\n");
    const AccountTexts& texts = console.messages().account;
    console.Say(Fill(texts.loginMade, arguments.file));
    console.Say(Fill(texts.next, "kovra login check --login " + arguments.file));
    return exit_status::done;
}

} // namespace cli

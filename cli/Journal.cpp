#include "cli/Journal.h"

#include "text/Json.h"

namespace cli {

std::string JsonMembers(const LoggedOutcome& outcome) {
    std::string json = "\"row\":" + std::to_string(outcome.row) + ",\"key\":";
    text::AppendJsonString(json, outcome.key);
    json.append(",\"code\":").append(std::to_string(outcome.code)).append(",\"dsc\":");
    text::AppendJsonString(json, outcome.description);
    return json;
}

Journal::Journal(const std::string& path, std::string_view className, std::string_view request) : file_(path) {
    std::string line = "{\"begin\":";
    text::AppendJsonString(line, className);
    line.append(",\"request\":");
    text::AppendJsonString(line, request);
    file_.Add(line.append("}\n"));
}

void Journal::Add(const LoggedOutcome& outcome) { file_.Add("{" + JsonMembers(outcome) + "}\n"); }

void Journal::End(std::string_view how) {
    std::string line = "{\"end\":";
    text::AppendJsonString(line, how);
    file_.Add(line.append("}\n"));
}

} // namespace cli

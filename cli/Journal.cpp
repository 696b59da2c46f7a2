#include "cli/Journal.h"

namespace cli {
namespace {

/// A line that holds an object of what `write` writes.
template <class Write> std::string Line(Write write) {
    std::string line;
    text::JsonWriter json(line);
    json.Open('{');
    write(json);
    json.Close('}');
    return line + "\n";
}

} // namespace

void WriteMembers(text::JsonWriter& json, const LoggedOutcome& outcome) {
    json.Member("row", outcome.row)
        .Member("key", outcome.key)
        .Member("code", outcome.code)
        .Member("dsc", outcome.description);
}

Journal::Journal(const std::string& path, std::string_view className, std::string_view request) : file_(path) {
    file_.Add(Line([&](auto& json) { json.Member("begin", className).Member("request", request); }));
}

void Journal::Add(const LoggedOutcome& outcome) {
    file_.Add(Line([&](auto& json) { WriteMembers(json, outcome); }));
}

void Journal::End(std::string_view how) {
    file_.Add(Line([&](auto& json) { json.Member("end", how); }));
}

} // namespace cli

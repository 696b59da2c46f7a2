#include "tests/support/Import.h"

#include "text/Json.h"

namespace test {
namespace {

std::string Close(std::string line, int error) {
    if (error != 0) {
        line.append(",\"error\":").append(std::to_string(error));
    }
    return line.append("}");
}

std::string Opened(std::string_view sql, std::string_view settings, int error) {
    std::string line = "{\"op\":\"Open\",\"sql\":";
    text::AppendJsonString(line, sql);
    return Close(line.append(settings), error);
}

} // namespace

std::string Request(std::string_view proc, std::string_view rows) {
    std::string request = "<qxinterface roottag=\"row\" docid=\"D\" proc=\"";
    return request.append(proc).append("\">").append(rows).append("</qxinterface>");
}

std::string ResultDocument(std::string_view proc, const std::vector<Outcome>& outcomes) {
    std::string document = "<qxinterface docid=\"D\" proc=\"";
    document.append(proc).append("\"");
    if (outcomes.empty()) {
        return document.append("/>");
    }
    document.append(">");
    for (const Outcome& outcome : outcomes) {
        document.append("<item key=\"").append(outcome.key);
        document.append("\" code=\"").append(std::to_string(outcome.code));
        document.append("\" dsc=\"").append(outcome.description).append("\"/>");
    }
    return document.append("</qxinterface>");
}

std::string Connected(std::string_view connectionString, int error) {
    std::string line = "{\"op\":\"Connect\",\"connection\":";
    text::AppendJsonString(line, connectionString);
    return Close(line.append(",\"user\":\"\",\"password\":\"\",\"options\":-1"), error);
}

std::string LookedUp(std::string_view sql, int error) {
    return Opened(sql, ",\"cursor\":3,\"lock\":1,\"options\":1,\"location\":2", error);
}

std::string LookedUpAtClient(std::string_view sql, int error) {
    return Opened(sql, ",\"cursor\":3,\"lock\":1,\"options\":1,\"location\":3", error);
}

std::string Queried(std::string_view sql, int error) {
    return Opened(sql, ",\"cursor\":3,\"lock\":1,\"options\":-1,\"location\":2", error);
}

std::string Executed(std::string_view sql, int error) {
    std::string line = "{\"op\":\"Execute\",\"sql\":";
    text::AppendJsonString(line, sql);
    return Close(line.append(",\"options\":-1"), error);
}

} // namespace test

#include "cli/LoginFile.h"

#include "host/Environment.h"
#include "os/Files.h"
#include "os/Variable.h"
#include "refhost/xml/FileText.h"
#include "text/ConnectionString.h"
#include "text/Fault.h"
#include "text/SameName.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view connectionString = "QxDbName";
constexpr std::string_view password = "cUserPassWord";

std::string Variable(const std::string& name) {
    std::optional<std::string> value = os::Variable(name);
    if (!value) {
        throw text::Fault({"the environment variable '" + name + "' is not set", "环境变量 '" + name + "' 没有设置"});
    }
    return *std::move(value);
}

std::string FirstLine(const fs::path& path) {
    const std::string text = refhost::xml::ReadTextFile(os::NameOf(path));
    return text.substr(0, text.find_first_of("\r\n"));
}

/// A value as it stands in a connection string.
std::string Enclosed(const std::string& value) {
    if (value.find_first_of(";={}\"' ") == std::string::npos) {
        return value;
    }
    std::string enclosed = "{";
    for (const char c : value) {
        enclosed.append(c == '}' ? 2 : 1, c);
    }
    return enclosed.append("}");
}

/// The text with its `${env:NAME}` and `${file:PATH}` filled in; anything else between braces stays.
std::string WithSecrets(std::string_view text, const fs::path& folder, bool enclosed) {
    constexpr std::string_view open = "${";
    std::string filled;
    while (true) {
        const std::size_t begin = text.find(open);
        const std::size_t colon = text.find(':', begin);
        const std::size_t end = text.find('}', begin);
        if (begin == std::string_view::npos || end == std::string_view::npos || colon > end) {
            return filled.append(text);
        }
        const std::string_view kind = text.substr(begin + open.size(), colon - begin - open.size());
        const std::string name(text.substr(colon + 1, end - colon - 1));
        filled.append(text.substr(0, begin));
        if (kind == "env" || kind == "file") {
            const std::string value = kind == "env" ? Variable(name) : FirstLine(folder / os::PathOf(name));
            filled.append(enclosed ? Enclosed(value) : value);
        } else {
            filled.append(text.substr(begin, end + 1 - begin));
        }
        text.remove_prefix(end + 1);
    }
}

/// The connection string with a relative file of the embedded account database beside the login.
std::string WithLocatedFile(const std::string& text, const fs::path& folder) {
    const std::string provider = text::ConnectionStringValue(text, "Provider").value_or("");
    const std::string file = text::ConnectionStringValue(text, "Data Source").value_or("");
    if (folder.empty() || !text::SameName(provider, "KovraAccount") || file.empty() || file == ":memory:" ||
        os::PathOf(file).is_absolute()) {
        return text;
    }
    return text::WithConnectionStringValue(text, "Data Source", os::NameOf(folder / os::PathOf(file)));
}

} // namespace

std::string ReadLoginXml(const std::string& path, host::Environment& environment) {
    const fs::path folder = path == "-" ? fs::path() : os::PathOf(path).parent_path();
    const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    std::string xml = refhost::xml::ReadXmlFile(path);
    if (!document->LoadXML(xml)) {
        // `refhost::Login` says what is wrong with it.
        return xml;
    }
    const host::DOMNodePtr login = document->DocumentElement();
    if (const auto value = login->GetAttribute(connectionString)) {
        login->SetAttribute(connectionString, WithLocatedFile(WithSecrets(*value, folder, true), folder));
    }
    if (const auto value = login->GetAttribute(password)) {
        login->SetAttribute(password, WithSecrets(*value, folder, false));
    }
    return document->Xml();
}

refhost::Login ReadLogin(const std::string& path, host::Environment& environment) {
    try {
        return {ReadLoginXml(path, environment), environment};
    } catch (const text::Fault& fault) {
        const text::Words reason = fault.words();
        // Reading the file names it already.
        if (reason.english.find(path) != std::string::npos) {
            throw;
        }
        throw text::Fault({"'" + path + "': " + reason.english, "'" + path + "'：" + reason.chinese});
    }
}

} // namespace cli

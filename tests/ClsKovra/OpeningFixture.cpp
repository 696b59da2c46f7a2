#include "tests/ClsKovra/OpeningFixture.h"

#include "tests/support/Paths.h"
#include "text/Json.h"

#include <algorithm>
#include <ostream>

namespace test {
namespace {

/// Notes the outcomes that pass through.
class NotingHelper : public host::EaiHelper {
public:
    NotingHelper(host::EaiHelper& inner, std::vector<Outcome>& outcomes) : inner_(inner), outcomes_(outcomes) {}

    std::string GetAttr(host::DOMNode* element, std::string_view name) override {
        return inner_.GetAttr(element, name);
    }
    std::string GetChildText(const host::DOMNode* node, std::string_view name) override {
        return inner_.GetChildText(node, name);
    }
    std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) override {
        return inner_.MakeErrorResult(code, message, detail);
    }
    std::string MakeResultDoc(std::string_view docid, std::string_view proc) override {
        return inner_.MakeResultDoc(docid, proc);
    }
    void AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                       std::string_view description) override {
        inner_.AddResultItem(resultDocument, key, code, description);
        outcomes_.push_back({std::string(key), code, std::string(description)});
    }

private:
    host::EaiHelper& inner_;
    std::vector<Outcome>& outcomes_;
};

std::string Json(std::string_view text) {
    std::string json;
    text::AppendJsonString(json, text);
    return json;
}

} // namespace

/// The faulty host, which also notes outcomes and messages.
class OpeningTest::Environment : public FaultyEnvironment {
public:
    Environment(OpeningTest& test, refhost::Trace* trace) : FaultyEnvironment(test.MakeFaults(), trace), test_(test) {}

    host::EaiHelper& GetEaiHelper() override {
        if (!helper_) {
            helper_ = std::make_unique<NotingHelper>(FaultyEnvironment::GetEaiHelper(), test_.outcomes);
        }
        return *helper_;
    }
    void ShowMessage(std::string_view text) override { test_.shown.emplace_back(text); }

private:
    OpeningTest& test_;
    std::unique_ptr<host::EaiHelper> helper_;
};

Faults OpeningTest::MakeFaults() const {
    Faults faults;
    faults.statement = beforeStatement_;
    faults.eaiHelper = beforeHelper;
    return faults;
}

OpeningTest::OpeningTest() {
    account.Run(ReadText(SourceFolder() / "tests/scenarios/ClsKovra/setup.sql"));
    account.Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'AA', N'cSysVersion', N'工业')");
}

OpeningTest::~OpeningTest() = default;

std::string OpeningTest::Transact(std::string_view request) {
    outcomes.clear();
    shown.clear();
    refhost::Trace trace((account.folder() / "trace.jsonl").string());
    Environment environment(*this, &trace);
    refhost::Login login(loginXml, environment);
    kovra::ClsKovra instance(environment);
    std::string result = instance.Transact(request, &login);
    if (afterwards) {
        afterwards(instance);
    }
    trace.Flush();
    return result;
}

std::string OpeningTest::Import(std::string_view rows, std::string_view proc) {
    std::string request = R"(<qxinterface roottag="row" docid="D" proc=")";
    return Transact(request.append(proc).append(R"(">)").append(rows).append("</qxinterface>"));
}

Outcome OpeningTest::ImportOne(std::string_view row) {
    Import(row);
    EXPECT_EQ(outcomes.size(), 1U);
    return outcomes.size() == 1 ? outcomes.front() : Outcome{};
}

std::vector<std::string> OpeningTest::Lines() const {
    std::vector<std::string> lines = ReadLines(account.folder() / "trace.jsonl");
    std::erase_if(lines, [](const std::string& line) { return line.find("\"host\":true") != std::string::npos; });
    return lines;
}

std::vector<std::string> OpeningTest::RowLines() const {
    constexpr std::size_t before = 1 + 7;
    std::vector<std::string> lines = Lines();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(before, lines.size())));
    return lines;
}

void OpeningTest::FailStatement(std::string piece, int skip) {
    beforeStatement_ = [piece = std::move(piece), skip](std::string_view sql) mutable {
        if (!refhost::HostCall::Active() && sql.find(piece) != std::string_view::npos && skip-- == 0) {
            throw host::Error(faultNumber, std::string(faultText));
        }
    };
}

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << "{\"" << outcome.key << "\", " << outcome.code << ", \"" << outcome.description << "\"}";
}

std::string Opened(std::string_view sql) {
    return R"({"op":"Open","sql":)" + Json(sql) + R"(,"cursor":3,"lock":1,"options":1,"location":2})";
}

std::string Inserted(std::string_view sql) { return R"({"op":"Execute","sql":)" + Json(sql) + R"(,"options":129})"; }

std::string Failed(std::string line, host::ErrorNumber number) {
    line.pop_back();
    return line + ",\"error\":" + std::to_string(number) + "}";
}

} // namespace test

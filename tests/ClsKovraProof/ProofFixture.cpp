#include "tests/ClsKovraProof/ProofFixture.h"

#include <algorithm>

namespace test {
namespace {

class ScriptedConverter : public host::EaiXmlConverter {
public:
    ScriptedConverter(std::unique_ptr<host::EaiXmlConverter> inner, const ComponentScript& script)
        : inner_(std::move(inner)), script_(script) {}

    void FillHead(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& head, host::Recordset& columns,
                  std::string_view mapping) override {
        EXPECT_EQ(mapping, "EaiProof.Xml");
        EXPECT_EQ(rowTag, "doc");
        inner_->FillHead(rowXml, rowTag, head, columns, mapping);
        if (script_.afterFillHead) {
            script_.afterFillHead(head);
        }
    }
    void FillBody(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& body, host::Recordset& columns,
                  std::string_view mapping) override {
        EXPECT_EQ(mapping, "EaiProof.Xml");
        EXPECT_EQ(rowTag, "doc");
        inner_->FillBody(rowXml, rowTag, body, columns, mapping);
        if (script_.afterFillBody) {
            script_.afterFillBody(body);
        }
    }
    void HeadToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& head) override {
        EXPECT_EQ(mapping, "StoreInOutXmlRs.Xml");
        if (script_.headToXml) {
            script_.headToXml();
        }
        inner_->HeadToXml(document, element, mapping, head);
    }
    void BodyToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& body) override {
        EXPECT_EQ(mapping, "StoreInOutXmlRs.Xml");
        inner_->BodyToXml(document, element, mapping, body);
    }

private:
    std::unique_ptr<host::EaiXmlConverter> inner_;
    const ComponentScript& script_;
};

class ScriptedVoucherService : public host::IaVoucherService {
public:
    ScriptedVoucherService(std::unique_ptr<host::IaVoucherService> inner, const ComponentScript& script)
        : inner_(std::move(inner)), script_(script) {}

    std::shared_ptr<host::VoucherContext> Context(host::HostLogin& login) override { return inner_->Context(login); }
    bool VoucherInit(host::HostLogin& login, std::string& message) override {
        return script_.voucherInit ? script_.voucherInit(message) : inner_->VoucherInit(login, message);
    }
    bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& found, std::string& message,
                            std::string& further) override {
        return script_.getDefaultTemplate ? script_.getDefaultTemplate(voucherType, found, message)
                                          : inner_->GetDefaultTemplate(voucherType, found, message, further);
    }
    void SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                     std::string& message, host::Connection& connection, host::DOMDocument& result) override {
        if (script_.saveVoucher) {
            script_.saveVoucher(voucherType, head, body, message, result);
        } else {
            inner_->SaveVoucher(voucherType, head, body, message, connection, result);
        }
    }

private:
    std::unique_ptr<host::IaVoucherService> inner_;
    const ComponentScript& script_;
};

class ScriptedPreCheck : public host::ProvisionPreCheck {
public:
    explicit ScriptedPreCheck(const ComponentScript& script) : script_(script) {}
    bool Check(host::HostLogin&, std::string& message) override { return script_.preCheck(message); }

private:
    const ComponentScript& script_;
};

} // namespace

std::unique_ptr<host::EaiXmlConverter> ScriptedEnvironment::CreateEaiXmlConverter() {
    return std::make_unique<ScriptedConverter>(FaultyEnvironment::CreateEaiXmlConverter(), script_);
}

std::unique_ptr<host::IaVoucherService> ScriptedEnvironment::CreateIaVoucherService() {
    return std::make_unique<ScriptedVoucherService>(FaultyEnvironment::CreateIaVoucherService(), script_);
}

std::unique_ptr<host::ProvisionPreCheck> ScriptedEnvironment::CreateProvisionPreCheck() {
    if (script_.preCheck) {
        return std::make_unique<ScriptedPreCheck>(script_);
    }
    return FaultyEnvironment::CreateProvisionPreCheck();
}

std::string ProofFixture::Request(std::string_view proc, std::string_view rows) {
    return std::string("<qxinterface roottag=\"doc\" docid=\"r1\" proc=\"")
        .append(proc)
        .append("\">")
        .append(rows)
        .append("</qxinterface>");
}

std::string ProofFixture::Doc(std::string_view number, std::string_view bodyRows, std::string_view moreHeader) {
    return std::string("<doc><header><Deccode>")
        .append(number)
        .append("</Deccode><vouchtype>48</vouchtype>")
        .append(moreHeader)
        .append("</header><body>")
        .append(bodyRows)
        .append("</body></doc>");
}

std::string ProofFixture::Result(std::string_view proc, std::string_view items) {
    return std::string("<qxinterface docid=\"r1\" proc=\"")
        .append(proc)
        .append("\">")
        .append(items)
        .append("</qxinterface>");
}

std::string ProofFixture::Item(std::string_view key, int code, std::string_view description) {
    return std::string("<item key=\"")
        .append(key)
        .append("\" code=\"")
        .append(std::to_string(code))
        .append("\" dsc=\"")
        .append(description)
        .append("\"/>");
}

std::vector<std::string> ProofFixture::Traced(const std::function<void(host::Environment&)>& run) {
    const std::string path = (account.folder() / "trace.jsonl").string();
    refhost::Trace trace(path);
    {
        ScriptedEnvironment environment(faults, script, &trace);
        run(environment);
    }
    trace.Flush();
    std::vector<std::string> lines = ReadLines(path);
    std::erase_if(lines, [](const std::string& line) { return line.find("\"host\":true") != std::string::npos; });
    if (!lines.empty() && lines.front().starts_with(R"({"op":"Connect")")) {
        lines.erase(lines.begin());
    } else {
        ADD_FAILURE() << "the first thing asked for is not the connection";
    }
    return lines;
}

ProofFixture::Outcome ProofFixture::Transact(std::string_view request) {
    Outcome outcome;
    outcome.statements = Traced([&](host::Environment& environment) {
        refhost::Login login(account.LoginXml(loginMore), environment);
        outcome.result = kovra::ClsKovraProof(environment).Transact(request, &login);
    });
    return outcome;
}

ProofFixture::Outcome ProofFixture::Transact(std::string_view request, host::HostLogin& login) {
    Outcome outcome;
    outcome.statements = Traced([&](host::Environment& environment) {
        outcome.result = kovra::ClsKovraProof(environment).Transact(request, &login);
    });
    return outcome;
}

std::vector<std::string>
ProofFixture::WithOpenInstance(const std::function<void(kovra::ClsKovraProof&, host::Environment&)>& use) {
    return Traced([&](host::Environment& environment) {
        refhost::Login login(account.LoginXml(loginMore), environment);
        kovra::ClsKovraProof instance(environment);
        ASSERT_EQ(instance.Transact(Request("ADD", ""), &login), R"(<qxinterface docid="r1" proc="ADD"/>)");
        use(instance, environment);
    });
}

std::string OpenLine(std::string_view sql, int cursor, int lock, int location) {
    return std::string(R"({"op":"Open","sql":")")
        .append(sql)
        .append(R"(","cursor":)")
        .append(std::to_string(cursor))
        .append(R"(,"lock":)")
        .append(std::to_string(lock))
        .append(R"(,"options":-1,"location":)")
        .append(std::to_string(location))
        .append("}");
}

std::string ExecuteLine(std::string_view sql) {
    return std::string(R"({"op":"Execute","sql":")").append(sql).append(R"(","options":-1})");
}

std::string TransactionLine(std::string_view operation) {
    return std::string(R"({"op":")").append(operation).append(R"("})");
}

std::string Failed(std::string line, int number) {
    line.insert(line.size() - 1, ",\"error\":" + std::to_string(number));
    return line;
}

std::string NumberLookup(std::string_view number) {
    return OpenLine("Select ID From IA_DecReady Where cDecCode='" + std::string(number) + "'", 3, 3, 2);
}

const std::string headTemplate =
    OpenLine("Select *,convert(varchar(30),'') as cdepname,convert(varchar(30),'') as cpersonname,1 as bEai From "
             "ia_decready Where 1=2",
             3, 3, 3);
const std::string bodyTemplate =
    OpenLine("Select *,convert(varchar(30),'') as cwhname From ia_decreadys Where 1=2", 3, 3, 3);

} // namespace test

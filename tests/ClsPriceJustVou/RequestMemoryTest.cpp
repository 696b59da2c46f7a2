#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "refhost/eai/Login.h"
#include "tests/ClsPriceJustVou/PriceAccount.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using test::Entry;
using testing::ElementsAre;

/// A document that tells as long as it lives whether it holds the request.
class ToldDocument : public host::DOMDocument {
public:
    ToldDocument(std::unique_ptr<host::DOMDocument> inner, bool& holdsRequest)
        : inner_(std::move(inner)), holdsRequest_(holdsRequest) {}
    ~ToldDocument() override { holdsRequest_ = holdsRequest_ && !isRequest_; }

    bool LoadXML(std::string_view xml) override {
        isRequest_ = xml.find("roottag=") != std::string_view::npos;
        holdsRequest_ = holdsRequest_ || isRequest_;
        return inner_->LoadXML(xml);
    }
    std::string LoadError() const override { return inner_->LoadError(); }
    host::DOMNodePtr DocumentElement() const override { return inner_->DocumentElement(); }
    std::string Xml() const override { return inner_->Xml(); }
    host::DOMNodePtr SelectSingleNode(std::string_view path) const override { return inner_->SelectSingleNode(path); }
    host::DOMNodeList SelectNodes(std::string_view path) const override { return inner_->SelectNodes(path); }
    host::DOMNodePtr CreateElement(std::string_view name) override { return inner_->CreateElement(name); }
    host::DOMNodePtr CreateElementNS(std::string_view name, std::string_view uri) override {
        return inner_->CreateElementNS(name, uri);
    }

private:
    std::unique_ptr<host::DOMDocument> inner_;
    bool isRequest_ = false;
    bool& holdsRequest_;
};

/// Whether the request is in memory when the rows of each voucher are read back to be saved, and at the end.
std::vector<bool> RequestHeld(const std::vector<test::Voucher>& vouchers) {
    std::vector<bool> held;
    bool holdsRequest = false;
    test::PriceAccount account;
    account.faults.statement = [&](std::string_view sql) {
        if (sql.starts_with("select 'A' as editprop")) {
            held.push_back(holdsRequest);
        }
    };
    class Environment : public test::FaultyEnvironment {
    public:
        Environment(test::Faults faults, bool& holdsRequest)
            : FaultyEnvironment(std::move(faults)), holdsRequest_(holdsRequest) {}
        std::unique_ptr<host::DOMDocument> CreateDOMDocument() override {
            return std::make_unique<ToldDocument>(FaultyEnvironment::CreateDOMDocument(), holdsRequest_);
        }

    private:
        bool& holdsRequest_;
    } environment(account.LoggedFaults(), holdsRequest);
    refhost::Login login(account.LoginXml(), environment);
    kovra::ClsPriceJustVou instance(environment);
    instance.Transact(test::Request(vouchers), &login);
    held.push_back(holdsRequest);
    return held;
}

const test::Voucher good{.entries = Entry("1004", "26.5")};

TEST(RequestMemory, IsFreeWhenTheLastVoucherIsSaved) { EXPECT_THAT(RequestHeld({good}), ElementsAre(false, false)); }

TEST(RequestMemory, IsHeldWhileDocumentsAreToCome) { EXPECT_THAT(RequestHeld({good, good}), ElementsAre(true, false)); }

TEST(RequestMemory, IsFreeAfterARequestThatIsRefused) {
    EXPECT_THAT(RequestHeld({{.entries = Entry("none", "26.5")}}), ElementsAre(false));
}

} // namespace

#pragma once

#include "server/adapters/XmlDocument.h"
#include "server/com/DispatchObject.h"
#include "tests/support/TestAccount.h"
#include "tests/support/com/HostedFixture.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace test {

/// An account, and what tests of KovraHost.dll by itself are written in.
class HostTest : public HostedTest {
protected:
    static server::DispatchObject Make(const wchar_t* progId) { return server::DispatchObject::Create(progId); }
    static server::VariantHolder Text(std::string_view text) { return server::VariantHolder(text); }
    static server::VariantHolder Nothing() { return server::VariantHolder(static_cast<IDispatch*>(nullptr)); }
    static server::VariantHolder Holder(const server::DispatchObject& object);
    static server::VariantHolder Holder(const server::XmlDocument& document);
    static server::VariantHolder Holder(const host::DOMNode& node);

    /// A document with this content.
    static server::XmlDocument Document(std::string_view xml);
    /// The document that an operation returned.
    static server::XmlDocument DocumentIn(const server::VariantHolder& result);

    /// The account's login.
    server::DispatchObject AccountLogin() const { return test::Login(account_.LoginXml()); }
    /// A connection to the account.
    server::DispatchObject Connection() const;
    /// A recordset of a query, and one that nobody has opened.
    static server::DispatchObject Recordset(const server::DispatchObject& connection, std::string_view sql);
    static server::DispatchObject Recordset() { return Make(L"ADODB.Recordset"); }
    /// The value of a field in a recordset's current row.
    static host::Value Field(const server::DispatchObject& recordset, std::string_view name);

    /// What KovraHost.dll says of the calling thread.
    int CallActive() const { return libraries().host.Entry<int (*)()>("KovraHostCallActive")(); }

    TestAccount account_;
};

} // namespace test

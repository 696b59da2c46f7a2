#pragma once

#include "ModPub/FunctionRef.h"
#include "ModPub/ImportState.h"

#include <memory>
#include <string>
#include <string_view>

namespace kovra {

struct ProvisionDoc;
struct ProvisionRecords;

/// Imports price-decline provision documents ("ADD" saves new ones, "EDIT" replaces) and queries the stock receipt and
/// issue documents.
class ClsKovraProof {
public:
    /// @param observer watches the import; nobody where it is nullptr
    explicit ClsKovraProof(host::Environment& environment, ModPub::ImportObserver* observer = nullptr)
        : state_(environment, observer) {}

    /// Imports one request; serves one call an instance. It opens the connection that `QueryProc` works on, whatever
    /// the request asks for.
    /// @param sXml the request, UTF-8
    /// @param login the caller's login
    /// @return the result document or an error result. Never throws.
    std::string Transact(std::string_view sXml, host::HostLogin* login);

    /// Reads the caller's list of conditions.
    using ConditionList = ModPub::FunctionRef<const host::DOMNodeList&()>;

    /// Queries stock documents. `Transact` has opened the instance's connection before; a request without rows does.
    /// @param eleList gives the condition elements, with the attributes `name`, `operation`, `value` and `logic`. Where
    ///        it throws, as for an object that is no list of nodes, the query runs without any condition.
    /// @param sRetXml in: the envelope, whose root names in `roottag` the element of a document, and whose element
    ///        `storeinout` holds the kind, "出库单" or "入库单", in its first attribute. Out: the envelope's root with
    ///        one element a document. Unchanged when an error is thrown.
    /// @return always false, which is no failure. Throws `host::Error`: 91 where the envelope lacks what is read of it
    ///         or the connection was never made, else the error of the database, a document or the converter.
    bool QueryProc(ConditionList eleList, std::string& sRetXml);
    bool QueryProc(const host::DOMNodeList& eleList, std::string& sRetXml) {
        return QueryProc([&]() -> const host::DOMNodeList& { return eleList; }, sRetXml);
    }

    /// The message of a save's check results: items beyond their stock (`zeroout`) and beyond their project's budget
    /// (`itemcheck`); empty when there are none.
    static std::string GetRetString(const host::DOMDocument& Dom);

    /// Does nothing with anything and returns Empty: callers that verify a document before they hand it over get
    /// neither an objection nor an answer.
    static host::Value VerifyDomH(const host::DOMDocument* DomH, const void* oVouch);

private:
    void LogIntoSubsystem();

    void ImportProvisionDoc(const host::DOMNode& row, bool edit);
    std::string SaveProvisionDoc(ProvisionDoc& doc);
    std::string ClearNumber(const ProvisionDoc& doc);
    ProvisionRecords MakeRecords(const ProvisionDoc& doc);
    std::string CheckHeadRows(const ProvisionDoc& doc, host::IaVoucherService& service, host::DOMDocument& head);
    std::string CheckBodyRows(const ProvisionDoc& doc, const host::DOMDocument& body);

    std::string GetQueryCondition(ConditionList eleList, host::Connection& connection, std::string_view kind);

    ModPub::ImportState state_;
    /// Of `QueryProc`: the envelope being filled and the converter, both created on first use.
    std::unique_ptr<host::DOMDocument> envelope_;
    std::unique_ptr<host::EaiXmlConverter> converter_;
};

} // namespace kovra

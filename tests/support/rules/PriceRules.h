#pragma once

#include "tests/support/rules/PlayedCall.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace test {

/// A row of a price voucher document.
struct PriceRow {
    std::string item;
    std::string price;
    /// What refuses the row; empty where it passes its checks.
    std::string refusal = {};
    /// The price as the voucher stores it, and the change of the stock's amount, as JSON.
    std::string stored = {};
    std::string adjusted = {};
};

/// A document of the request.
struct PriceDocument {
    std::string ID;
    std::string cMaker;
    std::string cAccounter;
    std::vector<PriceRow> rows;
};

/// Batches that take back what a call wrote, and the queries of what the account holds, as the rules below know it.
extern const std::string priceRestore;
extern const std::vector<std::string> priceContents;

/// Batches that fill an account with the items 1004 and 1007, valued as `valuation` says.
std::string PriceSetup(const std::string& valuation);

/// A call that adds the documents to such an account.
PlayedCall PriceCall(const std::string& name, const std::string& valuation,
                     const std::vector<PriceDocument>& documents);

/// Plays a call of the price adjustment import on an account whose items 1004 and 1007 have the price 25.
class PriceRules {
public:
    /// @param byItem whether items are valued by item, else by warehouse
    PriceRules(Play& play, bool byItem);

    /// A whole call from the making of the instance on; an error there is raised to its maker.
    std::string Transact(const std::vector<PriceDocument>& documents);
    /// A call that ends with `run`.
    std::string Frame(const std::function<std::string()>& run);
    /// The look at the calendar. Throws its error.
    void StartEndDate();

private:
    std::string Vouchers(const std::vector<PriceDocument>& documents);
    /// Adds the outcome of a refused document or posting, if there is one.
    void Document(const PriceDocument& document);
    /// Whether the document counts as imported.
    bool Import(const PriceDocument& document);
    bool Stage(const PriceDocument& document, const PriceRow& row);
    bool Check(const PriceRow& row);
    void Save(const PriceDocument& document);
    void PutVoucher(const PriceDocument& document);
    bool Post();

    void OpenDBS(std::string_view sql) { play_.Do("OpenDBS", sql, Play::main); }
    void DropWorkTable();
    void DropResultTable();

    Play& play_;
    bool byItem_;
    /// What the account holds besides the rows of its contents: the staged rows, and the number of vouchers.
    std::map<std::string, PriceRow> staged_;
    bool hasWorkTable_ = false;
    int vouchers_ = 0;
    /// The voucher that can be posted: its name among the contents, its maker and its rows.
    std::string saved_;
    std::string savedMaker_;
    std::map<std::string, PriceRow> savedRows_;
    std::string message_;
    std::string report_;
};

} // namespace test

#include "bench/Measure.h"
#include "bench/Tables.h"
#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RunImport.h"
#include "refhost/ado/ForwardingDatabase.h"

#include <memory>
#include <utility>

#include <fmt/format.h>

namespace bench {
namespace {

/// Tells the time of the statement that looks a row up among all rows staged before it: its time grows with the square
/// of the entries, whatever the rest does.
class RepetitionClock : public refhost::ForwardingDatabase {
public:
    RepetitionClock(std::shared_ptr<refhost::Database> database, double& seconds)
        : ForwardingDatabase(std::move(database)), seconds_(seconds) {}

    refhost::ResultSet Query(std::string_view sql) override {
        if (!sql.starts_with("select count(cInvCode) as iCount from IA_tmpPriceJDATA")) {
            return inner().Query(sql);
        }
        refhost::ResultSet result;
        seconds_ += Measure([&] { result = inner().Query(sql); }).processor;
        return result;
    }

private:
    double& seconds_;
};

} // namespace

void PrintVoucherTable(std::size_t rows) {
    const Import import = PriceVouchers();
    MemoryAccount account;
    account.Fill(import.account(rows));
    const refhost::DatabaseOpener opener = account.Opener();
    double repetition = 0;
    const std::string request = import.request(rows);
    const double total = Measure([&] {
                             RunImport(import, request, MemoryAccount::connectionString, [&](const std::string& text) {
                                 return std::make_unique<RepetitionClock>(opener(text), repetition);
                             });
                         }).processor;
    fmt::print("| entries of one price voucher | Transact ms | search for repetitions ms | all else ms |\n"
               "|---|---|---|---|\n| {} | {:.0f} | {:.0f} | {:.0f} |\n",
               rows, total * 1000, repetition * 1000, (total - repetition) * 1000);
}

} // namespace bench

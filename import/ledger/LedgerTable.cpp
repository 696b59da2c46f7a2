#include "import/ledger/LedgerTable.h"

#include <algorithm>
#include <array>

namespace importing {
namespace {

using Kind = MatchColumn::Kind;

constexpr auto settings = std::to_array<MatchColumn>({
    {"cWhCode", "cWhCode"},
    {"cInvCCode", "cInvCCode"},
    {"cInvCode", "cInvCode"},
    {"cInvHead", "cInvHead"},
    {"cDifHead", "cDifHead"},
    {"cOutHead", "cOutHead"},
    {"cEnDispHead", "cEnDispHead"},
    {"czyHead", "czyHead"},
});

// The amount is left out: of items with planned or retail prices the ledger has another.
constexpr auto opening = std::to_array<MatchColumn>({
    {"cWhCode", "cWhCode"},
    {"cInvCode", "cInvCode"},
    {"iAInQuantity", "iQuantity", Kind::number},
    {"dVouDate", "dVouDate", Kind::date},
    {"cBatchIA", "cBatchCode"},
    {"dMadeDateIA", "dMadeDate", Kind::date},
    {"dVDateIA", "dVDate", Kind::date},
    {"cItem_class", "cItem_class"},
    {"cItemCode", "cItemCode"},
    {"cMemo", "cMemo"},
    {"cFree1", "cFree1"},
    {"cFree2", "cFree2"},
    {"cFree3", "cFree3"},
    {"cFree4", "cFree4"},
    {"cFree5", "cFree5"},
    {"cFree6", "cFree6"},
    {"cFree7", "cFree7"},
    {"cFree8", "cFree8"},
    {"cFree9", "cFree9"},
    {"cFree10", "cFree10"},
});

constexpr auto provisions = std::to_array<MatchColumn>({{"cDecCode", "Deccode"}});

constexpr auto opposite = std::to_array<MatchColumn>({
    {"cRdCode", "cRdCode"},
    {"cInvcCode", "cInvcCode"},
    {"cInvCode", "cInvCode"},
    {"cDepCode", "cDepCode"},
    {"citem_class", "cItem_class"},
    {"citemcode", "cItemCode"},
    {"cOppHead", "cOppHead"},
    {"cEstHead", "cEstHead"},
});

constexpr auto standardCost = std::to_array<MatchColumn>({
    {"cRdCode", "cRdCode"},
    {"cInvcCode", "cInvcCode"},
    {"cDepCode", "cDepCode"},
    {"cOppHead", "cOppHead"},
    {"cProcessHead", "cProcessHead"},
    {"cMaterialHead", "cMaterialHead"},
    {"cOTaxRefundCode", "cOTaxRefundCode"},
});

// The voucher's own number is given by the component that saves it.
constexpr auto prices = std::to_array<MatchColumn>({
    {"dCJVDate", "dCJVDate", Kind::date},
    {"cMemo", "cMemo"},
});

constexpr std::array ledgerTables = {
    LedgerTable{"ClsInvSubject", "IA_HeadSet", "AutoID", "iYear = {0}", settings},
    LedgerTable{"ClsKovra", "Ia_subsidiary", "AutoID", "cVouType = '34' and iYear = {0}", opening},
    LedgerTable{"ClsKovraProof", "IA_DecReady", "ID", "", provisions, false},
    LedgerTable{"ClsOppSubject", "IA_OppHead", "AutoID", "iYear = {0}", opposite},
    LedgerTable{"ClsOppSubjectST", "IA_OppHead", "AutoID", "iYear = {0}", standardCost},
    LedgerTable{"ClsPriceJustVou", "CostJustVouch", "AutoID", "", prices, false},
};

} // namespace

const LedgerTable& LedgerTableOf(std::string_view className) {
    return *std::ranges::find(ledgerTables, className, &LedgerTable::className);
}

} // namespace importing

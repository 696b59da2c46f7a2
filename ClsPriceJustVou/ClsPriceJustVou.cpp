#include "ClsPriceJustVou/ClsPriceJustVou.h"

namespace kovra {

ClsPriceJustVou::ClsPriceJustVou(host::Environment& environment, ModPub::ImportObserver* observer,
                                 std::size_t reportBound)
    : state_(environment, observer), reportBound_(reportBound) {
    companion_ = environment.CreateZendaT();
    voucherRecordset_ = environment.CreateRecordset();
}

ClsPriceJustVou::~ClsPriceJustVou() {
    companion_.reset();
    try {
        if (voucherRecordset_->IsOpen()) {
            voucherRecordset_->Close();
        }
    } catch (...) {
        // Nobody is left to hear of it.
    }
}

} // namespace kovra

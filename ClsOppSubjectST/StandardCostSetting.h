#pragma once

#include "ModPub/RequestFields.h"
#include "host/DOMDocument.h"

#include <array>
#include <string>

namespace kovra {

/// The fields of one request row, each the text of the child element of its name, empty when there is none: the keys,
/// then the accounts.
struct StandardCostSetting {
    std::string cRdCode;
    std::string cInvcCode;
    std::string cDepCode;
    std::string cOppHead;
    std::string cProcessHead;
    std::string cMaterialHead;
    std::string cOLaborStdCostCode;
    std::string cOManuFixStdCostCode;
    std::string cOManuVarStdCostCode;
    std::string cOOmCostCode;
    std::string cOiqtCode;
    std::string cOPriceCode;
    std::string fLaborCostEffRateDifCode;
    std::string fLaborCostRateDifCode;
    std::string fSemiLaborDifCode;
    std::string fManuFixCostEffRateDifCode;
    std::string fManuFixCostRateDifCode;
    std::string fSemiManuFixDifCode;
    std::string fManuVarCostEffRateDifCode;
    std::string fManuVarCostRateDifCode;
    std::string fSemiManuVarDifCode;
    std::string fOmCostEDifCode;
    std::string fSemiOmDifCode;
    std::string cOTaxRefundCode;

    static StandardCostSetting Read(const host::DOMNode& row);

    /// The text that names the row in its outcomes.
    std::string Key() const;
};

/// A field of the row, stored in the column of its name.
using StandardCostColumn = ModPub::RowField<StandardCostSetting>;

/// Number of the columns that are keys; they come first.
inline constexpr std::size_t standardCostKeys = 3;

/// All columns in the order of the statements.
inline constexpr std::array standardCostColumns = {
    StandardCostColumn{"cRdCode", &StandardCostSetting::cRdCode},
    StandardCostColumn{"cInvcCode", &StandardCostSetting::cInvcCode},
    StandardCostColumn{"cDepCode", &StandardCostSetting::cDepCode},
    StandardCostColumn{"cOppHead", &StandardCostSetting::cOppHead},
    StandardCostColumn{"cProcessHead", &StandardCostSetting::cProcessHead},
    StandardCostColumn{"cMaterialHead", &StandardCostSetting::cMaterialHead},
    StandardCostColumn{"cOLaborStdCostCode", &StandardCostSetting::cOLaborStdCostCode},
    StandardCostColumn{"cOManuFixStdCostCode", &StandardCostSetting::cOManuFixStdCostCode},
    StandardCostColumn{"cOManuVarStdCostCode", &StandardCostSetting::cOManuVarStdCostCode},
    StandardCostColumn{"cOOmCostCode", &StandardCostSetting::cOOmCostCode},
    StandardCostColumn{"cOiqtCode", &StandardCostSetting::cOiqtCode},
    StandardCostColumn{"cOPriceCode", &StandardCostSetting::cOPriceCode},
    StandardCostColumn{"fLaborCostEffRateDifCode", &StandardCostSetting::fLaborCostEffRateDifCode},
    StandardCostColumn{"fLaborCostRateDifCode", &StandardCostSetting::fLaborCostRateDifCode},
    StandardCostColumn{"fSemiLaborDifCode", &StandardCostSetting::fSemiLaborDifCode},
    StandardCostColumn{"fManuFixCostEffRateDifCode", &StandardCostSetting::fManuFixCostEffRateDifCode},
    StandardCostColumn{"fManuFixCostRateDifCode", &StandardCostSetting::fManuFixCostRateDifCode},
    StandardCostColumn{"fSemiManuFixDifCode", &StandardCostSetting::fSemiManuFixDifCode},
    StandardCostColumn{"fManuVarCostEffRateDifCode", &StandardCostSetting::fManuVarCostEffRateDifCode},
    StandardCostColumn{"fManuVarCostRateDifCode", &StandardCostSetting::fManuVarCostRateDifCode},
    StandardCostColumn{"fSemiManuVarDifCode", &StandardCostSetting::fSemiManuVarDifCode},
    StandardCostColumn{"fOmCostEDifCode", &StandardCostSetting::fOmCostEDifCode},
    StandardCostColumn{"fSemiOmDifCode", &StandardCostSetting::fSemiOmDifCode},
    StandardCostColumn{"cOTaxRefundCode", &StandardCostSetting::cOTaxRefundCode},
};

} // namespace kovra

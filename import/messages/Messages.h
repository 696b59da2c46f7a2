#pragma once

#include <string_view>

namespace importing {

/// Everything that the import says to people, in the order of the table of words.
enum class Message {
    // The file.
    fileNotRead,
    notASpreadsheet,
    oldSpreadsheet,
    archiveBroken,
    archiveTooLarge,
    documentType,
    partMissing,
    partBroken,
    tooManyCells,
    quoteWithoutEnd,
    encodingUnclear,
    encodingUnknown,
    notInEncoding,
    noSheet,
    sheetUnknown,
    sheetUnclear,
    // Numbers.
    numberNone,
    numberGrouping,
    numberPercent,
    numberNegative,
    // Dates.
    dateNone,
    dateNoDay,
    dateTwoReadings,
    dateSerial,
    // Codes.
    codeExponent,
    codeLong,
    codeQuote,
    codeDigitForLetter,
    codeLeadingZeros,
    codeLeadingZerosAmbiguous,
    codeUnknown,
    codeUnknownNear,
    // Texts.
    textLong,
    textCodePage,
    textQuote,
    // Any cell.
    cellError,
    cellNoValue,
    cellNoDate,
    cellOfOtherKind,
    // Headings.
    headingsNotFound,
    headingUnknown,
    headingUnknownNear,
    headingTwice,
    headingMissing,
    mapFieldUnknown,
    mapHeadingMissing,
    classUnclear,
    // Rows.
    valueMissing,
    cellWithoutHeading,
    cellsMerged,
    rowRepeated,
    headerDiffers,
    documentRefused,
    rowsHidden,
    totalsDiffer,
    amountDiffers,
    // Refused rows.
    sheetOfRefused,
    refusedFile,
    refusedReason,
    refusedLine,
    reportFile,
    testRunFile,
    // Templates.
    sheetOfRows,
    sheetOfCodes,
    validCodes,
    codeNames,
    fieldRequired,
    fieldCode,
    fieldCodeOfList,
    fieldNumber,
    fieldPrice,
    fieldDate,
    fieldText,
    fieldName,
    fieldElement,
    listCodes,
    listWarehouses,
    listItems,
    listItemClasses,
    listAccounts,
    listCategories,
    listDepartments,
    listProjectClasses,
    // The account, in the classes' own words where they have some.
    keyMissingInventory,
    itemAndClass,
    accountsMissingInventory,
    keyMissingOpposite,
    accountsMissingOpposite,
    keyMissingStandard,
    settingExists,
    projectMissing,
    projectClassMissing,
    projectUnknown,
    projectClassNameDiffers,
    projectNameDiffers,
    itemWithoutValuation,
    warehouseWithoutValuation,
    freeItemMissing,
    batchMissing,
    batchNotManaged,
    receiptTooEarly,
    receiptNotBeforeStart,
    madeTooEarly,
    expiryTooEarly,
    expiryBeforeMade,
    shelfLifeNotManaged,
    quantityNegativeIndividual,
    quantityNegativeTracked,
    quantityZeroPlanned,
    plannedPriceMissing,
    retailPriceMissing,
    openingExists,
    documentExists,
    strictCorrection,
    // The run.
    serverDocuments,
    fileChanged,
    accountChanged,
    importResumed,
    rowsAlreadyIn,
    transactionEnded,
    rowsInDoubt,
};

struct MessageWords {
    Message message;
    std::string_view chinese;
    std::string_view english;
};

/// The words of a message: {0}, {1} … stand for what the note adds.
const MessageWords& WordsOf(Message message);

} // namespace importing

#pragma once

#include "import/messages/Language.h"

#include <string_view>

namespace importing {

/// Something that the import says to people: {0}, {1} … stand for what a note adds.
struct Message {
    std::string_view chinese;
    std::string_view english;

    bool operator==(const Message&) const = default;
};

/// Everything that the import says to people.
namespace message {

// The file.
inline constexpr Message fileNotRead{"无法读取文件 {0}：{1}。", "Cannot read the file {0}: {1}."};
inline constexpr Message notASpreadsheet{"{0} 不是 Excel 工作簿（.xlsx）。", "{0} is not an Excel workbook (.xlsx)."};
inline constexpr Message oldSpreadsheet{"{0} 是旧的 Excel 格式（.xls）。请在 Excel "
                                        "中打开，选择“文件”、“另存为”，类型选“Excel 工作簿 (*.xlsx)”，再导入新文件。",
                                        "{0} is in Excel's old format (.xls). Open it in Excel, choose File, Save As "
                                        "and the type \"Excel Workbook (*.xlsx)\", then import the new file."};
inline constexpr Message archiveBroken{"{0} 已损坏。", "{0} is damaged."};
inline constexpr Message archiveTooLarge{"文件解压后过大，不予读取。",
                                         "The file grows too large when it is unpacked; it is not read."};
inline constexpr Message documentType{"文件的组成部分 {0} 含有文档类型声明，不予读取。",
                                      "The file's part {0} holds a document type declaration; it is not read."};
inline constexpr Message partMissing{"文件缺少组成部分 {0}。", "The file lacks its part {0}."};
inline constexpr Message partBroken{"文件的组成部分 {0} 已损坏。", "The file's part {0} is damaged."};
inline constexpr Message tooManyCells{"工作表的单元格过多，不予读取。",
                                      "The sheet has too many cells; it is not read."};
inline constexpr Message quoteWithoutEnd{"第 {0} 行开始的引号没有结束。",
                                         "A quoted field begins in line {0} and does not end."};
inline constexpr Message encodingUnclear{
    "看不出文件的编码。按 UTF-8 第一行是：{0}；按 GB18030 是：{1}。请用 --encoding 指定。",
    "The file's encoding is not clear. Its first line is {0} as UTF-8 and {1} as GB18030. Name the encoding with "
    "--encoding."};
inline constexpr Message encodingUnknown{"不认识编码 {0}。", "Unknown encoding {0}."};
inline constexpr Message notInEncoding{"文件不是 {0} 编码。", "The file is not in the encoding {0}."};
inline constexpr Message noSheet{"工作簿里没有工作表。", "The workbook has no sheet."};
inline constexpr Message sheetUnknown{"没有工作表“{0}”；有：{1}。", "There is no sheet \"{0}\"; there are: {1}."};
inline constexpr Message sheetUnclear{"不清楚要导入哪张工作表；请用 --sheet 指定：{0}。",
                                      "It is not clear which sheet to import; name it with --sheet: {0}."};

// Numbers.
inline constexpr Message numberNone{"“{0}”不是数字。", "\"{0}\" is no number."};
inline constexpr Message numberGrouping{"“{0}”的逗号位置不对：是 {1} 还是 {2}？",
                                        "The comma in \"{0}\" does not group thousands: {1} or {2}?"};
inline constexpr Message numberPercent{"“{0}”是百分数；应填数字，例如 {1}。",
                                       "\"{0}\" is a percentage; enter the number, for instance {1}."};
inline constexpr Message numberNegative{"“{0}”不能是负数。", "\"{0}\" must not be negative."};

// Dates.
inline constexpr Message dateNone{"“{0}”不是日期；请写成 2024-01-05 的样子。",
                                  "\"{0}\" is no date; write it like 2024-01-05."};
inline constexpr Message dateNoDay{"“{0}”：没有这一天。", "\"{0}\": there is no such day."};
inline constexpr Message dateTwoReadings{"“{0}”可读作 {1}，也可读作 {2}；请写成年-月-日。",
                                         "\"{0}\" may be {1} or {2}; write year-month-day."};
inline constexpr Message dateSerial{
    "“{0}”是没有日期格式的数字；若指 {1}，请把单元格设为日期格式。",
    "\"{0}\" is a number without a date's format; if {1} is meant, give the cell a date format."};

// Codes.
inline constexpr Message codeExponent{
    "“{0}”已被表格改成科学计数；请把该列设为文本后重新输入编码。",
    "\"{0}\" was turned into an exponent; format the column as text and enter the code again."};
inline constexpr Message codeLong{"编码“{0}”超过 {1} 个字符。", "The code \"{0}\" is longer than {1} characters."};
inline constexpr Message codeQuote{"编码“{0}”含有引号。", "The code \"{0}\" holds a quote."};
inline constexpr Message codeDigitForLetter{"没有编码“{0}”；是“{1}”吗？（字母 O 与数字 0）",
                                            "There is no code \"{0}\"; is it \"{1}\"? (letter O and digit 0)"};
inline constexpr Message codeLeadingZeros{"没有编码“{0}”；是“{1}”吗？可用 --fix-codes 采用。",
                                          "There is no code \"{0}\"; is it \"{1}\"? --fix-codes takes it."};
inline constexpr Message codeLeadingZerosAmbiguous{
    "“{0}”是数字，而编码“{1}”也存在；请把单元格设为文本再输入。",
    "\"{0}\" is a number, and the code \"{1}\" exists too; format the cell as text and enter it again."};
inline constexpr Message codeUnknown{"没有编码“{0}”。", "There is no code \"{0}\"."};
inline constexpr Message codeUnknownNear{"没有编码“{0}”；最接近的是“{1}”（{2}）。",
                                         "There is no code \"{0}\"; the nearest is \"{1}\" ({2})."};

// Texts.
inline constexpr Message textLong{"文字有 {0} 个字符，该栏最多 {1} 个。",
                                  "The text has {0} characters; the column takes {1}."};
inline constexpr Message textCodePage{"账套的代码页中没有字符“{0}”。",
                                      "The account's code page lacks the character \"{0}\"."};
inline constexpr Message textQuote{
    "“{0}”含有引号，而这一栏要与账套中的名称比较，不能含引号。",
    "\"{0}\" holds a quote; this column is compared with a name of the account, which takes none."};

// Any cell.
inline constexpr Message cellError{"单元格是错误值 {0}。", "The cell holds the error {0}."};
inline constexpr Message cellNoValue{"公式 {0} 没有保存计算结果；请在 Excel 中打开并保存一次。",
                                     "The formula {0} has no stored value; open the file in Excel and save it."};
inline constexpr Message cellNoDate{"数字 {0} 按日期格式显示，但没有这一天。",
                                    "The number {0} has a date's format, but there is no such day."};
inline constexpr Message cellOfOtherKind{"单元格的类型不对：{0}。", "The cell is of another kind: {0}."};

// Headings.
inline constexpr Message headingsNotFound{"找不到标题行；请用 --header-row 指定。",
                                          "No line of headings was found; name it with --header-row."};
inline constexpr Message headingUnknown{
    "{0}：不认识标题“{1}”；可用 --map {1}=字段 指定，或用 --map {1}= 略去这一列。",
    "{0}: unknown heading \"{1}\"; --map {1}=FIELD names its field, --map {1}= leaves the column out."};
inline constexpr Message headingUnknownNear{"{0}：不认识标题“{1}”；是“{2}”吗？",
                                            "{0}: unknown heading \"{1}\"; is it \"{3}\" ({2})?"};
inline constexpr Message headingTwice{"{0}：标题“{1}”重复，“{2}”已有一列。",
                                      "{0}: heading \"{1}\" stands twice; \"{3}\" ({2}) has a column already."};
inline constexpr Message headingMissing{"缺少“{1}”列（{0}）。", "The column \"{2}\" ({1}, {0}) is missing."};
inline constexpr Message mapFieldUnknown{"--map {0}={1}：没有字段“{1}”。", "--map {0}={1}: there is no field \"{1}\"."};
inline constexpr Message mapHeadingMissing{"--map {0}=…：表中没有标题“{0}”。",
                                           "--map {0}=...: the table has no heading \"{0}\"."};
inline constexpr Message classUnclear{"标题同时适合 {0}；请用 --class 指定。",
                                      "The headings fit {0} alike; name the class with --class."};

// Rows.
inline constexpr Message valueMissing{"“{0}”不能为空。", "\"{0}\" must not be empty."};
inline constexpr Message cellWithoutHeading{"“{0}”所在的列没有标题。", "\"{0}\" stands in a column without heading."};
inline constexpr Message cellsMerged{"该行有合并单元格；请取消合并，逐行填写。",
                                     "The row has merged cells; unmerge them and fill in each row."};
inline constexpr Message rowRepeated{"与第 {0} 行重复。", "Repeats line {0}."};
inline constexpr Message headerDiffers{"单据“{0}”的表头与第 {1} 行不一致。",
                                       "The header of document \"{0}\" differs from line {1}."};
inline constexpr Message documentRefused{"单据“{0}”有其他行被拒绝。", "Another row of document \"{0}\" is refused."};
inline constexpr Message rowsHidden{
    "有 {0} 行被隐藏或筛选掉；请用 --hidden include 导入，或用 --hidden skip 跳过。",
    "{0} rows are hidden or filtered out; take them with --hidden include or leave them out with --hidden skip."};
inline constexpr Message totalsDiffer{"{0}：合计是 {1}，各行之和是 {2}。",
                                      "{0}: the total is {1}, the rows add up to {2}."};
inline constexpr Message amountDiffers{"金额与数量乘单价相差 {0}。",
                                       "The amount differs by {0} from quantity times unit cost."};

// Refused rows.
inline constexpr Message sheetOfRefused{"拒绝的行", "Refused rows"};
inline constexpr Message refusedFile{"拒绝", "refused"};
inline constexpr Message refusedReason{"拒绝原因", "Refused because"};
inline constexpr Message refusedLine{"原行号", "Original line"};
inline constexpr Message reportFile{"报告-{0}", "report-{0}"};
inline constexpr Message testRunFile{"试运行", "test-run"};

// Templates.
inline constexpr Message sheetOfRows{"数据", "Rows"};
inline constexpr Message sheetOfCodes{"可用编码", "Valid codes"};
inline constexpr Message validCodes{"账套中的{0}", "Valid {0} codes"};
inline constexpr Message codeNames{"名称", "Name"};
inline constexpr Message fieldRequired{"必填。", "Required."};
inline constexpr Message fieldCode{"编码，最多 {0} 个字符。", "A code of at most {0} characters."};
inline constexpr Message fieldCodeOfList{"编码，最多 {0} 个字符，账套中要有这个{1}。",
                                         "A code of at most {0} characters: one of the account's {1} codes."};
inline constexpr Message fieldNumber{"数字。", "A number."};
inline constexpr Message fieldPrice{"数字，不能为负。", "A number, not negative."};
inline constexpr Message fieldDate{"日期，写成 2024-01-05 的样子。", "A date, written like 2024-01-05."};
inline constexpr Message fieldText{"文字，最多 {0} 个字符。", "A text of at most {0} characters."};
inline constexpr Message fieldName{"账套中的名称，最多 {0} 个字符，不能含引号。",
                                   "A name of the account, of at most {0} characters and without quotes."};
inline constexpr Message fieldElement{"（字段 {0}）", "(Field {0})"};
inline constexpr Message listCodes{"编码", "other"};
inline constexpr Message listWarehouses{"仓库", "warehouse"};
inline constexpr Message listItems{"存货", "item"};
inline constexpr Message listItemClasses{"存货分类", "item class"};
inline constexpr Message listAccounts{"末级科目", "leaf account"};
inline constexpr Message listCategories{"收发类别", "category"};
inline constexpr Message listDepartments{"部门", "department"};
inline constexpr Message listProjectClasses{"项目大类", "project class"};

// The account, in the classes' own words where they have some.
inline constexpr Message keyMissingInventory{"仓库编码、存货分类编码、存货编码三者必须输入其中之一。",
                                             "Enter one of warehouse code, item class code and item code."};
inline constexpr Message itemAndClass{"存货和存货分类不能同时存在。", "Enter an item or an item class, not both."};
inline constexpr Message accountsMissingInventory{
    "存货科目编码、差异科目编码、分期收款发出商品科目编码、委托代销发出商品科目编码、直运科目编码五项必须输入其中之一"
    "。",
    "Enter at least one of the five accounts: inventory, price difference, instalment issues, consignment issues, "
    "direct shipment."};
inline constexpr Message keyMissingOpposite{
    "收发类别编码、存货分类编码、存货编码、部门编码四项必须输入其中之一。",
    "Enter one of receipt/issue category, item class code, item code and department code."};
inline constexpr Message accountsMissingOpposite{"对方科目编码、暂估科目编码两项必须输入其中之一。",
                                                 "Enter the opposite account or the provisional estimate account."};
inline constexpr Message keyMissingStandard{
    "收发类别编码、存货分类编码、部门编码三项必须输入其中之一。",
    "Enter one of receipt/issue category, item class code and department code."};
inline constexpr Message settingExists{"对照关系已经存在，无法插入新记录。", "The account has this setting already."};
inline constexpr Message projectMissing{"没有录入项目。", "There is a project class and no project."};
inline constexpr Message projectClassMissing{"没有录入项目大类。", "There is a project and no project class."};
inline constexpr Message projectUnknown{"项目不合法。", "The project class has no such project."};
inline constexpr Message projectClassNameDiffers{"项目大类名称不符。",
                                                 "The project class has another name in the account."};
inline constexpr Message projectNameDiffers{"项目名称不符。", "The project has another name in the account."};
inline constexpr Message itemWithoutValuation{"该存货没有设置计价方式。", "The item has no valuation method."};
inline constexpr Message warehouseWithoutValuation{"该仓库没有设置计价方式。",
                                                   "The warehouse has no valuation method."};
inline constexpr Message freeItemMissing{"设置自由项的存货必须输入自由项。",
                                         "The item is kept by free items: enter them."};
inline constexpr Message batchMissing{"批次核算的存货未录入批号，不允许导入。",
                                      "The item is valued by batch: enter the batch."};
inline constexpr Message batchNotManaged{"不是批次管理的存货！", "The item is not kept by batch."};
inline constexpr Message receiptTooEarly{"入库日期日期输入不合法", "The receipt date must lie after 1949-01-01."};
inline constexpr Message receiptNotBeforeStart{"入库日期必须小于本系统启用日期！",
                                               "The receipt date must lie before the day on which the module starts."};
inline constexpr Message madeTooEarly{"生产日期输入不合法", "The production date must lie after 1949-01-01."};
inline constexpr Message expiryTooEarly{"失效日期输入不合法", "The expiry date must lie after 1949-01-01."};
inline constexpr Message expiryBeforeMade{"生产日期大于失效日期",
                                          "The expiry date must lie after the production date."};
inline constexpr Message shelfLifeNotManaged{"不是保质期管理的存货", "The item has no shelf life."};
inline constexpr Message quantityNegativeIndividual{"个别计价法不允许录入负数量。",
                                                    "An item with individual pricing takes no negative quantity."};
inline constexpr Message quantityNegativeTracked{"跟踪型管理的存货不允许录入负数量。",
                                                 "A tracked item takes no negative quantity."};
inline constexpr Message quantityZeroPlanned{
    "计划价/售价法不允许导入数量为0的期初数据。",
    "An item with planned or retail prices takes no opening balance without a quantity."};
inline constexpr Message plannedPriceMissing{"请在存货目录中录入该存货的计划单价。",
                                             "Enter the item's planned price in the item records."};
inline constexpr Message retailPriceMissing{"请在存货目录中录入该存货的售价。",
                                            "Enter the item's retail price in the item records."};
inline constexpr Message openingExists{
    "账套中已有同一仓库、存货、批号和自由项的期初余额。",
    "The account has an opening balance of the same warehouse, item, batch and free items."};
inline constexpr Message documentExists{"单据号：{0}已存在。", "The account has a document with the number {0}."};
inline constexpr Message strictCorrection{"“{0}”要更正为“{1}”，而 --strict 不作更正。",
                                          "\"{0}\" would be corrected to \"{1}\", which --strict does not do."};

// The run.
inline constexpr Message serverDocuments{
    "跌价准备单和调价单由 ERP 自己的组件保存，本程序不能写入服务器上的账套；请用 kovra request 生成请求，由 ERP 导入。",
    "Provisions and price vouchers are saved by the ERP's own components, so this program does not write them into an "
    "account on a server; make the request with kovra request and let the ERP import it."};
inline constexpr Message fileChanged{"文件在试运行（{0}）之后改动过。",
                                     "The file has changed since the test run of {0}."};
inline constexpr Message accountChanged{"账套在试运行（{0}）之后改动过。",
                                        "The account has changed since the test run of {0}."};
inline constexpr Message importResumed{"第 {0} 次导入曾被中断，现在接着导入。",
                                       "Import {0} was cut off; this run goes on with it."};
inline constexpr Message rowsAlreadyIn{"{0} 行以前已导入，不再导入。",
                                       "{0} rows were imported before and are left alone."};
inline constexpr Message transactionEnded{
    "数据库服务器在第 {0} 行结束了试运行的事务；结果只到这一行为止。",
    "The database server ended the test run's transaction at line {0}; the result holds up to that line."};
inline constexpr Message rowsInDoubt{
    "不能确定 {0} 行是否已写入账套；请再次执行同一命令，它会先向账套核对。",
    "It is not known whether {0} rows are in the account; run the same command again, which asks the account first."};

} // namespace message
} // namespace importing

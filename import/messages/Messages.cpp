#include "import/messages/Messages.h"

#include <array>
#include <cstddef>

namespace importing {
namespace {

constexpr std::array table = {
    MessageWords{Message::fileNotRead, "无法读取文件 {0}：{1}。", "Cannot read the file {0}: {1}."},
    MessageWords{Message::notASpreadsheet, "{0} 不是 Excel 工作簿（.xlsx）。", "{0} is not an Excel workbook (.xlsx)."},
    MessageWords{Message::oldSpreadsheet,
                 "{0} 是旧的 Excel 格式（.xls）。请在 Excel 中打开，选择“文件”、“另存为”，"
                 "类型选“Excel 工作簿 (*.xlsx)”，再导入新文件。",
                 "{0} is in Excel's old format (.xls). Open it in Excel, choose File, Save As and the type "
                 "\"Excel Workbook (*.xlsx)\", then import the new file."},
    MessageWords{Message::archiveBroken, "{0} 已损坏。", "{0} is damaged."},
    MessageWords{Message::archiveTooLarge, "文件解压后过大，不予读取。",
                 "The file grows too large when it is unpacked; it is not read."},
    MessageWords{Message::documentType, "文件的组成部分 {0} 含有文档类型声明，不予读取。",
                 "The file's part {0} holds a document type declaration; it is not read."},
    MessageWords{Message::partMissing, "文件缺少组成部分 {0}。", "The file lacks its part {0}."},
    MessageWords{Message::partBroken, "文件的组成部分 {0} 已损坏。", "The file's part {0} is damaged."},
    MessageWords{Message::tooManyCells, "工作表的单元格过多，不予读取。",
                 "The sheet has too many cells; it is not read."},
    MessageWords{Message::quoteWithoutEnd, "第 {0} 行开始的引号没有结束。",
                 "A quoted field begins in line {0} and does not end."},
    MessageWords{Message::encodingUnclear,
                 "看不出文件的编码。按 UTF-8 第一行是：{0}；按 GB18030 是：{1}。请用 --encoding 指定。",
                 "The file's encoding is not clear. Its first line is {0} as UTF-8 and {1} as GB18030. Name the "
                 "encoding with --encoding."},
    MessageWords{Message::encodingUnknown, "不认识编码 {0}。", "Unknown encoding {0}."},
    MessageWords{Message::notInEncoding, "文件不是 {0} 编码。", "The file is not in the encoding {0}."},
    MessageWords{Message::noSheet, "工作簿里没有工作表。", "The workbook has no sheet."},
    MessageWords{Message::sheetUnknown, "没有工作表“{0}”；有：{1}。", "There is no sheet \"{0}\"; there are: {1}."},
    MessageWords{Message::sheetUnclear, "不清楚要导入哪张工作表；请用 --sheet 指定：{0}。",
                 "It is not clear which sheet to import; name it with --sheet: {0}."},

    MessageWords{Message::numberNone, "“{0}”不是数字。", "\"{0}\" is no number."},
    MessageWords{Message::numberGrouping, "“{0}”的逗号位置不对：是 {1} 还是 {2}？",
                 "The comma in \"{0}\" does not group thousands: {1} or {2}?"},
    MessageWords{Message::numberPercent, "“{0}”是百分数；应填数字，例如 {1}。",
                 "\"{0}\" is a percentage; enter the number, for instance {1}."},
    MessageWords{Message::numberNegative, "“{0}”不能是负数。", "\"{0}\" must not be negative."},

    MessageWords{Message::dateNone, "“{0}”不是日期；请写成 2024-01-05 的样子。",
                 "\"{0}\" is no date; write it like 2024-01-05."},
    MessageWords{Message::dateNoDay, "“{0}”：没有这一天。", "\"{0}\": there is no such day."},
    MessageWords{Message::dateTwoReadings, "“{0}”可读作 {1}，也可读作 {2}；请写成年-月-日。",
                 "\"{0}\" may be {1} or {2}; write year-month-day."},
    MessageWords{Message::dateSerial, "“{0}”是没有日期格式的数字；若指 {1}，请把单元格设为日期格式。",
                 "\"{0}\" is a number without a date's format; if {1} is meant, give the cell a date format."},

    MessageWords{Message::codeExponent, "“{0}”已被表格改成科学计数；请把该列设为文本后重新输入编码。",
                 "\"{0}\" was turned into an exponent; format the column as text and enter the code again."},
    MessageWords{Message::codeLong, "编码“{0}”超过 {1} 个字符。", "The code \"{0}\" is longer than {1} characters."},
    MessageWords{Message::codeQuote, "编码“{0}”含有引号。", "The code \"{0}\" holds a quote."},
    MessageWords{Message::codeDigitForLetter, "没有编码“{0}”；是“{1}”吗？（字母 O 与数字 0）",
                 "There is no code \"{0}\"; is it \"{1}\"? (letter O and digit 0)"},
    MessageWords{Message::codeLeadingZeros, "没有编码“{0}”；是“{1}”吗？可用 --fix-codes 采用。",
                 "There is no code \"{0}\"; is it \"{1}\"? --fix-codes takes it."},
    MessageWords{Message::codeLeadingZerosAmbiguous, "“{0}”是数字，而编码“{1}”也存在；请把单元格设为文本再输入。",
                 "\"{0}\" is a number, and the code \"{1}\" exists too; format the cell as text and enter it again."},
    MessageWords{Message::codeUnknown, "没有编码“{0}”。", "There is no code \"{0}\"."},
    MessageWords{Message::codeUnknownNear, "没有编码“{0}”；最接近的是“{1}”（{2}）。",
                 "There is no code \"{0}\"; the nearest is \"{1}\" ({2})."},

    MessageWords{Message::textLong, "文字有 {0} 个字符，该栏最多 {1} 个。",
                 "The text has {0} characters; the column takes {1}."},
    MessageWords{Message::textCodePage, "账套的代码页中没有字符“{0}”。",
                 "The account's code page lacks the character \"{0}\"."},
    MessageWords{Message::textQuote, "“{0}”含有引号，而这一栏要与账套中的名称比较，不能含引号。",
                 "\"{0}\" holds a quote; this column is compared with a name of the account, which takes none."},

    MessageWords{Message::cellError, "单元格是错误值 {0}。", "The cell holds the error {0}."},
    MessageWords{Message::cellNoValue, "公式 {0} 没有保存计算结果；请在 Excel 中打开并保存一次。",
                 "The formula {0} has no stored value; open the file in Excel and save it."},
    MessageWords{Message::cellNoDate, "数字 {0} 按日期格式显示，但没有这一天。",
                 "The number {0} has a date's format, but there is no such day."},
    MessageWords{Message::cellOfOtherKind, "单元格的类型不对：{0}。", "The cell is of another kind: {0}."},

    MessageWords{Message::headingsNotFound, "找不到标题行；请用 --header-row 指定。",
                 "No line of headings was found; name it with --header-row."},
    MessageWords{Message::headingUnknown,
                 "{0}：不认识标题“{1}”；可用 --map {1}=字段 指定，或用 --map {1}= 略去这一列。",
                 "{0}: unknown heading \"{1}\"; --map {1}=FIELD names its field, --map {1}= leaves the column out."},
    MessageWords{Message::headingUnknownNear, "{0}：不认识标题“{1}”；是“{2}”吗？",
                 "{0}: unknown heading \"{1}\"; is it \"{3}\" ({2})?"},
    MessageWords{Message::headingTwice, "{0}：标题“{1}”重复，“{2}”已有一列。",
                 "{0}: heading \"{1}\" stands twice; \"{3}\" ({2}) has a column already."},
    MessageWords{Message::headingMissing, "缺少“{1}”列（{0}）。", "The column \"{2}\" ({1}, {0}) is missing."},
    MessageWords{Message::mapFieldUnknown, "--map {0}={1}：没有字段“{1}”。",
                 "--map {0}={1}: there is no field \"{1}\"."},
    MessageWords{Message::mapHeadingMissing, "--map {0}=…：表中没有标题“{0}”。",
                 "--map {0}=...: the table has no heading \"{0}\"."},
    MessageWords{Message::classUnclear, "标题同时适合 {0}；请用 --class 指定。",
                 "The headings fit {0} alike; name the class with --class."},

    MessageWords{Message::valueMissing, "“{0}”不能为空。", "\"{0}\" must not be empty."},
    MessageWords{Message::cellWithoutHeading, "“{0}”所在的列没有标题。", "\"{0}\" stands in a column without heading."},
    MessageWords{Message::cellsMerged, "该行有合并单元格；请取消合并，逐行填写。",
                 "The row has merged cells; unmerge them and fill in each row."},
    MessageWords{Message::rowRepeated, "与第 {0} 行重复。", "Repeats line {0}."},
    MessageWords{Message::headerDiffers, "单据“{0}”的表头与第 {1} 行不一致。",
                 "The header of document \"{0}\" differs from line {1}."},
    MessageWords{Message::documentRefused, "单据“{0}”有其他行被拒绝。", "Another row of document \"{0}\" is refused."},
    MessageWords{Message::rowsHidden, "有 {0} 行被隐藏或筛选掉；请用 --hidden include 导入，或用 --hidden skip 跳过。",
                 "{0} rows are hidden or filtered out; take them with --hidden include or leave them out with "
                 "--hidden skip."},
    MessageWords{Message::totalsDiffer, "{0}：合计是 {1}，各行之和是 {2}。",
                 "{0}: the total is {1}, the rows add up to {2}."},
    MessageWords{Message::amountDiffers, "金额与数量乘单价相差 {0}。",
                 "The amount differs by {0} from quantity times unit cost."},

    MessageWords{Message::sheetOfRefused, "拒绝的行", "Refused rows"},
    MessageWords{Message::refusedFile, "拒绝", "refused"},
    MessageWords{Message::refusedReason, "拒绝原因", "Refused because"},
    MessageWords{Message::refusedLine, "原行号", "Original line"},
    MessageWords{Message::reportFile, "报告-{0}", "report-{0}"},
    MessageWords{Message::testRunFile, "试运行", "test-run"},

    MessageWords{Message::sheetOfRows, "数据", "Rows"},
    MessageWords{Message::sheetOfCodes, "可用编码", "Valid codes"},
    MessageWords{Message::validCodes, "账套中的{0}", "Valid {0} codes"},
    MessageWords{Message::codeNames, "名称", "Name"},
    MessageWords{Message::fieldRequired, "必填。", "Required."},
    MessageWords{Message::fieldCode, "编码，最多 {0} 个字符。", "A code of at most {0} characters."},
    MessageWords{Message::fieldCodeOfList, "编码，最多 {0} 个字符，账套中要有这个{1}。",
                 "A code of at most {0} characters: one of the account's {1} codes."},
    MessageWords{Message::fieldNumber, "数字。", "A number."},
    MessageWords{Message::fieldPrice, "数字，不能为负。", "A number, not negative."},
    MessageWords{Message::fieldDate, "日期，写成 2024-01-05 的样子。", "A date, written like 2024-01-05."},
    MessageWords{Message::fieldText, "文字，最多 {0} 个字符。", "A text of at most {0} characters."},
    MessageWords{Message::fieldName, "账套中的名称，最多 {0} 个字符，不能含引号。",
                 "A name of the account, of at most {0} characters and without quotes."},
    MessageWords{Message::fieldElement, "（字段 {0}）", "(Field {0})"},
    MessageWords{Message::listCodes, "编码", "other"},
    MessageWords{Message::listWarehouses, "仓库", "warehouse"},
    MessageWords{Message::listItems, "存货", "item"},
    MessageWords{Message::listItemClasses, "存货分类", "item class"},
    MessageWords{Message::listAccounts, "末级科目", "leaf account"},
    MessageWords{Message::listCategories, "收发类别", "category"},
    MessageWords{Message::listDepartments, "部门", "department"},
    MessageWords{Message::listProjectClasses, "项目大类", "project class"},

    MessageWords{Message::keyMissingInventory, "仓库编码、存货分类编码、存货编码三者必须输入其中之一。",
                 "Enter one of warehouse code, item class code and item code."},
    MessageWords{Message::itemAndClass, "存货和存货分类不能同时存在。", "Enter an item or an item class, not both."},
    MessageWords{Message::accountsMissingInventory,
                 "存货科目编码、差异科目编码、分期收款发出商品科目编码、委托代销发出商品科目编码、直运科目编码五项必须"
                 "输入其中之一。",
                 "Enter at least one of the five accounts: inventory, price difference, instalment issues, consignment "
                 "issues, direct shipment."},
    MessageWords{Message::keyMissingOpposite, "收发类别编码、存货分类编码、存货编码、部门编码四项必须输入其中之一。",
                 "Enter one of receipt/issue category, item class code, item code and department code."},
    MessageWords{Message::accountsMissingOpposite, "对方科目编码、暂估科目编码两项必须输入其中之一。",
                 "Enter the opposite account or the provisional estimate account."},
    MessageWords{Message::keyMissingStandard, "收发类别编码、存货分类编码、部门编码三项必须输入其中之一。",
                 "Enter one of receipt/issue category, item class code and department code."},
    MessageWords{Message::settingExists, "对照关系已经存在，无法插入新记录。", "The account has this setting already."},
    MessageWords{Message::projectMissing, "没有录入项目。", "There is a project class and no project."},
    MessageWords{Message::projectClassMissing, "没有录入项目大类。", "There is a project and no project class."},
    MessageWords{Message::projectUnknown, "项目不合法。", "The project class has no such project."},
    MessageWords{Message::projectClassNameDiffers, "项目大类名称不符。",
                 "The project class has another name in the account."},
    MessageWords{Message::projectNameDiffers, "项目名称不符。", "The project has another name in the account."},
    MessageWords{Message::itemWithoutValuation, "该存货没有设置计价方式。", "The item has no valuation method."},
    MessageWords{Message::warehouseWithoutValuation, "该仓库没有设置计价方式。",
                 "The warehouse has no valuation method."},
    MessageWords{Message::freeItemMissing, "设置自由项的存货必须输入自由项。",
                 "The item is kept by free items: enter them."},
    MessageWords{Message::batchMissing, "批次核算的存货未录入批号，不允许导入。",
                 "The item is valued by batch: enter the batch."},
    MessageWords{Message::batchNotManaged, "不是批次管理的存货！", "The item is not kept by batch."},
    MessageWords{Message::receiptTooEarly, "入库日期日期输入不合法", "The receipt date must lie after 1949-01-01."},
    MessageWords{Message::receiptNotBeforeStart, "入库日期必须小于本系统启用日期！",
                 "The receipt date must lie before the day on which the module starts."},
    MessageWords{Message::madeTooEarly, "生产日期输入不合法", "The production date must lie after 1949-01-01."},
    MessageWords{Message::expiryTooEarly, "失效日期输入不合法", "The expiry date must lie after 1949-01-01."},
    MessageWords{Message::expiryBeforeMade, "生产日期大于失效日期",
                 "The expiry date must lie after the production date."},
    MessageWords{Message::shelfLifeNotManaged, "不是保质期管理的存货", "The item has no shelf life."},
    MessageWords{Message::quantityNegativeIndividual, "个别计价法不允许录入负数量。",
                 "An item with individual pricing takes no negative quantity."},
    MessageWords{Message::quantityNegativeTracked, "跟踪型管理的存货不允许录入负数量。",
                 "A tracked item takes no negative quantity."},
    MessageWords{Message::quantityZeroPlanned, "计划价/售价法不允许导入数量为0的期初数据。",
                 "An item with planned or retail prices takes no opening balance without a quantity."},
    MessageWords{Message::plannedPriceMissing, "请在存货目录中录入该存货的计划单价。",
                 "Enter the item's planned price in the item records."},
    MessageWords{Message::retailPriceMissing, "请在存货目录中录入该存货的售价。",
                 "Enter the item's retail price in the item records."},
    MessageWords{Message::openingExists, "账套中已有同一仓库、存货、批号和自由项的期初余额。",
                 "The account has an opening balance of the same warehouse, item, batch and free items."},
    MessageWords{Message::documentExists, "单据号：{0}已存在。", "The account has a document with the number {0}."},
    MessageWords{Message::strictCorrection, "“{0}”要更正为“{1}”，而 --strict 不作更正。",
                 "\"{0}\" would be corrected to \"{1}\", which --strict does not do."},

    MessageWords{Message::serverDocuments,
                 "跌价准备单和调价单由 ERP 自己的组件保存，本程序不能写入服务器上的账套；请用 kovra request "
                 "生成请求，由 ERP 导入。",
                 "Provisions and price vouchers are saved by the ERP's own components, so this program does not write "
                 "them into an account on a server; make the request with kovra request and let the ERP import it."},
    MessageWords{Message::fileChanged, "文件在试运行（{0}）之后改动过。",
                 "The file has changed since the test run of {0}."},
    MessageWords{Message::accountChanged, "账套在试运行（{0}）之后改动过。",
                 "The account has changed since the test run of {0}."},
    MessageWords{Message::importResumed, "第 {0} 次导入曾被中断，现在接着导入。",
                 "Import {0} was cut off; this run goes on with it."},
    MessageWords{Message::rowsAlreadyIn, "{0} 行以前已导入，不再导入。",
                 "{0} rows were imported before and are left alone."},
    MessageWords{Message::transactionEnded, "数据库服务器在第 {0} 行结束了试运行的事务；结果只到这一行为止。",
                 "The database server ended the test run's transaction at line {0}; the result holds up to that line."},
    MessageWords{Message::rowsInDoubt, "不能确定 {0} 行是否已写入账套；请再次执行同一命令，它会先向账套核对。",
                 "It is not known whether {0} rows are in the account; run the same command again, which asks the "
                 "account first."},
};

/// Whether every message has its words, in its place.
constexpr bool InOrder() {
    for (std::size_t index = 0; index < table.size(); ++index) {
        if (table[index].message != static_cast<Message>(index)) {
            return false;
        }
    }
    return true;
}
static_assert(InOrder());

} // namespace

const MessageWords& WordsOf(Message message) { return table[static_cast<std::size_t>(message)]; }

} // namespace importing

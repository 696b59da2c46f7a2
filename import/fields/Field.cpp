#include "import/fields/Field.h"

#include <algorithm>
#include <array>

namespace importing {
namespace {

// The columns' names and lengths are those of the account's tables that the classes write. Each kind of column takes
// the element, the headings in Chinese and English, and further headings.

constexpr Field Text(std::string_view element, std::string_view chinese, std::string_view english,
                     std::string_view synonyms, std::size_t length, FieldType type = FieldType::text) {
    return {.element = element,
            .chinese = chinese,
            .english = english,
            .synonyms = synonyms,
            .type = type,
            .length = length};
}

constexpr Field Name(std::string_view element, std::string_view chinese, std::string_view english, std::size_t length) {
    return Text(element, chinese, english, {}, length, FieldType::name);
}

constexpr Field Number(std::string_view element, std::string_view chinese, std::string_view english,
                       std::string_view synonyms = {}) {
    return Text(element, chinese, english, synonyms, 0, FieldType::number);
}

constexpr Field Price(std::string_view element, std::string_view chinese, std::string_view english,
                      std::string_view synonyms) {
    return Text(element, chinese, english, synonyms, 0, FieldType::price);
}

constexpr Field Date(std::string_view element, std::string_view chinese, std::string_view english,
                     std::string_view synonyms = {}) {
    return Text(element, chinese, english, synonyms, 0, FieldType::date);
}

constexpr Field Code(std::string_view element, std::string_view chinese, std::string_view english,
                     std::string_view synonyms, std::size_t length, CodeList list = CodeList::none) {
    Field field = Text(element, chinese, english, synonyms, length, FieldType::code);
    field.list = list;
    return field;
}

constexpr Field AccountField(std::string_view element, std::string_view chinese, std::string_view english,
                             std::string_view synonyms) {
    return Code(element, chinese, english, synonyms, 40, CodeList::account);
}

constexpr Field FreeItem(std::string_view element, std::string_view chinese, std::string_view english) {
    return Text(element, chinese, english, {}, 20);
}

constexpr Field Also(std::string_view element, Field field) {
    field.alsoElement = element;
    return field;
}

constexpr Field Key(Field field) {
    field.key = true;
    return field;
}

constexpr Field Required(Field field) {
    field.required = true;
    return field;
}

constexpr Field Header(Field field) {
    field.place = Place::header;
    return field;
}

constexpr Field Entry(Field field) {
    field.place = Place::entry;
    return field;
}

// Columns of several tables.

constexpr Field Warehouse(CodeList list) {
    return Code("cWhCode", "仓库编码", "Warehouse code", "仓库|仓库代码|Warehouse", 10, list);
}

constexpr Field Department(CodeList list) {
    return Code("cDepCode", "部门编码", "Department code", "部门|Department", 12, list);
}

constexpr Field Category(CodeList list) {
    return Code("cRdCode", "收发类别编码", "Receipt/issue category", "收发类别|Category", 12, list);
}

/// @param element as the class spells it
constexpr Field ItemClass(std::string_view element) {
    return Code(element, "存货分类编码", "Item class code", "存货分类|分类编码|Item class", 12, CodeList::itemClass);
}

constexpr Field item =
    Code("cInvCode", "存货编码", "Item code", "存货|物料编码|商品编码|货号|Item", 60, CodeList::item);
constexpr Field memo = Text("cMemo", "备注", "Memo", "摘要|说明|Remark", 255);
constexpr Field maker = Text("cMaker", "制单人", "Maker", {}, 40);

constexpr std::array settingsFields = {
    Key(Warehouse(CodeList::warehouse)),
    Key(ItemClass("cInvCCode")),
    Key(item),
    AccountField("cInvHead", "存货科目编码", "Inventory account", "存货科目"),
    AccountField("cDifHead", "差异科目编码", "Price difference account", "差异科目"),
    AccountField("cOutHead", "分期收款发出商品科目编码", "Instalment issues account", "分期收款发出商品科目"),
    AccountField("cEnDispHead", "委托代销发出商品科目编码", "Consignment issues account", "委托代销发出商品科目"),
    AccountField("czyHead", "直运科目编码", "Direct shipment account", "直运科目"),
};

constexpr std::array oppositeFields = {
    Key(Category(CodeList::category)),
    Key(ItemClass("cInvcCode")),
    Key(item),
    Key(Department(CodeList::department)),
    Key(Also("citem_class",
             Code("cItem_class", "项目大类编码", "Project class code", "项目大类", 10, CodeList::projectClass))),
    Key(Also("citemcode", Code("cItemCode", "项目编码", "Project code", "项目", 60))),
    Name("cItemCName", "项目大类名称", "Project class name", 60),
    Name("cName", "项目名称", "Project name", 255),
    AccountField("cOppHead", "对方科目编码", "Opposite account", "对方科目"),
    AccountField("cEstHead", "暂估科目编码", "Provisional estimate account", "暂估科目"),
};

constexpr std::array standardCostFields = {
    Key(Category(CodeList::leafCategory)),
    Key(ItemClass("cInvcCode")),
    Key(Department(CodeList::leafDepartment)),
    AccountField("cOppHead", "直接材料对方科目", "Direct material account", "直接材料对方科目编码"),
    AccountField("cProcessHead", "委外加工费科目", "Outsourcing charges account", "委外加工费科目编码"),
    AccountField("cMaterialHead", "委外材料费科目", "Outsourced material account", "委外材料费科目编码"),
    AccountField("cOLaborStdCostCode", "人工费用对方科目", "Labour account", "人工费用对方科目编码"),
    AccountField("cOManuFixStdCostCode", "固定制造费用对方科目", "Fixed overhead account", "固定制造费用对方科目编码"),
    AccountField("cOManuVarStdCostCode", "变动制造费用对方科目", "Variable overhead account",
                 "变动制造费用对方科目编码"),
    AccountField("cOOmCostCode", "委外加工费对方科目", "Outsourced processing account", "委外加工费对方科目编码"),
    AccountField("cOiqtCode", "材料量差对方科目", "Material quantity variance account", "材料量差对方科目编码"),
    AccountField("cOPriceCode", "材料价差对方科目", "Material price variance account", "材料价差对方科目编码"),
    AccountField("fLaborCostEffRateDifCode", "人工费用效率差对方科目", "Labour efficiency variance account",
                 "人工费用效率差对方科目编码"),
    AccountField("fLaborCostRateDifCode", "人工费用费率差对方科目", "Labour rate variance account",
                 "人工费用费率差对方科目编码"),
    AccountField("fSemiLaborDifCode", "耗用半成品人工差异对方科目", "Labour variance of semi-finished goods account",
                 "耗用半成品人工差异对方科目编码"),
    AccountField("fManuFixCostEffRateDifCode", "固定制造费用效率差对方科目",
                 "Fixed overhead efficiency variance account", "固定制造费用效率差对方科目编码"),
    AccountField("fManuFixCostRateDifCode", "固定制造费用费率差对方科目", "Fixed overhead rate variance account",
                 "固定制造费用费率差对方科目编码"),
    AccountField("fSemiManuFixDifCode", "耗用半成品固定制造差异对方科目",
                 "Fixed overhead variance of semi-finished goods account", "耗用半成品固定制造差异对方科目编码"),
    AccountField("fManuVarCostEffRateDifCode", "变动制造费用效率差对方科目",
                 "Variable overhead efficiency variance account", "变动制造费用效率差对方科目编码"),
    AccountField("fManuVarCostRateDifCode", "变动制造费用费率差对方科目", "Variable overhead rate variance account",
                 "变动制造费用费率差对方科目编码"),
    AccountField("fSemiManuVarDifCode", "耗用半成品变动制造差异对方科目",
                 "Variable overhead variance of semi-finished goods account", "耗用半成品变动制造差异对方科目编码"),
    AccountField("fOmCostEDifCode", "委外加工费差异对方科目", "Outsourced processing variance account",
                 "委外加工费差异对方科目编码"),
    AccountField("fSemiOmDifCode", "耗用半成品委外加工费差异对方科目",
                 "Outsourced processing variance of semi-finished goods account",
                 "耗用半成品委外加工费差异对方科目编码"),
    AccountField("cOTaxRefundCode", "退税转成本对方科目", "Tax refund transferred to cost account",
                 "退税转成本对方科目编码"),
};

constexpr std::array openingFields = {
    Required(Key(Warehouse(CodeList::costedWarehouse))),
    Required(Key(item)),
    Number("iQuantity", "数量", "Quantity", "结存数量|期初数量|Qty"),
    Price("iCost", "单价", "Unit cost", "结存单价|成本单价|Price"),
    Required(Number("iPrice", "金额", "Amount", "结存金额|期初金额")),
    Date("dVouDate", "入库日期", "Receipt date", "日期|Date"),
    Key(Text("cBatchCode", "批号", "Batch", "批次|Batch number", 60)),
    Date("dMadeDate", "生产日期", "Production date"),
    Date("dVDate", "失效日期", "Expiry date", "有效期至"),
    Number("iMassDate", "保质期", "Shelf life", "保质期天数"),
    Key(FreeItem("cFree1", "自由项1", "Free item 1")),
    Key(FreeItem("cFree2", "自由项2", "Free item 2")),
    Key(FreeItem("cFree3", "自由项3", "Free item 3")),
    Key(FreeItem("cFree4", "自由项4", "Free item 4")),
    Key(FreeItem("cFree5", "自由项5", "Free item 5")),
    Key(FreeItem("cFree6", "自由项6", "Free item 6")),
    Key(FreeItem("cFree7", "自由项7", "Free item 7")),
    Key(FreeItem("cFree8", "自由项8", "Free item 8")),
    Key(FreeItem("cFree9", "自由项9", "Free item 9")),
    Key(FreeItem("cFree10", "自由项10", "Free item 10")),
    Code("cItem_class", "项目大类编码", "Project class code", "项目大类", 10, CodeList::projectClass),
    Code("cItemCode", "项目编码", "Project code", "项目", 60),
    memo,
};

constexpr std::array provisionsFields = {
    Header(Required(Code("Deccode", "单据号", "Document number", "单号|Document", 30))),
    Header(Date("dDecDate", "单据日期", "Document date", "日期|Date")),
    Header(Department(CodeList::department)),
    Header(Code("cPersonCode", "人员编码", "Person code", "业务员编码", 20)),
    Header(maker),
    Entry(Warehouse(CodeList::warehouse)),
    Entry(Required(item)),
    Entry(Number("iQuantity", "数量", "Quantity", "Qty")),
    Entry(Number("iUnitCost", "单价", "Unit cost")),
    Entry(Number("iPrice", "金额", "Amount")),
    Entry(Number("iNetPrice", "可变现净值", "Net realisable value")),
    Entry(Number("iLastPrice", "已提跌价准备", "Provision before")),
    Entry(Number("iThisPrice", "跌价余额", "Provision balance", "本次计提")),
    Entry(Text("cBatch", "批号", "Batch", "批次|Batch number", 60)),
    Entry(FreeItem("cFree1", "自由项1", "Free item 1")),
    Entry(FreeItem("cFree2", "自由项2", "Free item 2")),
    Entry(FreeItem("cFree3", "自由项3", "Free item 3")),
    Entry(FreeItem("cFree4", "自由项4", "Free item 4")),
    Entry(FreeItem("cFree5", "自由项5", "Free item 5")),
    Entry(FreeItem("cFree6", "自由项6", "Free item 6")),
    Entry(FreeItem("cFree7", "自由项7", "Free item 7")),
    Entry(FreeItem("cFree8", "自由项8", "Free item 8")),
    Entry(FreeItem("cFree9", "自由项9", "Free item 9")),
    Entry(FreeItem("cFree10", "自由项10", "Free item 10")),
    Entry(memo),
};

constexpr std::array pricesFields = {
    Header(Required(Key(Code("ID", "单据号", "Document number", "单号|编号|Document", 30)))),
    Header(Required(Date("dCJVDate", "制单日期", "Voucher date", "日期|单据日期|Date"))),
    Header(maker),
    Header(Text("cAccounter", "记账人", "Bookkeeper", {}, 40)),
    Header(memo),
    Entry(Required(Key(item))),
    Entry(Key(FreeItem("cFree1", "自由项1", "Free item 1"))),
    Entry(Key(FreeItem("cFree2", "自由项2", "Free item 2"))),
    Entry(Key(FreeItem("cFree3", "自由项3", "Free item 3"))),
    Entry(Key(FreeItem("cFree4", "自由项4", "Free item 4"))),
    Entry(Key(FreeItem("cFree5", "自由项5", "Free item 5"))),
    Entry(Key(FreeItem("cFree6", "自由项6", "Free item 6"))),
    Entry(Key(FreeItem("cFree7", "自由项7", "Free item 7"))),
    Entry(Key(FreeItem("cFree8", "自由项8", "Free item 8"))),
    Entry(Key(FreeItem("cFree9", "自由项9", "Free item 9"))),
    Entry(Key(FreeItem("cFree10", "自由项10", "Free item 10"))),
    Entry(Required(Price("iCJVACost", "调整后单价", "Adjusted price", "调整后计划价|调整后售价|新价"))),
};

// The class fills the names of a row's project into these two, which must be there for it.
constexpr auto projectNames = std::to_array<FixedElement>({
    {.element = "cItemCName", .value = "", .place = Place::row, .with = "cItem_class"},
    {.element = "cName", .value = "", .place = Place::row, .with = "cItem_class"},
});

constexpr auto provisionType = std::to_array<FixedElement>({
    {.element = "vouchtype", .value = "48", .place = Place::header, .with = ""},
});

constexpr std::array classes = {
    ClassFields{"ClsInvSubject", "存货科目设置", "Inventory account settings", settingsFields, "", {}},
    ClassFields{"ClsKovra", "期初余额", "Opening balances", openingFields, "", projectNames},
    ClassFields{"ClsKovraProof", "存货跌价准备单", "Price-decline provisions", provisionsFields, "Deccode",
                provisionType},
    ClassFields{"ClsOppSubject", "对方科目设置", "Opposite account settings", oppositeFields, "", {}},
    ClassFields{"ClsOppSubjectST",
                "标准成本的对方科目设置",
                "Opposite account settings for standard costing",
                standardCostFields,
                "",
                {}},
    ClassFields{"ClsPriceJustVou", "价格调整单", "Price adjustment vouchers", pricesFields, "ID", {}},
};

} // namespace

std::span<const ClassFields> AllClassFields() { return classes; }

const ClassFields* FieldsOf(std::string_view className) {
    const auto* const found = std::ranges::find(classes, className, &ClassFields::className);
    return found == classes.end() ? nullptr : found;
}

} // namespace importing

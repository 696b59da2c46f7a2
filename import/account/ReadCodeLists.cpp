#include "import/account/ReadCodeLists.h"

#include "import/account/AccountReader.h"

#include <array>
#include <string>

namespace importing {
namespace {

/// Where a list's codes and names stand, under the conditions that the classes put to a valid code.
struct ListStatement {
    CodeList list;
    std::string_view statement;
    /// The statement ends with the year.
    bool ofYear = false;
};

constexpr std::array statements = {
    ListStatement{CodeList::warehouse, "select cWhCode, cWhName from Warehouse"},
    ListStatement{CodeList::costedWarehouse, "select cWhCode, cWhName from Warehouse where bInCost = 1"},
    ListStatement{CodeList::item, "select cInvCode, cInvName from inventory where bService = 0 and bInvType = 0 and "
                                  "isnull(bPTOModel, 0) = 0"},
    ListStatement{CodeList::itemClass, "select cInvCCode, cInvCName from inventoryclass"},
    ListStatement{CodeList::account, "select ccode, ccode_name from code where bend = 1 and iyear = ", true},
    ListStatement{CodeList::category, "select cRdCode, cRdName from rd_style"},
    ListStatement{CodeList::leafCategory, "select cRdCode, cRdName from rd_style where bRdEnd = 1"},
    ListStatement{CodeList::department, "select cDepCode, cDepName from department"},
    ListStatement{CodeList::leafDepartment, "select cDepCode, cDepName from department where bDepEnd = 1"},
    ListStatement{CodeList::projectClass, "select citem_class, citem_name from fitem"},
};

} // namespace

CodeLists ReadCodeLists(const ClassFields& classFields, AccountReader& account) {
    CodeLists lists;
    for (const Field& field : classFields.fields) {
        for (const ListStatement& each : statements) {
            if (each.list != field.list || lists.contains(field.list)) {
                continue;
            }
            std::string statement(each.statement);
            if (each.ofYear) {
                statement.append(account.year());
            }
            KnownCodes& codes = lists[field.list];
            account.Rows(statement, [&codes](const host::Recordset& row) {
                codes.Add(TextOf(row.FieldValue(0)), TextOf(row.FieldValue(1)));
            });
        }
    }
    return lists;
}

} // namespace importing

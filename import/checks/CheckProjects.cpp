#include "import/checks/CheckAgainstAccount.h"
#include "import/checks/RowChecks.h"
#include "text/SameName.h"
#include "text/SqlText.h"

#include <map>
#include <optional>

namespace importing {
namespace {

/// The projects of a class by code.
using Projects = std::map<std::string, std::string, std::less<>>;

struct ProjectClass {
    std::string name;
    std::string table;
    /// Read when a row first names one.
    std::optional<Projects> projects = {};
};

/// Account databases compare codes without regard to letter case.
std::string Code(std::string_view code) {
    std::string upper(code);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return upper;
}

class ProjectChecks {
public:
    ProjectChecks(const Outcome& outcome, AccountReader& account)
        : account_(account), comparesNames_(outcome.classFields->className == "ClsOppSubject") {
        account.Rows("select citem_class, citem_name, ctable from fitem", [&](const host::Recordset& row) {
            classes_[Code(TextOf(row.FieldValue(0)))] = {TextOf(row.FieldValue(1)), TextOf(row.FieldValue(2))};
        });
    }

    void Check(CheckedRow& row) {
        const std::string& projectClass = row["cItem_class"];
        const std::string& project = row["cItemCode"];
        if (projectClass.empty()) {
            if (!project.empty()) {
                row.Refuse("cItem_class", message::projectClassMissing);
            }
            return;
        }
        if (project.empty()) {
            row.Refuse("cItemCode", message::projectMissing);
            return;
        }
        const auto found = classes_.find(Code(projectClass));
        if (found == classes_.end()) {
            return; // The column's list of codes has told.
        }
        if (comparesNames_ && row["cItemCName"] != found->second.name) {
            row.Refuse("cItemCName", message::projectClassNameDiffers);
        }
        const Projects& projects = ProjectsOf(found->second);
        const auto known = projects.find(Code(project));
        if (known == projects.end()) {
            row.Refuse("cItemCode", message::projectUnknown);
        } else if (comparesNames_ && row["cName"] != known->second) {
            row.Refuse("cName", message::projectNameDiffers);
        }
    }

private:
    const Projects& ProjectsOf(ProjectClass& projectClass) {
        if (!projectClass.projects) {
            projectClass.projects.emplace();
            // The opposite settings know no projects that are items.
            const bool items = !comparesNames_ && text::SameName(projectClass.table, "inventory");
            const std::string columns = items ? "cInvCode, cInvName" : "cItemCode, cItemName";
            account_.Rows(
                "select " + columns + " from " + refhost::SqlName(projectClass.table), [&](const host::Recordset& row) {
                    projectClass.projects->emplace(Code(TextOf(row.FieldValue(0))), TextOf(row.FieldValue(1)));
                });
        }
        return *projectClass.projects;
    }

    AccountReader& account_;
    bool comparesNames_;
    std::map<std::string, ProjectClass> classes_;
};

} // namespace

void CheckProjects(Outcome& outcome, AccountReader& account) {
    if (!outcome.columns.Find("cItem_class") && !outcome.columns.Find("cItemCode")) {
        return;
    }
    ProjectChecks checks(outcome, account);
    for (RowOutcome& each : outcome.rows) {
        CheckedRow row(outcome, each);
        checks.Check(row);
    }
}

} // namespace importing

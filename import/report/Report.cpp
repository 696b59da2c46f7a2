#include "import/report/Report.h"

#include "import/messages/Figures.h"
#include "import/messages/Note.h"
#include "import/outcome/Reasons.h"
#include "import/outcome/Totals.h"
#include "import/reading/Cell.h"
#include "import/report/Html.h"
#include "import/report/Style.h"
#include "import/report/Words.h"
#include "import/writing/Files.h"

#include <algorithm>

#include <fmt/format.h>

namespace importing {
namespace {

using report::Html;

/// Corrections that are listed: some forty sheets of paper.
constexpr std::size_t mostCorrections = 2000;
/// Places that are listed with each reason.
constexpr std::size_t mostPlaces = 10;

template <class... Arguments> std::string Fill(std::string_view words, const Arguments&... arguments) {
    return fmt::format(fmt::runtime(words), arguments...);
}

class ReportWriter {
public:
    ReportWriter(const Outcome& outcome, Language language)
        : outcome_(outcome), language_(language), words_({{language}}), totals_(TotalsOf(outcome)),
          hasQuantities_(outcome.columns.Find("iQuantity").has_value()),
          hasAmounts_(outcome.columns.Find("iPrice").has_value()) {}

    std::string Write() {
        Begin();
        TellOutcome();
        TellFacts();
        if (outcome_.faults.empty()) {
            TellTotals();
            TellGroups(words_.byWarehouse, words_.warehouse, totals_.byWarehouse, "warehouses");
            TellGroups(words_.byAccount, words_.stockAccount, totals_.byAccount, "accounts");
        }
        TellReasons(words_.refusals, ReasonsOfRefusals(outcome_, language_, mostPlaces), "refusals");
        TellReasons(words_.warnings, ReasonsOfWarnings(outcome_, language_, mostPlaces), "warnings");
        TellCorrections();
        TellSignatures();
        html_.Raw("</body>\n</html>\n");
        return html_.html();
    }

private:
    std::string Title() const {
        const ClassFields& fields = *outcome_.classFields;
        return std::string(language_ == Language::chinese ? fields.chinese : fields.english) +
               (language_ == Language::chinese ? "·" : ": ") +
               std::string(outcome_.committed ? words_.import : words_.testRun);
    }

    void Begin() {
        html_.Raw("<!DOCTYPE html>\n<html lang=\"" + std::string(words_.languageTag) + "\">\n<head>\n");
        html_.Raw(
            "<meta charset=\"utf-8\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n");
        // Should a value ever get past the escaping, nothing of it runs and nothing is loaded.
        html_.Raw("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                  "style-src 'unsafe-inline'\">\n");
        html_.Element("title", Title());
        html_.Raw("<style>");
        html_.Raw(report::styleSheet);
        html_.Raw("</style>\n</head>\n<body>\n");
        html_.Element("h1", Title());
    }

    void TellOutcome() {
        const bool bad = !outcome_.faults.empty() || outcome_.refused || totals_.refused.rows > 0;
        html_.Raw(bad ? "<div id=\"outcome\" class=\"bad\">\n" : "<div id=\"outcome\">\n");
        if (!outcome_.faults.empty()) {
            html_.Element("p", words_.unusable);
            for (const Note& fault : outcome_.faults) {
                html_.Element("p", Words(fault, language_));
            }
        } else if (outcome_.refused) {
            html_.Element("p", Fill(words_.ledgerRefuses, outcome_.refused->code, outcome_.refused->message));
        } else {
            html_.Element("p", Fill(outcome_.committed ? words_.imported : words_.wouldTake,
                                    Grouped(totals_.taken.rows), Grouped(totals_.refused.rows)));
        }
        TellIfAny(CountOf(outcome_, RowState::alreadyIn), words_.alreadyIn);
        TellIfAny(outcome_.interrupted ? CountOf(outcome_, RowState::notReached) : 0, words_.interrupted);
        TellIfAny(CountOf(outcome_, RowState::inDoubt), words_.inDoubt);
        TellIfAny(outcome_.hiddenRows, words_.hidden);
        if (!outcome_.committed) {
            html_.Element("p", words_.nothingChanged);
        }
        for (const Note& remark : outcome_.remarks) {
            html_.Element("p", Words(remark, language_));
        }
        html_.Raw("</div>\n");
    }

    void TellIfAny(std::size_t rows, std::string_view words) {
        if (rows > 0) {
            html_.Element("p", Fill(words, Grouped(rows)));
        }
    }

    void TellFact(std::string_view name, std::string_view value, std::string_view id) {
        if (!value.empty()) {
            html_.Element("dt", name);
            html_.Element("dd", value, id);
        }
    }

    void TellFacts() {
        html_.Element("h2", words_.facts);
        html_.Raw("<dl>\n");
        const ClassFields& fields = *outcome_.classFields;
        TellFact(words_.className,
                 std::string(language_ == Language::chinese ? fields.chinese : fields.english) +
                     Bracketed(fields.className),
                 "class");
        TellFact(words_.file,
                 outcome_.file.path + (language_ == Language::chinese ? "，" : ", ") +
                     Fill(words_.bytes, Grouped(outcome_.file.size)),
                 "file");
        TellFact(words_.hash, outcome_.file.hash, "hash");
        TellFact(words_.when, outcome_.time, "time");
        TellFact(words_.who, outcome_.login.operatorName, "operator");
        TellFact(words_.account, outcome_.login.account, "account");
        TellFact(words_.year, outcome_.login.year, "year");
        TellFact(words_.number, outcome_.number == 0 ? "" : std::to_string(outcome_.number), "number");
        html_.Raw("</dl>\n");
    }

    /// The columns of figures, as far as the file has them.
    std::vector<Html::Column> WithFigures(std::vector<Html::Column> columns) const {
        columns.push_back({words_.rows, "figure"});
        if (hasQuantities_) {
            columns.push_back({words_.quantity, "figure"});
        }
        if (hasAmounts_) {
            columns.push_back({words_.amount, "figure"});
        }
        return columns;
    }

    std::vector<std::string> WithFigures(std::vector<std::string> cells, const Sums& sums) const {
        cells.push_back(Grouped(sums.rows));
        if (hasQuantities_) {
            cells.push_back(Quantity(sums.quantity));
        }
        if (hasAmounts_) {
            cells.push_back(Amount(sums.amount));
        }
        return cells;
    }

    void TellTotals() {
        html_.Element("h2", words_.totals);
        html_.BeginTable(WithFigures({{""}}), "totals");
        const auto row = [this](std::string_view name, const Sums& sums) {
            html_.Row(WithFigures({std::string(name)}, sums));
        };
        row(outcome_.committed ? words_.taken : words_.ready, totals_.taken);
        std::vector<std::string> corrected = {std::string(words_.corrected), Grouped(totals_.corrected), "", ""};
        html_.Row(corrected, "part");
        row(words_.refused, totals_.refused);
        if (totals_.open.rows > 0) {
            row(words_.open, totals_.open);
        }
        html_.EndTable();
    }

    void TellGroups(std::string_view title, std::string_view code, const std::vector<Group>& groups,
                    std::string_view id) {
        if (groups.empty()) {
            return;
        }
        html_.Element("h2", title);
        html_.BeginTable(WithFigures({{code}, {words_.name}}), id);
        for (const Group& group : groups) {
            html_.Row(
                WithFigures({group.code.empty() ? std::string(words_.noAccount) : group.code, group.name}, group.sums));
        }
        html_.Row(WithFigures({std::string(words_.sum), ""}, totals_.taken), "sum");
        html_.EndTable();
    }

    void TellReasons(std::string_view title, const std::vector<Reason>& reasons, std::string_view id) {
        html_.Element("h2", title);
        if (reasons.empty()) {
            html_.Element("p", words_.none);
            return;
        }
        html_.BeginTable({{words_.reason}, {words_.count, "figure"}, {words_.places}}, id);
        for (const Reason& reason : reasons) {
            std::string places;
            for (const std::string& place : reason.places) {
                places.append(places.empty() ? "" : language_ == Language::chinese ? "、" : ", ").append(Place(place));
            }
            places.append(reason.count > reason.places.size() ? " …" : "");
            html_.Row(
                {reason.words + (reason.byClass ? Bracketed(words_.byClass) : ""), Grouped(reason.count), places});
        }
        html_.EndTable();
    }

    /// A cell as it is; a line by its name.
    std::string Place(const std::string& place) const {
        const bool isLine = place.find_first_not_of("0123456789") == std::string::npos;
        return isLine ? Fill(words_.line, place) : place;
    }

    std::string Bracketed(std::string_view text) const {
        return language_ == Language::chinese ? "（" + std::string(text) + "）" : " (" + std::string(text) + ")";
    }

    void TellCorrections() {
        html_.Element("h2", words_.corrections);
        std::size_t count = 0;
        for (const RowOutcome& row : outcome_.rows) {
            count += row.row.corrections.size();
        }
        if (count == 0) {
            html_.Element("p", words_.none);
            return;
        }
        html_.BeginTable({{words_.cell, "cell"}, {words_.heading}, {words_.old, "value"}, {words_.now, "value"}},
                         "corrections");
        std::size_t listed = 0;
        for (const RowOutcome& row : outcome_.rows) {
            for (const Correction& correction : row.row.corrections) {
                if (listed++ < mostCorrections) {
                    const std::vector<std::string>& headings = outcome_.columns.headings;
                    html_.Row({CellName(correction.column, row.row.line),
                               correction.column < headings.size() ? headings[correction.column] : std::string(),
                               correction.old, correction.now});
                }
            }
        }
        html_.EndTable();
        if (count > mostCorrections) {
            html_.Element("p", Fill(words_.more, Grouped(count - mostCorrections)));
        }
    }

    void TellSignatures() {
        html_.Raw("<div id=\"signatures\">");
        for (const std::string_view name : {words_.maker, words_.checker, words_.date}) {
            html_.Element("div", name);
        }
        html_.Raw("</div>\n");
    }

    const Outcome& outcome_;
    Language language_;
    const report::Words words_;
    Totals totals_;
    bool hasQuantities_;
    bool hasAmounts_;
    Html html_;
};

} // namespace

std::string ReportHtml(const Outcome& outcome, Language language) { return ReportWriter(outcome, language).Write(); }

std::string ReportPath(const Outcome& outcome, Language language) {
    const std::string what = outcome.committed
                                 ? Words({message::reportFile, {std::to_string(outcome.number)}}, language)
                                 : Words({message::testRunFile, {}}, language);
    return PathBeside(outcome.file.path, what, ".html");
}

} // namespace importing

#include "tests/support/rules/Play.h"

#include <algorithm>

namespace test {
namespace {

/// Text inside an attribute, as MSXML writes it.
std::string Escaped(std::string_view text) {
    static const std::map<char, std::string_view> escapes = {
        {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\r', "&#xD;"}, {'\n', "&#xA;"},
    };
    std::string escaped;
    for (const char c : text) {
        const auto found = escapes.find(c);
        found == escapes.end() ? escaped.append(1, c) : escaped.append(found->second);
    }
    return escaped;
}

std::string ErrorText(std::string_view code, std::string_view message) {
    std::string xml = "<error code=\"";
    return xml.append(code).append("\" dsc=\"").append(Escaped(message)).append("\"/>");
}

} // namespace

const host::Error lostConnection{-2147467259, "[DBNETLIB][ConnectionWrite (send()).]General network error. Check your "
                                              "network documentation."};
const host::Error lostHelper{-2147023174, "RPC 服务器不可用。"};

std::optional<host::Error> Play::Note(std::string_view what, std::string_view text, int connection) {
    steps_.push_back({std::string(what), std::string(text)});
    if (fault_ && steps_.size() - 1 == fault_->step) {
        if (fault_->lost == Lost::connection) {
            lostConnection_ = fault_->connection;
        }
        helperLost_ = fault_->lost == Lost::helper;
        return fault_->error;
    }
    if (connection != noConnection && connection == lostConnection_) {
        return lostConnection;
    }
    return std::nullopt;
}

void Play::Do(std::string_view what, std::string_view text, int connection) {
    if (const std::optional<host::Error> error = Note(what, text, connection)) {
        throw host::Error(*error);
    }
}

std::string Play::Ask(std::string_view what, std::string_view text, int connection) {
    const std::optional<host::Error> error = Note(what, text, connection);
    if (error && steps_.size() - 1 == fault_->step && !fault_->inside) {
        throw host::Error(*error);
    }
    return error ? error->description() : std::string();
}

void Play::Point() {
    ++points_;
    if (fault_ && fault_->point == points_) {
        stepsBeforeFailedPoint_ = steps_.size();
        throw host::Error(fault_->error);
    }
}

void Play::LookUp(std::string_view sql) {
    Create("Recordset");
    OpenReadClose(sql);
}

void Play::OpenReadClose(std::string_view sql) {
    Do("Open", sql, main);
    Do("Read", sql, main);
    Do("Close", sql, main);
}

void Play::Helper(std::string_view what, std::string_view text) {
    if (!hasHelper_ && (helperMadeIn_ == Fault::noStep || steps_.size() <= helperMadeIn_)) {
        Create("EaiHelper");
        hasHelper_ = true;
    }
    const bool lost = helperLost_;
    Do(what, text);
    if (lost) {
        throw host::Error(lostHelper);
    }
}

void Play::Translator(std::string_view what, int connection) {
    if (!hasTranslator_) {
        Create("RsXmlHelper");
        hasTranslator_ = true;
    }
    Do(what, {}, connection);
}

bool Play::Ran(std::string_view piece) const {
    if (lostConnection_ == main && steps_.size() - 1 != fault_->step) {
        return false;
    }
    if (!fault_ || steps_.size() - 1 != fault_->step) {
        return true;
    }
    return std::ranges::any_of(fault_->doneInside,
                               [&](const std::string& text) { return text.find(piece) != std::string::npos; });
}

void Play::BeginTrans() {
    Do("BeginTrans", {}, main);
    before_ = contents_;
}

void Play::CommitTrans() {
    Do("CommitTrans", {}, main);
    before_.reset();
}

void Play::RollbackTrans() {
    Do("RollbackTrans", {}, main);
    contents_ = *before_;
    before_.reset();
}

void Play::Outcome(std::string_view key, long code, std::string_view description) {
    Helper("AddResultItem", key);
    items_.append("<item key=\"").append(Escaped(key)).append("\" code=\"").append(std::to_string(code));
    items_.append("\" dsc=\"").append(Escaped(description)).append("\"/>");
}

std::string Play::ResultDocument() const {
    std::string xml = "<qxinterface docid=\"D\" proc=\"" + proc_ + "\"";
    return items_.empty() ? xml.append("/>") : xml.append(">").append(items_).append("</qxinterface>");
}

std::string Play::Refuse(std::string_view code, std::string_view message) {
    Helper("MakeErrorResult", code);
    return ErrorText(code, message);
}

std::string Play::ErrorResult(const host::Error& error) {
    const std::string code = std::to_string(error.number());
    try {
        Helper("MakeErrorResult", code);
    } catch (const host::Error&) {
        // The text is the same where the helper does not give it.
    }
    return ErrorText(code, error.description());
}

std::vector<std::string> Play::Contents() const {
    std::vector<std::string> rows;
    for (const auto& [name, row] : before_.value_or(contents_)) {
        rows.push_back(row);
    }
    std::ranges::sort(rows);
    return rows;
}

std::string PlayTransact(Play& play, const FrameRules& rules) {
    try {
        play.Create("DOMDocument");
        if (rules.before) {
            rules.before();
        }
        play.Create("Connection");
        if (rules.connectionString) {
            rules.connectionString();
        } else {
            play.Do("Member", "QxDbName");
        }
        play.Do("Connect", "Provider=KovraAccount", Play::main);
        if (rules.after) {
            rules.after();
        }
        play.Create("DOMDocument");
        play.Helper("GetAttr", "roottag");
        if (rules.preCheck) {
            if (const std::optional<std::string> refused = rules.preCheck()) {
                return *refused;
            }
        }
        play.Helper("GetAttr", "docid");
        play.Helper("GetAttr", "proc");
        play.Helper("MakeResultDoc", "D");
        if (rules.ledgerCheck) {
            if (const std::optional<std::string> refused = rules.ledgerCheck()) {
                return *refused;
            }
        }
        play.Helper("GetAttr", "proc");
        return rules.run ? rules.run() : play.Refuse("710", rules.notOffered);
    } catch (const host::Error& error) {
        return play.ErrorResult(error);
    }
}

std::string PlayRows(Play& play, const std::function<void()>& rows) {
    try {
        rows();
    } catch (const host::Error& error) {
        play.Outcome("", 999, error.description());
    }
    play.Point();
    return play.ResultDocument();
}

} // namespace test

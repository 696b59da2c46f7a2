#pragma once

#include "host/Error.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// What a call asks of the host in one step: an operation, or reads of one recordset that follow each other directly.
struct Step {
    std::string what;
    /// Of a played step a piece of the text: as much as tells the step from others.
    std::string text;
};

/// What fails from an operation on.
enum class Lost {
    /// The operation alone fails.
    nothing,
    /// The connection that it works on.
    connection,
    /// The integration helper.
    helper,
};

/// What fails in a call.
struct Fault {
    /// Position of the step, counted from 0; none for a failure at a point.
    std::size_t step = noStep;
    static constexpr std::size_t noStep = static_cast<std::size_t>(-1);
    /// The point at which nothing but memory is asked for, counted from 1.
    std::size_t point = 0;
    host::Error error;
    /// Number of the connection that the operation works on; 0 for none.
    int connection = 0;
    Lost lost = Lost::nothing;
    /// Whether a component meets the failure inside its operation, and the statements that it got through before.
    bool inside = false;
    std::vector<std::string> doneInside = {};
};

/// How SQL Server's client reports a lost connection, and COM an object whose server has gone.
extern const host::Error lostConnection;
extern const host::Error lostHelper;

/// What must come of a call according to the rules, played step by step: each step fails where the fault says so, by
/// throwing as the host does, and the rules' own traps are the player's `try` and `catch`.
class Play {
public:
    static constexpr int noConnection = 0;
    /// The class's own connection, the first that is created.
    static constexpr int main = 1;

    /// @param proc the request's operation
    explicit Play(std::string proc, std::optional<Fault> fault = std::nullopt)
        : proc_(std::move(proc)), fault_(std::move(fault)) {}

    /// An operation. `text` is a piece of its statement, or what it is asked for.
    void Do(std::string_view what, std::string_view text = {}, int connection = noConnection);
    /// An operation of a component that answers a failure inside with a message.
    /// @return the message, or the empty text
    std::string Ask(std::string_view what, std::string_view text, int connection);
    void Create(std::string_view what) { Do("Create " + std::string(what)); }
    void Execute(std::string_view sql) { Do("Execute", sql, main); }
    /// A query of a recordset that is created for it, read and closed.
    void LookUp(std::string_view sql);
    /// The operations of a recordset that is there already.
    void OpenReadClose(std::string_view sql);
    /// An operation of the integration helper, which is created on first use.
    void Helper(std::string_view what, std::string_view text = {});
    /// An earlier call has created the helper.
    void HelperIsThere() { hasHelper_ = true; }
    /// Another call creates the helper in the course of this step.
    void HelperIsThereBehind(std::size_t step) { helperMadeIn_ = step; }
    /// An operation of the recordset translator, created likewise.
    void Translator(std::string_view what, int connection = noConnection);
    /// A point between the operations where nothing but memory is asked for.
    void Point();
    /// Whether the statement that holds `piece` ran inside the operation that has just been played.
    bool Ran(std::string_view piece) const;

    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();

    /// What the account holds: rows as the queries of the contents give them, each under a name of its own.
    void Put(std::string_view name, std::string_view row) { contents_[std::string(name)] = row; }
    void Erase(std::string_view name) { contents_.erase(std::string(name)); }
    void EraseAll() { contents_.clear(); }

    /// Appends an outcome.
    void Outcome(std::string_view key, long code, std::string_view description);
    /// The result document so far.
    std::string ResultDocument() const;
    /// The error result that the rules give a refused request.
    std::string Refuse(std::string_view code, std::string_view message);
    /// The error result of an error that reached the end of the call.
    std::string ErrorResult(const host::Error& error);

    const std::vector<Step>& steps() const { return steps_; }
    /// Number of the points that were played.
    std::size_t points() const { return points_; }
    /// Number of the steps before the point that failed.
    std::size_t stepsBeforeFailedPoint() const { return stepsBeforeFailedPoint_; }
    /// The account's rows when the connection is gone: a transaction that was left open has ended with it.
    std::vector<std::string> Contents() const;

private:
    using Rows = std::map<std::string, std::string>;

    /// Notes the step and tells how it fails.
    std::optional<host::Error> Note(std::string_view what, std::string_view text, int connection);

    std::string proc_;
    std::optional<Fault> fault_;
    std::vector<Step> steps_;
    std::size_t points_ = 0;
    std::size_t stepsBeforeFailedPoint_ = 0;
    int lostConnection_ = noConnection;
    bool helperLost_ = false;
    bool hasHelper_ = false;
    std::size_t helperMadeIn_ = Fault::noStep;
    bool hasTranslator_ = false;
    std::string items_;
    Rows contents_;
    /// What a rollback goes back to.
    std::optional<Rows> before_;
};

/// The look-ups of one row's check or of a whole row: the first creates a recordset, and each opens and closes it.
class RowLookUps {
public:
    explicit RowLookUps(Play& play) : play_(play) {}

    void LookUp(std::string_view sql) {
        if (!created_) {
            play_.Create("Recordset");
            created_ = true;
        }
        play_.OpenReadClose(sql);
    }

private:
    Play& play_;
    bool created_ = false;
};

/// What differs between the classes in the frame of a call.
struct FrameRules {
    std::string_view notOffered = "本模块暂不提供此功能！";
    /// Before the connection is created.
    std::function<void()> before = {};
    /// Reads the connection string of the login; its member `QxDbName` when empty.
    std::function<void()> connectionString = {};
    /// When the connection is open.
    std::function<void()> after = {};
    /// Gives the result of a refused request, before and after the result document is made.
    std::function<std::optional<std::string>()> preCheck = {};
    std::function<std::optional<std::string>()> ledgerCheck = {};
    /// Runs the request's operation and gives the result; empty when the class does not offer it.
    std::function<std::string()> run = {};
};

/// A whole call of `Transact`.
std::string PlayTransact(Play& play, const FrameRules& rules);

/// The row loop: one call of `row` after the other until an error stops it. Gives the result document.
std::string PlayRows(Play& play, const std::function<void()>& rows);

} // namespace test

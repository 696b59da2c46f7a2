#pragma once

#include "refhost/ado/Database.h"
#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/store/Plan.h"
#include "refhost/sql/syntax/Ast.h"
#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/syntax/Variables.h"

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace refhost::sql {

class EmbeddedDatabase;

/// Runs the statements of one text in their order: what steers the batch itself, everything else through the database.
/// Answers and errors go to the batch's sink. As on the server, an error ends its statement, some end the batch.
class BatchRunner {
public:
    /// @param parser that has read the text; all three outlive the runner
    BatchRunner(EmbeddedDatabase& database, const Parser& parser, const BatchSink& sink);
    ~BatchRunner();
    BatchRunner(const BatchRunner&) = delete;
    BatchRunner& operator=(const BatchRunner&) = delete;

    void Run(const Statements& statements);
    void Run(const Statement& statement);

private:
    /// Where a batch goes on behind a statement.
    enum class Flow { next, leaveLoop, repeatLoop, endBatch };

    /// A runner of a text that a statement of `outer` runs, with variables of its own.
    BatchRunner(BatchRunner& outer, const Parser& parser);

    Flow RunAll(const Statements& statements);
    Flow RunGuarded(const Statement& statement);
    Flow RunKind(const Statement& statement);
    Flow RunLoop(const Loop& loop);
    Flow RunTryCatch(const TryCatch& statement);
    void Report(const host::Error& error);

    // One statement each; the others go to the database.
    void RunManipulation(const Statement& statement);
    void RunDeclare(const Declare& declare);
    /// Takes the batch's table variables away.
    void DropTableVariables() noexcept;
    void RunSet(const SetVariable& set);
    void RunPrint(const Print& print);
    /// Runs a text with its parameters, and gives all its variables as they are at its end.
    Variables RunText(const std::string& text, Variables parameters);
    void RunProcedure(const ExecuteProcedure& execute);
    void RunExecuteSql(const ExecuteProcedure& execute);
    void RunRaiseError(const RaiseError& raise);
    [[noreturn]] void RunThrow(const Throw& thrown);
    void Say(std::string text);

    bool Holds(const Expression& condition);
    /// A value as what a variable or an argument of that type takes.
    Cell Evaluate(const Expression& expression, const Type& type);
    std::string EvaluateText(const Expression& expression);

    /// Runs a plan that is made once as long as definitions stay; made anew when they moved, before anything ran.
    void RunPlanned(const void* node, const std::function<Plan()>& make, const std::function<void(const Plan&)>& run);
    const Plan& PlanFor(const void* node, const std::function<Plan()>& make);
    Binder MakeBinder() const;

    EmbeddedDatabase& database_;
    const std::vector<Literal>& literals_;
    const BatchSink& sink_;
    Variables variables_;
    /// What the session had before.
    Variables* outerVariables_;
    /// The tables of the table variables that it has declared.
    std::vector<Name> tables_;
    /// How many TRY blocks are open, those of outer texts included.
    int tries_ = 0;
    /// Plans by the statement or expression that they are for, of one generation of definitions.
    std::unordered_map<const void*, Plan> plans_;
    std::size_t generation_ = 0;
};

} // namespace refhost::sql

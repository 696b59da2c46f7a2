#include "refhost/sql/engine/BatchRunner.h"

#include "refhost/sql/binding/Definer.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

namespace refhost::sql {
namespace {

using host::error_number::unspecified;

/// How deeply a text may run another (SQL Server's nesting of procedures).
constexpr int maxNesting = 32;

/// A statement that could not be compiled: no TRY of its own text catches that.
struct CompileFailure {
    host::Error error;
};

/// Errors that end their statement alone: violations, values that do not fit, transactions and procedures that are not
/// there. After all others the server ends the batch, failed conversions and names that do not resolve among them.
/// Microsoft publishes no such table: the page of SET XACT_ABORT speaks of severity alone, and sys.messages says
/// nothing of it. This one follows Erland Sommarskog's "Error Handling in SQL 2000 - a Background", section
/// "Statement-termination and Batch-abortion", which tells what he observed of everyday errors; those that it does not
/// name go with their like.
constexpr std::array statementErrors{220,  232,  242,  512,  515,  517,  530,  535,  536,  537,  544,  547, 628,
                                     1505, 2601, 2627, 2628, 2812, 3701, 3902, 3903, 6401, 8115, 8134, 8152};

bool EndsBatch(const host::Error& error) {
    return std::ranges::find(statementErrors, error.native()) == statementErrors.end();
}

/// The number of RAISERROR with a text. ADO's is that of every error whose number drivers do not know (SQLSTATE 42000).
constexpr int raisedNumber = 50000;

template <class... Visitors> struct Overloaded : Visitors... { using Visitors::operator()...; };
template <class... Visitors> Overloaded(Visitors...) -> Overloaded<Visitors...>;

} // namespace

BatchRunner::BatchRunner(EmbeddedDatabase& database, const Parser& parser, const BatchSink& sink)
    : database_(database), literals_(parser.Literals()), sink_(sink), variables_(parser.Declared()),
      outerVariables_(database.session_.variables) {
    database_.session_.variables = database_.runtime_->variables = &variables_;
}

BatchRunner::BatchRunner(BatchRunner& outer, const Parser& parser) : BatchRunner(outer.database_, parser, outer.sink_) {
    tries_ = outer.tries_;
}

BatchRunner::~BatchRunner() {
    DropTableVariables();
    database_.session_.variables = database_.runtime_->variables = outerVariables_;
}

void BatchRunner::DropTableVariables() noexcept {
    if (tables_.empty()) {
        return;
    }
    try {
        database_.RunDefinition({Drop{ObjectKind::table, true, std::move(tables_)}}, literals_);
    } catch (...) { // NOLINT(bugprone-empty-catch): they end with the session at the latest
    }
}

void BatchRunner::Run(const Statements& statements) {
    try {
        RunAll(statements);
    } catch (const CompileFailure& failure) {
        Report(failure.error);
    }
}

void BatchRunner::Run(const Statement& statement) {
    try {
        RunGuarded(statement);
    } catch (const CompileFailure& failure) {
        Report(failure.error);
    }
}

BatchRunner::Flow BatchRunner::RunAll(const Statements& statements) {
    for (const Statement& statement : statements) {
        if (const Flow flow = RunGuarded(statement); flow != Flow::next) {
            return flow;
        }
    }
    return Flow::next;
}

BatchRunner::Flow BatchRunner::RunGuarded(const Statement& statement) {
    try {
        database_.RequireTime();
        if (statement.As<Transaction>() == nullptr) {
            database_.RequireLiveTransaction();
        }
        return RunKind(statement);
    } catch (const host::Error& error) {
        database_.NoteError(error);
        if (tries_ > 0) {
            throw;
        }
        Report(error);
        if (database_.session_.xactAbort) {
            database_.Abort();
            return Flow::endBatch;
        }
        return EndsBatch(error) ? Flow::endBatch : Flow::next;
    }
}

void BatchRunner::Report(const host::Error& error) {
    if (sink_) {
        sink_(error);
    }
}

BatchRunner::Flow BatchRunner::RunKind(const Statement& statement) {
    const auto done = [this](auto&& run) {
        run();
        database_.runtime_->lastError = 0;
        return Flow::next;
    };
    const auto countless = [&](auto&& run) {
        run();
        database_.runtime_->rowCount = 0;
        database_.runtime_->lastError = 0;
        return Flow::next;
    };
    const auto manipulation = [&] { return done([&] { RunManipulation(statement); }); };
    const auto definition = [&] { return countless([&] { database_.RunDefinition(statement, literals_); }); };
    return std::visit(Overloaded{
                          [&](const SelectPtr&) { return manipulation(); },
                          [&](const Insert&) { return manipulation(); },
                          [&](const Update&) { return manipulation(); },
                          [&](const Delete&) { return manipulation(); },
                          [&](const Merge&) { return manipulation(); },
                          [&](const CreateTable&) { return definition(); },
                          [&](const CreateView&) { return definition(); },
                          [&](const CreateIndex&) { return definition(); },
                          [&](const Drop&) { return definition(); },
                          [&](const AlterTable&) { return definition(); },
                          [&](const Truncate&) { return definition(); },
                          [&](const Transaction& each) { return countless([&] { database_.RunTransaction(each); }); },
                          [&](const SetOption& each) { return countless([&] { database_.RunSetOption(each); }); },
                          [&](const Use& each) {
                              return countless(
                                  [&] { Say("Changed database context to '" + database_.RunUse(each) + "'."); });
                          },
                          [&](const Declare& each) { return done([&] { RunDeclare(each); }); },
                          [&](const SetVariable& each) { return done([&] { RunSet(each); }); },
                          [&](const Print& each) { return countless([&] { RunPrint(each); }); },
                          [&](const ExecuteText& each) { return done([&] { RunText(EvaluateText(*each.text), {}); }); },
                          [&](const ExecuteProcedure& each) { return done([&] { RunProcedure(each); }); },
                          [&](const RaiseError& each) {
                              RunRaiseError(each);
                              return Flow::next;
                          },
                          [&](const Throw& each) -> Flow { RunThrow(each); },
                          [&](Jump jump) {
                              return jump == Jump::breakLoop      ? Flow::leaveLoop
                                     : jump == Jump::continueLoop ? Flow::repeatLoop
                                                                  : Flow::endBatch;
                          },
                          [&](const Block& each) { return RunAll(each.statements); },
                          [&](const Conditional& each) {
                              const bool holds = Holds(*each.condition);
                              database_.runtime_->rowCount = 0;
                              return RunAll(holds ? each.then : each.otherwise);
                          },
                          [&](const Loop& each) { return RunLoop(each); },
                          [&](const TryCatch& each) { return RunTryCatch(each); },
                      },
                      statement.kind);
}

BatchRunner::Flow BatchRunner::RunLoop(const Loop& loop) {
    while (Holds(*loop.condition)) {
        database_.RequireTime();
        const Flow flow = RunAll(loop.body);
        if (flow == Flow::leaveLoop) {
            break;
        }
        if (flow == Flow::endBatch) {
            return flow;
        }
    }
    return Flow::next;
}

BatchRunner::Flow BatchRunner::RunTryCatch(const TryCatch& statement) {
    std::optional<host::Error> failure;
    Flow flow = Flow::next;
    ++tries_;
    try {
        flow = RunAll(statement.tried);
    } catch (const host::Error& error) {
        failure = error;
    } catch (...) {
        --tries_;
        throw;
    }
    --tries_;
    if (failure) {
        std::optional<host::Error>& caught = database_.runtime_->caught;
        std::optional<host::Error> outer = std::exchange(caught, std::move(failure));
        try {
            flow = RunAll(statement.caught);
        } catch (...) {
            caught = std::move(outer);
            throw;
        }
        caught = std::move(outer);
    }
    return flow;
}

// Single statements.

void BatchRunner::RunManipulation(const Statement& statement) {
    const Select* select = statement.Query();
    if (select != nullptr && select->into) {
        return database_.RunSelectInto(*select, literals_, sink_);
    }
    try {
        RunPlanned(
            &statement, [&] { return database_.BindPlan(statement, literals_); },
            [&](const Plan& plan) { database_.RunPlan(plan, literals_, sink_); });
    } catch (const DuplicateKey& duplicate) {
        database_.FailDuplicate(duplicate, statement, literals_);
    }
}

void BatchRunner::RunDeclare(const Declare& declare) {
    for (const CreateTable& table : declare.tables) {
        // In a loop the table stays, with its rows, as a variable keeps its value.
        const bool known =
            std::ranges::any_of(tables_, [&](const Name& name) { return EqualNames(name.Last(), table.table.Last()); });
        if (!known) {
            Definer(database_.db_.get(), *database_.catalog_, database_.session_, literals_).Create(table);
            database_.ForgetPlans();
            tables_.push_back(table.table);
        }
    }
    for (const VariableDefinition& variable : declare.variables) {
        // The variable itself is there from the beginning, and in a loop keeps its value.
        if (variable.value) {
            variables_.Set(*variables_.Find(variable.name), Evaluate(*variable.value, variable.type));
        }
    }
}

void BatchRunner::RunSet(const SetVariable& set) {
    const std::size_t index = *variables_.Find(set.name);
    variables_.Set(index, Evaluate(*set.value, variables_[index].type));
    database_.runtime_->rowCount = 1;
}

void BatchRunner::RunPrint(const Print& print) { Say(EvaluateText(*print.value)); }

void BatchRunner::Say(std::string text) {
    if (sink_) {
        sink_(ServerMessage{std::move(text)});
    }
}

Variables BatchRunner::RunText(const std::string& text, Variables parameters) {
    if (++database_.nesting_ > maxNesting) {
        --database_.nesting_;
        Fail(217, "Maximum stored procedure, function, trigger, or view nesting level exceeded (limit {}).",
             maxNesting);
    }
    const auto leave = [](int* nesting) { --*nesting; };
    const std::unique_ptr<int, decltype(leave)> guard(&database_.nesting_, leave);
    Parser parser(text, database_.options_);
    const Statements statements = parser.ParseScript(std::move(parameters));
    BatchRunner inner(*this, parser);
    try {
        inner.RunAll(statements);
    } catch (const CompileFailure& failure) {
        // To the outer text this is an error like any other.
        throw host::Error(failure.error);
    }
    return std::move(inner.variables_);
}

void BatchRunner::RunProcedure(const ExecuteProcedure& execute) {
    if (EqualNames(execute.procedure.Last(), "sp_executesql")) {
        return RunExecuteSql(execute);
    }
    Fail(2812, "Could not find stored procedure '{}'.", execute.procedure.Text());
}

void BatchRunner::RunExecuteSql(const ExecuteProcedure& execute) {
    const auto refuse = [] { Fail(214, "Procedure expects parameter '@statement' of type 'ntext/nchar/nvarchar'."); };
    if (execute.arguments.empty()) {
        refuse();
    }
    const std::string text = EvaluateText(*execute.arguments[0].value);
    Variables parameters;
    std::string definitions;
    if (execute.arguments.size() > 1) {
        definitions = EvaluateText(*execute.arguments[1].value);
        parameters = Parser(definitions, {}).ParseParameters();
    }
    // Where each further argument goes: by its name, or else by its place.
    std::vector<std::size_t> places;
    for (std::size_t i = 2; i < execute.arguments.size(); ++i) {
        const ProcedureArgument& argument = execute.arguments[i];
        const std::optional<std::size_t> place =
            argument.name.empty() ? std::optional(i - 2) : parameters.Find(argument.name);
        if (!place || *place >= parameters.Size()) {
            Fail(8144, "Procedure or function has too many arguments specified.");
        }
        parameters.Set(*place, Evaluate(*argument.value, parameters[*place].type));
        places.push_back(*place);
    }
    if (places.size() < parameters.Size()) {
        Fail(8178, "The parameterized query '({}){}' expects the parameter '{}', which was not supplied.", definitions,
             text, parameters[places.size()].name);
    }
    const Variables after = RunText(text, std::move(parameters));
    for (std::size_t i = 2; i < execute.arguments.size(); ++i) {
        const ProcedureArgument& argument = execute.arguments[i];
        if (argument.output && argument.value->node == Node::variable) {
            const std::size_t target = *variables_.Find(argument.value->text);
            const Variable& source = after[places[i - 2]];
            Cell value = source.value;
            Convert(value, source.type, variables_[target].type, 0, Surplus::cut);
            variables_.Set(target, value);
        }
    }
}

void BatchRunner::RunRaiseError(const RaiseError& raise) {
    const std::string format = EvaluateText(*raise.arguments[0]);
    std::string message;
    std::size_t next = 3;
    for (std::size_t i = 0; i < format.size(); ++i) {
        const char kind = format[i] == '%' && i + 1 < format.size() ? format[i + 1] : '\0';
        if (kind == '%') {
            message += '%';
            ++i;
        } else if (std::string_view("sdiu").find(kind) != std::string_view::npos && kind != '\0') {
            message += next < raise.arguments.size() ? EvaluateText(*raise.arguments[next++]) : "(null)";
            ++i;
        } else {
            message += format[i];
        }
    }
    constexpr std::int64_t leastError = 11;
    if (Evaluate(*raise.arguments[1], integerType).integer < leastError) {
        return Say(std::move(message));
    }
    // It ends nothing by itself, but a TRY catches it.
    const host::Error error(host::error_number::syntaxError, std::move(message), raisedNumber);
    if (tries_ > 0) {
        throw host::Error(error);
    }
    Report(error);
    database_.NoteError(error);
}

void BatchRunner::RunThrow(const Throw& thrown) {
    if (thrown.arguments.empty()) {
        const std::optional<host::Error>& caught = database_.runtime_->caught;
        if (!caught) {
            Fail(10704, "To rethrow an error, a THROW statement must be used inside a CATCH block.");
        }
        throw host::Error(*caught);
    }
    const auto number = static_cast<int>(Evaluate(*thrown.arguments[0], integerType).integer);
    throw host::Error(host::error_number::syntaxError, EvaluateText(*thrown.arguments[1]), number);
}

// Values.

Binder BatchRunner::MakeBinder() const {
    return {*database_.catalog_, database_.session_, literals_, LiteralUse::parameters};
}

bool BatchRunner::Holds(const Expression& condition) {
    bool holds = false;
    RunPlanned(
        &condition, [&] { return MakeBinder().BindConditionPlan(condition); },
        [&](const Plan& plan) {
            ResultSet truth;
            BindParameters(plan, literals_, &variables_);
            database_.Step(plan, &truth);
            holds = *truth.cells[0].As<std::int64_t>() != 0;
        });
    return holds;
}

Cell BatchRunner::Evaluate(const Expression& expression, const Type& type) {
    Cell value;
    RunPlanned(
        &expression, [&] { return MakeBinder().BindValuePlan(expression, type); },
        [&](const Plan& plan) {
            BindParameters(plan, literals_, &variables_);
            value = database_.StepValue(plan);
        });
    return value;
}

std::string BatchRunner::EvaluateText(const Expression& expression) {
    return std::string(Evaluate(expression, endlessText).Bytes());
}

void BatchRunner::RunPlanned(const void* node, const std::function<Plan()>& make,
                             const std::function<void(const Plan&)>& run) {
    constexpr int attempts = 5;
    for (int attempt = 1;; ++attempt) {
        try {
            return run(PlanFor(node, make));
        } catch (const DefinitionsMoved&) {
            // SQLite refused before the statement did anything.
            database_.ForgetPlans();
            if (attempt == attempts) {
                FailMoving();
            }
        }
    }
}

const Plan& BatchRunner::PlanFor(const void* node, const std::function<Plan()>& make) {
    if (generation_ != database_.generation_) {
        plans_.clear();
        generation_ = database_.generation_;
    }
    const auto known = plans_.find(node);
    if (known != plans_.end()) {
        return known->second;
    }
    try {
        Plan plan = make();
        database_.PreparePlan(plan);
        return plans_.emplace(node, std::move(plan)).first->second;
    } catch (const host::Error& error) {
        throw CompileFailure{error};
    }
}

} // namespace refhost::sql

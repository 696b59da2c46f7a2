#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <array>

namespace refhost::sql {

/// How many terms a sum and factors a product may have.
constexpr int maxTerms = 500;

ExpressionPtr Parser::ParseCondition() {
    ExpressionPtr condition = ParseAny();
    if (!IsCondition(condition->node)) {
        FailCondition();
    }
    return condition;
}

ExpressionPtr Parser::ParseJoined(std::string_view word, Node node, ExpressionPtr (Parser::*part)()) {
    ExpressionPtr left = (this->*part)();
    if (!At(word)) {
        return left;
    }
    if (!IsCondition(left->node)) {
        FailCondition();
    }
    ExpressionPtr joined = Make(node, std::move(left));
    while (Accept(word)) {
        joined->arguments.push_back((this->*part)());
        if (!IsCondition(joined->arguments.back()->node)) {
            FailCondition();
        }
    }
    return joined;
}

ExpressionPtr Parser::ParseAny() {
    const Depth depth(*this);
    return ParseJoined("or", Node::disjunction, &Parser::ParseAnd);
}

ExpressionPtr Parser::ParseAnd() { return ParseJoined("and", Node::conjunction, &Parser::ParseNot); }

ExpressionPtr Parser::ParseNot() {
    if (At("not")) {
        const Depth depth(*this);
        Advance();
        ExpressionPtr condition = ParseNot();
        if (!IsCondition(condition->node)) {
            FailCondition();
        }
        return Make(Node::negation, std::move(condition));
    }
    return ParsePredicate();
}

ExpressionPtr Parser::ParsePredicate() {
    if (Accept("exists")) {
        ExpressionPtr exists = Make(Node::exists);
        ExpectSymbol("(");
        exists->select = ParseSelect();
        ExpectSymbol(")");
        return exists;
    }
    ExpressionPtr value = ParseSum(true);
    if (IsCondition(value->node)) {
        return value;
    }
    return ParsePredicateTail(std::move(value));
}

ExpressionPtr Parser::ParsePredicateTail(ExpressionPtr value) {
    if (token_.kind == TokenKind::symbol) {
        static constexpr std::array<std::pair<std::string_view, std::string_view>, 9> comparisons{{
            {"=", "="},
            {"<>", "<>"},
            {"!=", "<>"},
            {"<", "<"},
            {"<=", "<="},
            {">", ">"},
            {">=", ">="},
            {"!<", ">="},
            {"!>", "<="},
        }};
        for (const auto& [written, meant] : comparisons) {
            if (AcceptSymbol(written)) {
                ExpressionPtr compare = Make(Node::compare, std::move(value), ParseValue());
                compare->text = meant;
                return compare;
            }
        }
        return value;
    }
    if (Accept("is")) {
        ExpressionPtr test = Make(Node::isNull, std::move(value));
        test->flag = Accept("not");
        Expect("null");
        return test;
    }
    bool negated = false;
    if (At("not")) {
        negated = true;
        Advance();
        if (!At("like") && !At("between") && !At("in")) {
            FailHere();
        }
    }
    if (Accept("like")) {
        ExpressionPtr like = Make(Node::like, std::move(value), ParseValue());
        like->flag = negated;
        if (Accept("escape")) {
            like->arguments.push_back(ParseValue());
        }
        return like;
    }
    if (Accept("between")) {
        ExpressionPtr between = Make(Node::between, std::move(value), ParseValue());
        between->flag = negated;
        Expect("and");
        between->arguments.push_back(ParseValue());
        return between;
    }
    if (Accept("in")) {
        return ParseIn(std::move(value), negated);
    }
    return value;
}

ExpressionPtr Parser::ParseIn(ExpressionPtr value, bool negated) {
    ExpectSymbol("(");
    ExpressionPtr in = Make(At("select") ? Node::inSelect : Node::inList, std::move(value));
    in->flag = negated;
    if (in->node == Node::inSelect) {
        in->select = ParseSelect();
    } else {
        do {
            in->arguments.push_back(ParseValue());
        } while (AcceptSymbol(","));
    }
    ExpectSymbol(")");
    return in;
}

ExpressionPtr Parser::ParseValue() {
    const Depth depth(*this);
    return ParseSum(false);
}

ExpressionPtr Parser::ParseSum(bool conditionAllowed) {
    ExpressionPtr left = ParseProduct(conditionAllowed);
    int terms = 0;
    while (!IsCondition(left->node) && (AtSymbol("+") || AtSymbol("-"))) {
        if (++terms > maxTerms) {
            FailDepth();
        }
        std::string operation = token_.text;
        Advance();
        left = Make(Node::binary, std::move(left), ParseProduct(false));
        left->text = std::move(operation);
    }
    return left;
}

ExpressionPtr Parser::ParseProduct(bool conditionAllowed) {
    ExpressionPtr left = ParseUnary(conditionAllowed);
    int factors = 0;
    while (!IsCondition(left->node) && (AtSymbol("*") || AtSymbol("/") || AtSymbol("%"))) {
        if (++factors > maxTerms) {
            FailHere();
        }
        std::string operation = token_.text;
        Advance();
        left = Make(Node::binary, std::move(left), ParseUnary(false));
        left->text = std::move(operation);
    }
    return left;
}

ExpressionPtr Parser::ParseUnary(bool conditionAllowed) {
    if (AtSymbol("-") || AtSymbol("+")) {
        const Depth depth(*this);
        const Node node = AtSymbol("-") ? Node::negate : Node::plus;
        Advance();
        return Make(node, ParseUnary(false));
    }
    ExpressionPtr value = ParsePrimary(conditionAllowed);
    while (!IsCondition(value->node) && Accept("collate")) {
        value = Make(Node::collate, std::move(value));
        value->text = TakeName();
    }
    return value;
}

ExpressionPtr Parser::ParsePrimary(bool conditionAllowed) {
    if (token_.kind == TokenKind::literal) {
        ExpressionPtr literal = Make(Node::literal);
        literal->literal = token_.literal;
        Advance();
        return literal;
    }
    if (AtSymbol("(")) {
        return ParseParenthesis(conditionAllowed);
    }
    if (Accept("null")) {
        return Make(Node::null);
    }
    if (Accept("case")) {
        return ParseCase();
    }
    if ((At("cast") || At("try_cast")) && Peek().IsSymbol("(")) {
        const bool tries = At("try_cast");
        Advance();
        return ParseConvert(true, tries);
    }
    if (At("convert") || (At("try_convert") && Peek().IsSymbol("("))) {
        const bool tries = At("try_convert");
        Advance();
        return ParseConvert(false, tries);
    }
    if (AtVariable()) {
        if (inDefinition_) {
            Fail(112, "Variables are not allowed in the CREATE TABLE statement.");
        }
        RequireDeclared(token_.text);
        ExpressionPtr variable = Make(Node::variable);
        variable->text = token_.text;
        Advance();
        return variable;
    }
    return ParseNameOrCall();
}

ExpressionPtr Parser::ParseParenthesis(bool conditionAllowed) {
    const Depth depth(*this);
    ExpectSymbol("(");
    if (At("select")) {
        ExpressionPtr subquery = Make(Node::subquery);
        subquery->select = ParseSelect();
        ExpectSymbol(")");
        return subquery;
    }
    ExpressionPtr inner = conditionAllowed ? ParseAny() : ParseValue();
    ExpectSymbol(")");
    return inner;
}

ExpressionPtr Parser::ParseCase() {
    const Depth depth(*this);
    ExpressionPtr expression = Make(Node::caseOf);
    expression->flag = !At("when");
    if (expression->flag) {
        expression->arguments.push_back(ParseValue());
    }
    if (!At("when")) {
        FailHere();
    }
    while (Accept("when")) {
        expression->arguments.push_back(expression->flag ? ParseValue() : ParseCondition());
        Expect("then");
        expression->arguments.push_back(ParseValue());
    }
    if (Accept("else")) {
        expression->arguments.push_back(ParseValue());
    }
    Expect("end");
    return expression;
}

ExpressionPtr Parser::ParseConvert(bool cast, bool tries) {
    ExpressionPtr convert = Make(Node::convert);
    convert->flag = tries;
    ExpectSymbol("(");
    // The length of a type that a conversion names without one.
    constexpr int conversionLength = 30;
    if (cast) {
        convert->arguments.push_back(ParseValue());
        Expect("as");
        convert->type = ParseType(conversionLength);
    } else {
        convert->type = ParseType(conversionLength);
        ExpectSymbol(",");
        convert->arguments.push_back(ParseValue());
        if (AcceptSymbol(",")) {
            convert->arguments.push_back(ParseValue());
        }
    }
    ExpectSymbol(")");
    return convert;
}

ExpressionPtr Parser::ParseNameOrCall() {
    // Functions whose names are reserved words.
    const bool reservedCall =
        (At("left") || At("right") || At("coalesce") || At("nullif") || At("user")) && Peek().IsSymbol("(");
    Name name;
    if (reservedCall) {
        name.parts.push_back(token_.text);
        Advance();
        return ParseCall(std::move(name));
    }
    if (AtNameToken() && Peek().IsSymbol("(")) {
        name.parts.push_back(TakeName());
        return ParseCall(std::move(name));
    }
    name.parts.push_back(TakeName());
    while (AcceptSymbol(".")) {
        if (AtSymbol(".") && name.parts.size() < 3) {
            name.parts.emplace_back();
            continue;
        }
        if (AcceptSymbol("*")) {
            ExpressionPtr star = Make(Node::star);
            star->name = std::move(name);
            return star;
        }
        name.parts.push_back(TakeName());
        if (name.parts.size() > 4) {
            FailHere();
        }
    }
    ExpressionPtr column = Make(Node::column);
    column->name = std::move(name);
    return column;
}

ExpressionPtr Parser::ParseCall(Name name) {
    const Depth depth(*this);
    ExpressionPtr call = Make(Node::function);
    call->name = std::move(name);
    ExpectSymbol("(");
    if (!AtSymbol(")")) {
        call->flag = Accept("distinct");
        if (AtSymbol("*")) {
            call->arguments.push_back(Make(Node::star));
            Advance();
        } else if (EqualNames(call->name.Last(), "iif")) {
            // IIF is short for CASE (its page says so), with a condition as its first argument.
            call->node = Node::caseOf;
            call->arguments.push_back(ParseCondition());
            for (int i = 0; i < 2; ++i) {
                ExpectSymbol(",");
                call->arguments.push_back(ParseValue());
            }
        } else {
            do {
                call->arguments.push_back(ParseValue());
            } while (AcceptSymbol(","));
        }
    }
    ExpectSymbol(")");
    if (At("within") && Peek().Is("group")) {
        Advance();
        Advance();
        ExpectSymbol("(");
        Expect("order");
        call->within = ParseOrderItems();
        ExpectSymbol(")");
    }
    if (Accept("over")) {
        call->window = ParseWindow();
    }
    return call;
}

std::unique_ptr<Window> Parser::ParseWindow() {
    auto window = std::make_unique<Window>();
    ExpectSymbol("(");
    if (Accept("partition")) {
        Expect("by");
        do {
            window->partition.push_back(ParseValue());
        } while (AcceptSymbol(","));
    }
    if (Accept("order")) {
        window->order = ParseOrderItems();
        if (At("rows") || At("range")) {
            window->frame = ParseFrame();
        }
    }
    ExpectSymbol(")");
    return window;
}

std::string Parser::ParseFrame() {
    std::string frame = Accept("rows") ? " ROWS" : " RANGE";
    if (frame == " RANGE") {
        Expect("range");
    }
    if (!Accept("between")) {
        return frame + ParseFrameBound();
    }
    frame += " BETWEEN" + ParseFrameBound();
    Expect("and");
    return frame + " AND" + ParseFrameBound();
}

std::string Parser::ParseFrameBound() {
    if (Accept("current")) {
        Expect("row");
        return " CURRENT ROW";
    }
    std::string bound = " UNBOUNDED";
    if (!Accept("unbounded")) {
        bound = " " + std::to_string(TakeWholeNumber());
    }
    if (Accept("preceding")) {
        return bound + " PRECEDING";
    }
    Expect("following");
    return bound + " FOLLOWING";
}

} // namespace refhost::sql

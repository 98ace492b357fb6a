#include "algebra/algebra_imp.h"

#include <utility>

#include "algebra/function_tokens.h"
#include "algebra/limits.h"
#include "algebra/parser.h"
#include "algebra/statement_reader.h"
#include "str/str.h"

namespace ko::alg {

namespace {

/// Sets the depth for as long as the object lives.
class depth_scope_t {
public:
    depth_scope_t(unsigned& counter, unsigned value)
        : depth(counter), outer(std::exchange(counter, value)) {}
    depth_scope_t(const depth_scope_t&) = delete;
    depth_scope_t& operator=(const depth_scope_t&) = delete;
    ~depth_scope_t() { depth = outer; }

private:
    unsigned& depth;
    const unsigned outer;
};

} // namespace

algebra_t::imp_t::imp_t(algebra_t& evaluator) : owner(evaluator) {}

algebra_t::imp_t::imp_t(algebra_t& evaluator, const imp_t& other) : imp_t(evaluator) {
    depth = other.depth;
    *this = other;
}

/// Copies first, so that a failure leaves this object as it was.
algebra_t::imp_t& algebra_t::imp_t::operator=(const imp_t& other) {
    if (this == &other) {
        return *this;
    }
    std::shared_ptr<list_t> program_copy;
    if (other.program != nullptr) {
        program_copy = std::make_shared<list_t>(*other.program);
        calls_rebind(*program_copy, other.functions.scripts_get(), functions.scripts_get());
    }
    variables_t memory_copy = other.memory;
    program = std::move(program_copy);
    memory = std::move(memory_copy);
    macros = other.macros;
    functions = other.functions;
    return *this;
}

bool algebra_t::imp_t::statement_get(const std::string& text, std::string& line) const {
    statement_t statement = statement_read(text);
    if (statement.substitute) {
        macros.substitute(statement.text);
    }
    line = std::move(statement.text);
    return !str::all_whitespace(line);
}

bool algebra_t::imp_t::parse(const std::string& text, list_t& tokens) {
    std::string line;
    if (!statement_get(text, line)) {
        return false;
    }
    tokens.destroy();
    return bind(line, tokens);
}

bool algebra_t::imp_t::parse(const std::string& text) {
    std::string line;
    if (!statement_get(text, line)) {
        return false;
    }
    program = std::make_shared<list_t>();
    return bind(line, *program);
}

bool algebra_t::imp_t::bind(std::string& line, list_t& tokens) {
    return line_parse(line, {functions, numeric_only}, tokens, parse_error);
}

void algebra_t::imp_t::program_clear() {
    program.reset();
}

result_t algebra_t::imp_t::evaluate() {
    const std::shared_ptr<const list_t> running = program;
    return running == nullptr ? result_t() : evaluate(*running);
}

/// An evaluation that a function starts is nested in the one that called the function.
result_t algebra_t::imp_t::evaluate(const list_t& tokens) {
    const depth_scope_t scope(
        depth, called == nullptr ? depth : nested(depth, function_nesting, *called));
    return run(tokens);
}

result_t algebra_t::imp_t::run(const list_t& tokens) {
    if (tokens.empty()) {
        return {};
    }
    try {
        return tokens.front()->evaluate(owner);
    } catch (return_exception_t& returned) {
        return std::move(returned.value);
    }
}

void algebra_t::imp_t::eval_and_assign(const std::string& name, const std::string& expression) {
    list_t tokens;
    parse(expression, tokens);
    const depth_scope_t scope(depth, nested(depth, assign_nesting, name));
    const result_t value = run(tokens);
    tokens.destroy();
    memory.assign(name, value);
}

void algebra_t::imp_t::call_begin(const imp_t& caller, unsigned call_depth) {
    memory = caller.memory;
    macros = caller.macros;
    functions = caller.functions;
    depth = call_depth;
}

call_scope_t::call_scope_t(algebra_t& algebra, const std::string& name)
    : state(algebra_t::imp_t::of(algebra)), outer(std::exchange(state.called, &name)) {}

call_scope_t::~call_scope_t() {
    state.called = outer;
}

result_t script_call(algebra_t& caller, const function_t& function, std::vector<result_t>& values,
                     std::size_t base) {
    const algebra_t::imp_t& state = algebra_t::imp_t::of(caller);
    const unsigned depth = nested(state.depth, script_nesting, function.name);
    const call_scope_t scope(caller, function.name);
    algebra_t callee;
    algebra_t::imp_t::of(callee).call_begin(state, depth);
    for (const std::string& parameter : function.parameters) {
        callee.assign(parameter, values[base++]);
    }
    return callee.evaluate(function.body);
}

} // namespace ko::alg

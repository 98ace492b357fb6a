#include "algebra/algebra_imp.h"

#include <utility>

#include "algebra/function_tokens.h"
#include "algebra/limits.h"
#include "algebra/parser.h"
#include "algebra/statement_reader.h"
#include "exception/exception.h"
#include "str/str.h"

namespace ko::alg {

namespace {

/// Adds levels to a depth for as long as the object lives.
class depth_scope_t {
public:
    depth_scope_t(unsigned& counter, unsigned count) : depth(counter), levels(count) {
        depth += levels;
    }
    depth_scope_t(const depth_scope_t&) = delete;
    depth_scope_t& operator=(const depth_scope_t&) = delete;
    ~depth_scope_t() { depth -= levels; }

private:
    unsigned& depth;
    const unsigned levels;
};

} // namespace

algebra_t::imp_t::imp_t(algebra_t& evaluator) : owner(evaluator) {}

algebra_t::imp_t::imp_t(algebra_t& evaluator, const imp_t& other) : imp_t(evaluator) {
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
    variables_t variables = other.memory;
    origin_take(other.origin_for_copy());
    program = std::move(program_copy);
    memory = std::move(variables);
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

result_t algebra_t::imp_t::evaluate(const list_t& tokens) {
    const depth_scope_t scope(depth, call_levels());
    return run(tokens);
}

unsigned algebra_t::imp_t::depth_get() const {
    const std::shared_ptr<const origin_t> source = origin.lock();
    return source == nullptr ? depth : depth + source->depth;
}

/// Number of levels that a function adds which starts an evaluation, 0 where none is running.
/// @throws ko::exception_t the limit is exceeded
unsigned algebra_t::imp_t::call_levels() const {
    const std::shared_ptr<const origin_t> source = origin.lock();
    if (called == nullptr && source == nullptr) {
        return 0;
    }
    nesting_check(depth_get(), function_nesting, called == nullptr ? source->function : *called);
    return 1;
}

std::weak_ptr<const algebra_t::imp_t::origin_t> algebra_t::imp_t::origin_for_copy() const {
    if (called == nullptr) {
        return origin;
    }
    if (call_origin == nullptr) {
        call_origin = std::make_shared<const origin_t>(origin_t{depth_get(), *called, this});
    }
    return call_origin;
}

void algebra_t::imp_t::origin_take(const std::weak_ptr<const origin_t>& other) {
    const std::shared_ptr<const origin_t> source = other.lock();
    if (source == nullptr || source->caller != this) {
        origin = other;
    }
}

result_t algebra_t::imp_t::run(const list_t& tokens) {
    if (tokens.empty()) {
        return {};
    }
    if (tokens.front() == nullptr) {
        throw exception_t("algebra_t::evaluate() -- null token");
    }
    try {
        return tokens.front()->evaluate(owner);
    } catch (return_exception_t& returned) {
        return std::move(returned.value);
    }
}

void algebra_t::imp_t::eval_and_assign(const std::string& name, const std::string& expression) {
    // The name may be the parse error, which the parse replaces.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const std::string variable = name;
    list_t tokens;
    parse(expression, tokens);
    nesting_check(depth_get(), assign_nesting, variable);
    const depth_scope_t scope(depth, 1);
    const result_t value = run(tokens);
    tokens.destroy();
    memory.assign(variable, value);
}

void algebra_t::imp_t::memory_copy(const imp_t& other) {
    const std::weak_ptr<const origin_t> source = other.origin_for_copy();
    memory.copy_values(other.memory);
    // An evaluator in a call of its own counts that one.
    if (called == nullptr && !source.expired()) {
        origin = source;
    }
}

void algebra_t::imp_t::take_visible(const imp_t& caller) {
    memory = caller.memory;
    macros = caller.macros;
    functions = caller.functions;
}

call_scope_t::call_scope_t(algebra_t& algebra, const std::string& name)
    : state(algebra_t::imp_t::of(algebra)), outer(std::exchange(state.called, &name)),
      outer_origin(std::move(state.call_origin)) {}

call_scope_t::~call_scope_t() {
    state.called = outer;
    state.call_origin = std::move(outer_origin);
}

result_t script_call(algebra_t& caller, const function_t& function, std::vector<result_t>& values,
                     std::size_t base) {
    const algebra_t::imp_t& state = algebra_t::imp_t::of(caller);
    nesting_check(state.depth_get(), script_nesting, function.name);
    algebra_t callee;
    algebra_t::imp_t::of(callee).take_visible(state);
    algebra_t::imp_t::of(callee).nest_in(state);
    for (const std::string& parameter : function.parameters) {
        callee.assign(parameter, values[base++]);
    }
    return callee.evaluate(function.body);
}

} // namespace ko::alg

#include "xml_preprocessor/xml_preprocessor.h"

#include <limits>
#include <utility>

#include "exception/exception.h"
#include "xml_preprocessor/blocks.h"
#include "xml_preprocessor/directives.h"
#include "xml_preprocessor/run.h"

namespace ko::xpp {

// A failure to allocate these ends the program while it loads, as it must.
// NOLINTBEGIN(cert-err58-cpp)
const std::string default_xpp_uri = "kobase.org/xmlns/xmlpreprocessor";
const std::string default_xpr_uri = "kobase.org/xmlns/xmlpreprocessor/expressionevaluator";
// NOLINTEND(cert-err58-cpp)

static_assert(preprocessor_t::include_comments == flag_include_comments);
static_assert(preprocessor_t::process_include == flag_process_include);

/// The state as the facade holds it.
class preprocessor_t::imp_t : public state_t {
public:
    using state_t::state_t;
};

namespace {

/// Assigns an integer of any type: an integer where it fits, else the nearest float.
template <class T>
void assign_integer(alg::algebra_t& algebra, const std::string& name, T value) {
    using int_t = std::numeric_limits<int>;
    const bool above_least =
        !std::numeric_limits<T>::is_signed || static_cast<long long>(value) >= int_t::min();
    const bool fits = value <= static_cast<T>(int_t::max()) && above_least;
    if (fits) {
        algebra.assign(name, static_cast<int>(value));
    } else {
        algebra.assign(name, static_cast<float>(value));
    }
}

} // namespace

preprocessor_t::preprocessor_t(lxml::document_t& output, file_cache_t* cache)
    : imp(new imp_t(output, cache, namespaces_t{default_xpp_uri, default_xpr_uri})) {}

preprocessor_t::~preprocessor_t() {
    delete imp;
}

lxml::element_t* preprocessor_t::process(lxml::element_t* source, flags_e flags) {
    if (source == nullptr) {
        throw exception_t("preprocessor_t::process() -- source is null");
    }
    run_t run(*imp, *source, flags);
    lxml::element_t* const top = imp->document.element_create("temporary", lxml::str_empty);
    block_stack_t(run, directive_begin).process(*source, *top);
    run.succeeded();
    return top->children.empty() ? nullptr : top->children.front();
}

void preprocessor_t::insert_argument(const std::string& name, double value) {
    imp->expressions.variables_get().assign(name, value);
}

void preprocessor_t::insert_argument(const std::string& name, int value) {
    imp->expressions.variables_get().assign(name, value);
}

void preprocessor_t::insert_argument(const std::string& name, unsigned value) {
    assign_integer(imp->expressions.variables_get(), name, value);
}

void preprocessor_t::insert_argument(const std::string& name, long value) {
    assign_integer(imp->expressions.variables_get(), name, value);
}

void preprocessor_t::insert_argument(const std::string& name, unsigned long value) {
    assign_integer(imp->expressions.variables_get(), name, value);
}

void preprocessor_t::insert_argument(const std::string& name, long long value) {
    assign_integer(imp->expressions.variables_get(), name, value);
}

void preprocessor_t::insert_argument(const std::string& name, unsigned long long value) {
    assign_integer(imp->expressions.variables_get(), name, value);
}

void preprocessor_t::insert_argument(const std::string& name, bool value) {
    imp->expressions.variables_get().assign(name, value ? 1 : 0);
}

void preprocessor_t::insert_argument(const std::string& name, const std::string& value) {
    imp->expressions.variables_get().assign(name, value);
}

void preprocessor_t::insert_argument(const std::string& name, const char* value) {
    if (value == nullptr) {
        throw exception_t("preprocessor_t::insert_argument() -- value is null");
    }
    imp->expressions.variables_get().assign(name, std::string(value));
}

void preprocessor_t::set_namespace() {
    set_namespace(default_xpp_uri, default_xpr_uri);
}

void preprocessor_t::set_namespace(const std::string& xpp, const std::string& xpr) {
    imp->namespaces_set(xpp, xpr);
    if (imp->run != nullptr) {
        imp->run->keywords_get().get();
    }
}

void preprocessor_t::search_path_add(const std::string& dir) {
    imp->includes.search_path_add(dir);
}

void preprocessor_t::search_path_use_default(bool on) {
    imp->includes.search_path_default = on;
}

void preprocessor_t::register_plugin(const std::string& name, plugin_t* plugin) {
    if (plugin == nullptr) {
        throw exception_t("preprocessor_t::register_plugin() -- plug-in is null");
    }
    imp->plugin_add(name, plugin);
}

std::vector<place_t> preprocessor_t::trace_get() const {
    return imp->run != nullptr ? imp->run->trace_get() : imp->trace;
}

std::vector<std::string> preprocessor_t::files_get() const {
    return imp->files;
}

void preprocessor_t::observer_set(observer_t* observer) {
    imp->observer = observer;
}

void preprocessor_t::resolver_set(resolver_t resolver) {
    imp->resolver = std::move(resolver);
}

void preprocessor_t::limits_set(const limits_t& limits) {
    imp->limits = limits;
}

limits_t preprocessor_t::limits_get() const {
    return imp->limits;
}

alg::algebra_t& preprocessor_t::algebra_get() {
    return imp->expressions.algebra_get();
}

} // namespace ko::xpp

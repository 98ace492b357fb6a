#include "xml_preprocessor/run.h"

#include <utility>

#include "exception/exception.h"
#include "str/str.h"

namespace ko::xpp {

place_t place_of(const lxml::element_t& element) {
    place_t place;
    place.file = element.document->file_name;
    place.directive = element.name_get();
    if (const lxml::position_t* const position = element.document->position_get(&element)) {
        place.line = position->line;
        place.column = position->column;
    }
    return place;
}

run_t::run_t(state_t& preprocessor, const lxml::element_t& source, int requested)
    : state(preprocessor), flags(requested), limits(preprocessor.limits), outer(preprocessor.run),
      known(state.cache_keywords), atoms(*source.atoms),
      positions(source.document->position_get(&source) != nullptr) {
    if (known == nullptr) {
        known = std::make_shared<keywords_t>(source.atoms, state.namespaces);
    }
    if (outer != nullptr) {
        insert_depth = outer->insert_depth;
        include_depth = outer->include_depth;
        plugin_depth = outer->plugin_depth;
    } else {
        state.trace.clear();
        state.files.clear();
        state.files_set.clear();
    }
    state.run = this;
}

run_t::~run_t() {
    atoms.share_at_end();
    state.run = outer;
    if (outer == nullptr) {
        state.traced = nullptr;
    }
}

keywords_t& run_t::keywords_of(const lxml::element_t& element, keywords_ptr_t& kept) {
    if (known->is_of(element)) {
        return *known;
    }
    if (included != nullptr && included->is_of(element)) {
        return *included;
    }
    kept = std::make_shared<keywords_t>(element.atoms, state.namespaces);
    if (atoms.is_copy(element.atoms)) {
        included = kept;
    }
    return *kept;
}

alg::result_t run_t::evaluate(const expression_t& wanted) {
    expression = wanted;
    alg::result_t result = state.expressions.evaluate(*wanted.text);
    expression = {};
    return result;
}

bool run_t::evaluate_bool(const expression_t& wanted) {
    return evaluate_int(wanted) != 0;
}

int run_t::evaluate_int(const expression_t& wanted) {
    return evaluate(wanted).int_get();
}

std::string run_t::evaluate_string(const expression_t& wanted) {
    return evaluate(wanted).string_get(false, 0);
}

std::string run_t::value_of(const lxml::attribute_t& attribute) {
    expression = {attribute.atoms, attribute.name, &attribute.value};
    std::string value;
    std::string message;
    if (!state.expressions.evaluate_safe(attribute.value, value, message)) {
        value = attribute.value;
        if (state.observer != nullptr) {
            state.observer->expression_failed(places->place_get(), value, message);
        }
    }
    expression = {};
    return value;
}

std::vector<place_t> run_t::trace_get() const {
    std::vector<place_t> result;
    for (const run_t* run = this; run != nullptr; run = run->outer) {
        if (run->places != nullptr) {
            const std::vector<place_t> inner = run->places->places_get();
            result.insert(result.end(), inner.begin(), inner.end());
        }
    }
    return result;
}

void run_t::failed() noexcept {
    const std::exception_ptr failure = std::current_exception();
    if (failure != nullptr && failure == state.traced) {
        return; // it came out of a run inside this one, which knew more
    }
    try {
        state.trace = trace_get();
        state.traced = failure;
    } catch (...) {
        state.trace.clear();
    }
}

void run_t::succeeded() noexcept {
    if (outer == nullptr) {
        state.trace.clear();
    }
}

void run_t::element_count() {
    if (++elements > limits.elements && limits.elements != 0) {
        throw exception_t("preprocessor_t::process() -- more than " +
                          std::to_string(limits.elements) + " elements made");
    }
}

void run_t::loop_pass_begin(const lxml::element_t& loop) {
    if (++passes > limits.passes && limits.passes != 0) {
        throw exception_t("preprocessor_t::process() -- more than " +
                          std::to_string(limits.passes) + " passes of loops");
    }
    if (state.observer != nullptr) {
        state.observer->pass_begun(loop);
    }
}

void run_t::text_drop(const lxml::element_t& element) {
    if (state.observer != nullptr &&
        !(str::all_whitespace(element.text) && str::all_whitespace(element.cdata))) {
        state.observer->text_dropped(place_of(element));
    }
}

lxml::element_t& run_t::include(const std::string& file, bool search,
                                const lxml::element_t& directive) {
    const bool resolved = static_cast<bool>(state.resolver);
    std::string path = resolved ? state.resolver(file, directive) : std::string();
    const std::string& key = resolved ? path : file;
    if (lxml::element_t* const root = state.includes.cached(key)) {
        return *root;
    }
    if (!resolved) {
        const std::string& including = directive.document->file_name;
        path = state.includes.find({file, including.substr(0, including.rfind('/') + 1), search});
    }
    if (path.empty()) {
        throw exception_t("failed to load xml file:" + file);
    }
    file_open(path);
    return state.includes.load(path, key, positions, atoms);
}

void run_t::file_open(const std::string& path) {
    if (state.files_set.insert(path).second) {
        state.files.push_back(path);
    }
    if (state.observer != nullptr) {
        state.observer->file_opened(path);
    }
}

} // namespace ko::xpp

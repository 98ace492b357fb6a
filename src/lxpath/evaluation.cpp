#include "lxpath/evaluation.h"

#include <algorithm>
#include <typeinfo>

namespace ko::lxml {

namespace {

/// Whether an id stands for the text of an id that was looked up. One that is not in the table
/// stands for the empty text.
bool is_text(const atom_table_t& table, int id, int wanted) {
    return wanted > 0 ? id == wanted : wanted == 0 && (id == 0 || table.text_get(id).empty());
}

/// The namespace name that an element test asks for.
std::string_view expected_ns(const flat_step_t& test, document_t& document) {
    return test.quoted ? test.ns : document.uri_prefix_expand(std::string(test.ns));
}

/// Every table holds the empty text as 0.
int find(const atom_table_t& table, std::string_view text) {
    return text.empty() ? 0 : table.find(std::string(text));
}

int get(atom_table_t& table, std::string_view text) {
    return text.empty() ? 0 : table.get(std::string(text));
}

/// The atom of the namespace name that an element test asks for.
int expected_ns_id(const flat_step_t& test, document_t& document) {
    atom_table_t& table = *document.atoms;
    if (test.quoted) {
        return find(table, test.ns);
    }
    const auto bound = document.prefix_to_uri.find(get(table, test.ns));
    return bound == document.prefix_to_uri.end() ? 0 : find(table, table.text_get(bound->second));
}

bool has_value(const node_t* node, std::string_view value) {
    const auto* const attribute = dynamic_cast<const attribute_t*>(node);
    return attribute != nullptr && attribute->value == value;
}

} // namespace

bool evaluation_t::can_evaluate(const xpath_t& path) {
    return typeid(path) == typeid(xpath_t) &&
           std::all_of(path.steps.begin(), path.steps.end(),
                       [](const auto& step) { return typeid(*step) == typeid(xnode_t); });
}

evaluation_t::evaluation_t() {
    steps.reserve(usual_steps);
    levels.reserve(usual_steps);
}

evaluation_t::evaluation_t(const xpath_t& path) : evaluation_t() {
    first_step = add_path(path);
}

evaluation_t::evaluation_t(const xnode_t& step) : evaluation_t() {
    add_step(&step.name, &step.filter);
}

evaluation_t::evaluation_t(const xname_t& name) : evaluation_t() {
    add_step(&name, nullptr);
}

evaluation_t::evaluation_t(const xfilter_t& filter) : evaluation_t() {
    add_step(nullptr, &filter);
}

// The recursion goes down by the filters, as that of reading does. NOLINTBEGIN(misc-no-recursion)
std::size_t evaluation_t::add_path(const xpath_t& path) {
    std::size_t first = flat_step_t::none;
    std::size_t last = flat_step_t::none;
    for (const auto& step : path.steps) {
        const std::size_t number = steps.size();
        (last == flat_step_t::none ? first : steps[last].next) = number;
        add_step(&step->name, &step->filter);
        last = number;
    }
    return first;
}

/// @param name, filter null where there is none
void evaluation_t::add_step(const xname_t* name, const xfilter_t* filter) {
    flat_step_t& step = steps.emplace_back();
    if (name != nullptr) {
        step.kind = name->kind;
        step.quoted = name->quoted;
        step.name = name->name;
        step.ns = name->ns;
    }
    if (filter != nullptr && filter->predicate != nullptr) {
        add_filter(steps.size() - 1, *filter);
    }
}

void evaluation_t::add_filter(std::size_t number, const xfilter_t& filter) {
    steps[number].is_filtered = true;
    steps[number].value = filter.value;
    if (can_evaluate(*filter.predicate)) {
        const std::size_t predicate = add_path(*filter.predicate);
        steps[number].predicate = predicate;
    } else {
        steps[number].foreign = filter.predicate.get();
    }
}

evaluation_t::context_t evaluation_t::context_of(node_t* node) {
    return {node, dynamic_cast<element_t*>(node)};
}

/// Makes the names of a step those of the table of a context.
void evaluation_t::resolve(flat_step_t& step, element_t& context) {
    if (step.kind) {
        if (step.atoms != context.atoms) {
            step.name_id = get(*context.atoms, step.name);
            step.ns_id = get(*context.atoms, step.ns);
            step.atoms = context.atoms;
        }
    } else if (step.document != context.document) {
        document_t& document = *context.document;
        step.ns_id = expected_ns_id(step, document);
        step.name_id = find(*document.atoms, step.name);
        step.atoms = document.atoms;
        step.document = &document;
    }
}

bool evaluation_t::is_named(const element_t& e, const flat_step_t& step) {
    if (e.atoms == step.atoms) {
        return is_text(*e.atoms, e.name, step.name_id) && is_text(*e.atoms, e.ns, step.ns_id);
    }
    return e.name_get() == step.name &&
           e.ns_get() == expected_ns(step, const_cast<document_t&>(*step.document));
}

attribute_t* evaluation_t::find_attribute(std::size_t step, element_t& context) {
    flat_step_t& test = steps[step];
    if (test.atoms != context.atoms) {
        resolve(test, context);
    }
    const auto found = context.attributes.find({test.ns_id, test.name_id});
    return found == context.attributes.end() ? nullptr : *found;
}

node_t* evaluation_t::first(element_t* context) {
    return search_t(*this, first_step, {context, context}).next();
}

void evaluation_t::all(node_t* context, std::list<node_t*>& out) {
    std::list<node_t*> selected;
    search_t search(*this, first_step, context_of(context));
    while (node_t* const node = search.next()) {
        selected.push_back(node);
    }
    out.splice(out.end(), selected);
}

bool evaluation_t::passes(node_t* node) {
    return passes(context_of(node), first_step);
}

/// @param first `none` for a path without steps, which selects the context
evaluation_t::search_t::search_t(evaluation_t& owner, std::size_t first, context_t context)
    : self(owner), base(owner.levels.size()), ready(nullptr) {
    if (first == flat_step_t::none) {
        ready = context.node;
    } else if (context.element != nullptr) {
        enter(*context.element, first);
    }
}

evaluation_t::search_t::~search_t() {
    self.levels.erase(self.levels.begin() + static_cast<std::ptrdiff_t>(base), self.levels.end());
}

/// Tries a step on one context. Nothing is selected below an attribute.
void evaluation_t::search_t::enter(element_t& context, std::size_t step) {
    if (self.steps[step].kind) {
        attribute_t* const attribute = self.find_attribute(step, context);
        if (attribute != nullptr && self.passes({attribute, nullptr}, step) &&
            self.steps[step].next == flat_step_t::none) {
            ready = attribute;
        }
        return;
    }
    resolve(self.steps[step], context);
    self.levels.push_back({context.children.begin(), context.children.end(), step});
}

node_t* evaluation_t::search_t::next() {
    while (ready == nullptr && self.levels.size() != base) {
        level_t& level = self.levels.back();
        if (level.next == level.end) {
            self.levels.pop_back();
            continue;
        }
        const std::size_t step = level.step;
        element_t* const child = *level.next++;
        if (!is_named(*child, self.steps[step]) || !self.passes({child, child}, step)) {
            continue;
        }
        if (self.steps[step].next == flat_step_t::none) {
            return child;
        }
        enter(*child, self.steps[step].next);
    }
    node_t* const result = ready;
    ready = nullptr;
    return result;
}

bool evaluation_t::passes(context_t context, std::size_t step) {
    const flat_step_t& tested = steps[step];
    if (!tested.is_filtered) {
        return true;
    }
    if (!asks_for_attribute(tested)) {
        return passes_search(context, tested);
    }
    if (context.element == nullptr) {
        return false;
    }
    const attribute_t* const found = find_attribute(tested.predicate, *context.element);
    return found != nullptr && (tested.value.empty() || found->value == tested.value);
}

bool evaluation_t::asks_for_attribute(const flat_step_t& step) const {
    if (step.predicate == flat_step_t::none) {
        return false;
    }
    const flat_step_t& first = steps[step.predicate];
    return first.kind && !first.is_filtered && first.next == flat_step_t::none;
}

bool evaluation_t::passes_search(context_t context, const flat_step_t& step) {
    const auto satisfies = [&](const node_t* result) {
        return step.value.empty() || has_value(result, step.value);
    };
    if (step.foreign != nullptr) {
        std::list<node_t*> results;
        step.foreign->matches(context.node, results);
        return std::any_of(results.begin(), results.end(), satisfies);
    }
    search_t search(*this, step.predicate, context);
    const node_t* result = search.next();
    while (result != nullptr && !satisfies(result)) {
        result = search.next();
    }
    return result != nullptr;
}
// NOLINTEND(misc-no-recursion)

} // namespace ko::lxml

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
const std::string& expected_ns(const xname_t& test, document_t& document) {
    return test.quoted ? test.ns : document.uri_prefix_expand(test.ns);
}

element_t* as_context(node_t* node) {
    return dynamic_cast<element_t*>(node);
}

bool has_value(const node_t* node, const std::string& value) {
    const auto* const attribute = dynamic_cast<const attribute_t*>(node);
    return attribute != nullptr && attribute->value == value;
}

} // namespace

bool evaluation_t::can_evaluate(const xpath_t& path) {
    return typeid(path) == typeid(xpath_t) &&
           std::all_of(path.steps.begin(), path.steps.end(),
                       [](const auto& step) { return typeid(*step) == typeid(xnode_t); });
}

// The recursion goes down by the filters, as that of reading does. NOLINTBEGIN(misc-no-recursion)
evaluation_t::range_t evaluation_t::add_path(const xpath_t& path) {
    const range_t range = {steps.size(), steps.size() + path.steps.size()};
    for (const auto& step : path.steps) {
        steps.push_back({&step->name, &step->filter, {}, false, nullptr, nullptr, 0, 0});
    }
    add_filters(range);
    return range;
}

evaluation_t::range_t evaluation_t::add_step(const xname_t* name, const xfilter_t* filter) {
    steps.push_back({name, filter, {}, false, nullptr, nullptr, 0, 0});
    add_filters({0, 1});
    return {0, 1};
}

void evaluation_t::add_filters(range_t range) {
    for (std::size_t i = range.begin; i != range.end; ++i) {
        const xfilter_t* const filter = steps[i].filter;
        if (filter == nullptr || filter->predicate == nullptr) {
            steps[i].filter = nullptr;
        } else if (can_evaluate(*filter->predicate)) {
            const range_t predicate = add_path(*filter->predicate);
            steps[i].predicate = predicate;
        } else {
            steps[i].is_foreign = true;
        }
    }
}

void evaluation_t::resolve(step_t& step, element_t& context) {
    const xname_t& test = *step.name;
    if (test.kind) {
        if (step.atoms != context.atoms) {
            step.name_id = context.atoms->get(test.name);
            step.ns_id = context.atoms->get(test.ns);
            step.atoms = context.atoms;
        }
    } else if (step.document != context.document) {
        document_t& document = *context.document;
        step.ns_id = document.atoms->find(expected_ns(test, document));
        step.name_id = document.atoms->find(test.name);
        step.atoms = document.atoms;
        step.document = &document;
    }
}

bool evaluation_t::is_named(const element_t& e, const step_t& step) {
    if (e.atoms == step.atoms) {
        return is_text(*e.atoms, e.name, step.name_id) && is_text(*e.atoms, e.ns, step.ns_id);
    }
    return e.name_get() == step.name->name &&
           e.ns_get() == expected_ns(*step.name, const_cast<document_t&>(*step.document));
}

attribute_t* evaluation_t::find_attribute(std::size_t step, element_t& context) {
    resolve(steps[step], context);
    return context.attribute_get(steps[step].name_id, steps[step].ns_id);
}

node_t* evaluation_t::first(node_t* context) {
    return search_t(*this, whole, {context, as_context(context)}).next();
}

void evaluation_t::all(node_t* context, std::list<node_t*>& out) {
    std::list<node_t*> selected;
    search_t search(*this, whole, {context, as_context(context)});
    while (node_t* const node = search.next()) {
        selected.push_back(node);
    }
    out.splice(out.end(), selected);
}

bool evaluation_t::passes(node_t* node) {
    return passes({node, as_context(node)}, 0);
}

evaluation_t::search_t::search_t(evaluation_t& owner, range_t range, context_t context)
    : self(owner), base(owner.levels.size()), last(range.end), ready(nullptr) {
    if (range.begin == range.end) {
        ready = context.node;
    } else if (context.element != nullptr) {
        enter(*context.element, range.begin);
    }
}

evaluation_t::search_t::~search_t() {
    self.levels.erase(self.levels.begin() + static_cast<std::ptrdiff_t>(base), self.levels.end());
}

/// Tries a step on one context. Nothing is selected below an attribute.
void evaluation_t::search_t::enter(element_t& context, std::size_t step) {
    if (self.steps[step].name->kind) {
        attribute_t* const attribute = self.find_attribute(step, context);
        if (attribute != nullptr && self.passes({attribute, nullptr}, step) && step + 1 == last) {
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
        if (step + 1 == last) {
            return child;
        }
        enter(*child, step + 1);
    }
    node_t* const result = ready;
    ready = nullptr;
    return result;
}

bool evaluation_t::passes(context_t context, std::size_t step) {
    const step_t& tested = steps[step];
    if (tested.filter == nullptr) {
        return true;
    }
    if (!asks_for_attribute(tested)) {
        return passes_search(context, tested);
    }
    if (context.element == nullptr) {
        return false;
    }
    const attribute_t* const found = find_attribute(tested.predicate.begin, *context.element);
    const std::string& value = tested.filter->value;
    return found != nullptr && (value.empty() || found->value == value);
}

bool evaluation_t::asks_for_attribute(const step_t& step) const {
    if (step.predicate.end - step.predicate.begin != 1) {
        return false;
    }
    const step_t& only = steps[step.predicate.begin];
    return only.name->kind && only.filter == nullptr;
}

bool evaluation_t::passes_search(context_t context, const step_t& step) {
    const std::string& value = step.filter->value;
    const auto satisfies = [&](const node_t* result) {
        return value.empty() || has_value(result, value);
    };
    if (step.is_foreign) {
        std::list<node_t*> results;
        step.filter->predicate->matches(context.node, results);
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

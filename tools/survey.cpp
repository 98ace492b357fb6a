#include "survey.h"

#include <algorithm>

#include "definition.h"
#include "documents.h"
#include "expression_failure.h"
#include "expression_words.h"

namespace tool {

namespace {

const std::string& directive_ns() {
    return ko::xpp::default_xpp_uri;
}

const std::string& expression_ns() {
    return ko::xpp::default_xpr_uri;
}

bool is_blank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

bool has_text(const ko::lxml::element_t& element) {
    return !is_blank(element.text) || !is_blank(element.cdata);
}

std::string tag(const ko::lxml::element_t& element) {
    return "<" + element.name_get() + ">";
}

/// A namespace name in the form in which misspelt ones are compared.
std::string folded(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    const std::size_t scheme = name.find("://");
    name.erase(0, scheme == std::string::npos ? 0 : scheme + 3);
    name.erase(name.find_last_not_of("/#") + 1);
    return name;
}

/// Whether a namespace name is nearly `right`.
bool is_misspelt(const std::string& name, const std::string& right) {
    constexpr std::size_t compared_max = 200;
    constexpr std::size_t tolerance = 4;
    return name != right && name.size() <= compared_max &&
           edit_distance(folded(name), right) <= tolerance;
}

std::vector<std::string> names_of(const survey_t::places_t& places) {
    std::vector<std::string> names;
    for (const auto& entry : places) {
        names.push_back(entry.first);
    }
    return names;
}

std::vector<std::string> attribute_names(const directive_rule_t& rule) {
    std::vector<std::string> names;
    for (const attribute_rule_t& attribute : rule.attributes) {
        names.push_back(attribute.name);
    }
    return names;
}

std::vector<std::string> directive_names() {
    std::vector<std::string> names;
    for (const directive_rule_t& rule : directives()) {
        names.push_back(rule.name);
    }
    return names;
}

} // namespace

const ko::lxml::attribute_t* attribute_of(const ko::lxml::element_t& element,
                                          const std::string& name) {
    const ko::lxml::attribute_t* found = nullptr;
    for (const ko::lxml::attribute_t* attribute : element.attributes) {
        if (attribute->name_get() == name && (found == nullptr || attribute->ns == 0)) {
            found = attribute;
        }
    }
    return found;
}

std::string expression_message(const std::string& attribute, const std::string& element,
                               const std::string& reported) {
    std::string text = "attribute " + attribute + " of <" + element + ">: " + reported;
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

std::string directive_unknown_message(const std::string& name) {
    const directive_rule_t* known = directive_find(name);
    return known != nullptr && !known->parent.empty()
               ? "<" + name + "> stands outside of a " + known->parent +
                     ": it and its children are dropped"
               : "<" + name + "> is no directive: it and its children are dropped" +
                     suggestion(name, directive_names());
}

std::string text_dropped_message(const std::string& name) {
    return "text in <" + name + "> is dropped";
}

void survey_t::document_add(const ko::lxml::element_t& root, bool is_included) {
    if (is_included && root.ns_get() != directive_ns() && has_text(root)) {
        report(severity_t::error, "text", root, text_dropped_message(root.name_get()));
    }
    std::vector<node_t> pending{{&root, nullptr}};
    while (!pending.empty()) {
        const node_t node = pending.back();
        pending.pop_back();
        visit(node, pending);
    }
}

void survey_t::visit(const node_t& node, std::vector<node_t>& pending) {
    const ko::lxml::element_t& element = *node.element;
    const directive_rule_t* rule = nullptr;
    const bool in_a_switch = node.parent != nullptr && node.parent->name == "switch";
    if (element.ns_get() == directive_ns()) {
        rule = directive_find(element.name_get());
        if (rule == nullptr || (!rule->parent.empty() && !in_a_switch)) {
            report(severity_t::error, "directive", element,
                   directive_unknown_message(element.name_get()));
            // Whatever it was meant to be, it would have set this.
            if (const ko::lxml::attribute_t* index = attribute_of(element, "index")) {
                set.emplace(index->value, place_of(element));
            }
        } else {
            directive(element, *rule);
        }
    } else {
        copied(element);
    }
    if (in_a_switch && (rule == nullptr || rule->parent.empty())) {
        in_switch(element);
    }
    for (auto child = element.children.rbegin(); child != element.children.rend(); ++child) {
        pending.push_back({*child, rule});
    }
}

void survey_t::in_switch(const ko::lxml::element_t& element) {
    if (element.ns_get() != directive_ns() || directive_find(element.name_get()) != nullptr) {
        report(severity_t::error, "directive", element,
               tag(element) + " stands in a switch, outside of its cases: it is dropped");
    }
}

void survey_t::directive(const ko::lxml::element_t& element, const directive_rule_t& rule) {
    directive_attributes(element, rule);
    collect(element, rule);
    if (rule.name == "switch") {
        switch_order(element);
    }
    if (has_text(element)) {
        report(severity_t::error, "text", element, text_dropped_message(element.name_get()));
    }
}

void survey_t::directive_attributes(const ko::lxml::element_t& element,
                                    const directive_rule_t& rule) {
    for (const attribute_rule_t& wanted : rule.attributes) {
        const ko::lxml::attribute_t* found = attribute_of(element, wanted.name);
        if (found != nullptr) {
            attribute(element, wanted, *found);
        } else if (wanted.required) {
            report(severity_t::error, "attribute", element,
                   "attribute " + wanted.name + " missing in element " + rule.name);
        }
    }
    for (const ko::lxml::attribute_t* given : element.attributes) {
        const std::string& ns = given->ns_get();
        const bool ours = ns.empty() || ns == directive_ns() || ns == expression_ns();
        if (ours && rule.name != "plugin" && attribute_find(rule, given->name_get()) == nullptr) {
            report(severity_t::warning, "attribute", element,
                   "attribute " + given->name_get() + " of " + tag(element) + " is not known" +
                       suggestion(given->name_get(), attribute_names(rule)));
        }
    }
}

void survey_t::attribute(const ko::lxml::element_t& element, const attribute_rule_t& rule,
                         const ko::lxml::attribute_t& attribute) {
    const bool computed = attribute.ns_get() == expression_ns();
    if (rule.kind == attribute_kind_t::expression ||
        (rule.kind == attribute_kind_t::either && computed)) {
        expression(element, rule.name, attribute.value);
    } else if (rule.name == "values") {
        values(element, attribute.value);
    } else if (rule.kind == attribute_kind_t::variable) {
        set.emplace(attribute.value, place_of(element));
        mentioned.insert(attribute.value);
        if (!is_variable_name(attribute.value)) {
            report(severity_t::error, "attribute", element,
                   "attribute " + rule.name + " of " + tag(element) + ": \"" + attribute.value +
                       "\" is not the name of a variable");
        }
    }
}

void survey_t::values(const ko::lxml::element_t& element, const std::string& list) {
    const ko::lxml::attribute_t* index = attribute_of(element, "index");
    const std::string name = index == nullptr ? "" : index->value;
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        expression(element, "values", name + " = " + list.substr(start, end - start));
        start = end + 1;
    }
}

void survey_t::collect(const ko::lxml::element_t& element, const directive_rule_t& rule) {
    const ko::lxml::attribute_t* name = attribute_of(element, "name");
    if (rule.name == "include") {
        included.push_back(&element);
    } else if (rule.name == "define" && name != nullptr) {
        defined.emplace(name->value, place_of(element));
    } else if (rule.name == "insert" && name != nullptr) {
        inserted.insert(name->value);
        computed_insert = computed_insert || name->ns_get() == expression_ns();
    }
}

void survey_t::switch_order(const ko::lxml::element_t& element) {
    bool decided = false;
    for (const ko::lxml::element_t* child : element.children) {
        const bool ours = child->ns_get() == directive_ns();
        if (ours && decided && (child->name_get() == "case" || child->name_get() == "default")) {
            report(severity_t::warning, "directive", *child,
                   tag(*child) + " is never reached: it stands behind the default");
        }
        decided = decided || (ours && child->name_get() == "default");
    }
}

void survey_t::copied(const ko::lxml::element_t& element) {
    namespace_check(element, element.ns_get());
    if (element.ns_get() == expression_ns() && directive_find(element.name_get()) != nullptr) {
        report(severity_t::error, "namespace", element,
               tag(element) + " is in the namespace of expressions and is copied; directives " +
                   "are in " + directive_ns());
    }
    for (const ko::lxml::attribute_t* given : element.attributes) {
        if (given->ns_get() == expression_ns()) {
            expression(element, given->name_get(), given->value);
        } else if (given->ns_get() == directive_ns()) {
            report(severity_t::warning, "namespace", element,
                   "attribute " + given->name_get() + " of " + tag(element) +
                       " is in the namespace of directives and is copied as it is");
        } else {
            namespace_check(element, given->ns_get());
        }
    }
}

void survey_t::namespace_check(const ko::lxml::element_t& element, const std::string& name) {
    if (name.empty() || name == expression_ns() || name == directive_ns() ||
        !namespaces_seen.insert(element.document->file_name + '\n' + name).second) {
        return;
    }
    const std::string* meant = is_misspelt(name, directive_ns())    ? &directive_ns()
                               : is_misspelt(name, expression_ns()) ? &expression_ns()
                                                                    : nullptr;
    if (meant != nullptr) {
        report(severity_t::error, "namespace", element,
               "namespace \"" + name + "\" is not \"" + *meant + "\"");
    }
}

void survey_t::expression(const ko::lxml::element_t& element, const std::string& attribute,
                          const std::string& text) {
    for (const word_t& word : expression_words(text)) {
        mentioned.insert(word.name);
        if (word.use == word_use_t::set) {
            set.emplace(word.name, place_of(element));
        } else if (word.use == word_use_t::read) {
            read.emplace(word.name, place_of(element));
        } else if (word.use == word_use_t::quoted) {
            quoted.insert(word.name);
        }
    }
    failure_t failure;
    if (!parses(algebra, text, failure)) {
        diagnostic_t diagnostic;
        diagnostic.code = "expression";
        diagnostic.place = place_of(element);
        diagnostic.message = expression_message(attribute, element.name_get(), failure.message);
        diagnostic.expression = failure.statement;
        diagnostic.mark = failure.mark;
        diagnostics.add(diagnostic);
    }
}

void survey_t::report(severity_t severity, const char* code, const ko::lxml::element_t& element,
                      const std::string& message) {
    diagnostic_t diagnostic;
    diagnostic.severity = severity;
    diagnostic.code = code;
    diagnostic.place = place_of(element);
    diagnostic.message = message;
    diagnostics.add(diagnostic);
}

void survey_t::unset_names_report(const std::set<std::string>& given) {
    for (const auto& [name, place] : read) {
        const bool settable = set.count(name) != 0 || given.count(name) != 0 ||
                              quoted.count(name) != 0 || is_function_name(name);
        if (!settable) {
            diagnostic_t diagnostic;
            diagnostic.code = "name";
            diagnostic.place = place;
            diagnostic.message = "nothing sets the variable " + name;
            if (!diagnostics.is_full()) {
                diagnostic.message += suggestion(name, names_of(set));
            }
            diagnostics.add(diagnostic);
        }
    }
}

void survey_t::unused_definitions_report(const std::string& file) {
    for (const auto& [name, place] : defined) {
        if (!computed_insert && inserted.count(name) == 0 && place.file == file) {
            diagnostic_t diagnostic;
            diagnostic.severity = severity_t::warning;
            diagnostic.code = "definition";
            diagnostic.place = place;
            diagnostic.message = "definition " + name + " is never inserted";
            diagnostics.add(diagnostic);
        }
    }
}

std::string survey_t::hint(const std::string& expression,
                           const std::set<std::string>& given) const {
    for (const word_t& word : expression_words(expression)) {
        const bool function = is_function_name(word.name);
        const bool variable = word.use == word_use_t::read || word.use == word_use_t::set;
        if (variable && function) {
            return "; " + word.name + " is a function";
        }
        std::string near;
        if (word.use == word_use_t::call && !function) {
            near = suggestion(word.name, function_names());
        } else if (word.use == word_use_t::read && set.count(word.name) == 0 &&
                   given.count(word.name) == 0) {
            std::vector<std::string> known = names_of(set);
            known.insert(known.end(), given.begin(), given.end());
            near = suggestion(word.name, known);
        }
        if (!near.empty()) {
            return near;
        }
    }
    return "";
}

} // namespace tool

#include "lxml/sax.h"

#include "expat_parser/run.h"

namespace ko::lxml {

sax_t::sax_t(document_t& target, const load_options_t& settings,
             const xml::expat_parser_t& reader)
    : document(target), options(settings), parser(reader), root(nullptr), elements(0),
      in_cdata(false), names(target) {}

sax_t::~sax_t() = default;

void sax_t::require_limits() const {
    if (options.depth_max != 0 && stack.size() >= options.depth_max) {
        throw xml::refusal_t{"elements nested more than " + std::to_string(options.depth_max) +
                             " levels deep"};
    }
    if (options.elements_max != 0 && elements >= options.elements_max) {
        throw xml::refusal_t{"more than " + std::to_string(options.elements_max) + " elements"};
    }
}

void sax_t::start_element(const char* name, const char* const* attributes) {
    require_limits();
    const names_t atoms = names.get(name);
    stack.push_back(nullptr);
    element_t* const e = stack.back() = document.element_make(atoms.name, atoms.ns);
    ++elements;
    if (options.positions) {
        document.position_set(
            e, {parser.line_number_get(), parser.column_number_get(), parser.byte_index_get()});
    }
    gathered.clear();
    try {
        gather(attributes);
    } catch (...) {
        e->attributes.fill(document.atoms, gathered);
        throw;
    }
    e->attributes.fill(document.atoms, gathered);
}

/// Names that are new and prefixes are met in the order of `strcmp`. Where there are none, the
/// order cannot be seen.
void sax_t::gather(const char* const* attributes) {
    if (!gather_known(attributes)) {
        gathered.clear();
        gather_sorted(attributes);
    }
}

bool sax_t::gather_known(const char* const* attributes) {
    for (; *attributes != nullptr; attributes += 2) {
        names_t atoms;
        if (!names.find(attributes[0], atoms)) {
            return false;
        }
        gathered.push_back({atoms.ns, atoms.name, attributes[1]});
    }
    return true;
}

void sax_t::gather_sorted(const char* const* attributes) {
    sorted.assign(attributes);
    for (const auto& [name, value] : sorted) {
        const names_t atoms = names.get(name);
        gathered.push_back({atoms.ns, atoms.name, value});
    }
}

void sax_t::end_element(const char*) {
    element_t* const e = stack.back();
    stack.pop_back();
    if (stack.empty()) {
        root = e;
    } else {
        stack.back()->append(e);
    }
}

void sax_t::character_data(const char* text, int size) {
    if (!stack.empty()) {
        std::string& target = in_cdata ? stack.back()->cdata : stack.back()->text;
        target.append(text, static_cast<std::size_t>(size));
    }
}

void sax_t::start_cdata() {
    in_cdata = true;
}

void sax_t::end_cdata() {
    in_cdata = false;
}

void sax_t::discard() noexcept {
    if (root != nullptr) {
        document.tree_free(root);
        root = nullptr;
    }
    for (element_t* const open : stack) {
        if (open != nullptr) {
            document.tree_free(open);
        }
    }
    stack.clear();
}

} // namespace ko::lxml

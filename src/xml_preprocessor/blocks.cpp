#include "xml_preprocessor/blocks.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "lxml/by_atoms.h"
#include "xml_preprocessor/attributes.h"

namespace ko::xpp {

block_t::block_t(const site_t& where)
    : body(&where.element), keywords(&where.keywords), site(where) {}

block_t::~block_t() = default;

bool block_t::again() {
    return false;
}

void block_t::failed() noexcept {}

place_t block_t::place() const {
    place_t result = place_of(site.element);
    result.detail = detail();
    return result;
}

std::string block_t::detail() const {
    return {};
}

const std::string& block_t::attribute_text(int name) const {
    return attribute_required(site.element, name).value;
}

expression_t block_t::attribute_expression(int name) const {
    return expression_of(name, attribute_text(name));
}

expression_t block_t::expression_of(int name, const std::string& text) const {
    return {site.element.atoms, name, &text};
}

void block_t::attribute_value_get(int name, std::string& value) const {
    const lxml::attribute_t& attribute = attribute_required(site.element, name);
    if (attribute.ns == names().xpr_ns) {
        value = site.run.value_of(attribute);
    } else {
        value = attribute.value;
    }
}

void block_t::body_set(lxml::element_t& other) {
    keywords = &site.run.keywords_for(other, site.keywords, kept);
    body = &other;
}

block_stack_t::block_stack_t(run_t& of, begin_t directive_begin)
    : run(of), begin(directive_begin) {
    run.places = this;
}

block_stack_t::~block_stack_t() {
    run.places = nullptr;
}

void block_stack_t::process(lxml::element_t& source, lxml::element_t& out) {
    try {
        enter(source, out, run.keywords_get());
        while (!frames.empty()) {
            step();
        }
    } catch (...) {
        run.failed();
        fail();
        throw;
    }
}

void block_stack_t::enter(lxml::element_t& source, lxml::element_t& out, keywords_t& nearest) {
    run.at(&source);
    keywords_ptr_t kept;
    keywords_t& keywords = run.keywords_for(source, nearest, kept);
    if (source.ns == keywords.get().xpp_ns) {
        execute({run, source, out, keywords}, kept);
    } else {
        copy(source, out, keywords, kept);
    }
}

void block_stack_t::copy(lxml::element_t& source, lxml::element_t& out, keywords_t& keywords,
                         keywords_ptr_t& kept) {
    run.element_count();
    lxml::document_t& document = run.state.document;
    lxml::atom_table_t& atoms = *document.atoms;
    const int name = keywords.output_atom(source.name, atoms);
    lxml::element_t* const made =
        lxml::by_atoms_t::element_create(document, name, keywords.output_atom(source.ns, atoms));
    out.append(made);
    if (!source.text.empty()) {
        made->text = source.text;
    }
    if (!source.cdata.empty()) {
        made->cdata = source.cdata;
    }
    if (!source.attributes.empty()) {
        attributes_copy(source, *made, keywords);
    }
    if (run.state.observer != nullptr) {
        run.state.observer->element_made(source, *made);
    }
    if (!source.children.empty()) {
        frames.push_back(
            {&source, source.children.cbegin(), made, &keywords, std::move(kept), nullptr});
    }
}

void block_stack_t::attributes_copy(const lxml::element_t& source, lxml::element_t& made,
                                    keywords_t& keywords) {
    lxml::by_atoms_t::attributes_reserve(made, source.attributes.size());
    for (const lxml::attribute_t* attribute : source.attributes) {
        const auto put = [&](std::string_view value) {
            const int name = keywords.output_atom(attribute->name, *made.atoms);
            lxml::by_atoms_t::attribute_set(made, name, 0, value);
        };
        if (attribute->ns == keywords.get().xpr_ns) {
            put(run.value_of(*attribute));
        } else {
            put(attribute->value);
        }
    }
}

void block_stack_t::execute(const site_t& site, keywords_ptr_t& kept) {
    block_ptr_t block = begin(site);
    if (block == nullptr) {
        return;
    }
    frames.push_back({&site.element, site.element.children.cbegin(), &site.out, &site.keywords,
                      std::move(kept), std::move(block)});
    if (frames.back().block->start()) {
        pass_begin();
    } else {
        frames.pop_back();
    }
}

void block_stack_t::step() {
    frame_t& top = frames.back();
    if (top.position != top.body->children.cend()) {
        lxml::element_t* const child = *top.position++;
        enter(*child, *top.out, *top.keywords);
        return;
    }
    run.at(nullptr);
    if (top.block != nullptr && top.block->again()) {
        pass_begin();
    } else {
        frames.pop_back();
    }
}

void block_stack_t::pass_begin() {
    frame_t& top = frames.back();
    top.body = top.block->body;
    top.keywords = top.block->keywords;
    top.position = top.body->children.cbegin();
}

void block_stack_t::fail() noexcept {
    while (!frames.empty()) {
        if (frames.back().block != nullptr) {
            frames.back().block->failed();
        }
        frames.pop_back();
    }
}

/// Whether the innermost block is at work itself, and not an element in it.
bool block_stack_t::block_works() const {
    const block_t* const top = frames.empty() ? nullptr : frames.back().block.get();
    return run.current == nullptr || (top != nullptr && run.current == top->element_get());
}

place_t block_stack_t::place_get() const {
    const auto is_block = [](const frame_t& frame) {
        return frame.block != nullptr;
    };
    place_t place;
    if (!block_works()) {
        place = place_of(*run.current);
    } else {
        const auto block = std::find_if(frames.rbegin(), frames.rend(), is_block);
        place = block != frames.rend() ? block->block->place() : place_t();
    }
    if (const std::string* const text = run.expression.text) {
        const std::string& name = run.expression.atoms->text_get(run.expression.attribute);
        place.detail = attribute_shown(name, *text);
    }
    return place;
}

std::vector<place_t> block_stack_t::places_get() const {
    std::vector<place_t> result{place_get()};
    bool innermost = block_works();
    for (auto frame = frames.rbegin(); frame != frames.rend(); ++frame) {
        if (frame->block == nullptr) {
            continue;
        }
        place_t place = frame->block->place();
        if (!innermost && !place.detail.empty()) {
            result.push_back(std::move(place));
        }
        innermost = false;
    }
    return result;
}

} // namespace ko::xpp

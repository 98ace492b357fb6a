// An element and what it does with the tree below it. Trees may be a million levels deep, so that
// nothing here recurses.

#include "lxml/element.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "exception/exception.h"
#include "lxml/atom_map.h"
#include "lxml/attribute_text.h"
#include "lxml/document.h"
#include "lxml/pooled_attribute.h"
#include "lxml/walk.h"

namespace ko::lxml {

namespace {

/// Makes sure that `child` can hang below `parent`.
void require_child(const element_t& parent, const element_t* child) {
    if (child == nullptr) {
        throw exception_t(std::string("element_t::append() -- given element is null"));
    }
    if (child == &parent) {
        throw exception_t(std::string("element_t::append() -- an element cannot hold itself"));
    }
    if (child->document != parent.document) {
        throw exception_t(std::string("elements cannot span documents"));
    }
}

/// An element whose children are being searched.
struct searching_t {
    element_t::children_t* children;
    element_t::children_t::iterator next;
};

/// The first child from `at` on that is `e` or has children.
element_t::children_t::iterator skip_leaves(element_t::children_t::iterator at,
                                            const element_t::children_t::iterator end,
                                            const element_t* e) {
    while (at != end && *at != e && (*at)->children.empty()) {
        ++at;
    }
    return at;
}

} // namespace

element_t::element_t(document_t* owner, int name_id, int ns_id)
    : node_t(owner->atoms, name_id, ns_id), document(owner), children(true), attributes(true) {}

element_t::~element_t() = default;

void element_t::operator delete(void*) noexcept {}

// The misspelling is part of the message.
const element_t* node_t::as_element() const {
    const auto* const e = dynamic_cast<const element_t*>(this);
    if (e == nullptr) {
        throw exception_t(std::string("node cannot be coverted to element"));
    }
    return e;
}

element_t* node_t::as_element() {
    return const_cast<element_t*>(std::as_const(*this).as_element());
}

element_t* element_t::append(element_t* child) {
    require_child(*this, child);
    children.push_back(child);
    return child;
}

element_t* element_t::insert_before(element_t* child, const element_t* before) {
    require_child(*this, child);
    const auto at = std::find(children.begin(), children.end(), before);
    if (at == children.end() && before != nullptr) {
        throw exception_t(
            std::string("element_t::insert_before() -- not a child of the element"));
    }
    children.insert(at, child);
    return child;
}

void element_t::child_erase(element_t* child) {
    const auto at = std::find(children.begin(), children.end(), child);
    if (at == children.end()) {
        throw exception_t(std::string("element_t::child_erase() -- not a child of the element"));
    }
    child->children_delete();
    children.erase(at);
    document->element_free(child);
}

const attribute_t* element_t::attribute_get(int name_id, int ns_id) const {
    const auto found = attributes.find(attribute_key_t{ns_id, name_id});
    return found == attributes.end() ? nullptr : *found;
}

attribute_t* element_t::attribute_get(int name_id, int ns_id) {
    const auto found = attributes.find(attribute_key_t{ns_id, name_id});
    return found == attributes.end() ? nullptr : *found;
}

const attribute_t* element_t::attribute_get(const std::string& name_text,
                                            const std::string& ns_text) const {
    const int name_id = atoms->get(name_text);
    return attribute_get(name_id, atoms->get(ns_text));
}

attribute_t* element_t::attribute_get(const std::string& name_text, const std::string& ns_text) {
    const int name_id = atoms->get(name_text);
    return attribute_get(name_id, atoms->get(ns_text));
}

const attribute_t* element_t::attribute_get(const std::string& name_text) const {
    return attribute_get(atoms->get(name_text), 0);
}

attribute_t* element_t::attribute_get(const std::string& name_text) {
    return attribute_get(atoms->get(name_text), 0);
}

std::string element_t::attribute_get_value(const std::string& name_text,
                                           const std::string& default_value) const {
    const attribute_t* const attribute = attribute_get(name_text);
    return attribute == nullptr ? default_value : attribute->value;
}

const attribute_t* element_t::attribute_find(const std::string& name_text,
                                             const std::string& ns_text) const {
    return attribute_get(atoms->find(name_text), ns_text.empty() ? 0 : atoms->find(ns_text));
}

attribute_t* element_t::attribute_find(const std::string& name_text, const std::string& ns_text) {
    return attribute_get(atoms->find(name_text), ns_text.empty() ? 0 : atoms->find(ns_text));
}

void element_t::attribute_set_ns(const std::string& name_text, const std::string& ns_text,
                                 const std::string& value) {
    const int name_id = atoms->get(name_text);
    attribute_put({atoms->get(ns_text), name_id}, value);
}

void element_t::attribute_put(const attribute_key_t& key, std::string_view value) {
    const auto at = attributes.lower_bound(key);
    if (at != attributes.end() && (*at)->ns == key.ns && (*at)->name == key.name) {
        (*at)->value = value;
        return;
    }
    attribute_t* const made = pooled_attribute_t::make(this, atoms, key.name, key.ns, value);
    try {
        attributes.insert_at(at, made);
    } catch (...) {
        pooled_attribute_t::free(made);
        throw;
    }
}

void element_t::attribute_set(const std::string& name_text, const std::string& value) {
    attribute_set_ns(name_text, str_empty, value);
}

bool element_t::attribute_remove(const std::string& name_text, const std::string& ns_text) {
    const attribute_t* const found = attribute_find(name_text, ns_text);
    if (found == nullptr) {
        return false;
    }
    attributes.remove(attributes.find(found));
    return true;
}

const element_t* element_t::child_find(const std::string& name_text,
                                       const std::string& ns_text) const {
    const auto found = children_named(name_text, ns_text);
    return found.begin() == found.end() ? nullptr : *found.begin();
}

element_t* element_t::child_find(const std::string& name_text, const std::string& ns_text) {
    const auto found = children_named(name_text, ns_text);
    return found.begin() == found.end() ? nullptr : *found.begin();
}

element_t::named_t element_t::children_named(const std::string& name_text,
                                             const std::string& ns_text) const {
    return {children, atoms->find(name_text), ns_text.empty() ? 0 : atoms->find(ns_text)};
}

child_list_t::const_iterator named_children_t::next(child_list_t::const_iterator at) const {
    while (at != children.end() && ((*at)->name != name || (*at)->ns != ns)) {
        ++at;
    }
    return at;
}

element_t* element_t::clone_one(document_t& target, bool whole, atom_map_t& names,
                                std::vector<attribute_text_t>& list) const {
    const int name_id = names.get(name);
    element_t* const copy = target.element_make(name_id, names.get(ns));
    list.clear();
    for (const attribute_t* attribute : attributes) {
        const int attribute_name = names.get(attribute->name);
        list.push_back({names.get(attribute->ns), attribute_name, attribute->value});
    }
    copy->attributes.fill(target.atoms, list);
    if (whole) {
        copy->text = text;
        copy->cdata = cdata;
    }
    return copy;
}

element_t* element_t::clone_tree(document_t& target, bool deep, bool whole) const {
    atom_map_t names(*atoms, *target.atoms);
    std::vector<attribute_text_t> list;
    std::vector<element_t*> copies;
    element_t* top = nullptr;
    walk(
        *this,
        [&](const element_t& e) {
            element_t* const copy = e.clone_one(target, whole, names, list);
            if (copies.empty()) {
                top = copy;
            } else {
                copies.back()->append(copy);
            }
            copies.push_back(copy);
            return deep;
        },
        [&](const element_t&) { copies.pop_back(); });
    return top;
}

element_t* element_t::clone(document_t& target, bool deep) const {
    // Texts and CDATA are left out; callers rely on it (quirk "bare clones").
    return clone_tree(target, deep, false);
}

element_t* element_t::clone_whole(document_t& target) const {
    return clone_tree(target, true, true);
}

void element_t::children_delete() {
    std::vector<element_t*> open = {this};
    while (!open.empty()) {
        children_t& list = open.back()->children;
        if (list.empty()) {
            open.pop_back();
            continue;
        }
        element_t* const child = list.front();
        // An element that is linked twice is gone when it is met again.
        if (document->elements.count(child) != 0 && !child->children.empty()) {
            open.push_back(child);
            continue;
        }
        list.pop_front();
        document->element_free(child);
    }
}

void element_t::child_remove(const element_t* e) {
    bool freed = false;
    std::vector<searching_t> open = {{&children, children.begin()}};
    while (!open.empty()) {
        searching_t& level = open.back();
        if (!freed) {
            level.next = skip_leaves(level.next, level.children->end(), e);
        }
        if (level.next == level.children->end()) {
            open.pop_back();
            continue;
        }
        element_t* const child = *level.next;
        if (freed || child == e) {
            document->require_owned(child);
        }
        if (child != e) {
            ++level.next;
            if (!child->children.empty()) {
                open.push_back({&child->children, child->children.begin()});
            }
            continue;
        }
        freed = freed || !child->children.empty();
        child->children_delete();
        level.next = level.children->erase(level.next);
        // The sibling after an unlinked element is skipped, and after the last one the search
        // starts again at the first; callers rely on it (quirk "skipped sibling").
        level.next =
            level.next == level.children->end() ? level.children->begin() : std::next(level.next);
    }
}

} // namespace ko::lxml

// What an element does with the tree below it. Trees may be a million levels deep, so every walk
// keeps the elements that it is inside of in a vector.

#include <iterator>
#include <vector>

#include "lxml/document.h"
#include "lxml/element.h"

namespace ko::lxml {

namespace {

/// Texts and CDATA are left out: callers rely on clones that carry names and attributes only.
element_t* clone_one(const element_t& source, document_t& target) {
    element_t* const copy = target.element_create(source.name_get(), source.ns_get());
    for (const attribute_t* attribute : source.attributes) {
        copy->attribute_set_ns(attribute->name_get(), attribute->ns_get(), attribute->value);
    }
    return copy;
}

/// A source element whose children are being cloned.
struct cloning_t {
    const element_t* source;
    element_t::children_t::const_iterator next;
    element_t* copy;
};

/// An element whose children are being searched.
struct searching_t {
    element_t::children_t* children;
    element_t::children_t::iterator next;
};

} // namespace

element_t* element_t::clone(document_t& target, bool deep) const {
    element_t* const top = clone_one(*this, target);
    if (!deep) {
        return top;
    }
    std::vector<cloning_t> open = {{this, children.begin(), top}};
    while (!open.empty()) {
        cloning_t& level = open.back();
        if (level.next == level.source->children.end()) {
            open.pop_back();
            continue;
        }
        const element_t* const child = *level.next++;
        element_t* const copy = level.copy->append(clone_one(*child, target));
        open.push_back({child, child->children.begin(), copy});
    }
    return top;
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
            open.push_back({&child->children, child->children.begin()});
            continue;
        }
        freed = freed || !child->children.empty();
        child->children_delete();
        level.next = level.children->erase(level.next);
        // Callers rely on this: the sibling after an unlinked element is skipped, and after the
        // last one the search starts again at the first.
        level.next =
            level.next == level.children->end() ? level.children->begin() : std::next(level.next);
    }
}

} // namespace ko::lxml

/// @file
/// Loads the bytes of the input as a document, then prints, copies, queries and takes it apart.

#include <list>
#include <sstream>
#include <string>

#include "lxml/lxml.h"
#include "support/target.h"

namespace {

using ko::lxml::document_t;
using ko::lxml::element_t;

std::string printed(const document_t& document, bool trim, bool pretty) {
    std::ostringstream out;
    document.root->print(out, 0, 0, trim, pretty);
    return out.str();
}

/// Copies carry names, attributes and children: a copy of a copy is the same.
void check_copies(const document_t& document) {
    // NOLINTBEGIN(performance-unnecessary-copy-initialization)
    const document_t copy(document);
    const document_t again(copy);
    // NOLINTEND(performance-unnecessary-copy-initialization)
    fuzz::require(printed(copy, false, false) == printed(again, false, false),
                  "a copy of a copy differs");
}

void query(document_t& document) {
    for (const char* path : {"a", "a/b", "@a", "a[@b=\"1\"]", "p:a", "\"urn:u\":a[b]"}) {
        std::list<ko::lxml::node_t*> selected;
        document.root->select_nodes(path, selected);
    }
    document.root->attribute_set_ns("a", "urn:u", document.root->attribute_get_value("b", "c"));
}

/// Takes a subtree out, the root's children away, and the rest with the document.
void take_apart(document_t& document) {
    element_t& root = *document.root;
    if (!root.children.empty()) {
        document.element_remove(root.children.front());
    }
    element_t* const stray = root.clone(document, true);
    if (!stray->children.empty()) {
        root.append(stray)->child_remove(stray->children.back());
    }
    root.children_delete();
    fuzz::require(root.children.empty(), "children are left");
}

void run(const std::string& input) {
    document_t document;
    fuzz::attempt([&] { document.load_from_string("<before/>"); });
    const element_t* const before = document.root;
    if (!fuzz::attempt([&] { document.load_from_string(input); })) {
        fuzz::require(document.root == before, "a failed load changes the root");
        return;
    }
    printed(document, false, false);
    printed(document, true, true);
    check_copies(document);
    query(document);
    take_apart(document);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::run_limited(run, data, size);
    return 0;
}

/// @file
/// The builder of trees. An element is made when its start tag is met and linked to its parent
/// when it ends, so that the open elements are exactly those on the stack.
#pragma once

#include <deque>
#include <string>

#include "expat_parser/expat_parser.h"
#include "lxml/lxml.h"
#include "tokenizer/tokenizer.h"

namespace ko::lxml {

/// Builds the tree of one XML document into a `document_t`, which owns the elements.
///
/// Used by one thread, once. After an exception the elements made so far stay in the document,
/// attached to nothing.
class sax_t : public xml::expat_parser_t {
public:
    explicit sax_t(document_t& target);
    ~sax_t() override;

    void start_element(const std::string& name, const attribute_map_t& attributes) override;
    void end_element(const std::string& name) override;
    void character_data(const std::string& text) override;
    void start_cdata() override;
    void end_cdata() override;

    /// The top element once it has ended, null before.
    element_t* root_get() const { return root; }

private:
    /// Splits a name from expat, registers its prefix if it has one, and sets `local` and `ns`.
    void split_name(const std::string& name);

    std::deque<element_t*> stack;
    document_t& document;
    element_t* root;
    bool in_cdata;

    tokenizer_t tokens;
    std::string local; ///< local name of the name split last
    std::string ns;    ///< its namespace name
};

} // namespace ko::lxml

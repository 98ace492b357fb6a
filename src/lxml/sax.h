/// @file
/// The builder of trees. An element is made when its start tag is met and linked to its parent
/// when it ends, so that the open elements are exactly those on the stack.
#pragma once

#include <vector>

#include "expat_parser/events.h"
#include "expat_parser/expat_parser.h"
#include "lxml/attribute_text.h"
#include "lxml/document.h"
#include "lxml/name_table.h"

namespace ko::lxml {

/// Builds the tree of one XML document into a `document_t`, which owns the elements.
///
/// Used by one thread, once. After an exception the elements made so far stay in the document,
/// attached to nothing.
class sax_t : public xml::events_t {
public:
    /// @param target, settings borrowed
    /// @param reader tells where a start tag stands when positions are wanted; borrowed
    sax_t(document_t& target, const load_options_t& settings, const xml::expat_parser_t& reader);
    virtual ~sax_t();

    void start_element(const char* name, const char* const* attributes) override;
    void end_element(const char* name) override;
    void character_data(const char* text, int size) override;
    void start_cdata() override;
    void end_cdata() override;

    /// The top element once it has ended, null before.
    element_t* root_get() const { return root; }
    /// Frees all elements that were made.
    void discard() noexcept;

private:
    void require_limits() const;
    void gather(const char* const* attributes);
    bool gather_known(const char* const* attributes);
    void gather_sorted(const char* const* attributes);

    std::vector<element_t*> stack;
    document_t& document;
    const load_options_t& options;
    const xml::expat_parser_t& parser;
    element_t* root;
    std::size_t elements; ///< made so far
    bool in_cdata;
    name_table_t names;
    xml::attribute_map_t sorted;            ///< of one start tag
    std::vector<attribute_text_t> gathered; ///< of one start tag, names resolved
};

} // namespace ko::lxml

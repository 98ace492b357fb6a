#pragma once

#include <string>

#include "lxml/lxml.h"
#include "xml_preprocessor/keywords.h"
#include "xml_preprocessor/preprocessor_imp.h"

namespace ko::xpp {

/// An element in execution: where its children come from and where they go.
///
/// It hands out the children of its body, at first the element itself. Elements are borrowed.
/// The stack calls `start` once and, when a pass over the children is through, `again`; each says
/// whether a pass follows. A constructor does not throw: whatever can fail is done by `start` and
/// `again`, when the block is on the stack and `failed` can report for it.
class block_t {
public:
    /// @param source the element
    /// @param parent the output parent
    /// @param source_keywords in the table of `source`
    block_t(preprocessor_t::imp_t& state, ko::lxml::element_t& source,
            ko::lxml::element_t& parent, const keywords_ptr_t& source_keywords);
    block_t(const block_t&) = delete;
    block_t& operator=(const block_t&) = delete;
    virtual ~block_t();

    /// Does what comes before the first pass. @return whether there is one
    virtual bool start() = 0;
    /// Does what comes after a pass. @return whether another one follows
    virtual bool again();
    /// An exception leaves this block.
    virtual void failed() noexcept;

    /// Begins a pass over the children of the body.
    void rewind();
    /// The next child of the pass, or null after the last one.
    ko::lxml::element_t* next();

    ko::lxml::element_t& out_get() const;            ///< the output parent of the children
    const keywords_ptr_t& children_keywords() const; ///< in the table of the children

protected:
    /// The keywords in the table of the element.
    const string_table_t& names() const;
    /// The text of a required attribute.
    const std::string& attribute_text(int name) const;
    /// The value of a required attribute, evaluated when it is an expression attribute.
    std::string attribute_value(int name) const;
    /// Takes the children from another element, of any document, instead.
    void body_set(ko::lxml::element_t& other);

    preprocessor_t::imp_t& imp;
    ko::lxml::element_t& element;
    ko::lxml::element_t* out; ///< output parent of the children; never null

private:
    keywords_ptr_t keywords;      // of the element
    keywords_ptr_t body_keywords; // of the body
    ko::lxml::element_t* body;
    ko::lxml::element_t::children_t::const_iterator position;
};

} // namespace ko::xpp

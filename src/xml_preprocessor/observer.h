/// @file
/// The interface of observers.
#pragma once

#include <string>

#include "export.h"
#include "lxml/lxml.h"
#include "xml_preprocessor/place.h"

namespace ko::xpp {

/// Is told what a preprocessor does, and what it passes over without an error.
///
/// Its functions do nothing; a host overrides those that it wants. In each function
/// `preprocessor_t::trace_get` gives the places around the one that is told. It may not change
/// the elements.
///
/// @par Owns
/// Nothing of what it is told; the host owns it.
/// @par Lives
/// Longer than the preprocessor, or until `observer_set(nullptr)` takes it off. The references
/// that a function gets are good until it returns, but those to elements, which live as long as
/// their documents.
/// @par Threads
/// Called on the thread that runs `process`.
/// @par After an exception
/// What a function throws ends `process` like an exception of a plug-in.
class KO_API observer_t {
public:
    /// A file is about to be read.
    /// @param path as it was found, or as the resolver gave it
    virtual void file_opened(const std::string& path);
    /// An attribute of the expression namespace did not evaluate and is written as it is.
    /// @param place the element, with the attribute as detail
    /// @param expression the value of the attribute
    /// @param message why: the message of the evaluator
    virtual void expression_failed(const place_t& place, const std::string& expression,
                                   const std::string& message);
    /// An element of the directive namespace is no directive here; it and its children are
    /// dropped.
    /// @param name its local name
    virtual void directive_unknown(const place_t& place, const std::string& name);
    /// Text other than white space is dropped: it stands in a directive, or beside the elements
    /// that a directive brings in.
    virtual void text_dropped(const place_t& place);
    /// An element was made, with its texts and attributes, but without children yet.
    /// @param source the element it is made from
    /// @param output the new one, in the output document
    virtual void element_made(const ko::lxml::element_t& source,
                              const ko::lxml::element_t& output);

    virtual ~observer_t();

    /// A pass of a loop ("for", "repeat", "specify") begins. Its variable has the value of the
    /// pass, and the loop is the first place of `trace_get`.
    /// @param loop the directive
    virtual void pass_begun(const ko::lxml::element_t& loop);
};

} // namespace ko::xpp

/// @file
/// The interface of plug-ins.
#pragma once

#include "export.h"
#include "lxml/lxml.h"

namespace ko::xpp {

/// Generates elements in place of a "plugin" directive.
///
/// @par Owns
/// Nothing that it is given; what it generates lies in a document that it keeps. The preprocessor
/// that it is registered with owns and deletes the plug-in.
/// @par Lives
/// As long as that preprocessor, unless another one takes its name: then it is the caller's
/// again.
/// @par Threads
/// Called on the thread that runs `process`.
/// @par After an exception
/// What `generate` throws comes out of `process` unchanged.
class KO_API plugin_t {
public:
    /// Generates the content of a directive.
    /// @param directive the directive element as written, with its attributes and children. It
    ///        and what hangs below it may be changed, or freed for good; the elements that stand
    ///        around it are being processed and must stay
    /// @return an element, of any document, whose children are processed in place of the
    ///         directive; the element itself is not copied. Null means nothing to emit. The
    ///         preprocessor never deletes it; it must live until its children have been
    ///         processed, and a plug-in directive among them calls the plug-in again before that.
    ///         The output element that is being filled at the moment, or one that holds it, would
    ///         grow without an end: it makes `process` throw a `ko::exception_t`.
    /// @throws anything; it comes out of `process` unchanged
    virtual ko::lxml::element_t* generate(ko::lxml::element_t* directive) = 0;

    virtual ~plugin_t();
};

} // namespace ko::xpp

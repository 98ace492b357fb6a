/// @file
/// How a document is written.
#pragma once

namespace ko::lxml {

/// What `document_t::write` and `document_t::save_atomically` let their caller choose.
struct write_options_t {
    /// Writes the XML declaration and, where the document has a stylesheet, the reference to it.
    bool declaration = true;

    /// Spaces that an element stands further to the right than its parent; negative for none, and
    /// no line breaks either.
    ///
    /// Children come to lines of their own where their parent has no text. White space with a
    /// line break in it counts as none, the new layout takes its place. Everything below an
    /// element with a text, and inside of `xml:space="preserve"`, stays as it is. No line is
    /// indented by more than 80 spaces.
    int indent = -1;
};

} // namespace ko::lxml

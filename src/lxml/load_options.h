/// @file
/// How a document is loaded where the defaults of a plain load do not do.
#pragma once

#include <cstddef>
#include <string>

#include "errorcode/errorcode.h"
#include "export.h"

namespace ko::lxml {

/// What a load with options does. A value of 0 means no limit.
struct load_options_t {
    bool positions = false;         ///< note where each start tag stands, for `position_get`
    bool forbid_doctype = false;    ///< a document type declaration is an error
    bool discard_on_failure = true; ///< a failure leaves the document without what was made
    unsigned depth_max = 0;         ///< how deep elements may nest; the root alone is 1 deep
    std::size_t elements_max = 0;   ///< how many elements the text may hold
    bool quiet = true;              ///< no line on standard output where a file fails to load
};

/// Where a start tag begins; of one out of an entity, where the reference stands.
struct position_t {
    unsigned long line;   ///< from 1
    unsigned long column; ///< bytes from the start of the line, from 0
    long byte;            ///< bytes from the start of the text, from 0
};

/// The error of a load with options: code and message are those of a plain load.
///
/// Thrown by value; whoever catches it owns it.
class KO_API load_error_t : public errorcode_t {
public:
    /// @param source error whose code and message to take
    /// @param source_file, source_line, source_column see the members
    load_error_t(const errorcode_t& source, const std::string& source_file,
                 unsigned long source_line, unsigned long source_column);
    ~load_error_t() override;

    std::string file;     ///< path given to `load`; empty for a text or a stream
    unsigned long line;   ///< where the error lies, from 1; 0 when nothing was read
    unsigned long column; ///< from 0
};

} // namespace ko::lxml

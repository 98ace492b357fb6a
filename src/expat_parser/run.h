/// @file
/// A parse while it runs.
///
/// Expat's frames must not be unwound: an exception of a receiver is recorded in the parser and
/// never leaves a function that expat calls, a limit stops expat, and a cancellation of the
/// thread waits until expat has returned.
#pragma once

#include <istream>
#include <string>
#include <string_view>

#include "expat_parser/events.h"
#include "expat_parser/expat_parser.h"
#include "expat_parser/limits.h"

namespace ko::xml {

/// Thrown by a receiver to refuse the document: an `xml_parse_error` at the current position.
struct refusal_t {
    std::string text;
};

/// Reads one document with the expat parser of an `expat_parser_t` and tells a receiver. Both are
/// borrowed.
class run_t {
public:
    run_t(expat_parser_t& parser, events_t& receiver)
        : self(parser), events(receiver), limits(parser.parser) {}
    run_t(const run_t&) = delete;
    run_t& operator=(const run_t&) = delete;
    ~run_t();

    /// Makes a document type declaration an error.
    void doctype_forbid();

    /// @throws ko::errorcode_t as `expat_parser_t::parse`
    void parse_file(const std::string& name);
    /// @throws ko::errorcode_t as `expat_parser_t::parse_buffer`
    void parse_text(std::string_view text);
    /// @throws ko::errorcode_t as `expat_parser_t::parse`, the name of the stream being empty
    void parse_stream(std::istream& in);

    /// Where the error lies that one of the functions above threw; 0 before the first byte.
    unsigned long line_get() const { return line; }
    unsigned long column_get() const { return column; } ///< @copydoc line_get

private:
    friend struct handlers_t;

    void begin(const std::string& name);
    /// Expat would take a parse that a callback cut short for one document with the next.
    void require_unused();
    /// Reads pieces of at most 4096 bytes to the end of what `read(buffer, size)` gives.
    template <class R> void parse_pieces(const R& read);
    void* piece_buffer();
    [[noreturn]] void throw_parse_error();
    const char* error_text() const;
    void throw_callback_error() const;

    /// Calls the receiver and records what it throws.
    template <class A> void guard(const A& action) noexcept;
    void record(unsigned long code, const char* text) noexcept;
    /// Stops expat when `why`, the message of a limit, is not null.
    void refuse(const char* why) noexcept;
    /// The current position, of which it takes note.
    std::string position_describe();

    expat_parser_t& self;
    events_t& events;
    limits_t limits;
    bool is_attached = false; ///< expat calls this object
    unsigned long line = 0;
    unsigned long column = 0;
};

} // namespace ko::xml

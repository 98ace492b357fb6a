/// @file
/// An event-driven XML reader over expat.
#pragma once

#include <cstring>
#include <memory>
#include <string>

#include "errorcode/errorcode.h"
#include "expat_parser/attribute_map.h"
#include "export.h"

struct XML_ParserStruct;

namespace ko::xml {

class expat_memory_t;

/// Reads one XML document, from a file or from memory, and calls back for what it finds.
///
/// Derive from it and override the callbacks; they do nothing here. Expat's protection against
/// entities that explode is on, what a document may cost beyond its size is limited, and nothing
/// outside the document is fetched.
///
/// @par Owns
/// Its expat parser, and the file while it is read.
/// @par Lives
/// For one document: a second `parse` or `parse_buffer`, and one out of a callback, fails with
/// `xml_parse_error`. What a callback is given is good until it returns.
/// @par Threads
/// Used by one thread, on which the callbacks run. One that is cancelled during `parse` unwinds
/// while it waits for the file; the file is closed and the parser stays as used as after an
/// error. In a callback and in `parse_buffer` a cancellation waits until they have returned.
/// @par After an exception
/// After the first one out of a callback no further callback is made, and the parse throws it as
/// a `ko::errorcode_t`. One that is no `std::exception` only silences the callbacks; callers rely
/// on it (quirk "silent strangers"). Another parse fails.
/// @code
/// struct counter_t : xml::expat_parser_t {
///     counter_t() : expat_parser_t(false) {}
///     void start_element(const std::string&, const attribute_map_t&) override { ++elements; }
///     int elements = 0;
/// } counter;
/// counter.parse_buffer("<rack><amp/><amp/></rack>");
/// std::cout << counter.elements << '\n'; // 3
/// @endcode
class KO_API expat_parser_t {
public:
    /// Orders zero-terminated strings by `strcmp`.
    struct string_cmp_t {
        /// Whether `a` comes before `b`.
        bool operator()(const char* a, const char* b) const { return std::strcmp(a, b) < 0; }
    };

    /// Attribute values by name. The pointers are expat's and valid only during the callback.
    using attribute_map_t = xml::attribute_map_t;

    /// @name Callbacks
    /// With namespace processing a name is "uri|local|prefix", "uri|local" in a default namespace
    /// or "local" in none; without, it is as written.
    /// @{
    virtual void start_element(const std::string& name, const attribute_map_t& attributes);
    virtual void end_element(const std::string& name);
    /// A run of text may arrive in several calls.
    virtual void character_data(const std::string& text);
    virtual void start_cdata();
    virtual void end_cdata();
    /// @}

    virtual ~expat_parser_t();

    /// @param namespaces true turns namespace processing on
    /// @throws std::bad_alloc when expat cannot make a parser
    explicit expat_parser_t(bool namespaces);
    expat_parser_t(const expat_parser_t&) = delete;
    expat_parser_t& operator=(const expat_parser_t&) = delete;

    /// Reads a whole file.
    /// @throws ko::errorcode_t `xml_file_open`, `xml_file_read`, `xml_parse_error` (message from
    ///         expat or of a limit, with the position), `xml_internal`, `xml_rethrow_exception`
    ///         when there is no memory, or the error of a callback with its position
    void parse(const std::string& file_name);

    /// Reads a whole document in memory.
    /// @throws ko::errorcode_t `xml_parse_error` (message from expat or of a limit, with the
    ///         position), or the error of a callback with its position
    void parse_buffer(const std::string& text);

    /// The current position as "line=L column=C"; lines count from 1, columns from 0.
    std::string position_describe() const;
    unsigned long line_number_get() const;   ///< current line, from 1
    unsigned long column_number_get() const; ///< current column, from 0
    long byte_index_get() const;             ///< current byte, from 0; -1 when there is none
    /// The file of the last `parse`; empty before and after a `parse_buffer`.
    std::string file_name_get() const;

private:
    friend struct ko::layout_t;
    friend class run_t;
    friend struct handlers_t;

    XML_ParserStruct* parser;
    std::string file_name;
    unsigned error_code;
    std::string error_message;
    std::string refusal; ///< message of the limit that stopped the parse, with its place
    std::unique_ptr<expat_memory_t> memory; ///< what the parser allocates
};

} // namespace ko::xml

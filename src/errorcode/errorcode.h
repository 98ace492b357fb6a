/// @file
/// Numeric error codes, their names and descriptions, and the exception that carries one.
#pragma once

#include <string>

#include "exception/exception.h"
#include "export.h"

namespace ko {

/// The table of error codes, constant data that any thread may read.
namespace errorcode {

/// One row of the table of error codes.
struct entry_t {
    unsigned long code;      ///< the code, 32 bits
    const char* name;        ///< symbolic name: lower case, underscores
    const char* description; ///< text for people
};

/// Number of rows in `table`.
constexpr unsigned table_size = 45;

/// All error codes, in a fixed order that is not the order of the codes.
///
/// Two pairs of rows share a code; a look-up by code finds the first row of the pair.
extern KO_API const entry_t table[table_size];

/// Finds the first row with the given code.
/// @return the row, or null when no row has the code
KO_API const entry_t* entry_find(unsigned long code);

/// @name Codes: general
/// Not of one part of a system.
/// @{
constexpr unsigned long no_error = 0x00000000;          ///< success
constexpr unsigned long generic_error = 0x20000001;     ///< a failure without a code of its own
constexpr unsigned long unknown_exception = 0x20000002; ///< no `std::exception`
constexpr unsigned long winapi = 0x20000003;            ///< a failure of an operating system
constexpr unsigned long not_implemented = 0x20000004;   ///< what was asked for is not there
/// @}

/// @name Codes: control engine
/// For programs built on the library, which throws none of them.
/// @{
constexpr unsigned long regent_min = 0x20000100;       ///< marks the start of the range
constexpr unsigned long regent_generic = 0x20000101;   ///< a failure without a code of its own
constexpr unsigned long regent_no_engine = 0x20000102; ///< there is no control engine
constexpr unsigned long regent_no_config_file = 0x20000103;  ///< the configuration is missing
constexpr unsigned long regent_bad_config_file = 0x20000103; ///< the same number
constexpr unsigned long regent_bad_type = 0x20000104;        ///< an unknown type of control
constexpr unsigned long regent_bad_function = 0x20000105;    ///< an unknown function
constexpr unsigned long regent_bad_cgid = 0x20000106;        ///< an unknown change group
constexpr unsigned long regent_bad_ruid = 0x20000107;        ///< an unknown ruid
constexpr unsigned long regent_readonly = 0x20000108;        ///< the control cannot be set
constexpr unsigned long regent_internal = 0x20000109;        ///< a fault of the engine itself
constexpr unsigned long regent_max = 0x200001FF;             ///< marks its end
/// @}

/// @name Codes: XML
/// Those from `xml_internal` to `xml_parse_error` are thrown by the reader.
/// @{
constexpr unsigned long xml_min = 0x20000200;      ///< marks the start of the range
constexpr unsigned long xml_generic = 0x20000201;  ///< a failure without a code of its own
constexpr unsigned long xml_internal = 0x20000202; ///< no buffer from expat
constexpr unsigned long xml_unknown_exception = 0x20000203; ///< no `std::exception`
constexpr unsigned long xml_rethrow_exception = 0x20000204; ///< from a callback
constexpr unsigned long xml_file_open = 0x20000205;         ///< the file could not be opened
constexpr unsigned long xml_file_read = 0x20000206;         ///< the file could not be read
constexpr unsigned long xml_parse_error = 0x20000207;       ///< not well formed
constexpr unsigned long xml_element_missing = 0x20000208;   ///< for programs that check documents
constexpr unsigned long xml_element_illegal = 0x20000209;   ///< as above
constexpr unsigned long xml_element_invalid = 0x2000020A;   ///< as above
constexpr unsigned long xml_attribute_missing = 0x2000020B; ///< as above
constexpr unsigned long xml_attribute_illegal = 0x2000020C; ///< as above
constexpr unsigned long xml_attribute_invalid = 0x2000020D; ///< as above
constexpr unsigned long xml_max = 0x200002FF;               ///< marks its end
/// @}

/// @name Codes: network
/// For programs built on the library, which throws none of them.
/// @{
constexpr unsigned long konet_min = 0x20000300;          ///< marks the start of the range
constexpr unsigned long konet_generic = 0x20000301;      ///< a failure without a code of its own
constexpr unsigned long konet_sock_timeout = 0x20000302; ///< no answer in time
constexpr unsigned long konet_malformed_address = 0x20000303; ///< no network address
constexpr unsigned long konet_bad_address = 0x20000303;       ///< the same number
constexpr unsigned long konet_max = 0x200003FF;               ///< marks its end
/// @}

/// @name Codes: security
/// For programs built on the library, which throws none of them.
/// @{
constexpr unsigned long sec_min = 0x20000400;           ///< marks the start of the range
constexpr unsigned long sec_access_denied = 0x20000401; ///< not allowed
constexpr unsigned long sec_logon_fail = 0x20000402;    ///< wrong name or password
constexpr unsigned long sec_generic = 0x20000403;       ///< a failure without a code of its own
constexpr unsigned long sec_max = 0x200004FF;           ///< marks its end
/// @}

/// @name Codes: diagnostics
/// A range for programs built on the library.
/// @{
constexpr unsigned long diagnostics_min = 0x20000500; ///< marks the start of the range
constexpr unsigned long diagnostics_max = 0x200005FF; ///< marks its end
/// @}

} // namespace errorcode

/// An error of the library that carries a numeric code of `ko::errorcode::table`.
///
/// The description of a code that is not in the table is "unkown ko::errorcode 0x" and the code
/// in upper-case hexadecimal digits.
///
/// A null pointer for a text is the standard library's own `std::logic_error`.
///
/// @par Owns
/// Its text.
/// @par Lives
/// As a plain value, copied freely.
/// @par Threads
/// Used by one thread at a time.
/// @par After an exception
/// Whoever catches it has the whole message; an assignment that throws leaves the one from
/// before.
///
/// @code
/// const errorcode_t failure(errorcode::xml_parse_error, "rack.xml");
/// std::cout << failure.what() << '\n'; // rack.xml: xml parse error
/// @endcode
class KO_API errorcode_t : public exception_t {
public:
    /// The message is the description of `code`.
    explicit errorcode_t(unsigned long code);

    /// The message is `text`, ": " and the description of `code`.
    /// @throws std::length_error when that is longer than a string can be
    errorcode_t(unsigned long code, const std::string& text);

    /// The message is `text` exactly; the order of the arguments alone tells this from the other.
    errorcode_t(const std::string& text, unsigned long code);

    errorcode_t(const errorcode_t& other);            ///< copies code and message
    errorcode_t& operator=(const errorcode_t& other); ///< copies code and message
    ~errorcode_t() override;

    /// The code given to the constructor, 32 bits.
    unsigned long code_get() const;

private:
    friend struct ko::layout_t;

    unsigned long code;
};

} // namespace ko

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

// The codes by name.
constexpr unsigned long no_error = 0x00000000;
constexpr unsigned long generic_error = 0x20000001;
constexpr unsigned long unknown_exception = 0x20000002;
constexpr unsigned long winapi = 0x20000003;
constexpr unsigned long not_implemented = 0x20000004;
constexpr unsigned long regent_min = 0x20000100;
constexpr unsigned long regent_max = 0x200001FF;
constexpr unsigned long xml_min = 0x20000200;
constexpr unsigned long xml_max = 0x200002FF;
constexpr unsigned long konet_min = 0x20000300;
constexpr unsigned long konet_max = 0x200003FF;
constexpr unsigned long sec_min = 0x20000400;
constexpr unsigned long sec_max = 0x200004FF;
constexpr unsigned long diagnostics_min = 0x20000500;
constexpr unsigned long diagnostics_max = 0x200005FF;
constexpr unsigned long regent_generic = 0x20000101;
constexpr unsigned long regent_no_engine = 0x20000102;
constexpr unsigned long regent_no_config_file = 0x20000103;
constexpr unsigned long regent_bad_config_file = 0x20000103;
constexpr unsigned long regent_bad_type = 0x20000104;
constexpr unsigned long regent_bad_function = 0x20000105;
constexpr unsigned long regent_bad_cgid = 0x20000106;
constexpr unsigned long regent_bad_ruid = 0x20000107;
constexpr unsigned long regent_readonly = 0x20000108;
constexpr unsigned long regent_internal = 0x20000109;
constexpr unsigned long xml_generic = 0x20000201;
constexpr unsigned long xml_internal = 0x20000202;
constexpr unsigned long xml_unknown_exception = 0x20000203;
constexpr unsigned long xml_rethrow_exception = 0x20000204;
constexpr unsigned long xml_file_open = 0x20000205;
constexpr unsigned long xml_file_read = 0x20000206;
constexpr unsigned long xml_parse_error = 0x20000207;
constexpr unsigned long xml_element_missing = 0x20000208;
constexpr unsigned long xml_element_illegal = 0x20000209;
constexpr unsigned long xml_element_invalid = 0x2000020A;
constexpr unsigned long xml_attribute_missing = 0x2000020B;
constexpr unsigned long xml_attribute_illegal = 0x2000020C;
constexpr unsigned long xml_attribute_invalid = 0x2000020D;
constexpr unsigned long konet_generic = 0x20000301;
constexpr unsigned long konet_sock_timeout = 0x20000302;
constexpr unsigned long konet_malformed_address = 0x20000303;
constexpr unsigned long konet_bad_address = 0x20000303;
constexpr unsigned long sec_access_denied = 0x20000401;
constexpr unsigned long sec_logon_fail = 0x20000402;
constexpr unsigned long sec_generic = 0x20000403;

} // namespace errorcode

/// An error of the library that carries a numeric code of `ko::errorcode::table`.
///
/// The description of a code that is not in the table is "unkown ko::errorcode 0x" and the code
/// in upper-case hexadecimal digits.
///
/// An object owns its text. It may be copied freely and is used by one thread at a time. A null
/// pointer for a text is the standard library's own `std::logic_error`.
class KO_API errorcode_t : public exception_t {
public:
    /// The message is the description of `code`.
    explicit errorcode_t(unsigned long code);

    /// The message is `text`, ": " and the description of `code`.
    /// @throws std::length_error when that is longer than a string can be
    errorcode_t(unsigned long code, const std::string& text);

    /// The message is `text` exactly; the order of the arguments alone tells this from the other.
    errorcode_t(const std::string& text, unsigned long code);

    errorcode_t(const errorcode_t& other);
    errorcode_t& operator=(const errorcode_t& other);
    ~errorcode_t() override;

    /// The code given to the constructor, 32 bits.
    unsigned long code_get() const;

private:
    friend struct ko::layout_t;

    unsigned long code;
};

} // namespace ko

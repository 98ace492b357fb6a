#include "errorcode/errorcode.h"

#include <cstdio>

namespace ko {

namespace errorcode {

// The order of the rows is part of the interface: two pairs share a code, and a look-up finds the
// first row of each.
const entry_t table[table_size] = {
    {no_error, "no_error", "this is not an error"},
    {generic_error, "generic_error", "Generic error"},
    {unknown_exception, "unknown_exception", "unknown exception encountered"},
    {winapi, "winapi", "Windows API error"},
    {not_implemented, "not_implemented", "function is not implemented"},
    {regent_min, "regent_min", "REGENT min error number"},
    {regent_max, "regent_max", "REGENT max error number"},
    {xml_min, "xml_min", "XML min error number"},
    {xml_max, "xml_max", "XML max error number"},
    {konet_min, "konet_min", "ko::net min error number"},
    {konet_max, "konet_max", "ko::net max error number"},
    {sec_min, "sec_min", "security min error number"},
    {sec_max, "sec_max", "security max error number"},
    {diagnostics_min, "diagnostics_min", "diagnostics min error number"},
    {diagnostics_max, "diagnostics_max", "diagnostics max error number"},
    {regent_generic, "regent_generic", "control engine generic error"},
    {regent_no_engine, "regent_no_engine", "control engine does not exist"},
    {regent_no_config_file, "regent_no_config_file", "no configuration file"},
    {regent_bad_config_file, "regent_bad_config_file", "bad configuration file"},
    {regent_bad_type, "regent_bad_type", "bad control type specified in configuration file"},
    {regent_bad_function, "regent_bad_function",
     "bad function name specified in configuration file"},
    {regent_bad_cgid, "regent_bad_cgid", "bad change group id"},
    {regent_bad_ruid, "regent_bad_ruid", "bad ruid"},
    {regent_readonly, "regent_readonly", "control is read-only"},
    {regent_internal, "regent_internal", "control engine internal failure"},
    {xml_generic, "xml_generic", "xml generic error"},
    {xml_internal, "xml_internal", "xml internal error"},
    {xml_unknown_exception, "xml_unknown_exception", "xml unknown exception"},
    {xml_rethrow_exception, "xml_rethrow_exception", "xml error"},
    {xml_file_open, "xml_file_open", "xml file open failure"},
    {xml_file_read, "xml_file_read", "xml file read failure"},
    {xml_parse_error, "xml_parse_error", "xml parse error"},
    {xml_element_missing, "xml_element_missing", "xml element missing"},
    {xml_element_illegal, "xml_element_illegal", "xml element illegal"},
    {xml_element_invalid, "xml_element_invalid", "xml element invalid"},
    {xml_attribute_missing, "xml_attribute_missing", "xml attribute missing"},
    {xml_attribute_illegal, "xml_attribute_illegal", "xml attribute illegal"},
    {xml_attribute_invalid, "xml_attribute_invalid", "xml attribute invalid"},
    {konet_generic, "konet_generic", "network generic error"},
    {konet_sock_timeout, "konet_sock_timeout", "sockets timeout"},
    {konet_malformed_address, "konet_malformed_address", "malformed network address"},
    {konet_bad_address, "konet_bad_address", "bad network address"},
    {sec_access_denied, "sec_access_denied", "access denied"},
    {sec_logon_fail, "sec_logon_fail", "invalid username or bad password"},
    {sec_generic, "sec_generic", "generic security error"},
};

const entry_t* entry_find(unsigned long code) {
    for (const entry_t& entry : table) {
        if (entry.code == code) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace errorcode

namespace {

/// The code as the 32 bits that it has where `long` has no more.
constexpr unsigned long code_32(unsigned long code) {
    return code & 0xFFFFFFFFUL;
}

std::string description_get(unsigned long code) {
    if (const errorcode::entry_t* entry = errorcode::entry_find(code)) {
        return entry->description;
    }
    char text[64];
    std::snprintf(text, sizeof text, "unkown ko::errorcode 0x%lX", code);
    return text;
}

/// Put together by appending, whose own error a text of the greatest length raises.
std::string described(const std::string& text, unsigned long code) {
    std::string message = text;
    message.append(": ").append(description_get(code));
    return message;
}

} // namespace

errorcode_t::errorcode_t(unsigned long number)
    : exception_t(description_get(code_32(number))), code(code_32(number)) {}

errorcode_t::errorcode_t(unsigned long number, const std::string& text)
    : exception_t(described(text, code_32(number))), code(code_32(number)) {}

errorcode_t::errorcode_t(const std::string& text, unsigned long number)
    : exception_t(text), code(code_32(number)) {}

errorcode_t::errorcode_t(const errorcode_t& other) = default;
errorcode_t& errorcode_t::operator=(const errorcode_t& other) = default;
errorcode_t::~errorcode_t() = default;

unsigned long errorcode_t::code_get() const {
    return code;
}

} // namespace ko

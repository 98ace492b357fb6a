#include <gtest/gtest.h>

#include <iterator>

#include "errorcode/errorcode.h"

namespace {

struct row_t {
    unsigned long code;
    unsigned long constant;
    const char* name;
    const char* description;
};

const row_t rows[] = {
    {0x00000000, ko::errorcode::no_error, "no_error", "this is not an error"},
    {0x20000001, ko::errorcode::generic_error, "generic_error", "Generic error"},
    {0x20000002, ko::errorcode::unknown_exception, "unknown_exception",
     "unknown exception encountered"},
    {0x20000003, ko::errorcode::winapi, "winapi", "Windows API error"},
    {0x20000004, ko::errorcode::not_implemented, "not_implemented",
     "function is not implemented"},
    {0x20000100, ko::errorcode::regent_min, "regent_min", "REGENT min error number"},
    {0x200001FF, ko::errorcode::regent_max, "regent_max", "REGENT max error number"},
    {0x20000200, ko::errorcode::xml_min, "xml_min", "XML min error number"},
    {0x200002FF, ko::errorcode::xml_max, "xml_max", "XML max error number"},
    {0x20000300, ko::errorcode::konet_min, "konet_min", "ko::net min error number"},
    {0x200003FF, ko::errorcode::konet_max, "konet_max", "ko::net max error number"},
    {0x20000400, ko::errorcode::sec_min, "sec_min", "security min error number"},
    {0x200004FF, ko::errorcode::sec_max, "sec_max", "security max error number"},
    {0x20000500, ko::errorcode::diagnostics_min, "diagnostics_min",
     "diagnostics min error number"},
    {0x200005FF, ko::errorcode::diagnostics_max, "diagnostics_max",
     "diagnostics max error number"},
    {0x20000101, ko::errorcode::regent_generic, "regent_generic", "control engine generic error"},
    {0x20000102, ko::errorcode::regent_no_engine, "regent_no_engine",
     "control engine does not exist"},
    {0x20000103, ko::errorcode::regent_no_config_file, "regent_no_config_file",
     "no configuration file"},
    {0x20000103, ko::errorcode::regent_bad_config_file, "regent_bad_config_file",
     "bad configuration file"},
    {0x20000104, ko::errorcode::regent_bad_type, "regent_bad_type",
     "bad control type specified in configuration file"},
    {0x20000105, ko::errorcode::regent_bad_function, "regent_bad_function",
     "bad function name specified in configuration file"},
    {0x20000106, ko::errorcode::regent_bad_cgid, "regent_bad_cgid", "bad change group id"},
    {0x20000107, ko::errorcode::regent_bad_ruid, "regent_bad_ruid", "bad ruid"},
    {0x20000108, ko::errorcode::regent_readonly, "regent_readonly", "control is read-only"},
    {0x20000109, ko::errorcode::regent_internal, "regent_internal",
     "control engine internal failure"},
    {0x20000201, ko::errorcode::xml_generic, "xml_generic", "xml generic error"},
    {0x20000202, ko::errorcode::xml_internal, "xml_internal", "xml internal error"},
    {0x20000203, ko::errorcode::xml_unknown_exception, "xml_unknown_exception",
     "xml unknown exception"},
    {0x20000204, ko::errorcode::xml_rethrow_exception, "xml_rethrow_exception", "xml error"},
    {0x20000205, ko::errorcode::xml_file_open, "xml_file_open", "xml file open failure"},
    {0x20000206, ko::errorcode::xml_file_read, "xml_file_read", "xml file read failure"},
    {0x20000207, ko::errorcode::xml_parse_error, "xml_parse_error", "xml parse error"},
    {0x20000208, ko::errorcode::xml_element_missing, "xml_element_missing",
     "xml element missing"},
    {0x20000209, ko::errorcode::xml_element_illegal, "xml_element_illegal",
     "xml element illegal"},
    {0x2000020A, ko::errorcode::xml_element_invalid, "xml_element_invalid",
     "xml element invalid"},
    {0x2000020B, ko::errorcode::xml_attribute_missing, "xml_attribute_missing",
     "xml attribute missing"},
    {0x2000020C, ko::errorcode::xml_attribute_illegal, "xml_attribute_illegal",
     "xml attribute illegal"},
    {0x2000020D, ko::errorcode::xml_attribute_invalid, "xml_attribute_invalid",
     "xml attribute invalid"},
    {0x20000301, ko::errorcode::konet_generic, "konet_generic", "network generic error"},
    {0x20000302, ko::errorcode::konet_sock_timeout, "konet_sock_timeout", "sockets timeout"},
    {0x20000303, ko::errorcode::konet_malformed_address, "konet_malformed_address",
     "malformed network address"},
    {0x20000303, ko::errorcode::konet_bad_address, "konet_bad_address", "bad network address"},
    {0x20000401, ko::errorcode::sec_access_denied, "sec_access_denied", "access denied"},
    {0x20000402, ko::errorcode::sec_logon_fail, "sec_logon_fail",
     "invalid username or bad password"},
    {0x20000403, ko::errorcode::sec_generic, "sec_generic", "generic security error"},
};

TEST(errorcode_table, has_45_rows_in_their_order) {
    ASSERT_EQ(std::size(rows), 45U);
    ASSERT_EQ(std::size(ko::errorcode::table), 45U);
    for (unsigned i = 0; i < 45; ++i) {
        EXPECT_EQ(ko::errorcode::table[i].code, rows[i].code) << i;
        EXPECT_STREQ(ko::errorcode::table[i].name, rows[i].name) << i;
        EXPECT_STREQ(ko::errorcode::table[i].description, rows[i].description) << i;
    }
}

TEST(errorcode_table, has_a_constant_for_every_row) {
    for (const row_t& row : rows) {
        EXPECT_EQ(row.constant, row.code) << row.name;
    }
}

/// The number of the row that a code is found in.
std::ptrdiff_t row_of(unsigned long code) {
    return ko::errorcode::entry_find(code) - ko::errorcode::table;
}

TEST(entry_find, finds_every_row_but_the_second_of_a_shared_code) {
    for (unsigned i = 0; i < 45; ++i) {
        const unsigned expected = i == 18 || i == 41 ? i - 1 : i;
        EXPECT_EQ(row_of(rows[i].code), expected) << rows[i].name;
    }
}

TEST(entry_find, finds_the_first_row_for_0) {
    EXPECT_EQ(ko::errorcode::entry_find(0), &ko::errorcode::table[0]);
    EXPECT_STREQ(ko::errorcode::entry_find(0)->name, "no_error");
}

TEST(entry_find, finds_the_first_of_two_rows_with_a_shared_code) {
    EXPECT_STREQ(ko::errorcode::entry_find(0x20000103)->name, "regent_no_config_file");
    EXPECT_STREQ(ko::errorcode::entry_find(0x20000303)->name, "konet_malformed_address");
}

TEST(entry_find, finds_marker_rows) {
    EXPECT_STREQ(ko::errorcode::entry_find(0x200001FF)->name, "regent_max");
    EXPECT_STREQ(ko::errorcode::entry_find(0x20000500)->name, "diagnostics_min");
}

TEST(entry_find, gives_null_for_an_unknown_code) {
    for (const unsigned long code : {1UL, 0x20000000UL, 0x2000010AUL, 0xFFFFFFFFUL}) {
        EXPECT_EQ(ko::errorcode::entry_find(code), nullptr) << code;
    }
}

} // namespace

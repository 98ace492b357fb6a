#include "xml_preprocessor/string_table.h"

#include "exception/exception.h"

namespace ko::xpp {

namespace {

struct keyword_t {
    int string_table_t::*atom;
    const char* text;
};

constexpr keyword_t keyword_texts[] = {
    {&string_table_t::condition, "condition"},
    {&string_table_t::case_, "case"},
    {&string_table_t::default_, "default"},
    {&string_table_t::define, "define"},
    {&string_table_t::evaluate, "evaluate"},
    {&string_table_t::expression, "expression"},
    {&string_table_t::file, "file"},
    {&string_table_t::first, "first"},
    {&string_table_t::for_, "for"},
    {&string_table_t::if_, "if"},
    {&string_table_t::include, "include"},
    {&string_table_t::index, "index"},
    {&string_table_t::initialize, "initialize"},
    {&string_table_t::insert, "insert"},
    {&string_table_t::last, "last"},
    {&string_table_t::name, "name"},
    {&string_table_t::plugin, "plugin"},
    {&string_table_t::pragma, "pragma"},
    {&string_table_t::repeat, "repeat"},
    {&string_table_t::searchpath, "searchpath"},
    {&string_table_t::specify, "specify"},
    {&string_table_t::switch_, "switch"},
    {&string_table_t::update, "update"},
    {&string_table_t::values, "values"},
    {&string_table_t::empty, ""},
};

int atom_of(lxml::atom_table_t& atoms, const std::string& text) {
    const int known = atoms.find(text);
    return known >= 0 ? known : atoms.get(text);
}

} // namespace

void string_table_t::init(lxml::atom_table_t* atoms, const std::string& xpp_uri,
                          const std::string& xpr_uri) {
    if (atoms == nullptr) {
        throw exception_t("string_table_t::init() -- atom table is null");
    }
    xpp_ns = atom_of(*atoms, xpp_uri);
    xpr_ns = atom_of(*atoms, xpr_uri);
    for (const keyword_t& keyword : keyword_texts) {
        this->*keyword.atom = atom_of(*atoms, keyword.text);
    }
}

} // namespace ko::xpp

/// @file
/// The names that the preprocessor recognises, as atoms.
#pragma once

#include <string>

#include "export.h"
#include "lxml/atom_table.h"

namespace ko::xpp {

/// The atoms of the two namespaces and of the keywords in one atom table: a plain record.
struct KO_API string_table_t {
    int xpp_ns = 0;     ///< namespace of directives
    int xpr_ns = 0;     ///< namespace of expression attributes
    int condition = 0;  ///< "condition"
    int case_ = 0;      ///< "case"
    int default_ = 0;   ///< "default"
    int define = 0;     ///< "define"
    int evaluate = 0;   ///< "evaluate"
    int expression = 0; ///< "expression"
    int file = 0;       ///< "file"
    int first = 0;      ///< "first"
    int for_ = 0;       ///< "for"
    int if_ = 0;        ///< "if"
    int include = 0;    ///< "include"
    int index = 0;      ///< "index"
    int initialize = 0; ///< "initialize"
    int insert = 0;     ///< "insert"
    int last = 0;       ///< "last"
    int name = 0;       ///< "name"
    int plugin = 0;     ///< "plugin"
    int pragma = 0;     ///< "pragma"
    int repeat = 0;     ///< "repeat"
    int searchpath = 0; ///< "searchpath"
    int specify = 0;    ///< "specify"
    int switch_ = 0;    ///< "switch"
    int update = 0;     ///< "update"
    int values = 0;     ///< "values"
    int empty = 0;      ///< the empty string

    /// Fills the record from `atoms`, to which it adds the texts that are new.
    /// @param atoms the table
    /// @param xpp_uri name of the namespace of directives
    /// @param xpr_uri name of the namespace of expression attributes
    /// @throws ko::exception_t when `atoms` is null
    void init(ko::lxml::atom_table_t* atoms, const std::string& xpp_uri,
              const std::string& xpr_uri);
};

} // namespace ko::xpp

/// @file
/// Every public header of the library.
///
/// @mainpage kobase
///
/// Expressions, XML documents and an XML preprocessor for device software. Include this header,
/// or that of a part alone; link `libkobase.so`.
///
/// @section expressions Expressions
///
/// ko::alg::algebra_t evaluates texts; ko::alg::result_t is a value.
///
/// @code
/// alg::algebra_t algebra;
/// algebra.assign("n", 3);
/// std::cout << algebra.evaluate("n * 2 + 0.5") << '\n'; // (f) 6.5
/// @endcode
///
/// @section documents Documents
///
/// ko::lxml::document_t owns a tree of ko::lxml::element_t; ko::lxml::element_find and
/// ko::lxml::element_t::select_nodes query it. ko::xml::expat_parser_t reads without a tree.
///
/// @code
/// lxml::document_t document;
/// document.load_from_string("<rack><amp id='7' gain='-3'/></rack>");
/// const lxml::element_t* amp = lxml::element_find(document, "amp[@id=\"7\"]", true);
/// std::cout << amp->attribute_get_value("gain", "0") << '\n'; // -3
/// @endcode
///
/// @section configurations Configurations
///
/// ko::xpp::preprocessor_t carries out directives: loops, conditions, definitions, includes.
///
/// @code
/// lxml::document_t source;
/// source.load_from_string("<rack xmlns:x='kobase.org/xmlns/xmlpreprocessor'>"
///                         "<x:repeat index='n' first='1' last='3'><amp/></x:repeat></rack>");
/// lxml::document_t output;
/// xpp::preprocessor_t preprocessor(output, nullptr);
/// output.root = preprocessor.process(source.root, xpp::preprocessor_t::process_include);
/// std::cout << output.root->children.size() << '\n'; // 3
/// @endcode
///
/// @section everywhere What holds everywhere
///
/// @par Errors
/// A failure is a ko::exception_t, whose `what()` is the whole message. Reading XML throws the
/// derived ko::errorcode_t. Out of memory is `std::bad_alloc`.
/// @par Ownership
/// A document owns its elements, a ko::alg::list_t its tokens, a ko::xpp::file_cache_t its
/// documents and a preprocessor its plug-ins. Everything else that is passed is borrowed.
/// @par Threads
/// The library starts none and keeps no state outside its objects. An object is used by one
/// thread at a time, elements together with their document.
/// @par After an exception
/// Every object can be used and destroyed as before.
#pragma once

#include "algebra/algebra.h"
#include "cmd_arg_parser/cmd_arg_parser.h"
#include "errorcode/errorcode.h"
#include "exception/exception.h"
#include "expat_parser/expat_parser.h"
#include "export.h"
#include "lxml/lxml.h"
#include "lxpath/lxpath.h"
#include "str/str.h"
#include "tokenizer/tokenizer.h"
#include "version.h"
#include "xml_preprocessor/xml_preprocessor.h"

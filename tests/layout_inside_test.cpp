// Where the members of the public classes lie. Host programs are compiled against these places,
// so a change here is a change of the interface.
#include <cstddef>
#include <list>
#include <string>

#include "kobase.h"

// Both compilers lay out what is asked for here; the standard merely leaves it to them.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

/// True when members lie at these offsets on 32-bit ARM, and in this order elsewhere.
template <std::size_t N>
constexpr bool lie(const std::size_t (&offsets)[N], const std::size_t (&on_arm)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
#ifdef __arm__
        if (offsets[i] != on_arm[i]) {
            return false;
        }
#else
        if (i > 0 && (offsets[i] <= offsets[i - 1] || on_arm[i] <= on_arm[i - 1])) {
            return false;
        }
#endif
    }
    return true;
}

/// True when a type has this size on 32-bit ARM; elsewhere it has at least that size.
template <class T> constexpr bool takes(std::size_t on_arm) {
#ifdef __arm__
    return sizeof(T) == on_arm;
#else
    return sizeof(T) >= on_arm;
#endif
}

} // namespace

/// The friend of the public classes: sees their private members.
struct ko::layout_t {
    static constexpr bool errors();
    static constexpr bool foundation();
    static constexpr bool evaluator();
    static constexpr bool tokens();
    static constexpr bool sax();
    static constexpr bool nodes();
    static constexpr bool documents();
    static constexpr bool paths();
    static constexpr bool preprocessor();
};

namespace ko {

constexpr bool layout_t::errors() {
    using errorcode::entry_t;
    return lie({offsetof(exception_t, message)}, {4}) && takes<exception_t>(28) &&
           lie({offsetof(errorcode_t, message), offsetof(errorcode_t, code)}, {4, 28}) &&
           takes<errorcode_t>(32) &&
           lie({offsetof(entry_t, code), offsetof(entry_t, name), offsetof(entry_t, description)},
               {0, 4, 8}) &&
           takes<entry_t>(12);
}

constexpr bool layout_t::foundation() {
    using util::cmd_arg_parser_t;
    return takes<string_t>(24) && takes<tokenizer_t>(12) && takes<in_place_tokenizer_t>(12) &&
           lie({offsetof(file_tokenizer_t, file_name)}, {12}) && takes<file_tokenizer_t>(36) &&
           lie({offsetof(cmd_arg_parser_t, program), offsetof(cmd_arg_parser_t, argc),
                offsetof(cmd_arg_parser_t, args), offsetof(cmd_arg_parser_t, cursor)},
               {0, 24, 28, 40}) &&
           takes<cmd_arg_parser_t>(44);
}

constexpr bool layout_t::evaluator() {
    using alg::algebra_t;
    using alg::function_prototype_t;
    using alg::function_t;
    using alg::result_t;
    return lie({offsetof(result_t, int_value), offsetof(result_t, float_value),
                offsetof(result_t, string_value), offsetof(result_t, type)},
               {0, 4, 8, 32}) &&
           takes<result_t>(36) &&
           lie({offsetof(function_prototype_t, name),
                offsetof(function_prototype_t, argument_count),
                offsetof(function_prototype_t, function0),
                offsetof(function_prototype_t, function1),
                offsetof(function_prototype_t, function2),
                offsetof(function_prototype_t, function3),
                offsetof(function_prototype_t, function_list)},
               {0, 24, 28, 32, 36, 40, 44}) &&
           takes<function_prototype_t>(48) &&
           lie({offsetof(function_t, name), offsetof(function_t, body),
                offsetof(function_t, parameters)},
               {0, 24, 48}) &&
           takes<function_t>(60) && lie({offsetof(algebra_t, imp)}, {4}) && takes<algebra_t>(8);
}

constexpr bool layout_t::tokens() {
    using alg::token_t;
    return lie({offsetof(token_t, text), offsetof(token_t, unbound), offsetof(token_t, strength),
                offsetof(token_t, depth)},
               {4, 28, 32, 36}) &&
           takes<token_t>(40) && takes<alg::list_t>(12);
}

constexpr bool layout_t::sax() {
    using xml::expat_parser_t;
    return lie({offsetof(expat_parser_t, parser), offsetof(expat_parser_t, file_name),
                offsetof(expat_parser_t, error_code), offsetof(expat_parser_t, error_message),
                offsetof(expat_parser_t, refusal), offsetof(expat_parser_t, memory)},
               {4, 8, 32, 36, 60, 84}) &&
           takes<expat_parser_t>(88) && takes<expat_parser_t::attribute_map_t>(12);
}

constexpr bool layout_t::nodes() {
    using namespace lxml;
    return lie({offsetof(node_t, atoms), offsetof(node_t, name), offsetof(node_t, ns)},
               {4, 8, 12}) &&
           takes<node_t>(16) && lie({offsetof(attribute_t, value)}, {16}) &&
           takes<attribute_t>(40) &&
           lie({offsetof(element_t, document), offsetof(element_t, children),
                offsetof(element_t, attributes), offsetof(element_t, text),
                offsetof(element_t, cdata)},
               {16, 20, 32, 44, 68}) &&
           takes<element_t>(92) && takes<element_t::children_t>(12) &&
           takes<element_t::attributes_t>(12) &&
           lie({offsetof(attribute_key_t, ns), offsetof(attribute_key_t, name)}, {0, 4}) &&
           takes<attribute_key_t>(8);
}

constexpr bool layout_t::documents() {
    using namespace lxml;
    return lie({offsetof(atom_table_t, next_id), offsetof(atom_table_t, by_id),
                offsetof(atom_table_t, by_name)},
               {0, 4, 44}) &&
           takes<atom_table_t>(68) &&
           lie({offsetof(document_t, uri_to_prefix), offsetof(document_t, prefix_to_uri),
                offsetof(document_t, file_name), offsetof(document_t, stylesheet),
                offsetof(document_t, elements), offsetof(document_t, root),
                offsetof(document_t, atoms), offsetof(document_t, own_atoms),
                offsetof(document_t, positions)},
               {0, 24, 48, 72, 96, 128, 132, 136, 204}) &&
           takes<document_t>(212) && takes<document_t::elements_t>(32) &&
           lie({offsetof(conditional_endl_t, on)}, {0}) && takes<conditional_endl_t>(1);
}

constexpr bool layout_t::paths() {
    using namespace lxml;
    return takes<xbase_t>(4) &&
           lie({offsetof(xname_t, kind), offsetof(xname_t, name), offsetof(xname_t, ns),
                offsetof(xname_t, quoted)},
               {4, 8, 32, 56}) &&
           takes<xname_t>(60) &&
           lie({offsetof(xfilter_t, predicate), offsetof(xfilter_t, value)}, {4, 8}) &&
           takes<xfilter_t>(32) &&
           lie({offsetof(xnode_t, name), offsetof(xnode_t, filter)}, {4, 64}) &&
           takes<xnode_t>(96) && lie({offsetof(xpath_t, steps)}, {4}) && takes<xpath_t>(16);
}

constexpr bool layout_t::preprocessor() {
    using xpp::file_cache_t;
    using t = xpp::string_table_t;
    return lie({offsetof(file_cache_t, documents), offsetof(file_cache_t, atoms)}, {0, 24}) &&
           takes<file_cache_t>(92) && takes<xpp::plugin_t>(4) && takes<xpp::observer_t>(4) &&
           lie({offsetof(xpp::place_t, file), offsetof(xpp::place_t, line),
                offsetof(xpp::place_t, column), offsetof(xpp::place_t, directive),
                offsetof(xpp::place_t, detail)},
               {0, 24, 28, 32, 56}) &&
           takes<xpp::place_t>(80) &&
           lie({offsetof(xpp::limits_t, elements), offsetof(xpp::limits_t, passes),
                offsetof(xpp::limits_t, include), offsetof(xpp::limits_t, insert),
                offsetof(xpp::limits_t, plugin)},
               {0, 4, 8, 12, 16}) &&
           takes<xpp::limits_t>(20) && takes<del_second_map_t<std::string, xpp::plugin_t*>>(24) &&
           lie({offsetof(xpp::preprocessor_t, imp)}, {0}) && takes<xpp::preprocessor_t>(4) &&
           lie({offsetof(t, xpp_ns),     offsetof(t, xpr_ns),     offsetof(t, condition),
                offsetof(t, case_),      offsetof(t, default_),   offsetof(t, define),
                offsetof(t, evaluate),   offsetof(t, expression), offsetof(t, file),
                offsetof(t, first),      offsetof(t, for_),       offsetof(t, if_),
                offsetof(t, include),    offsetof(t, index),      offsetof(t, initialize),
                offsetof(t, insert),     offsetof(t, last),       offsetof(t, name),
                offsetof(t, plugin),     offsetof(t, pragma),     offsetof(t, repeat),
                offsetof(t, searchpath), offsetof(t, specify),    offsetof(t, switch_),
                offsetof(t, update),     offsetof(t, values),     offsetof(t, empty)},
               {0,  4,  8,  12, 16, 20, 24, 28, 32, 36, 40, 44,  48, 52,
                56, 60, 64, 68, 72, 76, 80, 84, 88, 92, 96, 100, 104}) &&
           takes<t>(108);
}

static_assert(layout_t::errors(), "exceptions and error codes");
static_assert(layout_t::foundation(), "strings, tokenizers and command-line arguments");
static_assert(layout_t::evaluator(), "values, function records and the evaluator");
static_assert(layout_t::tokens(), "nodes of expression trees");
static_assert(layout_t::sax(), "the event-driven XML reader");
static_assert(layout_t::nodes(), "elements and attributes");
static_assert(layout_t::documents(), "atom tables and documents");
static_assert(layout_t::paths(), "path queries");
static_assert(layout_t::preprocessor(), "the preprocessor, its cache and keywords");

} // namespace ko

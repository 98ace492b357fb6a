#include "xml_preprocessor/block/directive.h"

#include "xml_preprocessor/attributes.h"
#include "xml_preprocessor/block/element_block.h"
#include "xml_preprocessor/block/for_block.h"
#include "xml_preprocessor/block/if_block.h"
#include "xml_preprocessor/block/include_block.h"
#include "xml_preprocessor/block/insert_block.h"
#include "xml_preprocessor/block/plugin_block.h"
#include "xml_preprocessor/block/pragma_block.h"
#include "xml_preprocessor/block/repeat_block.h"
#include "xml_preprocessor/block/specify_block.h"
#include "xml_preprocessor/block/switch_block.h"

namespace ko::xpp {

namespace {

using block_ptr_t = std::unique_ptr<block_t>;
using begin_t = block_ptr_t (*)(preprocessor_t::imp_t&, lxml::element_t&, lxml::element_t&,
                                const keywords_ptr_t&);

template <class B>
block_ptr_t block_begin(preprocessor_t::imp_t& imp, lxml::element_t& element,
                        lxml::element_t& out, const keywords_ptr_t& keywords) {
    return std::make_unique<B>(imp, element, out, keywords);
}

block_ptr_t define_begin(preprocessor_t::imp_t& imp, lxml::element_t& element, lxml::element_t&,
                         const keywords_ptr_t& keywords) {
    imp.defines[attribute_required(element, keywords->get().name).value] = &element;
    return nullptr;
}

block_ptr_t evaluate_begin(preprocessor_t::imp_t& imp, lxml::element_t& element, lxml::element_t&,
                           const keywords_ptr_t& keywords) {
    imp.evaluate_void(attribute_required(element, keywords->get().expression).value);
    return nullptr;
}

block_ptr_t include_begin(preprocessor_t::imp_t& imp, lxml::element_t& element,
                          lxml::element_t& out, const keywords_ptr_t& keywords) {
    const bool on = (imp.flags & preprocessor_t::process_include) != 0;
    return on ? block_begin<include_block_t>(imp, element, out, keywords) : nullptr;
}

struct directive_t {
    int string_table_t::*keyword;
    begin_t begin;
};

constexpr directive_t directives[] = {
    {&string_table_t::for_, block_begin<for_block_t>},
    {&string_table_t::repeat, block_begin<repeat_block_t>},
    {&string_table_t::if_, block_begin<if_block_t>},
    {&string_table_t::evaluate, evaluate_begin},
    {&string_table_t::include, include_begin},
    {&string_table_t::define, define_begin},
    {&string_table_t::insert, block_begin<insert_block_t>},
    {&string_table_t::pragma, block_begin<pragma_block_t>},
    {&string_table_t::switch_, block_begin<switch_block_t>},
    {&string_table_t::plugin, block_begin<plugin_block_t>},
    {&string_table_t::specify, block_begin<specify_block_t>},
};

} // namespace

block_ptr_t element_begin(preprocessor_t::imp_t& imp, lxml::element_t& element,
                          lxml::element_t& out, const keywords_ptr_t& keywords) {
    const string_table_t& names = keywords->get();
    if (element.ns != names.xpp_ns) {
        return block_begin<element_block_t>(imp, element, out, keywords);
    }
    for (const directive_t& directive : directives) {
        if (element.name == names.*directive.keyword) {
            return directive.begin(imp, element, out, keywords);
        }
    }
    return nullptr;
}

} // namespace ko::xpp

#include "xml_preprocessor/keywords.h"

namespace ko::xpp {

keywords_t::keywords_t(lxml::atom_table_t* atoms, const namespaces_t& names)
    : table(atoms), namespaces(names), changes(0) {
    fill();
}

void keywords_t::fill() {
    strings.init(table, namespaces.xpp, namespaces.xpr);
    changes = namespaces.changes;
}

int keywords_t::translate(int atom, lxml::atom_table_t& output) {
    const int translated = output.get(table->text_get(atom));
    translations[static_cast<unsigned>(atom) % translations.size()] = {atom, translated, &output};
    return translated;
}

} // namespace ko::xpp

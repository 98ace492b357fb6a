/// @file
/// The names of one load: from the form in which expat gives them to atoms.
///
/// A name is taken apart when it is first met; a table of bounded size remembers its atoms. The
/// names that do not fit into the table, because there are too many or because somebody chose
/// them to collide, are taken apart each time at the cost of a look-up in the ordered atom table.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "lxml/document.h"
#include "tokenizer/tokenizer.h"

namespace ko::lxml {

/// The atoms of a name.
struct names_t {
    int name;
    int ns;
    bool has_prefix; ///< such a name binds its prefix each time it is met
};

/// Resolves names for one document, which is borrowed.
class name_table_t {
public:
    explicit name_table_t(document_t& target);

    /// The atoms of a name in the form "uri|local|prefix", "uri|local" or "local", which are
    /// added to the atom table of the document in this order: prefix, uri, local. A prefix is
    /// bound in the document.
    /// @throws ko::exception_t "error parsing uri : got %i tokens"
    names_t get(const char* name);
    /// The atoms of a name without prefix that has been met before. @return whether it is one
    bool find(const char* name, names_t& out);

private:
    struct entry_t {
        std::string text;
        names_t names;
        int prefix;
        std::size_t bound; ///< value of `bindings` when the prefix was bound last
    };

    static constexpr std::size_t slots_size = 1024; ///< a power of 2
    static constexpr std::size_t entries_max = slots_size / 2;
    static constexpr std::size_t probes_max = 8;
    static constexpr std::size_t addresses = 256; ///< a power of 2
    static constexpr std::size_t bytes_max = 1 << 20;

    /// The entry of a name; null where the table has none.
    entry_t* recall(const char* name);
    /// The slot of a name, or the empty one where it belongs; null when there is neither.
    const unsigned short* slot_find(const char* name, std::size_t size) const;
    entry_t take_apart(const std::string& name);
    void bind(entry_t& entry);

    document_t& document;
    tokenizer_t tokens;
    std::array<unsigned short, slots_size> slots; ///< numbers of entries, counted from 1
    std::array<unsigned short, addresses> recent; ///< numbers of entries by address of the name
    std::vector<entry_t> entries;
    std::size_t bytes = 0;    ///< of the texts of the entries
    std::size_t bindings = 1; ///< grows when a binding of the document changes
};

} // namespace ko::lxml

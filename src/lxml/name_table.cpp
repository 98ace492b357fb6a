#include "lxml/name_table.h"

#include <cstdint>
#include <cstring>

#include "exception/exception.h"

namespace ko::lxml {

namespace {

std::size_t hash(const char* text, std::size_t size) {
    constexpr std::size_t factor = 0x9E3779B1;
    std::size_t value = size;
    std::size_t word = 0;
    for (; size >= sizeof word; size -= sizeof word, text += sizeof word) {
        std::memcpy(&word, text, sizeof word);
        value = (value ^ word) * factor;
        value ^= value >> (sizeof word * 4);
    }
    word = 0;
    std::memcpy(&word, text, size);
    value = (value ^ word) * factor;
    return value ^ (value >> (sizeof word * 4 - 1));
}

/// @return whether something changed
bool change(std::map<int, int>& bindings, int from, int to) {
    const auto [known, is_new] = bindings.try_emplace(from, to);
    const bool is_changed = is_new || known->second != to;
    known->second = to;
    return is_changed;
}

} // namespace

name_table_t::name_table_t(document_t& target) : document(target), slots(), recent() {}

const unsigned short* name_table_t::slot_find(const char* name, std::size_t size) const {
    const std::size_t first = hash(name, size);
    for (std::size_t i = 0; i < probes_max; ++i) {
        const unsigned short& slot = slots[(first + i) % slots_size];
        if (slot == 0) {
            return &slot;
        }
        const std::string& text = entries[slot - 1U].text;
        if (text.size() == size && std::memcmp(text.data(), name, size) == 0) {
            return &slot;
        }
    }
    return nullptr;
}

name_table_t::entry_t* name_table_t::recall(const char* name) {
    unsigned short& last = recent[reinterpret_cast<std::uintptr_t>(name) % addresses];
    if (last == 0 || std::strcmp(entries[last - 1U].text.c_str(), name) != 0) {
        const unsigned short* const slot = slot_find(name, std::strlen(name));
        if (slot == nullptr || *slot == 0) {
            return nullptr;
        }
        last = *slot;
    }
    return &entries[last - 1U];
}

bool name_table_t::find(const char* name, names_t& out) {
    const entry_t* const known = recall(name);
    if (known == nullptr || known->names.has_prefix) {
        return false;
    }
    out = known->names;
    return true;
}

names_t name_table_t::get(const char* name) {
    if (entry_t* const known = recall(name)) {
        bind(*known);
        return known->names;
    }
    const std::size_t size = std::strlen(name);
    const unsigned short* const slot = slot_find(name, size);
    entry_t entry = take_apart(std::string(name, size));
    const names_t names = entry.names;
    if (slot != nullptr && entries.size() < entries_max && bytes + size <= bytes_max) {
        entries.push_back(std::move(entry));
        slots[static_cast<std::size_t>(slot - slots.data())] =
            static_cast<unsigned short>(entries.size());
        bytes += size;
    }
    return names;
}

name_table_t::entry_t name_table_t::take_apart(const std::string& name) {
    const unsigned count = tokens.tokenize(name, "|");
    if (count < 1 || count > 3) {
        throw exception_t("error parsing uri : got %i tokens", static_cast<int>(count));
    }
    atom_table_t& atoms = *document.atoms;
    entry_t entry = {name, {0, 0, count == 3}, 0, 0};
    if (count == 3) {
        entry.prefix = atoms.get(tokens[2]);
        entry.names.ns = atoms.get(tokens[0]);
        bind(entry);
    }
    entry.names.name = atoms.get(tokens[count == 1 ? 0 : 1]);
    if (count == 2) {
        entry.names.ns = atoms.get(tokens[0]);
    }
    return entry;
}

/// Nothing is to be done where no binding has changed since this one was made.
void name_table_t::bind(entry_t& entry) {
    if (!entry.names.has_prefix || entry.bound == bindings) {
        return;
    }
    const bool is_new_uri = change(document.uri_to_prefix, entry.names.ns, entry.prefix);
    const bool is_new_prefix = change(document.prefix_to_uri, entry.prefix, entry.names.ns);
    bindings += is_new_uri || is_new_prefix ? 1 : 0;
    entry.bound = bindings;
}

} // namespace ko::lxml

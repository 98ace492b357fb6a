#include "algebra/code_writer.h"

#include <functional>
#include <utility>

namespace ko::alg {

namespace {

/// Up to this number of names, looking at each is the quickest way to find one.
constexpr std::size_t names_listed_max = 8;

} // namespace

code_writer_t::code_writer_t(writer_room_t& writer_room, program_t& target)
    : room(writer_room), program(target) {
    room.names.clear();
    room.jumps.clear();
    if (program.names.size() > names_listed_max) {
        names_enter();
    }
}

void code_writer_t::emit_fork(const instruction_t& instruction, std::size_t taken) {
    emit(instruction, taken, 0);
    room.jumps.push_back(code_end() - 1);
}

/// One of the two values is there in the end.
void code_writer_t::emit_jump() {
    emit({opcode_e::jump}, 1, 0);
    land();
    room.jumps.push_back(code_end() - 1);
}

void code_writer_t::land() {
    program.code[room.jumps.back()].b.place = code_end();
    room.jumps.pop_back();
}

void code_writer_t::end() {
    program.steps = program.code.size();
    program.code.push_back({opcode_e::end});
}

std::uint32_t code_writer_t::text_add(std::string_view text) {
    program.texts.emplace_back(std::string(text));
    return static_cast<std::uint32_t>(program.texts.size() - 1);
}

std::uint32_t code_writer_t::target_add(callee_t callee, std::string_view name) {
    program.may_change = program.may_change || callee.foreign != nullptr;
    program.targets.push_back({std::move(callee), std::string(name)});
    return static_cast<std::uint32_t>(program.targets.size() - 1);
}

instruction_t code_writer_t::call_of(const callee_t& callee, std::uint32_t target) {
    instruction_t call{callee.host != nullptr      ? opcode_e::host_call
                       : callee.builtin != nullptr ? callee.builtin->opcode
                                                   : opcode_e::script_call};
    call.a.place = target;
    call.b.place = 0;
    program.may_change =
        program.may_change || callee.builtin == nullptr || callee.builtin->changes;
    return call;
}

std::uint32_t code_writer_t::name_place(std::string_view name) {
    if (program.names.size() <= names_listed_max) {
        const char first = name.empty() ? '\0' : name.front();
        std::uint32_t place = 0;
        for (const std::string& known : program.names) {
            if (known.size() == name.size() && *known.c_str() == first &&
                (name.size() < 2 || known == name)) {
                return place;
            }
            ++place;
        }
        return name_add(name);
    }
    std::size_t i = std::hash<std::string_view>()(name);
    for (;; ++i) {
        const std::uint32_t entry = room.names[i & (room.names.size() - 1)];
        if (entry == 0) {
            return name_add(name);
        }
        if (program.names[entry - 1] == name) {
            return entry - 1;
        }
    }
}

/// Adds a name; the hash table keeps twice as many places as there are names.
std::uint32_t code_writer_t::name_add(std::string_view name) {
    program.names.emplace_back(name);
    const auto count = static_cast<std::uint32_t>(program.names.size());
    if (count > names_listed_max) {
        if (2 * std::size_t{count} > room.names.size()) {
            names_enter();
        } else {
            name_enter(count - 1);
        }
    }
    return count - 1;
}

/// Makes the hash table anew, with room for as many names again.
void code_writer_t::names_enter() {
    std::size_t size = 4 * names_listed_max;
    while (size < 4 * program.names.size()) {
        size *= 2;
    }
    room.names.assign(size, 0);
    for (std::uint32_t place = 0; place < program.names.size(); ++place) {
        name_enter(place);
    }
}

void code_writer_t::name_enter(std::uint32_t place) {
    const std::size_t mask = room.names.size() - 1;
    std::size_t i = std::hash<std::string>()(program.names[place]);
    while (room.names[i & mask] != 0) {
        ++i;
    }
    room.names[i & mask] = place + 1;
}

} // namespace ko::alg

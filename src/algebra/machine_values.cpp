// The machine's dealings with variables, and with values that are not numbers.
#include <new>

#include "algebra/machine.h"
#include "algebra/number_operators.h"
#include "exception/exception.h"

namespace ko::alg {

/// The value of a variable, where it is no plain number in a known cell.
slot_t machine_t::load(std::uint32_t place) {
    const frame_t& running = frame();
    name_link_t& link = running.unit->names[place];
    const std::string& name = running.unit->program->names[place];
    if (link.to_read == nullptr) {
        link.to_read = running.state->variables.cell_find(name);
    }
    if (link.to_read == nullptr || !link.to_read->is_present) {
        return values.keep(running.state->variable_get(name));
    }
    return load_text(link.to_read->value);
}

/// A program that can change variables keeps a copy of what it has read.
slot_t machine_t::load_text(const result_t& value) {
    const slot_t slot = slot_t::of_value(value);
    if (slot.is_number() || !frame().unit->program->may_change) {
        return slot;
    }
    base.drawn->text_draw(result_members_t::text(value).size());
    return values.keep_copy(value);
}

cell_t& machine_t::cell_to_write(context_t& state, unit_t& unit, std::uint32_t place) {
    name_link_t& link = unit.names[place];
    if (link.to_write == nullptr) {
        cell_t& cell = state.variables.cell(unit.program->names[place]);
        unit.links_check(state.family, state.variables.generation_get());
        link = {&cell, &cell};
        return cell;
    }
    return *link.to_write;
}

/// Gives a cell a value. A failure leaves the cell as it was.
void machine_t::cell_set(cell_t& cell, slot_t value) {
    std::string& text = result_members_t::text(cell.value);
    if (value.is_number()) {
        if (!text.empty()) {
            std::string().swap(text);
        }
        value = value.completed();
        result_members_t::set(cell.value, value.kind(), value.int_view(), value.float_view());
    } else {
        const result_t& whole = values.whole(value);
        base.drawn->text_draw(result_members_t::text(whole).size());
        text = result_members_t::text(whole);
        result_members_t::set(cell.value, result_members_t::type(whole),
                              result_members_t::integer(whole), result_members_t::real(whole));
    }
    cell.is_present = true;
}

void machine_t::store(std::uint32_t place, slot_t value) {
    const frame_t& running = frame();
    cell_t& cell = cell_to_write(*running.state, *running.unit, place);
    if (running.is_isolated) {
        running.state->variables.journal_put(cell);
    }
    cell_set(cell, value);
}

int machine_t::int_of(slot_t slot) const {
    return slot.is_number() ? slot.int_of_number() : values.whole(slot).int_get();
}

slot_t machine_t::unary_general(opcode_e opcode, slot_t a) {
    if (opcode == opcode_e::logical_not) {
        const int value = int_of(a);
        values.release(a);
        return slot_t::of_int(value == 0 ? 1 : 0);
    }
    if (!a.is_number()) {
        result_t value = operator_get(opcode).unary(values.whole(a));
        values.release(a);
        return values.keep(std::move(value));
    }
    return opcode == opcode_e::negate ? numbers::negate(a) : numbers::positive(a);
}

/// The operators that read both operands as integers.
slot_t machine_t::binary_of_integers(opcode_e opcode, slot_t a, slot_t b) {
    const int y = int_of(b);
    const int x = int_of(a);
    values.release(b);
    values.release(a);
    if (opcode == opcode_e::modulo && y == 0) {
        throw exception_t(std::string("modulo by zero"));
    }
    return slot_t::of_int(operator_get(opcode).of_integers(x, y));
}

/// The text of a string, or null.
inline const std::string* machine_t::text_of(slot_t slot) const {
    if (slot.is_number()) {
        return nullptr;
    }
    const result_t& value = values.whole(slot);
    const bool is_string = result_members_t::type(value) == result_t::type_string;
    return is_string ? &result_members_t::text(value) : nullptr;
}

/// The left text followed by the right one, which are those of two slots. A text of the stack's
/// own grows in place, so that a long chain of additions costs no more than the text it makes.
inline slot_t machine_t::join(slot_t a, slot_t b, const std::string& left,
                              const std::string& right) {
    const bool grows = a.kind() == slot_t::owned;
    base.drawn->text_draw(right.size() + (grows ? 0 : left.size()));
    if (right.size() > right.max_size() - left.size()) {
        throw std::bad_alloc(); // on a 32-bit system, before memory runs out
    }
    const bool grows_in_front = !grows && b.kind() == slot_t::owned;
    // A claim may move the pool, but then neither text is there.
    const slot_t joined = grows ? a : grows_in_front ? b : values.claim();
    result_t& sum = values.own(joined);
    std::string& text = result_members_t::text(sum);
    if (grows) {
        text += right;
        values.release(b);
    } else if (grows_in_front) {
        text.insert(0, left);
    } else {
        text = left;
        text += right;
    }
    result_members_t::set(sum, result_t::type_string, 0, 0);
    return joined;
}

/// An operator on operands that are not both numbers, or a division by zero.
slot_t machine_t::binary_general(opcode_e opcode, slot_t a, slot_t b) {
    if (operator_get(opcode).of_integers != nullptr) {
        return binary_of_integers(opcode, a, b);
    }
    const bool is_of_texts =
        opcode == opcode_e::add || opcode == opcode_e::equal || opcode == opcode_e::not_equal;
    if (!is_of_texts) {
        return binary_of_results(opcode, a, b);
    }
    const std::string* const x = text_of(a);
    const std::string* const y = text_of(b);
    if (x == nullptr || y == nullptr) {
        return binary_of_results(opcode, a, b);
    }
    if (opcode == opcode_e::add) {
        return join(a, b, *x, *y);
    }
    const bool holds = (*x == *y) == (opcode == opcode_e::equal);
    values.release(b);
    values.release(a);
    return slot_t::of_int(holds ? 1 : 0);
}

/// An operator on operands that are neither both numbers nor both texts, or a division by zero.
slot_t machine_t::binary_of_results(opcode_e opcode, slot_t a, slot_t b) {
    if (opcode == opcode_e::add && !a.is_number() && values.whole(a).is_string()) {
        const result_t right = values.value_of(b);
        if (right.type_get() <= result_t::type_string) {
            // A number joins as its text.
            values.release(b);
            const slot_t text = values.keep(result_t(right.string_get(false, 0)));
            return binary_general(opcode, a, text);
        }
    }
    const result_t right = values.value_of(b);
    result_t value = operator_get(opcode).binary(values.value_of(a), right);
    base.drawn->text_draw(result_members_t::text(value).size());
    values.release(b);
    values.release(a);
    return values.keep(std::move(value));
}

void machine_t::fail(opcode_e opcode) {
    if (opcode == opcode_e::no_target) {
        throw exception_t("non lvalue");
    }
    if (opcode == opcode_e::no_value) {
        throw exception_t("sequencer_t::evaluate() -- syntax error");
    }
    const std::string& error = parse_error_of(frames.size() - 1);
    throw exception_t(error.empty() ? std::string("syntax error -- missing operand") : error);
}

} // namespace ko::alg

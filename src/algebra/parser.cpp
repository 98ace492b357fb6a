#include "algebra/parser.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace ko::alg {

namespace {

/// Up to this number of operators, insertion is the quickest way to sort.
constexpr std::size_t insertion_max = 24;

/// Classes of strength, from that of functions down to that of the comma.
constexpr unsigned strengths = 17;

/// Binds one line; lives as long as that takes.
class binder_t {
public:
    binder_t(syntax_t& target, parser_room_t& parser_room, std::string& error)
        : syntax(target), items(target.items), room(parser_room), parse_error(error) {}

    bool depths_set();
    void commas_remove();
    bool bind(place_t& failed);

private:
    static unsigned rank_of(const item_t& item) {
        return static_cast<unsigned>(function_strength - syntax_t::strength_of(item));
    }
    std::int64_t key_of(const item_t& item) const;
    void order_fix();
    void order_count();
    template <class K> void count_by(const K& key_of, std::size_t keys);

    bool item_bind(place_t place);
    bool operation_bind(place_t place);
    bool call_bind(place_t place);
    bool has_group(const item_t& call) const;
    bool fail(const operator_t& row, const place_t* operands, unsigned count);
    place_t next_of(place_t place) const { return place == no_place ? place : items[place].next; }
    bool is_unbound(place_t place) const { return syntax_t::is_unbound(items[place]); }
    void unlink(place_t place);

    syntax_t& syntax;
    std::vector<item_t>& items;
    parser_room_t& room;
    std::string& parse_error;
    int depth_min = 0;
    int depth_max = 0;
};

/// Gives every token its depth, and takes parentheses and colons out.
/// @return false when the parentheses do not match in number
bool binder_t::depths_set() {
    room.order.clear();
    int depth = 0;
    place_t last = no_place;
    for (place_t place = 0; place < items.size(); ++place) {
        item_t& item = items[place];
        if (item.kind == item_e::open || item.kind == item_e::close) {
            depth += item.kind == item_e::open ? 1 : -1;
            continue;
        }
        if (item.kind == item_e::colon) {
            continue;
        }
        item.depth = depth;
        depth_min = std::min(depth_min, depth);
        depth_max = std::max(depth_max, depth);
        item.previous = last;
        (last == no_place ? syntax.first : items[last].next) = place;
        last = place;
        if (syntax_t::is_unbound(item)) {
            room.order.push_back(place);
        }
    }
    return depth == 0;
}

/// String literals "," go too; callers rely on it (quirk "numeric mode: commas").
void binder_t::commas_remove() {
    for (place_t place = syntax.first; place != no_place; place = items[place].next) {
        if (syntax.text_of(items[place]) == ",") {
            unlink(place);
        }
    }
}

/// The smaller key binds first.
std::int64_t binder_t::key_of(const item_t& item) const {
    return static_cast<std::int64_t>(rank_of(item)) -
           static_cast<std::int64_t>(item.depth) * strengths;
}

void binder_t::order_fix() {
    std::vector<place_t>& order = room.order;
    if (order.size() > insertion_max) {
        order_count();
        return;
    }
    std::array<std::int64_t, insertion_max> keys; // filled as far as the order goes
    for (std::size_t i = 0; i < order.size(); ++i) {
        const place_t place = order[i];
        const std::int64_t key = key_of(items[place]);
        std::size_t hole = i;
        for (; hole != 0 && key < keys[hole - 1]; --hole) {
            order[hole] = order[hole - 1];
            keys[hole] = keys[hole - 1];
        }
        order[hole] = place;
        keys[hole] = key;
    }
}

void binder_t::order_count() {
    count_by([this](place_t place) { return rank_of(items[place]); }, strengths);
    if (depth_min != depth_max) {
        count_by(
            [this](place_t place) {
                return static_cast<unsigned>(depth_max - items[place].depth);
            },
            static_cast<std::size_t>(depth_max - depth_min) + 1);
    }
}

/// Sorts the order by a key, leaving equals in their order.
template <class K> void binder_t::count_by(const K& key_of, std::size_t keys) {
    room.counts.assign(keys + 1, 0);
    for (const place_t place : room.order) {
        ++room.counts[key_of(place) + 1];
    }
    for (std::size_t key = 1; key < keys; ++key) {
        room.counts[key] += room.counts[key - 1];
    }
    room.sorted.resize(room.order.size());
    for (const place_t place : room.order) {
        room.sorted[room.counts[key_of(place)]++] = place;
    }
    room.order.swap(room.sorted);
}

bool binder_t::bind(place_t& failed) {
    order_fix();
    for (const place_t place : room.order) {
        if (!item_bind(place)) {
            failed = place;
            return false;
        }
    }
    return true;
}

/// Marks an item as bound, whether or not it finds its operands, and takes these.
bool binder_t::item_bind(place_t place) {
    item_t& item = items[place];
    item.is_bound = true;
    --item.depth;
    return item.kind == item_e::call ? call_bind(place) : operation_bind(place);
}

bool binder_t::operation_bind(place_t place) {
    item_t& item = items[place];
    const operator_t& row = operator_get(item.operation);
    const unsigned count = before_count(row.shape) + behind_count(row.shape);
    place_t operands[3] = {item.previous, no_place, no_place};
    operands[before_count(row.shape)] = item.next;
    if (row.shape == shape_e::choice) {
        operands[2] = next_of(item.next);
    }
    for (unsigned i = 0; i < count; ++i) {
        if (operands[i] == no_place || is_unbound(operands[i])) {
            return fail(row, operands, count);
        }
    }
    for (unsigned i = 0; i < count; ++i) {
        item.operands[i] = operands[i];
        unlink(operands[i]);
    }
    return true;
}

/// Reports the first operand that is missing, else the first one that is unbound.
bool binder_t::fail(const operator_t& row, const place_t* operands, unsigned count) {
    unsigned missing = 0;
    while (missing < count && operands[missing] != no_place) {
        ++missing;
    }
    unsigned unbound = 0;
    while (missing == count && !is_unbound(operands[unbound])) {
        ++unbound;
    }
    const bool is_missing = missing < count;
    parse_error = message_of_operand(row, is_missing ? missing : unbound, is_missing);
    return false;
}

/// True when a group in parentheses of its own follows a call that has just been bound. What is
/// bound in there has been lowered by a level.
bool binder_t::has_group(const item_t& call) const {
    if (call.next == no_place) {
        return false;
    }
    const item_t& behind = items[call.next];
    return behind.depth + (behind.is_bound ? 1 : 0) > call.depth + 1;
}

bool binder_t::call_bind(place_t place) {
    item_t& item = items[place];
    const callee_t& callee = syntax.callees[item.callee];
    const taking_e taking = taking_of(callee);
    item.takes_nothing = item.takes_nothing || taking == taking_e::nothing ||
                         (taking == taking_e::group_only && !has_group(item));
    if (item.takes_nothing) {
        return true;
    }
    if (item.next == no_place || is_unbound(item.next)) {
        parse_error = item.next == no_place ? message_of_missing_arguments(callee)
                                            : message_of_unbound_arguments(callee);
        return false;
    }
    item.operands[0] = item.next;
    unlink(item.next);
    return true;
}

void binder_t::unlink(place_t place) {
    const place_t before = items[place].previous;
    const place_t behind = items[place].next;
    (before == no_place ? syntax.first : items[before].next) = behind;
    if (behind != no_place) {
        items[behind].previous = before;
    }
}

/// Chains the items as the lexer left them.
void items_chain(syntax_t& syntax) {
    std::vector<item_t>& items = syntax.items;
    syntax.first = items.empty() ? no_place : 0;
    for (place_t place = 0; place < items.size(); ++place) {
        items[place].next = place + 1 == items.size() ? no_place : place + 1;
        items[place].previous = place == 0 ? no_place : place - 1;
    }
}

/// Lexes a line; what a failure leaves is chained.
bool lex_or_chain(syntax_t& syntax, const lexer_settings_t& settings, std::string& error) {
    try {
        if (line_lex(syntax, settings, error)) {
            return true;
        }
    } catch (...) {
        items_chain(syntax);
        throw;
    }
    items_chain(syntax);
    return false;
}

} // namespace

const char* message_of_missing_arguments(const callee_t& callee) {
    return callee.is_script() ? "internal function %s -- not enough arguments"
                              : "external function %s -- not enough arguments";
}

const char* message_of_unbound_arguments(const callee_t& callee) {
    return callee.is_script() ? "internal function %s -- no arguments or parse error"
                              : "external function %s -- parse error";
}

std::string message_of_operand(const operator_t& row, unsigned operand, bool is_missing) {
    const std::string name = operand_name(row.shape, operand);
    const std::string head = std::string(row.class_name) + "::construct() -- ";
    return is_missing ? head + "expected " + name + " operand"
                      : head + name + " operand does not evaluate to a term";
}

taking_e taking_of(const callee_t& callee) {
    if (callee.host == nullptr) {
        return taking_e::arguments;
    }
    return callee.host->count_max == 0   ? taking_e::nothing
           : callee.host->count_min != 0 ? taking_e::arguments
                                         : taking_e::group_only;
}

bool line_parse(syntax_t& syntax, const lexer_settings_t& settings, parser_room_t& room,
                std::string& error, place_t& failed) {
    failed = no_place;
    if (!lex_or_chain(syntax, settings, error)) {
        return false;
    }
    binder_t binder(syntax, room, error);
    if (!binder.depths_set()) {
        error = "unmatched parenthesis";
        return false;
    }
    if (settings.numeric_only) {
        binder.commas_remove();
    }
    if (!binder.bind(failed)) {
        return false;
    }
    if (syntax.first == no_place || syntax.items[syntax.first].next != no_place) {
        error = "syntax error in " + syntax.text + " -- not enough operators";
        return false;
    }
    return true;
}

} // namespace ko::alg

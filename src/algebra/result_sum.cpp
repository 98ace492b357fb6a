#include "algebra/result_sum.h"

#include <new>
#include <string>
#include <utility>

#include "algebra/result_members.h"
#include "algebra/result_text.h"

namespace ko::alg {

namespace {

/// @throws std::bad_alloc on a 32-bit system, before memory runs out
void room_check(const std::string& text, std::size_t addition) {
    if (addition > text.max_size() - text.size()) {
        throw std::bad_alloc();
    }
}

} // namespace

result_t text_sum(const result_t& a, const result_t& b) {
    const result_text_t left(a);
    std::string text;
    const std::size_t size = left.view().size() + result_text_t(b).view().size();
    room_check(text, size);
    text.reserve(size);
    text = left.view();
    result_t sum(std::move(text));
    add_to(sum, b);
    return sum;
}

void add_to(result_t& sum, const result_t& value) {
    if (sum.is_string() && result_members_t::type(value) <= result_t::type_string) {
        const result_text_t addition(value);
        std::string& text = result_members_t::text(sum);
        room_check(text, addition.view().size());
        text += addition.view();
        result_members_t::set(sum, result_t::type_string, 0, 0);
    } else {
        sum = sum + value;
    }
}

} // namespace ko::alg

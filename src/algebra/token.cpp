#include "algebra/token.h"

#include <memory>

namespace ko::alg {

token_t::token_t(const std::string& spelling, int binding_strength, unsigned is_unbound)
    : text(spelling), unbound(is_unbound), strength(binding_strength), depth(0) {}

token_t::~token_t() = default;

bool token_t::is_string() const {
    return false;
}

void token_t::evaluate(algebra_t& algebra, std::vector<result_t>& values) const {
    values.push_back(evaluate(algebra));
}

bool operator==(const token_t& token, const std::string& text) {
    return token.text == text;
}

bool operator==(const std::string& text, const token_t& token) {
    return token.text == text;
}

bool operator!=(const token_t& token, const std::string& text) {
    return token.text != text;
}

bool operator!=(const std::string& text, const token_t& token) {
    return token.text != text;
}

bool operator<(const token_t& a, const token_t& b) {
    if (a.unbound != b.unbound) {
        return a.unbound < b.unbound;
    }
    return a.depth != b.depth ? a.depth < b.depth : a.strength < b.strength;
}

bool operator>(const token_t& a, const token_t& b) {
    return b < a;
}

list_t::list_t() = default;

list_t::list_t(const list_t& other) : list_t() {
    replicate(other);
}

list_t& list_t::operator=(const list_t& other) {
    list_t copy(other);
    swap(copy);
    return *this;
}

list_t::list_t(list_t&& other) noexcept : list_t() {
    swap(other);
}

list_t& list_t::operator=(list_t&& other) noexcept {
    if (this != &other) {
        destroy();
        swap(other);
    }
    return *this;
}

list_t::~list_t() {
    destroy();
}

void list_t::replicate(const list_t& other) {
    list_t copies;
    for (const token_t* const token : other) {
        copies.push_back(nullptr);
        copies.back() = token == nullptr ? nullptr : token->replicate();
    }
    splice(end(), copies);
}

void list_t::destroy() {
    for (const token_t* const token : *this) {
        delete token;
    }
    clear();
}

} // namespace ko::alg

/// @file
/// The inputs of the workloads with expressions. The values are such that every result is exact
/// in single precision, so that sides that compute in double precision give the same.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// Values of `a` in turn; each less 1.5 is a power of two.
constexpr std::array<float, 8> values_of_a{2, 2.5, 3.5, 5.5, 9.5, 17.5, 33.5, 65.5};
constexpr float value_of_b = 2.25;
constexpr float value_of_c = 3.5;

constexpr const char* formula = "(a+b*c)/(a-1.5)+b*b";
constexpr const char* functions = "sqrt(a*a+b*b)+max(a,b)";
constexpr const char* call = "sq(a)+1.5"; ///< `sq` is the square

/// Sides of right-angled triangles of whole numbers, `a` and `b` in turn.
struct legs_t {
    float a;
    float b;
};
constexpr std::array<legs_t, 4> legs{{{3, 4}, {5, 12}, {15, 8}, {24, 7}}};

/// The number of evaluations in one iteration.
constexpr std::size_t batch = 1000;

/// Variables that no text uses.
constexpr std::size_t further_variables = 1000;

/// 50 texts of 27 or 28 characters.
inline std::vector<std::string> texts() {
    std::vector<std::string> all;
    all.reserve(50);
    for (int i = 0; i < 50; ++i) {
        all.push_back("(a+" + std::to_string(10 + i) + ".25*b)*(c-" + std::to_string(i % 3) +
                      ".5)-b*b/4+" + std::to_string(i));
    }
    return all;
}

/// As many texts, all of the same value and none like an earlier one; `number` counts them.
inline std::vector<std::string> new_texts(std::size_t& number) {
    std::vector<std::string> all;
    all.reserve(batch);
    for (std::size_t i = 0; i < batch; ++i) {
        all.push_back("(a+b*c)*2.5-b/4+z*" + std::to_string(1000000 + number++ % 9000000));
    }
    return all;
}

/// 50 texts of 25 characters without names.
inline std::vector<std::string> constant_texts() {
    std::vector<std::string> all;
    all.reserve(50);
    for (int i = 0; i < 50; ++i) {
        all.push_back("(" + std::to_string(10 + i) + "+2.5*4)/(3.5-1.5)+" +
                      std::to_string(60 - i) + "*4.5");
    }
    return all;
}

/// A sum of terms, names and numbers in turn.
inline std::string sum_of(std::size_t terms) {
    std::string text = "a";
    for (std::size_t i = 1; i < terms; ++i) {
        text += i % 2 == 1 ? "+b" : "-" + std::to_string(i / 2 % 8) + ".25";
    }
    return text;
}

/// The calls that a recursive Fibonacci function makes for 20.
constexpr std::size_t calls_of_fibonacci_20 = 21891;

constexpr const char* text_s = "amplifier-12";
constexpr const char* text_t = "level-in-db-3";
constexpr const char* text_w = "amplifier-12-level-in-db-3";

} // namespace bench

/// @file
/// A standard output that cannot be written to.
#pragma once

#include <iostream>
#include <streambuf>

namespace test {

/// Makes every write to standard output throw, as long as it lives.
class broken_output_t : std::streambuf {
public:
    broken_output_t() : working(std::cout.rdbuf(this)) { std::cout.exceptions(std::ios::badbit); }
    broken_output_t(const broken_output_t&) = delete;
    broken_output_t& operator=(const broken_output_t&) = delete;
    ~broken_output_t() override {
        std::cout.exceptions(std::ios::goodbit);
        std::cout.rdbuf(working);
    }

private:
    std::streambuf* working;
};

} // namespace test

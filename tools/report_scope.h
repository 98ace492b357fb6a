/// @file
/// What the library writes to standard output while it works.
#pragma once

#include <iostream>
#include <streambuf>
#include <string>

namespace tool {

/// Passes lines on to a stream, but those by which the library reports what a diagnostic says
/// too.
class report_filter_t : public std::streambuf {
public:
    explicit report_filter_t(std::ostream& reports) : out(reports) {}

protected:
    int_type overflow(int_type c) override;

private:
    std::ostream& out;
    std::string line;
};

/// Sends what the library writes to `std::cout` to another buffer, as long as it lives.
class report_scope_t {
public:
    explicit report_scope_t(std::streambuf& buffer) : standard_output(std::cout.rdbuf(&buffer)) {}
    report_scope_t(const report_scope_t&) = delete;
    report_scope_t& operator=(const report_scope_t&) = delete;
    ~report_scope_t() { std::cout.rdbuf(standard_output); }

private:
    std::streambuf* standard_output;
};

} // namespace tool

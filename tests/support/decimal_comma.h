/// @file
/// A host locale whose decimal point is a comma.
#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace test {

/// A C++ number format with a decimal comma and grouped digits, made without any installed
/// locale.
class decimal_comma_t : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// Puts the program into a locale with a decimal comma: C++ always, C where one is installed.
class decimal_comma_scope_t {
public:
    decimal_comma_scope_t()
        : previous(std::locale::global(std::locale(std::locale::classic(), new decimal_comma_t))),
          c_previous(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8"}) {
            c_installed = c_installed || std::setlocale(LC_ALL, name) != nullptr;
        }
    }
    decimal_comma_scope_t(const decimal_comma_scope_t&) = delete;
    decimal_comma_scope_t& operator=(const decimal_comma_scope_t&) = delete;
    ~decimal_comma_scope_t() {
        std::locale::global(previous);
        std::setlocale(LC_ALL, c_previous.c_str());
    }

    /// Whether the C library has a decimal comma, too.
    bool c_locale_found() const { return c_installed; }

private:
    std::locale previous;
    std::string c_previous;
    bool c_installed = false;
};

} // namespace test

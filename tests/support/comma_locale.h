/// @file
/// Locales with a decimal comma, as a host program may set them.
#pragma once

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <locale>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace test {

/// While it lives, the global C++ locale writes 1234.5 as "1.234,5".
class comma_cpp_locale_t {
public:
    comma_cpp_locale_t() : saved(std::locale::global(make())) {}
    ~comma_cpp_locale_t() { std::locale::global(saved); }
    comma_cpp_locale_t(const comma_cpp_locale_t&) = delete;
    comma_cpp_locale_t& operator=(const comma_cpp_locale_t&) = delete;

    static std::locale make() { return std::locale(std::locale::classic(), new punctuation_t); }

private:
    struct punctuation_t : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale saved;
};

/// While it lives, the C locale reads and writes 1.5 as "1,5".
///
/// No installed locale is needed: the C library is given a numeric locale written for the purpose
/// into a folder of its own.
class comma_c_locale_t {
public:
    comma_c_locale_t() : saved(std::setlocale(LC_NUMERIC, nullptr)) {
        char name[] = "/tmp/comma_locale_XXXXXX";
        if (mkdtemp(name) == nullptr) {
            return;
        }
        folder = name;
        mkdir((folder + "/comma").c_str(), 0700);
        write(folder + "/comma/LC_NUMERIC");
        setenv("LOCPATH", folder.c_str(), 1);
        active = std::setlocale(LC_NUMERIC, "comma") != nullptr;
    }

    ~comma_c_locale_t() {
        std::setlocale(LC_NUMERIC, saved.c_str());
        unsetenv("LOCPATH");
        if (!folder.empty()) {
            std::remove((folder + "/comma/LC_NUMERIC").c_str());
            rmdir((folder + "/comma").c_str());
            rmdir(folder.c_str());
        }
    }

    comma_c_locale_t(const comma_c_locale_t&) = delete;
    comma_c_locale_t& operator=(const comma_c_locale_t&) = delete;

    /// False where the C library takes no such locale; the test is then to be skipped.
    bool is_active() const { return active; }

private:
    // The C library's own compiled form: a mark of the category, the number of fields, the offset
    // of each, then the fields.
    static void write(const std::string& path) {
        constexpr std::uint32_t mark = 0x20031115 ^ LC_NUMERIC;
        const std::uint32_t head[] = {mark, 6, 32, 34, 36, 40, 44, 48};
        const std::uint32_t wide[] = {',', '.'};
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(head), sizeof head);
        out.write(",\0.\0\3\0\0\0", 8);
        out.write(reinterpret_cast<const char*>(wide), sizeof wide);
        out.write("UTF-8", 6);
    }

    std::string saved;
    std::string folder;
    bool active = false;
};

} // namespace test

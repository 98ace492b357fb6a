#pragma once

#include <string>

namespace ko::xpp {

/// Counts one level of nesting for as long as it lives.
class nesting_t {
public:
    /// @param levels the number of levels, which must outlive the object
    explicit nesting_t(unsigned& levels) : count(levels) { ++count; }
    nesting_t(const nesting_t&) = delete;
    nesting_t& operator=(const nesting_t&) = delete;
    ~nesting_t() { --count; }

    /// @param limit how many levels there may be; 0 for any number
    /// @param directive what is nested
    /// @param which the definition, file or plug-in of this level
    /// @throws ko::exception_t when this level is one too many
    void check(unsigned limit, const char* directive, const std::string& which) const {
        if (limit != 0 && count > limit) {
            fail(limit, directive, which);
        }
    }

private:
    [[noreturn]] static void fail(unsigned limit, const char* directive,
                                  const std::string& which);

    unsigned& count;
};

} // namespace ko::xpp

/// @file
/// Functions of a host, for tests of private parts only.
#pragma once

#include <string>

#include "algebra/function_table.h"

namespace test {

/// A host function that is never called.
inline ko::alg::host_record_t host_of(const std::string& name, int count_min, int count_max) {
    ko::alg::host_record_t record;
    record.prototype.name = name;
    record.count_min = count_min;
    record.count_max = count_max;
    return record;
}

} // namespace test

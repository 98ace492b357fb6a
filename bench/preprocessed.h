/// @file
/// The inputs of the workloads with the preprocessor.
#pragma once

#include <cstddef>
#include <string>

#include "scratch.h"
#include "workload.h"

namespace bench {

/// The number of elements that a loop makes.
inline std::size_t loop_passes() {
    return sized(100000);
}

/// The number of rows that a definition makes.
inline std::size_t rows() {
    return sized(20000);
}

/// The number of files, or of times that one file is included.
inline std::size_t includes() {
    return sized(1000);
}

/// Plain elements with 3 attributes each.
inline std::string plain_elements() {
    std::string text = "<r>";
    for (std::size_t i = 0; i < sized(100000); ++i) {
        const std::string number = std::to_string(i);
        text.append("<amp id=\"").append(number).append("\" gain=\"-3.5\" name=\"amplifier ");
        text.append(number).append("\"/>");
    }
    return text + "</r>";
}

/// A folder with the files to include, part0.xml and so on, of 10 elements each.
inline void parts_write(const scratch_folder_t& folder) {
    for (std::size_t i = 0; i < includes(); ++i) {
        std::string text = "<r>";
        for (int j = 0; j < 10; ++j) {
            text += "<amp id=\"" + std::to_string(j) + "\" gain=\"-3.5\" name=\"amplifier\"/>";
        }
        folder.write("part" + std::to_string(i) + ".xml", text + "</r>");
    }
}

/// As many copies of `before`, a number, and `after`; the numbers count from 0, or are all 0.
inline std::string directives(std::size_t count, const std::string& before,
                              const std::string& after, bool counted = true) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text.append(before).append(std::to_string(counted ? i : 0)).append(after);
    }
    return text;
}

} // namespace bench

/// @file
/// A path laid out flat: its steps, and those of the paths in its filters, in one array. Reading
/// and evaluating a path of usual size allocates nothing.
#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace ko::lxml {

class atom_table_t;
class document_t;
class xpath_t;

/// One step. Its texts are borrowed from the text or the objects that it was made of.
struct flat_step_t {
    /// Instead of the number of a step.
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    bool kind = false; ///< see `xname_t`
    bool quoted = false;
    bool is_filtered = false;
    std::string_view name;
    std::string_view ns;
    std::string_view value;           ///< that an attribute must have; empty for any result
    std::size_t predicate = none;     ///< first step of the path in brackets
    const xpath_t* foreign = nullptr; ///< that path when only its own functions can evaluate it
    std::size_t next = none;          ///< the step after this one

    /// What the names are in the table of the document that was met last.
    const document_t* document = nullptr;
    const atom_table_t* atoms = nullptr; ///< null before
    int name_id = -1;                    ///< -1 for a text that is not in the table
    int ns_id = -1;                      ///< the same
};

/// Memory for the arrays of one use of a path.
class flat_memory_t {
public:
    flat_memory_t() : resource(buffer.data(), buffer.size()) {}
    flat_memory_t(const flat_memory_t&) = delete;
    flat_memory_t& operator=(const flat_memory_t&) = delete;

    std::pmr::memory_resource* get() { return &resource; }

private:
    alignas(std::max_align_t) std::array<std::byte, 768> buffer;
    std::pmr::monotonic_buffer_resource resource;
};

/// Few paths have more steps or filters.
constexpr std::size_t usual_steps = 4;

/// The steps of a path, of which the first has the number 0.
using flat_path_t = std::pmr::vector<flat_step_t>;

} // namespace ko::lxml

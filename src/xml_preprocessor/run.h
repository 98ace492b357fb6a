/// @file
/// The state of one call of `process`.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "xml_preprocessor/state.h"

namespace ko::xpp {

/// The bits of `preprocessor_t::flags_e`.
constexpr int flag_include_comments = 1;
constexpr int flag_process_include = 2;

/// The place of an element, without detail.
place_t place_of(const lxml::element_t& element);

/// Tells where a run is.
class places_t {
public:
    /// The innermost place of a run.
    virtual place_t place_get() const = 0;
    /// The places of a run, the innermost first.
    virtual std::vector<place_t> places_get() const = 0;

protected:
    ~places_t() = default;
};

/// An expression at work, or none: an attribute of the element at work.
struct expression_t {
    const lxml::atom_table_t* atoms = nullptr;
    int attribute = 0; ///< atom of its name
    const std::string* text = nullptr;
};

/// What belongs to one call of `process`. A call that a plug-in makes on the preprocessor that
/// called it thus leaves the outer one's untouched; only its nesting counts on.
class run_t {
public:
    run_t(state_t& preprocessor, const lxml::element_t& source, int requested);
    run_t(const run_t&) = delete;
    run_t& operator=(const run_t&) = delete;
    ~run_t();

    /// @name Keywords
    /// @{

    /// The keywords of the source, or those of the cache.
    keywords_t& keywords_get() { return *known; }
    /// The keywords for an element met among elements that have the keywords `nearest`.
    /// @param kept receives them where they have no other owner
    keywords_t& keywords_for(const lxml::element_t& element, keywords_t& nearest,
                             keywords_ptr_t& kept) {
        return nearest.is_of(element) ? nearest : keywords_of(element, kept);
    }
    /// @}

    /// @name Expressions
    /// They throw what the evaluator reports.
    /// @{
    alg::result_t evaluate(const expression_t& wanted);
    bool evaluate_bool(const expression_t& wanted); ///< whether the integer reading is not 0
    int evaluate_int(const expression_t& wanted);
    std::string evaluate_string(const expression_t& wanted);
    /// The value of an expression attribute; the expression itself where it cannot be evaluated.
    std::string value_of(const lxml::attribute_t& attribute);
    /// @}

    /// @name Where the run is
    /// @{

    /// Begins with an element.
    void at(const lxml::element_t* element) {
        current = element;
        expression = {};
    }
    /// The places of this run and of those around it, the innermost first.
    std::vector<place_t> trace_get() const;
    /// Keeps the trace of the exception that is being handled.
    void failed() noexcept;
    void succeeded() noexcept;
    /// @}

    /// @name What is counted and told
    /// @{
    void element_count();
    void loop_pass_begin(const lxml::element_t& loop);
    /// Tells of text other than white space in an element that is not copied.
    void text_drop(const lxml::element_t& element);
    /// The root element of a file.
    /// @param file name as written
    /// @param search whether the search path counts
    /// @throws ko::exception_t "failed to load xml file:" and the name; what reading reports
    lxml::element_t& include(const std::string& file, bool search,
                             const lxml::element_t& directive);
    /// @}

    state_t& state;
    int flags;
    const limits_t limits;
    const places_t* places = nullptr;
    const lxml::element_t* current =
        nullptr;             ///< the element at work; null for the innermost block
    expression_t expression; ///< at work

    /// @name Levels of nesting in progress
    /// @{
    unsigned insert_depth = 0;
    unsigned include_depth = 0;
    unsigned plugin_depth = 0;
    /// @}

private:
    keywords_t& keywords_of(const lxml::element_t& element, keywords_ptr_t& kept);
    void file_open(const std::string& path);

    run_t* const outer;
    keywords_ptr_t known;
    keywords_ptr_t included; ///< of the copy of the source's table
    source_atoms_t atoms;
    bool positions; ///< whether the source was loaded with positions
    std::size_t elements = 0;
    std::size_t passes = 0;
};

} // namespace ko::xpp

/// @file
/// One run of the preprocessor over one document, with everything that is told about it.
#pragma once

#include <atomic>
#include <exception>
#include <functional>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "definition.h"
#include "diagnostic.h"
#include "include_search.h"
#include "lxml/lxml.h"
#include "survey.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace tool {

/// What a run works on.
struct session_options_t {
    std::string file;                        ///< the document; "-" is standard input
    std::vector<std::string> directories;    ///< where included files are looked for first
    std::vector<definition_t> definitions;   ///< variables, set in this order
    bool includes = true;                    ///< whether "include" directives are carried out
    std::size_t elements_max = 0;            ///< elements made; 0 for no limit
    std::size_t passes_max = 0;              ///< passes of loops; 0 for no limit
    const std::atomic<bool>* stop = nullptr; ///< ends the run when it becomes true
};

/// Runs the preprocessor over a document.
///
/// It owns the source, the output and what was included; `run` is called once. Diagnostics name
/// what was dropped or kept in silence by the library, and what a survey of the documents that
/// were read finds.
class session_t : private ko::xpp::observer_t {
public:
    /// Is told of every element that is made, with the places around it, innermost first.
    using made_t =
        std::function<void(const ko::lxml::element_t& source, const ko::lxml::element_t& output,
                           const std::vector<ko::xpp::place_t>& trace)>;

    /// @param out receives what is wrong; must outlive this object
    session_t(session_options_t settings, diagnostics_t& out);
    session_t(const session_t&) = delete;
    session_t& operator=(const session_t&) = delete;
    ~session_t() override;

    void made_set(made_t function) { made = std::move(function); }

    /// Reads, processes and looks at the documents.
    void run();

    /// The output; its root is null when nothing came out.
    ko::lxml::document_t& output_get() { return output; }
    /// The source and what it included, by path, in the order in which they were read.
    std::vector<std::string> files_get() const;
    /// The evaluator with the variables of the run.
    ko::alg::algebra_t& algebra_get() { return preprocessor.algebra_get(); }
    const survey_t& survey_get() const { return survey; }
    /// Output elements that were made of elements with children.
    const std::unordered_set<const ko::lxml::element_t*>& parents_get() const { return parents; }

private:
    void prepare();
    bool source_load();
    bool process();
    void includes_drop();
    void documents_survey();
    void top_check();
    void failed(const ko::exception_t& e);
    void expression_failed_add(diagnostic_t diagnostic, const std::string& attribute,
                               const std::string& expression, const std::string& message,
                               bool fatal);
    diagnostic_t diagnostic_at(const ko::xpp::place_t& place, const char* code) const;
    void stop_check() const;
    bool is_new(const ko::xpp::place_t& place, const std::string& text);

    void expression_failed(const ko::xpp::place_t& place, const std::string& expression,
                           const std::string& message) override;
    void directive_unknown(const ko::xpp::place_t& place, const std::string& name) override;
    void text_dropped(const ko::xpp::place_t& place) override;
    void pass_begun(const ko::lxml::element_t& loop) override;
    void element_made(const ko::lxml::element_t& source,
                      const ko::lxml::element_t& made_element) override;

    session_options_t options;
    diagnostics_t& diagnostics;
    survey_t survey;
    ko::xpp::file_cache_t cache;
    ko::lxml::document_t source;
    ko::lxml::document_t output;
    ko::xpp::preprocessor_t preprocessor;
    std::unordered_set<const ko::lxml::element_t*> parents;
    made_t made;
    std::set<std::string> told; ///< places and texts that the observer was told of
};

} // namespace tool

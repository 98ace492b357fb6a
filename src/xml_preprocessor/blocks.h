/// @file
/// The execution of a tree: directives as blocks, all elements in progress as a stack of frames.
///
/// A frame is an element in progress: whose children come next, and into which output parent
/// they go. An element that is copied is a frame alone; a directive has a block beside it, which
/// chooses the body and may ask for another pass over it. The stack takes the next child of the
/// top frame, copies or starts it, and takes the frame down after its last pass.
///
/// Invariants: each frame's elements are of the table of its keywords or bring their own; the
/// body's parents are in progress, so nobody may free them; a block is started when it is on the
/// stack, so that it hears of every exception that leaves it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "xml_preprocessor/run.h"

namespace ko::xpp {

/// What a directive is executed with. Elements and keywords are borrowed.
struct site_t {
    run_t& run;
    lxml::element_t& element; ///< the directive
    lxml::element_t& out;     ///< the output parent
    keywords_t& keywords;     ///< in the table of `element`
};

/// A directive in execution.
///
/// The stack calls `start` once and, when a pass over the children of `body` is through, `again`;
/// each says whether a pass follows. A constructor does not throw.
class block_t {
public:
    explicit block_t(const site_t& where);
    block_t(const block_t&) = delete;
    block_t& operator=(const block_t&) = delete;
    virtual ~block_t();

    /// Does what comes before the first pass. @return whether there is one
    virtual bool start() = 0;
    /// Does what comes after a pass. @return whether another one follows
    virtual bool again();
    /// An exception leaves this block.
    virtual void failed() noexcept;

    /// Its place. A trace leaves out those without detail that are not the innermost.
    virtual place_t place() const;

    const lxml::element_t* element_get() const { return &site.element; }

    /// @name Whose children are run
    /// @{
    lxml::element_t* body; ///< at first the directive itself; of any document
    keywords_t* keywords;  ///< in the table of `body`
    keywords_ptr_t kept;   ///< the same where they have no other owner
    /// @}

protected:
    const string_table_t& names() const { return site.keywords.get(); }
    /// The text of a required attribute.
    const std::string& attribute_text(int name) const;
    /// The text of a required attribute as an expression.
    expression_t attribute_expression(int name) const;
    /// A text that was read from an attribute, as an expression.
    expression_t expression_of(int name, const std::string& text) const;
    /// Gives the value of a required attribute, evaluated when it is an expression attribute.
    void attribute_value_get(int name, std::string& value) const;
    /// Takes the children from another element instead.
    void body_set(lxml::element_t& other);
    /// What tells this block from others of its kind, for its place.
    virtual std::string detail() const;

    const site_t site;
};

using block_ptr_t = std::unique_ptr<block_t>;
/// Executes a directive or makes its block, not started yet; null when nothing is to be run.
using begin_t = block_ptr_t (*)(const site_t& site);

/// Runs a tree until nothing is left of it.
///
/// It owns the blocks. An exception is reported to all of them, innermost first, while they are
/// taken down, and then goes on unchanged.
class block_stack_t : private places_t {
public:
    /// @param directive_begin for elements of the directive namespace
    block_stack_t(run_t& of, begin_t directive_begin);
    block_stack_t(const block_stack_t&) = delete;
    block_stack_t& operator=(const block_stack_t&) = delete;
    ~block_stack_t();

    /// Processes an element into an output parent.
    void process(lxml::element_t& source, lxml::element_t& out);

private:
    struct frame_t {
        lxml::element_t* body;
        lxml::element_t::children_t::const_iterator position; ///< of the next child
        lxml::element_t* out;
        keywords_t* keywords;
        keywords_ptr_t kept; ///< of `keywords`, where they have no other owner
        block_ptr_t block;   ///< null where an element is copied
    };

    void enter(lxml::element_t& source, lxml::element_t& out, keywords_t& nearest);
    void copy(lxml::element_t& source, lxml::element_t& out, keywords_t& keywords,
              keywords_ptr_t& kept);
    void attributes_copy(const lxml::element_t& source, lxml::element_t& made,
                         keywords_t& keywords);
    void execute(const site_t& site, keywords_ptr_t& kept);
    void step();
    void pass_begin();
    void fail() noexcept;
    bool block_works() const;
    place_t place_get() const override;
    std::vector<place_t> places_get() const override;

    run_t& run;
    const begin_t begin;
    std::vector<frame_t> frames; // empty again after every run
};

} // namespace ko::xpp

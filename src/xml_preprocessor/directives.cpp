#include "xml_preprocessor/directives.h"

#include <string_view>

#include "exception/diagnosis.h"
#include "exception/exception.h"
#include "xml_preprocessor/attributes.h"
#include "xml_preprocessor/nesting.h"

namespace ko::xpp {

namespace {

/// The block of a directive whose own text is of no use.
template <class B> block_ptr_t block_begin(const site_t& site) {
    site.run.text_drop(site.element);
    return std::make_unique<B>(site);
}

/// A loop: a trace names it with the value of its variable.
class loop_t : public block_t {
protected:
    using block_t::block_t;
    /// A variable with its value now, where there is one of that name.
    std::string value_shown(const std::string& name, const std::string& otherwise) const {
        return variables().find(name) ? name + " = " + variables().get(name).string_get(false, 0)
                                      : otherwise;
    }
    alg::algebra_t& variables() const { return site.run.state.expressions.variables_get(); }
};

/// "for": a pass while the condition holds.
class for_t : public loop_t {
public:
    using loop_t::loop_t;

    bool start() override {
        const expression_t initialize = attribute_expression(names().initialize);
        condition = attribute_text(names().condition);
        update = attribute_text(names().update);
        variable = assigned_name(*initialize.text);
        site.run.evaluate(initialize);
        return holds();
    }

    bool again() override {
        site.run.evaluate(expression_of(names().update, update));
        return holds();
    }

protected:
    std::string detail() const override { return value_shown(variable, condition); }

private:
    bool holds() const {
        const bool result = site.run.evaluate_bool(expression_of(names().condition, condition));
        if (result) {
            site.run.loop_pass_begin(site.element);
        }
        return result;
    }

    std::string condition;
    std::string update;
    std::string variable;
};

/// "repeat": a pass for each integer of a range.
class repeat_t : public loop_t {
public:
    using loop_t::loop_t;

    bool start() override {
        index.name = attribute_text(names().index);
        const expression_t first = attribute_expression(names().first);
        const expression_t final = attribute_expression(names().last);
        value = site.run.evaluate_int(first);
        last = site.run.evaluate_int(final);
        running = value <= last;
        if (running) {
            assign();
        }
        return running;
    }

    bool again() override {
        if (value == last) {
            return false;
        }
        ++value;
        assign();
        return true;
    }

protected:
    std::string detail() const override {
        return running ? index.name + " = " + std::to_string(value) : std::string();
    }

private:
    void assign() {
        site.run.state.expressions.assign(index, value);
        site.run.loop_pass_begin(site.element);
    }

    assigned_t index;
    int value = 0; // of the pass; counted apart from the variable, which the children may change
    int last = 0;
    bool running = false;
};

/// "if": one pass when the condition holds.
class if_t : public block_t {
public:
    using block_t::block_t;

    bool start() override {
        return site.run.evaluate_bool(attribute_expression(names().condition));
    }
};

/// "switch": one pass over the children of the branch that is chosen.
class switch_t : public block_t {
public:
    using block_t::block_t;

    bool start() override {
        const expression_t condition = attribute_expression(names().condition);
        const std::string value = site.run.evaluate_string(condition);
        for (lxml::element_t* branch : site.element.children) {
            if (chosen(*branch, value)) {
                body_set(*branch);
                site.run.text_drop(*branch);
                return true;
            }
        }
        return false;
    }

private:
    bool chosen(const lxml::element_t& branch, const std::string& value) const {
        keywords_ptr_t branch_kept;
        const string_table_t& atoms =
            site.run.keywords_for(branch, site.keywords, branch_kept).get();
        if (branch.ns != atoms.xpp_ns) {
            return false;
        }
        // The first "default" is taken even where a "case" behind it matches; callers rely on it
        // (quirk "early default").
        if (branch.name == atoms.default_) {
            return true;
        }
        return branch.name == atoms.case_ && case_value(branch, atoms.expression) == value;
    }

    std::string case_value(const lxml::element_t& branch, int expression) const {
        site.run.at(&branch);
        const lxml::attribute_t& attribute = attribute_required(branch, expression);
        std::string value =
            site.run.evaluate_string({branch.atoms, expression, &attribute.value});
        site.run.at(&site.element);
        return value;
    }
};

block_ptr_t evaluate_begin(const site_t& site) {
    site.run.text_drop(site.element);
    const int name = site.keywords.get().expression;
    const lxml::attribute_t& attribute = attribute_required(site.element, name);
    site.run.evaluate({site.element.atoms, name, &attribute.value});
    return nullptr;
}

block_ptr_t define_begin(const site_t& site) {
    site.run.text_drop(site.element);
    const lxml::attribute_t& name = attribute_required(site.element, site.keywords.get().name);
    site.run.state.defines[name.value] = {&site.element, site.keywords.shared_from_this()};
    return nullptr;
}

/// "insert": one pass over the children of a definition.
class insert_t : public block_t {
public:
    explicit insert_t(const site_t& where) : block_t(where), level(where.run.insert_depth) {}

    bool start() override {
        attribute_value_get(names().name, name);
        is_named = true;
        const auto& defines = site.run.state.defines;
        const auto definition = defines.find(name);
        if (definition == defines.end()) {
            throw exception_t("insert name not defined: " + name);
        }
        level.check(site.run.limits.insert, "insert", name);
        body = definition->second.element;
        kept = definition->second.keywords;
        keywords = kept.get();
        return true;
    }

protected:
    std::string detail() const override {
        return is_named ? attribute_shown("name", name) : std::string();
    }

private:
    std::string name;
    bool is_named = false; // whether the name was read
    nesting_t level;
};

/// "specify": a pass for each piece of a list, which is assigned to a variable as an expression.
class specify_t : public loop_t {
public:
    using loop_t::loop_t;

    bool start() override {
        index = attribute_text(names().index);
        // A comma at the end thus makes one more, empty piece; callers rely on it (quirk "one
        // value more").
        attribute_value_get(names().values, values);
        values += ',';
        return again();
    }

    bool again() override {
        const std::size_t comma = values.find(',', position);
        if (comma == std::string::npos) {
            return false;
        }
        piece.assign(values, position, comma - position);
        assigned = false;
        site.run.state.expressions.assign(index, piece);
        assigned = true;
        position = comma + 1;
        site.run.loop_pass_begin(site.element);
        return true;
    }

    /// Writes one line to standard output.
    void failed() noexcept override {
        const lxml::element_t& e = site.element;
        const lxml::attribute_t* tag = attribute_find(e, e.atoms->find("namespace"));
        diagnose("Caught exception in ", e.name_get(), " : ",
                 tag != nullptr ? std::string_view(tag->value) : "none");
    }

protected:
    std::string detail() const override {
        const std::string statement = values.empty() ? "" : index + " = " + piece;
        return assigned ? value_shown(index, statement) : statement;
    }

private:
    std::string index;
    std::string values;       // each piece followed by a comma
    std::string piece;        // of the pass
    bool assigned = false;    // whether the variable has it
    std::size_t position = 0; // of the next piece
};

/// "include": one pass over the children of the root of a file.
class include_t : public block_t {
public:
    explicit include_t(const site_t& where) : block_t(where), level(where.run.include_depth) {}

    bool start() override {
        file = &attribute_text(names().file);
        level.check(site.run.limits.include, "include", *file);
        body_set(site.run.include(*file, search_path_wanted(), site.element));
        site.run.text_drop(*body);
        return true;
    }

protected:
    std::string detail() const override {
        return file == nullptr ? std::string() : attribute_shown("file", *file);
    }

private:
    bool search_path_wanted() const {
        const lxml::attribute_t* said = attribute_find(site.element, names().searchpath);
        return said != nullptr ? said->value == "true"
                               : site.run.state.includes.search_path_default;
    }

    const std::string* file = nullptr;
    nesting_t level;
};

block_ptr_t include_begin(const site_t& site) {
    return (site.run.flags & flag_process_include) != 0 ? block_begin<include_t>(site) : nullptr;
}

/// "pragma": one pass under other flags. The destructor restores the flags.
class pragma_t : public block_t {
public:
    explicit pragma_t(const site_t& where) : block_t(where), saved_flags(where.run.flags) {}
    ~pragma_t() override { site.run.flags = saved_flags; }

    bool start() override {
        flag_read("include_comments", flag_include_comments);
        flag_read("process_include", flag_process_include);
        return true;
    }

private:
    void flag_read(const char* name, int bit) {
        const bool on = attribute_true(site.element, site.element.atoms->find(name));
        site.run.flags = on ? site.run.flags | bit : site.run.flags & ~bit;
    }

    int saved_flags;
};

/// "plugin": one pass over the children of what a plug-in generates.
class plugin_block_t : public block_t {
public:
    explicit plugin_block_t(const site_t& where)
        : block_t(where), level(where.run.plugin_depth) {}

    bool start() override {
        remembered = place_of(site.element);
        // A copy, since the plug-in may free the directive.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const std::string name = attribute_text(names().name);
        remembered.detail = attribute_shown("name", name);
        const auto& plugins = site.run.state.plugins;
        const auto plugin = plugins.find(name);
        if (plugin == plugins.end()) {
            throw exception_t("plugin name not defined: " + name);
        }
        level.check(site.run.limits.plugin, "plugin", name);
        lxml::element_t* generated = plugin->second->generate(&site.element);
        if (generated == nullptr) {
            return false;
        }
        if (generated->document == site.out.document && is_filled(*generated, site.out)) {
            throw exception_t("plugin generated what is being filled: " + name);
        }
        body_set(*generated);
        return true;
    }

    place_t place() const override { return remembered; }

private:
    /// Whether `out`, an element that is being filled, is `element` or hangs below it. An element
    /// that is being filled is the last child of its parent, so that the way to it is no longer
    /// than what would be processed.
    static bool is_filled(const lxml::element_t& element, const lxml::element_t& out) {
        const lxml::element_t* last = &element;
        while (last != &out && !last->children.empty()) {
            last = last->children.back();
        }
        return last == &out;
    }

    place_t remembered; // the directive itself may be gone
    nesting_t level;
};

block_ptr_t plugin_begin(const site_t& site) {
    return std::make_unique<plugin_block_t>(site); // the text is the plug-in's
}

struct directive_t {
    int string_table_t::*keyword;
    begin_t begin;
};

constexpr directive_t directives[] = {
    {&string_table_t::for_, block_begin<for_t>},
    {&string_table_t::repeat, block_begin<repeat_t>},
    {&string_table_t::if_, block_begin<if_t>},
    {&string_table_t::switch_, block_begin<switch_t>},
    {&string_table_t::evaluate, evaluate_begin},
    {&string_table_t::define, define_begin},
    {&string_table_t::insert, block_begin<insert_t>},
    {&string_table_t::specify, block_begin<specify_t>},
    {&string_table_t::include, include_begin},
    {&string_table_t::pragma, block_begin<pragma_t>},
    {&string_table_t::plugin, plugin_begin},
};

} // namespace

block_ptr_t directive_begin(const site_t& site) {
    const string_table_t& names = site.keywords.get();
    for (const directive_t& directive : directives) {
        if (site.element.name == names.*directive.keyword) {
            return directive.begin(site);
        }
    }
    if (observer_t* const observer = site.run.state.observer) {
        observer->directive_unknown(place_of(site.element), site.element.name_get());
    }
    return nullptr;
}

} // namespace ko::xpp

// Random trees, written and read again: the tree must be the same.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "lxml/lxml.h"
#include "str/str.h"
#include "support/tree_texts.h"

namespace {

using namespace ko::lxml;
using test::described;

using words_t = std::vector<std::string>;

const words_t names = {"a",   "b",        "c_d",          "x-1.y",     "_",     "xmlfoo",
                       "ns1", "\xC3\xA9", "\xE5\x90\x8D", "a\xC2\xB7", "space", "lang"};
const words_t namespaces = {"",          "",         "",
                            "urn:x",     "urn:y",    "u?a&b=<>\"'",
                            " u\t\n\r ", "\xC3\xA9", "http://www.w3.org/XML/1998/namespace",
                            "ns1",       "]]>"};
const words_t prefixes = {"p", "q", "ns1", "ns2", "xml", "xmlns", "no prefix", "", "\xC3\xA9"};
const words_t pieces = {"x",
                        "<",
                        "&",
                        ">",
                        "]",
                        "]]>",
                        "]]",
                        "\"",
                        "'",
                        "\r",
                        "\n",
                        "\t",
                        " ",
                        "\r\n",
                        "\xC3\xA9",
                        "\xE2\x82\xAC",
                        "\xF0\x9F\x98\x80",
                        "\xEF\xBB\xBF",
                        "\x7F",
                        "\xC2\x85",
                        "\xE2\x80\xA8",
                        "&amp;",
                        "<![CDATA[",
                        "<!--",
                        "%s"};

class random_tree_t {
public:
    explicit random_tree_t(unsigned seed) : random(seed) {
        bind();
        doc.root = element();
        std::vector<element_t*> all = {doc.root};
        for (unsigned left = below(30); left != 0; --left) {
            all.push_back(all[below(all.size())]->append(element()));
        }
        bind();
    }

    unsigned below(std::size_t end) { return static_cast<unsigned>(random() % end); }

    document_t doc;

private:
    const std::string& one_of(const words_t& words) { return words[below(words.size())]; }

    void bind() {
        for (unsigned left = below(4); left != 0; --left) {
            doc.add_ns_prefix(one_of(prefixes), one_of(namespaces));
        }
    }

    std::string text() {
        std::string out;
        for (unsigned left = below(3) == 0 ? below(8) : 0; left != 0; --left) {
            out += one_of(pieces);
        }
        return out;
    }

    element_t* element() {
        element_t* const e = doc.element_create(one_of(names), one_of(namespaces));
        for (unsigned left = below(4); left != 0; --left) {
            e->attribute_set_ns(one_of(names), one_of(namespaces), text());
        }
        e->text = text();
        e->cdata = text();
        e->cdata.erase(std::remove(e->cdata.begin(), e->cdata.end(), '\r'), e->cdata.end());
        return e;
    }

    std::mt19937 random;
};

/// Leaves out what a layout may change.
void drop_layout(element_t& e) {
    const bool is_layout = ko::str::all_whitespace(e.text) && !e.children.empty();
    if (is_layout && (e.text.empty() || e.text.find('\n') != std::string::npos)) {
        e.text.clear();
    }
    for (element_t* child : e.children) {
        drop_layout(*child);
    }
}

std::string written(const document_t& doc, const write_options_t& options) {
    std::ostringstream out;
    doc.write(out, options);
    return out.str();
}

TEST(write_round_trip, gives_the_same_tree) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        random_tree_t tree(seed);
        const std::string text = written(tree.doc, {tree.below(2) == 0, -1});
        document_t again;
        ASSERT_NO_THROW(again.load_from_string(text)) << seed << ": " << text;
        ASSERT_EQ(described(*again.root), described(*tree.doc.root)) << seed << ": " << text;
    }
}

TEST(write_round_trip, with_a_layout_gives_the_same_tree_but_for_white_space) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        random_tree_t tree(seed);
        const std::string text = written(tree.doc, {false, static_cast<int>(tree.below(5))});
        document_t again;
        ASSERT_NO_THROW(again.load_from_string(text)) << seed << ": " << text;
        drop_layout(*again.root);
        drop_layout(*tree.doc.root);
        ASSERT_EQ(described(*again.root), described(*tree.doc.root)) << seed << ": " << text;
    }
}

/// What is written for what was written before.
std::string rewritten(const std::string& text, const write_options_t& options) {
    document_t again;
    again.load_from_string(text);
    return written(again, options);
}

TEST(write_round_trip, changes_a_layout_once_at_most) {
    const write_options_t options = {true, 3};
    for (unsigned seed = 0; seed < 1000; ++seed) {
        const std::string once = written(random_tree_t(seed).doc, options);
        const std::string twice = rewritten(once, options);
        ASSERT_EQ(rewritten(twice, options).size(), twice.size()) << seed << ": " << once;
    }
}

} // namespace

/// @file
/// The prefixes under which the faithful writer writes a tree. All of them are declared on its
/// top element, and each stands for one namespace. A namespace without a prefix is the default
/// namespace where it is used, which no attribute can be in.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace ko::lxml {

class document_t;

/// The name of the namespace that the prefix "xml" always stands for.
constexpr char xml_namespace[] = "http://www.w3.org/XML/1998/namespace";

/// Prefixes by the atoms of namespace names, for one document, which it borrows. It begins with
/// those of the document that can be declared.
class prefixes_t {
public:
    explicit prefixes_t(const document_t& source);

    /// Takes note of a namespace in use. It gets a prefix when it needs one: for attributes, and
    /// where the one that the document knows is not free, since a default namespace could have to
    /// be declared for each of its elements again, however long its name is.
    void use(int ns, bool for_attribute);

    /// The prefix of a namespace; empty for a default namespace and for none.
    std::string_view get(int ns) const;

    /// What is to be declared.
    const std::map<int, std::string>& declared() const { return by_ns; }

private:
    std::string made_up();

    const document_t& document;
    const int xml_ns; ///< -1 when the document does not know it
    std::map<int, std::string> by_ns;
    std::set<std::string> taken;
    unsigned count = 0;
};

} // namespace ko::lxml

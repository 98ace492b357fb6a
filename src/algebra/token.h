/// @file
/// The nodes of an expression tree and the list that owns them.
#pragma once

#include <list>
#include <set>
#include <string>
#include <vector>

#include "algebra/result.h"
#include "export.h"

namespace ko::alg {

class algebra_t;
class list_t;

/// A node of an expression tree; a whole expression when it is the root.
///
/// @par Owns
/// Its operands.
/// @par Lives
/// As long as the list or the node that owns it. What it refers to stays valid whatever becomes
/// of the evaluator that parsed it.
/// @par Threads
/// A tree is used by one thread at a time, which with calls of script functions in it is the
/// thread that uses the evaluator that parsed it.
/// @par After an exception
/// It can be evaluated again.
class KO_API token_t {
public:
    /// @param text the spelling, the digits, the content of a string or the name
    /// @param strength binding strength; higher binds first
    /// @param unbound 1 for a token that still has to take its operands, else 0
    token_t(const std::string& text, int strength, unsigned unbound);
    token_t(const token_t&) = delete;
    token_t& operator=(const token_t&) = delete;

    virtual ~token_t();

    /// True for a string literal only.
    virtual bool is_string() const;

    /// Takes the operands out of `list`, marks the token as bound and lowers its depth by one.
    /// @param list the list that holds this token
    /// @param position where this token stands; on success, the node after the last one taken
    /// @param error receives the message of a failure
    /// @return false when an operand is missing or not bound yet; nothing is taken then
    virtual bool construct(list_t& list, std::list<token_t*>::iterator& position,
                           std::string& error) = 0;

    /// The value of the tree.
    ///
    /// The built-in `return` ends evaluations that an `algebra_t` began; in one begun here it
    /// throws an exception of the library's own.
    /// @param algebra the evaluator whose variables and functions count
    /// @throws ko::exception_t what the evaluation reports; the parse error text of `algebra`
    ///         where an operand is missing after a parse that failed
    virtual result_t evaluate(algebra_t& algebra) const = 0;

    /// Appends the values of the operands that commas separate, in written order.
    virtual void evaluate(algebra_t& algebra, std::vector<result_t>& values) const;

    /// Stores `value` in what the tree names.
    /// @throws ko::exception_t "non lvalue" for everything but a name or a string
    virtual void assign(algebra_t& algebra, const result_t& value) const = 0;

    /// A deep copy; the caller owns it.
    virtual token_t* replicate() const = 0;

    std::string text; ///< spelling, digits, content of a string, or name
    unsigned unbound; ///< 1 while the token still has to take its operands
    int strength;     ///< binding strength; -15 once bound
    int depth;        ///< parenthesis depth, lowered by one when the token is bound
};

/// @name Comparison of a token's text with a string
/// @{

/// Compares the spelling, the digits, the content or the name.
KO_API bool operator==(const token_t& token, const std::string& text);
KO_API bool operator==(const std::string& text, const token_t& token);
KO_API bool operator!=(const token_t& token, const std::string& text);
KO_API bool operator!=(const std::string& text, const token_t& token);
/// @}

/// @name Order of binding
/// The greater token binds first: an unbound one before a bound one, then the deeper one, then
/// the one of larger strength.
/// @{

/// Compares what the two have to be bound by.
KO_API bool operator<(const token_t& a, const token_t& b);
KO_API bool operator>(const token_t& a, const token_t& b);
/// @}

/// The names that an expression uses.
struct KO_API names_t {
    std::set<std::string> variables; ///< that it reads
    std::set<std::string> functions; ///< that it calls
};

/// A list of tokens: the result of a parse. After a successful one it holds one token, the root.
///
/// @par Owns
/// Its tokens; what is taken out by the members of `std::list` is the caller's to delete.
/// @par Lives
/// It may outlive the evaluator that parsed into it.
/// @par Threads
/// As its tokens.
/// @par After an exception
/// A parse that failed may leave tokens that are not bound; they are still the list's.
class KO_API list_t : public std::list<token_t*> {
public:
    list_t();
    /// Holds a deep copy of every token of `other`.
    list_t(const list_t& other);
    /// Destroys its tokens and takes deep copies of those of `other`.
    list_t& operator=(const list_t& other);
    /// Takes the tokens of `other`, which is empty then. Neither list may be in evaluation.
    list_t(list_t&& other) noexcept;
    /// Destroys its tokens and takes those of `other`, which is empty then.
    list_t& operator=(list_t&& other) noexcept;
    ~list_t();

    /// Appends a deep copy of every token of `other`.
    void replicate(const list_t& other);
    /// Deletes every token and empties the list.
    void destroy();
};

} // namespace ko::alg

/// @file
/// Expat's memory, counted and bounded.
///
/// Expat copies and multiplies what it reads: the name of a namespace stands in the name of each
/// attribute that is in it, for as long as a start tag lasts. What one parser holds is therefore
/// bounded in proportion to the text that it was given.
///
/// Expat does not tell the functions that give it memory for which parser they are called. The
/// thread knows: blocks are charged to the account in whose `use_t` they are made. Each block
/// begins with its size and its account, to which it is given back wherever it is freed.
#pragma once

#include <cstddef>
#include <cstdint>

struct XML_ParserStruct;

namespace ko::xml {

/// The memory of one expat parser, which it must outlive.
class expat_memory_t {
public:
    expat_memory_t();
    expat_memory_t(const expat_memory_t&) = delete;
    expat_memory_t& operator=(const expat_memory_t&) = delete;

    /// Charges what the thread allocates for expat to an account, for as long as it lives. Each
    /// call of expat that can allocate stands in one; a callback may begin another.
    class use_t {
    public:
        explicit use_t(expat_memory_t& account) noexcept;
        use_t(const use_t&) = delete;
        use_t& operator=(const use_t&) = delete;
        ~use_t();

    private:
        expat_memory_t* const before;
    };

    /// Makes a parser that has its memory from here.
    /// @param namespaces whether it processes namespaces, in whose names it puts "|"
    /// @return null without memory; to be freed with `XML_ParserFree`
    XML_ParserStruct* parser_create(bool namespaces);

    /// Takes note of text that the parser is given.
    void input_add(std::size_t bytes) noexcept;
    /// From now on the parser gets no memory, so that it ends what it is doing.
    void deny() noexcept { limit = 0; }
    bool is_denied() const { return limit == 0; }
    /// Whether the parser asked for more than the limit.
    bool is_exceeded() const { return exceeded; }

private:
    struct block_t;

    static void* allocate(std::size_t size);
    static void* reallocate(void* bytes, std::size_t size);
    static void free(void* bytes);
    bool take(std::size_t size) noexcept;

    std::uint64_t input = 0; ///< bytes given to the parser
    std::uint64_t limit;     ///< 0 when nothing is to be had any more
    std::uint64_t used = 0;
    bool exceeded = false;
};

} // namespace ko::xml

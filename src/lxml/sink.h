/// @file
/// What the writers of trees write to: a block of bytes in front of a stream, so that the stream
/// is called once a block and not once a piece. The stream sees unformatted output only, so that
/// the bytes do not depend on the width, fill or locale that it was given.
///
/// Text is escaped by a table that tells for each byte what stands for it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace ko::lxml {

/// What is written for one byte.
struct escape_t {
    unsigned char size = 0; ///< 0 where the byte stands for itself, `ends` where it ends a text
    char text[7] = {};

    static constexpr unsigned char ends = 8;
};

/// What is written for each byte.
class escapes_t {
public:
    constexpr void set(unsigned char c, std::string_view text) {
        escape_t& escape = by_byte[c];
        for (const char part : text) {
            escape.text[escape.size++] = part;
        }
    }

    /// Writes a byte as a decimal character reference.
    constexpr void set_reference(unsigned char c) {
        set(c, "&#");
        for (unsigned divisor = c > 99 ? 100 : c > 9 ? 10 : 1; divisor != 0; divisor /= 10) {
            const char digit = static_cast<char>('0' + c / divisor % 10);
            set(c, {&digit, 1});
        }
        set(c, ";");
    }

    /// Makes a byte the end of a text: neither it nor what follows it is written.
    constexpr void set_end(unsigned char c) { by_byte[c] = {escape_t::ends, {}}; }

    /// The most that is written for `size` bytes.
    static constexpr std::size_t room(std::size_t size) { return size * sizeof(escape_t); }

    /// Writes what stands for `text` to a place with the `room` for it and moves `to` behind it.
    /// @return whether the text did not meet its end before
    bool apply(std::string_view text, char*& to) const {
        char* at = to;
        for (const char c : text) {
            const escape_t& escape = by_byte[static_cast<unsigned char>(c)];
            if (escape.size == 0) {
                *at++ = c;
            } else if (escape.size != escape_t::ends) {
                std::memcpy(at, escape.text, sizeof escape.text);
                at += escape.size;
            } else {
                to = at;
                return false;
            }
        }
        to = at;
        return true;
    }

private:
    std::array<escape_t, 256> by_byte = {};
};

/// A block of bytes in front of a stream, which it borrows. What was put reaches the stream when
/// the block is full and by `hand_over`, not by the destructor.
class sink_t {
public:
    explicit sink_t(std::ostream& stream) : os(stream), block(new char[size]) {}

    void put(std::string_view text) {
        if (text.size() > size - used) {
            put_large(text);
            return;
        }
        std::copy(text.begin(), text.end(), block.get() + used); // an empty text may be null
        used += text.size();
    }

    void put(char c) {
        if (used == size) {
            hand_over();
        }
        block[used++] = c;
    }

    void put(char first, char second) {
        if (size - used < 2) {
            hand_over();
        }
        char* const at = block.get() + used;
        used += 2;
        at[0] = first;
        at[1] = second;
    }

    void put(std::string_view text, const escapes_t& escapes) {
        while (escapes_t::room(text.size()) > size - used) {
            const std::size_t part = (size - used) / escapes_t::room(1);
            if (!put_escaped(text.substr(0, part), escapes)) {
                return;
            }
            text.remove_prefix(part);
            if (size - used < escapes_t::room(64)) {
                hand_over();
            }
        }
        put_escaped(text, escapes);
    }

    /// Gives the stream all that was put so far.
    [[gnu::cold]] void hand_over() {
        os.write(block.get(), static_cast<std::streamsize>(used));
        used = 0;
    }

    /// Gives the stream all that was put so far and flushes it.
    void flush() {
        hand_over();
        os.flush();
    }

private:
    static constexpr std::size_t size = 32768;

    bool put_escaped(std::string_view text, const escapes_t& escapes) {
        char* to = block.get() + used;
        const bool is_whole = escapes.apply(text, to);
        used = static_cast<std::size_t>(to - block.get());
        return is_whole;
    }

    [[gnu::cold]] void put_large(std::string_view text) {
        hand_over();
        if (text.size() < size) {
            put(text);
        } else {
            os.write(text.data(), static_cast<std::streamsize>(text.size()));
        }
    }

    std::ostream& os;
    std::unique_ptr<char[]> block;
    std::size_t used = 0;
};

} // namespace ko::lxml

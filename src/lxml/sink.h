/// @file
/// What the writers of trees write to: a block of bytes in front of a stream, so that the stream
/// is called once a block and not once a piece. The stream sees unformatted output only, so that
/// the bytes do not depend on the width, fill or locale that it was given.
///
/// Text is escaped by runs: a table tells for each byte what stands for it, and the bytes between
/// two that are replaced are copied in one piece.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace ko::lxml {

/// What is written for one byte; of size 0 when that is the byte itself.
struct escape_t {
    unsigned char size = 0;
    char text[7] = {};
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

    /// Calls `put` with the pieces of what is written for `text`, in order.
    template <class P> void apply(std::string_view text, P&& put) const {
        const char* run = text.data();
        const char* const end = run + text.size();
        for (const char* p = run; p != end; ++p) {
            const escape_t& escape = by_byte[static_cast<unsigned char>(*p)];
            if (escape.size != 0) {
                put(std::string_view(run, static_cast<std::size_t>(p - run)));
                put(std::string_view(escape.text, escape.size));
                run = p + 1;
            }
        }
        put(std::string_view(run, static_cast<std::size_t>(end - run)));
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
        std::memcpy(block.get() + used, text.data(), text.size());
        used += text.size();
    }

    void put(char c) {
        if (used == size) {
            hand_over();
        }
        block[used++] = c;
    }

    void put(std::string_view text, const escapes_t& escapes) {
        escapes.apply(text, [this](std::string_view piece) { put(piece); });
    }

    /// Gives the stream all that was put so far.
    void hand_over() {
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

    void put_large(std::string_view text) {
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

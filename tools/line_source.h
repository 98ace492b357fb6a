/// @file
/// Lines of input: of a terminal, with editing and history where the system has them, or of a
/// file.
#pragma once

#include <istream>
#include <string>

namespace tool {

/// Gives one line after another. The reader of a stream borrows it.
class line_source_t {
public:
    line_source_t() = default;
    line_source_t(const line_source_t&) = delete;
    line_source_t& operator=(const line_source_t&) = delete;
    virtual ~line_source_t() = default;

    /// Reads the next line, without its line break. @return false at the end
    virtual bool next(std::string& line) = 0;
};

/// The lines of a stream.
class stream_lines_t : public line_source_t {
public:
    explicit stream_lines_t(std::istream& input) : stream(input) {}

    bool next(std::string& line) override {
        return static_cast<bool>(std::getline(stream, line));
    }

private:
    std::istream& stream;
};

/// The lines that a person types at the terminal, each after a prompt.
class terminal_lines_t : public line_source_t {
public:
    terminal_lines_t();
    ~terminal_lines_t() override;

    bool next(std::string& line) override;
};

} // namespace tool

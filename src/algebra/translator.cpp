#include "algebra/translator.h"

#include <algorithm>

#include "algebra/statement_reader.h"
#include "exception/exception.h"
#include "str/ascii.h"

namespace ko::alg {

bool translator_t::statement_get(const std::string& text, const macro_table_t* macros) {
    const bool substitute = statement_read(text, statement);
    if (substitute && macros != nullptr) {
        macros->substitute(statement);
    }
    failure_offset = statement.size();
    return !std::all_of(statement.begin(), statement.end(), ascii::is_space);
}

bool translator_t::translate(const lexer_settings_t& settings, program_t& program,
                             std::string& error) {
    if (!settings.numeric_only &&
        line_translate(statement, settings, one_pass_room, compiler_room.writer, program)) {
        return true;
    }
    bool is_good = false;
    try {
        is_good = parse(settings, syntax, error);
    } catch (const exception_t&) {
        compile_first(program); // what has been lexed before
        throw;
    }
    compile_first(program);
    return is_good;
}

bool translator_t::parse(const lexer_settings_t& settings, syntax_t& target, std::string& error) {
    target.clear();
    target.text = statement;
    place_t failed = no_place;
    const bool is_good = line_parse(target, settings, parser_room, error, failed);
    failure_note(target, is_good ? no_place : failed);
    return is_good;
}

void translator_t::failure_note(const syntax_t& tree, place_t failed) {
    const std::size_t offset = failed == no_place ? tree.unread : tree.items[failed].text_begin;
    failure_offset = std::min(offset, statement.size());
}

void translator_t::compile_first(program_t& program) {
    if (syntax.first == no_place) {
        program.code.push_back({opcode_e::push, operand_e::integer});
        program.code.push_back({opcode_e::end});
        program.stack_need = 1;
    } else {
        compile(syntax, syntax.first, false, program);
    }
    syntax.callees.clear(); // which may hold what a host wants to see gone
}

} // namespace ko::alg

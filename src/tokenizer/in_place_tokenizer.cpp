#include <cstring>

#include "exception/exception.h"
#include "tokenizer/tokenizer.h"

namespace ko {

in_place_tokenizer_t::in_place_tokenizer_t(const char* block) {
    if (block == nullptr) {
        throw exception_t("ko::in_place_tokenizer_t::in_place_tokenizer_t() -- block is null");
    }
    while (*block != '\0') {
        push_back(block);
        block += std::strlen(block) + 1;
    }
}

in_place_tokenizer_t::in_place_tokenizer_t(char* text, char separator) {
    if (text == nullptr) {
        throw exception_t("ko::in_place_tokenizer_t::in_place_tokenizer_t() -- text is null");
    }
    const char* piece = text;
    for (; *text != '\0'; ++text) {
        if (*text != separator) {
            continue;
        }
        *text = '\0';
        if (*piece != '\0') {
            push_back(piece);
        }
        piece = text + 1;
    }
    if (*piece != '\0') {
        push_back(piece);
    }
}

} // namespace ko

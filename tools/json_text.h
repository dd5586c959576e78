// Texts in JSON.
#ifndef ORVEX_TOOLS_JSON_TEXT_H
#define ORVEX_TOOLS_JSON_TEXT_H

#include <string>
#include <string_view>

// Appends a text in quotes. Bytes that are not UTF-8 are replaced by U+FFFD; `ascii_only` writes
// every other character than those of ASCII as an escape.
void append_json_text(std::string &out, std::string_view text, bool ascii_only);

bool is_utf8(std::string_view text);

#endif

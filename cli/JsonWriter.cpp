#include "JsonWriter.h"

#include <cstdio>

namespace captioncli {

std::string JsonString(std::string_view utf8) {
    std::string json = "\"";
    for (char c : utf8) {
        switch (c) {
        case '"':
            json += "\\\"";
            break;
        case '\\':
            json += "\\\\";
            break;
        case '\n':
            json += "\\n";
            break;
        case '\r':
            json += "\\r";
            break;
        case '\t':
            json += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                json += escaped;
            } else {
                json += c;
            }
        }
    }
    return json + '"';
}

} // namespace captioncli

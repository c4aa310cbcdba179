#include "KSL/Message.h"

namespace KSL {

MessageID HashMessageTypeNameToMessageID(std::string_view typeName) {
    std::uint32_t hash = 2166136261u;
    for (const char c : typeName) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 16777619u;
    }
    // 0 is every cache's "not yet computed"; fold it onto an arbitrary other value.
    return hash != 0 ? hash : 1u;
}

Message::~Message() = default;

} // namespace KSL

#pragma once

#include "KSL/Message.h"

#include <cstdint>

namespace HandlerCaptions {

// The id of message class T, hashed from its type name on first use and kept
// (0 means not yet computed), so that listeners compare plain numbers.
template <typename T> KSL::MessageID CachedMessageID() {
    static KSL::MessageID id = 0;
    if (id == 0) {
        id = KSL::HashMessageTypeNameToMessageID(T::kTypeName);
    }
    return id;
}

} // namespace HandlerCaptions

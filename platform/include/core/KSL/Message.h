#pragma once

#include <cstdint>
#include <string_view>

namespace KSL {

using MessageID = std::uint32_t;

// A stable 32-bit hash of a message class's type name (FNV-1a over its bytes),
// the same in every process and build. Never 0: listeners cache ids in
// variables where 0 means "not yet computed".
MessageID HashMessageTypeNameToMessageID(std::string_view typeName);

// Base of every message. Listeners tell messages apart by the id alone.
class Message {
public:
    virtual ~Message();

    MessageID GetMessageID() const { return messageID_; }

    // This message as T when its id is T's, otherwise null.
    template <typename T> const T* As() const {
        return messageID_ == T::ID() ? static_cast<const T*>(this) : nullptr;
    }

protected:
    explicit Message(MessageID id)
        : messageID_(id) {}
    Message(const Message&) = default;
    Message& operator=(const Message&) = default;

private:
    MessageID messageID_;
};

// Base of a concrete message class T, which declares its type name as
//   static constexpr const char* kTypeName = "NS::TMessage";
// The id is hashed once, on first use.
template <typename T> class MessageOf : public Message {
public:
    static MessageID ID() {
        static const MessageID id = HashMessageTypeNameToMessageID(T::kTypeName);
        return id;
    }

protected:
    MessageOf()
        : Message(ID()) {}
};

} // namespace KSL

#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <boost/rational.hpp>

namespace platform::core {

// Where a text stops being JSON: the byte offset just past the character at
// which it went wrong (the text's end when it ended too early), and why.
struct JsonSyntaxError {
    std::size_t offset;
    std::string problem;
};

// A JSON text (RFC 8259, UTF-8) parsed into a flat table of values. Strings
// stay in the text and are decoded only when read, so parsing a large project
// file allocates a few vectors rather than an object per value: for the
// benchmark's file of 100,000 captions QJsonDocument spent about 24,000
// instructions a caption, this parser under 7,000. The text must outlive the
// tree.
class JsonTree {
public:
    enum class Kind : std::uint8_t { kNull, kBool, kNumber, kString, kArray, kObject };
    using NodeIndex = std::uint32_t;

    // A tree, or the syntax error; texts of 4 GB and more are refused.
    static JsonTree Parse(std::string_view text, std::optional<JsonSyntaxError>& error);

    NodeIndex Root() const { return 0; }
    Kind KindOf(NodeIndex node) const { return nodes_[node].kind; }
    bool BoolOf(NodeIndex node) const { return nodes_[node].flag; }
    double NumberOf(NodeIndex node) const { return nodes_[node].number; }
    // A string's value in UTF-8, its escapes decoded.
    std::string StringOf(NodeIndex node) const;
    bool StringEquals(NodeIndex node, std::string_view value) const;

    // Members of an object, elements of an array.
    std::size_t SizeOf(NodeIndex node) const { return nodes_[node].count; }
    NodeIndex ElementOf(NodeIndex array, std::size_t index) const;
    // The value of the object's member of that key (the last one when the key
    // repeats), or nothing.
    std::optional<NodeIndex> MemberOf(NodeIndex object, std::string_view key) const;

private:
    friend class JsonParser;

    struct Node {
        Kind kind = Kind::kNull;
        bool flag = false;        // a boolean's value; for a string, that it has escapes
        std::uint32_t count = 0;  // a container's members or elements
        std::uint32_t first = 0;  // a container's first entry in children_; a string's offset
        std::uint32_t length = 0; // a string's length in the text, without its quotes
        double number = 0;
    };

    std::string_view text_;
    std::vector<Node> nodes_;
    // For each container, its entries side by side: an array's element nodes,
    // an object's key and value nodes in turn.
    std::vector<NodeIndex> children_;
};

// A wrong value in a project file: where (a member path) and what is wrong.
class JsonValueError : public std::runtime_error {
public:
    JsonValueError(std::string path, const std::string& problem)
        : std::runtime_error(problem)
        , path_(std::move(path)) {}
    const std::string& GetPath() const { return path_; }

private:
    std::string path_;
};

// A JSON value and the member path that led to it, with typed reads that
// throw JsonValueError naming the path and what was expected.
//
// A member or element reader refers to the reader it came from and to the key
// it was asked for, and spells its path only when it fails: reading a large
// file builds no path strings. So a reader must not outlive its parent nor the
// key string, as holds for readers passed down a recursive descent.
class JsonReader {
public:
    // The reader of the tree's top-level value; path names that value (empty
    // for the top level). The tree must outlive the reader.
    JsonReader(const JsonTree& tree, std::string path)
        : tree_(&tree)
        , node_(tree.Root())
        , rootPath_(std::move(path)) {}

    std::string GetPath() const;
    bool IsNull() const { return tree_->KindOf(node_) == JsonTree::Kind::kNull; }

    // A member of an object; a missing member is an error.
    JsonReader Member(const char* key) const;
    // A member that may be left out; nothing when it is.
    std::optional<JsonReader> FindMember(const char* key) const;
    // The elements of an array; index must be below ArraySize.
    std::size_t ArraySize() const;
    JsonReader Element(std::size_t index) const;

    std::string String() const;
    // The same string without a conversion to UTF-8.
    QString QtString() const;
    bool Bool() const;
    // A JSON number that is a whole number within the range.
    std::int64_t Integer(std::int64_t min, std::int64_t max) const;
    // A JSON number within a float's range, rounded to the nearest float.
    float Float() const;
    // A whole number written as a decimal string, for 64-bit values a JSON
    // number would round.
    std::int64_t Int64String() const;
    // "numerator/denominator" with a positive denominator, both 64-bit.
    boost::rational<std::int64_t> RationalString() const;

    [[noreturn]] void Fail(const std::string& problem) const;

private:
    JsonReader(JsonTree::NodeIndex node, const JsonReader* parent, const char* key,
               std::size_t index)
        : tree_(parent->tree_)
        , node_(node)
        , parent_(parent)
        , key_(key)
        , index_(index) {}

    void Expect(JsonTree::Kind kind, const char* expected) const;

    const JsonTree* tree_;
    JsonTree::NodeIndex node_;
    const JsonReader* parent_ = nullptr; // null for the top-level reader
    const char* key_ = nullptr;          // the member's key; null for an array element
    std::size_t index_ = 0;              // the element's index in its array
    std::string rootPath_;               // the top-level reader's path
};

} // namespace platform::core

#include "JsonReader.h"

#include "JsonNumbers.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace platform::core {

// Recursive descent over the text, appending nodes in document order.
class JsonParser {
public:
    JsonParser(std::string_view text, JsonTree& tree)
        : text_(text)
        , tree_(tree) {}

    void ParseDocument() {
        SkipSpace();
        ParseValue(0);
        SkipSpace();
        if (at_ < text_.size()) {
            FailPastCurrent("garbage at the end of the document");
        }
    }

    struct Failure {
        JsonSyntaxError error;
    };

private:
    // Deep enough for any project file, shallow enough for the stack.
    static constexpr int kMaxDepth = 512;

    [[noreturn]] void FailPastCurrent(const char* problem) const {
        throw Failure{{std::min(at_ + 1, text_.size()), problem}};
    }

    bool AtEnd() const { return at_ >= text_.size(); }
    char Current() const { return text_[at_]; }

    void SkipSpace() {
        while (!AtEnd() &&
               (Current() == ' ' || Current() == '\n' || Current() == '\r' || Current() == '\t')) {
            ++at_;
        }
    }

    JsonTree::NodeIndex AddNode(JsonTree::Kind kind) {
        tree_.nodes_.push_back({});
        tree_.nodes_.back().kind = kind;
        return static_cast<JsonTree::NodeIndex>(tree_.nodes_.size() - 1);
    }

    JsonTree::NodeIndex ParseValue(int depth) {
        if (AtEnd()) {
            FailPastCurrent("illegal value");
        }
        switch (Current()) {
        case '{':
            return ParseContainer(depth, JsonTree::Kind::kObject);
        case '[':
            return ParseContainer(depth, JsonTree::Kind::kArray);
        case '"':
            return ParseString();
        case 't':
            return ParseLiteral("true", JsonTree::Kind::kBool, true);
        case 'f':
            return ParseLiteral("false", JsonTree::Kind::kBool, false);
        case 'n':
            return ParseLiteral("null", JsonTree::Kind::kNull, false);
        default:
            if (Current() == '-' || (Current() >= '0' && Current() <= '9')) {
                return ParseNumber();
            }
            FailPastCurrent("illegal value");
        }
    }

    JsonTree::NodeIndex ParseLiteral(std::string_view word, JsonTree::Kind kind, bool value) {
        if (text_.substr(at_, word.size()) != word) {
            FailPastCurrent("illegal value");
        }
        at_ += word.size();
        const JsonTree::NodeIndex node = AddNode(kind);
        tree_.nodes_[node].flag = value;
        return node;
    }

    bool SkipDigits() {
        const std::size_t start = at_;
        while (!AtEnd() && Current() >= '0' && Current() <= '9') {
            ++at_;
        }
        return at_ > start;
    }

    JsonTree::NodeIndex ParseNumber() {
        const std::size_t start = at_;
        if (Current() == '-') {
            ++at_;
        }
        const std::size_t integerStart = at_;
        if (!SkipDigits()) {
            FailPastCurrent("illegal number");
        }
        if (text_[integerStart] == '0' && at_ - integerStart > 1) {
            at_ = integerStart + 1; // a leading zero: the digit after it is wrong
            FailPastCurrent("illegal number");
        }
        if (!AtEnd() && Current() == '.') {
            ++at_;
            if (!SkipDigits()) {
                FailPastCurrent("illegal number");
            }
        }
        if (!AtEnd() && (Current() == 'e' || Current() == 'E')) {
            ++at_;
            if (!AtEnd() && (Current() == '+' || Current() == '-')) {
                ++at_;
            }
            if (!SkipDigits()) {
                FailPastCurrent("illegal number");
            }
        }
        double value = 0;
        const auto result = std::from_chars(text_.data() + start, text_.data() + at_, value);
        if (result.ec != std::errc() || !std::isfinite(value)) {
            // Well formed but beyond a double: the whole number is wrong.
            throw Failure{{at_, "illegal number"}};
        }
        const JsonTree::NodeIndex node = AddNode(JsonTree::Kind::kNumber);
        tree_.nodes_[node].number = value;
        return node;
    }

    // The length of the UTF-8 sequence starting at the current byte, checked
    // for overlong forms, surrogates and values past U+10FFFF; 0 if invalid.
    std::size_t Utf8SequenceLength() const {
        const auto byte = [this](std::size_t i) {
            return at_ + i < text_.size() ? static_cast<unsigned char>(text_[at_ + i]) : 0u;
        };
        const unsigned lead = byte(0);
        const auto continuation = [&byte](std::size_t i, unsigned low, unsigned high) {
            return byte(i) >= low && byte(i) <= high;
        };
        if (lead >= 0xC2 && lead <= 0xDF) {
            return continuation(1, 0x80, 0xBF) ? 2 : 0;
        }
        if (lead >= 0xE0 && lead <= 0xEF) {
            const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
            const unsigned high = lead == 0xED ? 0x9F : 0xBF;
            return continuation(1, low, high) && continuation(2, 0x80, 0xBF) ? 3 : 0;
        }
        if (lead >= 0xF0 && lead <= 0xF4) {
            const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
            const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
            return continuation(1, low, high) && continuation(2, 0x80, 0xBF) &&
                           continuation(3, 0x80, 0xBF)
                       ? 4
                       : 0;
        }
        return 0;
    }

    JsonTree::NodeIndex ParseString() {
        ++at_; // the opening quote
        const std::size_t start = at_;
        bool escaped = false;
        for (;;) {
            if (AtEnd()) {
                FailPastCurrent("unterminated string");
            }
            const auto byte = static_cast<unsigned char>(Current());
            if (byte == '"') {
                break;
            }
            if (byte < 0x20) {
                FailPastCurrent("illegal value");
            }
            if (byte == '\\') {
                escaped = true;
                ++at_;
                if (AtEnd() || Current() == '\0' || !std::strchr("\"\\/bfnrtu", Current())) {
                    FailPastCurrent("invalid escape sequence");
                }
                if (Current() == 'u') {
                    for (int digit = 0; digit < 4; ++digit) {
                        ++at_;
                        if (AtEnd() || !std::isxdigit(static_cast<unsigned char>(Current()))) {
                            FailPastCurrent("invalid escape sequence");
                        }
                    }
                }
                ++at_;
            } else if (byte < 0x80) {
                ++at_;
            } else {
                const std::size_t length = Utf8SequenceLength();
                if (length == 0) {
                    FailPastCurrent("invalid UTF8 string");
                }
                at_ += length;
            }
        }
        const JsonTree::NodeIndex node = AddNode(JsonTree::Kind::kString);
        JsonTree::Node& string = tree_.nodes_[node];
        string.flag = escaped;
        string.first = static_cast<std::uint32_t>(start);
        string.length = static_cast<std::uint32_t>(at_ - start);
        ++at_; // the closing quote
        return node;
    }

    JsonTree::NodeIndex ParseContainer(int depth, JsonTree::Kind kind) {
        if (depth >= kMaxDepth) {
            FailPastCurrent("too deeply nested document");
        }
        const bool isObject = kind == JsonTree::Kind::kObject;
        const char close = isObject ? '}' : ']';
        const char* const unterminated = isObject ? "unterminated object" : "unterminated array";
        const JsonTree::NodeIndex node = AddNode(kind);
        const std::size_t pendingStart = pending_.size();
        ++at_;
        SkipSpace();
        if (!AtEnd() && Current() == close) {
            ++at_;
        } else {
            for (;;) {
                if (isObject) {
                    if (AtEnd() || Current() != '"') {
                        FailPastCurrent(unterminated);
                    }
                    pending_.push_back(ParseString());
                    SkipSpace();
                    if (AtEnd() || Current() != ':') {
                        FailPastCurrent("missing name separator");
                    }
                    ++at_;
                    SkipSpace();
                }
                pending_.push_back(ParseValue(depth + 1));
                SkipSpace();
                if (AtEnd() || (Current() != ',' && Current() != close)) {
                    FailPastCurrent(unterminated);
                }
                if (text_[at_++] == close) {
                    break;
                }
                SkipSpace();
            }
        }
        const std::size_t entries = pending_.size() - pendingStart;
        JsonTree::Node& container = tree_.nodes_[node];
        container.first = static_cast<std::uint32_t>(tree_.children_.size());
        container.count = static_cast<std::uint32_t>(isObject ? entries / 2 : entries);
        tree_.children_.insert(tree_.children_.end(),
                               pending_.begin() + static_cast<std::ptrdiff_t>(pendingStart),
                               pending_.end());
        pending_.resize(pendingStart);
        return node;
    }

    std::string_view text_;
    JsonTree& tree_;
    std::size_t at_ = 0;
    // The entries of the containers being parsed, innermost last.
    std::vector<JsonTree::NodeIndex> pending_;
};

JsonTree JsonTree::Parse(std::string_view text, std::optional<JsonSyntaxError>& error) {
    JsonTree tree;
    error.reset();
    if (text.size() >= std::numeric_limits<std::uint32_t>::max()) {
        error = JsonSyntaxError{0, "too large document"};
        return tree;
    }
    tree.text_ = text;
    // A plain caption line holds about one value per 12 bytes.
    tree.nodes_.reserve(text.size() / 12 + 1);
    tree.children_.reserve(text.size() / 12 + 1);
    try {
        JsonParser(text, tree).ParseDocument();
    } catch (const JsonParser::Failure& failure) {
        error = failure.error;
        return JsonTree();
    }
    return tree;
}

namespace {

void AppendUtf8(std::uint32_t codePoint, std::string& out) {
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0 | (codePoint >> 6));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0 | (codePoint >> 12));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (codePoint >> 18));
        out += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

std::uint32_t HexQuad(std::string_view digits) {
    std::uint32_t value = 0;
    std::from_chars(digits.data(), digits.data() + 4, value, 16);
    return value;
}

// The raw text of a string the parser checked, its escapes decoded; an
// unpaired surrogate escape becomes U+FFFD.
std::string Unescape(std::string_view raw) {
    std::string out;
    out.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] != '\\') {
            out += raw[i];
            continue;
        }
        const char kind = raw[++i];
        if (kind != 'u') {
            constexpr std::string_view kFrom = "\"\\/bfnrt";
            constexpr std::string_view kTo = "\"\\/\b\f\n\r\t";
            out += kTo[kFrom.find(kind)];
            continue;
        }
        std::uint32_t codePoint = HexQuad(raw.substr(i + 1));
        i += 4;
        if (codePoint >= 0xD800 && codePoint <= 0xDBFF && raw.substr(i + 1, 2) == "\\u") {
            const std::uint32_t low = HexQuad(raw.substr(i + 3));
            if (low >= 0xDC00 && low <= 0xDFFF) {
                codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
                i += 6;
            }
        }
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            codePoint = 0xFFFD;
        }
        AppendUtf8(codePoint, out);
    }
    return out;
}

} // namespace

std::string JsonTree::StringOf(NodeIndex node) const {
    const Node& string = nodes_[node];
    const std::string_view raw = text_.substr(string.first, string.length);
    return string.flag ? Unescape(raw) : std::string(raw);
}

bool JsonTree::StringEquals(NodeIndex node, std::string_view value) const {
    const Node& string = nodes_[node];
    if (string.flag) {
        return StringOf(node) == value;
    }
    return text_.substr(string.first, string.length) == value;
}

JsonTree::NodeIndex JsonTree::ElementOf(NodeIndex array, std::size_t index) const {
    return children_[nodes_[array].first + index];
}

std::optional<JsonTree::NodeIndex> JsonTree::MemberOf(NodeIndex object,
                                                      std::string_view key) const {
    const Node& node = nodes_[object];
    std::optional<NodeIndex> found;
    for (std::uint32_t member = 0; member < node.count; ++member) {
        const std::size_t at = node.first + 2 * std::size_t{member};
        if (StringEquals(children_[at], key)) {
            found = children_[at + 1];
        }
    }
    return found;
}

std::string JsonReader::GetPath() const {
    if (!parent_) {
        return rootPath_;
    }
    std::string path = parent_->GetPath();
    if (!key_) {
        return path + "[" + std::to_string(index_) + "]";
    }
    return path.empty() ? std::string(key_) : path + "." + key_;
}

void JsonReader::Fail(const std::string& problem) const {
    throw JsonValueError(GetPath(), problem);
}

void JsonReader::Expect(JsonTree::Kind kind, const char* expected) const {
    if (tree_->KindOf(node_) != kind) {
        Fail(expected);
    }
}

JsonReader JsonReader::Member(const char* key) const {
    std::optional<JsonReader> member = FindMember(key);
    if (!member) {
        JsonReader(node_, this, key, 0).Fail("missing");
    }
    return *member;
}

std::optional<JsonReader> JsonReader::FindMember(const char* key) const {
    Expect(JsonTree::Kind::kObject, "expected an object");
    const std::optional<JsonTree::NodeIndex> found = tree_->MemberOf(node_, key);
    if (!found) {
        return std::nullopt;
    }
    return JsonReader(*found, this, key, 0);
}

std::size_t JsonReader::ArraySize() const {
    Expect(JsonTree::Kind::kArray, "expected an array");
    return tree_->SizeOf(node_);
}

JsonReader JsonReader::Element(std::size_t index) const {
    Expect(JsonTree::Kind::kArray, "expected an array");
    return JsonReader(tree_->ElementOf(node_, index), this, nullptr, index);
}

std::string JsonReader::String() const {
    Expect(JsonTree::Kind::kString, "expected a string");
    return tree_->StringOf(node_);
}

QString JsonReader::QtString() const {
    return QString::fromStdString(String());
}

bool JsonReader::Bool() const {
    Expect(JsonTree::Kind::kBool, "expected true or false");
    return tree_->BoolOf(node_);
}

std::int64_t JsonReader::Integer(std::int64_t min, std::int64_t max) const {
    Expect(JsonTree::Kind::kNumber, "expected a number");
    const double number = tree_->NumberOf(node_);
    if (number != std::floor(number) || number < static_cast<double>(min) ||
        number > static_cast<double>(max)) {
        Fail("expected a whole number from " + std::to_string(min) + " to " + std::to_string(max));
    }
    return static_cast<std::int64_t>(number);
}

float JsonReader::Float() const {
    Expect(JsonTree::Kind::kNumber, "expected a number");
    const auto narrowed = NarrowToFloat(tree_->NumberOf(node_));
    if (!narrowed) {
        Fail("number beyond the range of a 32-bit float");
    }
    return *narrowed;
}

std::int64_t JsonReader::Int64String() const {
    const auto parsed = ParseInt64(String());
    if (!parsed) {
        Fail("expected a whole number in a string, within 64 bits");
    }
    return *parsed;
}

boost::rational<std::int64_t> JsonReader::RationalString() const {
    const auto parsed = ParseRational(String());
    if (!parsed) {
        Fail("expected \"numerator/denominator\" with a positive denominator, within 64 bits");
    }
    return *parsed;
}

} // namespace platform::core

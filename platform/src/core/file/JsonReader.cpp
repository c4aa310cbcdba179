#include "JsonReader.h"

#include "JsonNumbers.h"

#include <cmath>
#include <limits>

namespace platform::core {
namespace {

// Parses the text into the parser's tape; the error code, if it failed.
simdjson::error_code ParseInto(simdjson::dom::parser& parser, std::string_view text,
                               simdjson::dom::element& root) {
    return parser.parse(text.data(), text.size(), true).get(root);
}

} // namespace

// simdjson says only what kind of error it met: a text it refuses is scanned
// again byte by byte for the place and the reason, which costs nothing on
// the texts that parse.
JsonTree JsonTree::Parse(std::string_view text, std::optional<JsonSyntaxError>& error) {
    JsonTree tree;
    error.reset();
    if (text.size() >= std::numeric_limits<std::uint32_t>::max()) {
        error = JsonSyntaxError{0, "too large document"};
        return tree;
    }
    tree.parser_ = std::make_unique<simdjson::dom::parser>();
    simdjson::error_code code = tree.parser_->allocate(text.size(), kMaxJsonDepth);
    if (!code) {
        code = ParseInto(*tree.parser_, text, tree.root_);
    }
    if (code == simdjson::STRING_ERROR) {
        // simdjson refuses escapes of unpaired surrogates, which a UTF-16
        // text written out holds when it held such a unit.
        std::string replaced(text);
        if (ReplaceLoneSurrogateEscapes(replaced)) {
            code = ParseInto(*tree.parser_, replaced, tree.root_);
        }
    }
    if (code) {
        error = FindJsonSyntaxError(text);
        if (!error) {
            error = JsonSyntaxError{0, simdjson::error_message(code)};
        }
        return JsonTree();
    }
    return tree;
}

std::string JsonReader::GetPath() const {
    if (!parent_) {
        return std::string(rootPath_);
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

JsonReader JsonReader::Member(const char* key) const {
    std::optional<JsonReader> member = FindMember(key);
    if (!member) {
        JsonReader(value_, this, key, 0).Fail("missing");
    }
    return *member;
}

std::optional<JsonReader> JsonReader::FindMember(const char* key) const {
    const std::string_view wanted(key);
    std::optional<simdjson::dom::element> found;
    for (const simdjson::dom::key_value_pair member : Object()) {
        if (member.key == wanted) {
            found = member.value;
        }
    }
    if (!found) {
        return std::nullopt;
    }
    return JsonReader(*found, this, key, 0);
}

simdjson::dom::object JsonReader::Object() const {
    simdjson::dom::object object;
    if (value_.get_object().get(object)) {
        Fail("expected an object");
    }
    return object;
}

simdjson::dom::array JsonReader::Array() const {
    simdjson::dom::array array;
    if (value_.get_array().get(array)) {
        Fail("expected an array");
    }
    return array;
}

std::size_t JsonReader::ArraySize() const {
    const simdjson::dom::array array = Array();
    // The tape counts elements up to 0xFFFFFF and no further.
    if (array.size() < 0xFFFFFF) {
        return array.size();
    }
    std::size_t count = 0;
    for (auto element = array.begin(); element != array.end(); ++element) {
        ++count;
    }
    return count;
}

JsonReader JsonReader::Element(std::size_t index) const {
    simdjson::dom::element element;
    if (Array().at(index).get(element)) {
        Fail("no element " + std::to_string(index));
    }
    return JsonReader(element, this, nullptr, index);
}

std::string_view JsonReader::StringView() const {
    std::string_view string;
    if (value_.get_string().get(string)) {
        Fail("expected a string");
    }
    return string;
}

std::string JsonReader::String() const {
    return std::string(StringView());
}

bool JsonReader::Bool() const {
    bool value = false;
    if (value_.get_bool().get(value)) {
        Fail("expected true or false");
    }
    return value;
}

// Whole numbers come as 64-bit integers, rounded here as a decimal reading
// rounds them, so that every number reads as the double nearest its text.
double JsonReader::Number() const {
    double number = 0;
    if (value_.get_double().get(number)) {
        Fail("expected a number");
    }
    return number;
}

std::int64_t JsonReader::Integer(std::int64_t min, std::int64_t max) const {
    const double number = Number();
    if (number != std::floor(number) || number < static_cast<double>(min) ||
        number > static_cast<double>(max)) {
        Fail("expected a whole number from " + std::to_string(min) + " to " + std::to_string(max));
    }
    return static_cast<std::int64_t>(number);
}

float JsonReader::Float() const {
    const auto narrowed = NarrowToFloat(Number());
    if (!narrowed) {
        Fail("number beyond the range of a 32-bit float");
    }
    return *narrowed;
}

std::int64_t JsonReader::Int64String() const {
    const auto parsed = ParseInt64(StringView());
    if (!parsed) {
        Fail("expected a whole number in a string, within 64 bits");
    }
    return *parsed;
}

boost::rational<std::int64_t> JsonReader::RationalString() const {
    const auto parsed = ParseRational(StringView());
    if (!parsed) {
        Fail("expected \"numerator/denominator\" with a positive denominator, within 64 bits");
    }
    return *parsed;
}

} // namespace platform::core

#include "webvtt/VttCueText.h"

#include "common/CharacterReference.h"
#include "webvtt/VttColorClasses.h"
#include "webvtt/VttScanner.h"

#include <algorithm>

namespace captionformats::webvtt {

using zelcaptioning::TextSpanAttributes;

namespace {

// Whitespace trimmed at both ends and collapsed to single spaces inside.
std::string CollapseWhitespace(std::string_view text) {
    std::string collapsed;
    bool pendingSpace = false;
    for (char c : text) {
        if (IsVttWhitespace(c)) {
            pendingSpace = !collapsed.empty();
        } else {
            if (pendingSpace) {
                collapsed += ' ';
                pendingSpace = false;
            }
            collapsed += c;
        }
    }
    return collapsed;
}

bool IsKnownElement(std::string_view name) {
    for (std::string_view known : {"c", "i", "b", "u", "ruby", "rt", "v", "lang"}) {
        if (name == known) {
            return true;
        }
    }
    return false;
}

} // namespace

SourceLocation VttCueText::Here() {
    // Tokens only move forward, so the line count carries on from the last call.
    for (; scannedTo_ < tokenStart_; ++scannedTo_) {
        if (text_[scannedTo_] == '\n') {
            ++scannedLines_;
            lineStart_ = scannedTo_ + 1;
        }
    }
    return SourceLocation::AtLine(firstLineNumber_ + scannedLines_, tokenStart_ - lineStart_ + 1);
}

VttCueText::Token VttCueText::NextToken() {
    enum class State { kData, kTag, kStartTag, kClass, kAnnotation, kEndTag, kTimestamp };
    State state = State::kData;
    Token token;
    std::string buffer;
    tokenStart_ = position_;
    while (position_ < text_.size()) {
        const char c = text_[position_];
        switch (state) {
        case State::kData:
            if (c == '&') {
                if (const auto reference = DecodeCharacterReference(text_.substr(position_))) {
                    token.value += reference->utf8;
                    position_ += reference->length;
                    continue;
                }
                token.value += c;
            } else if (c == '<') {
                if (!token.value.empty()) {
                    return token;
                }
                state = State::kTag;
            } else {
                token.value += c;
            }
            break;
        case State::kTag:
            if (IsVttWhitespace(c)) {
                token.kind = Token::Kind::kStartTag;
                state = State::kAnnotation;
            } else if (c == '.') {
                token.kind = Token::Kind::kStartTag;
                state = State::kClass;
            } else if (c == '/') {
                token.kind = Token::Kind::kEndTag;
                state = State::kEndTag;
            } else if (IsAsciiDigit(c)) {
                token.kind = Token::Kind::kTimestamp;
                token.value += c;
                state = State::kTimestamp;
            } else if (c == '>') {
                ++position_;
                token.kind = Token::Kind::kStartTag;
                return token;
            } else {
                token.kind = Token::Kind::kStartTag;
                token.value += c;
                state = State::kStartTag;
            }
            break;
        case State::kStartTag:
            if (IsVttWhitespace(c)) {
                state = State::kAnnotation;
            } else if (c == '.') {
                state = State::kClass;
            } else if (c == '>') {
                ++position_;
                return token;
            } else {
                token.value += c;
            }
            break;
        case State::kClass:
            if (IsVttWhitespace(c) || c == '.' || c == '>') {
                token.classes.push_back(std::move(buffer));
                buffer.clear();
                if (c == '>') {
                    ++position_;
                    return token;
                }
                if (c != '.') {
                    state = State::kAnnotation;
                }
            } else {
                buffer += c;
            }
            break;
        case State::kAnnotation:
            if (c == '>') {
                ++position_;
                token.annotation = CollapseWhitespace(buffer);
                return token;
            }
            buffer += c;
            break;
        case State::kEndTag:
        case State::kTimestamp:
            if (c == '>') {
                ++position_;
                return token;
            }
            token.value += c;
            break;
        }
        ++position_;
    }
    if (state == State::kClass) {
        token.classes.push_back(std::move(buffer));
    } else if (state == State::kAnnotation) {
        token.annotation = CollapseWhitespace(buffer);
    } else if (state == State::kTag) {
        token.kind = Token::Kind::kStartTag;
    }
    return token;
}

TextSpanAttributes VttCueText::CurrentAttributes() const {
    TextSpanAttributes attributes;
    for (const OpenElement& element : open_) {
        if (element.name == "b") {
            attributes.SetBolded(true);
        } else if (element.name == "i") {
            attributes.SetItalicized(true);
        } else if (element.name == "u") {
            attributes.SetUnderlined(true);
        }
        for (const std::string& name : element.classes) {
            if (const auto text = ColorOfClass(name)) {
                attributes.textColor = *text;
            } else if (const auto background =
                           name.starts_with("bg_") ? ColorOfClass(name.substr(3)) : std::nullopt) {
                attributes.backgroundColor = *background;
            }
        }
    }
    return attributes;
}

void VttCueText::AddText(std::string_view text) {
    std::size_t start = 0;
    while (true) {
        const std::size_t newline = text.find('\n', start);
        builder_.Append(text.substr(start, newline - start), CurrentAttributes());
        if (newline == std::string_view::npos) {
            return;
        }
        builder_.BreakLine();
        start = newline + 1;
    }
}

void VttCueText::StartElement(Token token) {
    if (!IsKnownElement(token.value)) {
        log_.Warn(Here(), "unknown tag <" + token.value + "> ignored");
        return;
    }
    if (token.value == "rt") {
        if (open_.empty() || open_.back().name != "ruby") {
            log_.Warn(Here(), "<rt> outside <ruby> ignored");
            return;
        }
        builder_.Append(" (", CurrentAttributes());
    } else if (token.value == "v" && !token.annotation.empty()) {
        log_.Warn(Here(), "voice \"" + token.annotation + "\" dropped (its text is kept)");
    }
    if (open_.size() >= kMaxOpenElements) {
        if (!reportedDepth_) {
            log_.Warn(Here(), "tags nested deeper than " + std::to_string(kMaxOpenElements) +
                                  " levels ignored");
            reportedDepth_ = true;
        }
        return;
    }
    open_.push_back({std::move(token.value), std::move(token.classes)});
}

void VttCueText::EndElement(const std::string& name) {
    auto pop = [this] {
        if (open_.back().name == "rt") {
            builder_.Append(")", CurrentAttributes());
        }
        open_.pop_back();
    };
    if (!open_.empty() && open_.back().name == name) {
        pop();
    } else if (name == "ruby" && !open_.empty() && open_.back().name == "rt") {
        pop();
        pop();
    }
}

void VttCueText::Parse(std::string_view text) {
    text_ = text;
    position_ = 0;
    scannedTo_ = 0;
    scannedLines_ = 0;
    lineStart_ = 0;
    reportedDepth_ = false;
    open_.clear();
    bool rubyReported = false;
    bool timestampReported = false;
    while (position_ < text_.size()) {
        Token token = NextToken();
        switch (token.kind) {
        case Token::Kind::kText:
            AddText(token.value);
            break;
        case Token::Kind::kStartTag:
            if (token.value == "ruby" && !rubyReported) {
                log_.Warn(Here(), "ruby text kept in parentheses after its base");
                rubyReported = true;
            }
            StartElement(std::move(token));
            break;
        case Token::Kind::kEndTag:
            EndElement(token.value);
            break;
        case Token::Kind::kTimestamp:
            if (!timestampReported) {
                log_.Warn(Here(), "timestamp tags dropped (the text shows at the cue's start)");
                timestampReported = true;
            }
            break;
        }
    }
    while (!open_.empty()) {
        EndElement(open_.back().name);
    }
}

} // namespace captionformats::webvtt

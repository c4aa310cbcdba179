#pragma once

#include "zelcaptioning/RefCounted.h"
#include "zelcaptioning/TextSpanAttributes.h"

#include <boost/intrusive_ptr.hpp>

#include <utility>

namespace zelcaptioning {

// A run of text in one character style.
class CaptionTextSpan : public RefCounted {
public:
    CaptionTextSpan() = default;
    CaptionTextSpan(zelcore::UTF16String text, const TextSpanAttributes& attributes)
        : text_(std::move(text))
        , attributes_(attributes) {}
    ~CaptionTextSpan() override = default;

    // A new span with the same text and attributes.
    boost::intrusive_ptr<CaptionTextSpan> Clone() const;

    zelcore::UTF16String GetCaptionText() const { return text_; }
    void SetCaptionText(const zelcore::UTF16String& text) { text_ = text; }
    // Length in UTF-16 code units, without copying the text.
    std::uint64_t GetTextLength() const { return text_.size(); }

    TextSpanAttributes GetTextSpanStyleAttributes() const { return attributes_; }
    void SetTextSpanStyleAttributes(const TextSpanAttributes& attributes) {
        attributes_ = attributes;
    }
    // Read without a copy, for comparisons on hot paths.
    const TextSpanAttributes& StyleAttributes() const { return attributes_; }

private:
    zelcore::UTF16String text_;
    TextSpanAttributes attributes_;
};

using CaptionTextSpanPtr = boost::intrusive_ptr<CaptionTextSpan>;

std::ostream& operator<<(std::ostream& os, const CaptionTextSpan& span);

} // namespace zelcaptioning

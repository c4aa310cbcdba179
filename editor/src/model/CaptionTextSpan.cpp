#include "zelcaptioning/CaptionTextSpan.h"

#include <ostream>

namespace zelcaptioning {

CaptionTextSpanPtr CaptionTextSpan::Clone() const {
    return new CaptionTextSpan(text_, attributes_);
}

std::ostream& operator<<(std::ostream& os, const CaptionTextSpan& span) {
    return os << span.GetCaptionText() << span.StyleAttributes();
}

} // namespace zelcaptioning

#pragma once

#include "zelcaptioning/CaptionTextParagraph.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelmediatypes/TickTime.h"

#include <limits>
#include <utility>
#include <vector>

namespace zelcaptioning {

// One caption: a time range, a caption type and its paragraphs (lines).
// Copying is deep: the copy owns new paragraphs and spans.
class Caption : public RefCounted {
public:
    // GetTextBlock's first index when the paragraph belongs to no block.
    static constexpr std::uint64_t kNoBlock = std::numeric_limits<std::uint64_t>::max();

    Caption() = default;
    Caption(const Caption& other);
    Caption& operator=(const Caption& other);
    ~Caption() override = default;

    zelmediatypes::TickTime GetBeginTime() const { return begin_; }
    zelmediatypes::TickTime GetEndTime() const { return end_; }
    void SetBeginTime(const zelmediatypes::TickTime& begin) { begin_ = begin; }
    void SetEndTime(const zelmediatypes::TickTime& end) { end_ = end; }

    CaptionType GetCaptionType() const { return type_; }
    void SetCaptionType(CaptionType type) { type_ = type; }

    std::uint64_t GetNumParagraphs() const { return paragraphs_.size(); }
    CaptionTextParagraphPtr GetCaptionTextParagraph(std::uint64_t index) const {
        return paragraphs_[index];
    }
    void GetCaptionTextParagraphs(std::vector<CaptionTextParagraphPtr>& paragraphs) const {
        paragraphs = paragraphs_;
    }
    void AppendCaptionTextParagraph(const CaptionTextParagraphPtr& paragraph) {
        paragraphs_.push_back(paragraph);
    }
    // Replaces every paragraph at once, taking over the vector.
    void SetCaptionTextParagraphs(std::vector<CaptionTextParagraphPtr> paragraphs) {
        paragraphs_ = std::move(paragraphs);
    }
    // Inserts before the paragraph at `index`; an index past the end appends.
    void InsertCaptionTextParagraph(std::uint64_t index, const CaptionTextParagraphPtr& paragraph);
    // Removes the paragraph by identity; one that is not here is ignored.
    void RemoveCaptionTextParagraph(const CaptionTextParagraphPtr& paragraph);

    // Lays the lines out in an area of width × height pixels and returns whether
    // any position changed; does nothing for an area without size. Consecutive
    // paragraphs with the same grid anchor (0 to 8) form a block: the block, as
    // wide as its widest line and as high as its lines together, stands at the
    // anchor's corner, edge midpoint or centre of the area, and each line within
    // it is placed by its alignment (left edges, centres or right edges).
    // A free paragraph (anchor 9) keeps its position; an unplaced free paragraph
    // stands directly below the paragraph before it in its block, or at the
    // bottom centre when it starts the block.
    bool UpdateLinePositions(std::int64_t width, std::int64_t height);

    // The anchor of the cell of the area (split in thirds each way) holding the
    // centre of the placed lines' union; every placed paragraph takes it. Returns
    // kAnchorID_None, changing nothing, when no paragraph is placed.
    AnchorID UpdateAnchorIDFromPosition(std::int64_t width, std::int64_t height);

    // The block of `index`: the run of consecutive placed paragraphs with its
    // anchor whose lines follow each other vertically (each line's top within
    // one line height below the previous line's top, in an area `height` high).
    // first is kNoBlock when the paragraph does not exist or is unplaced.
    void GetTextBlock(std::uint64_t index, std::int64_t height, std::uint64_t& first,
                      std::uint64_t& last) const;

    // Moves the placed paragraphs first..last by `amount` pixels, upwards when
    // `up`, each kept within an area `height` high.
    void MoveParagraphsVertically(std::uint64_t first, std::uint64_t last, bool up,
                                  std::uint64_t amount, std::int64_t height);

    // The caption's text: its paragraphs' texts joined by line feeds.
    zelcore::UTF16String GetPlainText() const;

private:
    zelmediatypes::TickTime begin_;
    zelmediatypes::TickTime end_;
    CaptionType type_ = kCaptionType_None;
    std::vector<CaptionTextParagraphPtr> paragraphs_;
};

using CaptionPtr = boost::intrusive_ptr<Caption>;

std::ostream& operator<<(std::ostream& os, const Caption& caption);

} // namespace zelcaptioning

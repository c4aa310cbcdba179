#pragma once

// Random edits of a caption, driven by any source of choices (a seeded
// generator in the tests, the fuzzer's bytes in the harness), with a plain
// string kept beside the editor as the model of its text.
#include "caption_editor/CaptionTextEditor.h"

#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace test {

class EditingScript {
public:
    // Returns a number from low to high, both included.
    using Choose = std::function<std::uint64_t(std::uint64_t low, std::uint64_t high)>;

    static constexpr int kRows = 15;

    explicit EditingScript(Choose choose)
        : choose_(std::move(choose)) {}

    // Hands the editor a random caption of grid or pixel layout.
    void Start() {
        pixel_ = Chance(4);
        host_ = RandomCaption();
        hostBefore_ = Describe(*host_);
        editor_.SetCaption(host_, 32, kRows, pixel_ ? 1920 : 0, pixel_ ? 1080 : 0);
        saved_ = Describe(*editor_.GetSavedCaption());
        reference_ = host_->GetPlainText();
    }

    // Performs one random operation on the editor and the model; returns its name.
    std::string Step();

    // The first broken rule, or an empty string: the text equals the model, every
    // paragraph keeps a span, grid lines stay on the grid, a style operation
    // leaves no equal neighbours, a block move keeps the block's shape, and neither the host
    // caption nor the saved copy changed.
    std::string Check() const;

    // Reverts and tells whether the working copy equals the saved copy again.
    std::string CheckRevert() {
        editor_.SetModified(true);
        if (!editor_.Revert()) {
            return "revert refused";
        }
        const std::string working = Describe(*editor_.GetCaption());
        return working == saved_ ? "" : "after revert " + working + " differs from " + saved_;
    }

    static std::string Describe(const zelcaptioning::Caption& caption) {
        std::ostringstream os;
        os << caption;
        return os.str();
    }

private:
    bool Chance(int oneIn) { return choose_(0, static_cast<std::uint64_t>(oneIn - 1)) == 0; }
    zelcore::UTF16String RandomText(std::uint64_t maxLength, bool lineFeeds);
    zelcaptioning::TextSpanAttributes RandomStyle();
    zelcaptioning::CaptionPtr RandomCaption();
    std::string StyleStep(std::uint64_t start, std::uint64_t end);
    std::vector<zelcaptioning::Position> Positions() const;
    // Empty when every line that moved since `before` moved by the same amount,
    // a placed line moved and the layout is the grid.
    std::string BlockMoveProblem(const std::vector<zelcaptioning::Position>& before) const;

    Choose choose_;
    caption_editor::CaptionTextEditor editor_;
    zelcaptioning::CaptionPtr host_;
    std::string hostBefore_;
    std::string saved_;
    zelcore::UTF16String reference_;
    bool pixel_ = false;
    bool lastWasStyle_ = false;
    std::string blockMoveProblem_;
};

} // namespace test

#include "EditingScript.inl"

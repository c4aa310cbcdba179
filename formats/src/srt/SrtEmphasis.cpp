#include "srt/SrtEmphasis.h"

#include "common/ByteScan.h"

#include <bit>

namespace captionformats::srt {

namespace {

// Appends what the writers write for one line to `out`, copying the line's
// own bytes in as few pieces as it can: wherever what is written is the
// line's bytes at that place, tags included, as it mostly is, the bytes are
// gathered and copied at once.
class LineCopier {
public:
    LineCopier(std::string& out, std::string_view line)
        : out_(out)
        , line_(line) {}

    // Text of the line: `piece` points into it.
    void Text(std::string_view piece) {
        const auto at = static_cast<std::size_t>(piece.data() - line_.data());
        if (at != matched_) {
            Flush();
            start_ = at;
        }
        matched_ = at + piece.size();
    }

    // Bytes of the writers' own, such as tags: the line's where it holds them
    // at the place reached.
    void Own(std::string_view piece) {
        if (!HoldsAt(matched_, piece)) {
            Flush();
            out_ += piece;
            start_ = matched_ = kNowhere;
            return;
        }
        matched_ += piece.size();
    }

    // A '>' of the line, escaped by `escape`.
    void Escaped(std::string_view piece, void (*escape)(std::string&, std::string_view)) {
        Flush();
        escape(out_, piece);
        start_ = matched_ = kNowhere;
    }

    // Appends the line's bytes gathered last.
    void Flush() {
        if (matched_ != kNowhere) {
            out_.append(line_.data() + start_, matched_ - start_);
        }
    }

private:
    static constexpr std::size_t kNowhere = ~std::size_t{0};

    // Whether the line holds `piece` at `at`; tags are a few bytes, compared
    // in place.
    bool HoldsAt(std::size_t at, std::string_view piece) const {
        if (at == kNowhere || line_.size() - at < piece.size()) {
            return false;
        }
        for (std::size_t i = 0; i < piece.size(); ++i) {
            if (line_[at + i] != piece[i]) {
                return false;
            }
        }
        return true;
    }

    std::string& out_;
    std::string_view line_;
    std::size_t start_ = 0;
    std::size_t matched_ = 0;
};

// Writes one trimmed line through `copier` as the cue writers write what
// SrtCueText reads from it: the text between tags in runs of one emphasis,
// each inside the tags AppendInStyleTags gives it, a '>' escaped. False for
// a line AppendEmphasisLines declines; what was written is then to be undone.
bool WriteEmphasisLine(std::string_view text, EmphasisDepths& depths, LineCopier& copier,
                       void (*escape)(std::string&, std::string_view)) {
    // The run being written: text in the same emphasis joins it.
    constexpr Emphasis kNoRun = ~Emphasis{0};
    Emphasis run = kNoRun;
    auto startRun = [&] {
        const Emphasis emphasis = depths.Current();
        if (run != emphasis) {
            if (run != kNoRun && run != 0) {
                copier.Own(kClosingTags[run & 7]);
            }
            run = emphasis;
            if (emphasis != 0) {
                copier.Own(kOpeningTags[emphasis & 7]);
            }
        }
    };
    for (std::size_t start = 0;;) {
        const std::size_t at = FindFirstOf<'<', '{', '&', '>'>(text, start);
        if (at > start) {
            startRun();
            copier.Text(text.substr(start, at - start));
        }
        if (at == text.size()) {
            break;
        }
        if (text[at] == '>') {
            startRun();
            copier.Escaped(text.substr(at, 1), escape);
            start = at + 1;
            continue;
        }
        const auto tag = text[at] == '<' ? ReadEmphasisTag(text.substr(at)) : std::nullopt;
        if (!tag) {
            return false;
        }
        depths.Change(tag->name, tag->closing);
        start = at + tag->length;
    }
    if (run == kNoRun) {
        return false;
    }
    if (run != 0) {
        copier.Own(kClosingTags[run & 7]);
    }
    copier.Flush();
    return true;
}

// Whether what the writers write for a trimmed line, with no emphasis open
// before it, is the line itself, as it is for most lines, told in one look at
// its markup: text, or text between pairs of lowercase emphasis tags, neither
// nested nor around nothing, and no other markup. Lines of up to 64 bytes
// only; a line not told so here may still be written as it stands.
bool PlainlyAsItStands(std::string_view text) {
    if (text.empty() || text.size() > 64) {
        return false;
    }
    std::uint64_t markup = WantedBits<'<', '{', '&', '>'>(text);
    char open = 0;        // the letter of the tag open, if any
    std::size_t rest = 0; // where the text after the last tag starts
    while (markup != 0) {
        const auto at = static_cast<std::size_t>(std::countr_zero(markup));
        if (text[at] != '<' || (at == rest && rest > 0)) {
            return false;
        }
        if (open == 0) {
            const char name = at + 2 < text.size() ? text[at + 1] : '\0';
            if ((name != 'b' && name != 'i' && name != 'u') || text[at + 2] != '>') {
                return false;
            }
            open = name;
            rest = at + 3;
        } else {
            if (at + 3 >= text.size() || text[at + 1] != '/' || text[at + 2] != open ||
                text[at + 3] != '>') {
                return false;
            }
            open = 0;
            rest = at + 4;
        }
        // The tag's own '>' is no further markup.
        markup &= rest < 64 ? ~std::uint64_t{0} << rest : 0;
    }
    return open == 0;
}

} // namespace

bool AppendEmphasisLines(std::string& out, std::span<const TextLine> lines,
                         void (*escape)(std::string&, std::string_view)) {
    const std::size_t mark = out.size();
    EmphasisDepths depths;
    for (const TextLine& line : lines) {
        std::string_view text = line.text;
        while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
            text.remove_suffix(1);
        }
        if (depths.Current() == 0 && PlainlyAsItStands(text)) {
            out += text;
            out += '\n';
            continue;
        }
        LineCopier copier(out, text);
        if (!WriteEmphasisLine(text, depths, copier, escape)) {
            out.resize(mark);
            return false;
        }
        out += '\n';
    }
    return true;
}

} // namespace captionformats::srt

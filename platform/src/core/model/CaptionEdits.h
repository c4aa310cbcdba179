#pragma once

#include "BE/CaptionMessages.h"
#include "CaptioningStream.h"
#include "KSL/InterfaceRef.h"
#include "ModelEdit.h"

#include <boost/intrusive_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace platform::core {

enum class Membership { kAdd, kRemove };

// Adds a caption object to a stream, or removes it; the reverse does the
// other. A caption taken back keeps its arrival in the stream, so it returns
// to its place among captions with equal begin times. An added caption takes
// the given arrival, or one later than every caption's.
class CaptionMembershipEdit final : public ModelEdit {
public:
    CaptionMembershipEdit(KSL::InterfaceRef<CaptioningStream> stream,
                          boost::intrusive_ptr<zelcaptioning::Caption> caption, Membership applied,
                          std::optional<std::uint64_t> arrival = std::nullopt);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

private:
    bool Insert();
    bool Remove();
    // The caption's addition, with the index its arrival gives it, or its removal.
    std::string DescribeInsert() const;
    std::string DescribeRemove() const;

    KSL::InterfaceRef<CaptioningStream> stream_;
    boost::intrusive_ptr<zelcaptioning::Caption> caption_;
    Membership applied_;
    std::optional<std::uint64_t> arrival_;
};

// Gives a caption of the stream the content of another (times included) and
// moves it to its place in the order; the reverse gives the old content back.
class ReplaceCaptionEdit final : public ModelEdit {
public:
    ReplaceCaptionEdit(KSL::InterfaceRef<CaptioningStream> stream,
                       boost::intrusive_ptr<zelcaptioning::Caption> target,
                       const zelcaptioning::Caption& newContent);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override { return Describe(); }

private:
    bool SwapContent();

    KSL::InterfaceRef<CaptioningStream> stream_;
    boost::intrusive_ptr<zelcaptioning::Caption> target_;
    // The content the next swap puts into the target; it receives the target's.
    boost::intrusive_ptr<zelcaptioning::Caption> otherContent_;
};

// Removes a caption and moves every caption that begins at or after its end
// earlier by its duration. The reverse restores the times and order of every
// caption from the removed one's index on.
class RippleRemoveCaptionEdit final : public ModelEdit {
public:
    RippleRemoveCaptionEdit(KSL::InterfaceRef<CaptioningStream> stream,
                            boost::intrusive_ptr<zelcaptioning::Caption> caption);
    // The edit as if it had removed the caption at the index of the stream,
    // which held tailBefore from there on, so that Revert restores them.
    static std::unique_ptr<RippleRemoveCaptionEdit>
    Applied(KSL::InterfaceRef<CaptioningStream> stream,
            boost::intrusive_ptr<zelcaptioning::Caption> caption, std::size_t index,
            std::vector<CaptioningStream::Entry> tailBefore);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

private:
    KSL::InterfaceRef<CaptioningStream> stream_;
    boost::intrusive_ptr<zelcaptioning::Caption> caption_;
    std::size_t index_ = 0;
    // The stream's entries from index_ on, as they were before the removal.
    std::vector<CaptioningStream::Entry> tailBefore_;
};

// Broadcasts one caption's change on its stream's station.
void AnnounceCaptionChange(const KSL::InterfaceRef<CaptioningStream>& stream,
                           boost::intrusive_ptr<zelcaptioning::Caption> caption,
                           BE::CaptionChangeKind kind, const zelmediatypes::TickTime& oldBeginTime);

} // namespace platform::core

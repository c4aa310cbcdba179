#pragma once

#include "Bin.h"
#include "CaptionEdits.h"
#include "MasterClip.h"
#include "ModelEdit.h"
#include "Sequence.h"

#include <cstddef>
#include <optional>

namespace platform::core {

class Project;

// Appends a bin to the project; the reverse removes it again.
class AddBinEdit final : public ModelEdit {
public:
    AddBinEdit(Project& project, KSL::InterfaceRef<Bin> bin);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

private:
    Project& project_;
    KSL::InterfaceRef<Bin> bin_;
};

// Adds a master clip to a bin (at the index, or the end) or removes it;
// removal also closes it everywhere (MZ::MasterClipClosedMessage). A clip
// taken back returns to its old index.
class ClipMembershipEdit final : public ModelEdit {
public:
    ClipMembershipEdit(KSL::InterfaceRef<Bin> bin, KSL::InterfaceRef<MasterClip> clip,
                       Membership applied, std::optional<std::size_t> index = std::nullopt);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

private:
    bool Insert();
    bool Remove();
    // The clip with its settings and streams at its index, or its removal.
    std::string DescribeInsert() const;
    std::string DescribeRemove() const;

    KSL::InterfaceRef<Bin> bin_;
    KSL::InterfaceRef<MasterClip> clip_;
    Membership applied_;
    std::size_t index_;
};

// Inserts a sequence into a bin at the index, or appends it; the reverse
// removes it again.
class AddSequenceEdit final : public ModelEdit {
public:
    AddSequenceEdit(KSL::InterfaceRef<Bin> bin, KSL::InterfaceRef<Sequence> sequence,
                    std::optional<std::size_t> index = std::nullopt);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

private:
    KSL::InterfaceRef<Bin> bin_;
    KSL::InterfaceRef<Sequence> sequence_;
    std::optional<std::size_t> index_;
};

// Takes a sequence out of its bin; the reverse puts it back at its old index.
class RemoveSequenceEdit final : public ModelEdit {
public:
    RemoveSequenceEdit(KSL::InterfaceRef<Bin> bin, KSL::InterfaceRef<Sequence> sequence);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

private:
    KSL::InterfaceRef<Bin> bin_;
    KSL::InterfaceRef<Sequence> sequence_;
    std::size_t index_ = 0;
};

} // namespace platform::core

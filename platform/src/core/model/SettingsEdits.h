#pragma once

#include "MasterClip.h"
#include "ModelEdit.h"
#include "Sequence.h"

namespace platform::core {

// Replaces a clip's settings; the reverse puts the old ones back. Announced
// with BE::MasterClipClipChangedMessage on the clip's station and
// BE::PropertiesChangedMessage on MZ::kStation_Info.
class ClipSettingsEdit final : public ModelEdit {
public:
    ClipSettingsEdit(KSL::InterfaceRef<MasterClip> clip, BE::MasterClipSettings settings);
    bool Apply() override { return Swap(); }
    bool Revert() override { return Swap(); }
    std::string Describe() const override;
    std::string DescribeRevert() const override { return Describe(); }

private:
    bool Swap();

    KSL::InterfaceRef<MasterClip> clip_;
    BE::MasterClipSettings otherSettings_;
};

// Replaces a sequence's settings; the reverse puts the old ones back.
// Announced with BE::PropertiesChangedMessage on MZ::kStation_Info and
// MZ::SequenceSettingsChangedMessage on the sequence's station and on
// MZ::kStation_SequenceActivation.
class SequenceSettingsEdit final : public ModelEdit {
public:
    SequenceSettingsEdit(KSL::InterfaceRef<Sequence> sequence, BE::SequenceSettings settings);
    bool Apply() override { return Swap(); }
    bool Revert() override { return Swap(); }
    std::string Describe() const override;
    std::string DescribeRevert() const override { return Describe(); }

private:
    bool Swap();

    KSL::InterfaceRef<Sequence> sequence_;
    BE::SequenceSettings otherSettings_;
};

} // namespace platform::core

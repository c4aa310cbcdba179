#pragma once

#include "BE/IProjectItem.h"
#include "KSL/InterfaceRef.h"
#include "ModelEdit.h"

namespace platform::core {

// Renames a bin, master clip or sequence; the reverse gives the old name back.
// Announced with BE::PropertiesChangedMessage on MZ::kStation_Info.
class NameEdit final : public ModelEdit {
public:
    NameEdit(KSL::InterfaceRef<BE::IProjectItem> item, zelcore::UTF16String name);
    bool Apply() override { return Swap(); }
    bool Revert() override { return Swap(); }
    std::string Describe() const override;
    std::string DescribeRevert() const override { return Describe(); }

private:
    bool Swap();

    KSL::InterfaceRef<BE::IProjectItem> item_;
    zelcore::UTF16String otherName_;
};

} // namespace platform::core

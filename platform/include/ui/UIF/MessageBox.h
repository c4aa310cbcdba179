#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>
#include <vector>

namespace UIF {

// The numbers are the host's: callers may pass them directly.
struct MBFlag {
    using Type = std::int32_t;
    static constexpr Type kOK = 1;
    static constexpr Type kOKCancel = 2;
    static constexpr Type kYesNo = 3;
    static constexpr Type kYesNoCancel = 4;
    // "Save", "Don't Save", "Cancel", answered kYes, kNo and kCancel: the
    // question about unsaved changes.
    static constexpr Type kSaveDontSaveCancel = 5;
};

struct MBIcon {
    using Type = std::int32_t;
    static constexpr Type kNone = 0;
    static constexpr Type kInformation = 1;
    static constexpr Type kQuestion = 2;
    static constexpr Type kError = 3;
    static constexpr Type kWarning = 4;
};

struct MBResult {
    using Type = std::int32_t;
    static constexpr Type kOK = 0;
    static constexpr Type kCancel = 1;
    static constexpr Type kYes = 2;
    static constexpr Type kNo = 3;
};

// Shows a modal message box over the host window with the buttons of the
// flag, the default button focused, and waits for the answer (Escape answers
// Cancel or No when the box has one). Text and title are localisation keys or
// plain text. While a MessageBoxRecorder exists nothing is shown: the box is
// recorded and the default answer returned.
MBResult::Type MessageBoxW(const zelcore::UTF16String& text, const zelcore::UTF16String& title,
                           MBFlag::Type flag, MBIcon::Type icon, MBResult::Type defaultResult);

// A test seam: records message boxes instead of showing them while it exists.
// The innermost of nested recorders records.
class MessageBoxRecorder {
public:
    struct Record {
        zelcore::UTF16String text; // localised
        zelcore::UTF16String title;
        MBFlag::Type flag = 0;
        MBIcon::Type icon = 0;
        MBResult::Type defaultResult = 0;
    };

    MessageBoxRecorder();
    MessageBoxRecorder(const MessageBoxRecorder&) = delete;
    MessageBoxRecorder& operator=(const MessageBoxRecorder&) = delete;
    ~MessageBoxRecorder();

    const std::vector<Record>& GetRecords() const { return records_; }

private:
    friend MBResult::Type MessageBoxW(const zelcore::UTF16String&, const zelcore::UTF16String&,
                                      MBFlag::Type, MBIcon::Type, MBResult::Type);
    MessageBoxRecorder* outer_;
    std::vector<Record> records_;
};

} // namespace UIF

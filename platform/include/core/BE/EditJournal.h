#pragma once

#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace BE {

// The edit journal: every change of a project, appended to a file beside the
// project file before the change is announced, so that the work since the
// last save survives a crash. Its format is in platform/PROJECT_FORMAT.md.

// The identity a journal gives its project file: the SHA-256 of the file's
// bytes, in lowercase hex. A new project, never saved, is "".
std::string ProjectFileDigest(std::string_view fileBytes);

// Where the journal of the project file at that path lives.
std::string JournalPathFor(const std::string& projectPathUtf8);

// A journal as far as it is intact.
struct JournalReading {
    std::string projectDigest;        // of the project file its changes start from
    std::vector<std::string> records; // the intact change records, in order
    // For each record, the journal's length up to and including it; the
    // header's length is headerBytes.
    std::vector<std::uint64_t> recordEnds;
    std::uint64_t headerBytes = 0;
    // What was dropped at the end and why; empty when all of it is intact.
    std::optional<std::string> problem;
};

struct JournalReadResult {
    std::optional<JournalReading> journal; // empty when error is set
    std::string error;                     // the file cannot be read, or its header is not intact
};

// Reading never fails for a damaged record: it stops before the first record
// that is torn (cut short by a crash) or fails its checksum, and says so.
JournalReadResult ReadJournal(std::string_view bytes);
JournalReadResult ReadJournalFile(const std::string& pathUtf8);

struct ReplayResult {
    std::size_t appliedRecords = 0;
    // Why replaying stopped before the last record ("record 7: ..."); the
    // records before it are applied.
    std::optional<std::string> problem;
};

// Applies the journal's records to the project, which must hold what the
// journal's project file holds: changes made with an undo step become steps
// again, undo and redo are repeated, so the history comes back with the
// content. Run it before anything listens to the project.
ReplayResult ReplayJournal(const KSL::InterfaceRef<IProject>& project,
                           const JournalReading& journal);

// Moves a journal out of the way without deleting it: renamed with the date
// and time, "<path>.set-aside-2026-11-24T12-30-05". Returns the new path, or
// nothing when the rename failed.
std::optional<std::string> SetJournalAside(const std::string& journalPathUtf8);

// Records every change of one project into its journal file. Writing happens
// before a change is announced; the file is flushed to the disk (fsync) at
// most kFlushDelayMs after a write, so a burst of keystrokes costs one flush.
// A write that fails stops the journal (GetProblem says why), and so does a
// flush that finds the file deleted (or its folder) or replaced; the project
// goes on working.
class EditJournal {
public:
    static constexpr int kFlushDelayMs = 200;

    // Starts an empty journal for the project, replacing any file at the path;
    // projectDigest names the file the project was opened from or saved to.
    // Returns null and sets error when the file cannot be written.
    static std::unique_ptr<EditJournal> Start(const KSL::InterfaceRef<IProject>& project,
                                              const std::string& pathUtf8,
                                              const std::string& projectDigest, std::string& error);

    // Goes on with a journal that was replayed into the project: keeps its
    // header and its first keptRecords records, drops the rest, and appends.
    static std::unique_ptr<EditJournal> Continue(const KSL::InterfaceRef<IProject>& project,
                                                 const std::string& pathUtf8,
                                                 const JournalReading& journal,
                                                 std::size_t keptRecords, std::string& error);

    // Stops recording and flushes; the file stays.
    ~EditJournal();

    // After a save: empties the journal for the new file content.
    void Restart(const std::string& projectDigest);
    // Stops recording and deletes the file (the project closed cleanly).
    void Remove();
    // Flushes what is written to the disk now.
    void Flush();
    // Hears once, from the event loop and never from inside a change, why
    // the journal stopped recording.
    void SetStopHandler(std::function<void(const std::string& reason)> handler);

    const std::string& GetPath() const;
    const std::optional<std::string>& GetProblem() const;

    struct Impl;

private:
    explicit EditJournal(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

} // namespace BE

// Any bytes through the edit journal's reader and replay, onto a project of
// one clip with a caption stream: reading stops at the first damaged record
// and says why; replay applies the intact records it can and names the first
// it cannot; the project still saves, opens and saves to the same bytes.
#include "BE/EditJournal.h"
#include "BE/ProjectFile.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "broken: %s\n", what);
        std::abort();
    }
}

constexpr std::string_view kProject = R"({"bins":[{"clips":[{"duration":"30481920000000",
"frameRate":"30000/1001","frameRect":{"bottom":1080,"left":0,"right":1920,"top":0},
"kind":"single","media":{"kind":"testSource","path":""},"name":"Clip","pixelAspectRatio":"1/1",
"streams":[{"captions":[
{"begin":"0","end":"254016000000","paragraphs":[{"spans":[{"text":"one"}]}]},
{"begin":"508032000000","end":"762048000000","paragraphs":[{"spans":[{"text":"two"}]}]}],
"format":"CEA-608"}]}],"name":"Bin","sequences":[{"audioTimeDisplay":300,
"frameAlignment":"frames","frameRate":"30000/1001",
"frameRect":{"bottom":1080,"left":0,"right":1920,"top":0},"name":"Sequence",
"videoTimeDisplay":103}]}],"format":"corvala-project","version":2})";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const BE::JournalReadResult read = BE::ReadJournal(bytes);
    if (!read.journal) {
        Require(!read.error.empty(), "a refused journal without a reason");
        return 0;
    }
    const BE::JournalReading& journal = *read.journal;
    Require(journal.records.size() == journal.recordEnds.size(), "records and their ends differ");
    Require(journal.problem || (journal.recordEnds.empty() ? journal.headerBytes
                                                           : journal.recordEnds.back()) == size,
            "an intact journal that does not reach its end");
    const BE::OpenProjectResult opened = BE::ParseProject(kProject);
    Require(!opened.error, "the fuzzer's project does not open");
    const BE::ReplayResult replayed = BE::ReplayJournal(opened.project, journal);
    Require(replayed.appliedRecords <= journal.records.size(), "more records applied than read");
    Require(replayed.problem || replayed.appliedRecords == journal.records.size(),
            "replay stopped without saying why");
    const BE::SerializedProject saved = BE::SerializeProject(opened.project);
    if (!saved.error) {
        const BE::OpenProjectResult reopened = BE::ParseProject(saved.bytes);
        Require(!reopened.error, "a replayed project does not open again");
    }
    return 0;
}

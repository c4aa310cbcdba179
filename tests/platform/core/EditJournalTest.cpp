#include "BE/EditJournal.h"

#include "BE/ProjectFile.h"
#include "BE/SequenceSettings.h"
#include "MZ/Captioning.h"
#include "ModelTestSupport.h"
#include "zelcaptioning/StreamFormat.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using platform_test::MakeCaption;
using platform_test::Seconds;

std::string ReadBytes(const std::string& path) {
    QFile file(QString::fromStdString(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll().toStdString();
}

std::string DemoBytes() {
    return ReadBytes(std::string(CORVALA_EXAMPLES_DIR) + "/demo-project.json");
}

KSL::InterfaceRef<BE::IProject> OpenBytes(const std::string& bytes) {
    BE::OpenProjectResult opened = BE::ParseProject(bytes);
    EXPECT_FALSE(opened.error) << opened.error->ToString();
    return opened.project;
}

std::string Saved(const KSL::InterfaceRef<BE::IProject>& project) {
    return BE::SerializeProject(project).bytes;
}

KSL::InterfaceRef<BE::ICaptioningStream> FirstStream(const KSL::InterfaceRef<BE::IProject>& p) {
    return p->GetBin(0)->GetMasterClip(0)->GetCaptioningStream(0);
}

// Every kind of change the model records, on the demo project, each a
// function so that the tests can stop after any of them.
std::vector<std::function<void(const KSL::InterfaceRef<BE::IProject>&)>> Changes() {
    using P = const KSL::InterfaceRef<BE::IProject>&;
    return {
        [](P p) {
            MZ::Captioning(FirstStream(p)).AddCaption(MakeCaption(Seconds(40), Seconds(42), "new"));
        },
        [](P p) {
            // Typing: live updates without an undo step, then the committed step.
            MZ::Captioning captioning(FirstStream(p));
            const auto target = FirstStream(p)->GetCaption(0);
            captioning.ReplaceCaption(
                target, MakeCaption(target->GetBeginTime(), target->GetEndTime(), "H"), false, u"");
            captioning.ReplaceCaption(
                target, MakeCaption(target->GetBeginTime(), target->GetEndTime(), "Hé\n\"quoted\""),
                true, u"$$$/Test/Typing=Typing");
        },
        [](P p) { p->GetUndoHistory().Undo(); },
        [](P p) { p->GetUndoHistory().Redo(); },
        [](P p) {
            MZ::Captioning captioning(FirstStream(p));
            captioning.UpdateCaption(FirstStream(p)->GetCaption(1), Seconds(0.5), Seconds(3), true,
                                     zelmediatypes::kTimeDisplay_2997DropTimecode);
        },
        [](P p) {
            MZ::Captioning(FirstStream(p)).RemoveCaption(FirstStream(p)->GetCaption(2), true);
        },
        [](P p) {
            MZ::Captioning(FirstStream(p)).RemoveCaption(FirstStream(p)->GetCaption(0), false);
        },
        [](P p) {
            const auto clip = p->GetBin(0)->GetMasterClip(1);
            p->AddCaptioningStream(clip, zelcaptioning::kStreamFormat_Teletext,
                                   BE::UndoMode::kAsUndoStep);
        },
        [](P p) {
            const auto stream = p->GetBin(0)->GetMasterClip(1)->GetCaptioningStream(0);
            p->ChangeCaptioningStreamFormat(stream, zelcaptioning::kStreamFormat_CEA708,
                                            BE::UndoMode::kAsUndoStep);
        },
        [](P p) { p->GetUndoHistory().Undo(); },
        [](P p) {
            // An import: a filled stream in the place of the clip's own.
            p->PutCaptioningStream(p->GetBin(0)->GetMasterClip(0),
                                   zelcaptioning::kStreamFormat_OpenCaptions,
                                   {MakeCaption(Seconds(1), Seconds(2), "imported"),
                                    MakeCaption(Seconds(3), Seconds(4), "second")},
                                   BE::UndoMode::kAsUndoStep, u"$$$/Test/Import=Import");
        },
        [](P p) {
            BE::SequenceSettings settings = p->GetBin(0)->GetSequence(0)->GetSettings();
            settings.name = u"Renamed";
            p->SetSequenceSettings(p->GetBin(0)->GetSequence(0), settings,
                                   BE::UndoMode::kWithoutUndoStep);
        },
        [](P p) {
            // A time display chosen for a clip's source times.
            const auto clip = p->GetBin(0)->GetMasterClip(0);
            BE::MasterClipSettings settings = clip->GetSettings();
            settings.videoTimeDisplay = zelmediatypes::kTimeDisplay_Frames;
            p->SetMasterClipSettings(clip, settings, BE::UndoMode::kWithoutUndoStep);
        },
        [](P p) {
            const auto bin = p->AddBin(u"Second bin", BE::UndoMode::kAsUndoStep);
            p->AddMasterClip(bin, platform_test::TestClipSettings("Added clip"),
                             BE::UndoMode::kAsUndoStep);
            p->AddSequence(bin, p->GetBin(0)->GetSequence(0)->GetSettings(),
                           BE::UndoMode::kAsUndoStep);
        },
        [](P p) { p->RemoveMasterClip(p->GetBin(0)->GetMasterClip(1), BE::UndoMode::kAsUndoStep); },
        [](P p) { p->GetUndoHistory().Undo(); },
        [](P p) { p->GetUndoHistory().Undo(); },
        [](P p) {
            p->RenameItem(p->GetBin(0), u"Renamed bin", BE::UndoMode::kAsUndoStep);
            p->RenameItem(p->GetBin(0)->GetMasterClip(0), u"Renamed clip",
                          BE::UndoMode::kAsUndoStep);
            p->RenameItem(p->GetBin(0)->GetSequence(0), u"Renamed sequence",
                          BE::UndoMode::kWithoutUndoStep);
        },
        [](P p) { p->RemoveSequence(p->GetBin(0)->GetSequence(0), BE::UndoMode::kAsUndoStep); },
        [](P p) { p->GetUndoHistory().Undo(); },
    };
}

class EditJournalTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        base_ = DemoBytes();
        path_ = dir_.filePath("demo.json.journal").toStdString();
    }

    // Applies every change to a journalled project; returns the saved bytes
    // after each and the journal's length after each.
    void Record() {
        project_ = OpenBytes(base_);
        std::string error;
        journal_ = BE::EditJournal::Start(project_, path_, BE::ProjectFileDigest(base_), error);
        ASSERT_TRUE(journal_) << error;
        for (const auto& change : Changes()) {
            change(project_);
            statesAfter_.push_back(Saved(project_));
            lengthsAfter_.push_back(ReadBytes(path_).size());
        }
    }

    KSL::InterfaceRef<BE::IProject> Recover(const std::string& journalBytes,
                                            BE::ReplayResult* replayed = nullptr) {
        return RecoverFrom(base_, journalBytes, replayed);
    }

    KSL::InterfaceRef<BE::IProject> RecoverFrom(const std::string& file,
                                                const std::string& journalBytes,
                                                BE::ReplayResult* replayed = nullptr) {
        const BE::JournalReadResult read = BE::ReadJournal(journalBytes);
        EXPECT_TRUE(read.journal) << read.error;
        KSL::InterfaceRef<BE::IProject> project = OpenBytes(file);
        const BE::ReplayResult result = BE::ReplayJournal(project, *read.journal);
        EXPECT_FALSE(result.problem) << *result.problem;
        if (replayed) {
            *replayed = result;
        }
        return project;
    }

    // Saves the project (the journal begins again from the file), then walks
    // its whole history down and up again, and takes two older steps back
    // under a new one: after each, a recovery from the file has the content.
    void SaveAndWalkThroughTheOlderSteps() {
        const std::string file = Saved(project_);
        journal_->Restart(BE::ProjectFileDigest(file));
        BE::IUndoHistory& history = project_->GetUndoHistory();
        std::size_t walked = 0;
        const auto expectRecovered = [&] {
            SCOPED_TRACE("after walking " + std::to_string(++walked));
            const KSL::InterfaceRef<BE::IProject> recovered = RecoverFrom(file, ReadBytes(path_));
            EXPECT_EQ(Saved(recovered), Saved(project_));
            return recovered;
        };
        ASSERT_TRUE(history.CanUndo());
        while (history.CanUndo()) {
            history.Undo();
            expectRecovered();
        }
        while (history.CanRedo()) {
            history.Redo();
            expectRecovered();
        }
        history.Undo();
        history.Undo();
        expectRecovered();
        MZ::Captioning(FirstStream(project_))
            .AddCaption(MakeCaption(Seconds(50), Seconds(51), "after the save"));
        const auto recovered = expectRecovered();
        EXPECT_EQ(recovered->GetUndoHistory().GetStepCount(), 1u);
        history.Undo();
        history.Undo();
        // The recovered history cannot redo an older step before the new one.
        const auto last = expectRecovered();
        EXPECT_FALSE(last->GetUndoHistory().CanUndo());
        EXPECT_FALSE(last->GetUndoHistory().CanRedo());
    }

    QTemporaryDir dir_;
    std::string base_;
    std::string path_;
    KSL::InterfaceRef<BE::IProject> project_;
    std::unique_ptr<BE::EditJournal> journal_;
    std::vector<std::string> statesAfter_;
    std::vector<std::size_t> lengthsAfter_;
};

TEST_F(EditJournalTest, ReplayGivesBackTheContentAndTheUndoHistory) {
    Record();
    const KSL::InterfaceRef<BE::IProject> recovered = Recover(ReadBytes(path_));
    EXPECT_EQ(Saved(recovered), Saved(project_));
    BE::IUndoHistory& original = project_->GetUndoHistory();
    BE::IUndoHistory& replayed = recovered->GetUndoHistory();
    ASSERT_EQ(replayed.GetStepCount(), original.GetStepCount());
    ASSERT_EQ(replayed.GetDoneStepCount(), original.GetDoneStepCount());
    EXPECT_EQ(replayed.GetRedoStepName(), original.GetRedoStepName());
    EXPECT_FALSE(replayed.IsClean());
    while (original.CanUndo()) {
        EXPECT_EQ(replayed.GetUndoStepName(), original.GetUndoStepName());
        original.Undo();
        replayed.Undo();
        EXPECT_EQ(Saved(recovered), Saved(project_));
    }
}

TEST_F(EditJournalTest, ATornLastRecordIsDroppedAtEveryByte) {
    Record();
    const std::string full = ReadBytes(path_);
    const std::size_t lastStart = lengthsAfter_[lengthsAfter_.size() - 2];
    ASSERT_EQ(full.size(), lengthsAfter_.back());
    for (std::size_t cut = lastStart; cut < full.size(); ++cut) {
        SCOPED_TRACE("cut at byte " + std::to_string(cut));
        const BE::JournalReadResult read = BE::ReadJournal(full.substr(0, cut));
        ASSERT_TRUE(read.journal);
        EXPECT_EQ(read.journal->problem.has_value(), cut != lastStart);
        BE::ReplayResult replayed;
        EXPECT_EQ(Saved(Recover(full.substr(0, cut), &replayed)),
                  statesAfter_[statesAfter_.size() - 2]);
    }
}

TEST_F(EditJournalTest, AFlippedChecksumBitStopsReplayBeforeThatRecord) {
    Record();
    std::string bytes = ReadBytes(path_);
    const std::size_t third = lengthsAfter_[1]; // the start of the third change's records
    bytes[third] = bytes[third] == '0' ? '1' : '0';
    const BE::JournalReadResult read = BE::ReadJournal(bytes);
    ASSERT_TRUE(read.journal);
    ASSERT_TRUE(read.journal->problem);
    EXPECT_NE(read.journal->problem->find("at byte " + std::to_string(third)), std::string::npos)
        << *read.journal->problem;
    EXPECT_NE(read.journal->problem->find("checksum"), std::string::npos);
    EXPECT_EQ(Saved(Recover(bytes)), statesAfter_[1]);
}

TEST_F(EditJournalTest, ReplayNamesTheRecordItCannotApply) {
    Record();
    const BE::JournalReadResult read = BE::ReadJournal(ReadBytes(path_));
    ASSERT_TRUE(read.journal);
    // Another project: the demo's second clip is not there.
    const KSL::InterfaceRef<BE::IProject> other = platform_test::MakeClipFixture().project;
    const BE::ReplayResult result = BE::ReplayJournal(other, *read.journal);
    ASSERT_TRUE(result.problem);
    EXPECT_EQ(result.appliedRecords, 0u);
    EXPECT_EQ(*result.problem,
              "record 1: edit.format: the master clip has no caption stream of this format");
}

TEST_F(EditJournalTest, HeaderNamesTheProjectAndItsDamageIsReported) {
    Record();
    const std::string bytes = ReadBytes(path_);
    const BE::JournalReadResult read = BE::ReadJournal(bytes);
    ASSERT_TRUE(read.journal);
    EXPECT_EQ(read.journal->projectDigest, BE::ProjectFileDigest(base_));
    EXPECT_EQ(BE::ReadJournal(bytes.substr(0, 20)).error.substr(0, 36),
              "the journal's header is not intact: ");
    EXPECT_EQ(BE::ReadJournal("").error,
              "the journal's header is not intact: torn: its 0 bytes end before the line does");
    const std::string notJournal = "00000000 {}\n";
    EXPECT_NE(BE::ReadJournal(notJournal).error.find("checksum"), std::string::npos);
}

TEST_F(EditJournalTest, RestartEmptiesTheJournalAndRemoveDeletesIt) {
    Record();
    journal_->Restart("0123");
    const BE::JournalReadResult read = BE::ReadJournalFile(path_);
    ASSERT_TRUE(read.journal) << read.error;
    EXPECT_EQ(read.journal->projectDigest, "0123");
    EXPECT_TRUE(read.journal->records.empty());
    project_->GetUndoHistory().Undo();
    EXPECT_EQ(BE::ReadJournalFile(path_).journal->records.size(), 1u);
    journal_->Remove();
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path_)));
    project_->GetUndoHistory().Undo(); // recorded nowhere, and harmless
}

TEST_F(EditJournalTest, StepsOfEveryKindMadeBeforeASaveAreUndoneAndRedoneByReplay) {
    Record();
    SaveAndWalkThroughTheOlderSteps();
}

TEST_F(EditJournalTest, RemovalsMadeBeforeASaveAreUndoneByReplayInTheirPlaces) {
    project_ = OpenBytes(base_);
    std::string error;
    journal_ = BE::EditJournal::Start(project_, path_, BE::ProjectFileDigest(base_), error);
    ASSERT_TRUE(journal_) << error;
    const KSL::InterfaceRef<BE::IProject>& p = project_;
    MZ::Captioning captioning(FirstStream(p));
    captioning.RemoveCaption(FirstStream(p)->GetCaption(0), true);
    // Two captions beginning together; the first goes back before the second.
    captioning.AddCaption(MakeCaption(Seconds(40), Seconds(41), "first"));
    captioning.AddCaption(MakeCaption(Seconds(40), Seconds(42), "second"));
    // Removed with a ripple, it moves the captions beginning after its end
    // only, not the two beginning while it is shown.
    const auto overlapping = MakeCaption(Seconds(39), Seconds(41), "overlapping");
    captioning.AddCaption(overlapping);
    captioning.RemoveCaption(overlapping, true);
    const auto stream = FirstStream(p);
    std::size_t first = 0;
    while (stream->GetCaption(first)->GetBeginTime() != Seconds(40)) {
        ++first;
    }
    ASSERT_EQ(stream->GetCaption(first + 1)->GetBeginTime(), Seconds(40));
    captioning.RemoveCaption(stream->GetCaption(first), false);
    p->AddCaptioningStream(p->GetBin(0)->GetMasterClip(1), zelcaptioning::kStreamFormat_Teletext,
                           BE::UndoMode::kAsUndoStep);
    p->RemoveCaptioningStream(p->GetBin(0)->GetMasterClip(0)->GetCaptioningStream(0),
                              BE::UndoMode::kAsUndoStep);
    p->RemoveMasterClip(p->GetBin(0)->GetMasterClip(0), BE::UndoMode::kAsUndoStep);
    p->RemoveSequence(p->GetBin(0)->GetSequence(0), BE::UndoMode::kAsUndoStep);
    p->AddBin(u"Added bin", BE::UndoMode::kAsUndoStep);
    SaveAndWalkThroughTheOlderSteps();
}

TEST_F(EditJournalTest, ContinueKeepsTheReplayedRecordsAndAppendsAfterThem) {
    Record();
    const std::string bytes = ReadBytes(path_);
    const BE::JournalReadResult read = BE::ReadJournal(bytes.substr(0, bytes.size() - 3));
    ASSERT_TRUE(read.journal);
    const KSL::InterfaceRef<BE::IProject> recovered = OpenBytes(base_);
    BE::ReplayJournal(recovered, *read.journal);
    std::string error;
    auto continued = BE::EditJournal::Continue(recovered, path_, *read.journal,
                                               read.journal->records.size(), error);
    ASSERT_TRUE(continued) << error;
    recovered->GetUndoHistory().Undo();
    continued.reset();
    EXPECT_EQ(Saved(Recover(ReadBytes(path_))), Saved(recovered));
}

TEST_F(EditJournalTest, SetAsideKeepsTheJournalUnderADatedName) {
    Record();
    journal_.reset();
    const std::string bytes = ReadBytes(path_);
    const std::optional<std::string> aside = BE::SetJournalAside(path_);
    ASSERT_TRUE(aside);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path_)));
    EXPECT_EQ(aside->rfind(path_ + ".set-aside-20", 0), 0u) << *aside;
    EXPECT_EQ(ReadBytes(*aside), bytes);
}

} // namespace

namespace {

// A journal whose file is gone or replaced still takes writes; the next flush
// finds out, stops the journal and tells the handler once, from the event
// loop rather than from inside the change that wrote.
struct LostFileCase {
    const char* name;
    std::function<void(const QString& path)> lose;
    const char* reason;
};

class EditJournalLostFileTest : public EditJournalTest,
                                public ::testing::WithParamInterface<LostFileCase> {};

TEST_P(EditJournalLostFileTest, TheNextFlushStopsTheJournalAndTellsOnce) {
    Record();
    std::vector<std::string> reasons;
    journal_->SetStopHandler([&reasons](const std::string& reason) { reasons.push_back(reason); });
    GetParam().lose(QString::fromStdString(path_));
    project_->GetUndoHistory().Undo();
    journal_->Flush();
    ASSERT_TRUE(journal_->GetProblem());
    EXPECT_THAT(*journal_->GetProblem(), testing::HasSubstr(path_));
    EXPECT_TRUE(reasons.empty()) << "told from inside the change";
    project_->GetUndoHistory().Undo();
    journal_->Flush();
    QCoreApplication::processEvents();
    EXPECT_EQ(reasons, std::vector<std::string>{GetParam().reason});
}

INSTANTIATE_TEST_SUITE_P(
    Losses, EditJournalLostFileTest,
    ::testing::Values(LostFileCase{"FolderRemoved",
                                   [](const QString& path) {
                                       QFileInfo(path).dir().removeRecursively();
                                   },
                                   "the file or its folder was deleted"},
                      LostFileCase{"FileReplacedByAFolder",
                                   [](const QString& path) {
                                       QFile::remove(path);
                                       QDir().mkpath(path);
                                   },
                                   "the file or its folder was deleted"},
                      LostFileCase{"FileReplacedByAnother",
                                   [](const QString& path) {
                                       QFile::rename(path, path + ".old");
                                       QFile::copy(path + ".old", path);
                                   },
                                   "the file was replaced"}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace

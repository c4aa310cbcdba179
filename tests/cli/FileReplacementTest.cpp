// A file's new content given in many pieces: what reaches the file is the
// pieces in order, and an old file stays as it was until the new content is
// committed.
#include "FileBytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using captioncli::FileReplacement;

class FileReplacementTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("corvala-replacement-test-" +
                   std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder_);
        std::ofstream(Path()) << "old content\n";
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string Path() const { return (folder_ / "out.txt").string(); }
    std::string Content() const {
        std::ifstream file(Path(), std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_),
                                                      std::filesystem::directory_iterator()));
    }

    // Pieces of different sizes, each telling where it belongs.
    static std::string Piece(int index) {
        return std::to_string(index) + ":" +
               std::string(1 + (index * 7919) % 70000, 'a' + index % 26) + "\n";
    }

    std::filesystem::path folder_;
};

TEST_F(FileReplacementTest, ManyPiecesReachTheFileInOrder) {
    std::string expected;
    {
        std::optional<FileReplacement> file = FileReplacement::Begin(Path());
        ASSERT_TRUE(file);
        for (int index = 0; index < 60; ++index) {
            file->Append(Piece(index));
            file->Append({}); // nothing to add
            expected += Piece(index);
        }
        EXPECT_EQ(Content(), "old content\n");
        ASSERT_TRUE(file->Commit());
    }
    EXPECT_EQ(Content(), expected);
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(FileReplacementTest, UncommittedPiecesLeaveTheOldFile) {
    {
        std::optional<FileReplacement> file = FileReplacement::Begin(Path());
        ASSERT_TRUE(file);
        for (int index = 0; index < 30; ++index) {
            file->Append(Piece(index));
        }
    }
    EXPECT_EQ(Content(), "old content\n");
    EXPECT_EQ(FilesInFolder(), 1u);
}

// A restart keeps only what follows it, however much came before.
TEST_F(FileReplacementTest, RestartKeepsOnlyWhatFollows) {
    for (const int before : {1, 2, 25}) {
        SCOPED_TRACE(before);
        std::optional<FileReplacement> file = FileReplacement::Begin(Path());
        ASSERT_TRUE(file);
        for (int index = 0; index < before; ++index) {
            file->Append(Piece(index));
        }
        file->Restart();
        std::string expected;
        for (int index = 100; index < 100 + before; ++index) {
            file->Append(Piece(index));
            expected += Piece(index);
        }
        ASSERT_TRUE(file->Commit());
        EXPECT_EQ(Content(), expected);
    }
    EXPECT_EQ(FilesInFolder(), 1u);
}

} // namespace

#include "UndoStack.h"

#include "KSL/Exception.h"
#include "ModelEdit.h"
#include "zelcore/Localization.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using BE::UndoMode;
using platform::core::ModelEdit;
using platform::core::UndoStack;

// Adds a number to a shared value; can be made unable to apply from outside.
class AddEdit final : public ModelEdit {
public:
    AddEdit(int* value, int amount, const bool* blocked = nullptr)
        : value_(value)
        , amount_(amount)
        , blocked_(blocked) {}
    bool Apply() override { return Change(amount_); }
    bool Revert() override { return Change(-amount_); }
    std::string Describe() const override { return "{\"add\":" + std::to_string(amount_) + "}"; }
    std::string DescribeRevert() const override {
        return "{\"add\":" + std::to_string(-amount_) + "}";
    }

private:
    bool Change(int delta) {
        if (blocked_ && *blocked_) {
            return false;
        }
        *value_ += delta;
        return true;
    }
    int* value_;
    int amount_;
    const bool* blocked_;
};

class UndoStackTest : public testing::Test {
protected:
    int value = 0;
    int notifications = 0;
    UndoStack stack{[this] {
        ++notifications;
    }};

    void Add(int amount, UndoMode mode, std::u16string_view name = u"") {
        stack.Execute(std::make_unique<AddEdit>(&value, amount), mode, name);
    }
};

TEST_F(UndoStackTest, StepsUndoAndRedoInOrderWithLocalisedNames) {
    Add(1, UndoMode::kAsUndoStep, u"$$$/Test/First=First Step");
    Add(10, UndoMode::kAsUndoStep, u"$$$/Test/Second=Second Step");
    EXPECT_EQ(value, 11);
    EXPECT_EQ(stack.GetUndoStepName(), zelcore::ToUTF16("Second Step"));
    stack.Undo();
    EXPECT_EQ(value, 1);
    EXPECT_EQ(stack.GetUndoStepName(), zelcore::ToUTF16("First Step"));
    EXPECT_EQ(stack.GetRedoStepName(), zelcore::ToUTF16("Second Step"));
    stack.Undo();
    stack.Undo(); // nothing left: no effect
    EXPECT_EQ(value, 0);
    EXPECT_FALSE(stack.CanUndo());
    stack.Redo();
    stack.Redo();
    stack.Redo();
    EXPECT_EQ(value, 11);
    EXPECT_EQ(stack.GetStepCount(), 2u);
    EXPECT_EQ(stack.GetDoneStepCount(), 2u);
}

TEST_F(UndoStackTest, NewStepAfterUndoDiscardsTheRedoableSteps) {
    Add(1, UndoMode::kAsUndoStep);
    Add(2, UndoMode::kAsUndoStep);
    stack.Undo();
    Add(5, UndoMode::kAsUndoStep);
    EXPECT_FALSE(stack.CanRedo());
    EXPECT_EQ(stack.GetStepCount(), 2u);
    stack.Undo();
    stack.Undo();
    EXPECT_EQ(value, 0);
}

TEST_F(UndoStackTest, ChangeWithoutStepIsAppliedButNotRecorded) {
    Add(3, UndoMode::kWithoutUndoStep);
    EXPECT_EQ(value, 3);
    EXPECT_FALSE(stack.CanUndo());
    EXPECT_FALSE(stack.IsClean());
}

TEST_F(UndoStackTest, CleanStateFollowsSaveUndoAndUnrecordedChanges) {
    EXPECT_TRUE(stack.IsClean());
    Add(1, UndoMode::kAsUndoStep);
    EXPECT_FALSE(stack.IsClean());
    stack.MarkClean();
    EXPECT_TRUE(stack.IsClean());
    stack.Undo();
    EXPECT_FALSE(stack.IsClean());
    stack.Redo();
    EXPECT_TRUE(stack.IsClean());
    Add(1, UndoMode::kWithoutUndoStep);
    EXPECT_FALSE(stack.IsClean());
    stack.MarkClean();
    EXPECT_TRUE(stack.IsClean());
}

TEST_F(UndoStackTest, NotifiesOnStepsAndCleanChangesButNotOnEveryUnrecordedChange) {
    Add(1, UndoMode::kAsUndoStep);
    stack.Undo();
    stack.Redo();
    EXPECT_EQ(notifications, 3);
    stack.MarkClean();
    EXPECT_EQ(notifications, 4);
    Add(1, UndoMode::kWithoutUndoStep);
    Add(1, UndoMode::kWithoutUndoStep);
    EXPECT_EQ(notifications, 5);
}

TEST_F(UndoStackTest, EditThatCannotApplyThrowsAndRecordsNothing) {
    bool blocked = true;
    EXPECT_THROW(
        stack.Execute(std::make_unique<AddEdit>(&value, 1, &blocked), UndoMode::kAsUndoStep, u""),
        KSL::Exception);
    EXPECT_EQ(stack.GetStepCount(), 0u);
    EXPECT_EQ(value, 0);
}

TEST_F(UndoStackTest, StepThatCanNoLongerApplyIsDroppedOnUndo) {
    bool blocked = false;
    Add(1, UndoMode::kAsUndoStep);
    stack.Execute(std::make_unique<AddEdit>(&value, 10, &blocked), UndoMode::kAsUndoStep, u"");
    blocked = true;
    stack.Undo();
    EXPECT_EQ(value, 11);
    EXPECT_EQ(stack.GetStepCount(), 1u);
    stack.Undo();
    EXPECT_EQ(value, 10);
}

TEST_F(UndoStackTest, StepRequestedWhileAStepIsUndoneIsRefused) {
    class ReentrantEdit final : public ModelEdit {
    public:
        explicit ReentrantEdit(UndoStack* s)
            : stack_(s) {}
        bool Apply() override { return true; }
        std::string Describe() const override { return "{}"; }
        std::string DescribeRevert() const override { return "{}"; }
        bool Revert() override {
            int scratch = 0;
            EXPECT_THROW(
                stack_->Execute(std::make_unique<AddEdit>(&scratch, 1), UndoMode::kAsUndoStep, u""),
                KSL::Exception);
            stack_->Execute(std::make_unique<AddEdit>(&scratch, 1), UndoMode::kWithoutUndoStep,
                            u"");
            EXPECT_EQ(scratch, 1);
            EXPECT_TRUE(stack_->IsApplyingStep());
            return true;
        }

    private:
        UndoStack* stack_;
    };
    stack.Execute(std::make_unique<ReentrantEdit>(&stack), UndoMode::kAsUndoStep, u"");
    EXPECT_FALSE(stack.IsApplyingStep());
    stack.Undo();
    EXPECT_FALSE(stack.IsApplyingStep());
    EXPECT_EQ(stack.GetStepCount(), 1u);
}

} // namespace

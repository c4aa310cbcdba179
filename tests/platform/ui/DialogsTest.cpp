#include "DLG/ColorPickerDialog.h"
#include "PlatformHost/HostAccess.h"
#include "TD/TitlerFontList.h"
#include "UIF/MessageBox.h"
#include "UiTestSupport.h"
#include "zelui/ui/UI_NodeManager.h"

#include <QApplication>
#include <QColorDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <algorithm>

namespace platform_ui_test {
namespace {

TEST(MessageBoxTest, RecorderTakesTheBoxAndAnswersItsDefault) {
    UIF::MessageBoxRecorder outer;
    {
        UIF::MessageBoxRecorder recorder;
        EXPECT_EQ(UIF::MessageBoxW(u"$$$/Corvala/Test/NoRoom=There is not enough time.",
                                   u"$$$/Corvala/Test/NoRoomTitle=Closed Captioning", 1, 4, 0),
                  UIF::MBResult::kOK);
        EXPECT_EQ(UIF::MessageBoxW(u"Replace?", u"Title", UIF::MBFlag::kYesNo,
                                   UIF::MBIcon::kQuestion, UIF::MBResult::kNo),
                  UIF::MBResult::kNo);
        ASSERT_EQ(recorder.GetRecords().size(), 2u);
        EXPECT_EQ(recorder.GetRecords()[0].text, u"There is not enough time.");
        EXPECT_EQ(recorder.GetRecords()[0].title, u"Closed Captioning");
        EXPECT_EQ(recorder.GetRecords()[0].icon, UIF::MBIcon::kWarning);
    }
    UIF::MessageBoxW(u"after", u"", 1, 0, 0);
    ASSERT_EQ(outer.GetRecords().size(), 1u);
    EXPECT_EQ(outer.GetRecords()[0].text, u"after");
}

TEST(MessageBoxTest, WithoutRecorderTheBoxIsModalAndReturnsTheUsersAnswer) {
    ShowWorkspace();
    QString shownText;
    bool modal = false;
    WhenModalLoopRuns([&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shownText = box->text();
        modal = zelui::ui::UI_NodeManager::Get()->HasModalWindow();
        EXPECT_EQ(static_cast<QAbstractButton*>(box->defaultButton()),
                  box->button(QMessageBox::No));
        box->button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(UIF::MessageBoxW(u"$$$/Corvala/Test/Q=Keep going?", u"Title", UIF::MBFlag::kYesNo,
                               UIF::MBIcon::kQuestion, UIF::MBResult::kNo),
              UIF::MBResult::kYes);
    EXPECT_EQ(shownText, QStringLiteral("Keep going?"));
    EXPECT_TRUE(modal);
    EXPECT_FALSE(zelui::ui::UI_NodeManager::Get()->HasModalWindow());
}

TEST(ColorPickerDialogTest, AcceptedColourIsReturnedOpaqueCancelledIsNot) {
    ShowWorkspace();
    WhenModalLoopRuns([] {
        auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->currentColor(), QColor(10, 20, 30));
        dialog->setCurrentColor(QColor(200, 100, 50, 7));
        dialog->accept();
    });
    zelui::ui::UI_Color chosen;
    EXPECT_TRUE(DLG::ColorPickerDialog::PickColor({10, 20, 30, 255}, chosen));
    EXPECT_EQ(chosen, (zelui::ui::UI_Color{200, 100, 50, 255}));

    WhenModalLoopRuns([] { QApplication::activeModalWidget()->close(); });
    zelui::ui::UI_Color untouched{1, 2, 3, 4};
    EXPECT_FALSE(DLG::ColorPickerDialog::PickColor({10, 20, 30, 255}, untouched));
    EXPECT_EQ(untouched, (zelui::ui::UI_Color{1, 2, 3, 4}));
}

TEST(TitlerFontListTest, ListsSystemFamiliesInDisplayOrderWithRegularStylesFirst) {
    const std::vector<TD::TitlerFontFamily> fonts = TD::GetTitlerFontList();
    const auto dejaVu = std::find_if(fonts.begin(), fonts.end(), [](const TD::TitlerFontFamily& f) {
        return f.familyName == u"DejaVu Sans";
    });
    ASSERT_NE(dejaVu, fonts.end()) << "fonts-dejavu-core is part of the build environment";
    ASSERT_FALSE(dejaVu->styleNames.empty());
    EXPECT_EQ(dejaVu->styleNames.front(), u"Book");
    EXPECT_NE(std::find(dejaVu->styleNames.begin(), dejaVu->styleNames.end(), u"Bold"),
              dejaVu->styleNames.end());
    EXPECT_TRUE(std::is_sorted(fonts.begin(), fonts.end(), [](const auto& a, const auto& b) {
        return QString::fromStdU16String(std::u16string(a.familyName.begin(), a.familyName.end()))
                   .compare(QString::fromStdU16String(
                                std::u16string(b.familyName.begin(), b.familyName.end())),
                            Qt::CaseInsensitive) < 0;
    }));
}

} // namespace
} // namespace platform_ui_test

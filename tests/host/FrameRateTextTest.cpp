// Frame rates as people write them, in the host's dialogs.
#include "FrameRateText.h"
#include "SequenceSettingsDialog.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace {

using namespace zelmediatypes;

TEST(FrameRateTextTest, StandardRatesReadAsTheyAreWritten) {
    const std::pair<FrameRate, const char*> cases[] = {
        {kFrameRate_23976, "23.976"}, {kFrameRate_24, "24"},
        {kFrameRate_25, "25"},        {kFrameRate_2997, "29.97"},
        {kFrameRate_30, "30"},        {kFrameRate_50, "50"},
        {kFrameRate_5994, "59.94"},   {FrameRate::FromFramesPerSecond(15, 2).value(), "7.5"}};
    for (const auto& [rate, text] : cases) {
        EXPECT_EQ(host::FrameRateText(rate).toStdString(), text);
    }
}

TEST(FrameRateTextTest, TheSequenceSettingsDialogShowsThePictureRateSo) {
    BE::SequenceSettings settings;
    settings.frameRect = {0, 0, 1920, 1080};
    settings.frameRate = kFrameRate_23976;
    host::SequenceSettingsDialog dialog(settings);
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        texts << label->text();
    }
    EXPECT_TRUE(texts.contains(QString::fromUtf8("1920 × 1080, 23.976 fps")))
        << texts.join(" | ").toStdString();
}

} // namespace

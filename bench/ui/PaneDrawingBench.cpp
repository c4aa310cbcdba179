// One full repaint of a 1080-pixel-high caption pane: 75-pixel rows, each
// with a thumbnail decal, In and Out labels with their timecodes, and a line
// of caption text, drawn through UIF::DC into an offscreen image.

#include "UIF/Bitmap.h"
#include "UIF/DC.h"
#include "drawing/DCImpl.h"
#include "zelcore/UTF16String.h"
#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TimeLabel.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr int kPaneWidthPx = 1920;
constexpr int kPaneHeightPx = 1080;
constexpr int kRowPitchPx = 75;

struct Row {
    zelcore::UTF16String inLabel;
    zelcore::UTF16String outLabel;
    zelcore::UTF16String text;
};

std::vector<Row> MakeRows(int count) {
    std::vector<Row> rows;
    for (int index = 0; index < count; ++index) {
        const auto begin = zelmediatypes::TickTime::FromSeconds(3 * index);
        const auto end = begin + zelmediatypes::TickTime::FromSeconds(2);
        rows.push_back({zelcore::ToUTF16(zelmediatypes::FormatTimeLabel(
                            begin, zelmediatypes::kTimeDisplay_2997DropTimecode,
                            zelmediatypes::kFrameRate_2997)),
                        zelcore::ToUTF16(zelmediatypes::FormatTimeLabel(
                            end, zelmediatypes::kTimeDisplay_2997DropTimecode,
                            zelmediatypes::kFrameRate_2997)),
                        zelcore::ToUTF16("Caption number " + std::to_string(index) +
                                         ": the quick brown fox jumps over the lazy dog")});
    }
    return rows;
}

void DrawPane(UIF::DC& dc, const std::vector<Row>& rows, int selectedRow) {
    const UIF::Bitmap decal = UIF::Bitmap::GetBitmap(UIF::kAudioLargeDecal);
    dc.FillRect(UIF::Rect::FromSize(0, 0, kPaneWidthPx, kPaneHeightPx),
                UIF::kColor_WindowBackground);
    const int labelWidth = std::max(
        dc.GetStringWidth(u"$$$/Corvala/Handlers/CaptionView/inLabel=In:", UIF::kFont_Normal),
        dc.GetStringWidth(u"$$$/Corvala/Handlers/CaptionView/outLabel=Out:", UIF::kFont_Normal));
    for (int index = 0; index < static_cast<int>(rows.size()); ++index) {
        const int top = index * kRowPitchPx;
        if (index == selectedRow) {
            dc.FillRect(UIF::Rect::FromSize(4, top + 2, kPaneWidthPx - 4, 74),
                        UIF::kColor_ReversibleGray);
        }
        dc.DrawImage(decal, 4, top + 6);
        const int labelX = 4 + decal.GetWidth() + 10;
        const int timeX = labelX + labelWidth + 5;
        dc.DrawString(u"$$$/Corvala/Handlers/CaptionView/inLabel=In:",
                      UIF::Rect::FromSize(labelX, top + 6, labelWidth, 17), UIF::kFont_Normal,
                      UIF::kColor_ReversibleBlack);
        dc.DrawString(zelcore::View(rows[static_cast<std::size_t>(index)].inLabel),
                      UIF::Rect::FromSize(timeX, top + 6, 85, 17), UIF::kFont_Normal,
                      UIF::kColor_ReversibleBlack);
        dc.DrawString(u"$$$/Corvala/Handlers/CaptionView/outLabel=Out:",
                      UIF::Rect::FromSize(labelX, top + 59, labelWidth, 17), UIF::kFont_Normal,
                      UIF::kColor_ReversibleBlack);
        dc.DrawString(zelcore::View(rows[static_cast<std::size_t>(index)].outLabel),
                      UIF::Rect::FromSize(timeX, top + 59, 85, 17), UIF::kFont_Normal,
                      UIF::kColor_ReversibleBlack);
        dc.DrawString(zelcore::View(rows[static_cast<std::size_t>(index)].text),
                      UIF::Rect::FromSize(timeX + 100, top + 6, kPaneWidthPx - timeX - 110, 64),
                      UIF::kFont_Normal, UIF::kColor_ReversibleBlack);
    }
}

void BM_DrawCaptionPane1080(benchmark::State& state) {
    const int rowCount = (kPaneHeightPx + kRowPitchPx - 1) / kRowPitchPx;
    const std::vector<Row> rows = MakeRows(rowCount);
    QImage image(kPaneWidthPx, kPaneHeightPx, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&image);
        UIF::DC dc(std::make_unique<UIF::DC::Impl>(painter, image.rect()));
        DrawPane(dc, rows, 3);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.counters["rows"] = rowCount;
}
BENCHMARK(BM_DrawCaptionPane1080)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#pragma once

#include <QColor>
#include <QWidget>

#include <functional>
#include <vector>

namespace platform::ui {

// The window of UIF::ColorPickerControl: the current colour's swatch, then
// presets. Reports what the user did through the callbacks. With the keyboard
// focus, Left and Right move a focus frame over the swatch and the presets and
// Space or Return presses the framed one, as a click would.
class ColorRowWidget : public QWidget {
public:
    struct Callbacks {
        std::function<void(const QColor&)> presetChosen;
        std::function<void()> swatchClicked;
        std::function<void()> eyedropperStarted;
        std::function<void(const QColor&)> eyedropperEnded;
    };

    explicit ColorRowWidget(Callbacks callbacks);

    const QColor& Color() const { return color_; }
    void SetColor(const QColor& color);

    // The preset at the point (widget coordinates), or -1.
    int PresetAt(const QPoint& point) const;
    QRect SwatchRect() const;
    QRect PresetRect(int index) const;
    static const std::vector<QColor>& Presets();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Gesture { None, SwatchPressed, Eyedropper };
    QColor SampleScreen(const QPointF& globalPosition) const;

    Callbacks callbacks_;
    QColor color_ = Qt::white;
    Gesture gesture_ = Gesture::None;
    QPoint pressPosition_;
    // -1 frames the swatch, 0 and up a preset.
    int focusedCell_ = -1;
};

} // namespace platform::ui

#pragma once

#include "zelui/controls/UI_ControlView.h"

#include <boost/function.hpp>

#include <memory>
#include <vector>

namespace zelui::controls {

// A control whose changes happen over a gesture and are also reported stage by
// stage (UI_InteractiveControlChangedMessage).
class UI_InteractiveControlView : public UI_ControlView {
public:
    using InteractiveNotification =
        boost::function<void(const UI_InteractiveControlChangedMessage&)>;

    void NotifyWhenChangedInteractively(InteractiveNotification notification);

protected:
    UI_InteractiveControlView() = default;
    explicit UI_InteractiveControlView(std::unique_ptr<Impl> impl);

    void NotifyChangedInteractively(UI_InteractiveChange change);

private:
    std::vector<InteractiveNotification> interactiveNotifications_;
};

} // namespace zelui::controls

#pragma once

#include "UIF/ViewBase.h"

namespace UIF {

// A view inside a tab view (or inside another sub-view), such as a list pane.
class SubView : public ViewBase {
public:
    explicit SubView(Commander* commander);
    ~SubView() override;

    ViewBase* GetParent() const override { return parentView_; }

    void EnableDoubleBuffering(bool enable, bool eraseBackground) {
        SetDoubleBuffering(enable, eraseBackground);
    }
    void WantsDragAndDropEvents(bool wants) { SetWantsDragAndDropEvents(wants); }

protected:
    // Called once the view holds this sub-view (ViewBase::AddSubView).
    virtual void AttachedToView() {}

private:
    friend class ViewBase;
    ViewBase* parentView_ = nullptr;
};

} // namespace UIF

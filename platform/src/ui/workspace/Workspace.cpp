#include "UIF/Workspace.h"

#include "UIF/TabView.h"
#include "input/QtConversions.h"
#include "workspace/WorkspaceImpl.h"
#include "zelui/drawbot/Drawbot.h"

#include <QApplication>

#include <algorithm>

namespace UIF {
namespace {

std::unique_ptr<Workspace>& TheWorkspace() {
    static std::unique_ptr<Workspace> workspace;
    return workspace;
}

class MeasuringWindow : public WorkspaceWindow {
public:
    zelui::drawbot::Drawbot* GetDrawbot() override { return drawbot_.get(); }

private:
    std::unique_ptr<zelui::drawbot::Drawbot> drawbot_ = zelui::drawbot::Drawbot::CreateMeasuring();
};

} // namespace

Workspace::Impl::Impl()
    : mainWindow(std::make_unique<QMainWindow>())
    , window(std::make_unique<MeasuringWindow>()) {
    mainWindow->setObjectName(QStringLiteral("corvalaWorkspace"));
    mainWindow->setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowNestedDocks |
                               QMainWindow::AllowTabbedDocks | QMainWindow::GroupedDragging);
}

Workspace::Impl::~Impl() {
    for (const auto& frame : frames) {
        if (TabView* view = frame->GetTabView()) {
            view->Destroy(kTabViewDestroy_KeepFrame);
        }
    }
    frames.clear();
}

Qt::DockWidgetArea Workspace::Impl::AreaOf(const WorkspaceFrame& frame) const {
    return frame.GetImpl().dock ? mainWindow->dockWidgetArea(frame.GetImpl().dock)
                                : Qt::NoDockWidgetArea;
}

void Workspace::Impl::CloseFrame(WorkspaceFrame& frame) {
    QDockWidget* dock = frame.GetImpl().dock;
    if (!dock) {
        return;
    }
    if (frame.creator_ && frame.creator_->ShouldSaveStateWhenDestroyed()) {
        dock->hide();
        return;
    }
    mainWindow->removeDockWidget(dock);
    dock->deleteLater();
    std::erase_if(frames, [&frame](const auto& held) { return held.get() == &frame; });
}

Workspace::Workspace()
    : impl_(std::make_unique<Impl>()) {}

Workspace::~Workspace() = default;

Workspace* Workspace::Instance() {
    std::unique_ptr<Workspace>& workspace = TheWorkspace();
    if (!workspace && qobject_cast<QApplication*>(QCoreApplication::instance())) {
        workspace.reset(new Workspace());
    }
    return workspace.get();
}

void Workspace::DestroyInstance() {
    TheWorkspace().reset();
}

void Workspace::RegisterTabViewCreator(const zelcore::UTF16String& handlerName,
                                       TabViewCreator* creator) {
    impl_->creators[handlerName] = creator;
    for (const auto& frame : impl_->frames) {
        if (frame->GetHandlerName() == handlerName) {
            frame->creator_ = creator;
        }
    }
}

void Workspace::UnregisterTabViewCreator(TabViewCreator* creator) {
    std::erase_if(impl_->creators,
                  [creator](const auto& entry) { return entry.second == creator; });
    for (const auto& frame : impl_->frames) {
        if (frame->creator_ == creator) {
            frame->creator_ = nullptr;
        }
    }
}

TabView* Workspace::CreateOrReanimateTabView(const zelcore::UTF16String& handlerName,
                                             const PropertyList& properties) {
    WorkspaceFrame* frame = FindFrame(handlerName);
    if (frame && frame->GetTabView() && frame->GetTabView()->IsCreated()) {
        return frame->GetTabView();
    }
    const auto creator = impl_->creators.find(handlerName);
    if (creator == impl_->creators.end() || !creator->second) {
        return nullptr;
    }
    const bool isNewFrame = frame == nullptr;
    if (isNewFrame) {
        impl_->frames.push_back(
            std::unique_ptr<WorkspaceFrame>(new WorkspaceFrame(handlerName, creator->second)));
        frame = impl_->frames.back().get();
        QDockWidget* dock = frame->GetImpl().dock;
        const auto sideProperty = properties.find("dockSide");
        const QString sideName = sideProperty == properties.end()
                                     ? QString()
                                     : platform::ui::ToQString(zelcore::View(sideProperty->second));
        const DockSide side = sideName == QLatin1String("left")    ? kDockSide_Left
                              : sideName == QLatin1String("right") ? kDockSide_Right
                              : sideName == QLatin1String("top")   ? kDockSide_Top
                                                                   : kDockSide_Bottom;
        if (impl_->mainWindow->restoreDockWidget(dock)) {
            // A restored layout had a place for this panel: it opens there.
            frame->GetImpl().dock->MarkPlaced();
        } else {
            impl_->mainWindow->addDockWidget(platform::ui::AreaOfDockSide(side), dock);
            dock->setFloating(sideName == QLatin1String("floating"));
        }
        dock->hide();
    }
    TabView* view = creator->second->CreateTabView(frame);
    if (!view || !view->IsCreated()) {
        if (isNewFrame) {
            impl_->mainWindow->removeDockWidget(frame->GetImpl().dock);
            std::erase_if(impl_->frames, [frame](const auto& held) { return held.get() == frame; });
        }
        return nullptr;
    }
    return view;
}

std::vector<WorkspaceFrame*> Workspace::GetFrames() const {
    std::vector<WorkspaceFrame*> frames;
    for (const auto& frame : impl_->frames) {
        frames.push_back(frame.get());
    }
    return frames;
}

WorkspaceFrame* Workspace::FindFrame(const zelcore::UTF16String& handlerName) const {
    for (const auto& frame : impl_->frames) {
        if (frame->GetHandlerName() == handlerName) {
            return frame.get();
        }
    }
    return nullptr;
}

WorkspaceWindow* Workspace::GetPtr() {
    return impl_->window.get();
}

TabViewCreator::~TabViewCreator() {
    if (Workspace* workspace = TheWorkspace().get()) {
        workspace->UnregisterTabViewCreator(this);
    }
}

} // namespace UIF

#include "zelui/ui/UI_NodeManager.h"

#include "input/KeyTranslation.h"
#include "shortcuts/ShortcutDispatch.h"
#include "toolkit/NodeManagerAccess.h"
#include "zelui/ui/UI_Events.h"
#include "zelui/ui/UI_Node.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <algorithm>
#include <atomic>

namespace zelui::ui {
namespace {

std::unique_ptr<UI_NodeManager>& TheNodeManager() {
    static std::unique_ptr<UI_NodeManager> manager;
    return manager;
}

} // namespace

// The application's keyboard pipeline: every key press and release reaches
// the filter nodes, then bound shortcuts, before the focused widget sees it.
struct UI_NodeManager::Impl : QObject {
    explicit Impl(UI_NodeManager& owner)
        : manager(owner) {
        QCoreApplication::instance()->installEventFilter(this);
    }
    ~Impl() override {
        if (QCoreApplication* app = QCoreApplication::instance()) {
            app->removeEventFilter(this);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) {
            return false;
        }
        // A key the focused widget ignores is offered to its parents, each
        // passing through here again; only the first delivery counts.
        auto* target = qobject_cast<QWidget*>(watched);
        QWidget* focus = QApplication::focusWidget();
        if (!target || (focus ? target != focus : !target->isWindow())) {
            return false;
        }
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (manager.FilterKeyboardEvent(platform::ui::ToKeyboardEvent(key))) {
            return true;
        }
        return event->type() == QEvent::KeyPress && platform::ui::DispatchShortcut(key);
    }

    UI_NodeManager& manager;
};

UI_NodeManager::UI_NodeManager()
    : impl_(std::make_unique<Impl>(*this)) {}

UI_NodeManager::~UI_NodeManager() = default;

UI_NodeManager* UI_NodeManager::Get() {
    std::unique_ptr<UI_NodeManager>& manager = TheNodeManager();
    if (!manager && qobject_cast<QApplication*>(QCoreApplication::instance())) {
        manager.reset(new UI_NodeManager());
    }
    return manager.get();
}

void UI_NodeManager::Destroy() {
    TheNodeManager().reset();
}

std::uint32_t UI_NodeManager::GetUniqueTimerID() {
    static std::atomic<std::uint32_t> lastTimerID{0};
    return ++lastTimerID;
}

bool UI_NodeManager::HasModalWindow() const {
    return QApplication::activeModalWidget() != nullptr ||
           QApplication::activePopupWidget() != nullptr;
}

void UI_NodeManager::AddKeyboardEventFilterNode(UI_Node* node) {
    if (node && std::find(filterNodes_.begin(), filterNodes_.end(), node) == filterNodes_.end()) {
        filterNodes_.insert(filterNodes_.begin(), node);
    }
}

void UI_NodeManager::RemoveKeyboardEventFilterNode(UI_Node* node) {
    std::erase(filterNodes_, node);
}

bool UI_NodeManager::FilterKeyboardEvent(const UI_KeyboardEvent& event) {
    // Nodes may add or remove nodes (themselves included) while asked.
    const std::vector<UI_Node*> nodes = filterNodes_;
    for (UI_Node* node : nodes) {
        if (std::find(filterNodes_.begin(), filterNodes_.end(), node) != filterNodes_.end() &&
            node->UI_DoPreKeyboardEvent(event)) {
            return true;
        }
    }
    return false;
}

UI_Node::~UI_Node() {
    if (UI_NodeManager* manager = platform::ui::ExistingNodeManager()) {
        manager->RemoveKeyboardEventFilterNode(this);
    }
}

bool UI_Node::UI_DoPreKeyboardEvent(const UI_KeyboardEvent&) {
    return false;
}

void UI_ResourceManager::SetCursor(UI_CursorID cursor) {
    if (UI_NodeManager* manager = UI_NodeManager::Get()) {
        manager->currentCursor_ = cursor;
    }
}

UI_CursorID UI_ResourceManager::GetCursor() {
    const UI_NodeManager* manager = platform::ui::ExistingNodeManager();
    return manager ? manager->currentCursor_ : kCursor_Default;
}

bool GetKeyState(std::int32_t virtualKey) {
    const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
    switch (virtualKey) {
    case 16:
        return held.testFlag(Qt::ShiftModifier);
    case 17:
        return held.testFlag(Qt::ControlModifier);
    case 18:
        return held.testFlag(Qt::AltModifier);
    default:
        return false;
    }
}

} // namespace zelui::ui

namespace platform::ui {

zelui::ui::UI_NodeManager* ExistingNodeManager() {
    return zelui::ui::TheNodeManager().get();
}

} // namespace platform::ui

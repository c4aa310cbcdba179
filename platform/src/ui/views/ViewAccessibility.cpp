#include "views/ViewAccessibility.h"

#include "views/ViewWidget.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QVariant>

namespace platform::ui {
namespace {

constexpr const char* kFocusItemProperty = "corvalaFocusItem";

// The view's focused item: a list item named by the view, inside the view's rectangle.
class FocusItemAccessible : public QAccessibleInterface {
public:
    explicit FocusItemAccessible(QWidget* view)
        : view_(view) {}

    bool isValid() const override { return view_ && !ViewFocusItem(*view_).isEmpty(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return view_ ? view_->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(view_);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* focusChild() const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && view_ ? ViewFocusItem(*view_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        return view_ ? QRect(view_->mapToGlobal(QPoint(0, 0)), view_->size()) : QRect();
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = true;
        state.focused = view_ && view_->hasFocus();
        state.selectable = true;
        state.selected = true;
        return state;
    }

private:
    QPointer<QWidget> view_;
};

// A view window with its focused item as its one child.
class ViewAccessible : public QAccessibleWidget {
public:
    explicit ViewAccessible(QWidget* view)
        : QAccessibleWidget(view, QAccessible::List)
        , item_(new FocusItemAccessible(view)) {
        QAccessible::registerAccessibleInterface(item_);
    }
    ~ViewAccessible() override {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(item_));
    }

    int childCount() const override {
        return QAccessibleWidget::childCount() + (item_->isValid() ? 1 : 0);
    }
    QAccessibleInterface* child(int index) const override {
        const int widgets = QAccessibleWidget::childCount();
        if (index == widgets && item_->isValid()) {
            return item_;
        }
        return QAccessibleWidget::child(index);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child == item_ ? QAccessibleWidget::childCount()
                              : QAccessibleWidget::indexOfChild(child);
    }
    QAccessibleInterface* focusChild() const override {
        if (item_->isValid() && widget()->hasFocus()) {
            return item_;
        }
        return QAccessibleWidget::focusChild();
    }

private:
    FocusItemAccessible* item_;
};

QAccessibleInterface* ViewFactory(const QString&, QObject* object) {
    auto* view = dynamic_cast<ViewWidget*>(object);
    return view ? new ViewAccessible(view) : nullptr;
}

} // namespace

void SetViewFocusItem(QWidget& viewWidget, const QString& itemName) {
    static const bool installed = (QAccessible::installFactory(ViewFactory), true);
    (void)installed;
    viewWidget.setProperty(kFocusItemProperty, itemName);
    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&viewWidget);
    if (view && !itemName.isEmpty() && viewWidget.hasFocus()) {
        QAccessibleEvent focus(view->child(view->childCount() - 1), QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

QString ViewFocusItem(const QWidget& viewWidget) {
    return viewWidget.property(kFocusItemProperty).toString();
}

} // namespace platform::ui

#pragma once

#include "BE/IProject.h"
#include "BE/IProjectItem.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Listener.h"

#include <QStandardItemModel>

#include <functional>
#include <vector>

namespace host {

// The project as the project panel shows it: bins at the top, each holding
// its master clips (with their caption streams below them) and then its
// sequences. Structural changes of the project rebuild the tree; a change of a
// stream's captions or an item's name only updates that row's text.
class ProjectTreeModel : public QStandardItemModel, private KSL::Listener {
public:
    // Called around each rebuild: the panel keeps its selection and expanded
    // rows across it.
    ProjectTreeModel(std::function<void()> aboutToRebuild, std::function<void()> rebuilt);
    ~ProjectTreeModel() override;

    // Shows the project (an empty reference shows nothing).
    void SetProject(KSL::InterfaceRef<BE::IProject> project);

    // The project item of a row; empty for an invalid index.
    KSL::InterfaceRef<BE::IProjectItem> ItemAt(const QModelIndex& index) const;
    // The row of the item, or an invalid index when the tree does not show it.
    QModelIndex IndexOf(const BE::IProjectItem* item) const;

    // A name typed into a row renames its item as one undo step; the row shows
    // the new name once the project announces it. An empty name changes nothing.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    bool HandleMessage(const KSL::Message& message) override;
    void Rebuild();
    void Unsubscribe();
    QStandardItem* AddRow(QStandardItem& parent, KSL::InterfaceRef<BE::IProjectItem> item);
    void RefreshText(const BE::IProjectItem* item);

    std::function<void()> aboutToRebuild_;
    std::function<void()> rebuilt_;
    KSL::InterfaceRef<BE::IProject> project_;
    // Every item shown, kept alive while its row holds its address.
    std::vector<KSL::InterfaceRef<BE::IProjectItem>> shownItems_;
    std::vector<KSL::StationID> subscribedStations_;
};

} // namespace host

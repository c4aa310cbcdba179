#pragma once

#include "BE/IMasterClip.h"
#include "BE/IProject.h"
#include "BE/IProjectItem.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "ProjectTreeModel.h"

#include <QWidget>

#include <functional>
#include <set>

class QLabel;
class QMenu;
class QPushButton;
class QTreeView;

namespace host {

// The project panel: the tree of bins, master clips with their caption streams,
// and sequences. Its gestures are announced to the panels (ProjectGestures):
// selecting a row, opening one (double-click or Enter), and the commands of its
// context menu. Rows keep their selection and expansion when the tree is rebuilt.
// Bins, clips and sequences are renamed in place (F2, or a slow second click);
// clips, caption streams and sequences are deleted with the Delete key or the
// context menu, each change one undo step. An empty project says how to start.
class ProjectPanel : public QWidget {
public:
    using SequenceSettingsRequest = std::function<void(KSL::InterfaceRef<BE::ISequence>)>;

    // A sequence is opened by asking for its settings.
    explicit ProjectPanel(SequenceSettingsRequest requestSequenceSettings,
                          QWidget* parent = nullptr);
    ~ProjectPanel() override;

    void SetProject(KSL::InterfaceRef<BE::IProject> project);

    // The item of the current row; empty when no row is current.
    KSL::InterfaceRef<BE::IProjectItem> GetSelectedItem() const;
    // The master clip of the current row (the clip itself or the clip of a stream).
    KSL::InterfaceRef<BE::IMasterClip> GetSelectedMasterClip() const;
    // Makes the item's row current, as a click on it does; false when it is not shown.
    bool SelectItem(const BE::IProjectItem* item);

    // Opens the row's item as double-click and Enter do.
    void OpenItem(const KSL::InterfaceRef<BE::IProjectItem>& item);

    // Whether the tree has the keyboard and its current item can be deleted,
    // as Edit > Delete asks.
    bool CanDeleteSelected() const;
    void DeleteSelected();

    // The note and button an empty project shows above its tree.
    QLabel& GetEmptyNote() const { return *emptyNote_; }
    QPushButton& GetImportButton() const { return *importButton_; }

    QTreeView& GetTreeView() const { return *treeView_; }
    const ProjectTreeModel& GetModel() const { return model_; }

private:
    void OnCurrentRowChanged(const QModelIndex& current);
    void RememberViewState();
    void RestoreViewState();
    void ShowContextMenu(const QPoint& position);
    void AddStreamActions(QMenu& menu, const KSL::InterfaceRef<BE::IProjectItem>& item);
    void AddClipActions(QMenu& menu, const KSL::InterfaceRef<BE::IProjectItem>& item);
    void AddEditActions(QMenu& menu, const KSL::InterfaceRef<BE::IProjectItem>& item);
    void UpdateEmptyNote();

    SequenceSettingsRequest requestSequenceSettings_;
    ProjectTreeModel model_;
    QTreeView* treeView_;
    QLabel* emptyNote_;
    QPushButton* importButton_;
    KSL::InterfaceRef<BE::IProject> project_;
    // Across a rebuild: the current item and the rows the user collapsed.
    KSL::InterfaceRef<BE::IProjectItem> currentBeforeRebuild_;
    std::set<KSL::InterfaceRef<BE::IProjectItem>> collapsedItems_;
    bool isRebuilding_ = false;
};

} // namespace host

#include "ProjectPanel.h"

#include "BE/ICaptioningStream.h"
#include "HostCommands.h"
#include "ProjectGestures.h"
#include "ProjectItemEdits.h"
#include "QtText.h"
#include "UIF/CommandRouting.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace host {

ProjectPanel::ProjectPanel(SequenceSettingsRequest requestSequenceSettings, QWidget* parent)
    : QWidget(parent)
    , requestSequenceSettings_(std::move(requestSequenceSettings))
    , model_([this] { RememberViewState(); }, [this] { RestoreViewState(); })
    , treeView_(new QTreeView(this))
    , emptyNote_(new QLabel(this))
    , importButton_(new QPushButton(this)) {
    setObjectName(QStringLiteral("projectPanel"));
    treeView_->setObjectName(QStringLiteral("projectTree"));
    treeView_->setModel(&model_);
    treeView_->setHeaderHidden(true);
    treeView_->setSelectionMode(QAbstractItemView::SingleSelection);
    treeView_->setEditTriggers(QAbstractItemView::EditKeyPressed |
                               QAbstractItemView::SelectedClicked);
    treeView_->setContextMenuPolicy(Qt::CustomContextMenu);
    // Only while the tree itself has the keyboard: in a name being typed,
    // Delete deletes a character.
    auto* deleteAction = new QAction(treeView_);
    deleteAction->setShortcut(QKeySequence::Delete);
    deleteAction->setShortcutContext(Qt::WidgetShortcut);
    treeView_->addAction(deleteAction);
    connect(deleteAction, &QAction::triggered, this, [this] { DeleteSelected(); });

    emptyNote_->setObjectName(QStringLiteral("emptyProjectNote"));
    emptyNote_->setWordWrap(true);
    emptyNote_->setAlignment(Qt::AlignCenter);
    emptyNote_->setText(Localized("$$$/Corvala/Host/Project/Empty=This project is empty. Import "
                                  "a video file to caption it: File > Import Media."));
    importButton_->setObjectName(QStringLiteral("importMediaButton"));
    importButton_->setText(Localized("$$$/Corvala/Host/Project/ImportButton=Import Media..."));
    importButton_->setAccessibleName(importButton_->text());
    connect(importButton_, &QPushButton::clicked, this,
            [] { UIF::SendCommand(kHostCommand_ImportMedia); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(emptyNote_);
    layout->addWidget(importButton_, 0, Qt::AlignHCenter);
    layout->addWidget(treeView_, 1);

    connect(treeView_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { OnCurrentRowChanged(current); });
    connect(treeView_, &QTreeView::activated, this,
            [this](const QModelIndex& index) { OpenItem(model_.ItemAt(index)); });
    connect(treeView_, &QTreeView::customContextMenuRequested, this,
            [this](const QPoint& position) { ShowContextMenu(position); });
    connect(treeView_, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
        if (!isRebuilding_) {
            collapsedItems_.insert(model_.ItemAt(index));
        }
    });
    connect(treeView_, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        if (!isRebuilding_) {
            collapsedItems_.erase(model_.ItemAt(index));
        }
    });
}

ProjectPanel::~ProjectPanel() = default;

void ProjectPanel::SetProject(KSL::InterfaceRef<BE::IProject> project) {
    project_ = project;
    collapsedItems_.clear();
    // The rows of the old project go: a selection among them is announced as cleared.
    model_.SetProject(std::move(project));
}

KSL::InterfaceRef<BE::IProjectItem> ProjectPanel::GetSelectedItem() const {
    return model_.ItemAt(treeView_->selectionModel()->currentIndex());
}

KSL::InterfaceRef<BE::IMasterClip> ProjectPanel::GetSelectedMasterClip() const {
    const KSL::InterfaceRef<BE::IProjectItem> item = GetSelectedItem();
    if (const auto stream = item.QueryInterface<BE::ICaptioningStream>()) {
        return stream->GetMasterClip();
    }
    return item.QueryInterface<BE::IMasterClip>();
}

bool ProjectPanel::SelectItem(const BE::IProjectItem* item) {
    const QModelIndex row = model_.IndexOf(item);
    if (!row.isValid()) {
        return false;
    }
    treeView_->scrollTo(row);
    treeView_->selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect);
    return true;
}

void ProjectPanel::OpenItem(const KSL::InterfaceRef<BE::IProjectItem>& item) {
    if (!item) {
        return;
    }
    switch (item->GetItemKind()) {
    case BE::ProjectItemKind::kCaptioningStream:
        ProjectGestures::AnnounceStreamOpened(item.QueryInterface<BE::ICaptioningStream>());
        break;
    case BE::ProjectItemKind::kMasterClip:
        ProjectGestures::AnnounceSourceClipOpened(item.QueryInterface<BE::IMasterClip>());
        break;
    case BE::ProjectItemKind::kSequence:
        requestSequenceSettings_(item.QueryInterface<BE::ISequence>());
        break;
    case BE::ProjectItemKind::kBin:
        break;
    }
}

bool ProjectPanel::CanDeleteSelected() const {
    const KSL::InterfaceRef<BE::IProjectItem> item = GetSelectedItem();
    return treeView_->hasFocus() && item && ProjectItemEdits::CanDelete(*item);
}

void ProjectPanel::DeleteSelected() {
    const KSL::InterfaceRef<BE::IProjectItem> item = GetSelectedItem();
    if (project_ && item && ProjectItemEdits::CanDelete(*item)) {
        ProjectItemEdits::Delete(*project_, item);
    }
}

void ProjectPanel::UpdateEmptyNote() {
    bool empty = true;
    for (std::size_t b = 0; project_ && b < project_->GetBinCount() && empty; ++b) {
        const KSL::InterfaceRef<BE::IBin> bin = project_->GetBin(b);
        empty = bin->GetMasterClipCount() == 0 && bin->GetSequenceCount() == 0;
    }
    if (emptyNote_->isHidden() != empty) {
        return;
    }
    emptyNote_->setVisible(empty);
    importButton_->setVisible(empty);
    // The rows are placed now, so that they are where a click finds them.
    layout()->activate();
}

void ProjectPanel::OnCurrentRowChanged(const QModelIndex& current) {
    if (isRebuilding_) {
        return;
    }
    ProjectGestures::AnnounceSelection(model_.ItemAt(current));
}

void ProjectPanel::RememberViewState() {
    isRebuilding_ = true;
    currentBeforeRebuild_ = GetSelectedItem();
}

void ProjectPanel::RestoreViewState() {
    treeView_->expandAll();
    for (const auto& item : collapsedItems_) {
        const QModelIndex row = model_.IndexOf(item.Get());
        if (row.isValid()) {
            treeView_->collapse(row);
        }
    }
    const QModelIndex current = model_.IndexOf(currentBeforeRebuild_.Get());
    if (current.isValid()) {
        treeView_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect);
    }
    isRebuilding_ = false;
    UpdateEmptyNote();
    if (currentBeforeRebuild_ && !current.isValid()) {
        // The selected item left the project: the selection is cleared.
        ProjectGestures::AnnounceSelection({});
    }
    currentBeforeRebuild_.Reset();
}

void ProjectPanel::ShowContextMenu(const QPoint& position) {
    const KSL::InterfaceRef<BE::IProjectItem> item = model_.ItemAt(treeView_->indexAt(position));
    if (!item) {
        return;
    }
    QMenu menu(this);
    switch (item->GetItemKind()) {
    case BE::ProjectItemKind::kCaptioningStream:
        AddStreamActions(menu, item);
        break;
    case BE::ProjectItemKind::kMasterClip:
        AddClipActions(menu, item);
        break;
    case BE::ProjectItemKind::kSequence:
        menu.addAction(Localized("$$$/Corvala/Host/Project/SequenceSettings=Sequence Settings..."),
                       this, [this, item] { OpenItem(item); });
        break;
    case BE::ProjectItemKind::kBin:
        break;
    }
    AddEditActions(menu, item);
    menu.exec(treeView_->viewport()->mapToGlobal(position));
}

void ProjectPanel::AddClipActions(QMenu& menu, const KSL::InterfaceRef<BE::IProjectItem>& item) {
    const auto clip = item.QueryInterface<BE::IMasterClip>();
    menu.addAction(Localized("$$$/Corvala/Host/Project/OpenInMonitor=Open in Source Monitor"), this,
                   [this, item] { OpenItem(item); });
    QMenu* streams =
        menu.addMenu(Localized("$$$/Corvala/Host/Project/AddStream=Add Caption Stream"));
    for (const auto& [id, format] : kCaptionStreamCommands) {
        QAction* add = streams->addAction(
            ToQString(zelcaptioning::GetFullStreamFormatLabel(format)), this,
            [this, clip, format = format] {
                project_->AddCaptioningStream(clip, format, BE::UndoMode::kAsUndoStep);
            });
        // A clip has one stream of each format at most.
        add->setEnabled(!clip->FindCaptioningStream(format));
    }
    menu.addAction(Localized("$$$/Corvala/Host/Project/CloseClip=Close Clip"), this,
                   [clip] { ProjectGestures::AnnounceClipClosed(clip); });
}

void ProjectPanel::AddEditActions(QMenu& menu, const KSL::InterfaceRef<BE::IProjectItem>& item) {
    menu.addSeparator();
    if (ProjectItemEdits::CanRename(*item)) {
        menu.addAction(Localized("$$$/Corvala/Host/Project/Rename=Rename"), this, [this, item] {
            const QModelIndex row = model_.IndexOf(item.Get());
            treeView_->setCurrentIndex(row);
            treeView_->edit(row);
        });
    }
    if (ProjectItemEdits::CanDelete(*item)) {
        menu.addAction(Localized("$$$/Corvala/Host/Project/Delete=Delete"), this,
                       [this, item] { ProjectItemEdits::Delete(*project_, item); });
    }
}

void ProjectPanel::AddStreamActions(QMenu& menu, const KSL::InterfaceRef<BE::IProjectItem>& item) {
    const auto stream = item.QueryInterface<BE::ICaptioningStream>();
    menu.addAction(Localized("$$$/Corvala/Host/Project/OpenCaptions=Open Captions"), this,
                   [stream] { ProjectGestures::AnnounceStreamOpened(stream); });
    QMenu* inSequence =
        menu.addMenu(Localized("$$$/Corvala/Host/Project/OpenInSequence=Open in Sequence"));
    for (std::size_t b = 0; project_ && b < project_->GetBinCount(); ++b) {
        const KSL::InterfaceRef<BE::IBin> bin = project_->GetBin(b);
        for (std::size_t s = 0; s < bin->GetSequenceCount(); ++s) {
            const KSL::InterfaceRef<BE::ISequence> sequence = bin->GetSequence(s);
            inSequence->addAction(ToQString(sequence->GetName()), this, [stream, sequence] {
                ProjectGestures::AnnounceTrackItemOpened(stream, sequence);
            });
        }
    }
    inSequence->setEnabled(!inSequence->isEmpty());
}

} // namespace host

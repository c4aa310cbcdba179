#include "ProjectTreeModel.h"

#include "BE/CaptionMessages.h"
#include "BE/ProjectMessages.h"
#include "BE/StreamMessages.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "MZ/Stations.h"
#include "ProjectItemEdits.h"
#include "ProjectItemText.h"

#include <QApplication>
#include <QStyle>

namespace host {
namespace {

constexpr int kItemRole = Qt::UserRole + 1;

QIcon IconOf(BE::ProjectItemKind kind) {
    QStyle* style = QApplication::style();
    switch (kind) {
    case BE::ProjectItemKind::kBin:
        return style->standardIcon(QStyle::SP_DirIcon);
    case BE::ProjectItemKind::kMasterClip:
        return style->standardIcon(QStyle::SP_MediaPlay);
    case BE::ProjectItemKind::kSequence:
        return style->standardIcon(QStyle::SP_FileDialogListView);
    case BE::ProjectItemKind::kCaptioningStream:
        return style->standardIcon(QStyle::SP_FileDialogDetailedView);
    }
    return {};
}

} // namespace

ProjectTreeModel::ProjectTreeModel(std::function<void()> aboutToRebuild,
                                   std::function<void()> rebuilt)
    : aboutToRebuild_(std::move(aboutToRebuild))
    , rebuilt_(std::move(rebuilt)) {}

ProjectTreeModel::~ProjectTreeModel() {
    Unsubscribe();
}

void ProjectTreeModel::SetProject(KSL::InterfaceRef<BE::IProject> project) {
    project_ = std::move(project);
    Rebuild();
}

KSL::InterfaceRef<BE::IProjectItem> ProjectTreeModel::ItemAt(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    auto* item = reinterpret_cast<BE::IProjectItem*>(index.data(kItemRole).value<quintptr>());
    return KSL::InterfaceRef<BE::IProjectItem>(item);
}

QModelIndex ProjectTreeModel::IndexOf(const BE::IProjectItem* item) const {
    if (!item) {
        return {};
    }
    const QModelIndexList found =
        match(index(0, 0), kItemRole, QVariant::fromValue(reinterpret_cast<quintptr>(item)), 1,
              Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.first();
}

bool ProjectTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole) {
        return QStandardItemModel::setData(index, value, role);
    }
    const KSL::InterfaceRef<BE::IProjectItem> item = ItemAt(index);
    return project_ && ProjectItemEdits::Rename(*project_, item, value.toString());
}

bool ProjectTreeModel::HandleMessage(const KSL::Message& message) {
    if (message.As<BE::ProjectStructureChangedMessage>() ||
        message.As<BE::CaptioningStreamChangedMessage>()) {
        Rebuild();
        return true;
    }
    if (const auto* changed = message.As<BE::CaptionsChangedMessage>()) {
        for (const BE::StreamCaptionChange& change : changed->GetChanges()) {
            RefreshText(change.first.Get());
        }
        return true;
    }
    if (const auto* changed = message.As<BE::PropertiesChangedMessage>()) {
        for (const auto& item : changed->GetItems()) {
            RefreshText(item.Get());
        }
        return true;
    }
    return false;
}

void ProjectTreeModel::Rebuild() {
    aboutToRebuild_();
    Unsubscribe();
    clear();
    shownItems_.clear();
    if (project_) {
        auto subscribe = [this](const KSL::StationID& station) {
            KSL::StationUtils::AddListener(station, this);
            subscribedStations_.push_back(station);
        };
        subscribe(KSL::StationOf(project_));
        subscribe(MZ::kStation_Info);
        for (std::size_t b = 0; b < project_->GetBinCount(); ++b) {
            const KSL::InterfaceRef<BE::IBin> bin = project_->GetBin(b);
            QStandardItem* binRow = AddRow(*invisibleRootItem(), bin);
            for (std::size_t c = 0; c < bin->GetMasterClipCount(); ++c) {
                const KSL::InterfaceRef<BE::IMasterClip> clip = bin->GetMasterClip(c);
                QStandardItem* clipRow = AddRow(*binRow, clip);
                subscribe(KSL::StationOf(clip));
                for (std::size_t s = 0; s < clip->GetCaptioningStreamCount(); ++s) {
                    const KSL::InterfaceRef<BE::ICaptioningStream> stream =
                        clip->GetCaptioningStream(s);
                    AddRow(*clipRow, stream);
                    subscribe(KSL::StationOf(stream));
                }
            }
            for (std::size_t s = 0; s < bin->GetSequenceCount(); ++s) {
                AddRow(*binRow, bin->GetSequence(s));
            }
        }
    }
    rebuilt_();
}

void ProjectTreeModel::Unsubscribe() {
    for (const KSL::StationID& station : subscribedStations_) {
        KSL::StationUtils::RemoveListener(station, this);
    }
    subscribedStations_.clear();
}

QStandardItem* ProjectTreeModel::AddRow(QStandardItem& parent,
                                        KSL::InterfaceRef<BE::IProjectItem> item) {
    const QString text = ProjectItemText(*item);
    auto row = std::make_unique<QStandardItem>(IconOf(item->GetItemKind()), text);
    // A long name is cut short in a narrow panel; its tooltip shows all of it.
    row->setToolTip(text);
    row->setEditable(ProjectItemEdits::CanRename(*item));
    row->setData(QVariant::fromValue(reinterpret_cast<quintptr>(item.Get())), kItemRole);
    QStandardItem* added = row.get();
    parent.appendRow(row.release());
    shownItems_.push_back(std::move(item));
    return added;
}

void ProjectTreeModel::RefreshText(const BE::IProjectItem* item) {
    const QModelIndex row = IndexOf(item);
    if (row.isValid()) {
        const QString text = ProjectItemText(*item);
        setData(row, text, Qt::DisplayRole);
        setData(row, text, Qt::ToolTipRole);
    }
}

} // namespace host

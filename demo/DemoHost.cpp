#include "DemoHost.h"

#include "XrefDocument.h"

#include "framework/PackedDib.h"
#include "framework/ZuUiImageList.h"
#include "framework/ZuUiRm.h"
#include "host/KvToolTipService.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "resources/TroveResources.h"
#include "services/XrefMessageBox.h"
#include "toolbar/XrefToolBar.h"
#include "util/DateTime.h"
#include "views/TroveListCtrl.h"
#include "views/XrefPreview.h"
#include "views/XrefTreeCtrl.h"

#include <QDir>
#include <QFileInfo>
#include <QHelpEvent>
#include <QItemSelectionModel>

namespace {

/// A reference of the sample project as the demo host knows it.
class DemoItem : public CXrefPanelCtrlItem
{
public:
    DemoItem(CXrefPanelCtrl& panel, bool host = false, bool pendingRelative = false)
        : CXrefPanelCtrlItem(panel), m_host(host), m_pendingRelative(pendingRelative)
    {}

    bool IsHostDwgItem() const override { return m_host; }
    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties, int) const override { return false; }
    bool isPendingRelativePath() const override { return m_pendingRelative; }

    using CXrefPanelCtrlItem::CreateToolTipInfo;
    using CXrefPanelCtrlItem::GetPreview;
    using CXrefPanelCtrlItem::SetTypeIcon;

private:
    bool m_host;
    bool m_pendingRelative;
};

class DemoItemTypes : public CXrefPanelCtrlItemTypes
{
public:
    static void Register()
    {
        static const bool done = [] {
            return RegisterClass(typeid(DemoItem), Factory(),
                                 CZuUiRmId(TroveUI::ResourceInstance(), "IDI_TYPE_DWG"),
                                 StandardTypeIcons());
        }();
        (void)done;
    }
};

std::wstring wide(const QString& text)
{
    return text.toStdWString();
}

// The named type icons of the standard set, by kind; drawings show the class's own icon.
QString typeIconName(ReferenceKind kind)
{
    switch (kind) {
    case ReferenceKind::Drawing:
        return {};
    case ReferenceKind::RasterImage:
        return QStringLiteral("IMAGE");
    case ReferenceKind::PdfUnderlay:
        return QStringLiteral("PDF");
    case ReferenceKind::DwfUnderlay:
        return QStringLiteral("DWF");
    case ReferenceKind::DgnUnderlay:
        return QStringLiteral("DGN");
    case ReferenceKind::PointCloud:
        return QStringLiteral("POINTCLOUD");
    case ReferenceKind::CoordinationModel:
        return QStringLiteral("MODEL");
    case ReferenceKind::DataLink:
        return QStringLiteral("DATALINK");
    }
    return {};
}

// A row shared by several occurrences shows the saved path of the first: the later ones only
// add their tree nodes, status and found-at.
void describe(CXrefPanelCtrlItem& item, const Occurrence& occurrence)
{
    const PanelStatus status = ToPanelStatus(occurrence.state);
    item.SetReferenceStatus(status.icon, status.code);
    const bool ownsRow = occurrence.sharedWith < 0;
    if (ownsRow)
        item.SetSavedPath(wide(QDir::toNativeSeparators(occurrence.reference.savedPath)));
    if (occurrence.resolution.foundAt.isEmpty())
        return;
    item.SetFoundAt(wide(QDir::toNativeSeparators(occurrence.resolution.foundAt)));
    item.SetFileVersion(occurrence.facts.fileVersion);
    if (ownsRow) {
        item.SetSize(occurrence.facts.size);
        item.SetDate(Util::DateTime(occurrence.facts.modified));
    }
}

QString names(const std::vector<CXrefPanelCtrlItem*>& items)
{
    QStringList list;
    for (const CXrefPanelCtrlItem* item : items)
        list << QString::fromStdWString(item->GetText());
    return list.join(QStringLiteral(", "));
}

} // namespace

DemoPanel::DemoPanel()
    : CXrefPanelCtrl(nullptr, std::make_shared<CXrefToolBar>(), std::make_shared<CXrefMessageBox>(),
                     true, FileReferenceViewType::ListView, DetailsViewType::Preview, -1, true)
{
    DemoItemTypes::Register();
}

DemoPanel::~DemoPanel()
{
    KvToolTipService::Instance()->Hide();
    DeleteAllItems();
}

bool DemoPanel::Open(const XrefDocument& document, QWidget* parent)
{
    // The panel makes the tool bar's window, lays out its children and passes the tool bar's
    // commands on to OnMenuSelection and OnDisplayHelp.
    if (!Create(L"File References", QRect(0, 0, 900, 560), parent, 30000))
        return false;
    fill(document);

    // The list reports its selection itself; the tree does not yet.
    connect(GetListCtrl(), &CTroveListCtrl::ItemsSelected, this,
            [this] { selectionChanged(GetListCtrl()); });
    connect(GetTreeCtrl()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { selectionChanged(GetTreeCtrl()); });
    GetTreeCtrl()->viewport()->installEventFilter(this);
    GetListCtrl()->viewport()->installEventFilter(this);
    GetToolBar()->EnablePathOperations(false);
    showMessage(QStringLiteral("%1 references in %2")
                    .arg(GetUniqueXrefCount())
                    .arg(QFileInfo(document.Path()).fileName()));
    return true;
}

void DemoPanel::fill(const XrefDocument& document)
{
    BeginUpdate();
    std::vector<DemoItem*> made;
    for (const Occurrence& occurrence : document.Occurrences()) {
        const bool host = occurrence.parent < 0;
        auto* item = new DemoItem(*this, host);
        if (host) {
            InsertRootItem(*item);
            item->SetTypeIcon(RefStatus::NoIcon, QStringLiteral("HOSTDWG"));
            item->SetType(L"Current");
        } else {
            InsertItem(*item, *made[size_t(occurrence.parent)],
                       occurrence.sharedWith < 0 ? nullptr : made[size_t(occurrence.sharedWith)]);
            item->SetTypeIcon(typeIconName(occurrence.reference.kind));
            item->SetType(occurrence.reference.overlay ? L"Overlay" : L"Attach");
        }
        item->SetText(wide(occurrence.reference.name));
        describe(*item, occurrence);
        made.push_back(item);
    }
    EndUpdate();
    GetTreeCtrl()->expandAll();
}

void DemoPanel::ShowTree(bool tree)
{
    SetReferenceViewType(tree ? FileReferenceViewType::TreeView : FileReferenceViewType::ListView);
}

QAbstractItemView* DemoPanel::frontView() const
{
    if (GetReferenceViewType() == FileReferenceViewType::TreeView)
        return GetTreeCtrl();
    return GetListCtrl();
}

void DemoPanel::SelectByName(const QString& name)
{
    QAbstractItemView* view = frontView();
    const bool tree = view == GetTreeCtrl();
    const QModelIndexList found =
        view->model()->match(view->model()->index(0, tree ? 0 : int(ListViewColumn::ReferenceName)),
                             Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty())
        return;
    if (tree)
        view->selectionModel()->select(found.first(), QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
    else if (CXrefPanelCtrlItem* item = GetListCtrl()->ItemFromIndex(found.first()))
        GetListCtrl()->SelectItem(*item);
}

QWidget* DemoPanel::ShowSelectedToolTip()
{
    QAbstractItemView* view = frontView();
    QModelIndex first;
    if (view == GetTreeCtrl()) {
        const QModelIndexList selected = view->selectionModel()->selectedIndexes();
        if (!selected.isEmpty())
            first = selected.first();
    } else if (!GetListCtrl()->GetSelectedItems().empty()) {
        first = GetListCtrl()->IndexFromItem(*GetListCtrl()->GetSelectedItems().front(),
                                             int(ListViewColumn::ReferenceName));
    }
    if (!first.isValid())
        return nullptr;
    const QRect cell = view->visualRect(first);
    QHelpEvent hover(QEvent::ToolTip, cell.center(), view->viewport()->mapToGlobal(cell.center()));
    eventFilter(view->viewport(), &hover);
    return KvToolTipService::Instance()->IsShowing() ? KvToolTipService::Instance()->Popup()
                                                     : nullptr;
}

std::wstring DemoPanel::GetTroveStateToolTipText(CXrefPanelCtrlItem&)
{
    return {};
}

void DemoPanel::FillStateImageList(CZuUiImageList& list, bool, int)
{
    const Util::ResourceModule* module = TroveUI::ResourceInstance();
    for (const char* name : {"IDI_STATUS_BLANK", "IDI_STATUS_COMPARABLE",
                             "IDI_STATUS_NEEDSRELOADING", "IDI_STATUS_UNLOADED"})
        list.Add(CZuUiRm::ThemedIcon(CZuUiRmId(module, name)));
}

std::vector<int> DemoPanel::GetStoredColumnDipWidths()
{
    return {25, 22, 170, 135, 70, 70, 150, 300};
}

void DemoPanel::GetStoredLowerGroup(double& ratio, bool& shown)
{
    ratio = 0.62;
    shown = true;
}

void DemoPanel::OnMenuSelection(Trove::MenuItems item,
                                const std::vector<CXrefPanelCtrlItem*>& items)
{
    LoadMenuItemStrings();
    const auto text = m_MenuItemstrings.find(item);
    QString command = text == m_MenuItemstrings.end()
                          ? QStringLiteral("Command %1").arg(int(item))
                          : QString::fromStdWString(text->second).remove(QLatin1Char('&'));
    showMessage(items.empty() ? command : QStringLiteral("%1: %2").arg(command, names(items)));
}

void DemoPanel::OnStatusColumnDoubleClicked(CXrefPanelCtrlItem* item)
{
    if (item)
        showMessage(QString::fromStdWString(item->GetText()));
}

void DemoPanel::OnDisplayHelp()
{
    showMessage(TroveUI::ResString(1058));
}

void DemoPanel::selectionChanged(QAbstractItemView* view)
{
    const std::vector<CXrefPanelCtrlItem*> items = view == GetTreeCtrl()
                                                       ? GetTreeCtrl()->GetSelectedItems()
                                                       : GetListCtrl()->GetSelectedItems();
    OnItemsSelected(items, true);
    GetToolBar()->EnablePathOperations(!items.empty());

    CXrefPanelCtrlItem* single = items.size() == 1 ? items.front() : nullptr;
    // Every item in this panel is one of the demo's own.
    const QPixmap picture = single ? static_cast<DemoItem*>(single)->GetPreview() : QPixmap();
    if (picture.isNull()) {
        GetPreviewCtrl()->SetPreviewBitmap(nullptr, nullptr, 0);
    } else {
        const PackedDib dib = PackedDib::FromImage(picture.toImage());
        single->SetPreviewBitmap(&dib, nullptr, 0);
    }
    if (single) {
        const QString path = QString::fromStdWString(
            single->GetFoundAt().empty() ? single->GetSavedPath() : single->GetFoundAt());
        showMessage(QStringLiteral("%1 - %2 - %3")
                        .arg(QString::fromStdWString(single->GetText()),
                             CXrefPanelCtrlItemStatus::ToString(single->GetReferenceStatusText()),
                             path));
    } else if (!items.empty()) {
        showMessage(names(items));
    }
}

CXrefPanelCtrlItem* DemoPanel::itemAt(QAbstractItemView* view, const QPoint& viewportPos) const
{
    if (view == GetTreeCtrl())
        return GetTreeCtrl()->ItemAt(viewportPos);
    return GetListCtrl()->ItemAt(viewportPos);
}

// Rich tool tips for the rows, as the views will show them once they ask for them themselves.
bool DemoPanel::eventFilter(QObject* watched, QEvent* event)
{
    for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(GetListCtrl()),
                                    static_cast<QAbstractItemView*>(GetTreeCtrl())}) {
        if (watched != view->viewport())
            continue;
        if (event->type() == QEvent::ToolTip) {
            const auto* help = static_cast<QHelpEvent*>(event);
            CXrefPanelCtrlItem* item = itemAt(view, help->pos());
            if (!item) {
                KvToolTipService::Instance()->Hide();
                return true;
            }
            const auto info =
                static_cast<DemoItem*>(item)->CreateToolTipInfo(GetToolTipMenuSettings());
            KvToolTipService::Instance()->SetToolTipInfo(info.get());
            QRect cell = view->visualRect(view->indexAt(help->pos()));
            cell.moveTopLeft(view->viewport()->mapToGlobal(cell.topLeft()));
            KvToolTipService::Instance()->Show(cell);
            return true;
        }
        if (event->type() == QEvent::Leave)
            KvToolTipService::Instance()->Hide();
    }
    return CXrefPanelCtrl::eventFilter(watched, event);
}

void DemoPanel::showMessage(const QString& text)
{
    GetMessageBox()->SetMessage(text);
}

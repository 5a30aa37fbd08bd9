#include "HostPanel.h"

#include "DemoCommands.h"
#include "DemoItems.h"
#include "DemoSettings.h"
#include "DocumentRepository.h"
#include "XrefDocument.h"

#include "framework/ZuUiImageList.h"
#include "framework/ZuUiMenu.h"
#include "framework/ZuUiTheme.h"
#include "services/XrefMessageBox.h"
#include "toolbar/TroveToolBar.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/XrefTreeCtrl.h"

#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QSet>

namespace {

std::shared_ptr<CXrefToolBar> makeToolBar(bool repository)
{
    if (repository)
        return std::make_shared<CTroveToolBar>();
    return std::make_shared<CXrefToolBar>();
}

// The repository states drawn as small badges: a tick (checked in), a pen (checked out by
// you), a padlock (someone else has it) and a down arrow (a newer version waits).
QPixmap stateBadge(RepositoryState state, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 16.0, size / 16.0);
    const bool dark = CZuUiTheme::Instance().IsDarkTheme();
    QPen pen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    QColor fill;
    QPainterPath mark;
    switch (state) {
    case RepositoryState::CheckedIn:
        fill = dark ? QColor(0x4c, 0xb0, 0x5a) : QColor(0x2e, 0x8b, 0x3c);
        mark.moveTo(4.5, 8.5);
        mark.lineTo(7, 11);
        mark.lineTo(11.5, 5.5);
        break;
    case RepositoryState::CheckedOutByMe:
        fill = dark ? QColor(0x4a, 0x90, 0xe2) : QColor(0x1f, 0x6f, 0xc8);
        mark.moveTo(5, 11);
        mark.lineTo(11, 5);
        mark.moveTo(4.5, 11.5);
        mark.lineTo(6, 11.5);
        break;
    case RepositoryState::CheckedOutByOther:
        fill = dark ? QColor(0xe0, 0x5a, 0x4f) : QColor(0xc0, 0x39, 0x2b);
        mark.addRect(5, 7.5, 6, 4.5);
        mark.moveTo(6.5, 7.5);
        mark.arcTo(6.5, 4, 3, 4, 180, -180);
        break;
    case RepositoryState::OutOfDate:
        fill = dark ? QColor(0xf0, 0xa8, 0x30) : QColor(0xd9, 0x82, 0x0b);
        mark.moveTo(8, 4);
        mark.lineTo(8, 11.5);
        mark.moveTo(5, 8.5);
        mark.lineTo(8, 11.5);
        mark.lineTo(11, 8.5);
        break;
    case RepositoryState::NotInRepository:
        return pixmap;
    }
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawEllipse(QRectF(0.5, 0.5, 15, 15));
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawPath(mark);
    return pixmap;
}

} // namespace

std::vector<DemoItem*> DemoItems(const std::vector<CXrefPanelCtrlItem*>& items)
{
    std::vector<DemoItem*> demo;
    for (CXrefPanelCtrlItem* item : items)
        if (auto* d = dynamic_cast<DemoItem*>(item))
            demo.push_back(d);
    return demo;
}

HostPanel::HostPanel(XrefDocument& document, DocumentRepository* repository,
                     const DemoSettings& settings)
    : CXrefPanelCtrl(
          nullptr, makeToolBar(repository != nullptr), std::make_shared<CXrefMessageBox>(),
          repository != nullptr, FileReferenceViewType(settings.referenceView),
          DetailsViewType(settings.detailsView), settings.sortColumn, settings.sortAscending),
      m_document(document), m_repository(repository), m_storedColumns(settings.columnDipWidths),
      m_storedRatio(settings.splitterRatio), m_storedLowerPane(settings.lowerPaneShown)
{
    RegisterDemoItemTypes();
}

HostPanel::~HostPanel()
{
    DeleteAllItems();
}

void HostPanel::Fill()
{
    QSet<QString> selected;
    for (const CXrefPanelCtrlItem* item : GetSelectedItems())
        selected.insert(QString::fromStdWString(item->GetText()));

    // The panel destroys every item in the tree; the host's index goes with them.
    m_items.clear();
    DeleteAllItems();
    const std::vector<Occurrence>& occurrences = m_document.Occurrences();
    if (occurrences.empty())
        return;
    BeginUpdate();
    m_items.reserve(occurrences.size());
    for (std::size_t i = 0; i < occurrences.size(); ++i) {
        const Occurrence& occurrence = occurrences[i];
        const bool host = occurrence.parent < 0;
        DemoItem* item = MakeDemoItem(*this, occurrence.reference.kind, host).release();
        if (host)
            InsertRootItem(*item);
        else
            InsertItem(*item, *m_items[std::size_t(occurrence.parent)],
                       occurrence.sharedWith < 0 ? nullptr
                                                 : m_items[std::size_t(occurrence.sharedWith)]);
        item->Describe(occurrence, int(i), occurrence.sharedWith < 0);
        m_items.push_back(item);
    }
    if (m_repository)
        UpdateRepositoryStates();
    EndUpdate();
    EnableHostModStatus(true, m_document.IsModified());
    if (GetTreeCtrl())
        GetTreeCtrl()->expandAll();
    for (const QString& name : selected)
        if (Select(name))
            break;
}

void HostPanel::MarkNeedsReloading(const QList<int>& occurrences, const QString& message)
{
    const PanelStatus status = ToPanelStatus(ReferenceState::NeedsReloading);
    for (const int index : occurrences)
        if (DemoItem* item = ItemOf(index)) {
            item->SetReferenceStatus(status.icon, status.code);
            SetDetailsProperty(*item, XrefProperties::Status);
        }
    ShowMessage(message);
}

void HostPanel::showRepositoryState(DemoItem& item)
{
    const QString path = item.FoundAt();
    const unsigned state =
        unsigned(path.isEmpty() ? RepositoryState::NotInRepository : m_repository->State(path));
    item.SetTroveStateIconIndexTreeView(state);
    item.SetTroveStateIconIndexListView(state);
}

void HostPanel::UpdateRepositoryStates()
{
    if (!m_repository)
        return;
    for (DemoItem* item : m_items)
        if (item)
            showRepositoryState(*item);
}

DemoItem* HostPanel::ItemOf(int index) const
{
    return index >= 0 && std::size_t(index) < m_items.size() ? m_items[std::size_t(index)]
                                                             : nullptr;
}

DemoItem* HostPanel::FindItem(const QString& name) const
{
    for (DemoItem* item : m_items)
        if (item && QString::fromStdWString(item->GetText()) == name)
            return item;
    return nullptr;
}

bool HostPanel::Select(const QString& name)
{
    DemoItem* item = FindItem(name);
    if (!item)
        return false;
    SelectItem(item);
    return true;
}

void HostPanel::ShowMessage(const QString& text)
{
    GetMessageBox()->SetMessage(text);
}

QString HostPanel::Message() const
{
    return GetMessageBox()->Message();
}

void HostPanel::forget(const CXrefPanelCtrlItem& item)
{
    for (DemoItem*& known : m_items)
        if (known == &item)
            known = nullptr;
}

// --- Host operations ----------------------------------------------------------------------------

std::wstring HostPanel::GetTroveStateToolTipText(CXrefPanelCtrlItem& item)
{
    const auto* demo = dynamic_cast<DemoItem*>(&item);
    if (!m_repository || !demo || demo->FoundAt().isEmpty())
        return {};
    return m_repository->Describe(demo->FoundAt()).toStdWString();
}

void HostPanel::FillStateImageList(CZuUiImageList& list, bool, int)
{
    // Drawn at twice the list's size, so that the badges stay sharp on high-density screens.
    const int size = 2 * (list.IconSize().height() > 0 ? list.IconSize().height() : 16);
    for (const RepositoryState state :
         {RepositoryState::CheckedIn, RepositoryState::CheckedOutByMe,
          RepositoryState::CheckedOutByOther, RepositoryState::OutOfDate})
        list.Add(stateBadge(state, size));
}

void HostPanel::OnSharedRowItemInserted(const CXrefPanelCtrlItem&) {}

void HostPanel::OnSharedRowOwnerChanged(CXrefPanelCtrlItem& remaining)
{
    // The row now shows the remaining occurrence: give it that occurrence's values.
    auto* demo = dynamic_cast<DemoItem*>(&remaining);
    if (!demo)
        return;
    const int index = demo->OccurrenceIndex();
    if (index >= 0 && std::size_t(index) < m_document.Occurrences().size())
        demo->Describe(m_document.Occurrences()[std::size_t(index)], index, true);
}

void HostPanel::OnItemRemoved(CXrefPanelCtrlItem& item)
{
    forget(item);
}

std::vector<int> HostPanel::GetStoredColumnDipWidths()
{
    return m_storedColumns;
}

void HostPanel::GetStoredLowerGroup(double& ratio, bool& shown)
{
    ratio = m_storedRatio;
    shown = m_storedLowerPane;
}

void HostPanel::FillContextMenu(QMenu& menu, const std::vector<CXrefPanelCtrlItem*>& items, bool)
{
    const std::vector<DemoItem*> selected = DemoItems(items);
    if (Trace)
        Trace(QStringLiteral("menu"), QString::number(selected.size()));
    if (selected.empty())
        return;
    bool anyOwn = false;
    bool anyFound = false;
    bool anyUnloaded = false;
    for (const DemoItem* item : selected) {
        anyOwn |= item->IsOwnReference();
        anyFound |= !item->FoundAt().isEmpty();
        anyUnloaded |= item->GetReferenceStatusIcon() == RefStatus::Unloaded;
    }
    const auto add = [&menu](Trove::MenuItems command, bool enabled) {
        InsertMenuW(menu, command, enabled ? CZuUiMenu::Enabled : CZuUiMenu::Grayed, nullptr);
    };
    add(Trove::HostCommand3, selected.size() == 1 && anyFound);  // open
    add(Trove::HostCommand25, selected.size() == 1 && anyFound); // show in folder
    add(Trove::HostCommand16, selected.size() == 1 && anyFound); // copy path
    add(Trove::Separator, true);
    add(Trove::HostCommand7, anyOwn || anyUnloaded);  // reload
    add(Trove::HostCommand6, anyOwn && !anyUnloaded); // unload
    add(Trove::HostCommand9, anyOwn);                 // detach
    add(Trove::Separator, true);
    bool removePath = false, makeRelative = false, makeAbsolute = false;
    for (DemoItem* item : selected) {
        bool r = false, rel = false, abs = false;
        item->GetPathOperations(r, rel, abs);
        removePath |= r;
        makeRelative |= rel;
        makeAbsolute |= abs;
    }
    add(Trove::RemovePath, removePath);
    add(Trove::MakePathRelative, makeRelative);
    add(Trove::MakePathAbsolute, makeAbsolute);
    add(Trove::SelectNewPath, selected.size() == 1 && anyOwn);
    add(Trove::FindAndReplace, anyOwn);
    if (m_repository) {
        auto sub = CZuUiMenu::CreatePopupMenu();
        const DemoItem* single = selected.size() == 1 ? selected.front() : nullptr;
        const RepositoryState state = single && !single->FoundAt().isEmpty()
                                          ? m_repository->State(single->FoundAt())
                                          : RepositoryState::NotInRepository;
        const auto repositoryEntry = [&sub](int id, const char* text, bool enabled) {
            CZuUiMenu::AppendMenu(sub.get(), enabled ? CZuUiMenu::Enabled : CZuUiMenu::Grayed,
                                  unsigned(id), QString::fromLatin1(text));
        };
        repositoryEntry(CheckOut, "Check &Out", state == RepositoryState::CheckedIn);
        repositoryEntry(CheckIn, "Check &In", state == RepositoryState::CheckedOutByMe);
        repositoryEntry(UndoCheckOut, "&Undo Check Out", state == RepositoryState::CheckedOutByMe);
        repositoryEntry(GetLatest, "Get &Latest Version", state == RepositoryState::OutOfDate);
        add(Trove::Separator, true);
        InsertMenuW(menu, Trove::HostSubMenu1, CZuUiMenu::Popup, sub.release());
    }
}

void HostPanel::OnMenuSelection(Trove::MenuItems item,
                                const std::vector<CXrefPanelCtrlItem*>& items)
{
    if (m_commands)
        m_commands->Run(int(item), DemoItems(items));
}

void HostPanel::OnStatusColumnDoubleClicked(CXrefPanelCtrlItem* item)
{
    auto* demo = dynamic_cast<DemoItem*>(item);
    if (m_commands && demo)
        m_commands->StatusDoubleClicked(*demo);
}

void HostPanel::OnDisplayHelp()
{
    if (m_commands)
        m_commands->Help();
}

bool HostPanel::OnApplyPropertyEdit(const std::vector<CXrefPanelCtrlItem*>& items,
                                    XrefProperties property, const std::wstring& newValue,
                                    const std::wstring& previousValue)
{
    return m_commands &&
           m_commands->ApplyEdit(DemoItems(items), property, QString::fromStdWString(previousValue),
                                 QString::fromStdWString(newValue));
}

void HostPanel::OnSortCriteriaChanged(int sortColumn, bool ascending)
{
    if (m_commands)
        m_commands->SortChanged(sortColumn, ascending);
}

void HostPanel::OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool flag)
{
    CXrefPanelCtrl::OnItemsSelected(items, flag);
    if (!Trace)
        return;
    QStringList names;
    for (const CXrefPanelCtrlItem* item : items)
        names << QString::fromStdWString(item->GetText());
    Trace(QStringLiteral("selected"), names.join(QLatin1Char(',')));
}

#pragma once

#include "panel/XrefPanelCtrl.h"

#include <QList>
#include <QString>

#include <functional>

#include <vector>

class DemoCommands;
class DemoItem;
class DemoSettings;
class DocumentRepository;
class XrefDocument;

/// The demo host's reference panel: it lists the open document's references and passes every
/// command, edit and double click on to DemoCommands, which does the work on the document.
class HostPanel : public CXrefPanelCtrl
{
public:
    /// Context-menu commands of the repository sub-menu. The views pass ids from 1000 to 1040
    /// through to the host untouched.
    enum RepositoryCommand : int {
        CheckOut = 1001,
        CheckIn = 1002,
        UndoCheckOut = 1003,
        GetLatest = 1004,
    };

    /// @p repository makes the panel a repository panel (state icons, repository tool bar); it
    /// is not owned and must outlive the panel. @p settings gives the stored layout.
    HostPanel(XrefDocument& document, DocumentRepository* repository, const DemoSettings& settings);
    ~HostPanel() override;

    void SetCommands(DemoCommands* commands) { m_commands = commands; }
    XrefDocument& Document() const { return m_document; }
    DocumentRepository* Repository() const { return m_repository; }

    /// Lists the document's references afresh, keeping the selection by name where it can.
    void Fill();
    /// The files behind @p occurrences changed on disk.
    void MarkNeedsReloading(const QList<int>& occurrences, const QString& message);
    /// Shows each item's repository state again.
    void UpdateRepositoryStates();

    /// The item of occurrence @p index as last filled, or null.
    DemoItem* ItemOf(int index) const;
    /// The first item named @p name (tree order), or null.
    DemoItem* FindItem(const QString& name) const;
    /// Selects the first item named @p name in the view in front. False when there is none.
    bool Select(const QString& name);

    /// Told of every selection the panel reports and every context menu the host fills; the
    /// demo's --trace prints them for scripts that drive the window from outside.
    std::function<void(const QString& event, const QString& detail)> Trace;

    void ShowMessage(const QString& text);
    QString Message() const;

    // --- Host operations ------------------------------------------------------------------------

    std::wstring GetTroveStateToolTipText(CXrefPanelCtrlItem& item) override;
    void FillStateImageList(CZuUiImageList& list, bool flag, int view) override;
    void OnSharedRowItemInserted(const CXrefPanelCtrlItem& existing) override;
    void OnSharedRowOwnerChanged(CXrefPanelCtrlItem& remaining) override;
    void OnItemRemoved(CXrefPanelCtrlItem& item) override;
    std::vector<int> GetStoredColumnDipWidths() override;
    void HostCallback7() override {}
    void HostCallback9(std::vector<int>&) override {}
    void GetStoredLowerGroup(double& ratio, bool& shown) override;
    void HostCallback11() override {}
    void FillContextMenu(QMenu& menu, const std::vector<CXrefPanelCtrlItem*>& items,
                         bool flag) override;
    void OnMenuSelection(Trove::MenuItems item,
                         const std::vector<CXrefPanelCtrlItem*>& items) override;
    void OnStatusColumnDoubleClicked(CXrefPanelCtrlItem* item) override;
    void OnDisplayHelp() override;
    bool OnApplyPropertyEdit(const std::vector<CXrefPanelCtrlItem*>& items, XrefProperties property,
                             const std::wstring& newValue,
                             const std::wstring& previousValue) override;
    void HostCallback20() override {}
    void OnSortCriteriaChanged(int sortColumn, bool ascending) override;
    void OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool flag) override;

private:
    void forget(const CXrefPanelCtrlItem& item);
    void showRepositoryState(DemoItem& item);

    XrefDocument& m_document;
    DocumentRepository* m_repository;
    DemoCommands* m_commands = nullptr;
    std::vector<int> m_storedColumns;
    double m_storedRatio;
    bool m_storedLowerPane;
    /// By occurrence index; the panel destroys the items, so these never own.
    std::vector<DemoItem*> m_items;
};

/// The demo's items in @p items (every item in this panel is one).
std::vector<DemoItem*> DemoItems(const std::vector<CXrefPanelCtrlItem*>& items);

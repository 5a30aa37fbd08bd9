#pragma once

#include "kvxreftroveui_export.h"

#include "framework/Win32Types.h"
#include "items/AttachmentFileType.h"
#include "items/FileDataStatus.h"
#include "items/RefStatus.h"
#include "panel/ICXrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "panel/XrefProperties.h"
#include "util/DateTime.h"
#include "views/TreeItemHandle.h"

#include <QFont>
#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QString>

#include <boost/optional.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <memory>
#include <set>
#include <string>

class CTroveListCtrl;
class CTroveListCtrlItem;
class CXrefPanelCtrl;
class CXrefTreeCtrl;
class KvNameDescriptionToolTipInfo;
class PackedDib;
struct ToolTipMenuSettings;

/// One reference occurrence in the panel: a node of the tree view and, through its shared link
/// record, a row of the list view. The host derives one class per kind of reference, constructs
/// it against a created panel and inserts it with CXrefPanelCtrl::InsertRootItem/InsertItem.
///
/// The item keeps no copy of its name or of most displayed values: the name lives in the tree
/// node, the other texts in the list row, and the item reads them back from there. Before the
/// item is inserted, reads give empty texts and writes are lost.
class KVXREFTROVEUI_EXPORT CXrefPanelCtrlItem : public virtual Trove::ICXrefPanelCtrlItem
{
public:
    using XrefProperties = Trove::XrefProperties;
    using ListViewColumn = Trove::ListViewColumn;

    /// Takes @p panel's views as they are now: the panel must be created.
    explicit CXrefPanelCtrlItem(CXrefPanelCtrl& panel);
    /// An item the host deletes while it is still in the panel takes itself out first: out of
    /// the selection, the details pane and a running edit; its share of the list row is dropped
    /// and the row goes with the last share; its tree node goes with the nodes below it, whose
    /// items stay the host's: they forget their nodes and keep their rows until the host
    /// deletes them too. The host is not called. Items deleted after the panel is gone touch
    /// nothing.
    virtual ~CXrefPanelCtrlItem();
    CXrefPanelCtrlItem(const CXrefPanelCtrlItem&) = delete;
    CXrefPanelCtrlItem& operator=(const CXrefPanelCtrlItem&) = delete;

    // --- Kinds of reference ---------------------------------------------------------------------

    /// False keeps the row ahead of all others whatever the sort order.
    virtual bool IsSortItem() const;
    /// True for the host drawing itself.
    virtual bool IsHostDwgItem() const;
    virtual bool IsDataLinkItem() const;
    /// The host's own; never called by the library.
    virtual bool HostOperation4() const = 0;
    virtual bool IsImageItem() const;
    /// The host's own; never called by the library.
    virtual bool HostOperation6() const = 0;
    /// The value of @p property, or none when the item has no such property.
    virtual boost::optional<std::wstring> GetProperty(XrefProperties property) const;
    virtual Attachment::FileType::Enum FileType() const;
    /// The host's own; never called by the library.
    virtual bool HostOperation9() const = 0;
    /// The host's own; never called by the library.
    virtual bool HostOperation10() const = 0;
    /// Whether the user may edit @p property in place; @p column is the list column of the edit
    /// (no meaning for a tree label edit).
    virtual bool IsPropertyEditable(XrefProperties property, int column) const = 0;

    // --- What the panel asks when the item is selected ------------------------------------------
    // Hosts that have nothing to say here keep the defaults: every one of them leaves the panel
    // as it would be for a plain drawing reference.

    /// True when the item has no picture at all, so that the preview pane empties itself instead
    /// of keeping the last picture shown. Default false.
    virtual bool HasNoPreview() const;
    /// The browse settings of the details pane's path editor while this item alone is selected:
    /// the filter ("description|patterns|...||"), the extension added to names typed without
    /// one and the dialog caption. Default false: the pane keeps what it had.
    virtual bool GetDetailsEditContext(std::wstring& filter, std::wstring& defaultExtension,
                                       std::wstring& caption) const;
    /// Whether the browse dialog of that context shows a preview. Default false.
    virtual bool IsDetailsEditPreviewPresent() const;
    /// Whether the message strip's note is held back for the item for reason @p kind (the panel
    /// asks with 0). Default false.
    virtual bool IsNoteSuppressed(int kind) const;
    /// Whether the message strip shows its note when the item is selected. Default false.
    virtual bool NeedsNote() const;
    /// True when path operations and type changes do not apply to the item (the panel asks it
    /// for the path button and for several items' type). Default false.
    virtual bool IsExcluded() const;

    // --- Tree node and list row -----------------------------------------------------------------

    /// The item's list row, or -1.
    int LVItemIndex() const;
    /// The item that stands for the row: of the sharers, the one with the lowest address.
    CXrefPanelCtrlItem* GetListViewItem() const;
    /// How many items share the row (0 without a row).
    long GetReferenceCount() const;
    std::set<CXrefPanelCtrlItem*> GetLVItemReferences() const;
    HTREEITEM GetTreeItem() const { return m_treeItem; }
    const boost::shared_ptr<CTroveListCtrlItem>& GetListRowLink() const { return m_listRowLink; }
    /// Compares tree nodes, nothing else.
    bool IsEqual(const CXrefPanelCtrlItem& other) const;

    /// The reference name, without the unsaved-changes marker.
    std::wstring GetText() const;
    /// Shows @p text as the name in the tree and in the list's name column.
    void SetText(const std::wstring& text);

    // --- Repository state images ----------------------------------------------------------------

    unsigned GetTroveStateIconIndexTreeView() const override;
    unsigned GetTroveStateIconIndexListView() const override;
    /// Values above 15 lose their upper bits.
    void SetTroveStateIconIndexTreeView(unsigned index);
    /// Without a row this reaches every row of the list: set it after insertion.
    void SetTroveStateIconIndexListView(unsigned index);

    // --- Values ---------------------------------------------------------------------------------

    /// SetProperty without its result.
    void SetProperty_(XrefProperties property, const std::wstring& text);

    /// Sizes below 1 byte show an empty cell.
    void SetSize(std::int64_t bytes);
    std::int64_t GetSize() const { return m_size; }
    std::wstring GetSizeDisplayText() const;
    void SetType(const std::wstring& text);
    std::wstring GetType() const;
    /// The empty date 0001-01-01 shows an empty cell.
    void SetDate(const Util::DateTime& date);
    Util::DateTime GetDate() const { return m_date; }
    std::wstring GetDateDisplayText() const;
    void SetSavedPath(const std::wstring& text);
    std::wstring GetSavedPath() const;
    void SetFoundAt(const std::wstring& text);
    const std::wstring& GetFoundAt() const { return m_foundAt; }
    void SetFileVersion(int version);
    int GetFileVersion() const { return m_fileVersion; }
    /// @p icon outside 1 to 6 counts as RefStatus::Blank; @p status is kept even when it is not
    /// a known code. Also replaces the type icon's overlay badge with @p icon.
    void SetReferenceStatus(RefStatus::RefIcon icon, Trove::FileDataStatus::Value status);
    RefStatus::RefIcon GetReferenceStatusIcon() const { return m_referenceStatusIcon; }
    Trove::FileDataStatus::Value GetReferenceStatusText() const { return m_referenceStatusText; }

    // --- Preview pane
    // -----------------------------------------------------------------------------

    /// Shows a picture in the panel's preview pane and repaints it at once; a null @p info clears
    /// the pane. With @p bits, @p info is a header (and colour table) whose @p bitsSize bytes of
    /// pixels are at @p bits; without, @p info is a packed DIB. The pane keeps what it needs, so
    /// the caller's buffers may go once this returns.
    void SetPreviewBitmap(const PackedDib* info, const char* bits, qint64 bitsSize);
    /// The preview pane's client rectangle, so that the host can render a picture that fits;
    /// left as it is when the panel has no pane.
    void GetPreviewBox(QRect& rect) const;

    // --- Colours and fonts ----------------------------------------------------------------------

    const bool& UseDefaultColor() const;
    const bool& UseDefaultFont() const;
    const COLORREF& GetItemTextColor() const;
    const LOGFONTW& GetListCtrlItemTextFont() const;
    const LOGFONTW& GetTreeCtrlItemTextFont() const;

protected:
    /// How the item wants its text drawn. Items keep the views' colour and font unless the host's
    /// class says otherwise, so the style is only allocated when a derived class first asks for
    /// it to write: plain items stay small.
    struct TextStyle
    {
        bool useDefaultColor = false;
        bool useDefaultFont = false;
        COLORREF itemTextColor = 0;
        LOGFONTW listCtrlItemTextFont;
        LOGFONTW treeCtrlItemTextFont;
    };
    /// The item's style, for derived classes to fill.
    TextStyle& EditTextStyle();

    /// The item's rich tool tip for @p settings: the name, seven description rows (name, status,
    /// size, type, date, found-at and saved path) and the thumbnail of GetPreview. The caller
    /// owns the result.
    std::unique_ptr<KvNameDescriptionToolTipInfo>
    CreateToolTipInfo(const ToolTipMenuSettings& settings);
    /// The thumbnail of the file the reference was found at, from the process-wide preview
    /// cache (which keeps it); null without a found-at path or a picture.
    virtual QPixmap GetPreview();
    /// True while the saved path is waiting to be made relative: the list shows it with a
    /// leading "*".
    virtual bool isPendingRelativePath() const;
    /// Which path operations the item allows, for the tool bar's path menu: @p first enables
    /// "make absolute", @p second "make relative", @p third "remove path". The base leaves all
    /// three untouched.
    virtual void getPathTypeEnabledStatus(bool& first, bool& second, bool& third) const;

    /// Writes @p text where @p property is shown (a list column), then refreshes the details row.
    /// True when a column was written.
    bool SetProperty(XrefProperties property, const std::wstring& text);

    std::wstring FormatDisplayText(const std::wstring& text) const;
    void ParseDisplayText(const std::wstring& display, std::wstring& name,
                          std::wstring& marker) const;

    /// The fonts the views draw with now.
    QFont GetListCtrlFont() const;
    QFont GetTreeCtrlFont() const;

    /// Sets the type image registered for this class under @p iconName (the class's own type icon
    /// when there is none), keeping the overlay.
    void SetTypeIcon(const QString& iconName);
    /// The same with a new overlay badge: 0 none, 1 to 6 a status badge, anything else 1.
    void SetTypeIcon(RefStatus::RefIcon overlay, const QString& iconName);
    void SetTypeOverlayIcon(RefStatus::RefIcon overlay);
    const QString& GetTypeIcon() const { return m_typeIcon; }
    RefStatus::RefIcon GetTypeOverlayIcon() const { return m_typeOverlayIcon; }

    CXrefPanelCtrl& m_panel;

private:
    // The panel links items to their rows and nodes; the tree unlinks them when nodes go.
    friend class CXrefPanelCtrl;
    friend struct ItemTreeLink;
    friend struct ItemToolTip;
    // The list view sorts by the type-icon key and shows the rich tool tip.
    friend struct ListItemAccess;

    std::wstring GetListViewSubItemText(ListViewColumn::Enum column) const;
    void SetListViewSubItemText(ListViewColumn::Enum column, const std::wstring& text);
    void writeOverlay(int overlay);
    const TextStyle& textStyle() const;

    /// The panel, or null once it is gone (the reference above is then left dangling).
    CXrefPanelCtrl* livePanel() const;

    std::unique_ptr<TextStyle> m_textStyle;
    // The panel and its views may go before the items the host keeps.
    QPointer<QObject> m_panelObject;
    QPointer<CTroveListCtrl> m_listCtrl;
    QPointer<CXrefTreeCtrl> m_treeCtrl;
    QString m_typeIcon;
    RefStatus::RefIcon m_typeOverlayIcon = RefStatus::Blank;
    RefStatus::RefIcon m_referenceStatusIcon = RefStatus::Blank;
    Trove::FileDataStatus::Value m_referenceStatusText;
    std::int64_t m_size = 0;
    Util::DateTime m_date;
    std::wstring m_foundAt;
    int m_fileVersion = 0;
    HTREEITEM m_treeItem = nullptr;
    boost::shared_ptr<CTroveListCtrlItem> m_listRowLink;
};

#pragma once

#include "FileStatus.h"

#include "items/XrefPanelCtrlItem.h"

#include <QString>

#include <memory>

struct Occurrence;
enum class ReferenceKind : std::uint8_t;

/// What the demo host knows of one reference occurrence in the panel, shared by its item classes:
/// where the reference sits in the document and whether the user may change it here.
class DemoItem : public CXrefPanelCtrlItem
{
public:
    explicit DemoItem(CXrefPanelCtrl& panel) : CXrefPanelCtrlItem(panel) {}

    /// Index into XrefDocument::Occurrences() as listed when the panel was filled.
    int OccurrenceIndex() const { return m_occurrence; }
    /// Row of the holding drawing's reference table; stays right while the document re-lists
    /// its occurrences, until a reference is detached.
    int Record() const { return m_record; }
    ReferenceKind Kind() const { return m_kind; }
    /// True for the open drawing's own references: only those can be changed in this drawing.
    bool IsOwnReference() const { return m_own; }
    const QString& SavedPath() const { return m_savedPath; }
    const QString& FoundAt() const { return m_foundAt; }

    /// Takes the occurrence's values for the item and, when @p ownsRow, for its list row.
    void Describe(const Occurrence& occurrence, int index, bool ownsRow);

    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties property, int column) const override;
    /// Which of remove path, make relative and make absolute apply to this reference.
    void GetPathOperations(bool& removePath, bool& makeRelative, bool& makeAbsolute) const
    {
        getPathTypeEnabledStatus(removePath, makeRelative, makeAbsolute);
    }

    using CXrefPanelCtrlItem::CreateToolTipInfo;
    using CXrefPanelCtrlItem::GetPreview;

protected:
    void getPathTypeEnabledStatus(bool& removePath, bool& makeRelative,
                                  bool& makeAbsolute) const override;
    /// Drawings alone can be overlays, so only their type cell toggles.
    virtual bool CanToggleType() const { return false; }

private:
    int m_occurrence = -1;
    int m_record = -1;
    ReferenceKind m_kind{};
    bool m_own = false;
    QString m_savedPath;
    QString m_foundAt;
};

class HostDrawingItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
    bool IsHostDwgItem() const override { return true; }
    // The open drawing heads the list whatever the sort.
    bool IsSortItem() const override { return false; }
    bool IsPropertyEditable(XrefProperties, int) const override { return false; }
};

class DrawingItem : public DemoItem
{
public:
    using DemoItem::DemoItem;

protected:
    bool CanToggleType() const override { return true; }
};

class RasterImageItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
    bool IsImageItem() const override { return true; }
};

class PdfUnderlayItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
};

class DwfUnderlayItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
};

class DgnUnderlayItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
};

class PointCloudItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
};

class CoordinationModelItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
};

class DataLinkItem : public DemoItem
{
public:
    using DemoItem::DemoItem;
    bool IsDataLinkItem() const override { return true; }
    /// The file-type code whose selection note says a data link follows its source file.
    Attachment::FileType::Enum FileType() const override { return 6; }
};

/// Registers every item class above with its type icon, once per process.
void RegisterDemoItemTypes();
/// A new item of the class for @p kind (the open drawing's class when @p host), on @p panel.
std::unique_ptr<DemoItem> MakeDemoItem(CXrefPanelCtrl& panel, ReferenceKind kind, bool host);
/// The type cell's texts, as the type toggle in the views writes them.
QString AttachTypeText();
QString OverlayTypeText();

#pragma once

#include "items/XrefPanelCtrlItem.h"
#include "items/XrefPanelCtrlItemTypes.h"

#include <array>
#include <functional>
#include <optional>
#include <string>

/// An item class for tests: the host's pure operations answer from switches, and the protected
/// operations a host class would use are public.
class TestXrefItem : public CXrefPanelCtrlItem
{
public:
    explicit TestXrefItem(CXrefPanelCtrl& panel, bool hostDwg = false)
        : CXrefPanelCtrlItem(panel), hostDwg(hostDwg)
    {}

    bool hostDwg = false;
    bool pendingRelativePath = false;
    bool dataLink = false;
    bool image = false;
    bool sortItem = true;
    /// Decides IsPropertyEditable; null: nothing is editable.
    std::function<bool(XrefProperties, int)> editable;
    int fileType = 64;
    bool noPreview = false;
    bool excluded = false;
    bool needsNote = false;
    bool noteSuppressed = false;
    /// What getPathTypeEnabledStatus answers, when set.
    std::optional<std::array<bool, 3>> pathTypes;
    /// The details pane's browse settings, when set: filter, extension, caption.
    std::optional<std::array<std::wstring, 3>> editContext;

    bool IsSortItem() const override { return sortItem; }
    bool IsHostDwgItem() const override { return hostDwg; }
    bool IsDataLinkItem() const override { return dataLink; }
    bool IsImageItem() const override { return image; }
    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties property, int column) const override
    {
        return editable && editable(property, column);
    }
    bool isPendingRelativePath() const override { return pendingRelativePath; }
    Attachment::FileType::Enum FileType() const override { return fileType; }
    bool HasNoPreview() const override { return noPreview; }
    bool IsExcluded() const override { return excluded; }
    bool NeedsNote() const override { return needsNote; }
    bool IsNoteSuppressed(int kind) const override { return kind == 0 && noteSuppressed; }
    void getPathTypeEnabledStatus(bool& first, bool& second, bool& third) const override
    {
        if (pathTypes) {
            first = (*pathTypes)[0];
            second = (*pathTypes)[1];
            third = (*pathTypes)[2];
        }
    }
    bool GetDetailsEditContext(std::wstring& filter, std::wstring& extension,
                               std::wstring& caption) const override
    {
        if (!editContext)
            return false;
        filter = (*editContext)[0];
        extension = (*editContext)[1];
        caption = (*editContext)[2];
        return true;
    }

    using CXrefPanelCtrlItem::EditTextStyle;
    using CXrefPanelCtrlItem::FormatDisplayText;
    using CXrefPanelCtrlItem::GetTypeIcon;
    using CXrefPanelCtrlItem::GetTypeOverlayIcon;
    using CXrefPanelCtrlItem::ParseDisplayText;
    using CXrefPanelCtrlItem::SetProperty;
    using CXrefPanelCtrlItem::SetTypeIcon;
    using CXrefPanelCtrlItem::SetTypeOverlayIcon;
};

/// The registry's protected operations, opened for tests.
class TestItemTypes : public CXrefPanelCtrlItemTypes
{
public:
    using CXrefPanelCtrlItemTypes::Create;
    using CXrefPanelCtrlItemTypes::RegisterClass;
    using CXrefPanelCtrlItemTypes::RegisterIcon;
    using CXrefPanelCtrlItemTypes::RegisterType;
    using CXrefPanelCtrlItemTypes::StandardTypeIcons;
    using CXrefPanelCtrlItemTypes::TypeName;
};

#include "panel/detail/ContextMenus.h"

#include "framework/ZuUiMenu.h"
#include "host/SystemVariables.h"
#include "panel/ToolTipMenuSettings.h"
#include "resources/TemporaryResourceOverride.h"
#include "resources/TroveResources.h"
#include "util/ResourceModule.h"

#include <QMenu>

#include <iterator>
#include <utility>

namespace {

// Text ids of the menu values; 0, 2, 40 and 41 have none.
constexpr std::pair<Trove::MenuItems, unsigned> kMenuTextIds[] = {
    {Trove::HostSubMenu1, 1166},
    {Trove::HostCommand3, 1011},
    {Trove::Attach, 1012},
    {Trove::AttachImage, 1028},
    {Trove::HostCommand6, 1013},
    {Trove::HostCommand7, 1014},
    {Trove::ReloadAllXRefs, 1022},
    {Trove::HostCommand9, 1015},
    {Trove::HostCommand10, 1016},
    {Trove::RemovePath, 1167},
    {Trove::MakePathRelative, 1168},
    {Trove::MakePathAbsolute, 1174},
    {Trove::SelectNewPath, 32786},
    {Trove::FindAndReplace, 32787},
    {Trove::HostCommand16, 1020},
    {Trove::Refresh, 1021},
    {Trove::HostCommand18, 1023},
    {Trove::TooltipClose, 1027},
    {Trove::AttachDWG, 1121},
    {Trove::AttachDWF, 1122},
    {Trove::AttachDGN, 1123},
    {Trove::AttachPDF, 1164},
    {Trove::HostCommand24, 1068},
    {Trove::HostCommand25, 1071},
    {Trove::AttachPointCloud, 1169},
    {Trove::AttachOrbiskModel, 1024},
    {Trove::Tooltips, 1160},
    {Trove::TooltipClassic, 1152},
    {Trove::TooltipPreview, 1153},
    {Trove::PreviewSmall, 1156},
    {Trove::PreviewMedium, 1157},
    {Trove::PreviewLarge, 1158},
    {Trove::TooltipDetails, 1154},
    {Trove::TooltipPreviewDetails, 1155},
    {Trove::PreviewDetailsSmall, 1159},
    {Trove::PreviewDetailsMedium, 1162},
    {Trove::PreviewDetailsLarge, 1163},
    {Trove::PreviewDetailsPane, 1161},
    {Trove::HostSubMenu42, 1171},
    {Trove::HostCommand43, 1172},
    {Trove::HostCommand44, 1173},
    {Trove::HostSubMenu45, 1182},
    {Trove::HostCommand46, 1183},
    {Trove::HostCommand47, 1184},
};
static_assert(std::size(kMenuTextIds) == 44);

// Positions of the two size sub-menus in the style menu; they carry no command id of their own.
constexpr unsigned kPreviewSizesPosition = 1;
constexpr unsigned kPreviewDetailsSizesPosition = 3;
// The close entry of the tool-tip menu reads differently from the command's usual text.
constexpr unsigned kCloseTextId = 1079;

QString textOf(const ContextMenus::Texts& texts, Trove::MenuItems item)
{
    const auto found = texts.find(item);
    return found == texts.end() ? QString() : QString::fromStdWString(found->second);
}

bool appendCommand(QMenu& menu, Trove::MenuItems item, unsigned textId, bool checked = false)
{
    return CZuUiMenu::AppendMenu(&menu, checked ? CZuUiMenu::Checked : CZuUiMenu::String,
                                 unsigned(item), TroveUI::ResString(textId));
}

bool appendSubMenu(QMenu& menu, std::unique_ptr<QMenu> sub, unsigned textId, unsigned flags)
{
    if (!CZuUiMenu::AppendMenu(&menu, flags | CZuUiMenu::Popup, 0, TroveUI::ResString(textId),
                               sub.get()))
        return false;
    sub.release(); // @p menu owns it now
    return true;
}

// Style, then the preview sizes and the preview-and-details sizes as sub-menus of it.
std::unique_ptr<QMenu> makeStyleMenu()
{
    auto previewSizes = std::make_unique<QMenu>();
    appendCommand(*previewSizes, Trove::PreviewSmall, 1156);
    appendCommand(*previewSizes, Trove::PreviewMedium, 1157, true);
    appendCommand(*previewSizes, Trove::PreviewLarge, 1158);

    auto previewDetailsSizes = std::make_unique<QMenu>();
    appendCommand(*previewDetailsSizes, Trove::PreviewDetailsSmall, 1159);
    appendCommand(*previewDetailsSizes, Trove::PreviewDetailsMedium, 1162);
    appendCommand(*previewDetailsSizes, Trove::PreviewDetailsLarge, 1163);

    auto style = std::make_unique<QMenu>();
    appendCommand(*style, Trove::TooltipClassic, 1152);
    appendSubMenu(*style, std::move(previewSizes), 1153, CZuUiMenu::Checked);
    appendCommand(*style, Trove::TooltipDetails, 1154);
    appendSubMenu(*style, std::move(previewDetailsSizes), 1155, CZuUiMenu::String);
    return style;
}

void mark(QMenu& menu, unsigned item, unsigned by, bool checked)
{
    CZuUiMenu::CheckMenuItem(&menu, item, by | (checked ? CZuUiMenu::Checked : 0u));
}

void markCommand(QMenu& menu, Trove::MenuItems item, bool checked)
{
    mark(menu, unsigned(item), CZuUiMenu::ByCommand, checked);
}

// Unchecks the three sizes that start at @p first.
void clearSizes(QMenu& style, Trove::MenuItems first)
{
    for (int i = 0; i < 3; ++i)
        markCommand(style, Trove::MenuItems(first + i), false);
}

// Checks exactly the size @p size of the three that start at @p first; another size leaves
// them alone.
void markSize(QMenu& style, Trove::MenuItems first, int size)
{
    if (size < 0 || size > 2)
        return;
    for (int i = 0; i < 3; ++i)
        markCommand(style, Trove::MenuItems(first + i), i == size);
}

void markStyle(QMenu& style, const ToolTipMenuSettings& settings)
{
    const auto markStyles = [&style](bool classic, bool preview, bool details,
                                     bool previewDetails) {
        markCommand(style, Trove::TooltipClassic, classic);
        mark(style, kPreviewSizesPosition, CZuUiMenu::ByPosition, preview);
        markCommand(style, Trove::TooltipDetails, details);
        mark(style, kPreviewDetailsSizesPosition, CZuUiMenu::ByPosition, previewDetails);
    };
    switch (settings.style) {
    case 0:
        markStyles(true, false, false, false);
        clearSizes(style, Trove::PreviewSmall);
        clearSizes(style, Trove::PreviewDetailsSmall);
        break;
    case 1:
        markStyles(false, true, false, false);
        clearSizes(style, Trove::PreviewDetailsSmall);
        markSize(style, Trove::PreviewSmall, settings.previewSize);
        break;
    case 2:
        markStyles(false, false, true, false);
        clearSizes(style, Trove::PreviewSmall);
        clearSizes(style, Trove::PreviewDetailsSmall);
        break;
    case 3:
        markStyles(false, false, false, true);
        clearSizes(style, Trove::PreviewSmall);
        markSize(style, Trove::PreviewDetailsSmall, settings.previewSize);
        break;
    default:
        // A style this version does not know: its marks stay as they were.
        break;
    }
}

} // namespace

ContextMenus::ContextMenus() = default;
ContextMenus::~ContextMenus() = default;

void ContextMenus::LoadTexts(Texts& texts)
{
    // One fill per process, safe even if two threads get here first at once.
    static const bool loaded = [&texts] {
        for (const auto& [item, id] : kMenuTextIds)
            LoadText(texts, item, id);
        return true;
    }();
    (void)loaded;
}

void ContextMenus::LoadText(Texts& texts, Trove::MenuItems item, unsigned id)
{
    CTemporaryResourceOverride resources;
    texts[item] = Util::LoadStrW(Util::CurrentResourceModule(), id);
}

bool ContextMenus::Insert(QMenu& menu, Trove::MenuItems item, unsigned flags, QMenu* subMenu,
                          const Texts& texts)
{
    // Appending needs no position, and whether an entry is a sub-menu follows from its value.
    flags &= ~(CZuUiMenu::ByPosition | CZuUiMenu::Popup);
    switch (item) {
    case Trove::Separator:
        return CZuUiMenu::AppendMenu(&menu, CZuUiMenu::Separator, 0, QString());
    case Trove::HostSubMenu1:
    case Trove::HostSubMenu42:
    case Trove::HostSubMenu45:
        if (!subMenu)
            return false;
        return CZuUiMenu::AppendMenu(&menu, (flags & ~CZuUiMenu::Separator) | CZuUiMenu::Popup, 0,
                                     textOf(texts, item), subMenu);
    default:
        return CZuUiMenu::AppendMenu(&menu, flags, unsigned(item), textOf(texts, item));
    }
}

bool ContextMenus::ModifyString(QMenu& menu, unsigned position, unsigned flags,
                                Trove::MenuItems item, const Texts& texts)
{
    return CZuUiMenu::ModifyMenu(&menu, position, flags, 0, textOf(texts, item));
}

bool ContextMenus::ToolTipsOn()
{
    return KvSystemVariables::ReadInt(L"TOOLTIPS") == 1;
}

void ContextMenus::Build()
{
    if (m_root)
        return;
    auto root = std::make_unique<QMenu>();
    std::unique_ptr<QMenu> style = makeStyleMenu();
    m_style = style.get();
    appendSubMenu(*root, std::move(style), 1160, CZuUiMenu::String);
    appendCommand(*root, Trove::PreviewDetailsPane, 1161, true);
    appendCommand(*root, Trove::TooltipClose, kCloseTextId);
    m_root = std::move(root);
}

void ContextMenus::Update(const ToolTipMenuSettings& settings, bool paneShown)
{
    if (!m_root)
        return;
    markCommand(*m_root, Trove::PreviewDetailsPane, paneShown);
    markStyle(*m_style, settings);
}

void ContextMenus::EnableStyleEntry(bool enable)
{
    if (m_root)
        CZuUiMenu::EnableMenuItem(m_root.get(), 0,
                                  CZuUiMenu::ByPosition |
                                      (enable ? CZuUiMenu::Enabled : CZuUiMenu::Grayed));
}

void ContextMenus::AppendToolTipEntries(QMenu& menu, const ToolTipMenuSettings& settings,
                                        bool paneShown)
{
    // A copy, not the panel's own sub-menu: a Qt menu has one parent, and the host's menu
    // deletes what it holds.
    std::unique_ptr<QMenu> style = makeStyleMenu();
    markStyle(*style, settings);
    appendSubMenu(menu, std::move(style), 1160,
                  ToolTipsOn() ? CZuUiMenu::String : CZuUiMenu::Grayed);
    appendCommand(menu, Trove::PreviewDetailsPane, 1161, paneShown);
}

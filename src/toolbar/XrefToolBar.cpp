#include "toolbar/XrefToolBar.h"

#include "framework/ControlId.h"
#include "framework/ZuToolTipCtrl.h"
#include "framework/ZuUiBitmapButton.h"
#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiMenu.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/XrefPanelCtrl.h"
#include "resources/TemporaryResourceOverride.h"
#include "resources/TroveResources.h"
#include "toolbar/XrefBmpComboButton.h"

#include <QMenu>
#include <QMouseEvent>

#include <algorithm>
#include <iterator>

namespace {

// The item of a button's row: a button names none, its handler decides what is raised.
constexpr auto kNoItem = Trove::MenuItems(-1);

// The attach command that each construction flag keeps, in flag order.
constexpr unsigned kFlagCommands[7] = {1083, 1107, 1084, 1087, 1088, 1090, 32784};

// The commands whose remembered state is written into the menu before it opens.
constexpr unsigned kUpdatedCommands[] = {1082, 1177, 1178, 1176, 1180, 1181};

constexpr int kRefreshDropDown = 0;
constexpr int kAttachDropDown = 1;
constexpr int kChangePathDropDown = 2;

// Pixel sizes at the current horizontal scale, each rounded on its own.
struct LayoutSizes
{
    int image;
    int arrow;
    int split() const { return image + arrow; }
};

LayoutSizes layoutSizes()
{
    const double scale = CZuUiHiDpi::GetMonitorDpiXScale();
    return {CZuUiHiDpi::Round(24 * scale), CZuUiHiDpi::Round(15 * scale)};
}

// Three entries, the second of them the attach drop-down: the default attach command is read from
// it. A refresh or path entry that is no drop-down only leaves that button without a menu to open;
// the rest of the tool bar still works, so such a menu is accepted.
bool holdsTheDropDowns(const QMenu* menu)
{
    return CZuUiMenu::GetMenuItemCount(menu) == 3 &&
           CZuUiMenu::GetSubMenu(menu, kAttachDropDown) != nullptr;
}

} // namespace

// Every id the tool bar knows: its buttons' control ids and its menu commands. OnCommand does what
// an id's row says, so a new command is one more row. A split button shows a row's picture and
// tool tip while that row is its current command; path commands never are, so they have none.
struct CXrefToolBar::Command
{
    enum Action {
        Press,              // a button: runs its click handler
        Raise,              // raises the item with no items
        RaiseWithSelection, // raises the item with the panel's selection
        // Only the picture is known here: the command is in the repository's menu alone, and the
        // repository tool bar runs it itself.
        PictureOnly,
    };

    unsigned id;
    Action action;
    void (CXrefToolBar::*press)();
    Trove::MenuItems item;
    const char* bitmapKey;
    int toolTipId;

    static const Command table[];

    static const Command* find(unsigned id);
    // The command that raises @p item; null when the tool bar raises it nowhere.
    static const Command* raising(Trove::MenuItems item);
};

const CXrefToolBar::Command CXrefToolBar::Command::table[] = {
    {RefreshButtonId, Press, &CXrefToolBar::OnRmxRefreshButtonClick, kNoItem, nullptr, -1},
    {AttachButtonId, Press, &CXrefToolBar::OnRmxAttachButtonClick, kNoItem, nullptr, -1},
    {ChangePathButtonId, Press, &CXrefToolBar::OnRmxChangePathButtonClick, kNoItem, nullptr, -1},
    {HelpButtonId, Press, &CXrefToolBar::OnHelpButtonClicked, kNoItem, nullptr, -1},
    {1081, Raise, nullptr, Trove::Refresh, "REFRESH_BTN", 1036},
    {1082, Raise, nullptr, Trove::ReloadAllXRefs, "RELOAD_BTN", 1037},
    {1083, Raise, nullptr, Trove::AttachDWG, "ATTACHDWG_BTN", 1076},
    {1084, Raise, nullptr, Trove::AttachDWF, "ATTACHDWF_BTN", 1077},
    {1085, Raise, nullptr, Trove::Attach, "ATTACH_BTN", 1040},
    {1086, PictureOnly, nullptr, Trove::AttachFromTrove, "ATTACHTROVE_BTN", 1041},
    {1087, Raise, nullptr, Trove::AttachDGN, "ATTACHDGN_BTN", 1078},
    {1088, Raise, nullptr, Trove::AttachPDF, "ATTACHPDF_BTN", 1165},
    {1090, Raise, nullptr, Trove::AttachPointCloud, "ATTACHPOINTCLOUD_BTN", 1170},
    {1107, Raise, nullptr, Trove::AttachImage, "ATTACHIMAGE_BTN", 1060},
    {32784, Raise, nullptr, Trove::AttachOrbiskModel, "ATTACHORBISKMODEL_BTN", 1019},
    {1176, RaiseWithSelection, nullptr, Trove::RemovePath, nullptr, -1},
    {1177, RaiseWithSelection, nullptr, Trove::MakePathRelative, nullptr, -1},
    {1178, RaiseWithSelection, nullptr, Trove::MakePathAbsolute, nullptr, -1},
    {1180, RaiseWithSelection, nullptr, Trove::SelectNewPath, nullptr, -1},
    {1181, RaiseWithSelection, nullptr, Trove::FindAndReplace, nullptr, -1},
};

const CXrefToolBar::Command* CXrefToolBar::Command::find(unsigned id)
{
    const auto it = std::find_if(std::begin(table), std::end(table),
                                 [id](const Command& command) { return command.id == id; });
    return it == std::end(table) ? nullptr : it;
}

const CXrefToolBar::Command* CXrefToolBar::Command::raising(Trove::MenuItems item)
{
    const auto it =
        std::find_if(std::begin(table), std::end(table), [item](const Command& command) {
            return (command.action == Raise || command.action == RaiseWithSelection) &&
                   command.item == item;
        });
    return it == std::end(table) ? nullptr : it;
}

// Defined here as well, so that hosts can bind them to references or take their addresses.
const unsigned CXrefToolBar::m_toolTipInitialShowDelayTime;
const unsigned CXrefToolBar::m_toolTipInitialReShowDelayTime;
const int CXrefToolBar::TB_IMAGE_BORDER;

CXrefToolBar::CXrefToolBar(bool attachDwg, bool attachImage, bool attachDwf, bool attachDgn,
                           bool attachPdf, bool attachPointCloud, bool attachModel)
{
    init(attachDwg, attachImage, attachDwf, attachDgn, attachPdf, attachPointCloud, attachModel);
}

CXrefToolBar::~CXrefToolBar()
{
    destroyChildren();
}

void CXrefToolBar::init(bool attachDwg, bool attachImage, bool attachDwf, bool attachDgn,
                        bool attachPdf, bool attachPointCloud, bool attachModel)
{
    m_attachFlags = {attachDwg, attachImage,      attachDwf,  attachDgn,
                     attachPdf, attachPointCloud, attachModel};
    m_defaultAttachCommand = -1;
    m_parentPanel = nullptr;
}

bool CXrefToolBar::Create(QWidget* parent)
{
    if (!parent || m_created)
        return false;
    setParent(parent);
    if (OnCreate() != 0) {
        destroyChildren();
        setParent(nullptr);
        return false;
    }
    m_created = true;
    resize(sizeHint());
    show();
    return true;
}

int CXrefToolBar::OnCreate()
{
    return OnCreate(2080);
}

int CXrefToolBar::OnCreate(unsigned menuResourceId)
{
    CTemporaryResourceOverride resources;

    m_menu = CZuUiMenu::LoadMenu(TroveUI::ResourceInstance(), menuResourceId);
    if (m_menu) {
        for (size_t flag = 0; flag < m_attachFlags.size(); ++flag) {
            if (m_attachFlags[flag])
                continue;
            while (CZuUiMenu::RemoveMenu(m_menu.get(), kFlagCommands[flag], CZuUiMenu::ByCommand))
                ;
        }
    }
    if (!holdsTheDropDowns(m_menu.get()))
        return -1;

    // Only the first three entries are candidates: the default attach command is meant to be
    // one of those the menu lists first.
    const QMenu* attachMenu = CZuUiMenu::GetSubMenu(m_menu.get(), kAttachDropDown);
    m_defaultAttachCommand = -1;
    for (int position = 0; position < 3; ++position) {
        const unsigned id = CZuUiMenu::GetMenuItemID(attachMenu, position);
        if (id != 0 && id != CZuUiMenu::kPopupId) {
            m_defaultAttachCommand = int(id);
            break;
        }
    }

    m_toolTip = new CZuToolTipCtrl(this);
    m_toolTip->Create(this);
    m_toolTip->SetDelayTime(CZuToolTipCtrl::AutoPop, 32767);
    m_toolTip->SetDelayTime(CZuToolTipCtrl::Initial, int(m_toolTipInitialShowDelayTime));
    m_toolTip->SetDelayTime(CZuToolTipCtrl::ReShow, int(m_toolTipInitialReShowDelayTime));
    m_toolTip->Activate(true);

    const int arrow = layoutSizes().arrow;
    if (m_defaultAttachCommand != -1) {
        QString key;
        int stringId = -1;
        if (!MapButtonProperties(m_defaultAttachCommand, key, stringId))
            return -1;
        m_attach = makeSplitButton(AttachButtonId, key + QStringLiteral("|Attach"), kAttachDropDown,
                                   arrow);
        m_attach->LoadBitmap(key);
        m_attach->AutoLoad();
        m_attach->show();
        addToolTip(m_attach, stringId);
    }

    m_refresh = makeSplitButton(RefreshButtonId, QStringLiteral("REFRESH_BTN|Refresh"),
                                kRefreshDropDown, arrow);
    m_refresh->AutoLoad();
    m_refresh->show();
    addToolTip(m_refresh, 1036);

    m_changePath = makeSplitButton(ChangePathButtonId, QStringLiteral("CHANGE_PATH_BTN|Path"),
                                   kChangePathDropDown, arrow);
    m_changePath->SetMenuOnly(true);
    m_changePath->AutoLoad();
    m_changePath->show();
    addToolTip(m_changePath, 1175);

    m_help = new CZuUiBitmapButton(this);
    ControlId::Set(m_help, HelpButtonId);
    m_help->SetWindowText(QStringLiteral("RMX_HELP_BTN|Help"));
    m_help->SetImageBorder(TB_IMAGE_BORDER);
    connect(m_help, &QAbstractButton::clicked, this, [this] { OnCommand(HelpButtonId); });
    m_help->AutoLoad();
    m_help->show();
    addToolTip(m_help, 1058);

    ArrangeButtons();
    return 0;
}

CXrefBmpComboButton* CXrefToolBar::makeSplitButton(int id, const QString& windowText, int dropDown,
                                                   int arrowWidth)
{
    auto* button = new CXrefBmpComboButton(this);
    ControlId::Set(button, id);
    button->SetWindowText(windowText);
    button->SetImageBorder(TB_IMAGE_BORDER);
    button->SetDropDownMenu(m_menu.get(), dropDown);
    button->SetArrowWidth(arrowWidth);
    // A click and a menu choice both arrive here, as the button's command.
    connect(button, &QAbstractButton::clicked, this, [this, id] { OnCommand(unsigned(id)); });
    connect(button, &XrefMenuBmpButton::dropDownAboutToShow, this, &CXrefToolBar::OnUpdateCmdUI);
    return button;
}

void CXrefToolBar::addToolTip(QWidget* button, int stringId)
{
    const QString text = TroveUI::ResString(unsigned(stringId));
    m_toolTip->AddTool(button, text);
    // Buttons show pictures only; their tips name them for assistive technology.
    button->setAccessibleName(QString(text).remove(QLatin1Char('&')));
}

void CXrefToolBar::destroyChildren()
{
    if (m_toolTip)
        m_toolTip->DestroyWindow();
    delete m_help;
    delete m_changePath;
    delete m_refresh;
    delete m_attach;
    delete m_toolTip;
    m_menu.reset();
    m_created = false;
}

void CXrefToolBar::ArrangeButtons()
{
    const LayoutSizes sizes = layoutSizes();
    int x = 0;
    auto place = [&](QWidget* button, int width) {
        if (!button)
            return;
        button->setGeometry(x, 0, width, sizes.image);
        x += width;
    };
    place(m_attach, sizes.split());
    place(m_refresh, sizes.split());
    place(m_changePath, sizes.split());
    place(m_help, sizes.image);
    updateGeometry();
}

QSize CXrefToolBar::GetButtonSize() const
{
    const LayoutSizes sizes = layoutSizes();
    return QSize(sizes.split(), sizes.image);
}

QSize CXrefToolBar::sizeHint() const
{
    int width = 0;
    int height = 0;
    for (const QWidget* button :
         {static_cast<QWidget*>(m_attach), static_cast<QWidget*>(m_refresh),
          static_cast<QWidget*>(m_changePath), static_cast<QWidget*>(m_help)}) {
        if (!button)
            continue;
        width = std::max(width, button->geometry().right() + 1);
        height = std::max(height, button->geometry().bottom() + 1);
    }
    return QSize(width, height);
}

void CXrefToolBar::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
    setFocus(Qt::MouseFocusReason);
}

void CXrefToolBar::__RemoveAllEventHandlers(QObject* receiver)
{
    if (!receiver)
        return;
    disconnect(this, &CXrefToolBar::MenuSelection, receiver, nullptr);
    disconnect(this, &CXrefToolBar::DisplayHelp, receiver, nullptr);
}

void CXrefToolBar::EnableMenuItem(Trove::MenuItems item, unsigned flags)
{
    // Attach from the repository is left out: it is the repository tool bar's own command, and
    // nobody disables it.
    const Command* command = Command::raising(item);
    if (!command)
        return;
    m_ToolBarMenuState[command->id] = flags & (CZuUiMenu::Grayed | CZuUiMenu::Disabled);
}

std::optional<unsigned> CXrefToolBar::MenuCommandState(unsigned id) const
{
    const auto it = m_ToolBarMenuState.find(id);
    if (it == m_ToolBarMenuState.end())
        return std::nullopt;
    return it->second;
}

void CXrefToolBar::EnableMenuItem(QMenu& menu, unsigned id) const
{
    const auto it = m_ToolBarMenuState.find(id);
    if (it != m_ToolBarMenuState.end())
        CZuUiMenu::EnableMenuItem(&menu, id, it->second | CZuUiMenu::ByCommand);
}

void CXrefToolBar::OnUpdateCmdUI()
{
    if (!m_menu)
        return;
    for (unsigned id : kUpdatedCommands)
        EnableMenuItem(*m_menu, id);
}

CXrefBmpComboButton* CXrefToolBar::RefreshButton() const
{
    return m_refresh;
}

CXrefBmpComboButton* CXrefToolBar::AttachButton() const
{
    return m_attach;
}

CXrefBmpComboButton* CXrefToolBar::ChangePathButton() const
{
    return m_changePath;
}

CZuUiBitmapButton* CXrefToolBar::HelpButton() const
{
    return m_help;
}

CZuToolTipCtrl* CXrefToolBar::ToolTip() const
{
    return m_toolTip;
}

void CXrefToolBar::EnableRefresh(bool enable)
{
    if (!m_refresh)
        return;
    m_refresh->setEnabled(enable);
    m_refresh->repaint();
}

void CXrefToolBar::EnablePathOperations(bool enable)
{
    if (!m_changePath)
        return;
    m_changePath->setEnabled(enable);
    m_changePath->repaint();
}

void CXrefToolBar::EnableCompareButton(bool) {}

bool CXrefToolBar::MapButtonProperties(int id, QString& key, int& stringId)
{
    const Command* command = id < 0 ? nullptr : Command::find(unsigned(id));
    if (!command || !command->bitmapKey) {
        key.clear();
        stringId = -1;
        return false;
    }
    key = QString::fromLatin1(command->bitmapKey);
    stringId = command->toolTipId;
    return true;
}

void CXrefToolBar::UpdateButtonProperties(CXrefBmpComboButton& button)
{
    if (button.SplitButtonCommand() == button.PreviousCommand())
        return;
    QString key;
    int stringId = -1;
    if (!MapButtonProperties(button.SplitButtonCommand(), key, stringId))
        return;
    CTemporaryResourceOverride resources;
    button.LoadBitmap(key);
    if (m_toolTip && m_toolTip->IsWindow())
        m_toolTip->UpdateTipText(TroveUI::ResString(unsigned(stringId)), &button);
}

void CXrefToolBar::runButtonCommand(int command)
{
    if (command < 0)
        return;
    // A button's current command comes from the menu resource; one that names a button would
    // run that button again and again.
    const Command* row = Command::find(unsigned(command));
    if (row && row->action == Command::Press)
        return;
    OnCommand(unsigned(command));
}

void CXrefToolBar::OnRmxRefreshButtonClick()
{
    if (!m_refresh)
        return;
    if (m_refresh->SplitButtonCommand() == -1) {
        m_refresh->SetPreviousCommand(-1);
        m_refresh->SetSplitButtonCommand(1081);
    }
    UpdateButtonProperties(*m_refresh);
    runButtonCommand(m_refresh->SplitButtonCommand());
}

void CXrefToolBar::OnRmxAttachButtonClick()
{
    if (!m_attach)
        return;
    if (m_attach->SplitButtonCommand() == -1) {
        if (m_defaultAttachCommand == -1)
            return;
        m_attach->SetPreviousCommand(-1);
        m_attach->SetSplitButtonCommand(m_defaultAttachCommand);
    }
    UpdateButtonProperties(*m_attach);
    runButtonCommand(m_attach->SplitButtonCommand());
}

void CXrefToolBar::OnRmxChangePathButtonClick()
{
    if (m_changePath)
        runButtonCommand(m_changePath->SplitButtonCommand());
}

bool CXrefToolBar::OnCommand(unsigned id)
{
    const Command* command = Command::find(id);
    if (!command)
        return false;
    switch (command->action) {
    case Command::Press:
        (this->*command->press)();
        return true;
    case Command::Raise:
        RaiseMenuSelection(command->item, false);
        return true;
    case Command::RaiseWithSelection:
        RaiseMenuSelection(command->item, true);
        return true;
    case Command::PictureOnly:
        break;
    }
    return false;
}

void CXrefToolBar::RaiseMenuSelection(Trove::MenuItems item, bool withSelection)
{
    if (!withSelection || !m_parentPanel) {
        emit MenuSelection(item, m_emptyItems);
        return;
    }
    // A copy: a handler may change the selection while later handlers still read the list.
    const std::vector<CXrefPanelCtrlItem*> selection = m_parentPanel->GetSelectedItems();
    emit MenuSelection(item, selection);
}

void CXrefToolBar::OnHelpButtonClicked()
{
    emit DisplayHelp();
}

void CXrefToolBar::Refresh()
{
    RaiseMenuSelection(Trove::Refresh, false);
}

void CXrefToolBar::ReloadAllXRefs()
{
    RaiseMenuSelection(Trove::ReloadAllXRefs, false);
}

void CXrefToolBar::Attach()
{
    RaiseMenuSelection(Trove::Attach, false);
}

void CXrefToolBar::AttachFromTrove()
{
    RaiseMenuSelection(Trove::AttachFromTrove, false);
}

void CXrefToolBar::AttachImage()
{
    RaiseMenuSelection(Trove::AttachImage, false);
}

void CXrefToolBar::AttachDWG()
{
    RaiseMenuSelection(Trove::AttachDWG, false);
}

void CXrefToolBar::AttachDWF()
{
    RaiseMenuSelection(Trove::AttachDWF, false);
}

void CXrefToolBar::AttachDGN()
{
    RaiseMenuSelection(Trove::AttachDGN, false);
}

void CXrefToolBar::AttachPDF()
{
    RaiseMenuSelection(Trove::AttachPDF, false);
}

void CXrefToolBar::AttachPointCloud()
{
    RaiseMenuSelection(Trove::AttachPointCloud, false);
}

void CXrefToolBar::AttachOrbiskModel()
{
    RaiseMenuSelection(Trove::AttachOrbiskModel, false);
}

void CXrefToolBar::RemovePath()
{
    RaiseMenuSelection(Trove::RemovePath, true);
}

void CXrefToolBar::MakePathRelative()
{
    RaiseMenuSelection(Trove::MakePathRelative, true);
}

void CXrefToolBar::MakePathAbsolute()
{
    RaiseMenuSelection(Trove::MakePathAbsolute, true);
}

void CXrefToolBar::SelectNewPath()
{
    RaiseMenuSelection(Trove::SelectNewPath, true);
}

void CXrefToolBar::FindAndReplace()
{
    RaiseMenuSelection(Trove::FindAndReplace, true);
}

#pragma once

#include "kvxreftroveui_export.h"

#include "panel/MenuItems.h"

#include <QPointer>
#include <QWidget>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class CXrefBmpComboButton;
class CXrefPanelCtrl;
class CXrefPanelCtrlItem;
class CZuToolTipCtrl;
class CZuUiBitmapButton;
class QMenu;

// The generated meta-object code registers the item list of MenuSelection, and that takes the
// complete item class; the declaration is enough for this header.
Q_MOC_INCLUDE("items/XrefPanelCtrlItem.h")

/// The strip of buttons at the top of the reference panel: attach, refresh and change-path split
/// buttons and a help button. Button presses and menu choices become Trove::MenuItems values,
/// raised through MenuSelection together with the items they concern; the help button raises
/// DisplayHelp.
///
/// The host constructs the tool bar and hands it to the panel, which makes it a child window with
/// Create. Each split button remembers the command last chosen from its menu, and its main part
/// repeats that command. The panel disables path commands through EnableMenuItem; the states are
/// written into the menu when one of the drop-downs opens (OnUpdateCmdUI).
class KVXREFTROVEUI_EXPORT CXrefToolBar : public QWidget
{
    Q_OBJECT
public:
    /// Tool-tip delays in milliseconds: before the first tip, and from one button to the next.
    static const unsigned m_toolTipInitialShowDelayTime = 200;
    static const unsigned m_toolTipInitialReShowDelayTime = 200;
    /// Free space around a button's picture, in device-independent pixels.
    static const int TB_IMAGE_BORDER = 3;

    /// Control ids of the buttons.
    enum ButtonId : int {
        RefreshButtonId = 30203,
        AttachButtonId = 30204,
        ChangePathButtonId = 30205,
        HelpButtonId = 30206,
    };

    /// Each flag keeps one attach command in the attach menu; false removes it. In this order:
    /// drawing, raster image, DWF, DGN, PDF, point cloud, coordination model. The generic attach
    /// command and attach from the repository always stay.
    explicit CXrefToolBar(bool attachDwg = true, bool attachImage = true, bool attachDwf = true,
                          bool attachDgn = true, bool attachPdf = true,
                          bool attachPointCloud = true, bool attachModel = true);
    ~CXrefToolBar() override;

    /// Makes the tool bar a child of @p parent and builds its menu and buttons. False, with no
    /// buttons made, when @p parent is null, the tool bar exists already, the menu resource is
    /// missing or does not hold exactly three drop-downs, or the default attach command has no
    /// picture.
    bool Create(QWidget* parent);
    bool IsCreated() const { return m_created; }

    /// The panel whose selection the path commands carry. Not owned; null until set.
    CXrefPanelCtrl* ParentPanel() const { return m_parentPanel; }
    void SetParentPanel(CXrefPanelCtrl* panel) { m_parentPanel = panel; }

    /// Remembers the state of the menu command of @p item: only Grayed (1) and Disabled (2) of
    /// @p flags are kept. Values without a tool bar command are ignored. The state reaches the
    /// menu at the next OnUpdateCmdUI, and then only for the reload and path commands.
    void EnableMenuItem(Trove::MenuItems item, unsigned flags);
    /// The state remembered for menu command @p id (0 enabled, Grayed or Disabled), applied when
    /// the command's menu opens; none before anything set it.
    std::optional<unsigned> MenuCommandState(unsigned id) const;
    /// Enables or disables the refresh button and repaints it at once.
    void EnableRefresh(bool enable);
    /// The same for the change-path button.
    void EnablePathOperations(bool enable);
    /// Enables or disables the button of the host's compare command and redraws the bar. The
    /// base tool bar has no such button, so nothing changes here; a host's tool bar that adds
    /// one overrides this.
    virtual void EnableCompareButton(bool enable);

    /// The main part of the refresh button: repeats its command (refresh at first).
    void OnRmxRefreshButtonClick();
    /// The main part of the attach button: repeats its command (the default attach at first).
    void OnRmxAttachButtonClick();
    /// Runs the command last chosen from the change-path menu, if any.
    void OnRmxChangePathButtonClick();

    /// Writes the remembered states of the reload and path commands into the menu. Runs before
    /// every drop-down opens; the panel may call it too.
    virtual void OnUpdateCmdUI();
    /// Runs one command: a button's control id or a menu command id. False when @p id is none of
    /// the tool bar's (nothing happens then).
    virtual bool OnCommand(unsigned id);

    /// Width of a split button and height of every button at the current DPI scale.
    QSize GetButtonSize() const;
    QSize sizeHint() const override;

    /// Disconnects every handler that @p receiver connected to MenuSelection and DisplayHelp.
    /// (The leading underscores are part of the interface hosts already call.)
    void __RemoveAllEventHandlers(QObject* receiver);

    // Defined with the button classes: reading a QPointer casts to the pointee's type.
    CXrefBmpComboButton* RefreshButton() const;
    /// Null when the attach menu offers no command in its first three positions.
    CXrefBmpComboButton* AttachButton() const;
    CXrefBmpComboButton* ChangePathButton() const;
    CZuUiBitmapButton* HelpButton() const;
    CZuToolTipCtrl* ToolTip() const;
    /// The menu of the three drop-downs; null before creation.
    QMenu* Menu() const { return m_menu.get(); }
    /// The command the attach button starts with; -1 when there is none.
    int DefaultAttachCommand() const { return m_defaultAttachCommand; }

signals:
    /// Code that connects to it includes items/XrefPanelCtrlItem.h: Qt registers the item list.
    void MenuSelection(Trove::MenuItems item, const std::vector<CXrefPanelCtrlItem*>& items);
    void DisplayHelp();

protected:
    /// Stores the seven flags again and forgets the default attach command and the panel.
    void init(bool attachDwg, bool attachImage, bool attachDwf, bool attachDgn, bool attachPdf,
              bool attachPointCloud, bool attachModel);

    /// Builds menu and buttons; 0 on success, -1 on failure.
    virtual int OnCreate();
    int OnCreate(unsigned menuResourceId);

    void Refresh();
    void ReloadAllXRefs();
    void Attach();
    void AttachFromTrove();
    void AttachImage();
    void AttachDWG();
    void AttachDWF();
    void AttachDGN();
    void AttachPDF();
    void AttachPointCloud();
    void AttachOrbiskModel();
    void RemovePath();
    void MakePathRelative();
    void MakePathAbsolute();
    void SelectNewPath();
    void FindAndReplace();

    /// Raises @p item with the parent panel's selection when @p withSelection is true and a panel
    /// is set, otherwise with the empty list.
    void RaiseMenuSelection(Trove::MenuItems item, bool withSelection);
    void OnHelpButtonClicked();

    /// Shows the picture and tool tip of @p button's current command when it differs from the
    /// previous one.
    void UpdateButtonProperties(CXrefBmpComboButton& button);
    /// The bitmap key and tool-tip string id of a command that has a picture. False, with an
    /// empty key and -1, for any other id.
    static bool MapButtonProperties(int id, QString& key, int& stringId);
    /// Writes the remembered state of command @p id into @p menu, when one is remembered.
    void EnableMenuItem(QMenu& menu, unsigned id) const;

    /// Places the buttons side by side from the left edge; a missing button takes no room.
    void ArrangeButtons();

    void mousePressEvent(QMouseEvent* event) override;

private:
    /// A row of the table that OnCommand runs from; defined with the table in the source file.
    struct Command;

    CXrefBmpComboButton* makeSplitButton(int id, const QString& windowText, int dropDown,
                                         int arrowWidth);
    void addToolTip(QWidget* button, int stringId);
    void runButtonCommand(int command);
    void destroyChildren();

    const std::vector<CXrefPanelCtrlItem*> m_emptyItems;
    std::unique_ptr<QMenu> m_menu;
    std::map<std::uint32_t, unsigned> m_ToolBarMenuState;
    QPointer<CZuToolTipCtrl> m_toolTip;
    QPointer<CXrefBmpComboButton> m_refresh;
    QPointer<CXrefBmpComboButton> m_attach;
    QPointer<CXrefBmpComboButton> m_changePath;
    QPointer<CZuUiBitmapButton> m_help;
    CXrefPanelCtrl* m_parentPanel = nullptr;
    std::array<bool, 7> m_attachFlags{};
    int m_defaultAttachCommand = -1;
    bool m_created = false;
};

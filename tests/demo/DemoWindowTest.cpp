// The demo host end to end: its window on the sample project, every command and edit carried
// out on the document and written to the drawing, as the panel hands them to the host.

#include "DemoWindowFixture.h"

#include "DrawingView.h"

#include "items/XrefPanelCtrlItemStatus.h"
#include "panel/MenuItems.h"
#include "toolbar/XrefBmpComboButton.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"
#include "views/XrefPropListCtrl.h"
#include "views/XrefTreeCtrl.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

#include <set>

#include <QMenu>
#include <QSignalSpy>
#include <QtTest/QTest>

#include <csignal>
#include <sys/resource.h>

namespace FD = Trove::FileDataStatus;
using Prop = Trove::XrefProperties;

namespace {

QStringList childNames(const HostPanel& panel, const CXrefPanelCtrlItem& item)
{
    QStringList names;
    for (const CXrefPanelCtrlItem* child : panel.GetChildren(item))
        names << QString::fromStdWString(child->GetText());
    return names;
}

QStringList menuTexts(const QMenu& menu, bool enabledOnly)
{
    QStringList texts;
    for (const QAction* action : menu.actions())
        if (!action->isSeparator() && (!enabledOnly || action->isEnabled()))
            texts << action->text().remove(QLatin1Char('&'));
    return texts;
}

} // namespace

TEST_F(DemoWindowTest, sampleOpensWithEveryKindNestingAndStatus)
{
    Open();
    EXPECT_EQ(m_window->View().Title(), QStringLiteral("Harbour site.dwg"));
    EXPECT_TRUE(m_window->View().HasPicture());
    // Twelve own references, three nested occurrences; Grid's second occurrence shares a row.
    EXPECT_EQ(Panel().GetUniqueXrefCount(), 14);

    EXPECT_TRUE(Panel().GetRootItem()->IsHostDwgItem());
    EXPECT_EQ(childNames(Panel(), *Item(QStringLiteral("Columns"))), QStringList{"Grid"});
    EXPECT_EQ(childNames(Panel(), *Item(QStringLiteral("Level 1"))), QStringList{"Furniture"});
    EXPECT_EQ(Item(QStringLiteral("Grid"))->GetListRowLink(),
              Panel().GetChildren(*Item(QStringLiteral("Columns"))).front()->GetListRowLink());

    EXPECT_NE(dynamic_cast<RasterImageItem*>(Item(QStringLiteral("Aerial photo"))), nullptr);
    EXPECT_NE(dynamic_cast<PdfUnderlayItem*>(Item(QStringLiteral("Survey"))), nullptr);
    EXPECT_NE(dynamic_cast<PointCloudItem*>(Item(QStringLiteral("Quay scan"))), nullptr);
    EXPECT_NE(dynamic_cast<DataLinkItem*>(Item(QStringLiteral("Door schedule"))), nullptr);

    EXPECT_EQ(Item(QStringLiteral("Grid"))->GetReferenceStatusText(), FD::Code1);
    EXPECT_EQ(Item(QStringLiteral("Quay photo"))->GetReferenceStatusIcon(), RefStatus::Unloaded);
    EXPECT_EQ(Item(QStringLiteral("Title block A1"))->GetReferenceStatusIcon(),
              RefStatus::Unresolved);
    EXPECT_EQ(Item(QStringLiteral("Columns"))->GetType(), OverlayTypeText().toStdWString());
    EXPECT_EQ(Item(QStringLiteral("Grid"))->GetType(), AttachTypeText().toStdWString());
    EXPECT_GT(Item(QStringLiteral("Bridge"))->GetSize(), 0);

    // Only the drawing's own references can be changed here, and only drawings be overlays.
    EXPECT_TRUE(Item(QStringLiteral("Grid"))->IsPropertyEditable(Prop::Type, 5));
    EXPECT_FALSE(Item(QStringLiteral("Survey"))->IsPropertyEditable(Prop::Type, 5));
    EXPECT_TRUE(Item(QStringLiteral("Survey"))->IsPropertyEditable(Prop::SavedPath, 7));
    EXPECT_FALSE(Item(QStringLiteral("Level 1"))->IsPropertyEditable(Prop::Name, 2));
    EXPECT_FALSE(Panel().GetRootItem()->IsPropertyEditable(Prop::Name, 2));
}

TEST_F(DemoWindowTest, renameIsSavedAndARefusedRenameChangesNothing)
{
    Open();
    EXPECT_TRUE(Edit("Grid", Prop::Name, QStringLiteral("Grid north")));
    EXPECT_EQ(SavedRecord(QStringLiteral("Grid north")).savedPath,
              QStringLiteral("./xrefs/Grid.dwg"));
    EXPECT_NE(Panel().FindItem(QStringLiteral("Grid north")), nullptr);
    EXPECT_FALSE(Panel().IsHostModified());

    const QByteArray before = Bytes(m_drawing);
    for (const QString& refused : {QStringLiteral("Survey"), QStringLiteral("a/b"),
                                   QStringLiteral(""), QStringLiteral(" Grid")}) {
        EXPECT_FALSE(Edit("Bridge", Prop::Name, refused)) << refused.toStdString();
        EXPECT_FALSE(Panel().Message().isEmpty()) << "the strip says why";
    }
    // A reference inside another drawing belongs to that drawing.
    EXPECT_FALSE(Edit("Level 1", Prop::Name, QStringLiteral("Level one")));
    EXPECT_EQ(Bytes(m_drawing), before);
    EXPECT_NE(Panel().FindItem(QStringLiteral("Bridge")), nullptr);
}

TEST_F(DemoWindowTest, typeToggleAndSavedPathEditsAreValidatedAndSaved)
{
    Open();
    EXPECT_TRUE(Edit("Grid", Prop::Type, OverlayTypeText()));
    EXPECT_TRUE(SavedRecord(QStringLiteral("Grid")).overlay);
    EXPECT_TRUE(Edit("Columns", Prop::Type, AttachTypeText()));
    EXPECT_FALSE(SavedRecord(QStringLiteral("Columns")).overlay);

    const QByteArray before = Bytes(m_drawing);
    EXPECT_FALSE(Edit("Aerial photo", Prop::Type, OverlayTypeText()));
    EXPECT_FALSE(Edit("Grid", Prop::Type, QStringLiteral("Sideways")));
    EXPECT_FALSE(Edit("Survey", Prop::SavedPath, QStringLiteral("   ")));
    EXPECT_FALSE(Edit("Survey", Prop::Date, QStringLiteral("yesterday")));
    EXPECT_EQ(Bytes(m_drawing), before);

    // Giving the missing title block a path where the file is brings it in.
    QDir().mkpath(Project(QStringLiteral("standards")));
    ASSERT_TRUE(QFile::copy(Project(QStringLiteral("xrefs/Grid.dwg")),
                            Project(QStringLiteral("standards/A1.dwg"))));
    EXPECT_TRUE(Edit("Title block A1", Prop::SavedPath, QStringLiteral("standards/A1.dwg")));
    EXPECT_EQ(SavedRecord(QStringLiteral("Title block A1")).savedPath,
              QStringLiteral("standards/A1.dwg"));
    EXPECT_EQ(Item(QStringLiteral("Title block A1"))->GetReferenceStatusText(), FD::Code1);
}

TEST_F(DemoWindowTest, pathOperationsRewriteSavedPaths)
{
    Open();
    Command(Trove::MakePathAbsolute, {"Building A"});
    const QString absolute = SavedRecord(QStringLiteral("Building A")).savedPath;
    EXPECT_TRUE(QDir::isAbsolutePath(absolute)) << absolute.toStdString();
    EXPECT_EQ(Item(QStringLiteral("Building A"))->GetReferenceStatusText(), FD::Code1);
    // The nested drawings are still followed from the new path.
    EXPECT_NE(Panel().FindItem(QStringLiteral("Furniture")), nullptr);

    Command(Trove::MakePathRelative, {"Building A"});
    EXPECT_EQ(SavedRecord(QStringLiteral("Building A")).savedPath,
              QStringLiteral("./xrefs/Building A.dwg"));

    // Without its folder the file is no longer where the drawing looks.
    Command(Trove::RemovePath, {"Survey"});
    EXPECT_EQ(SavedRecord(QStringLiteral("Survey")).savedPath, QStringLiteral("Survey.pdf"));
    EXPECT_EQ(Item(QStringLiteral("Survey"))->GetReferenceStatusIcon(), RefStatus::Unresolved);

    m_dialogs.Choose({Project(QStringLiteral("survey/Survey.pdf"))});
    Command(Trove::SelectNewPath, {"Survey"});
    ASSERT_EQ(m_dialogs.Count(), 1);
    EXPECT_TRUE(m_dialogs.ShownDialogs().front().filter.contains(QLatin1String("*.pdf")));
    EXPECT_EQ(Item(QStringLiteral("Survey"))->GetReferenceStatusText(), FD::Code1);
}

TEST_F(DemoWindowTest, findAndReplaceFollowsAMovedFolder)
{
    Open();
    ASSERT_TRUE(QDir(Project()).rename(QStringLiteral("images"), QStringLiteral("photos")));
    Command(Trove::Refresh, {});
    EXPECT_EQ(Item(QStringLiteral("Aerial photo"))->GetReferenceStatusIcon(),
              RefStatus::Unresolved);

    m_window->Commands().AskBulkRepath = [](CXrefBulkRepathDialog& dialog) {
        dialog.SetFindText(QStringLiteral("/IMAGES/"));
        dialog.SetReplaceText(QStringLiteral("/photos/"));
        return true;
    };
    Command(Trove::FindAndReplace, {"Aerial photo", "Quay photo", "Survey"});
    EXPECT_EQ(SavedRecord(QStringLiteral("Aerial photo")).savedPath,
              QStringLiteral("./photos/aerial-2023.png"));
    EXPECT_EQ(SavedRecord(QStringLiteral("Quay photo")).savedPath,
              QStringLiteral("./photos/quay.jpg"));
    EXPECT_EQ(SavedRecord(QStringLiteral("Survey")).savedPath,
              QStringLiteral("./survey/Survey.pdf"));
    EXPECT_EQ(Item(QStringLiteral("Aerial photo"))->GetReferenceStatusText(), FD::Code1);
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("2 saved paths")))
        << Panel().Message().toStdString();
}

TEST_F(DemoWindowTest, contextMenuOffersWhatTheSelectionAllowsAndItsCommandsWork)
{
    Open();
    QMenu menu;
    Panel().FillContextMenu(menu, Items({"Level 1"}), false);
    const QStringList nested = menuTexts(menu, true);
    EXPECT_TRUE(nested.contains(QStringLiteral("Open")));
    EXPECT_FALSE(nested.contains(QStringLiteral("Detach"))) << "it belongs to Building A";

    QMenu own;
    Panel().FillContextMenu(own, Items({"Survey"}), false);
    EXPECT_TRUE(menuTexts(own, true).contains(QStringLiteral("Unload")));
    EXPECT_TRUE(menuTexts(own, true).contains(QStringLiteral("Detach")));

    Command(Trove::HostCommand6, {"Survey"});
    EXPECT_TRUE(SavedRecord(QStringLiteral("Survey")).unloaded);
    EXPECT_EQ(Item(QStringLiteral("Survey"))->GetReferenceStatusIcon(), RefStatus::Unloaded);
    // Double-clicking the status of an unloaded reference loads it again.
    Panel().OnStatusColumnDoubleClicked(Item(QStringLiteral("Survey")));
    Settle();
    EXPECT_FALSE(SavedRecord(QStringLiteral("Survey")).unloaded);
    EXPECT_EQ(Item(QStringLiteral("Survey"))->GetReferenceStatusText(), FD::Code1);

    Command(Trove::HostCommand7, {"Quay photo"});
    EXPECT_FALSE(SavedRecord(QStringLiteral("Quay photo")).unloaded);

    QSignalSpy opened(&m_window->Commands(), &DemoCommands::OpenDrawingRequested);
    Command(Trove::HostCommand3, {"Level 1"});
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(m_window->View().Title(), QStringLiteral("Level 1.dwg"));
    EXPECT_EQ(childNames(Panel(), *Panel().GetRootItem()), QStringList{"Furniture"});
}

TEST_F(DemoWindowTest, detachRemovesTheReferenceWithItsNestedDrawings)
{
    Open();
    Command(Trove::HostCommand9, {"Building A", "Door schedule"});
    EXPECT_EQ(Saved().size(), 10u);
    EXPECT_EQ(SavedRecord(QStringLiteral("Building A")).name, QString());
    EXPECT_EQ(Panel().FindItem(QStringLiteral("Furniture")), nullptr);
    EXPECT_EQ(Panel().GetUniqueXrefCount(), 14 - 4);

    // A nested reference cannot be detached from here; nothing changes.
    const QByteArray before = Bytes(m_drawing);
    Command(Trove::HostCommand9, {"Grid"}); // Grid's first item is the own one
    EXPECT_EQ(Saved().size(), 9u);
    EXPECT_NE(Panel().FindItem(QStringLiteral("Grid")), nullptr) << "Columns still references Grid";
    const QByteArray after = Bytes(m_drawing);
    Panel().OnMenuSelection(Trove::HostCommand9, {Panel().GetChildren(*Item("Columns")).front()});
    Settle();
    EXPECT_EQ(Bytes(m_drawing), after);
    EXPECT_NE(before, after);
}

TEST_F(DemoWindowTest, attachOffersEachTypeItsOwnFilesAndSavesTheReference)
{
    Open();
    QFile photo(Project(QStringLiteral("images/site plan.png")));
    ASSERT_TRUE(QFile::copy(Project(QStringLiteral("images/aerial-2023.png")), photo.fileName()));
    m_dialogs.Choose({photo.fileName()});
    // Through the tool bar, as its attach menu does.
    ASSERT_TRUE(Panel().GetToolBar()->OnCommand(1107));
    Settle();
    ASSERT_EQ(m_dialogs.Count(), 1);
    EXPECT_EQ(m_dialogs.ShownDialogs().front().filterArray.size(), 1);
    EXPECT_TRUE(m_dialogs.ShownDialogs().front().filter.contains(QLatin1String("*.png")));
    const ReferenceRecord attached = SavedRecord(QStringLiteral("site plan"));
    EXPECT_EQ(attached.kind, ReferenceKind::RasterImage);
    EXPECT_EQ(attached.savedPath, QStringLiteral("images/site plan.png"));
    EXPECT_NE(dynamic_cast<RasterImageItem*>(Item(QStringLiteral("site plan"))), nullptr);

    // The general attach takes the kind from the file; a second file of the same name gets a
    // name of its own.
    m_dialogs.Choose({Project(QStringLiteral("xrefs/Grid.dwg"))});
    Command(Trove::Attach, {});
    EXPECT_EQ(SavedRecord(QStringLiteral("Grid (2)")).kind, ReferenceKind::Drawing);

    m_dialogs.Cancel();
    const std::size_t count = Saved().size();
    Command(Trove::AttachPDF, {});
    EXPECT_EQ(Saved().size(), count);
}

TEST_F(DemoWindowTest, fileChangedOnDiskNeedsReloadingUntilReloaded)
{
    Open();
    {
        QFile file(Project(QStringLiteral("xrefs/Furniture.dwg")));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(QByteArray(100, 'x'));
    }
    DemoItem* furniture = Item(QStringLiteral("Furniture"));
    QTRY_COMPARE_WITH_TIMEOUT(int(furniture->GetReferenceStatusIcon()),
                              int(RefStatus::NeedsReloading), 3000);
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("Furniture.dwg")))
        << Panel().Message().toStdString();
    EXPECT_EQ(Item(QStringLiteral("Grid"))->GetReferenceStatusText(), FD::Code1);

    Panel().OnStatusColumnDoubleClicked(furniture);
    Settle();
    EXPECT_EQ(Item(QStringLiteral("Furniture"))->GetReferenceStatusText(), FD::Code1);
}

TEST_F(DemoWindowTest, profileKeepsLayoutSortAndToolTipChoicesForTheNextStart)
{
    DemoSettings stored;
    stored.splitterRatio = 0.45;
    Open({}, {}, stored);
    double ratio = 0;
    bool shown = false;
    Panel().GetLowerGroup(ratio, shown);
    EXPECT_DOUBLE_EQ(ratio, 0.45);
    EXPECT_TRUE(shown);
    Panel().OnClassic();
    Panel().OnPreviewDetailsPane(); // hides the lower pane
    QHeaderView* header = Panel().GetListCtrl()->header();
    header->resizeSection(Trove::ListViewColumn::Date, 177);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(Trove::ListViewColumn::Size) + 5,
                             header->height() / 2));
    const int sortColumn = Panel().GetListCtrl()->GetSortColumn();
    const bool ascending = Panel().GetListCtrl()->IsSortAscending();
    EXPECT_EQ(sortColumn, Trove::ListViewColumn::Size);
    const std::vector<int> widths = Panel().GetListCtrl()->GetColumnDipWidths();
    Panel().SetReferenceViewType(CXrefPanelCtrl::FileReferenceViewType::TreeView);
    const ToolTipMenuSettings tips = Panel().GetToolTipMenuSettings();
    ASSERT_TRUE(m_window->SaveSettings().isEmpty());

    DemoSettings settings;
    ASSERT_TRUE(settings.Load(ProfilePath()));
    EXPECT_FALSE(settings.lowerPaneShown);
    EXPECT_EQ(settings.referenceView, 1);
    Open({}, {}, settings);
    EXPECT_EQ(Panel().GetToolTipMenuSettings().style, tips.style);
    EXPECT_FALSE(Panel().IsLowerPaneShown());
    EXPECT_EQ(Panel().GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::TreeView);
    EXPECT_EQ(Panel().GetListCtrl()->GetColumnDipWidths()[Trove::ListViewColumn::Type],
              widths[Trove::ListViewColumn::Type]);
    EXPECT_EQ(Panel().GetListCtrl()->GetColumnDipWidths()[Trove::ListViewColumn::Date], 177);
    EXPECT_EQ(Panel().GetListCtrl()->GetSortColumn(), sortColumn);
    EXPECT_EQ(Panel().GetListCtrl()->IsSortAscending(), ascending);

    // A damaged profile is no reason not to start: the defaults hold.
    QFile damaged(ProfilePath());
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate));
    damaged.write("<XrefDemoProfile><Panel><Splitter ratio=\"nan\" lowerPane=");
    damaged.close();
    DemoSettings fallback;
    EXPECT_FALSE(fallback.Load(ProfilePath()));
    EXPECT_TRUE(fallback.lowerPaneShown);
    EXPECT_DOUBLE_EQ(fallback.splitterRatio, 0.6);
}

TEST_F(DemoWindowTest, referenceCycleIsShownAndNotFollowed)
{
    DrawingContents a;
    a.references = {{ReferenceKind::Drawing, QStringLiteral("B"), QStringLiteral("B.dwg")}};
    DrawingContents b;
    b.references = {{ReferenceKind::Drawing, QStringLiteral("A"), QStringLiteral("A.dwg")}};
    QDir().mkpath(Project(QStringLiteral("cycle")));
    ASSERT_TRUE(SaveDrawing(Project(QStringLiteral("cycle/A.dwg")), a).isEmpty());
    ASSERT_TRUE(SaveDrawing(Project(QStringLiteral("cycle/B.dwg")), b).isEmpty());

    Open(Project(QStringLiteral("cycle/A.dwg")));
    // The open drawing is "A" too: the way back is B's child.
    const std::vector<CXrefPanelCtrlItem*> inB = Panel().GetChildren(*Item(QStringLiteral("B")));
    ASSERT_EQ(inB.size(), 1u);
    CXrefPanelCtrlItem* back = inB.front();
    EXPECT_EQ(back->GetReferenceStatusText(), FD::Code4);
    EXPECT_TRUE(Panel().GetChildren(*back).empty());
    EXPECT_EQ(Panel().GetUniqueXrefCount(), 1);
}

TEST_F(DemoWindowTest, damagedDrawingsAreReportedAndLeftUntouched)
{
    Open();
    const QString broken = Project(QStringLiteral("Broken.dwg"));
    QFile file(broken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("KV1032 this is not a drawing at all");
    file.close();
    const QByteArray bytes = Bytes(broken);

    QString error;
    EXPECT_FALSE(m_window->OpenDrawing(broken, &error));
    Settle();
    EXPECT_FALSE(error.isEmpty());
    ASSERT_EQ(m_boxes.Boxes().size(), 1u);
    EXPECT_EQ(Panel().Message(), error);
    EXPECT_EQ(Bytes(broken), bytes);
    EXPECT_EQ(m_window->View().Title(), QStringLiteral("Harbour site.dwg")) << "the open one stays";

    // A damaged nested drawing is a status of its own, not a failure of the whole drawing.
    const QString grid = Project(QStringLiteral("xrefs/Grid.dwg"));
    ASSERT_TRUE(QFile::remove(grid));
    ASSERT_TRUE(QFile::copy(broken, grid));
    Command(Trove::Refresh, {});
    EXPECT_EQ(Item(QStringLiteral("Grid"))->GetReferenceStatusIcon(), RefStatus::Unresolved);
    EXPECT_EQ(Item(QStringLiteral("Grid"))->GetReferenceStatusText(),
              ToPanelStatus(ReferenceState::Damaged).code);
    EXPECT_EQ(Bytes(grid), bytes);
}

// A disk that fills up halfway through the save after a rename: the kernel refuses writes past a
// file size limit, as it does when a quota runs out.
TEST_F(DemoWindowTest, interruptedSaveLeavesTheDrawingIntactAndKeepsTheChange)
{
    Open();
    const QByteArray before = Bytes(m_drawing);
    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limited = saved;
    limited.rlim_cur = 16 * 1024;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const bool accepted = Edit("Bridge", Prop::Name, QStringLiteral("Bridge deck"));
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, previousHandler);

    EXPECT_TRUE(accepted) << "the change stands in the open document";
    EXPECT_EQ(Bytes(m_drawing), before);
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("left as it was")))
        << Panel().Message().toStdString();
    EXPECT_TRUE(Panel().IsHostModified());
    EXPECT_TRUE(m_window->windowTitle().startsWith(QLatin1String("Harbour site.dwg*")));

    // With room again, the next save writes it.
    EXPECT_EQ(m_window->Commands().Save(), QString());
    EXPECT_EQ(SavedRecord(QStringLiteral("Bridge deck")).kind, ReferenceKind::DgnUnderlay);
    EXPECT_FALSE(Panel().IsHostModified());
    EXPECT_FALSE(m_window->windowTitle().contains(QLatin1Char('*')));
}

TEST_F(DemoWindowTest, helpAndToolBarRefreshReachTheHost)
{
    Open();
    Panel().GetToolBar()->OnCommand(CXrefToolBar::HelpButtonId);
    ASSERT_EQ(m_boxes.Boxes().size(), 1u);
    EXPECT_TRUE(m_boxes.Boxes().front().text.contains(QLatin1String("External References")));

    QFile::remove(Project(QStringLiteral("underlays/Bridge.dgn")));
    Panel().GetToolBar()->OnRmxRefreshButtonClick();
    Settle();
    EXPECT_EQ(Item(QStringLiteral("Bridge"))->GetReferenceStatusIcon(), RefStatus::Unresolved);
}

TEST_F(DemoWindowTest, filterFieldNarrowsTheViewsAndCtrlFReachesIt)
{
    Open();
    CTroveListCtrl& list = *Panel().GetListCtrl();
    const int all = list.GetShownCount();
    ASSERT_TRUE(Panel().IsFilterBarShown());
    auto* field = Panel().GetFilterBar()->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);

    m_window->activateWindow();
    list.setFocus();
    QTest::keySequence(m_window.get(), QKeySequence::Find);
    EXPECT_TRUE(field->hasFocus());

    QTest::keyClicks(field, QStringLiteral("grid"));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(list.GetShownCount(), 1) << "the shared drawing has one row";

    // A refill of the document keeps the filter.
    Command(Trove::Refresh, {});
    QTRY_COMPARE_WITH_TIMEOUT(list.GetShownCount(), 1, 3000);

    QTest::keyClick(field, Qt::Key_Escape);
    auto* problems = Panel().GetFilterBar()->findChild<QToolButton*>();
    ASSERT_NE(problems, nullptr);
    problems->click();
    ASSERT_EQ(list.GetShownCount(), 1);
    EXPECT_EQ(list.ItemOfRow(list.Model().StorageRow(0))->GetText(), L"Title block A1")
        << "the missing file is the sample's only problem";
    problems->click();
    EXPECT_EQ(list.GetShownCount(), all);
}

TEST_F(DemoWindowTest, tabReachesTheToolBarTheFilterTheViewAndTheDetails)
{
    Open();
    HostPanel& panel = Panel();
    panel.GetListCtrl()->setFocus();
    QWidget* field = panel.GetFilterBar()->findChild<QLineEdit*>();
    std::set<QWidget*> reached;
    for (int step = 0; step < 40; ++step) {
        QWidget* focus = QApplication::focusWidget();
        if (focus)
            reached.insert(focus);
        QTest::keyClick(focus ? focus : m_window.get(), Qt::Key_Tab);
    }
    EXPECT_TRUE(reached.count(panel.GetListCtrl()));
    EXPECT_TRUE(reached.count(panel.GetDetailsCtrl()));
    EXPECT_TRUE(reached.count(field));
    EXPECT_TRUE(reached.count(static_cast<QWidget*>(panel.GetToolBar()->RefreshButton())));
}

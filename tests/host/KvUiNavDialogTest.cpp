#include "host/KvUiNavDialog.h"
#include "host/KvUiFolderBrowser.h"
#include "support/FileDialogStandIn.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace {

struct FilterCase
{
    const char* filter;
    QStringList expected;
};

class NavDialogFilterTest : public ::testing::TestWithParam<FilterCase>
{};

TEST_P(NavDialogFilterTest, filterBecomesQtNameFilters)
{
    CKvUiNavDialog dialog;
    dialog.SetFilter(QString::fromUtf8(GetParam().filter));
    EXPECT_EQ(dialog.FilterArray(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Filters, NavDialogFilterTest,
    ::testing::Values(
        FilterCase{"All Files (*.*)|*.*||", {QStringLiteral("All Files (*)")}},
        FilterCase{"Drawings (*.dwg)|*.dwg;*.DWG|All Files|*.*||",
                   {QStringLiteral("Drawings (*.dwg *.DWG)"), QStringLiteral("All Files (*)")}},
        // Blanks and a missing pattern list are tolerated; an empty description ends the list.
        FilterCase{" Images | *.png ; *.jpg |Nothing||",
                   {QStringLiteral("Images (*.png *.jpg)"), QStringLiteral("Nothing (*)")}},
        FilterCase{"Drawings|*.dwg|||Later|*.x", {QStringLiteral("Drawings (*.dwg)")}},
        FilterCase{"", {}}, FilterCase{"|", {}}, FilterCase{"||||", {}},
        FilterCase{"No pair", {}}));

TEST(NavDialogTest, replacedHandlerShowsTheDialogAndChoiceIsKeptUntilTheNextShow)
{
    FileDialogStandIn standIn;
    CKvUiNavDialog dialog;
    dialog.SetFlags(CKvUiNavDialog::SaveFile | CKvUiNavDialog::ConfirmReplace);
    dialog.SetCaption(QStringLiteral("Save Plan"));
    dialog.SetDefaultExtension(QStringLiteral(".dwg"));
    standIn.Choose({QStringLiteral("/work/plan.dwg")});
    EXPECT_TRUE(dialog.DoModal(nullptr));
    EXPECT_EQ(dialog.SelectedPaths(), QStringList{QStringLiteral("/work/plan.dwg")});
    ASSERT_EQ(standIn.Count(), 1);
    EXPECT_EQ(standIn.ShownDialogs()[0].caption, QStringLiteral("Save Plan"));
    EXPECT_EQ(standIn.ShownDialogs()[0].defaultExtension, QStringLiteral("dwg"));
    EXPECT_EQ(standIn.ShownDialogs()[0].flags,
              unsigned(CKvUiNavDialog::SaveFile | CKvUiNavDialog::ConfirmReplace));

    // A cancelled second show forgets the first choice.
    standIn.Cancel();
    EXPECT_FALSE(dialog.DoModal(nullptr));
    EXPECT_TRUE(dialog.SelectedPaths().isEmpty());
}

TEST(FolderBrowserTest, startFolderReachesTheBrowserAndChoiceComesBack)
{
    FileDialogStandIn standIn;
    CKvUiFolderBrowser browser(nullptr);
    browser.SetStartFolder(QStringLiteral("/data/site"));
    standIn.Choose({QStringLiteral("/data/site/xrefs")});
    EXPECT_TRUE(browser.DoModal());
    EXPECT_EQ(browser.SelectedFolder(), QStringLiteral("/data/site/xrefs"));
    ASSERT_EQ(standIn.Count(), 1);
    EXPECT_TRUE(standIn.ShownDialogs()[0].folderBrowser);
    EXPECT_EQ(standIn.ShownDialogs()[0].start, QStringLiteral("/data/site"));
}

// The window a dialog is modal to can go while the dialog waits (the host closes a drawing
// from a timer); the dialog goes with it and its caller learns of a cancel.
TEST(DefaultDialogsTest, ownerDestroyedWhileTheDialogIsOpenIsACancel)
{
    auto showWithOwnerGone = [](const std::function<bool(QWidget*)>& show) {
        QPointer<QWidget> owner = new QWidget;
        owner->show();
        QTimer::singleShot(0, owner, [owner] {
            EXPECT_NE(QApplication::activeModalWidget(), nullptr);
            delete owner.data();
        });
        // Should the dialog outlive its owner after all, close it rather than hang.
        QTimer guard;
        guard.setInterval(2000);
        QObject::connect(&guard, &QTimer::timeout, [] {
            if (QWidget* modal = QApplication::activeModalWidget())
                modal->close();
        });
        guard.start();
        const bool chosen = show(owner);
        EXPECT_TRUE(owner.isNull());
        return chosen;
    };
    CKvUiNavDialog dialog;
    dialog.SetCaption(QStringLiteral("Open Plan"));
    EXPECT_FALSE(showWithOwnerGone([&](QWidget* owner) { return dialog.DoModal(owner); }));
    EXPECT_TRUE(dialog.SelectedPaths().isEmpty());

    std::unique_ptr<CKvUiFolderBrowser> browser;
    EXPECT_FALSE(showWithOwnerGone([&](QWidget* owner) {
        browser = std::make_unique<CKvUiFolderBrowser>(owner);
        return browser->DoModal();
    }));
    EXPECT_TRUE(browser->SelectedFolder().isEmpty());
}

} // namespace

// Bulk re-pathing: the plan of new saved paths, and the dialog that previews it and looks for
// the new files without holding up the window.

#include "PanelFixture.h"
#include "support/TestXrefItem.h"

#include "host/KvUiFolderBrowser.h"
#include "panel/XrefBulkRepathDialog.h"
#include "panel/XrefRepathPlan.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Exists = CXrefRepathPlan::Exists;
using Source = CXrefRepathPlan::Source;

std::vector<Source> sources(std::initializer_list<const char*> paths)
{
    std::vector<Source> result;
    int n = 0;
    for (const char* path : paths)
        result.push_back({nullptr, QStringLiteral("R%1").arg(n++), QString::fromUtf8(path)});
    return result;
}

std::vector<std::pair<QString, QString>> changes(const CXrefRepathPlan& plan)
{
    std::vector<std::pair<QString, QString>> result;
    for (const auto& entry : plan.Entries())
        result.emplace_back(entry.name, entry.newPath);
    return result;
}

using Changes = std::vector<std::pair<QString, QString>>;

TEST(XrefRepathPlanTest, findAndReplaceIsPlainTextWithAChoiceOfCase)
{
    CXrefRepathPlan plan(sources({"C:\\Jobs\\Images\\a.png", "./images/b.png", "./survey/s.pdf",
                                  "./img.dwg", "images/images.png"}));
    plan.FindAndReplace(QStringLiteral("images"), QStringLiteral("photos"), Qt::CaseInsensitive);
    EXPECT_EQ(changes(plan), (Changes{{"R0", "C:\\Jobs\\photos\\a.png"},
                                      {"R1", "./photos/b.png"},
                                      {"R4", "photos/photos.png"}}));
    plan.FindAndReplace(QStringLiteral("images"), QStringLiteral("photos"), Qt::CaseSensitive);
    EXPECT_EQ(changes(plan), (Changes{{"R1", "./photos/b.png"}, {"R4", "photos/photos.png"}}));

    // Characters that mean something in patterns are only text here.
    plan.FindAndReplace(QStringLiteral("./"), QStringLiteral("$1\\"), Qt::CaseSensitive);
    EXPECT_EQ(
        changes(plan),
        (Changes{{"R1", "$1\\images/b.png"}, {"R2", "$1\\survey/s.pdf"}, {"R3", "$1\\img.dwg"}}));
    // No match, an empty search and a replacement that changes nothing plan nothing.
    plan.FindAndReplace(QStringLiteral("nowhere"), QStringLiteral("x"), Qt::CaseInsensitive);
    EXPECT_TRUE(plan.Entries().empty());
    plan.FindAndReplace(QString(), QStringLiteral("x"), Qt::CaseInsensitive);
    EXPECT_TRUE(plan.Entries().empty());
    plan.FindAndReplace(QStringLiteral("IMAGES"), QStringLiteral("images"), Qt::CaseInsensitive);
    EXPECT_EQ(changes(plan), (Changes{{"R0", "C:\\Jobs\\images\\a.png"}}));
}

TEST(XrefRepathPlanTest, newFolderKeepsEachFileNameInTheFoldersStyle)
{
    CXrefRepathPlan plan(
        sources({"./xrefs/Grid.dwg", "C:\\old\\Site plan.dwg", "Bare.dwg", "", "./ends/with/"}));
    plan.SelectNewFolder(QStringLiteral("/srv/new"));
    EXPECT_EQ(changes(plan), (Changes{{"R0", "/srv/new/Grid.dwg"},
                                      {"R1", "/srv/new/Site plan.dwg"},
                                      {"R2", "/srv/new/Bare.dwg"}}));
    plan.SelectNewFolder(QStringLiteral("D:\\Project\\"));
    EXPECT_EQ(plan.Entries()[1].newPath, QStringLiteral("D:\\Project\\Site plan.dwg"));
    plan.SelectNewFolder(QStringLiteral("..\\shared"));
    EXPECT_EQ(plan.Entries()[0].newPath, QStringLiteral("..\\shared\\Grid.dwg"));
    // Already in that folder: no change.
    plan.SelectNewFolder(QStringLiteral("./xrefs"));
    EXPECT_EQ(plan.Entries().size(), 2u);
    plan.SelectNewFolder(QString());
    EXPECT_TRUE(plan.Entries().empty());
}

TEST(XrefRepathPlanTest, newFilesAreLookedForFromTheBaseFolder)
{
    CXrefRepathPlan plan(sources({"a.dwg", "b.dwg", "c.dwg"}));
    plan.SetBaseFolder(QStringLiteral("/work/site"));
    EXPECT_EQ(plan.ResolvedPath(QStringLiteral("./xrefs\\Grid.dwg")),
              QStringLiteral("/work/site/xrefs/Grid.dwg"));
    EXPECT_EQ(plan.ResolvedPath(QStringLiteral("..\\std/A1.dwg")),
              QStringLiteral("/work/std/A1.dwg"));
    EXPECT_EQ(plan.ResolvedPath(QStringLiteral("/abs//x/../y.dwg")), QStringLiteral("/abs/y.dwg"));
    EXPECT_EQ(plan.ResolvedPath(QString()), QString());

    plan.SelectNewFolder(QStringLiteral("n"));
    EXPECT_EQ(plan.UnknownCount(), 3);
    plan.SetExists(0, true);
    plan.SetExists(2, false);
    plan.SetExists(99, false); // out of range: ignored
    EXPECT_EQ(plan.UnknownCount(), 1);
    EXPECT_EQ(plan.MissingCount(), 1);
    EXPECT_EQ(plan.Entries()[0].exists, Exists::Yes);
    // A new plan knows nothing yet.
    plan.SelectNewFolder(QStringLiteral("m"));
    EXPECT_EQ(plan.UnknownCount(), 3);
}

class XrefRepathItemsTest : public PanelFixture
{
protected:
    void SetUp() override
    {
        panel = Make(400, 500);
        root = new TestXrefItem(*panel, true);
        panel->InsertRootItem(*root);
        root->SetText(L"Site");
    }
    void TearDown() override
    {
        panel->DeleteAllItems();
        panel.reset();
    }
    TestXrefItem* add(const QString& name, const QString& savedPath,
                      const CXrefPanelCtrlItem* sharedWith = nullptr)
    {
        auto* item = new TestXrefItem(*panel);
        panel->InsertItem(*item, *root, sharedWith);
        item->SetText(name.toStdWString());
        if (!sharedWith)
            item->SetSavedPath(savedPath.toStdWString());
        return item;
    }

    std::unique_ptr<TestPanel> panel;
    TestXrefItem* root = nullptr;
};

TEST_F(XrefRepathItemsTest, planTakesEachItemOnceWithItsListedPath)
{
    TestXrefItem* grid = add(QStringLiteral("Grid"), QStringLiteral("./x/Grid.dwg"));
    TestXrefItem* again = add(QStringLiteral("Grid"), QString(), grid);
    TestXrefItem* pending = add(QStringLiteral("Plan"), QStringLiteral("../Plan.dwg"));
    pending->pendingRelativePath = true;
    pending->SetSavedPath(L"../Plan.dwg");

    CXrefRepathPlan plan({grid, again, grid, nullptr, pending});
    ASSERT_EQ(plan.Sources().size(), 3u);
    EXPECT_EQ(plan.Sources()[1].item, again);
    EXPECT_EQ(plan.Sources()[1].savedPath, QStringLiteral("./x/Grid.dwg")); // the shared row's
    EXPECT_EQ(plan.Sources()[2].savedPath, QStringLiteral("../Plan.dwg"));  // without its marker
    plan.SelectNewFolder(QStringLiteral("/n"));
    ASSERT_EQ(plan.Entries().size(), 3u);
    EXPECT_EQ(plan.Entries()[2].item, pending);
    EXPECT_EQ(plan.Entries()[2].oldPath, QStringLiteral("../Plan.dwg"));
}

class XrefBulkRepathDialogTest : public XrefRepathItemsTest
{
protected:
    void SetUp() override
    {
        XrefRepathItemsTest::SetUp();
        ASSERT_TRUE(dir.isValid());
        QDir(dir.path()).mkpath(QStringLiteral("new"));
        touch(QStringLiteral("new/Grid.dwg"));
        touch(QStringLiteral("new/Photo.png"));
        QDir(dir.path()).mkpath(QStringLiteral("new/Roads.dwg")); // a folder is no file
    }
    void touch(const QString& relative)
    {
        QFile file(dir.filePath(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    static bool settled(const CXrefBulkRepathDialog& dialog)
    {
        return QTest::qWaitFor([&] { return !dialog.IsChecking(); }, 20000);
    }
    static QString cell(const CXrefBulkRepathDialog& dialog, int row, int column)
    {
        const QAbstractItemModel* model = dialog.PreviewTable()->model();
        return model->data(model->index(row, column)).toString();
    }

    QTemporaryDir dir;
};

TEST_F(XrefBulkRepathDialogTest, previewShowsOldNewAndWhetherTheFileIsThere)
{
    std::vector<CXrefPanelCtrlItem*> items{
        add(QStringLiteral("Grid"), QStringLiteral("./old/Grid.dwg")),
        add(QStringLiteral("Roads"), QStringLiteral("./old/Roads.dwg")),
        add(QStringLiteral("Photo"), QStringLiteral("OLD\\Photo.png")),
        add(QStringLiteral("Survey"), QStringLiteral("./survey/s.pdf"))};
    CXrefBulkRepathDialog dialog(items, dir.path());
    EXPECT_TRUE(dialog.Plan().empty());

    dialog.SetFindText(QStringLiteral("old"));
    dialog.SetReplaceText(QStringLiteral("new"));
    ASSERT_TRUE(settled(dialog));
    ASSERT_EQ(dialog.Plan().size(), 3u);
    EXPECT_EQ(dialog.PreviewTable()->model()->rowCount(), 3);
    EXPECT_EQ(cell(dialog, 0, 1), QStringLiteral("./old/Grid.dwg"));
    EXPECT_EQ(cell(dialog, 0, 2), QStringLiteral("./new/Grid.dwg"));
    EXPECT_EQ(cell(dialog, 0, 3), QStringLiteral("Found"));
    EXPECT_EQ(cell(dialog, 1, 3), QStringLiteral("Not found"));
    EXPECT_EQ(dialog.Plan()[2].newPath, QStringLiteral("new\\Photo.png"));
    EXPECT_EQ(dialog.Plan()[2].exists, Exists::Yes);

    // Matching case drops the upper-case path; the files already looked for stay known.
    dialog.SetMatchCase(true);
    EXPECT_FALSE(dialog.IsChecking());
    ASSERT_EQ(dialog.Plan().size(), 2u);
    EXPECT_EQ(dialog.Plan()[0].exists, Exists::Yes);

    dialog.SetFindText(QStringLiteral("nowhere"));
    EXPECT_TRUE(dialog.Plan().empty());
    EXPECT_FALSE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
}

TEST_F(XrefBulkRepathDialogTest, everyFieldAndThePreviewAreNamedForAssistiveTechnology)
{
    std::vector<CXrefPanelCtrlItem*> items{add(QStringLiteral("Grid"), QStringLiteral("a.dwg"))};
    CXrefBulkRepathDialog dialog(items, dir.path());
    dialog.show();
    const QList<QWidget*> inputs = dialog.findChildren<QWidget*>();
    int named = 0;
    for (QWidget* input : inputs) {
        if (!qobject_cast<QLineEdit*>(input) && !qobject_cast<QTableView*>(input) &&
            !qobject_cast<QAbstractButton*>(input))
            continue;
        // The table's own parts (its corner button) are the table's business.
        if (qobject_cast<QTableView*>(input->parentWidget()))
            continue;
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(input);
        ASSERT_NE(face, nullptr);
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty())
            << input->metaObject()->className() << " " << input->objectName().toStdString();
        ++named;
    }
    EXPECT_GE(named, 8) << "modes, three fields, case, browse, table, buttons";
}

TEST_F(XrefBulkRepathDialogTest, newFolderComesFromTheFolderBrowser)
{
    std::vector<CXrefPanelCtrlItem*> items{
        add(QStringLiteral("Grid"), QStringLiteral("C:\\a\\Grid.dwg")),
        add(QStringLiteral("Plan"), QStringLiteral("./b/Plan.dwg"))};
    CXrefBulkRepathDialog dialog(items, dir.path());
    dialog.SetMode(CXrefBulkRepathDialog::Mode::NewFolder);
    QString startedAt;
    const auto previous = CKvUiFolderBrowser::SetHandler([&](CKvUiFolderBrowser& browser) {
        startedAt = browser.StartFolder();
        browser.SetSelectedFolder(dir.filePath(QStringLiteral("new")));
        return true;
    });
    QPushButton* browse = nullptr;
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text().contains(QLatin1String("Browse")))
            browse = button;
    ASSERT_NE(browse, nullptr);
    browse->click();
    CKvUiFolderBrowser::SetHandler(previous);
    EXPECT_EQ(startedAt, dir.path());

    ASSERT_TRUE(settled(dialog));
    ASSERT_EQ(dialog.Plan().size(), 2u);
    EXPECT_EQ(dialog.Plan()[0].newPath, dir.filePath(QStringLiteral("new/Grid.dwg")));
    EXPECT_EQ(dialog.Plan()[0].exists, Exists::Yes);
    EXPECT_EQ(dialog.Plan()[1].exists, Exists::No);
    EXPECT_TRUE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
}

TEST_F(XrefBulkRepathDialogTest, thousandsOfRowsAreLookedForInBatchesAndAllAnswered)
{
    // Every third file exists; the answers must land on their own rows across batch ends.
    std::vector<CXrefPanelCtrlItem*> items;
    panel->BeginUpdate();
    for (int i = 0; i < 3000; ++i) {
        if (i % 3 == 0)
            touch(QStringLiteral("new/f%1.dwg").arg(i));
        items.push_back(add(QStringLiteral("f%1").arg(i), QStringLiteral("./old/f%1.dwg").arg(i)));
    }
    panel->EndUpdate();
    CXrefBulkRepathDialog dialog(items, dir.path());
    dialog.SetMode(CXrefBulkRepathDialog::Mode::NewFolder);
    dialog.SetFolder(QStringLiteral("./new"));
    // Typing again while the files are looked for starts over without mixing answers.
    dialog.SetFolder(QStringLiteral("./ne"));
    dialog.SetFolder(QStringLiteral("./new"));
    ASSERT_TRUE(settled(dialog));
    ASSERT_EQ(dialog.Plan().size(), 3000u);
    for (std::size_t i = 0; i < dialog.Plan().size(); ++i)
        ASSERT_EQ(dialog.Plan()[i].exists, i % 3 == 0 ? Exists::Yes : Exists::No) << i;
}

TEST_F(XrefBulkRepathDialogTest, closingWhileLookingLeavesNothingBehind)
{
    std::vector<CXrefPanelCtrlItem*> items;
    for (int i = 0; i < 2000; ++i)
        items.push_back(add(QStringLiteral("f%1").arg(i), QStringLiteral("./old/f%1.dwg").arg(i)));
    {
        CXrefBulkRepathDialog dialog(items, dir.path());
        dialog.SetFolder(QStringLiteral("./new"));
        dialog.SetMode(CXrefBulkRepathDialog::Mode::NewFolder);
    }
    // Batches still on their way would reach a dialog that is gone.
    QTest::qWait(50);
    SUCCEED();
}

} // namespace

// Bulk re-pathing in the demo host: a whole plan applied and saved in one step, and Edit > Undo
// and Redo taking it back and doing it again on the drawing file itself.

#include "DemoWindowFixture.h"

#include <QAction>
#include <QMenuBar>
#include <QUndoStack>

namespace {

class DemoRepathTest : public DemoWindowTest
{
protected:
    /// The Edit menu's entry whose text starts with @p text.
    QAction* EditAction(const QString& text) const
    {
        for (QAction* menu : m_window->menuBar()->actions())
            if (menu->text() == QLatin1String("&Edit"))
                for (QAction* action : menu->menu()->actions())
                    if (action->text().startsWith(text))
                        return action;
        ADD_FAILURE() << "no Edit entry " << text.toStdString();
        return nullptr;
    }
    void Trigger(const QString& text)
    {
        if (QAction* action = EditAction(text))
            action->trigger();
        Settle();
    }
    std::vector<QString> SavedPaths() const
    {
        std::vector<QString> paths;
        for (const ReferenceRecord& record : Saved())
            paths.push_back(record.savedPath);
        return paths;
    }
};

TEST_F(DemoRepathTest, wholePlanIsOneStepThatUndoAndRedoTakeBackAndRepeatOnDisk)
{
    Open();
    const QByteArray original = Bytes(m_drawing);
    const std::vector<QString> before = SavedPaths();
    ASSERT_TRUE(QDir(Project()).rename(QStringLiteral("images"), QStringLiteral("photos")));
    ASSERT_TRUE(QDir(Project()).rename(QStringLiteral("underlays"), QStringLiteral("photos/u")));

    int offered = 0;
    m_window->Commands().AskBulkRepath = [&](CXrefBulkRepathDialog& dialog) {
        dialog.SetFindText(QStringLiteral("/images/"));
        dialog.SetReplaceText(QStringLiteral("/photos/"));
        offered = int(dialog.Plan().size());
        return true;
    };
    // Nothing selected: every reference of the drawing is offered.
    Panel().SelectItem(nullptr);
    Trigger(QStringLiteral("Change Saved"));
    EXPECT_EQ(offered, 2);
    EXPECT_EQ(SavedRecord(QStringLiteral("Aerial photo")).savedPath,
              QStringLiteral("./photos/aerial-2023.png"));
    EXPECT_EQ(SavedRecord(QStringLiteral("Quay photo")).savedPath,
              QStringLiteral("./photos/quay.jpg"));
    EXPECT_EQ(Item(QStringLiteral("Aerial photo"))->GetReferenceStatusIcon(), RefStatus::Blank);
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("Changed 2 saved paths")));
    const QByteArray changed = Bytes(m_drawing);
    EXPECT_NE(changed, original);

    // A second plan on top, made by folder.
    m_window->Commands().AskBulkRepath = [&](CXrefBulkRepathDialog& dialog) {
        dialog.SetMode(CXrefBulkRepathDialog::Mode::NewFolder);
        dialog.SetFolder(QStringLiteral("./photos/u"));
        return true;
    };
    m_window->Commands().BulkRepath(
        {Item(QStringLiteral("Landscape")), Item(QStringLiteral("Bridge"))},
        CXrefBulkRepathDialog::Mode::FindAndReplace);
    Settle();
    EXPECT_EQ(SavedRecord(QStringLiteral("Bridge")).savedPath,
              QStringLiteral("./photos/u/Bridge.dgn"));
    EXPECT_EQ(SavedRecord(QStringLiteral("Grid")).savedPath, QStringLiteral("./xrefs/Grid.dwg"));
    EXPECT_EQ(m_window->Commands().UndoStack().count(), 2);

    QAction* undo = EditAction(QStringLiteral("&Undo"));
    QAction* redo = EditAction(QStringLiteral("&Redo"));
    ASSERT_TRUE(undo && redo);
    EXPECT_TRUE(undo->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Z)));
    EXPECT_TRUE(redo->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)));
    EXPECT_TRUE(redo->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Y)));

    undo->trigger();
    Settle();
    EXPECT_EQ(Bytes(m_drawing), changed);
    undo->trigger();
    Settle();
    EXPECT_EQ(SavedPaths(), before);
    EXPECT_EQ(Bytes(m_drawing), original);
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("Restored 2 saved paths")));
    // The panel shows the paths of the drawing as it is now.
    EXPECT_EQ(Item(QStringLiteral("Aerial photo"))->GetSavedPath(), L"./images/aerial-2023.png");
    EXPECT_FALSE(undo->isEnabled());

    redo->trigger();
    redo->trigger();
    Settle();
    EXPECT_EQ(SavedRecord(QStringLiteral("Quay photo")).savedPath,
              QStringLiteral("./photos/quay.jpg"));
    EXPECT_EQ(SavedRecord(QStringLiteral("Landscape")).savedPath,
              QStringLiteral("./photos/u/Landscape.dwf"));
    EXPECT_EQ(Item(QStringLiteral("Landscape"))->GetSavedPath(), L"./photos/u/Landscape.dwf");
    EXPECT_FALSE(Document().IsModified());
}

TEST_F(DemoRepathTest, selectionLimitsTheOfferAndOnlyOwnReferencesAreOffered)
{
    Open();
    std::vector<QString> offered;
    m_window->Commands().AskBulkRepath = [&](CXrefBulkRepathDialog& dialog) {
        dialog.SetMode(CXrefBulkRepathDialog::Mode::NewFolder);
        dialog.SetFolder(QStringLiteral("./elsewhere"));
        for (const auto& entry : dialog.Plan())
            offered.push_back(entry.name);
        return false; // cancelled
    };
    Panel().SelectItem(Item(QStringLiteral("Survey")));
    Trigger(QStringLiteral("Change Saved"));
    EXPECT_EQ(offered, std::vector<QString>{QStringLiteral("Survey")});
    EXPECT_EQ(SavedRecord(QStringLiteral("Survey")).savedPath,
              QStringLiteral("./survey/Survey.pdf"));
    EXPECT_EQ(m_window->Commands().UndoStack().count(), 0);

    // Furniture belongs to a nested drawing: it cannot change here.
    offered.clear();
    m_window->Commands().BulkRepath({Item(QStringLiteral("Furniture"))},
                                    CXrefBulkRepathDialog::Mode::NewFolder);
    EXPECT_TRUE(offered.empty());
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("belongs")));
}

TEST_F(DemoRepathTest, aPlanWithOneBadPathChangesNothingAndLeavesNoStep)
{
    Open();
    const QByteArray original = Bytes(m_drawing);
    m_window->Commands().AskBulkRepath = [](CXrefBulkRepathDialog& dialog) {
        dialog.SetFindText(QStringLiteral("./"));
        dialog.SetReplaceText(QStringLiteral("\t"));
        return true;
    };
    m_window->Commands().BulkRepath({}, CXrefBulkRepathDialog::Mode::FindAndReplace);
    Settle();
    EXPECT_EQ(Bytes(m_drawing), original);
    EXPECT_EQ(m_window->Commands().UndoStack().count(), 0);
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("control characters")))
        << Panel().Message().toStdString();
}

} // namespace

// The demo's repository mode: state files beside the documents, state icons in both views, and
// the repository commands and attach-from-repository working on those files.

#include "DemoWindowFixture.h"

#include "panel/MenuItems.h"
#include "toolbar/TroveToolBar.h"

#include <QMenu>

namespace {

QString stateFileText(const QString& document)
{
    QFile file(DocumentRepository::StateFile(document));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class DemoRepositoryTest : public DemoWindowTest
{
protected:
    void OpenRepository()
    {
        auto repository = std::make_unique<DocumentRepository>(Project(), QStringLiteral("me"));
        repository->SeedSample(QStringLiteral("mira"));
        Open({}, std::move(repository));
    }
    unsigned State(const char* name) const
    {
        const DemoItem* item = Item(QString::fromUtf8(name));
        return item ? item->GetTroveStateIconIndexListView() : ~0u;
    }
};

TEST_F(DemoRepositoryTest, everyReferenceShowsItsStateInBothViews)
{
    OpenRepository();
    EXPECT_TRUE(Panel().IsTroveMode());
    EXPECT_NE(dynamic_cast<CTroveToolBar*>(Panel().GetToolBar().get()), nullptr);
    EXPECT_EQ(State("Grid"), unsigned(RepositoryState::CheckedOutByMe));
    EXPECT_EQ(State("Columns"), unsigned(RepositoryState::CheckedOutByOther));
    EXPECT_EQ(State("Survey"), unsigned(RepositoryState::OutOfDate));
    EXPECT_EQ(State("Aerial photo"), unsigned(RepositoryState::CheckedIn));
    EXPECT_EQ(State("Title block A1"), unsigned(RepositoryState::NotInRepository));
    EXPECT_EQ(Item(QStringLiteral("Columns"))->GetTroveStateIconIndexTreeView(),
              unsigned(RepositoryState::CheckedOutByOther));
    EXPECT_EQ(Panel().GetTroveStateToolTipText(*Item(QStringLiteral("Columns"))),
              L"Checked out by mira");
}

TEST_F(DemoRepositoryTest, repositoryCommandsChangeTheStateFiles)
{
    OpenRepository();
    QMenu menu;
    Panel().FillContextMenu(menu, Items({"Grid"}), false);
    QMenu* repository = nullptr;
    for (QAction* action : menu.actions())
        if (action->menu())
            repository = action->menu();
    ASSERT_NE(repository, nullptr);
    QStringList enabled;
    for (const QAction* action : repository->actions())
        if (action->isEnabled())
            enabled << action->text().remove(QLatin1Char('&'));
    EXPECT_EQ(enabled, (QStringList{"Check In", "Undo Check Out"}));

    Panel().OnMenuSelection(Trove::MenuItems(HostPanel::CheckIn), Items({"Grid"}));
    EXPECT_EQ(State("Grid"), unsigned(RepositoryState::CheckedIn));
    EXPECT_EQ(stateFileText(Project(QStringLiteral("xrefs/Grid.dwg"))),
              QStringLiteral("state=checked-in\n"));

    // Someone else's document and an out-of-date one cannot be checked out.
    Panel().OnMenuSelection(Trove::MenuItems(HostPanel::CheckOut), Items({"Columns"}));
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("mira")))
        << Panel().Message().toStdString();
    EXPECT_EQ(State("Columns"), unsigned(RepositoryState::CheckedOutByOther));
    Panel().OnMenuSelection(Trove::MenuItems(HostPanel::CheckOut), Items({"Survey"}));
    EXPECT_EQ(State("Survey"), unsigned(RepositoryState::OutOfDate));
    Panel().OnMenuSelection(Trove::MenuItems(HostPanel::GetLatest), Items({"Survey"}));
    Panel().OnMenuSelection(Trove::MenuItems(HostPanel::CheckOut), Items({"Survey"}));
    EXPECT_EQ(State("Survey"), unsigned(RepositoryState::CheckedOutByMe));
}

TEST_F(DemoRepositoryTest, attachFromRepositoryTakesOnlyItsDocuments)
{
    OpenRepository();
    // A document added to the repository after the sample was seeded.
    const QString plan = Project(QStringLiteral("images/plan.png"));
    ASSERT_TRUE(QFile::copy(Project(QStringLiteral("images/aerial-2023.png")), plan));
    m_dialogs.Choose({plan});
    Command(Trove::AttachFromTrove, {});
    EXPECT_TRUE(SavedRecord(QStringLiteral("plan")).name.isEmpty()) << "it has no state file";
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("not in the repository")));

    Panel().Repository()->Add(plan);
    Command(Trove::AttachFromTrove, {});
    EXPECT_EQ(SavedRecord(QStringLiteral("plan")).kind, ReferenceKind::RasterImage);
    EXPECT_EQ(m_dialogs.ShownDialogs().back().start, QDir(Project()).absolutePath());
    EXPECT_EQ(State("plan"), unsigned(RepositoryState::CheckedIn));
}

TEST(DocumentRepositoryFiles, strangeStateFilesReadSafely)
{
    QTemporaryDir dir;
    const QString document = dir.filePath(QStringLiteral("a.dwg"));
    QFile(document).open(QIODevice::WriteOnly);
    DocumentRepository repository(dir.path(), QStringLiteral("me"));
    EXPECT_EQ(repository.State(document), RepositoryState::NotInRepository);
    EXPECT_EQ(repository.State(QStringLiteral("/elsewhere/a.dwg")),
              RepositoryState::NotInRepository);

    const auto writeState = [&](const QByteArray& bytes) {
        QFile file(DocumentRepository::StateFile(document));
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        file.write(bytes);
    };
    writeState("state=checked-out\r\nuser = me \n");
    EXPECT_EQ(repository.State(document), RepositoryState::CheckedOutByMe);
    writeState("state=checked-out\nuser=\n");
    EXPECT_EQ(repository.State(document), RepositoryState::CheckedOutByOther);
    writeState(QByteArray(1 << 20, '='));
    EXPECT_EQ(repository.State(document), RepositoryState::CheckedIn);
    writeState("state=exploded\n");
    EXPECT_EQ(repository.State(document), RepositoryState::CheckedIn);
    EXPECT_FALSE(repository.CheckIn(document).isEmpty());
    EXPECT_TRUE(repository.CheckOut(document).isEmpty());
    EXPECT_EQ(repository.Holder(document), QStringLiteral("me"));
}

#include "views/editors/InPlaceFileEditCtrl.h"
#include "InPlaceEditorTestHost.h"
#include "framework/ZuToolTipCtrl.h"
#include "support/FileDialogStandIn.h"
#include "support/QtPrinters.h"
#include "support/ScopedOverrides.h"
#include "support/ShortcutFileBuilder.h"

#include <QCursor>
#include <QDir>
#include <QMimeData>
#include <QPointer>
#include <QTemporaryDir>
#include <QUrl>

namespace {

using Ctrl = CInPlaceFileEditCtrl;

class InPlaceFileEditCtrlTest : public InPlaceEditorTest
{
protected:
    void SetUp() override
    {
        InPlaceEditorTest::SetUp();
        ASSERT_TRUE(m_dir.isValid());
    }

    Ctrl* open(const QString& text, unsigned flags = Ctrl::BrowseOpen,
               QRect rect = QRect(20, 20, 240, 24))
    {
        m_editor = new Ctrl(5, 1, text, flags);
        m_recorders.push_back(std::make_unique<LabelEditRecorder>(m_editor.data()));
        m_recorder = m_recorders.back().get();
        QObject::connect(m_editor, &Ctrl::browseDialogOpening,
                         [this] { m_events << QStringLiteral("opening"); });
        QObject::connect(m_editor, &Ctrl::browseDialogClosed,
                         [this] { m_events << QStringLiteral("closed"); });
        QObject::connect(
            m_editor, &Ctrl::textProposed,
            [this](Ctrl::Proposal source, const std::optional<QString>& text, bool* refuse) {
                m_events << QStringLiteral("proposed");
                m_proposals.push_back({source, text});
                *refuse = m_refuse;
            });
        EXPECT_TRUE(m_editor->Create(rect, m_owner, 40000));
        return m_editor;
    }
    QString file(const QString& name, const QByteArray& bytes = "x") const
    {
        const QString path = m_dir.filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        EXPECT_TRUE(ShortcutFileBuilder::WriteBytes(path, bytes));
        return path;
    }
    void clickButton(Ctrl* editor, QPoint releaseAt = QPoint())
    {
        const QPoint press = editor->ButtonRect().center();
        QTest::mousePress(editor, Qt::LeftButton, Qt::NoModifier, press);
        QTest::mouseRelease(editor, Qt::LeftButton, Qt::NoModifier,
                            releaseAt.isNull() ? press : releaseAt);
    }
    static void drop(Ctrl* editor, const QList<QUrl>& urls)
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(editor, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent dropped(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(editor, &dropped);
    }

    struct Proposal
    {
        Ctrl::Proposal source;
        std::optional<QString> text;
    };

    QTemporaryDir m_dir;
    QPointer<Ctrl> m_editor;
    std::vector<std::unique_ptr<LabelEditRecorder>> m_recorders;
    LabelEditRecorder* m_recorder = nullptr;
    QStringList m_events;
    std::vector<Proposal> m_proposals;
    bool m_refuse = false;
    FileDialogStandIn m_dialogs;
};

struct FlagCase
{
    unsigned flags;
    bool valid;
};

class FileEditFlagsTest : public ::testing::TestWithParam<FlagCase>
{};

TEST_P(FileEditFlagsTest, onlyValidSetsAreTakenAndRefusalChangesNothing)
{
    Ctrl editor(0, 0, QString(), Ctrl::BrowseSave | Ctrl::ButtonTip);
    const unsigned before = editor.GetFlags();
    EXPECT_EQ(Ctrl::IsValidFlags(GetParam().flags), GetParam().valid);
    EXPECT_EQ(editor.SetFlags(GetParam().flags), GetParam().valid);
    EXPECT_EQ(editor.GetFlags(), GetParam().valid ? GetParam().flags : before);

    Ctrl made(0, 0, QString(), GetParam().flags);
    EXPECT_EQ(made.GetFlags(), GetParam().valid ? GetParam().flags : unsigned(Ctrl::BrowseOpen));
}

INSTANTIATE_TEST_SUITE_P(Sets, FileEditFlagsTest,
                         ::testing::Values(FlagCase{0x0005, false}, FlagCase{0x1001, false},
                                           FlagCase{0x2004, false}, FlagCase{0x1004, false},
                                           FlagCase{0x0000, false}, FlagCase{0x0002, false},
                                           FlagCase{0x0001, true}, FlagCase{0x1000, true},
                                           FlagCase{0x0004, true}, FlagCase{0x0401, true},
                                           FlagCase{0x2001, true}, FlagCase{0x6001, true},
                                           FlagCase{0x0006, true}, FlagCase{0x0573, true}));

TEST_F(InPlaceFileEditCtrlTest, buttonSitsInsideTheFrameAtTheRightAndFollowsLayoutAndDpi)
{
    Ctrl* editor = open(QStringLiteral("plan.dwg"));
    const QRect button = editor->ButtonRect();
    EXPECT_TRUE(editor->rect().contains(button));
    EXPECT_GT(button.left(), editor->width() / 2);
    EXPECT_LT(button.right(), editor->width() - 1) << "inside the frame, not on it";
    EXPECT_EQ(button.width(), CZuUiHiDpi::ScaleX(16));
    // The text keeps off the button.
    EXPECT_LE(editor->width() - editor->textMargins().right(), button.left());

    ASSERT_TRUE(editor->SetFlags(Ctrl::BrowseOpen | Ctrl::ButtonLeft));
    EXPECT_LT(editor->ButtonRect().right(), editor->width() / 2);
    EXPECT_GT(editor->textMargins().left(), editor->ButtonRect().right());
    EXPECT_LT(editor->textMargins().right(), button.width());

    ScopedDpiScale dpi(2.0);
    editor->resize(editor->width() + 1, 40);
    EXPECT_EQ(editor->ButtonRect().width(), 32);
}

TEST_F(InPlaceFileEditCtrlTest, pressAndReleaseOverTheButtonBrowsesNothingElseDoes)
{
    Ctrl* editor = open(QStringLiteral("plan.dwg"));
    clickButton(editor, QPoint(10, editor->height() / 2)); // released over the text
    QTest::mouseClick(editor, Qt::LeftButton, Qt::NoModifier, QPoint(10, editor->height() / 2));
    EXPECT_EQ(m_dialogs.Count(), 0);
    clickButton(editor);
    EXPECT_EQ(m_dialogs.Count(), 1);
    EXPECT_TRUE(m_recorder->ends.empty()) << "browsing is part of the edit";
}

TEST_F(InPlaceFileEditCtrlTest, fileBrowseIsAnnouncedAndItsChoiceProposedBeforeItReplacesTheText)
{
    const QString chosen = file(QStringLiteral("xrefs/site.dwg"));
    Ctrl* editor = open(file(QStringLiteral("plan.dwg")));
    m_dialogs.WhileOpen([this] {
        m_events << QStringLiteral("dialog");
        EXPECT_TRUE(m_editor->IsBrowsing());
        m_owner->setFocus(); // the dialog takes the focus: the edit must stay open
    });
    m_dialogs.Choose({chosen});
    EXPECT_TRUE(editor->Browse());
    EXPECT_EQ(m_events, (QStringList{QStringLiteral("opening"), QStringLiteral("dialog"),
                                     QStringLiteral("closed"), QStringLiteral("proposed")}));
    ASSERT_EQ(m_dialogs.Count(), 1);
    const FileDialogStandIn::Shown& shown = m_dialogs.ShownDialogs()[0];
    EXPECT_EQ(shown.caption, QStringLiteral("Browse for File"));
    EXPECT_EQ(shown.filterArray, QStringList{QStringLiteral("All Files (*)")});
    EXPECT_EQ(shown.start, m_dir.filePath(QStringLiteral("plan.dwg")));
    EXPECT_TRUE(shown.flags & CKvUiNavDialog::HideReadOnly);
    EXPECT_FALSE(shown.flags & (CKvUiNavDialog::SaveFile | CKvUiNavDialog::MultipleFiles |
                                CKvUiNavDialog::Folders));
    ASSERT_EQ(m_proposals.size(), 1u);
    EXPECT_EQ(m_proposals[0].source, Ctrl::Proposal::Browse);
    EXPECT_EQ(m_proposals[0].text, chosen);
    EXPECT_EQ(editor->text(), chosen);
    EXPECT_TRUE(m_recorder->ends.empty());
    EXPECT_TRUE(editor->hasFocus());

    // After the dialog, losing the focus ends the edit again.
    m_owner->setFocus();
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, chosen);
}

TEST_F(InPlaceFileEditCtrlTest, refusedOrCancelledBrowseKeepsTheText)
{
    Ctrl* editor = open(QStringLiteral("plan.dwg"));
    m_dialogs.Choose({QStringLiteral("/elsewhere/other.dwg")});
    m_refuse = true;
    EXPECT_FALSE(editor->Browse());
    EXPECT_EQ(editor->text(), QStringLiteral("plan.dwg"));

    m_refuse = false;
    m_dialogs.Cancel();
    EXPECT_FALSE(editor->Browse());
    ASSERT_EQ(m_proposals.size(), 2u);
    EXPECT_EQ(m_proposals[1].text, std::nullopt) << "a cancelled dialog proposes no text";
    EXPECT_EQ(editor->text(), QStringLiteral("plan.dwg"));
}

TEST_F(InPlaceFileEditCtrlTest, ownerAdjustsTheDialogWhenItOpens)
{
    Ctrl* editor = open(QString(), Ctrl::BrowseSave | Ctrl::MultipleFiles);
    QObject::connect(editor, &Ctrl::browseDialogOpening, [editor] {
        ASSERT_NE(editor->NavDialog(), nullptr);
        editor->NavDialog()->SetCaption(QStringLiteral("Save Reference As"));
        editor->NavDialog()->SetFilter(QStringLiteral("Drawings (*.dwg)|*.dwg||"));
        editor->NavDialog()->SetFlag(CKvUiNavDialog::PreviewPane, true);
        EXPECT_TRUE(editor->SetFlags(editor->GetFlags() | Ctrl::OwnerOption));
    });
    EXPECT_EQ(editor->NavDialog(), nullptr) << "made by the first browse";
    editor->Browse();
    const FileDialogStandIn::Shown& shown = m_dialogs.ShownDialogs().at(0);
    EXPECT_EQ(shown.caption, QStringLiteral("Save Reference As"));
    EXPECT_EQ(shown.filterArray, QStringList{QStringLiteral("Drawings (*.dwg)")});
    EXPECT_TRUE(shown.flags & CKvUiNavDialog::SaveFile);
    EXPECT_TRUE(shown.flags & CKvUiNavDialog::ConfirmReplace);
    EXPECT_TRUE(shown.flags & CKvUiNavDialog::MultipleFiles);
    EXPECT_TRUE(shown.flags & CKvUiNavDialog::PreviewPane);
    EXPECT_TRUE(editor->GetFlags() & Ctrl::OwnerOption);
}

TEST_F(InPlaceFileEditCtrlTest, severalChosenFilesReadBackAsTheSameList)
{
    const QStringList chosen{file(QStringLiteral("a b.dwg")), file(QStringLiteral("ü#%.dwg")),
                             file(QStringLiteral("sub/c.dwg"))};
    Ctrl* editor = open(QString(), Ctrl::BrowseOpen | Ctrl::MultipleFiles);
    m_dialogs.Choose(chosen);
    ASSERT_TRUE(editor->Browse());
    EXPECT_EQ(editor->GetFiles(), chosen);
    EXPECT_EQ(editor->GetPathNames(), chosen);
}

TEST_F(InPlaceFileEditCtrlTest, folderBrowseStartsAtTheTextAndReplacesIt)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("site/xrefs")));
    Ctrl* editor = open(QStringLiteral("site"), Ctrl::BrowseFolder);
    editor->SetFolder(m_dir.path());
    m_dialogs.Choose({m_dir.filePath(QStringLiteral("site/xrefs"))});
    EXPECT_TRUE(editor->Browse());
    EXPECT_EQ(editor->NavDialog(), nullptr);
    ASSERT_EQ(m_dialogs.Count(), 1);
    EXPECT_TRUE(m_dialogs.ShownDialogs()[0].folderBrowser);
    EXPECT_EQ(m_dialogs.ShownDialogs()[0].start, m_dir.filePath(QStringLiteral("site")));
    EXPECT_EQ(editor->text(), m_dir.filePath(QStringLiteral("site/xrefs")));
    EXPECT_EQ(m_events, (QStringList{QStringLiteral("opening"), QStringLiteral("closed")}));
}

TEST_F(InPlaceFileEditCtrlTest, editorDestroyedWhileItsDialogIsOpenLeavesQuietly)
{
    m_dialogs.WhileOpen([this] { delete m_editor.data(); });
    m_dialogs.Choose({m_dir.filePath(QStringLiteral("a.dwg"))});
    for (unsigned flags : {unsigned(Ctrl::BrowseOpen), unsigned(Ctrl::BrowseFolder)}) {
        m_events.clear();
        Ctrl* editor = open(QStringLiteral("plan.dwg"), flags);
        EXPECT_FALSE(editor->Browse());
        EXPECT_TRUE(m_editor.isNull());
        EXPECT_EQ(m_events, QStringList{QStringLiteral("opening")});
        EXPECT_TRUE(m_proposals.empty());
    }
}

TEST_F(InPlaceFileEditCtrlTest, toolTipsShowWhatTheirFlagsAsk)
{
    // The pointer rests away from the window; only the moves sent here count.
    QCursor::setPos(790, 590);
    const QString text = QStringLiteral("/projects/tower/plan.dwg");
    Ctrl* editor = open(text, Ctrl::BrowseOpen | Ctrl::ButtonTip | Ctrl::TextTip);
    ASSERT_NE(editor->ToolTipCtrl(), nullptr);
    CZuToolTipCtrl& tip = *editor->ToolTipCtrl();
    tip.SetDelayTime(CZuToolTipCtrl::Initial, 10);
    tip.SetDelayTime(CZuToolTipCtrl::ReShow, 5);
    auto shownAt = [&](QPoint pos) {
        QMouseEvent move(QEvent::MouseMove, pos, editor->mapToGlobal(pos), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(editor, &move);
        QTest::qWait(100);
        return tip.ShownText();
    };
    const QPoint onButton = editor->ButtonRect().center();
    const QPoint onText(8, editor->height() / 2);
    EXPECT_EQ(shownAt(onButton), QStringLiteral("Browse"));
    EXPECT_EQ(shownAt(onText), text);
    editor->setText(QStringLiteral("/other.dwg"));
    EXPECT_EQ(tip.GetText(editor, 2), QStringLiteral("/other.dwg")) << "the tip follows the text";

    ASSERT_TRUE(editor->SetFlags(Ctrl::BrowseOpen | Ctrl::ButtonTip));
    EXPECT_FALSE(tip.HasTool(editor, 2));
    EXPECT_TRUE(tip.HasTool(editor, 1));
    ASSERT_TRUE(editor->SetFlags(Ctrl::BrowseOpen));
    EXPECT_EQ(editor->ToolTipCtrl(), nullptr);
}

TEST_F(InPlaceFileEditCtrlTest, namesReadBackAsFullPathsWithShortcutsFollowed)
{
    const QString target = QStringLiteral("C:\\Projects\\Tower\\plan.dwg");
    ASSERT_TRUE(ShortcutFileBuilder().LocalBasePath(target).Write(m_dir.filePath("PLAN.LNK")));
    ASSERT_TRUE(ShortcutFileBuilder::WriteBytes(m_dir.filePath("broken.lnk"), "not a link"));
    ASSERT_TRUE(QFile::link(m_dir.filePath("real.dwg"), m_dir.filePath("dangling.lnk")));

    Ctrl* editor = open(
        QStringLiteral("PLAN.LNK; broken.lnk; dangling.lnk; sub\\x.dwg; /abs/y.dwg; D:\\z.dwg"));
    editor->SetFolder(m_dir.path());
    EXPECT_EQ(editor->GetPathNames(),
              (QStringList{target, m_dir.filePath("broken.lnk"), m_dir.filePath("dangling.lnk"),
                           m_dir.filePath("sub/x.dwg"), QStringLiteral("/abs/y.dwg"),
                           QStringLiteral("D:\\z.dwg")}));

    ASSERT_TRUE(editor->SetFlags(Ctrl::BrowseOpen | Ctrl::KeepShortcuts));
    EXPECT_EQ(editor->GetPathNames().value(0), m_dir.filePath("PLAN.LNK"));
    ASSERT_TRUE(editor->SetFlags(Ctrl::BrowseFolder));
    EXPECT_EQ(editor->GetPathNames().value(0), m_dir.filePath("PLAN.LNK"))
        << "folders are not shortcuts";
}

TEST_F(InPlaceFileEditCtrlTest, fileListIsWorkedOutAgainOnlyAfterAChange)
{
    file(QStringLiteral("a.dwg"));
    Ctrl* editor = open(QStringLiteral("*.dwg"));
    editor->SetFolder(m_dir.path());
    EXPECT_EQ(editor->GetFiles(), QStringList{QStringLiteral("a.dwg")});
    file(QStringLiteral("b.dwg"));
    EXPECT_EQ(editor->GetFiles().size(), 1) << "no search without a change";
    ASSERT_TRUE(editor->SetFlags(editor->GetFlags() | Ctrl::TextTip));
    EXPECT_EQ(editor->GetFiles(), (QStringList{QStringLiteral("a.dwg"), QStringLiteral("b.dwg")}));
    file(QStringLiteral("c.dwg"));
    QTest::keyClick(editor, Qt::Key_End);
    QTest::keyClicks(editor, QStringLiteral(";x"));
    EXPECT_EQ(editor->GetFiles().size(), 4);
}

TEST_F(InPlaceFileEditCtrlTest, droppedFilesReplaceTheTextThroughTheShortcutRule)
{
    const QString target = QStringLiteral("C:\\Site\\survey.dwg");
    ASSERT_TRUE(ShortcutFileBuilder().LocalBasePath(target).Write(m_dir.filePath("Survey.Lnk")));
    const QString other = file(QStringLiteral("other.dwg"));
    Ctrl* editor = open(QStringLiteral("plan.dwg"));
    drop(editor, {QUrl::fromLocalFile(m_dir.filePath("Survey.Lnk")), QUrl::fromLocalFile(other)});
    EXPECT_EQ(editor->text(), target) << "one file, its shortcut followed";
    ASSERT_EQ(m_proposals.size(), 1u);
    EXPECT_EQ(m_proposals[0].source, Ctrl::Proposal::Drop);

    ASSERT_TRUE(editor->SetFlags(Ctrl::BrowseOpen | Ctrl::MultipleFiles | Ctrl::KeepShortcuts));
    drop(editor, {QUrl::fromLocalFile(m_dir.filePath("Survey.Lnk")), QUrl::fromLocalFile(other)});
    EXPECT_EQ(editor->GetPathNames(), (QStringList{m_dir.filePath("Survey.Lnk"), other}));

    m_refuse = true;
    drop(editor, {QUrl::fromLocalFile(other)});
    EXPECT_EQ(editor->GetPathNames().size(), 2) << "refused drop";
}

TEST_F(InPlaceFileEditCtrlTest, hostileTextsNeitherCrashNorHangAndStayAsTyped)
{
    QString huge;
    for (int i = 0; i < 50000; ++i)
        huge += QStringLiteral("\"*%1?\" ;;").arg(i);
    Ctrl* editor = open(QString(), Ctrl::BrowseOpen, QRect(20, 20, 60, 24));
    editor->SetFolder(m_dir.path());
    editor->insert(huge); // a paste: the line edit keeps what fits its length limit
    EXPECT_EQ(editor->text(), huge.left(editor->maxLength()));
    EXPECT_TRUE(editor->GetPathNames().isEmpty());
    QTest::keyClick(editor, Qt::Key_A);
    EXPECT_EQ(editor->geometry().right(), m_owner->rect().right());

    const QString odd = QStringLiteral("  \t\"\";;; ü€\\\\//..\\:*?<>|; \x01\x7f ");
    editor->setText(odd);
    editor->GetPathNames();
    EXPECT_EQ(editor->text(), odd);
}

} // namespace

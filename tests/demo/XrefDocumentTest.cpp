// The open drawing and its nested references: sharing, cycles, limits, states and edits.

#include "XrefDocument.h"
#include "DemoProject.h"

#include "services/DwgThumbnail.h"

#include <QSignalSpy>

#include <algorithm>

namespace {

/// "name@depth" of every occurrence, in list order.
QStringList outline(const XrefDocument& document)
{
    QStringList lines;
    for (const Occurrence& o : document.Occurrences())
        lines << QStringLiteral("%1@%2").arg(o.reference.name).arg(o.depth);
    return lines;
}

} // namespace

class XrefDocumentTest : public DemoProject
{
protected:
    /// Opens @p relative; fails the test when it cannot.
    void Open(const QString& relative)
    {
        QString error;
        ASSERT_TRUE(m_document.Open(Path(relative), &error)) << error.toStdString();
    }

    const Occurrence& Named(const QString& name, int nth = 0) const
    {
        for (const Occurrence& o : m_document.Occurrences())
            if (o.reference.name == name && nth-- == 0)
                return o;
        ADD_FAILURE() << "no occurrence " << name.toStdString();
        return m_document.Occurrences().front();
    }

    int IndexOf(const QString& name, int nth = 0) const
    {
        return int(&Named(name, nth) - m_document.Occurrences().data());
    }

    XrefDocument m_document;
};

TEST_F(XrefDocumentTest, nestedDrawingsFollowDepthFirstInTableOrder)
{
    Drawing(QStringLiteral("Host.dwg"),
            {Ref("A", QStringLiteral("a/A.dwg")), Ref("D", QStringLiteral("D.dwg"))});
    Drawing(QStringLiteral("a/A.dwg"),
            {Ref("B", QStringLiteral("b/B.dwg")),
             Ref("E", QStringLiteral("E.png"), ReferenceKind::RasterImage)});
    Drawing(QStringLiteral("a/b/B.dwg"), {Ref("C", QStringLiteral("../../C.dwg"))});
    Drawing(QStringLiteral("C.dwg"));
    Drawing(QStringLiteral("D.dwg"));
    WriteBytes(QStringLiteral("a/E.png"), "png");
    Open(QStringLiteral("Host.dwg"));

    EXPECT_EQ(outline(m_document), QStringList({"Host@0", "A@1", "B@2", "C@3", "E@2", "D@1"}));
    EXPECT_EQ(Named("C").parent, IndexOf("B"));
    EXPECT_EQ(Named("E").parent, IndexOf("A"));
    EXPECT_EQ(Named("D").parent, 0);
    EXPECT_EQ(Named("E").record, 1);
    for (const Occurrence& o : m_document.Occurrences()) {
        EXPECT_EQ(o.state, o.parent < 0 ? ReferenceState::Opened : ReferenceState::Loaded)
            << o.reference.name.toStdString();
        EXPECT_EQ(o.sharedWith, -1);
    }
}

TEST_F(XrefDocumentTest, aFileReferencedFromSeveralPlacesSharesTheFirstRow)
{
    Drawing(QStringLiteral("Host.dwg"),
            {Ref("Grid", QStringLiteral("xrefs/Grid.dwg")),
             Ref("Columns", QStringLiteral("xrefs/Columns.dwg")),
             Ref("Grid image", QStringLiteral("xrefs/Grid.dwg"), ReferenceKind::RasterImage),
             Ref("Gone", QStringLiteral("gone/Title.dwg")),
             Ref("Gone again", QStringLiteral("./gone/../gone/Title.dwg"))});
    // Another spelling of the same file, from another folder.
    Drawing(QStringLiteral("xrefs/Columns.dwg"),
            {Ref("Grid", Path(QStringLiteral("xrefs/Grid.dwg")))});
    Drawing(QStringLiteral("xrefs/Grid.dwg"));
    Open(QStringLiteral("Host.dwg"));

    EXPECT_EQ(Named("Grid", 1).sharedWith, IndexOf("Grid"));
    EXPECT_EQ(Named("Grid", 1).depth, 2);
    EXPECT_EQ(Named("Grid image").sharedWith, -1) << "an image of a file is not the drawing";
    EXPECT_EQ(Named("Gone again").sharedWith, IndexOf("Gone")) << "missing, but the same file";
}

TEST_F(XrefDocumentTest, cyclesAreCutAndNamed)
{
    Drawing(QStringLiteral("Host.dwg"),
            {Ref("A", QStringLiteral("A.dwg")), Ref("Self", QStringLiteral("Host.dwg"))});
    Drawing(QStringLiteral("A.dwg"), {Ref("B", QStringLiteral("B.dwg"))});
    Drawing(QStringLiteral("B.dwg"), {Ref("A again", QStringLiteral("A.dwg")),
                                      Ref("Back home", QStringLiteral("Host.dwg"))});
    Open(QStringLiteral("Host.dwg"));

    EXPECT_EQ(outline(m_document),
              QStringList({"Host@0", "A@1", "B@2", "A again@3", "Back home@3", "Self@1"}));
    for (const char* name : {"A again", "Back home", "Self"}) {
        EXPECT_EQ(Named(QString::fromUtf8(name)).state, ReferenceState::Circular) << name;
        EXPECT_EQ(ToPanelStatus(Named(QString::fromUtf8(name)).state).icon, RefStatus::Unresolved);
    }
    EXPECT_TRUE(Named("A again").message.contains(QLatin1String("Host > A > B > A again")))
        << Named("A again").message.toStdString();
    EXPECT_EQ(Named("Self").sharedWith, 0);
}

// Two drawings that both reference a third are no cycle: the walk must leave a drawing's chain
// when it moves on to the next branch.
TEST_F(XrefDocumentTest, aDiamondIsNoCycle)
{
    Drawing(QStringLiteral("Host.dwg"),
            {Ref("Left", QStringLiteral("L.dwg")), Ref("Right", QStringLiteral("R.dwg"))});
    Drawing(QStringLiteral("L.dwg"), {Ref("Base", QStringLiteral("Base.dwg"))});
    Drawing(QStringLiteral("R.dwg"), {Ref("Base", QStringLiteral("Base.dwg"))});
    Drawing(QStringLiteral("Base.dwg"), {Ref("Leaf", QStringLiteral("Leaf.dwg"))});
    Drawing(QStringLiteral("Leaf.dwg"));
    Open(QStringLiteral("Host.dwg"));

    EXPECT_EQ(outline(m_document),
              QStringList({"Host@0", "Left@1", "Base@2", "Leaf@3", "Right@1", "Base@2", "Leaf@3"}));
    for (const Occurrence& o : m_document.Occurrences())
        EXPECT_NE(o.state, ReferenceState::Circular) << o.reference.name.toStdString();
    EXPECT_EQ(Named("Leaf", 1).sharedWith, IndexOf("Leaf"));
}

TEST_F(XrefDocumentTest, deepChainIsFollowedToTheEnd)
{
    constexpr int kDepth = 400;
    for (int i = 0; i < kDepth; ++i)
        Drawing(QStringLiteral("chain/%1.dwg").arg(i),
                {Ref("next", QStringLiteral("%1.dwg").arg(i + 1))});
    Drawing(QStringLiteral("chain/%1.dwg").arg(kDepth));
    Open(QStringLiteral("chain/0.dwg"));
    ASSERT_EQ(m_document.Occurrences().size(), std::size_t(kDepth + 1));
    EXPECT_EQ(m_document.Occurrences().back().depth, kDepth);
    EXPECT_EQ(m_document.Occurrences().back().state, ReferenceState::Loaded);
}

// Twenty drawings, each referencing the next twice, would list two million occurrences.
TEST_F(XrefDocumentTest, aLatticeStopsAtTheOccurrenceLimit)
{
    constexpr int kLevels = 20;
    for (int i = 0; i < kLevels; ++i)
        Drawing(QStringLiteral("%1.dwg").arg(i),
                {Ref("left", QStringLiteral("%1.dwg").arg(i + 1)),
                 Ref("right", QStringLiteral("%1.dwg").arg(i + 1))});
    Drawing(QStringLiteral("%1.dwg").arg(kLevels));
    Open(QStringLiteral("0.dwg"));

    const auto& all = m_document.Occurrences();
    EXPECT_LE(all.size(), std::size_t(XrefDocument::kMaxOccurrences));
    EXPECT_GT(all.size(), std::size_t(XrefDocument::kMaxOccurrences / 2));
    EXPECT_FALSE(m_document.Warning().isEmpty());
    const auto notLoaded = std::count_if(all.begin(), all.end(), [](const Occurrence& o) {
        return o.state == ReferenceState::NotLoaded && !o.message.isEmpty();
    });
    EXPECT_GT(notLoaded, 0);
}

TEST_F(XrefDocumentTest, statesComeFromTheFileSystem)
{
    ReferenceRecord unloaded = Ref("Unloaded", QStringLiteral("U.dwg"));
    unloaded.unloaded = true;
    ReferenceRecord unloadedMissing = Ref("Unloaded missing", QStringLiteral("nowhere/N.dwg"));
    unloadedMissing.unloaded = true;
    ReferenceRecord overlay = Ref("Overlay", QStringLiteral("O.dwg"));
    overlay.overlay = true;
    Drawing(QStringLiteral("Host.dwg"),
            {Ref("Missing", QStringLiteral("nowhere/M.dwg")), unloaded,
             Ref("Damaged", QStringLiteral("Bad.dwg")), Ref("Foreign", QStringLiteral("Other.dwg")),
             Ref("Photo", QStringLiteral("photo.jpg"), ReferenceKind::RasterImage),
             Ref("Old", QStringLiteral("Old.dwg")), overlay, unloadedMissing});
    Drawing(QStringLiteral("U.dwg"), {Ref("Hidden", QStringLiteral("O.dwg"))});
    QByteArray bad = Bytes(Drawing(QStringLiteral("Bad.dwg"), {Ref("X", QStringLiteral("O.dwg"))}));
    bad[70] = char(bad[70] ^ 0x40);
    WriteBytes(QStringLiteral("Bad.dwg"), bad);
    WriteBytes(QStringLiteral("Other.dwg"), QByteArray("KV1032") + QByteArray(200, '\0'));
    WriteBytes(QStringLiteral("photo.jpg"), QByteArray(1234, 'j'));
    // An overlay is seen by the drawing that holds it, not by drawings above that one.
    Drawing(QStringLiteral("Old.dwg"), {overlay, Ref("Attached", QStringLiteral("O.dwg"))},
            "KV1027");
    Drawing(QStringLiteral("O.dwg"));
    Open(QStringLiteral("Host.dwg"));

    EXPECT_EQ(outline(m_document),
              QStringList({"Host@0", "Missing@1", "Unloaded@1", "Damaged@1", "Foreign@1", "Photo@1",
                           "Old@1", "Attached@2", "Overlay@1", "Unloaded missing@1"}));
    const Occurrence& missing = Named("Missing");
    EXPECT_EQ(missing.state, ReferenceState::NotFound);
    EXPECT_TRUE(missing.resolution.foundAt.isEmpty());
    EXPECT_FALSE(missing.facts.exists);
    EXPECT_EQ(Named("Unloaded").state, ReferenceState::Unloaded);
    EXPECT_TRUE(Named("Unloaded").facts.exists) << "still found and described";
    EXPECT_EQ(Named("Unloaded missing").state, ReferenceState::Unloaded);
    EXPECT_EQ(Named("Damaged").state, ReferenceState::Damaged);
    EXPECT_TRUE(Named("Damaged").message.contains(QLatin1String("checksum")));
    EXPECT_EQ(Named("Foreign").state, ReferenceState::Damaged);
    const Occurrence& photo = Named("Photo");
    EXPECT_EQ(photo.state, ReferenceState::Loaded);
    EXPECT_EQ(photo.facts.size, 1234);
    EXPECT_EQ(photo.facts.fileVersion, 0);
    EXPECT_EQ(Named("Old").facts.fileVersion, 1027);
    EXPECT_EQ(Named("Host").facts.fileVersion, 1032);
}

TEST_F(XrefDocumentTest, aFileThatCannotBeOpenedKeepsTheOpenDrawing)
{
    Drawing(QStringLiteral("Host.dwg"), {Ref("A", QStringLiteral("A.png"))});
    Open(QStringLiteral("Host.dwg"));
    const QStringList before = outline(m_document);
    QByteArray damaged = Bytes(Drawing(QStringLiteral("Damaged.dwg")));
    damaged.chop(1);
    WriteBytes(QStringLiteral("Damaged.dwg"), damaged);
    WriteBytes(QStringLiteral("Notes.txt"), "just text");

    for (const char* name : {"Damaged.dwg", "Notes.txt", "Missing.dwg"}) {
        QString error;
        EXPECT_FALSE(m_document.Open(Path(QString::fromUtf8(name)), &error));
        EXPECT_TRUE(error.contains(QString::fromUtf8(name))) << error.toStdString();
        EXPECT_EQ(outline(m_document), before);
        EXPECT_EQ(m_document.Path(), Path(QStringLiteral("Host.dwg")));
    }
}

TEST_F(XrefDocumentTest, aFileChangedOnDiskNeedsReloading)
{
    Drawing(QStringLiteral("Host.dwg"),
            {Ref("Photo", QStringLiteral("photo.png"), ReferenceKind::RasterImage),
             Ref("Grid", QStringLiteral("Grid.dwg")), Ref("Sheet", QStringLiteral("Sheet.dwg"))});
    Drawing(QStringLiteral("Sheet.dwg"), {Ref("Grid", QStringLiteral("Grid.dwg"))});
    Drawing(QStringLiteral("Grid.dwg"));
    WriteBytes(QStringLiteral("photo.png"), "old");
    Open(QStringLiteral("Host.dwg"));
    QSignalSpy spy(&m_document, &XrefDocument::StatesChanged);

    WriteBytes(QStringLiteral("photo.png"), "a new photo");
    ASSERT_TRUE(spy.wait(5000));
    EXPECT_EQ(spy.takeFirst().at(0).value<QList<int>>(), QList<int>{IndexOf("Photo")});
    EXPECT_EQ(Named("Photo").state, ReferenceState::NeedsReloading);
    EXPECT_EQ(Named("Grid").state, ReferenceState::Loaded);

    // Saved the careful way: a new file renamed over the old one. Both rows of it change.
    DrawingContents grid;
    grid.body = "moved a line";
    Write(QStringLiteral("Grid.dwg"), grid);
    ASSERT_TRUE(spy.wait(5000));
    const QList<QVariant> signal = spy.takeFirst();
    EXPECT_EQ(signal.at(0).value<QList<int>>(), QList<int>({IndexOf("Grid"), IndexOf("Grid", 1)}));
    EXPECT_TRUE(signal.at(1).toString().contains(QLatin1String("\"Grid.dwg\" has changed")));
    EXPECT_EQ(Named("Grid", 1).state, ReferenceState::NeedsReloading);

    QFile::remove(Path(QStringLiteral("Sheet.dwg")));
    ASSERT_TRUE(spy.wait(5000));
    EXPECT_TRUE(spy.takeFirst().at(1).toString().contains(QLatin1String("removed")));

    m_document.Refresh();
    EXPECT_EQ(Named("Photo").state, ReferenceState::Loaded);
    EXPECT_EQ(Named("Sheet").state, ReferenceState::NotFound);
}

TEST_F(XrefDocumentTest, editsAreCheckedAndSaved)
{
    DrawingContents host;
    host.references = {Ref("Grid", QStringLiteral("Grid.dwg")),
                       Ref("Photo", QStringLiteral("photo.png"), ReferenceKind::RasterImage)};
    host.preview = DrawingFormat::PngPreview(QImage(8, 8, QImage::Format_RGB32));
    host.body = "geometry";
    Write(QStringLiteral("Host.dwg"), host);
    Drawing(QStringLiteral("Grid.dwg"),
            {Ref("Inner", QStringLiteral("photo.png"), ReferenceKind::RasterImage)});
    WriteBytes(QStringLiteral("photo.png"), "png");
    Open(QStringLiteral("Host.dwg"));

    const int grid = IndexOf("Grid");
    for (const char* refused : {"photo", "", " Grid", "Grid|2", "Gr\nid"})
        EXPECT_FALSE(m_document.Rename(grid, QString::fromUtf8(refused)).isEmpty()) << refused;
    EXPECT_FALSE(m_document.Rename(IndexOf("Inner"), QStringLiteral("Mine")).isEmpty())
        << "nested references belong to their own drawing";
    EXPECT_FALSE(m_document.Rename(0, QStringLiteral("Host 2")).isEmpty());
    EXPECT_FALSE(m_document.SetOverlay(IndexOf("Photo"), true).isEmpty());
    EXPECT_FALSE(m_document.SetSavedPath(grid, QStringLiteral(" ")).isEmpty());
    EXPECT_FALSE(m_document.Attach(Ref("GRID", QStringLiteral("x.dwg"))).isEmpty());
    EXPECT_FALSE(m_document.IsModified()) << "a refused edit changes nothing";

    EXPECT_EQ(m_document.Rename(grid, QStringLiteral("Structural grid")), QString());
    EXPECT_EQ(m_document.SetOverlay(grid, true), QString());
    EXPECT_EQ(m_document.SetUnloaded(IndexOf("Structural grid"), true), QString());
    EXPECT_EQ(outline(m_document), QStringList({"Host@0", "Structural grid@1", "Photo@1"}));
    EXPECT_EQ(
        m_document.Attach(Ref("Survey", QStringLiteral("survey.pdf"), ReferenceKind::PdfUnderlay)),
        QString());
    EXPECT_EQ(Named("Survey").state, ReferenceState::NotFound);
    EXPECT_EQ(m_document.Detach(IndexOf("Photo")), QString());
    EXPECT_TRUE(m_document.IsModified());
    EXPECT_EQ(m_document.Save(), QString());
    EXPECT_FALSE(m_document.IsModified());

    XrefDocument reopened;
    ASSERT_TRUE(reopened.Open(Path(QStringLiteral("Host.dwg"))));
    ReferenceRecord expected = Ref("Structural grid", QStringLiteral("Grid.dwg"));
    expected.overlay = expected.unloaded = true;
    EXPECT_EQ(reopened.Contents().references,
              std::vector<ReferenceRecord>({expected, Ref("Survey", QStringLiteral("survey.pdf"),
                                                          ReferenceKind::PdfUnderlay)}));
    EXPECT_EQ(reopened.Contents().body, host.body);
    EXPECT_FALSE(
        TroveUI::ExtractDwgThumbnail(Path(QStringLiteral("Host.dwg")).toStdWString()).IsNull());
}

// The program's own save is no change on disk. Another file's change, reported after it,
// shows that the save's notifications have been handled by then.
TEST_F(XrefDocumentTest, savingIsNotAChangeOnDisk)
{
    Drawing(QStringLiteral("Host.dwg"),
            {Ref("Photo", QStringLiteral("photo.png"), ReferenceKind::RasterImage)});
    WriteBytes(QStringLiteral("photo.png"), "old");
    Open(QStringLiteral("Host.dwg"));
    QSignalSpy spy(&m_document, &XrefDocument::StatesChanged);

    ASSERT_EQ(m_document.Rename(IndexOf("Photo"), QStringLiteral("Aerial")), QString());
    ASSERT_EQ(m_document.Save(), QString());
    WriteBytes(QStringLiteral("photo.png"), "new photo");
    ASSERT_TRUE(spy.wait(5000));
    ASSERT_EQ(spy.size(), 1);
    EXPECT_EQ(spy.first().at(0).value<QList<int>>(), QList<int>{IndexOf("Aerial")});
    EXPECT_EQ(m_document.Occurrences().front().state, ReferenceState::Opened);
}

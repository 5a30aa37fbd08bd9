// The sample project the demo writes: a realistic set of references, every one in the state
// the demo is meant to show.

#include "DemoProject.h"
#include "SampleWriter.h"
#include "XrefDocument.h"

#include "services/DwgThumbnail.h"

namespace {

struct Expected
{
    const char* name;
    int depth;
    ReferenceState state;
    ReferenceKind kind;
};

} // namespace

using SampleProjectTest = DemoProject;

TEST_F(SampleProjectTest, opensWithEveryReferenceInItsState)
{
    QString error;
    const QString host = WriteSampleProject(Path(QStringLiteral("harbour")), &error);
    ASSERT_FALSE(host.isEmpty()) << error.toStdString();
    XrefDocument document;
    ASSERT_TRUE(document.Open(host, &error)) << error.toStdString();

    using S = ReferenceState;
    using K = ReferenceKind;
    const Expected expected[] = {
        {"Harbour site", 0, S::Opened, K::Drawing},
        {"Grid", 1, S::Loaded, K::Drawing},
        {"Columns", 1, S::Loaded, K::Drawing},
        {"Grid", 2, S::Loaded, K::Drawing},
        {"Building A", 1, S::Loaded, K::Drawing},
        {"Level 1", 2, S::Loaded, K::Drawing},
        {"Furniture", 3, S::Loaded, K::Drawing},
        {"Aerial photo", 1, S::Loaded, K::RasterImage},
        {"Quay photo", 1, S::Unloaded, K::RasterImage},
        {"Survey", 1, S::Loaded, K::PdfUnderlay},
        {"Landscape", 1, S::Loaded, K::DwfUnderlay},
        {"Bridge", 1, S::Loaded, K::DgnUnderlay},
        {"Quay scan", 1, S::Loaded, K::PointCloud},
        {"Coordination", 1, S::Loaded, K::CoordinationModel},
        {"Door schedule", 1, S::Loaded, K::DataLink},
        {"Title block A1", 1, S::NotFound, K::Drawing},
    };
    const std::vector<Occurrence>& all = document.Occurrences();
    ASSERT_EQ(all.size(), std::size(expected));
    EXPECT_EQ(document.Contents().references.size(), 12u);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Occurrence& o = all[i];
        const Expected& e = expected[i];
        EXPECT_EQ(o.reference.name, QString::fromUtf8(e.name)) << i;
        EXPECT_EQ(o.depth, e.depth) << e.name;
        EXPECT_EQ(o.state, e.state) << e.name << ": " << o.message.toStdString();
        EXPECT_EQ(o.reference.kind, e.kind) << e.name;
        if (e.state == S::NotFound)
            continue;
        EXPECT_GT(o.facts.size, 0) << e.name;
        // Every drawing there carries a preview the panel can show.
        if (e.kind == K::Drawing) {
            const std::wstring path = o.resolution.foundAt.toStdWString();
            EXPECT_FALSE(TroveUI::DibToImage(TroveUI::ExtractDwgThumbnail(path)).isNull())
                << e.name;
        }
    }
    EXPECT_EQ(all[3].sharedWith, 1) << "the grid is one list row";
    EXPECT_TRUE(all[2].reference.overlay);
    EXPECT_EQ(all[1].facts.fileVersion, 1027);
    EXPECT_TRUE(QImage(all[9].resolution.foundAt).isNull()) << "the survey is a PDF";
    EXPECT_FALSE(QImage(all[8].resolution.foundAt).isNull()) << "the quay photo is a JPEG";
}

TEST_F(SampleProjectTest, writesOverAnEarlierCopyAndRefusesAFolderItCannotMake)
{
    const QString folder = Path(QStringLiteral("harbour"));
    ASSERT_FALSE(WriteSampleProject(folder).isEmpty());
    ASSERT_FALSE(WriteSampleProject(folder).isEmpty());
    WriteBytes(QStringLiteral("blocked"), "a file where the folder should go");
    QString error;
    EXPECT_TRUE(WriteSampleProject(Path(QStringLiteral("blocked/harbour")), &error).isEmpty());
    EXPECT_FALSE(error.isEmpty());
}

// The item's rich tool tip (description text, flags, preview edge, thumbnail source) and its
// hooks into the panel's preview pane.

#include "ItemFixture.h"

#include "host/KvNameDescriptionToolTipInfo.h"
#include "panel/ToolTipMenuSettings.h"
#include "services/ToolTipPreviewAssist.h"
#include "support/DibBuilder.h"
#include "support/DrawingFileBuilder.h"
#include "support/ScopedResourceModule.h"
#include "views/XrefPreview.h"

#include <QTemporaryDir>

namespace {

class TipItem : public TestXrefItem
{
public:
    using CXrefPanelCtrlItem::CreateToolTipInfo;
    using TestXrefItem::TestXrefItem;
};

class ItemToolTip : public ItemFixture
{
protected:
    TipItem* item = nullptr;

    void SetUp() override
    {
        ItemFixture::SetUp();
        item = new TipItem(*panel);
        panel->InsertItem(*item, *root, nullptr);
        item->SetText(L"Level 1");
        item->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Code1);
        item->SetProperty_(Props::Size, L"22.9 KB");
        item->SetType(L"Attach");
        item->SetProperty_(Props::Date, L"11/23/2026 4:30 AM");
        item->SetFoundAt(L"/projects/site/level1.dwg");
        item->SetSavedPath(L"./level1.dwg");
    }

    std::unique_ptr<KvNameDescriptionToolTipInfo> tip(int style, int size)
    {
        return item->CreateToolTipInfo(ToolTipMenuSettings{style, size});
    }
};

} // namespace

TEST_F(ItemToolTip, descriptionListsSevenRowsInOrder)
{
    const auto info = tip(3, 1);
    EXPECT_EQ(info->GetName(), "Level 1");
    EXPECT_EQ(info->GetDescription(), "Reference Name: Level 1\n"
                                      "Status: Loaded\n"
                                      "Size: 22.9 KB\n"
                                      "Type: Attach\n"
                                      "Date: 11/23/2026 4:30 AM\n"
                                      "Found At: /projects/site/level1.dwg\n"
                                      "Saved Path: ./level1.dwg");
}

TEST_F(ItemToolTip, emptyValuesKeepTheirRows)
{
    item->SetSize(0);
    item->SetDate(Util::DateTime(1, 1, 1));
    item->SetFoundAt(L"");
    EXPECT_EQ(tip(2, 1)->GetDescription(), "Reference Name: Level 1\n"
                                           "Status: Loaded\n"
                                           "Size: \n"
                                           "Type: Attach\n"
                                           "Date: \n"
                                           "Found At: \n"
                                           "Saved Path: ./level1.dwg");
}

TEST_F(ItemToolTip, pendingRelativePathIsStarredAndExplained)
{
    item->pendingRelativePath = true;
    item->SetSavedPath(L"..\\site\\level1.dwg");
    const QString description = tip(3, 1)->GetDescription();
    EXPECT_TRUE(description.endsWith("Found At: /projects/site/level1.dwg\n"
                                     "Saved Path: *..\\site\\level1.dwg\n"
                                     "The path becomes relative when the drawing is saved."))
        << description.toStdString();
}

TEST_F(ItemToolTip, missingTextsLeaveTheSeparators)
{
    item->pendingRelativePath = true;
    ScopedResourceModule noTexts(false);
    EXPECT_EQ(tip(0, 1)->GetDescription(), ": Level 1\n"
                                           ": Loaded\n"
                                           ": 22.9 KB\n"
                                           ": Attach\n"
                                           ": 11/23/2026 4:30 AM\n"
                                           ": /projects/site/level1.dwg\n"
                                           ": *./level1.dwg\n");
}

TEST_F(ItemToolTip, styleDecidesTheFlagsAndSizeTheEdge)
{
    struct Case
    {
        int style;
        int size;
        bool preview;
        bool details;
        int edge;
    };
    const Case cases[] = {
        {0, 0, false, false, 64}, {1, 1, true, false, 128}, {2, 2, false, true, 256},
        {3, 2, true, true, 256},  {3, 7, true, true, 128},  {9, -1, false, false, 128},
    };
    for (const Case& c : cases) {
        const auto info = tip(c.style, c.size);
        EXPECT_EQ(info->GetShowPreview(), c.preview) << c.style << "/" << c.size;
        EXPECT_EQ(info->GetShowDetails(), c.details) << c.style << "/" << c.size;
        EXPECT_EQ(info->GetPreviewWidth(), c.edge) << c.style << "/" << c.size;
        EXPECT_EQ(info->GetPreviewHeight(), c.edge) << c.style << "/" << c.size;
        // The description is built whatever the style, classic included.
        EXPECT_EQ(info->GetDescription().count('\n'), 6) << c.style << "/" << c.size;
    }
}

TEST_F(ItemToolTip, thumbnailComesFromTheFoundAtFileThroughTheCache)
{
    QTemporaryDir dir;
    const QString found = dir.filePath("found.dwg");
    const QString saved = dir.filePath("saved.dwg");
    QImage green(6, 4, QImage::Format_RGB32);
    green.fill(qRgb(0, 160, 0));
    ASSERT_TRUE(DrawingFileBuilder().AddBmp(DrawingFileBuilder::BmpBytes(green)).Write(found));
    ASSERT_TRUE(DrawingFileBuilder().Write(saved)); // a drawing without a picture

    item->SetFoundAt(found.toStdWString());
    item->SetSavedPath(saved.toStdWString());
    const auto info = tip(1, 1);
    ASSERT_FALSE(info->GetPreviewBitmap().isNull());
    EXPECT_EQ(info->GetPreviewBitmap().toImage().pixel(3, 2), qRgb(0, 160, 0));
    EXPECT_EQ(info->GetPreviewBitmap().cacheKey(),
              CToolTipPreviewAssist::GetCache()->FindPreview(found.toStdWString()).cacheKey());

    // Without a found-at path there is no thumbnail, but the details are all there.
    item->SetFoundAt(L"");
    const auto without = tip(3, 1);
    EXPECT_TRUE(without->GetPreviewBitmap().isNull());
    EXPECT_TRUE(without->GetShowDetails());
}

TEST_F(ItemToolTip, previewBitmapGoesToThePanelsPreviewPane)
{
    CXrefPreview* pane = panel->GetPreviewCtrl();
    ASSERT_NE(pane, nullptr);
    pane->resize(300, 200);
    QRect box(1, 2, 3, 4);
    item->GetPreviewBox(box);
    EXPECT_EQ(box, QRect(0, 0, 300, 200));

    // A packed 8-bit picture without an image size: 40 + 8 + 1024 bytes kept.
    QList<QRgb> palette(256, qRgb(0, 0, 0));
    palette[2] = qRgb(250, 250, 0);
    const PackedDib packed = DibBuilder(3, 2, 8).Palette(palette).Fill(2).Dib();
    item->SetPreviewBitmap(&packed, nullptr, 0);
    EXPECT_FALSE(pane->HasNoPicture());
    EXPECT_EQ(pane->DibCopy().size(), 40 + 8 + 1024);
    EXPECT_EQ(pane->Picture().pixel(2, 1), qRgb(250, 250, 0));

    // Header and pixels apart.
    const DibBuilder rgb = DibBuilder(2, 2, 24).Fill(0xFF0000FF);
    const PackedDib header(rgb.HeaderBytes());
    const QByteArray pixels = rgb.PixelBytes();
    item->SetPreviewBitmap(&header, pixels.constData(), pixels.size());
    EXPECT_EQ(pane->DibCopy().size(), 40); // the header has no colour entry to copy
    EXPECT_EQ(pane->Picture().pixel(0, 0), qRgb(0, 0, 255));

    item->SetPreviewBitmap(nullptr, nullptr, 0);
    EXPECT_TRUE(pane->HasNoPicture());
    EXPECT_TRUE(pane->Picture().isNull());
}

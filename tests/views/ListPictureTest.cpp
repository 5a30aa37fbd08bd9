// The list view drawn offscreen in both themes at two scales, with a selection of several rows
// that includes the host drawing's row while the user is logged out, and with the item colours
// of a titled drawing. The pictures go to build/test-output/list/ for looking at; the checks make
// sure the selection shows in the name cell alone.

#include "ListViewFixture.h"

#include "framework/ZuUiRm.h"
#include "framework/ZuUiTheme.h"
#include "resources/TroveResources.h"
#include "support/PictureCase.h"
#include "support/PictureItem.h"

#include <QImage>

namespace {

using testing::_;

class ListPictureTest : public ListViewFixture
{
protected:
    void SetUp() override
    {
        PictureTypes::Register();
        ListViewFixture::SetUp();
        if (HasFatalFailure())
            return;
        ON_CALL(*panel, FillStateImageList(_, _, _))
            .WillByDefault([](CZuUiImageList& images, bool, int) {
                const Util::ResourceModule* m = TroveUI::ResourceInstance();
                for (const char* name : {"IDI_STATUS_BLANK", "IDI_STATUS_COMPARABLE",
                                         "IDI_STATUS_NEEDSRELOADING", "IDI_STATUS_UNLOADED"})
                    images.Add(CZuUiRm::ThemedIcon(CZuUiRmId(m, name)));
            });
        panel->UpdateStateImageList();
        struct Ref
        {
            const wchar_t* name;
            const char* icon;
            RefStatus::RefIcon status;
            int code;
            std::int64_t size;
            const wchar_t* type;
            const wchar_t* path;
        };
        const Ref refs[] = {
            {L"Site plan", "HOSTDWG", RefStatus::NoIcon, 0, 3'412'992, L"Current",
             L"C:\\Projects\\Harbour\\Site plan.dwg"},
            {L"Grid", "", RefStatus::Blank, 0, 182'272, L"Attach", L".\\xrefs\\Grid.dwg"},
            {L"Columns", "", RefStatus::NeedsReloading, 3, 96'512, L"Overlay",
             L".\\xrefs\\Columns.dwg"},
            {L"Aerial photo", "IMAGE", RefStatus::Blank, 0, 12'845'056, L"Attach",
             L"C:\\Images\\aerial-2023.jpg"},
            {L"Survey", "PDF", RefStatus::Unloaded, 2, 1'048'576, L"Attach",
             L"\\\\server\\survey\\survey.pdf"},
            {L"Landscape", "DWF", RefStatus::Unresolved, 4, 0, L"Attach",
             L"..\\landscape\\Landscape.dwf"},
            {L"Scan", "POINTCLOUD", RefStatus::Comparable, 5, 734'003'200, L"Attach",
             L"E:\\Scans\\quay.e57"},
        };
        for (const Ref& r : refs) {
            auto* item = new PictureItem(*panel, !root);
            if (!root) {
                root = item;
                panel->InsertRootItem(*item);
            } else {
                panel->InsertItem(*item, *root, nullptr);
            }
            item->SetText(r.name);
            item->SetTypeIcon(r.status, QString::fromLatin1(r.icon));
            item->SetReferenceStatus(r.status, Trove::FileDataStatus::Value(r.code));
            item->SetSize(r.size);
            item->SetType(r.type);
            item->SetDate(Util::DateTime(2024, 4, 2, 9, 30, 0));
            item->SetSavedPath(r.path);
            item->SetTroveStateIconIndexListView(1 + unsigned(model().RowCount() % 4));
        }
        list().resize(760, 200);
        settle();
    }

    // The list as a screen of @p c's scale shows it: every size in device pixels.
    QImage render(const PictureCase& c)
    {
        list().resize(QSize(760, 200) * c.scale);
        // Rows take their height from the scale, which a test changes under a live view.
        list().doItemsLayout();
        settle();
        list().viewport()->repaint();
        settle();
        return list().grab().toImage();
    }

    // The colour near the right end of @p rect (past the short texts, inside any frame the
    // style draws), in logical pixels of the list widget.
    static QColor backgroundAt(const QImage& image, QRect rect)
    {
        const QPoint p(rect.right() - 6, rect.center().y());
        return image.pixelColor(p);
    }
    QRect cellInList(int row, int column) const
    {
        return cell(row, column).translated(list().viewport()->mapTo(&list(), QPoint(0, 0)));
    }
};

TEST_F(ListPictureTest, selectionShowsInTheNameCellAloneAndNeverOnTheLoggedOutHostRow)
{
    ScopedLogin login(false);
    for (const PictureCase& c : kPictureCases) {
        SCOPED_TRACE(c.Suffix().toStdString());
        ScopedTheme theme(c.dark);
        ScopedDpiScale dpi(c.scale);
        list().SetColumnDipWidths({25, 18, 110, 110, 70, 70, 140});
        list().ClearSelection();
        // Put together by program: the user's gestures would have dropped the host row.
        list().SetItemSelected(0, true, true);
        list().SetItemSelected(2, true, true);
        list().SetItemSelected(4, true, true);
        const QImage image = render(c);
        EXPECT_TRUE(image.save(c.PicturePath("list", "selection")));

        const QColor highlight = list().palette().color(QPalette::Active, QPalette::Highlight);
        const QColor plain = backgroundAt(image, cellInList(1, Column::ReferenceName));
        EXPECT_NE(plain, highlight);
        EXPECT_EQ(backgroundAt(image, cellInList(2, Column::ReferenceName)), highlight);
        EXPECT_EQ(backgroundAt(image, cellInList(4, Column::ReferenceName)), highlight);
        EXPECT_EQ(backgroundAt(image, cellInList(2, Column::Type)), plain);
        EXPECT_EQ(backgroundAt(image, cellInList(0, Column::ReferenceName)), plain)
            << "host row, logged out, among several";

        // Alone it shows like any other row.
        list().SetItemSelected(2, false, true);
        list().SetItemSelected(4, false, true);
        EXPECT_EQ(backgroundAt(render(c), cellInList(0, Column::ReferenceName)), highlight);
    }
}

TEST_F(ListPictureTest, titledDrawingsUseTheItemsColourWhileLoggedIn)
{
    auto& style = static_cast<PictureItem*>(list().ItemOfRow(1))->EditTextStyle();
    style.itemTextColor = MakeColorRef(230, 20, 20);
    style.useDefaultFont = true;
    ScopedSystemVariable titled(QStringLiteral("DWGTITLED"), 1);
    const PictureCase c{false, 1.0};
    const auto redPixels = [&](const QImage& image) {
        const QRect rect = cellInList(1, Column::SavedPath);
        int count = 0;
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x) {
                const QColor p = image.pixelColor(x, y);
                count += p.red() > 180 && p.green() < 90 && p.blue() < 90;
            }
        return count;
    };
    {
        ScopedLogin login(true);
        const QImage image = render(c);
        EXPECT_TRUE(image.save(c.PicturePath("list", "titled")));
        EXPECT_GT(redPixels(image), 10);
    }
    ScopedLogin login(false);
    EXPECT_EQ(redPixels(render(c)), 0) << "logged out: the list's own colour";
}

TEST_F(ListPictureTest, rubberBandDrawsItsFrameWhileDragging)
{
    const PictureCase c{false, 1.0};
    render(c);
    const QPoint from = cell(1, Column::Status).center();
    const QPoint to = cell(4, Column::Date).center();
    QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::NoModifier, from);
    dragMove(to);
    const QImage image = render(c);
    EXPECT_TRUE(image.save(c.PicturePath("list", "rubber_band")));
    EXPECT_EQ(selectedRows(), std::vector<int>({1, 2, 3, 4}));

    // The frame's left edge: a dotted line in the text colour down from the press point.
    const QPoint offset = list().viewport()->mapTo(&list(), QPoint(0, 0));
    const QColor text = list().palette().color(QPalette::Text);
    int dots = 0;
    for (int y = from.y(); y <= to.y(); ++y)
        dots += image.pixelColor(from.x() + offset.x(), y + offset.y()) == text;
    EXPECT_GT(dots, (to.y() - from.y()) / 4);

    QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::NoModifier, to);
    const QImage after = render(c);
    dots = 0;
    for (int y = from.y(); y <= to.y(); ++y)
        dots += after.pixelColor(from.x() + offset.x(), y + offset.y()) == text;
    EXPECT_EQ(dots, 0) << "gone with the release";
}

} // namespace

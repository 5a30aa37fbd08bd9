// The whole panel drawn offscreen in both themes at two scales, with the list or the tree in
// front and with the lower pane off. The pictures go to <build>/test-output/panel for a look;
// the checks make sure each part is drawn where the layout puts it.

#include "PanelFixture.h"

#include "support/PictureCase.h"
#include "support/PictureItem.h"
#include "support/TestXrefItem.h"

#include "framework/ZuUiRm.h"
#include "framework/ZuUiTheme.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "resources/TroveResources.h"
#include "services/XrefMessageBox.h"

#include <QApplication>
#include <QImage>

using testing::_;

namespace {

enum class Variant { ListInFront, TreeInFront, LowerPaneOff };

struct PanelPicture
{
    PictureCase picture;
    Variant variant;
};

const char* nameOf(Variant variant)
{
    switch (variant) {
    case Variant::ListInFront:
        return "list";
    case Variant::TreeInFront:
        return "tree";
    case Variant::LowerPaneOff:
        return "nolower";
    }
    return "";
}

class PanelPictureTest : public testing::TestWithParam<PanelPicture>
{
protected:
    void Fill(CXrefPanelCtrl& panel)
    {
        PictureTypes::Register();
        panel.BeginUpdate();
        auto* root = new PictureItem(panel, true);
        panel.InsertRootItem(*root);
        root->SetText(L"Harbour site");
        root->SetTypeIcon(RefStatus::NoIcon, QStringLiteral("HOSTDWG"));
        root->SetType(L"Current");
        root->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Code0);
        struct Ref
        {
            const wchar_t* name;
            const char* icon;
            RefStatus::RefIcon status;
            int parent;
        };
        const Ref refs[] = {
            {L"Grid", "", RefStatus::Blank, -1},
            {L"Columns", "", RefStatus::NeedsReloading, 0},
            {L"Aerial photo", "IMAGE", RefStatus::Blank, -1},
            {L"Survey", "PDF", RefStatus::Unloaded, -1},
            {L"Landscape", "DWF", RefStatus::Unresolved, -1},
        };
        std::vector<PictureItem*> made;
        for (const Ref& r : refs) {
            auto* item = new PictureItem(panel);
            panel.InsertItem(*item, r.parent < 0 ? *root : *made[size_t(r.parent)], nullptr);
            item->SetText(r.name);
            item->SetTypeIcon(QString::fromLatin1(r.icon));
            item->SetReferenceStatus(r.status, 0);
            item->SetType(L"Attach");
            item->SetSize(96'512 * (1 + int(made.size())));
            made.push_back(item);
        }
        panel.EndUpdate();
        panel.GetTreeCtrl()->expandAll();
    }

    // Whether the pixel at @p point (logical) of @p image is @p colour, give or take a little.
    static bool IsColour(const QImage& image, QPoint point, QColor colour)
    {
        const QColor c = image.pixelColor(point);
        return std::abs(c.red() - colour.red()) + std::abs(c.green() - colour.green()) +
                   std::abs(c.blue() - colour.blue()) <=
               12;
    }

    // Pixels of @p area that differ clearly from @p colour.
    static int Drawn(const QImage& image, const QRect& area, QColor colour)
    {
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                count += !IsColour(image, QPoint(x, y), colour);
        return count;
    }
};

TEST_P(PanelPictureTest, drawsEveryPartWhereTheLayoutPutsIt)
{
    const PanelPicture& p = GetParam();
    ScopedTheme theme(p.picture.dark);
    ScopedDpiScale scale(p.picture.scale);
    const CZuUiTheme& colours = CZuUiTheme::Instance();

    auto toolBar = std::make_shared<CXrefToolBar>();
    TestPanel panel(p.variant == Variant::TreeInFront
                        ? CXrefPanelCtrl::FileReferenceViewType::TreeView
                        : CXrefPanelCtrl::FileReferenceViewType::ListView,
                    p.variant == Variant::TreeInFront ? CXrefPanelCtrl::DetailsViewType::Preview
                                                      : CXrefPanelCtrl::DetailsViewType::Details,
                    toolBar);
    ON_CALL(panel, FillStateImageList(_, _, _)).WillByDefault([](CZuUiImageList& list, bool, int) {
        list.Add(CZuUiRm::ThemedIcon(CZuUiRmId(TroveUI::ResourceInstance(), "IDI_STATUS_BLANK")));
    });
    ASSERT_TRUE(panel.Create(L"References",
                             QRect(0, 0, CZuUiHiDpi::ScaleX(420), CZuUiHiDpi::ScaleY(560)), nullptr,
                             30000));
    Fill(panel);
    panel.GetMessageBox()->SetMessage(QStringLiteral("5 references in Harbour site"));
    if (p.variant == Variant::LowerPaneOff)
        panel.OnPreviewDetailsPane();
    panel.show();
    QApplication::processEvents();

    const QImage image = panel.grab().toImage();
    ASSERT_TRUE(image.save(p.picture.PicturePath("panel", nameOf(p.variant))));
    const QColor background = colours.GetColor(CZuUiTheme::Background);

    EXPECT_TRUE(IsColour(image, QPoint(1, 1), background)) << "the panel's own margin";
    EXPECT_GT(Drawn(image, toolBar->geometry(), background), 0) << "tool bar buttons";
    EXPECT_GT(Drawn(image, panel.GetMessageBox()->geometry(), background), 0) << "strip text";

    // The group headers, sampled just inside their top edge, away from their title and buttons.
    const auto headerPoint = [&panel](QWidget* group) {
        return group->mapTo(&panel, QPoint(group->width() / 2, CZuUiHiDpi::ScaleY(2)));
    };
    const QColor header = colours.GetColor(CZuUiTheme::GroupHeaderBackground);
    EXPECT_TRUE(IsColour(image, headerPoint(panel.GetUpperGroupCtrl()), header));
    const QPoint lowerHeader = headerPoint(panel.GetLowerGroupCtrl());
    if (p.variant == Variant::LowerPaneOff) {
        EXPECT_FALSE(IsColour(image, lowerHeader, header)) << "covered by the file references";
    } else {
        EXPECT_TRUE(IsColour(image, lowerHeader, header));
    }

    // The rows of the view in front are drawn.
    QAbstractItemView* front = p.variant == Variant::TreeInFront
                                   ? static_cast<QAbstractItemView*>(panel.GetTreeCtrl())
                                   : static_cast<QAbstractItemView*>(panel.GetListCtrl());
    const QRect rows(front->viewport()->mapTo(&panel, QPoint(0, 0)),
                     QSize(front->viewport()->width(), CZuUiHiDpi::ScaleY(60)));
    EXPECT_GT(Drawn(image, rows, front->palette().color(QPalette::Base)), 20);

    panel.DeleteAllItems();
}

std::vector<PanelPicture> allPictures()
{
    std::vector<PanelPicture> all;
    for (const PictureCase& picture : kPictureCases)
        for (Variant variant : {Variant::ListInFront, Variant::TreeInFront, Variant::LowerPaneOff})
            all.push_back({picture, variant});
    return all;
}

INSTANTIATE_TEST_SUITE_P(Cases, PanelPictureTest, testing::ValuesIn(allPictures()),
                         [](const testing::TestParamInfo<PanelPicture>& info) {
                             QString name = info.param.picture.Suffix() + QLatin1Char('_') +
                                            QLatin1String(nameOf(info.param.variant));
                             return name.replace(QLatin1Char('.'), QLatin1Char('_')).toStdString();
                         });

} // namespace

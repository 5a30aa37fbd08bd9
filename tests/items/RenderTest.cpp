// A panel with a dozen varied references, drawn offscreen in both themes and at two pixel
// ratios. The pictures are written to the build tree (render/) for looking at; the checks make
// sure the icons and texts land in their cells.

#include "ItemFixture.h"

#include "framework/ZuUiRm.h"
#include "framework/ZuUiTheme.h"
#include "support/PictureItem.h"
#include "support/ScopedOverrides.h"

#include <QApplication>
#include <QDir>
#include <QHeaderView>
#include <QImage>
#include <QPainter>

using testing::_;

namespace {

struct Ref
{
    const wchar_t* name;
    const char* icon;
    RefStatus::RefIcon status;
    int code;
    std::int64_t size;
    const wchar_t* type;
    const wchar_t* path;
    int parent; // index into the refs made so far, -1: the root
    int sharedWith;
    unsigned trove;
};

class RenderTest : public testing::Test
{
protected:
    void SetUp() override
    {
        PictureTypes::Register();
        panel = std::make_unique<testing::NiceMock<MockXrefPanel>>(true);
        ON_CALL(*panel, FillStateImageList(_, _, _))
            .WillByDefault([](CZuUiImageList& list, bool, int) {
                const Util::ResourceModule* m = TroveUI::ResourceInstance();
                for (const char* name : {"IDI_STATUS_BLANK", "IDI_STATUS_COMPARABLE",
                                         "IDI_STATUS_NEEDSRELOADING", "IDI_STATUS_UNLOADED"})
                    list.Add(CZuUiRm::ThemedIcon(CZuUiRmId(m, name)));
            });
        panel->Create(L"References", QRect(0, 0, 980, 330), nullptr, 30000);
        panel->EnableHostModStatus(true, true);
        root = new PictureItem(*panel, true);
        panel->InsertRootItem(*root);
        root->SetText(L"Site plan");
        root->SetTypeIcon(RefStatus::NoIcon, QStringLiteral("HOSTDWG"));
        root->SetType(L"Current");
        root->SetSize(3'412'992);
        root->SetDate(Util::DateTime(2024, 5, 2, 16, 4, 11));
        root->SetSavedPath(L"C:\\Projects\\Harbour\\Site plan.dwg");
        root->SetTroveStateIconIndexListView(1);
        root->SetTroveStateIconIndexTreeView(1);

        const Ref refs[] = {
            {L"Grid", "", RefStatus::Blank, 0, 182'272, L"Attach", L".\\xrefs\\Grid.dwg", -1, -1,
             2},
            {L"Columns", "", RefStatus::NeedsReloading, 3, 96'512, L"Overlay",
             L".\\xrefs\\Columns.dwg", 0, -1, 3},
            {L"Aerial photo", "IMAGE", RefStatus::Blank, 0, 12'845'056, L"Attach",
             L"C:\\Images\\aerial-2023.jpg", -1, -1, 1},
            {L"Survey", "PDF", RefStatus::Unloaded, 2, 1'048'576, L"Attach",
             L"\\\\server\\survey\\survey.pdf", -1, -1, 4},
            {L"Landscape", "DWF", RefStatus::Unresolved, 4, 0, L"Attach",
             L"..\\landscape\\Landscape.dwf", -1, -1, 0},
            {L"Bridge", "DGN", RefStatus::Blank, 0, 655'360, L"Overlay", L"D:\\Civil\\Bridge.dgn",
             -1, -1, 2},
            {L"Scan", "POINTCLOUD", RefStatus::Comparable, 5, 734'003'200, L"Attach",
             L"E:\\Scans\\quay.e57", -1, -1, 1},
            {L"Coordination", "MODEL", RefStatus::InCompare, 6, 20'971'520, L"Attach",
             L"..\\bim\\coordination.ifc", -1, -1, 1},
            {L"Door schedule", "DATALINK", RefStatus::Blank, 0, 20'480, L"Attach",
             L"C:\\Data\\doors.xlsx", -1, -1, 0},
            {L"Grid", "", RefStatus::Blank, 0, 182'272, L"Attach", L".\\xrefs\\Grid.dwg", 1, 0, 2},
            {L"Title block with a long name that does not fit", "", RefStatus::Blank, 1, 40'960,
             L"Overlay", L"..\\..\\standards\\title blocks\\A1 landscape.dwg", -1, -1, 0},
        };
        for (const Ref& r : refs) {
            auto* item = new PictureItem(*panel);
            const CXrefPanelCtrlItem& parent = r.parent < 0 ? *root : *made[r.parent];
            panel->InsertItem(*item, parent, r.sharedWith < 0 ? nullptr : made[r.sharedWith]);
            item->SetText(r.name);
            item->SetTypeIcon(QString::fromLatin1(r.icon));
            item->SetReferenceStatus(r.status, r.code);
            item->SetSize(r.size);
            item->SetType(r.type);
            item->SetDate(Util::DateTime(2024, 4, 1 + int(made.size()), 9, 30, 0));
            item->pendingRelativePath = r.path[0] == L'.';
            item->SetSavedPath(r.path);
            item->SetTroveStateIconIndexListView(r.trove);
            item->SetTroveStateIconIndexTreeView(r.trove);
            made.push_back(item);
        }
    }

    void TearDown() override
    {
        panel->DeleteAllItems();
        panel.reset();
    }

    // Draws the two views side by side into one picture at @p ratio, each at a size that shows
    // every row, whatever room the panel's own layout gives them.
    QImage Render(qreal ratio)
    {
        CTroveListCtrl& list = *panel->GetListCtrl();
        CXrefTreeCtrl& tree = *panel->GetTreeCtrl();
        panel->show();
        list.show();
        tree.show();
        list.resize(700, 330);
        tree.resize(280, 330);
        QApplication::processEvents();
        QImage image(QSize(980, 330) * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        list.render(&image);
        tree.render(&image, QPoint(700, 0));
        return image;
    }

    void Save(const QImage& image, const QString& name)
    {
        const QString dir = QStringLiteral(KVX_BINARY_DIR "/render");
        QDir().mkpath(dir);
        EXPECT_TRUE(image.save(dir + QLatin1Char('/') + name));
    }

    // Whether the @p rect (logical pixels) of @p image holds anything but the background.
    static bool Drawn(const QImage& image, const QRect& rect)
    {
        const qreal ratio = image.devicePixelRatio();
        const QColor background = CZuUiTheme::Instance().GetColor(CZuUiTheme::Background);
        const QRect pixels(rect.topLeft() * ratio, rect.size() * ratio);
        for (int y = pixels.top(); y <= pixels.bottom(); ++y)
            for (int x = pixels.left(); x <= pixels.right(); ++x) {
                const QColor c = image.pixelColor(x, y);
                if (std::abs(c.red() - background.red()) +
                        std::abs(c.green() - background.green()) +
                        std::abs(c.blue() - background.blue()) >
                    60)
                    return true;
            }
        return false;
    }

    QRect CellRect(int row, int column)
    {
        CTroveListCtrl& list = *panel->GetListCtrl();
        QRect rect = list.visualRect(list.Model().index(row, column));
        rect.translate(list.viewport()->mapTo(&list, QPoint(0, 0)));
        return rect;
    }

    std::unique_ptr<testing::NiceMock<MockXrefPanel>> panel;
    PictureItem* root = nullptr;
    std::vector<PictureItem*> made;
};

TEST_F(RenderTest, iconsAndTextsLandInTheirCellsInBothThemes)
{
    for (bool dark : {false, true}) {
        ScopedTheme theme(dark);
        for (qreal ratio : {1.0, 2.0}) {
            const QImage image = Render(ratio);
            Save(image, QStringLiteral("panel-items-%1%2.png")
                            .arg(dark ? QLatin1String("dark") : QLatin1String("light"))
                            .arg(ratio > 1 ? QLatin1String("@2x") : QLatin1String("")));
            const int survey = made[3]->LVItemIndex();
            EXPECT_TRUE(Drawn(image, CellRect(survey, 0))) << "state image";
            EXPECT_TRUE(Drawn(image, CellRect(survey, 1))) << "type icon";
            EXPECT_TRUE(Drawn(image, CellRect(survey, 2))) << "name";
            EXPECT_TRUE(Drawn(image, CellRect(survey, 3))) << "status";
            const int landscape = made[4]->LVItemIndex();
            EXPECT_FALSE(Drawn(image, CellRect(landscape, 0))) << "no state image";
            EXPECT_FALSE(Drawn(image, CellRect(landscape, 4))) << "size 0 shows nothing";
        }
    }
}

} // namespace

namespace {

TEST_F(RenderTest, badgeNeedsATypeIconToSitOn)
{
    // A class the registry does not know has no type icon; its status badge must not float in
    // the empty cell on its own.
    auto* plain = new TestXrefItem(*panel);
    panel->InsertItem(*plain, *root, nullptr);
    plain->SetText(L"Unregistered");
    plain->SetReferenceStatus(RefStatus::Unresolved, 4);
    const QImage image = Render(1.0);
    EXPECT_FALSE(Drawn(image, CellRect(plain->LVItemIndex(), 1)));
    EXPECT_TRUE(Drawn(image, CellRect(plain->LVItemIndex(), 3))) << "the status icon still shows";
}

} // namespace

// Draws the tree view (item colours and bold, a selection, nesting) and the details list with
// each of its editors open, in both themes at two scales, into <build>/test-output/details for
// a look. The checks make sure the theme's colours are where they belong.

#include "support/MockXrefPanel.h"
#include "support/PictureCase.h"
#include "support/PictureItem.h"
#include "support/ScopedOverrides.h"
#include "support/TestXrefItem.h"

#include "framework/ZuUiRm.h"
#include "items/XrefProperty.h"
#include "resources/TroveResources.h"
#include "services/RmxImageSettings.h"
#include "views/XrefPropListCtrl.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeNode_p.h"

#include <QApplication>
#include <QPainter>
#include <QTest>

namespace {

using P = Trove::XrefProperties;
using Style = CXrefProperty::XrefPropertyEditStyle;

class TreeAndDetailsPicture : public testing::TestWithParam<PictureCase>
{
protected:
    void SetUp() override
    {
        PictureTypes::Register();
        TroveUI::RmxImageSettings::New();
        m_wasLoggedIn = TroveUI::RmxImageSettings::Value().GetTroveLoggedIn();
        TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(true);
    }
    void TearDown() override { TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(m_wasLoggedIn); }

    QFont Font(const QWidget& widget) const
    {
        QFont font = widget.font();
        font.setPixelSize(CZuUiHiDpi::ScaleY(12));
        return font;
    }
    static int Scaled(int dip) { return CZuUiHiDpi::ScaleX(dip); }
    static QImage Grab(QWidget& widget)
    {
        QApplication::processEvents();
        QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        widget.render(&image);
        return image;
    }

    bool m_wasLoggedIn = false;
};

TEST_P(TreeAndDetailsPicture, treeShowsItemStylesAndTheSelectionInTheTheme)
{
    ScopedTheme theme(GetParam().dark);
    ScopedDpiScale scale(GetParam().scale);
    ScopedSystemVariable titled(QStringLiteral("DWGTITLED"), 1);
    auto panel = MockXrefPanel::Created();
    CXrefTreeCtrl& tree = *panel->GetTreeCtrl();
    tree.setFont(Font(tree));
    panel->resize(Scaled(260), Scaled(200));
    tree.setGeometry(0, 0, Scaled(260), Scaled(200));
    tree.show();
    panel->show();

    auto* root = new PictureItem(*panel, true);
    panel->InsertRootItem(*root);
    root->SetText(L"Site plan");
    root->SetTypeIcon(RefStatus::NoIcon, QStringLiteral("HOSTDWG"));
    root->EditTextStyle().useDefaultColor = true;
    root->EditTextStyle().useDefaultFont = true;
    const auto add = [&](const wchar_t* name, CXrefPanelCtrlItem& parent, const char* icon) {
        auto* item = new PictureItem(*panel);
        panel->InsertItem(*item, parent, nullptr);
        item->SetText(name);
        item->SetTypeIcon(QString::fromLatin1(icon));
        // As a host that styles a few items keeps the views' colour and font for the others.
        item->EditTextStyle().useDefaultColor = true;
        item->EditTextStyle().useDefaultFont = true;
        return item;
    };
    PictureItem* grid = add(L"Grid", *root, "");
    auto& gridStyle = grid->EditTextStyle();
    gridStyle.useDefaultColor = false;
    gridStyle.useDefaultFont = false;
    gridStyle.treeCtrlItemTextFont.lfWeight = 700;
    gridStyle.itemTextColor = MakeColorRef(0xC0, 0x30, 0x30);
    add(L"Columns", *grid, "")->SetReferenceStatus(RefStatus::NeedsReloading, 3);
    PictureItem* survey = add(L"Survey", *root, "PDF");
    survey->SetReferenceStatus(RefStatus::Unloaded, 2);
    auto& aerialStyle = add(L"Aerial photo", *root, "IMAGE")->EditTextStyle();
    aerialStyle.useDefaultFont = false;
    aerialStyle.treeCtrlItemTextFont.lfItalic = 1;
    add(L"Title block with a long name that does not fit the pane", *root, "");
    tree.SelectItem(survey->GetTreeItem());

    const QImage image = Grab(tree);
    EXPECT_TRUE(image.save(GetParam().PicturePath("details", "tree")));
    EXPECT_TRUE(grid->GetTreeItem()->state.IsBold());
    // The selected row is painted in the theme's selection colour.
    const QRect selected = tree.visualRect(tree.IndexFromItem(*survey));
    const QPoint inRow =
        tree.viewport()->mapTo(&tree, QPoint(selected.right() - 4, selected.center().y()));
    const QColor selection = CZuUiTheme::Instance().GetColor(CZuUiTheme::SelectionBackground);
    const QColor inactive =
        CZuUiTheme::Instance().GetColor(CZuUiTheme::InactiveSelectionBackground);
    const QColor seen = image.pixelColor(inRow);
    EXPECT_TRUE(seen == selection || seen == inactive) << seen.name().toStdString();
    panel->DeleteAllItems();
}

TEST_P(TreeAndDetailsPicture, detailsListShowsEachEditorOverItsValueCell)
{
    ScopedTheme theme(GetParam().dark);
    ScopedDpiScale scale(GetParam().scale);
    QWidget window;
    auto* list = new CXrefPropListCtrl(&window);
    list->setFont(Font(*list));
    window.resize(Scaled(300), Scaled(170));
    list->setGeometry(window.rect());
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    std::vector<CXrefProperty> properties;
    properties.emplace_back(P::Name, L"Grid", Style::TextEdit);
    properties.emplace_back(P::Status, L"Needs reloading", Style::NotEditable);
    properties.emplace_back(P::Size, L"178 KB", Style::NotEditable);
    properties.emplace_back(P::Type, L"Overlay", Style::ComboBox);
    properties.emplace_back(P::Date, L"02/05/2024 16:04", Style::NotEditable);
    properties.emplace_back(P::FoundAt, L"C:\\Projects\\Harbour\\xrefs\\Grid.dwg", Style::FileEdit);
    properties.emplace_back(P::SavedPath, L".\\xrefs\\Grid.dwg", Style::FileEdit);
    std::vector<CXrefProperty*> rows;
    for (CXrefProperty& property : properties)
        rows.push_back(&property);
    list->SetProperties(rows);
    list->SelectRow(1);

    // One picture with the list three times over: text, drop-down and path editor open.
    const int height = list->height();
    QImage sheet(QSize(list->width(), 3 * height), QImage::Format_ARGB32_Premultiplied);
    sheet.fill(Qt::transparent);
    QPainter painter(&sheet);
    int y = 0;
    QImage first;
    for (int row : {0, 3, 5}) {
        const QPoint value = list->GetSubItemRect(row, 1).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, value);
        QWidget* editor = list->Editor();
        ASSERT_NE(editor, nullptr) << row;
        EXPECT_TRUE(editor->isVisible()) << row;
        const QRect cell = list->GetSubItemRect(row, 1);
        EXPECT_TRUE(cell.adjusted(0, -1, 0, 1).contains(editor->geometry())) << row;
        const QImage shot = Grab(*list);
        if (first.isNull())
            first = shot;
        painter.drawImage(0, y, shot);
        y += height;
        list->setFocus();
    }
    painter.end();
    EXPECT_TRUE(sheet.save(GetParam().PicturePath("details", "details")));

    // Below the rows the list shows the theme's base colour.
    const QColor base = CZuUiTheme::Instance().Palette().color(QPalette::Base);
    EXPECT_EQ(sheet.pixelColor(sheet.width() / 2, height - 3), base);

    // The strongest ink of a value is its text colour: the read-only one for Status, the normal
    // one for Type, which the user may change.
    const auto ink = [&](int row) {
        const QRect cell =
            list->GetSubItemRect(row, 1).translated(list->viewport()->mapTo(list, QPoint(0, 0)));
        QColor strongest = base;
        for (int py = cell.top(); py <= cell.bottom(); ++py)
            for (int px = cell.left(); px <= cell.right(); ++px) {
                const QColor c = first.pixelColor(px, py);
                if (std::abs(c.lightness() - base.lightness()) >
                    std::abs(strongest.lightness() - base.lightness()))
                    strongest = c;
            }
        return strongest.lightness();
    };
    const CZuUiTheme& colours = CZuUiTheme::Instance();
    EXPECT_NEAR(ink(1), colours.GetColor(CZuUiTheme::ReadOnlyText).lightness(), 12);
    EXPECT_NEAR(ink(3), colours.GetColor(CZuUiTheme::Text).lightness(), 12);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TreeAndDetailsPicture, testing::ValuesIn(kPictureCases),
    [](const testing::TestParamInfo<PictureCase>& info) {
        return info.param.Suffix().replace(QLatin1Char('.'), QLatin1Char('_')).toStdString();
    });

} // namespace

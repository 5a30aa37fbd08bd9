// The item type registry: factories, type and named icons, status icons and overlay badges.

#include "ItemFixture.h"

#include "framework/ZuUiRm.h"

#include <set>
#include <stdexcept>
#include <string>

namespace {

const Util::ResourceModule* res()
{
    return TroveUI::ResourceInstance();
}

// The registry lives for the whole process, so every test registers classes of its own.
template <int N> class Kind : public TestXrefItem
{
public:
    explicit Kind(CXrefPanelCtrl& panel, int tag = 0) : TestXrefItem(panel), tag(tag) {}
    int tag;
};

template <int N> TestItemTypes::Factory factoryFor(CXrefPanelCtrl& panel, int tag)
{
    return [&panel, tag](const std::any&) { return new Kind<N>(panel, tag); };
}

class ItemTypesTest : public ItemFixture
{};

TEST_F(ItemTypesTest, secondRegistrationKeepsFirstFactoryAndIcon)
{
    EXPECT_TRUE(TestItemTypes::RegisterType(typeid(Kind<1>), factoryFor<1>(*panel, 1),
                                            CZuUiRmId(res(), "IDI_TYPE_DWG")));
    const int image = CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<1>), QString());
    const int count = CXrefPanelCtrlItemTypes::ImageList(false).GetImageCount();
    EXPECT_FALSE(TestItemTypes::RegisterType(typeid(Kind<1>), factoryFor<1>(*panel, 2),
                                             CZuUiRmId(res(), "IDI_TYPE_PDF")));
    EXPECT_EQ(CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<1>), QString()), image);
    EXPECT_EQ(CXrefPanelCtrlItemTypes::ImageList(false).GetImageCount(), count)
        << "the refused registration loaded no icon";

    std::unique_ptr<CXrefPanelCtrlItem> made(
        TestItemTypes::Create(TestItemTypes::TypeName(typeid(Kind<1>)), std::any()));
    ASSERT_TRUE(made);
    EXPECT_EQ(dynamic_cast<Kind<1>*>(made.get())->tag, 1);
    EXPECT_EQ(TestItemTypes::TypeName(*made), QString::fromLatin1(typeid(Kind<1>).name()));
}

TEST_F(ItemTypesTest, createPassesArgumentsAndExceptions)
{
    TestItemTypes::RegisterType(
        typeid(Kind<2>),
        [this](const std::any& args) -> CXrefPanelCtrlItem* {
            return new Kind<2>(*panel, std::any_cast<int>(args));
        },
        CZuUiRmId(res(), "IDI_TYPE_IMAGE"));
    const QString name = TestItemTypes::TypeName(typeid(Kind<2>));
    std::unique_ptr<CXrefPanelCtrlItem> made(TestItemTypes::Create(name, std::any(42)));
    EXPECT_EQ(dynamic_cast<Kind<2>&>(*made).tag, 42);
    EXPECT_THROW(TestItemTypes::Create(name, std::any(std::string("no int"))), std::bad_any_cast);
    EXPECT_EQ(TestItemTypes::Create(QStringLiteral("NoSuchClass"), std::any()), nullptr);

    TestItemTypes::RegisterType(typeid(Kind<3>), TestItemTypes::Factory(),
                                CZuUiRmId(res(), "IDI_TYPE_IMAGE"));
    EXPECT_EQ(TestItemTypes::Create(TestItemTypes::TypeName(typeid(Kind<3>)), std::any()), nullptr)
        << "an empty factory creates nothing";
}

TEST_F(ItemTypesTest, namedIconRules)
{
    const CZuUiRmId pdf(res(), "IDI_TYPE_PDF");
    EXPECT_FALSE(TestItemTypes::RegisterIcon(typeid(Kind<4>), QStringLiteral("pdf"), pdf))
        << "the class is not registered yet";
    TestItemTypes::RegisterType(typeid(Kind<4>), factoryFor<4>(*panel, 0),
                                CZuUiRmId(res(), "IDI_TYPE_DWG"));
    const int typeImage = CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<4>), QString());
    ASSERT_GE(typeImage, 0);

    EXPECT_FALSE(TestItemTypes::RegisterIcon(typeid(Kind<4>), QString(), pdf));
    EXPECT_FALSE(TestItemTypes::RegisterIcon(typeid(Kind<4>), QStringLiteral("pdf"), CZuUiRmId()));
    EXPECT_FALSE(TestItemTypes::RegisterIcon(typeid(Kind<4>), QStringLiteral("pdf"),
                                             CZuUiRmId(res(), "IDI_NO_SUCH_ICON")));
    EXPECT_TRUE(TestItemTypes::RegisterIcon(typeid(Kind<4>), QStringLiteral("pdf"), pdf));
    const int pdfImage = CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<4>), QStringLiteral("pdf"));
    EXPECT_FALSE(TestItemTypes::RegisterIcon(typeid(Kind<4>), QStringLiteral("pdf"),
                                             CZuUiRmId(res(), "IDI_TYPE_DGN")))
        << "the first registration of a name wins";
    EXPECT_EQ(CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<4>), QStringLiteral("pdf")), pdfImage);
    EXPECT_NE(pdfImage, typeImage);
    EXPECT_EQ(CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<4>), QStringLiteral("unknown")),
              typeImage);
    EXPECT_EQ(CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<99>), QStringLiteral("pdf")), -2);
}

TEST_F(ItemTypesTest, iconFunctionOverload)
{
    TestItemTypes::RegisterType(typeid(Kind<5>), factoryFor<5>(*panel, 0),
                                CZuUiRmId(res(), "IDI_TYPE_DWG"));
    const QIcon owned = CZuUiRm::Icon(CZuUiRmId(res(), "IDI_TYPE_FOLDER"));
    EXPECT_FALSE(TestItemTypes::RegisterIcon(typeid(Kind<5>), QStringLiteral("folder"),
                                             TestItemTypes::IconSource(), false));
    EXPECT_FALSE(TestItemTypes::RegisterIcon(
        typeid(Kind<5>), QStringLiteral("folder"), [] { return QIcon(); }, true));
    EXPECT_TRUE(TestItemTypes::RegisterIcon(
        typeid(Kind<5>), QStringLiteral("folder"), [&] { return owned; }, false));
    EXPECT_FALSE(owned.isNull()) << "the owner's icon is left alive";
    const int image = CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<5>), QStringLiteral("folder"));
    EXPECT_EQ(CXrefPanelCtrlItemTypes::ImageList(true).Icon(image).cacheKey(), owned.cacheKey())
        << "the same icon goes into both lists";
    EXPECT_EQ(CXrefPanelCtrlItemTypes::ImageList(false).Icon(image).cacheKey(), owned.cacheKey());
}

TEST_F(ItemTypesTest, classWithoutTypeIconAndMissingResource)
{
    EXPECT_TRUE(TestItemTypes::RegisterType(typeid(Kind<6>), factoryFor<6>(*panel, 0),
                                            CZuUiRmId(res(), "IDI_NO_SUCH_ICON")));
    EXPECT_EQ(CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<6>), QString()), -2);
}

TEST_F(ItemTypesTest, statusIconsAndBadgesSitAtTheSameIndexInBothLists)
{
    const CZuUiImageList& dark = CXrefPanelCtrlItemTypes::ImageList(true);
    const CZuUiImageList& light = CXrefPanelCtrlItemTypes::ImageList(false);
    EXPECT_EQ(dark.GetImageCount(), light.GetImageCount());
    EXPECT_EQ(dark.OverlayImage(0), -1);
    for (int value = 1; value <= 6; ++value) {
        EXPECT_GE(light.OverlayImage(value), 0) << value;
        EXPECT_EQ(dark.OverlayImage(value), light.OverlayImage(value)) << value;
        EXPECT_GE(CXrefPanelCtrlItemTypes::StatusImage(RefStatus::RefIcon(value)), 0) << value;
    }
    // The blank badge is loaded once for each status that shows it.
    EXPECT_NE(light.OverlayImage(1), light.OverlayImage(5));
    EXPECT_NE(light.OverlayImage(5), light.OverlayImage(6));
    EXPECT_EQ(CXrefPanelCtrlItemTypes::StatusImage(RefStatus::NoIcon) >= 0, true);
    EXPECT_EQ(CXrefPanelCtrlItemTypes::StatusImage(RefStatus::RefIcon(7)), -2);
    // Dark variants exist for the status icons and differ from the light ones.
    const int unresolved = CXrefPanelCtrlItemTypes::StatusImage(RefStatus::Unresolved);
    EXPECT_NE(dark.Icon(unresolved).cacheKey(), light.Icon(unresolved).cacheKey());
}

TEST_F(ItemTypesTest, typeIconAndOverlayOnRowAndNode)
{
    TestItemTypes::RegisterType(typeid(Kind<7>), factoryFor<7>(*panel, 0),
                                CZuUiRmId(res(), "IDI_TYPE_DWG"));
    TestItemTypes::RegisterIcon(typeid(Kind<7>), QStringLiteral("pdf"),
                                CZuUiRmId(res(), "IDI_TYPE_PDF"));
    const int dwg = CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<7>), QString());
    const int pdf = CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<7>), QStringLiteral("pdf"));

    auto* item = new Kind<7>(*panel);
    panel->InsertItem(*item, *root, nullptr);
    const auto rowImage = [&] { return List().Row(item->LVItemIndex())->typeImage; };
    const auto rowOverlay = [&] { return List().Row(item->LVItemIndex())->Overlay(); };
    const HTREEITEM node = item->GetTreeItem();

    item->SetTypeIcon(RefStatus::Unresolved, QStringLiteral("pdf"));
    EXPECT_EQ(rowImage(), pdf);
    EXPECT_EQ(node->image, pdf);
    EXPECT_EQ(node->selectedImage, pdf);
    EXPECT_EQ(rowOverlay(), 4);
    EXPECT_EQ(node->Overlay(), 4);

    item->SetTypeIcon(QStringLiteral("never registered"));
    EXPECT_EQ(rowImage(), dwg) << "unknown names fall back to the class's type icon";
    EXPECT_EQ(rowOverlay(), 4) << "the one-argument form keeps the overlay";
    EXPECT_EQ(item->GetTypeIcon(), QStringLiteral("never registered"));

    item->SetTypeIcon(RefStatus::RefIcon(9), QStringLiteral("pdf"));
    EXPECT_EQ(item->GetTypeOverlayIcon(), RefStatus::Blank);
    EXPECT_EQ(node->Overlay(), 1);
    item->SetTypeIcon(RefStatus::NoIcon, QStringLiteral("pdf"));
    EXPECT_EQ(item->GetTypeOverlayIcon(), RefStatus::NoIcon);
    EXPECT_EQ(rowOverlay(), 0);
    EXPECT_EQ(node->Overlay(), 0);
    item->SetTypeOverlayIcon(RefStatus::RefIcon(-3));
    EXPECT_EQ(node->Overlay(), 1);

    // A class the registry has never seen shows no icon.
    TestXrefItem* plain = Add(L"Plain");
    plain->SetTypeIcon(QStringLiteral("pdf"));
    EXPECT_EQ(List().Row(plain->LVItemIndex())->typeImage, -2);
    EXPECT_EQ(plain->GetTreeItem()->image, -2);
}

} // namespace

namespace {

TEST_F(ItemTypesTest, registerClassTakesTheStandardIconsOnce)
{
    std::vector<TestItemTypes::NamedIcon> icons = TestItemTypes::StandardTypeIcons();
    icons.push_back({QStringLiteral("missing"), CZuUiRmId(res(), "IDI_NO_SUCH_ICON")});
    ASSERT_TRUE(TestItemTypes::RegisterClass(typeid(Kind<8>), factoryFor<8>(*panel, 0),
                                             CZuUiRmId(res(), "IDI_TYPE_DWG"), icons));

    const int fallback = CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<8>), QString());
    ASSERT_GE(fallback, 0);
    std::set<int> images{fallback};
    for (const char* name :
         {"HOSTDWG", "IMAGE", "PDF", "DWF", "DGN", "POINTCLOUD", "MODEL", "DATALINK"})
        images.insert(CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<8>), QLatin1String(name)));
    EXPECT_EQ(images.size(), 9u) << "each kind of reference has an image of its own";
    EXPECT_EQ(CXrefPanelCtrlItemTypes::TypeImage(typeid(Kind<8>), QStringLiteral("missing")),
              fallback)
        << "an icon that does not load is left out";

    const int count = CXrefPanelCtrlItemTypes::ImageList(false).GetImageCount();
    EXPECT_FALSE(TestItemTypes::RegisterClass(typeid(Kind<8>), factoryFor<8>(*panel, 1),
                                              CZuUiRmId(res(), "IDI_TYPE_PDF"), icons));
    EXPECT_EQ(CXrefPanelCtrlItemTypes::ImageList(false).GetImageCount(), count);
}

} // namespace

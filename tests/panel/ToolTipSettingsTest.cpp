// The tool-tip choices through the host's XML profile.

#include "PanelFixture.h"

#include "framework/ZuUiMenu.h"

#include <QDomDocument>

namespace {

QDomDocument parse(const QString& xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml)) << xml.toStdString();
    return document;
}

// --- The panel's settings ------------------------------------------------------------------------

class ToolTipSettingsTest : public PanelFixture
{
protected:
    void SetUp() override { panel = Make(300, 500); }

    void ExpectDefaults() const
    {
        EXPECT_EQ(panel->GetToolTipMenuSettings().style, 3);
        EXPECT_EQ(panel->GetToolTipMenuSettings().previewSize, 1);
        EXPECT_TRUE(panel->IsLowerPaneShown());
    }

    std::unique_ptr<TestPanel> panel;
};

TEST_F(ToolTipSettingsTest, loadReadsTheChildAndAppliesIt)
{
    QDomDocument profile = parse(QStringLiteral(
        "<Palette><TooltipSettings TooltipStyle=\"2abc\" TooltipSize=\"0\" ShowDetail=\"0\"/>"
        "</Palette>"));
    ASSERT_TRUE(panel->LoadTooltipSettings(profile.documentElement()));
    EXPECT_EQ(panel->GetToolTipMenuSettings().style, 2);
    EXPECT_EQ(panel->GetToolTipMenuSettings().previewSize, 0);
    EXPECT_FALSE(panel->IsLowerPaneShown());
    EXPECT_EQ(panel->GetUpperGroupCtrl()->geometry(), panel->GetCoupledGroupCtrl()->rect())
        << "the layout follows at once";
    EXPECT_EQ(CZuUiMenu::GetMenuState(panel->GetToolTipMenu(), Trove::TooltipDetails,
                                      CZuUiMenu::ByCommand),
              int(CZuUiMenu::Checked))
        << "and so does the menu";
}

TEST_F(ToolTipSettingsTest, missingAttributesLoadAsZero)
{
    QDomDocument profile =
        parse(QStringLiteral("<Palette><TooltipSettings ShowDetail=\"-4\"/></Palette>"));
    ASSERT_TRUE(panel->LoadTooltipSettings(profile.documentElement()));
    EXPECT_EQ(panel->GetToolTipMenuSettings().style, 0);
    EXPECT_EQ(panel->GetToolTipMenuSettings().previewSize, 0);
    EXPECT_TRUE(panel->IsLowerPaneShown()) << "any value but 0 shows the pane";

    profile = parse(QStringLiteral("<Palette><TooltipSettings TooltipStyle=\"3\"/></Palette>"));
    ASSERT_TRUE(panel->LoadTooltipSettings(profile.documentElement()));
    EXPECT_FALSE(panel->IsLowerPaneShown());
}

TEST_F(ToolTipSettingsTest, loadWithoutTheChildChangesNothing)
{
    QDomDocument profile = parse(
        QStringLiteral("<Palette TooltipStyle=\"0\"><Other/>text<!--TooltipSettings--></Palette>"));
    EXPECT_FALSE(panel->LoadTooltipSettings(profile.documentElement()))
        << "the node's own attributes are not read";
    EXPECT_FALSE(panel->LoadTooltipSettings(profile.documentElement().childNodes().at(1)))
        << "a text node has no child element";
    EXPECT_FALSE(panel->LoadTooltipSettings(QDomNode()));
    ExpectDefaults();
}

TEST_F(ToolTipSettingsTest, saveWritesOnTheNodeItselfSoTheRoundTripGoesThroughTheChild)
{
    panel->OnPreviewLarge();
    panel->OnPreviewDetailsPane();
    QDomDocument profile = parse(QStringLiteral("<Palette><TooltipSettings/></Palette>"));
    QDomElement settings = profile.documentElement().firstChildElement();
    ASSERT_TRUE(panel->SaveTooltipSettings(settings));
    EXPECT_EQ(settings.attribute(QStringLiteral("TooltipStyle")), "1");
    EXPECT_EQ(settings.attribute(QStringLiteral("TooltipSize")), "2");
    EXPECT_EQ(settings.attribute(QStringLiteral("ShowDetail")), "0");
    EXPECT_FALSE(profile.documentElement().hasAttribute(QStringLiteral("TooltipStyle")));

    // Through text and back, as the host's profile goes to disk.
    QDomDocument reread = parse(profile.toString());
    auto other = Make(300, 500);
    ASSERT_TRUE(other->LoadTooltipSettings(reread.documentElement()));
    EXPECT_EQ(other->GetToolTipMenuSettings().style, 1);
    EXPECT_EQ(other->GetToolTipMenuSettings().previewSize, 2);
    EXPECT_FALSE(other->IsLowerPaneShown());

    panel->OnPreviewDetailsPane();
    ASSERT_TRUE(panel->SaveTooltipSettings(settings));
    EXPECT_EQ(settings.attribute(QStringLiteral("ShowDetail")), "1");
}

TEST_F(ToolTipSettingsTest, saveOntoAnythingButAnElementFails)
{
    QDomDocument profile = parse(QStringLiteral("<Palette>text</Palette>"));
    EXPECT_FALSE(panel->SaveTooltipSettings(profile.documentElement().firstChild()));
    EXPECT_FALSE(panel->SaveTooltipSettings(profile));
    EXPECT_FALSE(panel->SaveTooltipSettings(QDomNode()));
    EXPECT_EQ(profile.toString(-1), "<Palette>text</Palette>");
}

TEST_F(ToolTipSettingsTest, workBeforeTheWindowExists)
{
    TestPanel uncreated;
    QDomDocument profile = parse(QStringLiteral(
        "<P><TooltipSettings TooltipStyle=\"7\" TooltipSize=\"2\" ShowDetail=\"0\"/></P>"));
    ASSERT_TRUE(uncreated.LoadTooltipSettings(profile.documentElement()));
    EXPECT_EQ(uncreated.GetToolTipMenuSettings().style, 7);
    EXPECT_FALSE(uncreated.IsLowerPaneShown());
    QDomElement settings = profile.documentElement().firstChildElement();
    settings.removeAttribute(QStringLiteral("TooltipStyle"));
    ASSERT_TRUE(uncreated.SaveTooltipSettings(settings));
    EXPECT_EQ(settings.attribute(QStringLiteral("TooltipStyle")), "7");
}

} // namespace

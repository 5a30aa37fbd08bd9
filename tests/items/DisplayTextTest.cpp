// The unsaved-changes marker of the host drawing's name and the saved path's pending marker.

#include "ItemFixture.h"

namespace {

class DisplayTextTest : public ItemFixture
{};

TEST_F(DisplayTextTest, hostDrawingShowsMarkerOnlyWhileStatusEnabledAndModified)
{
    panel->EnableHostModStatus(true, true);
    root->SetText(L"Plan");
    EXPECT_EQ(root->GetTreeItem()->text, QStringLiteral("Plan*"));
    EXPECT_EQ(Cell(*root, Column::ReferenceName), QStringLiteral("Plan*"));
    EXPECT_EQ(root->GetText(), L"Plan");
    EXPECT_EQ(*root->GetProperty(Props::Name), L"Plan");

    panel->EnableHostModStatus(false, true);
    root->SetText(L"Plan*");
    EXPECT_EQ(root->GetTreeItem()->text, QStringLiteral("Plan*"));
    EXPECT_EQ(root->GetText(), L"Plan*") << "with the status disabled a star is part of the name";

    panel->EnableHostModStatus(true, false);
    root->SetText(L"Plan");
    EXPECT_EQ(root->GetTreeItem()->text, QStringLiteral("Plan"));
}

TEST_F(DisplayTextTest, markerIsDecidedWhenTheTextIsWritten)
{
    root->SetText(L"Plan");
    panel->EnableHostModStatus(true, true);
    EXPECT_EQ(root->GetTreeItem()->text, QStringLiteral("Plan"));
    root->SetText(root->GetText());
    EXPECT_EQ(root->GetTreeItem()->text, QStringLiteral("Plan*"));
}

TEST_F(DisplayTextTest, starAloneAndEmptyNames)
{
    panel->EnableHostModStatus(true, true);
    root->SetText(L"");
    EXPECT_TRUE(root->GetTreeItem()->text.isEmpty()) << "an empty name never gets the marker";

    panel->GetTreeCtrl()->Model().SetText(root->GetTreeItem(), QStringLiteral("*"));
    EXPECT_EQ(root->GetText(), L"");
    std::wstring name, marker;
    root->ParseDisplayText(L"*", name, marker);
    EXPECT_EQ(name, L"");
    EXPECT_EQ(marker, L"*");
    root->ParseDisplayText(L"A*B", name, marker);
    EXPECT_EQ(name, L"A*B") << "only a trailing star is a marker";
    EXPECT_EQ(marker, L"");
}

TEST_F(DisplayTextTest, referenceNamesKeepTheirStarWhateverTheFlags)
{
    TestXrefItem* ref = Add(L"Detail*");
    for (bool enabled : {false, true}) {
        for (bool modified : {false, true}) {
            panel->EnableHostModStatus(enabled, modified);
            EXPECT_EQ(ref->FormatDisplayText(L"Detail"), L"Detail");
            EXPECT_EQ(ref->GetText(), L"Detail*");
        }
    }
}

TEST_F(DisplayTextTest, pendingRelativePathIsStoredWithStarAndReadWithout)
{
    TestXrefItem* ref = Add(L"Detail");
    ref->pendingRelativePath = true;
    ref->SetSavedPath(L"..\\xrefs\\detail.dwg");
    EXPECT_EQ(Cell(*ref, Column::SavedPath), QStringLiteral("*..\\xrefs\\detail.dwg"));
    EXPECT_EQ(ref->GetSavedPath(), L"..\\xrefs\\detail.dwg");
    EXPECT_EQ(*ref->GetProperty(Props::SavedPath), L"..\\xrefs\\detail.dwg");
    EXPECT_EQ(*ref->GetProperty(Props::PendingRelativePath), TroveUI::ResStringW(32789));

    ref->pendingRelativePath = false;
    EXPECT_EQ(*ref->GetProperty(Props::PendingRelativePath), TroveUI::ResStringW(32790));
    ref->SetSavedPath(L"*odd.dwg");
    EXPECT_EQ(Cell(*ref, Column::SavedPath), QStringLiteral("*odd.dwg"));
    EXPECT_EQ(ref->GetSavedPath(), L"odd.dwg") << "a leading star is always taken for the marker";
}

TEST_F(DisplayTextTest, otherColumnsKeepLeadingStars)
{
    TestXrefItem* ref = Add(L"Detail");
    ref->pendingRelativePath = true;
    ref->SetType(L"*Overlay");
    EXPECT_EQ(ref->GetType(), L"*Overlay");
}

TEST_F(DisplayTextTest, itemOutsideTheViewsReadsEmptyAndLosesWrites)
{
    TestXrefItem loose(*panel);
    EXPECT_EQ(loose.LVItemIndex(), -1);
    loose.SetText(L"Nowhere");
    loose.SetType(L"Attach");
    loose.SetSize(2048);
    EXPECT_EQ(loose.GetText(), L"");
    EXPECT_EQ(loose.GetType(), L"");
    EXPECT_EQ(loose.GetSizeDisplayText(), L"");
    EXPECT_EQ(loose.GetSize(), 2048) << "the field survives without a row";
    EXPECT_EQ(Cell(*root, Column::Type), QString()) << "no other row was written";
    EXPECT_EQ(loose.GetListViewItem(), nullptr);
    EXPECT_EQ(loose.GetReferenceCount(), 0);
    EXPECT_TRUE(loose.GetLVItemReferences().empty());
}

} // namespace

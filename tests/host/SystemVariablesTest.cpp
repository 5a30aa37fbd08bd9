#include "host/SystemVariables.h"
#include "host/ImageFileDialog.h"
#include "support/ScopedOverrides.h"

#include <gtest/gtest.h>

namespace {

TEST(SystemVariables, DefaultTableAnswersTheThreeVariables)
{
    QVariant value;
    EXPECT_EQ(kvedGetVar(L"TOOLTIPS", &value), kKvStatusNormal);
    EXPECT_EQ(value, QVariant(1));
    EXPECT_EQ(kvedGetVar(L"dwgcomparemode", &value), kKvStatusNormal) << "names ignore case";
    EXPECT_EQ(value, QVariant(0));
    EXPECT_EQ(KvSystemVariables::ReadInt(L"DWGTITLED"), 0);
}

TEST(SystemVariables, FailedQueriesLeaveTheValueAlone)
{
    QVariant value(42);
    EXPECT_NE(kvedGetVar(L"NOSUCHVAR", &value), kKvStatusNormal);
    EXPECT_EQ(value, QVariant(42));
    EXPECT_NE(kvedGetVar(nullptr, &value), kKvStatusNormal);
    EXPECT_NE(kvedGetVar(L"", &value), kKvStatusNormal);
    EXPECT_NE(kvedGetVar(L"TOOLTIPS", nullptr), kKvStatusNormal);
    {
        ScopedSystemVariable removed(QStringLiteral("TOOLTIPS"), std::nullopt);
        EXPECT_FALSE(KvSystemVariables::ReadInt(L"TOOLTIPS"));
    }
    EXPECT_EQ(KvSystemVariables::ReadInt(L"TOOLTIPS"), 1) << "restored";
}

TEST(SystemVariables, OnlyIntegersReadAsIntegers)
{
    ScopedSystemVariable text(QStringLiteral("DWGCOMPAREMODE"), QVariant(QStringLiteral("3")));
    EXPECT_FALSE(KvSystemVariables::ReadInt(L"DWGCOMPAREMODE"));
    ScopedSystemVariable real(QStringLiteral("DWGTITLED"), QVariant(1.0));
    EXPECT_FALSE(KvSystemVariables::ReadInt(L"DWGTITLED"));
    ScopedSystemVariable integer(QStringLiteral("TOOLTIPS"), 0);
    EXPECT_EQ(KvSystemVariables::ReadInt(L"TOOLTIPS"), 0);
}

TEST(SystemVariables, AHostProviderReplacesTheTable)
{
    auto previous = KvSystemVariables::SetProvider([](const QString& name, QVariant& value) {
        if (name != QLatin1String("DWGCOMPAREMODE"))
            return kKvStatusError;
        value = 3;
        return kKvStatusNormal;
    });
    EXPECT_EQ(KvSystemVariables::ReadInt(L"dwgcomparemode"), 3);
    EXPECT_FALSE(KvSystemVariables::ReadInt(L"TOOLTIPS"));
    KvSystemVariables::SetProvider(previous);
    EXPECT_EQ(KvSystemVariables::ReadInt(L"TOOLTIPS"), 1);
}

TEST(ImageFileDialog, DefaultConstructionOpensAnImage)
{
    CImageFileDialog dialog;
    EXPECT_EQ(dialog.Flags(), 0x200006u);
    EXPECT_EQ(dialog.Mode(), 1);
    EXPECT_EQ(dialog.parentWidget(), nullptr);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    dialog.tempFile() = QStringLiteral("/tmp/x.png");
    dialog.url() = QStringLiteral("https://example.invalid/x.png");
    const CImageFileDialog& view = dialog;
    EXPECT_EQ(view.tempFile(), QStringLiteral("/tmp/x.png"));
    EXPECT_EQ(view.url(), QStringLiteral("https://example.invalid/x.png"));
    CImageFileExtractDialog extract;
    EXPECT_EQ(extract.Flags(), 0x200006u);
}

} // namespace

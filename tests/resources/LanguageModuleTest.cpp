#include "resources/TemporaryResourceOverride.h"
#include "resources/TroveResources.h"
#include "util/ResourceModule.h"

#include <gtest/gtest.h>

namespace {

std::unique_ptr<Util::ResourceModule> loadGerman()
{
    QString error;
    auto module = Util::ResourceModule::LoadRcc(
        QStringLiteral(KVX_BINARY_DIR "/resources/kvxreftroveui_de.rcc"),
        &TroveUI::DefaultResourceModule(), &error);
    EXPECT_TRUE(module) << error.toStdString();
    return module;
}

TEST(LanguageModule, LoadsFromAnRccFileAndFallsBackToEnglish)
{
    const auto german = loadGerman();
    ASSERT_TRUE(german);
    EXPECT_EQ(german->String(1059), QStringLiteral("Größe"));
    EXPECT_EQ(german->String(1160), TroveUI::DefaultResourceModule().String(1160))
        << "untranslated";
    EXPECT_FALSE(german->FindFile(QStringLiteral("icons/IDI_TYPE_DWG.svg")).isEmpty());
}

TEST(LanguageModule, TheLibrarysModuleCanBeSwitched)
{
    const auto german = loadGerman();
    ASSERT_TRUE(german);
    const QString english = TroveUI::ResString(1074);
    TroveUI::SetResourceInstance(german.get());
    EXPECT_EQ(TroveUI::ResString(1074), QStringLiteral("Überlagern"));
    EXPECT_EQ(TroveUI::ResStringW(1074), L"Überlagern");
    TroveUI::SetResourceInstance(nullptr);
    EXPECT_EQ(TroveUI::ResString(1074), english);
    EXPECT_EQ(TroveUI::ResourceInstance(), &TroveUI::DefaultResourceModule());
}

TEST(TemporaryResourceOverride, SwitchesTheCurrentModuleAndRestoresIt)
{
    const auto german = loadGerman();
    ASSERT_TRUE(german);
    Util::SetCurrentResourceModule(german.get());
    {
        CTemporaryResourceOverride useLibrary;
        EXPECT_EQ(Util::CurrentResourceModule(), TroveUI::ResourceInstance());
        EXPECT_EQ(Util::LoadStrW(nullptr, 1074), L"Overlay");
        {
            CTemporaryResourceOverride nested;
            EXPECT_EQ(Util::CurrentResourceModule(), TroveUI::ResourceInstance());
        }
        EXPECT_EQ(Util::CurrentResourceModule(), TroveUI::ResourceInstance())
            << "no change to undo";
    }
    EXPECT_EQ(Util::CurrentResourceModule(), german.get());
    {
        CTemporaryResourceOverride nothing(nullptr);
        EXPECT_EQ(Util::CurrentResourceModule(), german.get());
    }
    Util::SetCurrentResourceModule(nullptr);
}

TEST(LanguageModule, DestroyingTheCurrentModuleClearsIt)
{
    auto german = loadGerman();
    ASSERT_TRUE(german);
    Util::SetCurrentResourceModule(german.get());
    german.reset();
    EXPECT_EQ(Util::CurrentResourceModule(), nullptr);
}

} // namespace

#include "items/XrefPanelCtrlItemStatus.h"

#include "resources/TroveResources.h"

#include <unordered_map>

namespace {

using Trove::FileDataStatus::Code;

// Code 15 was added after code 8 and took the next free text id; the ids stay as they are.
constexpr std::pair<Code, unsigned> kStatusTextIds[] = {
    {Trove::FileDataStatus::Code0, 1185},  {Trove::FileDataStatus::Code1, 1186},
    {Trove::FileDataStatus::Code2, 1187},  {Trove::FileDataStatus::Code3, 1188},
    {Trove::FileDataStatus::Code4, 1189},  {Trove::FileDataStatus::Code5, 1190},
    {Trove::FileDataStatus::Code6, 1191},  {Trove::FileDataStatus::Code7, 1192},
    {Trove::FileDataStatus::Code8, 1193},  {Trove::FileDataStatus::Code15, 1194},
    {Trove::FileDataStatus::Code9, 1195},  {Trove::FileDataStatus::Code10, 1196},
    {Trove::FileDataStatus::Code11, 1197}, {Trove::FileDataStatus::Code13, 1198},
    {Trove::FileDataStatus::Code16, 1199}, {Trove::FileDataStatus::Code17, 1200},
    {Trove::FileDataStatus::Code18, 1201}, {Trove::FileDataStatus::Code19, 1202},
    {Trove::FileDataStatus::Code20, 1203}, {Trove::FileDataStatus::Code21, 1204},
};

const std::unordered_map<std::int32_t, QString>& itemStatusTextTable()
{
    static const std::unordered_map<std::int32_t, QString> table = [] {
        std::unordered_map<std::int32_t, QString> texts;
        for (const auto& [code, id] : kStatusTextIds)
            texts.emplace(code, TroveUI::ResString(id));
        return texts;
    }();
    return table;
}

} // namespace

QString CXrefPanelCtrlItemStatus::ToString(Trove::FileDataStatus::Value status)
{
    const auto& table = itemStatusTextTable();
    const auto found = table.find(status.code);
    return found == table.end() ? QString() : found->second;
}

bool CXrefPanelCtrlItemStatus::Validate(Trove::FileDataStatus::Value& status)
{
    const auto& table = itemStatusTextTable();
    if (table.count(status.code))
        return true;
    status = Trove::FileDataStatus::Code0;
    return false;
}

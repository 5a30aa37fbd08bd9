#include "panel/detail/StripMessages.h"

#include "items/XrefPanelCtrlItem.h"
#include "resources/TroveResources.h"

#include <array>
#include <mutex>

namespace {

enum Text { SingleNote, SeveralNote, Type5Single, Type5All, Type6Single, Type6All, TextCount };

constexpr std::array<unsigned, TextCount> kTextIds = {1064, 1065, 1069, 1070, 1017, 1018};

// Loaded once for the process; a resource module that was not ready the first time (any text
// still empty) is asked again for all of them.
const QString& text(Text which)
{
    static std::array<QString, TextCount> texts;
    static std::mutex mutex;
    const std::lock_guard<std::mutex> lock(mutex);
    bool complete = true;
    for (const QString& loaded : texts)
        complete = complete && !loaded.isEmpty();
    if (!complete) {
        for (int i = 0; i < TextCount; ++i)
            texts[i] = TroveUI::ResString(kTextIds[i]);
    }
    return texts[which];
}

bool noteApplies(const CXrefPanelCtrlItem& item)
{
    return !item.IsHostDwgItem() && !item.IsNoteSuppressed(0) && item.NeedsNote();
}

} // namespace

namespace StripMessages {

std::optional<QString> For(const std::vector<CXrefPanelCtrlItem*>& items)
{
    if (items.empty())
        return std::nullopt;
    if (items.size() == 1) {
        const CXrefPanelCtrlItem* item = items.front();
        if (!item)
            return QString();
        if (noteApplies(*item))
            return text(SingleNote);
        // Type 5 is tested before type 6 for one item; several items test the other way round.
        if (item->FileType() == 5)
            return text(Type5Single);
        if (item->FileType() == 6)
            return text(Type6Single);
        return QString();
    }
    bool all5 = true;
    bool all6 = true;
    for (const CXrefPanelCtrlItem* item : items) {
        if (!item)
            continue;
        if (noteApplies(*item))
            return text(SeveralNote);
        all5 = all5 && item->FileType() == 5;
        all6 = all6 && item->FileType() == 6;
    }
    if (all6)
        return text(Type6All);
    if (all5)
        return text(Type5All);
    return QString();
}

QString EditingName()
{
    static const QString editing = TroveUI::ResString(1066);
    return editing;
}

} // namespace StripMessages

#include "util/Path.h"

namespace Util {

std::wstring Path::GetFileName(const std::wstring& path)
{
    const auto slash = path.find_last_of(L"/\\");
    return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

std::wstring Path::GetExtension(const std::wstring& path)
{
    const std::wstring name = GetFileName(path);
    const auto dot = name.find_last_of(L'.');
    if (dot == std::wstring::npos || dot == 0 || dot + 1 == name.size())
        return {};
    return name.substr(dot);
}

} // namespace Util

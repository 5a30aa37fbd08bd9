#include "util/FormatMsg.h"

#include <array>
#include <cstdint>

namespace Util {

void FormatMsgV(std::wstring& out, const wchar_t* format, va_list args)
{
    out.clear();
    if (!format)
        return;

    // Placeholders may appear in any order, so fetch every argument up to the highest one used
    // before writing anything; va_arg can only walk forwards.
    int highest = 0;
    for (const wchar_t* p = format; *p; ++p) {
        if (*p != L'%')
            continue;
        const wchar_t next = p[1];
        if (next >= L'1' && next <= L'9')
            highest = std::max(highest, int(next - L'0'));
        if (next)
            ++p;
    }
    std::array<const wchar_t*, 9> values{};
    va_list copy;
    va_copy(copy, args);
    for (int i = 0; i < highest; ++i)
        values[size_t(i)] = va_arg(copy, const wchar_t*);
    va_end(copy);

    for (const wchar_t* p = format; *p; ++p) {
        if (*p != L'%' || !p[1]) {
            out.push_back(*p);
            continue;
        }
        const wchar_t next = p[1];
        if (next >= L'1' && next <= L'9') {
            if (const wchar_t* value = values[size_t(next - L'1')])
                out.append(value);
            ++p;
        } else if (next == L'%') {
            out.push_back(L'%');
            ++p;
        } else {
            out.push_back(L'%');
        }
    }
}

void FormatMsg(std::wstring& out, const wchar_t* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatMsgV(out, format, args);
    va_end(args);
}

std::wstring MakeWideString(const QString& text)
{
    return text.toStdWString();
}

std::wstring MakeWideString(const char* utf8)
{
    return utf8 ? QString::fromUtf8(utf8).toStdWString() : std::wstring();
}

std::wstring MakeWideString(const std::string& utf8)
{
    return QString::fromStdString(utf8).toStdWString();
}

QString ToQString(std::wstring_view text)
{
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        return QString::fromWCharArray(text.data(), qsizetype(text.size()));
    } else {
        // Qt's general UTF-32 decoder checks every character for byte order marks and invalid
        // values; characters of the basic plane outside the surrogate range map one to one.
        QString result(qsizetype(text.size()), Qt::Uninitialized);
        auto* out = reinterpret_cast<char16_t*>(result.data());
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto c = std::uint32_t(text[i]);
            if (c >= 0xD800 && (c < 0xE000 || c > 0xFFFF))
                return QString::fromStdWString(std::wstring(text));
            out[i] = char16_t(c);
        }
        return result;
    }
}

} // namespace Util

#include "services/TroveUIFunctions.h"

#include "framework/ZuUiImageList.h"
#include "framework/ZuUiMessageBox.h"
#include "framework/ZuUiRm.h"
#include "resources/TroveResources.h"
#include "util/FormatMsg.h"
#include "util/Path.h"
#include "util/ResourceModule.h"

#include <QGuiApplication>
#include <QLocale>
#include <QMimeDatabase>
#include <QPainter>
#include <QScreen>

#include <cmath>
#include <cstdarg>

namespace TroveUI {

int MessageBoxW(const std::wstring& text, const std::wstring& caption, unsigned type,
                unsigned helpId)
{
    if (caption.empty())
        return CZuUiMessageBox::Show(QString::fromStdWString(text), type, helpId);
    const QString remembered = CZuUiMessageBox::ApplicationTitle();
    CZuUiMessageBox::SetApplicationTitle(QString::fromStdWString(caption));
    const int result = CZuUiMessageBox::Show(QString::fromStdWString(text), type, helpId);
    CZuUiMessageBox::SetApplicationTitle(remembered);
    return result;
}

int MessageBoxW(const Util::ResourceModule* module, unsigned textId, unsigned captionId,
                unsigned type, unsigned helpId)
{
    const std::wstring text = Util::LoadStrW(module, textId);
    const std::wstring caption = captionId ? Util::LoadStrW(module, captionId) : std::wstring();
    return MessageBoxW(text, caption, type, helpId);
}

int FormatMessageBox(const Util::ResourceModule* module, unsigned formatId, unsigned captionId,
                     unsigned type, unsigned helpId, ...)
{
    const std::wstring format = Util::LoadStrW(module, formatId);
    std::wstring text;
    va_list args;
    va_start(args, helpId);
    Util::FormatMsgV(text, format.c_str(), args);
    va_end(args);
    const std::wstring caption = captionId ? Util::LoadStrW(module, captionId) : std::wstring();
    return MessageBoxW(text, caption, type, helpId);
}

int FormatMessageBox1(const Util::ResourceModule* module, unsigned formatId,
                      const std::wstring& argument, unsigned captionId, unsigned type,
                      unsigned helpId)
{
    return FormatMessageBox(module, formatId, captionId, type, helpId, argument.c_str());
}

std::wstring FormatByteSize(long long bytes)
{
    // Below 1 KB (and for every negative value) the count of bytes itself, as a 32-bit number.
    if (bytes < 1024)
        return std::to_wstring(static_cast<std::int32_t>(bytes)) + L" bytes";

    // Each step keeps three significant digits: 1.00-9.99, 10.0-99.9 and 100-999 of a unit. A
    // value of 1000 units or more already shows as 0.97-0.99 of the next unit, so no text ever
    // needs four digits. The divisors are the unit's size over 10^decimals; from 1 TB on the
    // value is first shifted down by 1 MB so that a double still holds it exactly enough, and the
    // divisors are scaled to match. The small additions keep exact unit multiples (2048 bytes)
    // from landing a hair below their digit after the division.
    struct Step
    {
        long double limit; // values below this use the step
        double divisor;
        int decimals;
        const wchar_t* unit;
    };
    constexpr long double KB = 1024.0L, MB = KB * 1024, GB = MB * 1024, TB = GB * 1024,
                          PB = TB * 1024;
    static const Step steps[] = {
        {10 * KB, 10.24, 2, L"KB"},          {100 * KB, 102.4, 1, L"KB"},
        {1000 * KB, 1024.0, 0, L"KB"},       {10 * MB, 10485.76, 2, L"MB"},
        {100 * MB, 104857.6, 1, L"MB"},      {1000 * MB, 1048576.0, 0, L"MB"},
        {10 * GB, 10737418.24, 2, L"GB"},    {100 * GB, 107374182.4, 1, L"GB"},
        {1000 * GB, 1073741824.0, 0, L"GB"}, {10 * TB, 10485.76, 2, L"TB"},
        {100 * TB, 104857.6, 1, L"TB"},      {1000 * TB, 1048576.0, 0, L"TB"},
        {10 * PB, 10737418.24, 2, L"PB"},    {100 * PB, 107374182.4, 1, L"PB"},
        {1000 * PB, 1073741824.0, 0, L"PB"}, {0, 10995116277.76, 2, L"EB"},
    };
    constexpr size_t last = sizeof(steps) / sizeof(steps[0]) - 1;
    size_t i = 0;
    while (i < last && static_cast<long double>(bytes) >= steps[i].limit)
        ++i;
    const double value = i > 8 ? double(bytes >> 20) + 0.001 : double(bytes) + 0.00001;
    // The shown digits as one integer: 149 for "1.49", 229 for "22.9", 999 for "999".
    const auto digits = static_cast<long long>(std::floor(value / steps[i].divisor));
    const long long scale = steps[i].decimals == 2 ? 100 : steps[i].decimals == 1 ? 10 : 1;

    std::wstring text = std::to_wstring(digits / scale);
    if (steps[i].decimals > 0) {
        text += QLocale().decimalPoint().toStdWString();
        std::wstring fraction = std::to_wstring(digits % scale);
        text.append(size_t(steps[i].decimals) - fraction.size(), L'0');
        text += fraction;
    }
    text += L' ';
    text += steps[i].unit;
    return text;
}

namespace {

// The library's own icon for the file types a reference panel deals with.
const char* libraryIconFor(const QString& extension)
{
    static const struct
    {
        const char* icon;
        std::initializer_list<const char*> extensions;
    } table[] = {
        {"IDI_TYPE_DWG", {"dwg"}},
        {"IDI_TYPE_DWF", {"dwf", "dwfx"}},
        {"IDI_TYPE_DGN", {"dgn"}},
        {"IDI_TYPE_PDF", {"pdf"}},
        {"IDI_TYPE_IMAGE",
         {"bmp", "png", "jpg", "jpeg", "gif", "tif", "tiff", "tga", "pcx", "jp2", "webp", "ico"}},
        {"IDI_TYPE_POINTCLOUD", {"las", "laz", "e57", "pts", "ptx", "xyz", "ply"}},
        {"IDI_TYPE_MODEL", {"ifc", "ifczip"}},
        {"IDI_TYPE_DATALINK", {"xls", "xlsx", "xlsm", "csv", "ods"}},
    };
    const QString lower = extension.toLower();
    for (const auto& entry : table) {
        for (const char* candidate : entry.extensions) {
            if (lower == QLatin1String(candidate))
                return entry.icon;
        }
    }
    return nullptr;
}

QIcon desktopIconFor(const QString& name)
{
    const QMimeType mime = QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension);
    if (!mime.isValid() || mime.isDefault())
        return {};
    QIcon icon = QIcon::fromTheme(mime.iconName());
    if (icon.isNull())
        icon = QIcon::fromTheme(mime.genericIconName());
    return icon;
}

} // namespace

QIcon GetFileExtIcon(const std::wstring& name, int cx, int cy, EFileExtIconType type, bool isFolder)
{
    const bool small = type == SmallIcon || type == SmallShellIcon;
    const int edge = small ? 16 : 32;
    const QSize size(cx > 0 ? cx : edge, cy > 0 ? cy : edge);
    const Util::ResourceModule* module = ResourceInstance();

    QIcon icon;
    if (isFolder) {
        icon = CZuUiRm::ThemedIcon(CZuUiRmId(module, "IDI_TYPE_FOLDER"));
    } else {
        const QString qname = QString::fromStdWString(name);
        QString extension = QString::fromStdWString(Util::Path::GetExtension(name));
        if (extension.isEmpty() && !qname.contains(QLatin1Char('.')))
            extension = qname; // a bare extension such as "dwg"
        extension.remove(0, extension.startsWith(QLatin1Char('.')) ? 1 : 0);
        if (const char* own = libraryIconFor(extension))
            icon = CZuUiRm::ThemedIcon(CZuUiRmId(module, own));
        if (icon.isNull())
            icon = desktopIconFor(
                qname.contains(QLatin1Char('.')) ? qname : QStringLiteral("x.") + extension);
        if (icon.isNull())
            icon = CZuUiRm::ThemedIcon(CZuUiRmId(module, "IDI_TYPE_FILE"));
    }
    if (icon.isNull())
        return {};

    // A picture of exactly the requested size, at the screen's pixel density.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const qreal dpr = screen ? screen->devicePixelRatio() : 1.0;
    QPixmap pixmap(size * dpr);
    pixmap.setDevicePixelRatio(dpr);
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        icon.paint(&painter, QRect(QPoint(0, 0), size));
    }
    return QIcon(pixmap);
}

int LoadIconW(CZuUiImageList& list, const Util::ResourceModule* module, unsigned iconId, int cx,
              int cy, unsigned flags)
{
    Q_UNUSED(cx);
    Q_UNUSED(cy);
    Q_UNUSED(flags);
    return CZuUiRm::ImageListAdd(list, CZuUiRmId(module, iconId));
}

} // namespace TroveUI

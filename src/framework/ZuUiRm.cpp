#include "framework/ZuUiRm.h"

#include "framework/ZuUiImageList.h"
#include "framework/ZuUiTheme.h"
#include "util/ResourceModule.h"

#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <memory>

namespace {

// Renders straight from the SVG source at the requested size, so icons stay crisp at any scale
// without depending on the icon-engine plug-ins a host may or may not ship.
class SvgIconEngine final : public QIconEngine
{
public:
    explicit SvgIconEngine(std::shared_ptr<QSvgRenderer> renderer) : m_renderer(std::move(renderer))
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        if (mode != QIcon::Disabled) {
            m_renderer->render(painter, QRectF(rect));
            return;
        }
        const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
        painter->drawPixmap(rect, pixmap(rect.size() * dpr, mode, QIcon::Off));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            m_renderer->render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
        }
        if (mode == QIcon::Disabled) {
            // Grey and faded, the way disabled tool bar pictures usually look.
            for (int y = 0; y < image.height(); ++y) {
                auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
                for (int x = 0; x < image.width(); ++x) {
                    const int gray = qGray(line[x]);
                    const int alpha = qAlpha(line[x]) * 2 / 5;
                    line[x] = qPremultiply(qRgba(gray, gray, gray, alpha));
                }
            }
        }
        return QPixmap::fromImage(std::move(image));
    }

    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
    QIconEngine* clone() const override { return new SvgIconEngine(m_renderer); }
    QString key() const override { return QStringLiteral("KvSvgIconEngine"); }

private:
    std::shared_ptr<QSvgRenderer> m_renderer;
};

QIcon loadSvg(const CZuUiRmId& id, const char* folder)
{
    if (id.IsNull())
        return {};
    const Util::ResourceModule* module = id.Module() ? id.Module() : Util::CurrentResourceModule();
    if (!module)
        return {};
    const QByteArray data = module->Data(QString::fromLatin1(folder) + QLatin1Char('/') +
                                         id.Name() + QLatin1String(".svg"));
    if (data.isEmpty())
        return {};
    auto renderer = std::make_shared<QSvgRenderer>(data);
    if (!renderer->isValid())
        return {};
    return QIcon(new SvgIconEngine(std::move(renderer)));
}

QIcon themed(const CZuUiRmId& id, QIcon (*load)(const CZuUiRmId&))
{
    if (CZuUiTheme::Instance().IsDarkTheme()) {
        QIcon dark = load(CZuUiRm::LegacyDarkSuffix(id));
        if (!dark.isNull())
            return dark;
    }
    return load(id);
}

} // namespace

QIcon CZuUiRm::Icon(const CZuUiRmId& id)
{
    return loadSvg(id, "icons");
}

QIcon CZuUiRm::Bitmap(const CZuUiRmId& id)
{
    return loadSvg(id, "bitmaps");
}

QCursor CZuUiRm::Cursor(const CZuUiRmId& id, QPoint hotSpot, const QCursor& fallback)
{
    const QIcon icon = loadSvg(id, "cursors");
    if (icon.isNull())
        return fallback;
    return QCursor(icon.pixmap(QSize(32, 32)), hotSpot.x(), hotSpot.y());
}

CZuUiRmId CZuUiRm::LegacyDarkSuffix(const CZuUiRmId& id)
{
    if (id.IsNull())
        return id;
    return CZuUiRmId(id.Module(), id.Name() + QLatin1String("_DARK"));
}

QIcon CZuUiRm::ThemedIcon(const CZuUiRmId& id)
{
    return themed(id, &CZuUiRm::Icon);
}

QIcon CZuUiRm::ThemedBitmap(const CZuUiRmId& id)
{
    return themed(id, &CZuUiRm::Bitmap);
}

int CZuUiRm::ImageListAdd(CZuUiImageList& list, const CZuUiRmId& id)
{
    const QIcon icon = ThemedIcon(id);
    return icon.isNull() ? -1 : list.Add(icon);
}

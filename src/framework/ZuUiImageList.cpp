#include "framework/ZuUiImageList.h"

#include <QPainter>
#include <QRect>

#include <algorithm>

CZuUiImageList::CZuUiImageList(QSize size, unsigned flags, int initial, int grow)
{
    Create(size, flags, initial, grow);
}

bool CZuUiImageList::Create(QSize size, unsigned flags, int initial, int grow)
{
    if (size.width() <= 0 || size.height() <= 0)
        return false;
    Clear();
    m_created = true;
    m_size = size;
    m_flags = flags;
    m_grow = std::max(grow, 1);
    m_images.reserve(std::clamp(initial, 0, 4096));
    return true;
}

void CZuUiImageList::Clear()
{
    m_images.clear();
    std::fill(std::begin(m_overlays), std::end(m_overlays), -1);
}

int CZuUiImageList::Add(const QIcon& icon)
{
    return ReplaceIcon(-1, icon);
}

int CZuUiImageList::ReplaceIcon(int index, const QIcon& icon)
{
    if (!m_created || icon.isNull())
        return -1;
    if (index == -1) {
        m_images.push_back(icon);
        return int(m_images.size()) - 1;
    }
    if (!IsValidIndex(index))
        return -1;
    m_images[index] = icon;
    return index;
}

bool CZuUiImageList::SetOverlayImage(int image, int overlay)
{
    if (!IsValidIndex(image) || overlay < 1 || overlay > kMaxOverlay)
        return false;
    m_overlays[overlay] = image;
    return true;
}

int CZuUiImageList::OverlayImage(int overlay) const
{
    if (overlay < 1 || overlay > kMaxOverlay)
        return -1;
    return m_overlays[overlay];
}

QIcon CZuUiImageList::Icon(int index) const
{
    return IsValidIndex(index) ? m_images[index] : QIcon();
}

QPixmap CZuUiImageList::Pixmap(int index, qreal devicePixelRatio, QSize size) const
{
    if (!IsValidIndex(index))
        return {};
    if (!size.isValid())
        size = m_size;
    return m_images[index].pixmap(size, devicePixelRatio);
}

void CZuUiImageList::Draw(QPainter& painter, int index, const QRect& target, int overlay,
                          QIcon::Mode mode) const
{
    if (IsValidIndex(index))
        m_images[index].paint(&painter, target, Qt::AlignCenter, mode);
    const int overlayImage = OverlayImage(overlay);
    if (IsValidIndex(overlayImage))
        m_images[overlayImage].paint(&painter, target, Qt::AlignCenter, mode);
}

void CZuUiImageList::DrawState(QPainter& painter, int stateIndex, const QRect& target) const
{
    if (stateIndex > 0)
        Draw(painter, stateIndex - 1, target);
}

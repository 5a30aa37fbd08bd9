#include "host/KvToolTipService.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>

namespace {

// Room for a long path without letting one line run across the screen.
constexpr int kMaxTextWidth = 480;

class RichToolTip : public QWidget
{
public:
    RichToolTip()
        : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        QObject::connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
                         qOverload<>(&QWidget::update));
    }

    void SetInfo(const KvNameDescriptionToolTipInfo& info)
    {
        m_info = info;
        m_layout = computeLayout();
        resize(m_layout.size);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!m_info)
            return;
        const CZuUiTheme& theme = CZuUiTheme::Instance();
        QPainter painter(this);
        painter.fillRect(rect(), theme.GetColor(CZuUiTheme::ToolTipBackground));
        const int line = std::max(1, CZuUiHiDpi::Round(CZuUiHiDpi::GetMonitorDpiYScale()));
        painter.setPen(QPen(theme.GetColor(CZuUiTheme::Border), line));
        painter.drawRect(QRectF(rect()).adjusted(line / 2.0, line / 2.0, -line / 2.0, -line / 2.0));

        painter.setPen(theme.GetColor(CZuUiTheme::ToolTipText));
        painter.setFont(nameFont());
        painter.drawText(m_layout.name, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         m_layout.nameText);

        if (!m_layout.preview.isEmpty()) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawPixmap(m_layout.preview, m_info->GetPreviewBitmap());
        }

        if (!m_layout.details.isEmpty()) {
            painter.setFont(font());
            const QFontMetrics metrics(font());
            int y = m_layout.details.top();
            for (const QString& text : m_layout.detailLines) {
                painter.drawText(
                    QRect(m_layout.details.left(), y, m_layout.details.width(), metrics.height()),
                    Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
                y += metrics.lineSpacing();
            }
        }
    }

private:
    struct Layout
    {
        QSize size;
        QRect name;
        QString nameText;
        QRect preview;
        QRect details;
        QStringList detailLines;
    };

    QFont nameFont() const
    {
        QFont bold = font();
        bold.setBold(true);
        return bold;
    }

    Layout computeLayout() const
    {
        Layout layout;
        const int padX = CZuUiHiDpi::ScaleX(8);
        const int padY = CZuUiHiDpi::ScaleY(6);
        const int gapX = CZuUiHiDpi::ScaleX(10);
        const int gapY = CZuUiHiDpi::ScaleY(4);
        const int maxText = CZuUiHiDpi::ScaleX(kMaxTextWidth);

        const QFontMetrics boldMetrics(nameFont());
        layout.nameText = boldMetrics.elidedText(m_info->GetName(), Qt::ElideMiddle, maxText);
        layout.name =
            QRect(padX, padY, boldMetrics.horizontalAdvance(layout.nameText), boldMetrics.height());

        const bool hasPicture = !m_info->GetPreviewBitmap().isNull();
        const QSize edge(CZuUiHiDpi::ScaleX(m_info->GetPreviewWidth()),
                         CZuUiHiDpi::ScaleY(m_info->GetPreviewHeight()));
        const bool showPreview = m_info->GetShowPreview() && hasPicture && !edge.isEmpty();
        const bool showDetails = m_info->GetShowDetails() || !showPreview;

        const int bodyTop = layout.name.bottom() + 1 + gapY;
        int bodyRight = padX;
        int bodyBottom = layout.name.bottom() + 1;
        if (showPreview) {
            // The picture fills the edge along its longer side; no empty band beside it.
            const QSize fitted =
                m_info->GetPreviewBitmap().size().scaled(edge, Qt::KeepAspectRatio);
            layout.preview = QRect(QPoint(padX, bodyTop), fitted);
            bodyRight = layout.preview.right() + 1;
            bodyBottom = layout.preview.bottom() + 1;
        }
        if (showDetails && !m_info->GetDescription().isEmpty()) {
            const QFontMetrics metrics(font());
            int width = 0;
            for (const QString& text : m_info->GetDescription().split(QLatin1Char('\n'))) {
                layout.detailLines.append(metrics.elidedText(text, Qt::ElideMiddle, maxText));
                width = std::max(width, metrics.horizontalAdvance(layout.detailLines.last()));
            }
            const int left = showPreview ? bodyRight + gapX : padX;
            const int height =
                metrics.lineSpacing() * (int(layout.detailLines.size()) - 1) + metrics.height();
            layout.details = QRect(left, bodyTop, width, height);
            bodyRight = layout.details.right() + 1;
            bodyBottom = std::max(bodyBottom, layout.details.bottom() + 1);
        }
        const int right = std::max(layout.name.right() + 1, bodyRight);
        layout.size = QSize(right + padX, bodyBottom + padY);
        return layout;
    }

    std::optional<KvNameDescriptionToolTipInfo> m_info;
    Layout m_layout;
};

} // namespace

KvToolTipService* KvToolTipService::Instance()
{
    // The popup is a window and must go while the application can still take windows down:
    // the application's children are deleted only after its window system is gone, so the
    // service leaves by the routines the application runs first as it ends.
    static QPointer<KvToolTipService> instance;
    if (!instance) {
        instance = new KvToolTipService;
        instance->setParent(QCoreApplication::instance());
        qAddPostRoutine([] { delete instance.data(); });
    }
    return instance;
}

KvToolTipService::KvToolTipService() = default;

KvToolTipService::~KvToolTipService()
{
    delete m_popup.data();
}

void KvToolTipService::SetToolTipInfo(const KvNameDescriptionToolTipInfo* info)
{
    if (info)
        m_info = *info;
    else
        m_info.reset();
}

void KvToolTipService::Show(const QRect& screenRect)
{
    if (!m_info) {
        Hide();
        return;
    }
    if (!m_popup)
        m_popup = new RichToolTip;
    auto* popup = static_cast<RichToolTip*>(m_popup.data());
    popup->SetInfo(*m_info);

    QScreen* screen = QGuiApplication::screenAt(screenRect.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect available = screen ? screen->availableGeometry() : QRect();
    const QSize size = popup->size();
    const int gap = CZuUiHiDpi::ScaleY(4);
    QPoint at(screenRect.left(), screenRect.bottom() + 1 + gap);
    if (!available.isEmpty()) {
        if (at.y() + size.height() > available.bottom() + 1)
            at.setY(screenRect.top() - gap - size.height());
        at.setX(std::clamp(at.x(), available.left(),
                           std::max(available.left(), available.right() + 1 - size.width())));
        at.setY(std::max(at.y(), available.top()));
    }
    popup->move(at);
    popup->show();
    popup->update();
}

void KvToolTipService::Hide()
{
    if (m_popup)
        m_popup->hide();
}

bool KvToolTipService::IsShowing() const
{
    return m_popup && m_popup->isVisible();
}

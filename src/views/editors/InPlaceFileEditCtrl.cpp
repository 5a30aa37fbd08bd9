#include "views/editors/InPlaceFileEditCtrl.h"

#include "framework/ZuToolTipCtrl.h"
#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"
#include "host/KvUiFolderBrowser.h"
#include "host/KvUiNavDialog.h"
#include "host/ShortcutResolver.h"
#include "views/editors/InPlaceFilePaths.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <cstdlib>

namespace {

// The button's width before DPI scaling: wide enough for three dots that read as "more".
constexpr double kButtonDip = 16;

// Dots need to stand out from a face colour that the owner chose; when the theme's text colour
// is too close to it, near-black or near-white is used instead.
QColor inkOn(const QColor& face, const QColor& ink)
{
    constexpr int minimumContrast = 100;
    if (std::abs(face.lightness() - ink.lightness()) >= minimumContrast)
        return ink;
    return face.lightness() > 127 ? QColor(0x1E, 0x1E, 0x1E) : QColor(0xE6, 0xE6, 0xE6);
}

} // namespace

CInPlaceFileEditCtrl::CInPlaceFileEditCtrl(int item, int subItem, const QString& initialText,
                                           unsigned flags)
    : CInPlaceEditCtrl(item, subItem, initialText), m_caption(tr("Browse for File")),
      m_filter(tr("All Files (*.*)|*.*||"))
{
    if (IsValidFlags(flags))
        m_flags = flags;
    setAcceptDrops(true);
    setMouseTracking(true); // hover look of the button
    connect(this, &QLineEdit::textChanged, this, [this] {
        m_filesStale = true;
        if (m_flags & TextTip)
            updateToolTips();
    });
    layoutButton();
}

CInPlaceFileEditCtrl::~CInPlaceFileEditCtrl() = default;

bool CInPlaceFileEditCtrl::IsValidFlags(unsigned flags)
{
    if (flags & BrowseFolder)
        return !(flags & (BrowseOpen | BrowseSave | OwnerOption));
    return bool(flags & BrowseOpen) != bool(flags & BrowseSave);
}

bool CInPlaceFileEditCtrl::SetFlags(unsigned flags)
{
    if (!IsValidFlags(flags))
        return false;
    const unsigned changed = m_flags ^ flags;
    m_flags = flags;
    m_filesStale = true;
    if (changed & ButtonLeft)
        layoutButton();
    if (changed & (ButtonLeft | FlatButton))
        update();
    if (changed & (ButtonTip | TextTip))
        updateToolTips();
    return true;
}

void CInPlaceFileEditCtrl::SetFolder(const QString& folder)
{
    m_folder = folder;
    m_filesStale = true;
}

void CInPlaceFileEditCtrl::SetButtonColor(const QColor& color)
{
    m_buttonColor = color;
    update(m_buttonRect);
}

const QStringList& CInPlaceFileEditCtrl::GetFiles()
{
    if (m_filesStale) {
        m_files = CInPlaceFilePaths::ParseText(text(), m_folder);
        m_filesStale = false;
    }
    return m_files;
}

QStringList CInPlaceFileEditCtrl::GetPathNames()
{
    QStringList paths;
    for (const QString& name : GetFiles())
        paths << PathName(name);
    return paths;
}

QString CInPlaceFileEditCtrl::PathName(const QString& name) const
{
    const QString path = CInPlaceFilePaths::FullPath(name, m_folder);
    if (isFileMode() && !(m_flags & KeepShortcuts) && CShortcutResolver::IsShortcutPath(path)) {
        if (std::optional<QString> target = CShortcutResolver::Resolve(path))
            return *target;
    }
    return path;
}

bool CInPlaceFileEditCtrl::Browse()
{
    if (m_browsing)
        return false;
    return isFileMode() ? browseForFile() : browseForFolder();
}

bool CInPlaceFileEditCtrl::bracketDialog(const std::function<bool()>& show, bool& chosen)
{
    // The dialog takes the focus; the edit stays open until it closes. The owner may go away
    // in any of the calls out, and the editor with it.
    QPointer<CInPlaceFileEditCtrl> self(this);
    m_browsing = true;
    emit browseDialogOpening();
    if (!self)
        return false;
    chosen = show();
    if (!self)
        return false;
    m_browsing = false;
    emit browseDialogClosed();
    return bool(self);
}

bool CInPlaceFileEditCtrl::browseForFile()
{
    if (!m_navDialog)
        m_navDialog = std::make_shared<CKvUiNavDialog>();
    const std::shared_ptr<CKvUiNavDialog> keep = m_navDialog;
    CKvUiNavDialog& dialog = *keep;
    unsigned options = CKvUiNavDialog::HideReadOnly | CKvUiNavDialog::StrictExtension |
                       CKvUiNavDialog::AllowUrls | CKvUiNavDialog::ExtraExtensions |
                       CKvUiNavDialog::OkButtonMenu;
    if (m_flags & MultipleFiles)
        options |= CKvUiNavDialog::MultipleFiles;
    if (m_flags & BrowseSave)
        options |= CKvUiNavDialog::SaveFile | CKvUiNavDialog::ConfirmReplace;
    dialog.SetFlags(options);
    dialog.SetCaption(m_caption);
    dialog.SetFilter(m_filter);
    dialog.SetDefaultExtension(m_defaultExtension);
    const QStringList current = GetPathNames();
    dialog.SetInitialPath(current.isEmpty() ? PathName(QString()) : current.first());

    bool chosen = false;
    if (!bracketDialog([&] { return dialog.DoModal(this); }, chosen))
        return false;
    std::optional<QString> proposed;
    if (chosen && !dialog.SelectedPaths().isEmpty())
        proposed = CInPlaceFilePaths::JoinPaths(dialog.SelectedPaths());
    QPointer<CInPlaceFileEditCtrl> self(this);
    const bool replaced = propose(Proposal::Browse, proposed);
    if (self)
        setFocus(Qt::OtherFocusReason);
    return replaced;
}

bool CInPlaceFileEditCtrl::browseForFolder()
{
    if (!m_folderBrowser)
        m_folderBrowser = std::make_shared<CKvUiFolderBrowser>(this);
    const std::shared_ptr<CKvUiFolderBrowser> keep = m_folderBrowser;
    CKvUiFolderBrowser& browser = *keep;
    browser.SetStartFolder(PathName(GetFiles().value(0)));

    bool chosen = false;
    if (!bracketDialog([&] { return browser.DoModal(); }, chosen))
        return false;
    const bool replaced = chosen && !browser.SelectedFolder().isEmpty();
    if (replaced)
        setText(browser.SelectedFolder());
    setFocus(Qt::OtherFocusReason);
    return replaced;
}

bool CInPlaceFileEditCtrl::propose(Proposal source, const std::optional<QString>& text)
{
    bool refuse = false;
    QPointer<CInPlaceFileEditCtrl> self(this);
    emit textProposed(source, text, &refuse);
    if (!self || !text || refuse)
        return false;
    setText(*text);
    return true;
}

void CInPlaceFileEditCtrl::updateToolTips()
{
    enum ToolId : unsigned { ButtonTool = 1, TextTool = 2 };
    if (!(m_flags & (ButtonTip | TextTip))) {
        delete m_toolTip;
        m_toolTip = nullptr;
        return;
    }
    if (!m_toolTip) {
        m_toolTip = new CZuToolTipCtrl(this);
        m_toolTip->Create(this);
    }
    if (m_flags & ButtonTip)
        m_toolTip->AddTool(this, tr("Browse"), m_buttonRect, ButtonTool);
    else
        m_toolTip->DelTool(this, ButtonTool);
    if (m_flags & TextTip) {
        QRect textArea = rect();
        if (m_flags & ButtonLeft)
            textArea.setLeft(m_buttonRect.right() + 1);
        else
            textArea.setRight(m_buttonRect.left() - 1);
        m_toolTip->AddTool(this, text(), textArea, TextTool);
    } else {
        m_toolTip->DelTool(this, TextTool);
    }
}

void CInPlaceFileEditCtrl::changeEvent(QEvent* event)
{
    CInPlaceEditCtrl::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layoutButton();
}

void CInPlaceFileEditCtrl::resizeEvent(QResizeEvent* event)
{
    CInPlaceEditCtrl::resizeEvent(event);
    layoutButton();
}

void CInPlaceFileEditCtrl::layoutButton()
{
    // The button lives inside the border, beside the text; the inner margin on its side keeps
    // the text and the caret off it.
    const int border = borderWidth();
    const QRect inner = rect().adjusted(border, border, -border, -border);
    const int buttonWidth =
        std::max(0, std::min(CZuUiHiDpi::ScaleX(kButtonDip), inner.width() / 2));
    const bool left = m_flags & ButtonLeft;
    m_buttonRect = QRect(left ? inner.left() : inner.right() + 1 - buttonWidth, inner.top(),
                         buttonWidth, inner.height());
    setInnerMargins(left ? buttonWidth : 0, left ? 0 : buttonWidth);
    updateToolTips();
    update();
}

void CInPlaceFileEditCtrl::paintEvent(QPaintEvent* event)
{
    CInPlaceEditCtrl::paintEvent(event);
    QPainter painter(this);
    paintButton(painter);
}

void CInPlaceFileEditCtrl::paintButton(QPainter& painter) const
{
    const QRect r = m_buttonRect;
    if (r.width() <= 0 || r.height() <= 0)
        return;
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    // The owner's colour is a light-theme colour; on the dark theme the theme's face stays.
    QColor face = m_buttonColor.isValid() && !theme.IsDarkTheme()
                      ? m_buttonColor
                      : theme.GetColor(CZuUiTheme::ButtonFace);
    if (m_buttonPressed)
        face = theme.GetColor(CZuUiTheme::ButtonPressed);
    else if (m_buttonHover && isEnabled())
        face = theme.GetColor(CZuUiTheme::ButtonHover);
    painter.fillRect(r, face);

    const QColor border = theme.GetColor(CZuUiTheme::Border);
    const bool flat = m_flags & FlatButton;
    int shift = 0;
    if (flat) {
        const int x = (m_flags & ButtonLeft) ? r.right() : r.left();
        painter.fillRect(QRect(x, r.top(), 1, r.height()), border);
    } else {
        // A raised edge that sinks while pressed; the dots sink with it.
        const QColor light = face.lighter(theme.IsDarkTheme() ? 150 : 112);
        const QColor dark = theme.IsDarkTheme() ? face.darker(160) : border;
        const QColor topLeft = m_buttonPressed ? dark : light;
        const QColor bottomRight = m_buttonPressed ? light : dark;
        painter.fillRect(QRect(r.left(), r.top(), r.width(), 1), topLeft);
        painter.fillRect(QRect(r.left(), r.top(), 1, r.height()), topLeft);
        painter.fillRect(QRect(r.left(), r.bottom(), r.width(), 1), bottomRight);
        painter.fillRect(QRect(r.right(), r.top(), 1, r.height()), bottomRight);
        shift = m_buttonPressed ? 1 : 0;
    }

    const QColor ink =
        inkOn(face, theme.GetColor(isEnabled() ? CZuUiTheme::Text : CZuUiTheme::DisabledText));
    const int diameter = r.width() / 5;
    const int step = r.width() / 4;
    const int cx = r.left() + r.width() / 2 + shift;
    const int cy = r.top() + r.height() / 2 + shift;
    painter.save();
    if (diameter >= 2) {
        // Whole-pixel boxes keep the dots round and sharp at every scale.
        painter.setRenderHint(QPainter::Antialiasing, true);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        for (int i = -1; i <= 1; ++i)
            painter.drawEllipse(
                QRectF(cx + i * step - diameter / 2, cy - diameter / 2, diameter, diameter));
    } else {
        for (int i = -1; i <= 1; ++i)
            painter.fillRect(QRect(cx + i * step, cy, 1, 1), ink);
    }
    painter.restore();
}

void CInPlaceFileEditCtrl::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_buttonRect.contains(event->position().toPoint())) {
        // The press grabs the mouse until the release, which browses only over the button.
        m_buttonDown = m_buttonPressed = true;
        update(m_buttonRect);
        event->accept();
        return;
    }
    CInPlaceEditCtrl::mousePressEvent(event);
}

void CInPlaceFileEditCtrl::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second click of a double click on the button is a press like the first.
    if (event->button() == Qt::LeftButton && m_buttonRect.contains(event->position().toPoint())) {
        mousePressEvent(event);
        return;
    }
    CInPlaceEditCtrl::mouseDoubleClickEvent(event);
}

void CInPlaceFileEditCtrl::mouseMoveEvent(QMouseEvent* event)
{
    const bool over = m_buttonRect.contains(event->position().toPoint());
    if (m_buttonDown) {
        if (over != m_buttonPressed) {
            m_buttonPressed = over;
            update(m_buttonRect);
        }
        event->accept();
        return;
    }
    if (over != m_buttonHover) {
        m_buttonHover = over;
        setCursor(over ? Qt::ArrowCursor : Qt::IBeamCursor);
        update(m_buttonRect);
    }
    CInPlaceEditCtrl::mouseMoveEvent(event);
}

void CInPlaceFileEditCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_buttonDown || event->button() != Qt::LeftButton) {
        CInPlaceEditCtrl::mouseReleaseEvent(event);
        return;
    }
    const bool over = m_buttonRect.contains(event->position().toPoint());
    m_buttonDown = m_buttonPressed = false;
    update(m_buttonRect);
    event->accept();
    if (over)
        Browse();
}

void CInPlaceFileEditCtrl::leaveEvent(QEvent* event)
{
    CInPlaceEditCtrl::leaveEvent(event);
    if (m_buttonHover) {
        m_buttonHover = false;
        setCursor(Qt::IBeamCursor);
        update(m_buttonRect);
    }
}

QStringList CInPlaceFileEditCtrl::droppedFiles(const QMimeData* data) const
{
    QStringList files;
    if (!data || !data->hasUrls())
        return files;
    const bool several = isFileMode() && (m_flags & MultipleFiles);
    for (const QUrl& url : data->urls()) {
        if (!url.isLocalFile())
            continue;
        files << url.toLocalFile();
        if (!several)
            break;
    }
    return files;
}

void CInPlaceFileEditCtrl::dragEnterEvent(QDragEnterEvent* event)
{
    if (droppedFiles(event->mimeData()).isEmpty()) {
        CInPlaceEditCtrl::dragEnterEvent(event);
        return;
    }
    event->acceptProposedAction();
}

void CInPlaceFileEditCtrl::dragMoveEvent(QDragMoveEvent* event)
{
    if (droppedFiles(event->mimeData()).isEmpty()) {
        CInPlaceEditCtrl::dragMoveEvent(event);
        return;
    }
    event->acceptProposedAction();
}

void CInPlaceFileEditCtrl::dropEvent(QDropEvent* event)
{
    const QStringList files = droppedFiles(event->mimeData());
    if (files.isEmpty()) {
        CInPlaceEditCtrl::dropEvent(event);
        return;
    }
    event->acceptProposedAction();
    QStringList paths;
    for (const QString& file : files)
        paths << PathName(file);
    propose(Proposal::Drop, CInPlaceFilePaths::JoinPaths(paths));
}

#include "views/XrefPropListCtrl.h"

#include "framework/ZuToolTipCtrl.h"
#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiRm.h"
#include "framework/ZuUiTheme.h"
#include "host/KvUiNavDialog.h"
#include "items/XrefProperty.h"
#include "resources/ResourceIds.h"
#include "resources/TroveResources.h"
#include "views/ViewPanel_p.h"
#include "views/editors/InPlaceEditCtrl.h"
#include "views/editors/InPlaceFileEditCtrl.h"
#include "views/editors/LabelEditInfo_p.h"
#include "views/editors/XrefInPlaceComboBoxCtrl.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace {

// The divider can be grabbed this many pixels either side of the boundary between the columns.
constexpr int kDividerHalfWidth = 3;
// Neither column may be dragged or sized narrower than this, in device-independent pixels.
constexpr double kMinColumnDip = 30;
// Rows get this much more height than a line of text needs: room above and below the value
// for the editors' borders.
constexpr double kRowHeightFactor = 1.35;

bool isAll(Trove::XrefProperties property)
{
    return int(property) == CXrefPropListCtrl::kAllProperties;
}

} // namespace

CXrefPropListCtrl::CXrefPropListCtrl(QWidget* parent)
    : CZuUiThemedListCtrl(parent), m_toolTip(new CZuToolTipCtrl(this))
{
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setHeaderHidden(true);
    SetRowHeight(RowHeightFor(font()));
    InsertColumn(0, QString(), Qt::AlignLeft, CZuUiHiDpi::ScaleX(DefaultNameColumnDipWidth()));
    InsertColumn(1, QString(), Qt::AlignLeft, CZuUiHiDpi::ScaleX(DefaultValueColumnDipWidth()));
    // The pointer's shape over the divider is decided on every move.
    viewport()->setMouseTracking(true);
    loadSplitCursor();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            &CXrefPropListCtrl::loadSplitCursor);
    m_toolTip->Create(this);
    m_toolTip->Activate(true);
    callHostOnce();
}

CXrefPropListCtrl::~CXrefPropListCtrl()
{
    // The editors are children and outlive this part of the list by a little; they must not
    // report to it any more. A combo box is left to go with the children.
    if (m_editor) {
        disconnect(m_editor, nullptr, this, nullptr);
        if (!m_editorIsCombo)
            delete m_editor.data();
    }
}

int CXrefPropListCtrl::DefaultNameColumnDipWidth()
{
    return 110;
}

int CXrefPropListCtrl::DefaultValueColumnDipWidth()
{
    return 170;
}

int CXrefPropListCtrl::RowHeightFor(const QFont& font)
{
    const QFontMetrics metrics(font);
    return int((metrics.height() + std::max(0, metrics.leading())) * kRowHeightFactor);
}

void CXrefPropListCtrl::callHostOnce()
{
    if (m_hostCalled)
        return;
    CXrefPanelCtrl* panel = ViewPanel::FindPanel(this);
    if (!panel)
        return;
    m_hostCalled = true;
    // The host answers nothing the list uses; it only learns that the list is there.
    std::vector<int> widths;
    ViewPanel::HostCallback9(*panel, widths);
}

void CXrefPropListCtrl::loadSplitCursor()
{
    m_splitCursor =
        CZuUiRm::Cursor(CZuUiRmId(TroveUI::ResourceInstance(), TroveUI::Res::kSplitCursorId),
                        QPoint(16, 16), QCursor(Qt::SizeHorCursor));
    if (m_overDivider || m_dragging)
        viewport()->setCursor(m_splitCursor);
}

void CXrefPropListCtrl::SetProperties(const std::vector<CXrefProperty*>& properties)
{
    SetRedraw(false);
    DeleteAllItems();
    m_rows.clear();
    m_editable.clear();
    for (std::size_t i = 0; i < properties.size(); ++i) {
        CXrefProperty* property = properties[i];
        if (!property)
            continue;
        const int row = InsertItem(int(i), QString::fromStdWString(property->GetName()));
        if (row < 0)
            continue;
        SetItemData(row, reinterpret_cast<quintptr>(property));
        m_rows[property->GetProperty()] = row;
        SetItemText(row, 1, QString::fromStdWString(property->GetValue()));
    }
    SetEditable(XrefProperties(kAllProperties), true);
    SetRedraw(true);
}

void CXrefPropListCtrl::SetPropertyValue(XrefProperties property, const std::wstring& value)
{
    const auto row = m_rows.find(property);
    if (row == m_rows.end())
        return;
    SetItemText(row->second, 1, QString::fromStdWString(value));
}

void CXrefPropListCtrl::SetEditable(XrefProperties property, bool editable)
{
    if (isAll(property)) {
        for (int id = 0; id < kAllProperties; ++id)
            m_editable[XrefProperties(id)] = editable;
    } else {
        m_editable[property] = editable;
    }
    viewport()->update();
}

bool CXrefPropListCtrl::IsEditable(const CXrefProperty& property) const
{
    const XrefProperties id = property.GetProperty();
    if (int(id) < 0 || int(id) >= kAllProperties)
        return false;
    const auto allowed = m_editable.find(id);
    return allowed != m_editable.end() && allowed->second &&
           property.GetEditStyle() != CXrefProperty::NotEditable;
}

int CXrefPropListCtrl::RowOf(XrefProperties property) const
{
    const auto row = m_rows.find(property);
    return row == m_rows.end() ? -1 : row->second;
}

CXrefProperty* CXrefPropListCtrl::PropertyAt(int row) const
{
    return reinterpret_cast<CXrefProperty*>(GetItemData(row));
}

void CXrefPropListCtrl::SetBrowseSettings(const QString& filter, const QString& defaultExtension,
                                          const QString& caption, bool previewPresent,
                                          bool browseOptions)
{
    m_browseFilter = filter;
    m_browseDefaultExtension = defaultExtension;
    m_browseCaption = caption;
    m_browsePreview = previewPresent;
    m_browseOptions = browseOptions;
}

// --- Editing ------------------------------------------------------------------------------------

bool CXrefPropListCtrl::openEditor(int row)
{
    CXrefProperty* property = PropertyAt(row);
    if (!property || !EnsureVisible(row, true))
        return false;
    const QString current = GetItemText(row, 1);
    // An empty value leaves the text of the edit before in place.
    if (!current.isEmpty())
        m_textBefore = current.toStdWString();
    QRect rect = editorRect(row);
    if (!m_editorIsCombo) {
        destroyEditor();
    } else if (m_editor) {
        // A combo box closes and goes by itself; it only must not end the new edit.
        disconnect(m_editor, nullptr, this, nullptr);
        m_editor = nullptr;
    }
    const Qt::Alignment alignment = GetColumnFormat(1) | Qt::AlignVCenter;
    // Each editor is named after the property it edits.
    const QString propertyName = GetItemText(row, 0);

    switch (property->GetEditStyle()) {
    case CXrefProperty::TextEdit: {
        auto* editor = new CInPlaceEditCtrl(row, 1, current);
        editor->setAccessibleName(propertyName);
        editor->setAlignment(alignment);
        connect(editor, &CInPlaceEditCtrl::beginLabelEdit, this,
                &CXrefPropListCtrl::onBeginLabelEdit);
        connect(editor, &CInPlaceEditCtrl::endLabelEdit, this, &CXrefPropListCtrl::onEndLabelEdit);
        m_editor = editor;
        m_editorIsCombo = false;
        editor->Create(rect, viewport(), TextEditorId);
        break;
    }
    case CXrefProperty::FileEdit: {
        auto* editor = new CInPlaceFileEditCtrl(row, 1, current, kFileEditorFlags);
        editor->setAccessibleName(propertyName);
        editor->setAlignment(alignment);
        editor->SetButtonColor(QColor::fromRgb(QRgb(kFileButtonColor)));
        // Kept after its edit ends, hidden, until the next edit or the list's end.
        editor->SetDeletesItself(false);
        connect(editor, &CInPlaceEditCtrl::beginLabelEdit, this,
                &CXrefPropListCtrl::onBeginLabelEdit);
        connect(editor, &CInPlaceEditCtrl::endLabelEdit, this, &CXrefPropListCtrl::onEndLabelEdit);
        connect(editor, &CInPlaceFileEditCtrl::browseDialogOpening, this,
                [this, editor] { onBrowseOpening(editor); });
        connect(editor, &CInPlaceFileEditCtrl::browseDialogClosed, this,
                &CXrefPropListCtrl::onBrowseClosed);
        m_editor = editor;
        m_editorIsCombo = false;
        editor->Create(rect, viewport(), FileEditorId);
        break;
    }
    case CXrefProperty::ComboBox: {
        auto* editor = new CXrefInPlaceComboBoxCtrl(row, 1, current);
        editor->setAccessibleName(propertyName);
        // The selection field is as high as the row it covers.
        rect.setTop(GetSubItemRect(row, 1).top());
        rect.setHeight(RowHeight());
        connect(editor, &CInPlaceComboBoxCtrl::beginLabelEdit, this,
                &CXrefPropListCtrl::onBeginLabelEdit);
        connect(editor, &CInPlaceComboBoxCtrl::endLabelEdit, this,
                &CXrefPropListCtrl::onEndLabelEdit);
        m_editor = editor;
        m_editorIsCombo = true;
        editor->Create(rect, viewport(), ComboEditorId);
        break;
    }
    default:
        return false;
    }
    m_editorOpen = true;
    return true;
}

QRect CXrefPropListCtrl::editorRect(int row)
{
    QRect cell = GetSubItemRect(row, 1);
    if (cell.left() < 0 || cell.left() >= viewport()->width()) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + cell.left());
        cell = GetSubItemRect(row, 1);
    }
    cell.setLeft(cell.left() + 1);
    cell &= viewport()->rect();
    return cell.adjusted(0, 1, 0, -1);
}

void CXrefPropListCtrl::destroyEditor()
{
    if (!m_editor)
        return;
    QWidget* editor = m_editor;
    m_editor = nullptr;
    disconnect(editor, nullptr, this, nullptr);
    delete editor;
}

void CXrefPropListCtrl::onBeginLabelEdit(const LabelEditInfo& info)
{
    if (info.item < 0 || info.item >= GetItemCount() || m_editColumn != 1)
        return;
    const CXrefProperty* property = PropertyAt(m_editRow);
    if (!property || !IsEditable(*property))
        return;
    emit PropertyEditStarting(XrefProperties(m_editRow), m_textBefore);
}

void CXrefPropListCtrl::onEndLabelEdit(const LabelEditInfo& info)
{
    if (m_editColumn != 1 || !m_editorOpen)
        return;
    m_editorOpen = false;
    const int row = m_editRow;
    const QPointer<QWidget> editor = m_editor;
    const QPointer<CXrefPropListCtrl> self(this);
    if (info.text) {
        SetItemText(row, 1, *info.text);
        if (CXrefProperty* property = PropertyAt(row))
            property->SetValue(info.text->toStdWString());
        emit PropertyEdited(XrefProperties(row), m_textBefore, info.text->toStdWString());
    } else {
        emit PropertyEditAborted(XrefProperties(row));
    }
    if (!self)
        return;
    if (editor)
        editor->hide();
    m_editColumn = 0;
}

void CXrefPropListCtrl::onBrowseOpening(CInPlaceFileEditCtrl* editor)
{
    unsigned flags = editor->GetFlags() | kBrowseOwnerFlag;
    if (m_browseOptions)
        flags |= kBrowseOptionsFlag;
    else
        flags &= ~kBrowseOptionsFlag;
    editor->SetFlags(flags);
    if (CKvUiNavDialog* dialog = editor->NavDialog()) {
        dialog->SetFilter(m_browseFilter);
        dialog->SetDefaultExtension(m_browseDefaultExtension);
        dialog->SetCaption(m_browseCaption);
        dialog->SetFlag(CKvUiNavDialog::PreviewPane, m_browsePreview);
    }
    // While the dialog is open the edit is out of the list's hands: the end of it that the
    // editor may report meanwhile is not acted on.
    ++m_editColumn;
}

void CXrefPropListCtrl::onBrowseClosed()
{
    --m_editColumn;
}

// --- Mouse, sizing, tips ------------------------------------------------------------------------

bool CXrefPropListCtrl::onDivider(int x) const
{
    const int edge = GetColumnWidth(0) - horizontalScrollBar()->value();
    return x >= edge - kDividerHalfWidth && x <= edge + kDividerHalfWidth;
}

void CXrefPropListCtrl::mousePressEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (event->button() == Qt::LeftButton && onDivider(pos.x())) {
        // The press on the divider belongs to the drag alone; the view keeps the mouse until the
        // release.
        m_dragging = true;
        m_lastX = pos.x() + horizontalScrollBar()->value();
        setOverDivider(true);
        event->accept();
        return;
    }
    m_toolTip->RelayEvent(viewport(), event);
    CZuUiThemedListCtrl::mousePressEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    const QPair<int, int> hit = SubItemHitTest(pos);
    if (hit.first < 0)
        return;
    if (GetSelectedRow() != hit.first)
        SelectRow(hit.first);
    const CXrefProperty* property = PropertyAt(hit.first);
    if (hit.second != 1 || !property || !IsEditable(*property))
        return;
    m_editRow = hit.first;
    m_editColumn = 1;
    openEditor(hit.first);
}

void CXrefPropListCtrl::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && !m_editorOpen &&
        (key == Qt::Key_F2 || key == Qt::Key_Return || key == Qt::Key_Enter)) {
        const int row = currentIndex().isValid() ? currentIndex().row() : GetSelectedRow();
        const CXrefProperty* property = PropertyAt(row);
        if (property && IsEditable(*property)) {
            if (GetSelectedRow() != row)
                SelectRow(row);
            m_editRow = row;
            m_editColumn = 1;
            openEditor(row);
            event->accept();
            return;
        }
    }
    CZuUiThemedListCtrl::keyPressEvent(event);
}

void CXrefPropListCtrl::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (m_dragging) {
        event->accept();
        const int margin = CZuUiHiDpi::ScaleX(kMinColumnDip);
        if (pos.x() < margin || pos.x() > viewport()->width() - margin)
            return;
        const int x = pos.x() + horizontalScrollBar()->value();
        const int delta = x - m_lastX;
        if (delta == 0)
            return;
        // The two columns keep their sum: the one that shrinks gives up its room first.
        const int name = GetColumnWidth(0) + delta;
        const int value = GetColumnWidth(1) - delta;
        if (delta < 0) {
            SetColumnWidth(0, std::max(0, name));
            SetColumnWidth(1, std::max(0, value));
        } else {
            SetColumnWidth(1, std::max(0, value));
            SetColumnWidth(0, std::max(0, name));
        }
        if (m_editor && m_editorOpen)
            m_editor->move(m_editor->x() + delta, m_editor->y());
        m_lastX = x;
        return;
    }
    setOverDivider(onDivider(pos.x()));
    updateToolTip(event);
    CZuUiThemedListCtrl::mouseMoveEvent(event);
}

void CXrefPropListCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_dragging && event->button() == Qt::LeftButton) {
        m_dragging = false;
        setOverDivider(false);
        event->accept();
        return;
    }
    CZuUiThemedListCtrl::mouseReleaseEvent(event);
}

void CXrefPropListCtrl::updateToolTip(QMouseEvent* event)
{
    const QPair<int, int> hit = SubItemHitTest(event->position().toPoint());
    if (hit.first < 0 || !IsTextClipped(hit.first, hit.second)) {
        m_toolTip->Pop();
        return;
    }
    const unsigned id = unsigned(hit.first) * 10 + 1 + unsigned(hit.second);
    const QString text =
        GetItemText(hit.first, 0) + QStringLiteral(":\n") + GetItemText(hit.first, 1);
    m_toolTip->AddTool(viewport(), text, GetSubItemRect(hit.first, hit.second), id);
    m_toolTip->RelayEvent(viewport(), event);
}

void CXrefPropListCtrl::setOverDivider(bool over)
{
    if (over == m_overDivider)
        return;
    m_overDivider = over;
    viewport()->setCursor(over ? m_splitCursor : QCursor(Qt::ArrowCursor));
    // A press on the divider must not take the focus from an open editor: the edit stays open
    // while its column is resized, and the editor moves with the divider.
    setFocusPolicy(over ? Qt::TabFocus : Qt::StrongFocus);
}

bool CXrefPropListCtrl::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave && !m_dragging)
        setOverDivider(false);
    return CZuUiThemedListCtrl::viewportEvent(event);
}

void CXrefPropListCtrl::resizeEvent(QResizeEvent* event)
{
    const int width = viewport()->width();
    const int defaults = CZuUiHiDpi::ScaleX(DefaultNameColumnDipWidth()) +
                         CZuUiHiDpi::ScaleX(DefaultValueColumnDipWidth());
    // Too narrow a list, or one whose divider is being dragged, is left exactly as it is: its
    // columns would otherwise jump while the pane is being collapsed or the divider moves.
    if (m_dragging || width < defaults)
        return;
    const int valueRoom = CZuUiHiDpi::ScaleX(kMinColumnDip);
    if (GetColumnWidth(0) > width - valueRoom)
        SetColumnWidth(0, std::max(0, width - valueRoom));
    // Once the new size has settled the value column takes what is left of it.
    QMetaObject::invokeMethod(this, &CXrefPropListCtrl::stretchValueColumn, Qt::QueuedConnection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    CZuUiThemedListCtrl::resizeEvent(event);
    if (m_editor && m_editorOpen && m_editor->isVisible() && m_editRow >= 0 &&
        m_editRow < GetItemCount())
        m_editor->setGeometry(editorRect(m_editRow));
}

void CXrefPropListCtrl::stretchValueColumn()
{
    SetColumnWidth(1, std::max(0, viewport()->width() - GetColumnWidth(0)));
}

void CXrefPropListCtrl::scrollContentsBy(int dx, int dy)
{
    // A scroll moves the rows from under an open editor: the edit ends first.
    if (m_editor && m_editor->hasFocus())
        setFocus(Qt::OtherFocusReason);
    CZuUiThemedListCtrl::scrollContentsBy(dx, dy);
}

bool CXrefPropListCtrl::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange)
        callHostOnce();
    return CZuUiThemedListCtrl::event(event);
}

void CXrefPropListCtrl::changeEvent(QEvent* event)
{
    CZuUiThemedListCtrl::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        SetRowHeight(RowHeightFor(font()));
}

QColor CXrefPropListCtrl::cellTextColor(int row, int column, bool selected) const
{
    const CXrefProperty* property = column == 1 ? PropertyAt(row) : nullptr;
    if (property && !IsEditable(*property)) {
        return CZuUiTheme::Instance().GetColor(selected ? CZuUiTheme::ReadOnlySelectedText
                                                        : CZuUiTheme::ReadOnlyText);
    }
    return CZuUiThemedListCtrl::cellTextColor(row, column, selected);
}

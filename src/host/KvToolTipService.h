#pragma once

#include "kvhostservices_export.h"

#include "host/KvNameDescriptionToolTipInfo.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QWidget> // complete: the inline accessors read a QPointer<QWidget>

#include <optional>

/// The host's rich tool-tip service: one popup for the whole process that shows a
/// KvNameDescriptionToolTipInfo beside a rectangle of the screen. The name is drawn in bold; the
/// description lines follow when details are wanted (and, so that a tip never says nothing, when
/// no thumbnail is); the thumbnail is drawn within the requested edge when a preview is wanted
/// and there is one. The popup follows the colour theme.
class KVHOSTSERVICES_EXPORT KvToolTipService : public QObject
{
    Q_OBJECT
public:
    /// The process-wide service, made on first use (an application object must exist).
    static KvToolTipService* Instance();

    /// Keeps a copy of @p info for the next Show; null means no tip.
    void SetToolTipInfo(const KvNameDescriptionToolTipInfo* info);
    bool HasToolTipInfo() const { return m_info.has_value(); }

    /// Shows the tip below @p screenRect (above it when the screen has no room below), kept
    /// inside the screen. Without a tip it only hides the popup.
    void Show(const QRect& screenRect);
    void Hide();
    bool IsShowing() const;

    /// The popup window; null until the first Show.
    QWidget* Popup() const { return m_popup; }

private:
    KvToolTipService();
    ~KvToolTipService() override;

    std::optional<KvNameDescriptionToolTipInfo> m_info;
    QPointer<QWidget> m_popup;
};

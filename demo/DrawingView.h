#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

struct DrawingContents;

/// The host's view of the open drawing: its name and the preview picture stored in it, standing
/// in for the drawing area of a CAD application.
class DrawingView : public QWidget
{
public:
    explicit DrawingView(QWidget* parent = nullptr);

    /// Shows the drawing at @p path with @p contents' preview; a drawing without one shows its
    /// name only.
    void Show(const QString& path, const DrawingContents& contents);
    const QString& Title() const { return m_title; }
    bool HasPicture() const { return !m_picture.isNull(); }

    QSize sizeHint() const override { return {560, 480}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_title;
    QImage m_picture;
};

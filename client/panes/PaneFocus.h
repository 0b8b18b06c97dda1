#pragma once

#include <QPointer>
#include <QWidget>

/// A ring inside the edge of the pane that the keys work on, for who works without a mouse. Nothing else of
/// it lies over the picture, and the mouse doesn't see it.
class PaneFocus : public QWidget
{
    Q_OBJECT

public:
    PaneFocus();

    /// Lies over this pane's picture from now on; null for none.
    void showOn(QWidget* picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QPointer<QWidget> m_place;
};

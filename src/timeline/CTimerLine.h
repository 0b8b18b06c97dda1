#pragma once

#include "timeline/StripColumns.h"

#include <QFrame>

#include <memory>

/// The strip under the ticks: it shows one colour per unit of the scale, as runs of equal colour from left to
/// right.
class CTimerLine : public QFrame
{
    Q_OBJECT

public:
    CTimerLine(QWidget* parent, int nMode);

    /// Makes room for nCount colours, black until SetColors; a count below 1 leaves nothing to draw.
    void SetCount(int nCount);

    /// Copies as many colours as SetCount told, each a QRgb whose top byte has no effect. Null does nothing.
    void SetColors(const unsigned int* pColors);

Q_SIGNALS:
    /// A double click of the left button. In spite of its name nColor is the click's x in the strip, in
    /// pixels.
    void sig_mouseDbClick(int nColor);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int m_nMode;
    std::unique_ptr<unsigned int[]> m_pColors;
    int m_nCount = 0;
    StripColumns m_columns;
};

#pragma once

#include "layouts/GridCursor.h"
#include "layouts/SplitEditor.h"

#include <QWidget>

class QPainter;

/// The surface on which the user shapes a layout. A click on a free stretch of a grid line cuts the cell
/// there in two, a click on a line of the layout takes it away; the hover shows beforehand what a click would
/// do.
///
/// By keys, once Tab has reached it: arrows go from square to square, Shift lets them select, Space joins the
/// selected cells, and Ctrl lets arrows cut the cell at that side of the square. Where the keys are is told
/// as the accessible description.
class CSplitWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CSplitWidget(QWidget* parent);

    /// Emits nothing.
    void SetMatrix(const SplitMatrix& m);

    /// Sets the number of rows (kind 0) or columns (kind 1), 1 to 8; any other call does nothing.
    void SetGridSize(int kind, int value);

    SplitMatrix m_matrix; ///< the layout being edited; always a complete tiling if SetMatrix() got one

Q_SIGNALS:
    /// m_matrix has changed, or may have.
    void sig_update();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool HitTest(const QPoint& pos);
    bool ClassifyHit();
    bool ExtendSegment();
    void WidenSegment();
    void EraseSegment();
    void PreviewErase(QPainter& painter);
    void EmitUpdate();
    SplitSegment Candidate() const;
    void SetCandidate(const SplitSegment& segment);
    QLine PixelsOf(const QLine& positions) const;
    QLine PixelsOf(const SplitSegment& segment) const;
    void DrawGrid(QPainter& painter) const;
    void DrawLayout(QPainter& painter) const;
    void DrawPreview(QPainter& painter);
    void DrawCursor(QPainter& painter) const;
    QRect PixelsOf(const QRect& squares) const;
    void PressArrow(const QPoint& way, Qt::KeyboardModifiers modifiers);
    void JoinSelected();
    void TellCursor();

    QPoint m_lastPos; ///< of the last HitTest()
    SplitMatrix m_previewMatrix;
    bool m_horizontal = false; ///< the candidate segment runs along a row line
    int m_hitRow = 0;          ///< position of the row line near the cursor, 0 for none
    int m_hitCol = 0;          ///< position of the column line near the cursor, 0 for none
    int m_rowStart = 0;        ///< the candidate segment, in matrix positions
    int m_rowEnd = 0;
    int m_colStart = 0;
    int m_colEnd = 0;
    GridCursor m_cursor; ///< where the keys are
};

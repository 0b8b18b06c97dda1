#include "layouts/CSplitWidget.h"

#include "common/Accessible.h"
#include "text/LangText.h"

#include <QAccessibleWidget>
#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

namespace {

QAccessibleInterface* MakeGrid(const QString& className, QObject* object)
{
    if (className != QLatin1String("CSplitWidget"))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Canvas);
}

/// The step of an arrow key, null for any other.
QPoint WayOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return QPoint(-1, 0);
    case Qt::Key_Right:
        return QPoint(1, 0);
    case Qt::Key_Up:
        return QPoint(0, -1);
    case Qt::Key_Down:
        return QPoint(0, 1);
    }
    return QPoint();
}

} // namespace

CSplitWidget::CSplitWidget(QWidget* parent) : QWidget(parent)
{
    static const AccessibleFactory s_factory(&MakeGrid);
    setMouseTracking(true);
    // A click must not show where the keys are.
    setFocusPolicy(Qt::TabFocus);
}

void CSplitWidget::SetMatrix(const SplitMatrix& m)
{
    m_matrix = m;
    m_cursor = GridCursor();
    TellCursor();
    update();
}

void CSplitWidget::SetGridSize(int kind, int value)
{
    if (!SplitEditor::Resize(m_matrix, kind, value))
        return;
    m_cursor.Clamp(m_matrix);
    EmitUpdate();
}

void CSplitWidget::mousePressEvent(QMouseEvent* event)
{
    if (!HitTest(event->pos()))
        return;
    if (ClassifyHit()) {
        WidenSegment();
        EraseSegment();
    } else if (ExtendSegment()) {
        SplitEditor::AddLine(m_matrix, Candidate());
    }
    EmitUpdate();
}

void CSplitWidget::mouseMoveEvent(QMouseEvent*)
{
    update();
}

void CSplitWidget::leaveEvent(QEvent*)
{
    update();
}

void CSplitWidget::focusInEvent(QFocusEvent* event)
{
    TellCursor();
    QWidget::focusInEvent(event);
}

void CSplitWidget::keyPressEvent(QKeyEvent* event)
{
    const QPoint way = WayOf(event->key());
    if (!way.isNull())
        PressArrow(way, event->modifiers());
    else if (event->key() == Qt::Key_Space)
        JoinSelected();
    else
        QWidget::keyPressEvent(event);
}

void CSplitWidget::PressArrow(const QPoint& way, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ControlModifier) {
        if (GridKeys::Cut(m_matrix, m_cursor.at, way))
            EmitUpdate();
        return;
    }
    m_cursor.Step(m_matrix, way, modifiers & Qt::ShiftModifier);
    TellCursor();
    update();
}

void CSplitWidget::JoinSelected()
{
    if (!GridKeys::Join(m_matrix, m_cursor.Selected(m_matrix)))
        return;
    m_cursor.anchor = m_cursor.at;
    EmitUpdate();
}

/// A reader of the screen tells it when it changes.
void CSplitWidget::TellCursor()
{
    const QString row = LangText("row %1").arg(m_cursor.at.y() + 1);
    const QString column = LangText("column %1").arg(m_cursor.at.x() + 1);
    const QString pane = LangText("Pane %1").arg(GridKeys::PaneAt(m_matrix, m_cursor.at) + 1);
    setAccessibleDescription(row + ", " + column + ", " + pane);
}

void CSplitWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor("#383e4a"));
    DrawGrid(painter);
    DrawLayout(painter);
    DrawPreview(painter);
    if (hasFocus())
        DrawCursor(painter);
}

bool CSplitWidget::HitTest(const QPoint& pos)
{
    m_lastPos = pos;
    SplitHit hit;
    const bool isNear = SplitEditor::HitTest(m_matrix, size(), pos, hit);
    m_hitRow = hit.row;
    m_hitCol = hit.col;
    return isNear;
}

bool CSplitWidget::ClassifyHit()
{
    SplitSegment segment;
    const bool onLine =
        SplitEditor::ClassifyHit(m_matrix, size(), m_lastPos, SplitHit{m_hitRow, m_hitCol}, segment);
    SetCandidate(segment);
    return onLine;
}

bool CSplitWidget::ExtendSegment()
{
    SplitSegment segment = Candidate();
    const bool inGrid = SplitEditor::ExtendSegment(m_matrix, segment);
    SetCandidate(segment);
    return inGrid;
}

void CSplitWidget::WidenSegment()
{
    SetCandidate(SplitEditor::Widened(Candidate()));
}

void CSplitWidget::EraseSegment()
{
    SplitEditor::EraseSegment(m_matrix, Candidate());
}

void CSplitWidget::PreviewErase(QPainter& painter)
{
    m_previewMatrix = m_matrix;
    painter.setPen(QPen(QColor("#fa0000"), 2));
    for (const SplitVisit& visit : SplitEditor::PreviewErase(m_previewMatrix, Candidate())) {
        if (visit.hadLine)
            painter.drawLine(PixelsOf(visit.segment));
    }
}

SplitSegment CSplitWidget::Candidate() const
{
    return {m_horizontal, m_rowStart, m_colStart, m_rowEnd, m_colEnd};
}

void CSplitWidget::SetCandidate(const SplitSegment& segment)
{
    m_horizontal = segment.horizontal;
    m_rowStart = segment.rowStart;
    m_rowEnd = segment.rowEnd;
    m_colStart = segment.colStart;
    m_colEnd = segment.colEnd;
}

void CSplitWidget::EmitUpdate()
{
    const QPointer<CSplitWidget> alive(this);
    Q_EMIT sig_update();
    if (!alive)
        return;
    TellCursor();
    update();
}

QLine CSplitWidget::PixelsOf(const QLine& positions) const
{
    const QSize pitch = SplitEditor::Pitch(m_matrix, size());
    return QLine(positions.x1() * pitch.width() / 2, positions.y1() * pitch.height() / 2,
                 positions.x2() * pitch.width() / 2, positions.y2() * pitch.height() / 2);
}

QLine CSplitWidget::PixelsOf(const SplitSegment& segment) const
{
    return PixelsOf(QLine(segment.colStart, segment.rowStart, segment.colEnd, segment.rowEnd));
}

void CSplitWidget::DrawGrid(QPainter& painter) const
{
    painter.setPen(QPen(QColor("#586f1b"), 1, Qt::DotLine));
    for (int row = 2; row < m_matrix.LastRow(); row += 2)
        painter.drawLine(PixelsOf(QLine(0, row, m_matrix.LastCol(), row)));
    for (int col = 2; col < m_matrix.LastCol(); col += 2)
        painter.drawLine(PixelsOf(QLine(col, 0, col, m_matrix.LastRow())));
}

void CSplitWidget::DrawLayout(QPainter& painter) const
{
    painter.setPen(QPen(QColor("#a4c746"), 2));
    for (const QLine& line : SplitLines::Inner(m_matrix))
        painter.drawLine(PixelsOf(line));
}

void CSplitWidget::DrawPreview(QPainter& painter)
{
    const QPoint pos = mapFromGlobal(QCursor::pos());
    if (!QRect(0, 0, width() + 1, height() + 1).contains(pos) || !HitTest(pos))
        return;
    if (ClassifyHit()) {
        WidenSegment();
        PreviewErase(painter);
    } else if (ExtendSegment()) {
        painter.setPen(QPen(QColor("#00fa00"), 2, Qt::DashLine));
        painter.drawLine(PixelsOf(Candidate()));
    }
}

QRect CSplitWidget::PixelsOf(const QRect& squares) const
{
    const QSize pitch = SplitEditor::Pitch(m_matrix, size());
    return QRect(squares.x() * pitch.width(), squares.y() * pitch.height(), squares.width() * pitch.width(),
                 squares.height() * pitch.height());
}

void CSplitWidget::DrawCursor(QPainter& painter) const
{
    const QRect selected = m_cursor.Selected(m_matrix);
    painter.fillRect(PixelsOf(selected).adjusted(2, 2, -2, -2), QColor(255, 255, 255, 45));
    painter.setPen(QPen(QColor("#ffffff"), 2));
    painter.drawRect(PixelsOf(QRect(m_cursor.at, QSize(1, 1))).adjusted(4, 4, -4, -4));
}

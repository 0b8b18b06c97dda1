#pragma once

#include <QLabel>
#include <QPointer>

class FrameCover;
class QTreeWidgetItem;

/// The rectangle of a pane that shows the frame, else the status text, else the idle background, and that
/// takes the drops of device rows. It paints by itself; of QLabel it keeps the frame and the palette
/// handling.
class QMyLabel : public QLabel
{
    Q_OBJECT

public:
    explicit QMyLabel(QWidget* parent);
    ~QMyLabel() override;

    /// Stores the status text, which shows only while no frame is set, and repaints if it is another one.
    void SetText(const QString& strText);

    /// 1 for the label of a tour pane, 0 for all others.
    void SetKind(int nKind);

    /// What shows the frame while the pane is in use; it is told of each frame.
    void SetCover(FrameCover* pCover);

    bool HasFrame() const { return m_pImage; }

    /// Shows the part of the frame that lies in `source`, all of it if none does, and keeps a reference to
    /// the frame until another one or none takes its place; a null one clears. It shows also while updates
    /// are off. A new size of the video, of which an empty one is that of the whole frame, is told by
    /// sig_VideoResize first. May be deleted in that, and what is shown or cleared in that stays.
    void SetFrame(const QImage& frame, const QRect& source, const QSize& videoSize = QSize());

    /// Where in the whole frame, if it were as large as the label, the point of the label lies. The point
    /// itself unless SetFrame() shows a part.
    QPoint InWholeFrame(const QPoint& pt) const;

    /// Paints the frame, of which there must be one, in a widget of the label's size that is in a paint
    /// event: onto the device that Qt gives the widget for that, at its place there, or by a painter on the
    /// widget if there is no such device.
    void PaintFrameOn(QWidget& widget, QPaintDevice* pDevice, const QPoint& origin) const;

    /// Paints the label's border there, which a sheet may have given it.
    void PaintBorderOn(QWidget& widget);

    /// Loads the idle background of all labels if the file exists. Counts as loaded in either case.
    static void SetBackground(const QString& strPath);

    /// The idle background; null until one has been loaded.
    static QImage* s_pBackground;

    /// A load of the background was attempted.
    static bool s_bBackgroundLoaded;

Q_SIGNALS:
    /// The pane is to be closed.
    void sig_sendClose();

    /// An accepted device row was dropped.
    void sig_DragEvent(QTreeWidgetItem* pItem);

    /// The video's width and height have changed.
    void sig_VideoResize(int nWidth, int nHeight);

public Q_SLOTS:
    /// Shows the frame of nWidth by nHeight RGB888 pixels at the address dwBuffer, each row starting on a
    /// 32-bit boundary; 0 clears the frame. The pixels aren't copied: they must stay valid until the next
    /// call. A size that no image can have clears the frame.
    void slot_BufferChange(ulong dwBuffer, int nWidth, int nHeight);

protected:
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dragMoveEvent(QDragMoveEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;

private:
    bool TellSize(const QSize& size);
    void ShowImage(QImage* pImage, bool bPaint);
    void DeclareOpaque();
    void PaintText(QPainter& painter) const;
    void PaintBackground(QPainter& painter) const;
    void JudgeDrag(QDropEvent* pEvent) const;

    QImage* m_pImage = nullptr;
    QImage m_held;      ///< what SetFrame() gave; null for a frame of slot_BufferChange()
    QRect m_source;     ///< the part of it that shows
    QSize m_resizeTold; ///< by SetFrame(), since it last cleared
    uint m_nShown = 0;  ///< changes with every frame, shown or cleared
    QPointer<FrameCover> m_pCover;
    QString m_strText;
    int m_nKind = 0;
};

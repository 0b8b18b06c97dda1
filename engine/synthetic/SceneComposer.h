#pragma once

#include "synthetic/Caption.h"
#include "synthetic/SceneArt.h"
#include "synthetic/SceneSprite.h"

#include <QRectF>
#include <QVector>

#include <array>
#include <vector>

struct Frame;

/// Draws the pictures of one synthetic camera. A buffer that comes back with the serial of an earlier picture
/// is not drawn anew: only what moves is taken away and put where it is now.
class SceneComposer
{
public:
    static constexpr QSize ViewSize{704, 576};

    /// `number` is the camera's, from 1.
    SceneComposer(int number, Caption caption, std::shared_ptr<const SceneArt> art);
    static int sceneOf(int number);

    /// Draws the picture of `wallMs`, seen through `window`, which lies inside the scene, and gives it a new
    /// serial. The frame is of ViewSize.
    void compose(Frame& frame, qint64 wallMs, const QRectF& window);

private:
    static constexpr int SpriteCount = 2;
    static constexpr size_t Remembered = 8;
    using ColourTable = std::array<std::array<uchar, 256>, 3>;

    struct Drawn
    {
        quint64 serial = 0;
        int window = 0;
        std::array<QRect, SpriteCount + 1> moving; ///< the last one is the caption
    };

    void setWindow(const QRectF& window);
    QVector<QRect> staleRects(const Frame& frame, const Drawn& now) const;
    void restore(Frame& frame, const QRect& rect) const;
    QRect spriteRect(QPoint position) const;
    void drawSprite(Frame& frame, const QRect& rect, QPoint position, const QImage& picture) const;

    std::shared_ptr<const SceneArt> m_art;
    ColourTable m_colours;
    bool m_isMirrored;
    std::vector<SceneSprite> m_sprites;
    Caption m_caption;
    QRectF m_window;
    int m_windowNumber = 0;
    std::vector<int> m_columns; ///< by column of the view: the scene's column
    std::vector<int> m_rows;
    std::vector<int> m_sources; ///< by column of the view: where its pixel starts in a row of the backdrop
    std::array<Drawn, Remembered> m_drawn;
    quint64 m_serial = 0;
};

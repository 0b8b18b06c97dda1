#pragma once

#include "deck/CPaneDeck.h"

#include <QImage>
#include <QVector>

#include <vector>

class QMyLabel;

/// 64 frames of 704 by 576 pixels, each in memory of its own.
class WallFrames
{
public:
    static constexpr int COUNT = 64;
    static constexpr QSize SIZE{704, 576};

    WallFrames();
    QImage View(int index) const;

private:
    std::vector<std::vector<uchar>> m_pixels;
};

/// A deck of 64 panes on a screen of 1920 by 1080 pixels, whose labels can be made to paint otherwise.
class DeckWall : public QObject
{
public:
    enum Painting
    {
        OWN,    ///< as the label does
        IN_USE, ///< as a pane in use does, whose label has its updates off
        PLAIN,  ///< the frame is scaled and drawn, and Qt paints what lies under it
        NOTHING ///< not at all
    };

    explicit DeckWall(const WallFrames& frames);

    CPaneDeck& Deck() { return m_deck; }

    /// How many times a label has been painted.
    int Paints() const { return m_paints; }

    /// Hands each label its frame.
    void SetFrames(Painting painting);

    /// Has Qt paint what lies under each label too, or not.
    void SetOpaque(bool opaque);

    /// Has each label painted.
    void Repaint(Painting painting);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const WallFrames& m_frames;
    CPaneDeck m_deck;
    QVector<QMyLabel*> m_labels;
    Painting m_painting = OWN;
    int m_paints = 0;
};

/// Lets Qt paint all that has been asked for.
void PaintPending();

#include "DeckWall.h"
#include "Rounds.h"

#include <QApplication>
#include <QGraphicsPixmapItem>
#include <QGraphicsView>
#include <QLabel>
#include <QTextStream>

#include <memory>

namespace {

constexpr int COLUMNS = 8;
constexpr QSize PANE(1920 / COLUMNS, 1080 / COLUMNS);

QPoint PlaceOf(int index)
{
    return QPoint(index % COLUMNS * PANE.width(), index / COLUMNS * PANE.height());
}

QPixmap Scaled(const QImage& frame)
{
    return QPixmap::fromImage(frame.scaled(PANE, Qt::IgnoreAspectRatio, Qt::FastTransformation));
}

/// The wall as labels that are handed a scaled pixmap each.
class LabelWall
{
public:
    LabelWall()
    {
        m_window.resize(1920, 1080);
        for (int i = 0; i < WallFrames::COUNT; ++i) {
            m_labels.append(new QLabel(&m_window));
            m_labels.last()->setGeometry(QRect(PlaceOf(i), PANE));
        }
        m_window.show();
        PaintPending();
    }

    void Show(const WallFrames& frames)
    {
        for (int i = 0; i < m_labels.size(); ++i)
            m_labels[i]->setPixmap(Scaled(frames.View(i)));
        PaintPending();
    }

private:
    QWidget m_window;
    QVector<QLabel*> m_labels;
};

/// The wall as items of a scene.
class SceneWall
{
public:
    SceneWall() : m_view(&m_scene)
    {
        m_view.setFrameShape(QFrame::NoFrame);
        m_view.setFixedSize(1920, 1080);
        m_scene.setSceneRect(0, 0, 1920, 1080);
        for (int i = 0; i < WallFrames::COUNT; ++i) {
            m_items.append(m_scene.addPixmap(QPixmap()));
            m_items.last()->setPos(PlaceOf(i));
        }
        m_view.show();
        PaintPending();
    }

    /// The items scale their pixmaps when they are drawn, or get them scaled.
    void Show(const WallFrames& frames, bool scaled)
    {
        QTransform transform;
        if (!scaled)
            transform.scale(double(PANE.width()) / WallFrames::SIZE.width(),
                            double(PANE.height()) / WallFrames::SIZE.height());
        for (int i = 0; i < m_items.size(); ++i) {
            m_items[i]->setTransform(transform);
            m_items[i]->setPixmap(scaled ? Scaled(frames.View(i)) : QPixmap::fromImage(frames.View(i)));
        }
        PaintPending();
    }

private:
    QGraphicsScene m_scene;
    QGraphicsView m_view;
    QVector<QGraphicsPixmapItem*> m_items;
};

} // namespace

/// 64 frames on their way through the widgets to a screen of 1920 by 1080 pixels.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const WallFrames frames;
    DeckWall deck(frames);
    LabelWall labels;
    SceneWall scene;
    const auto show = [&](DeckWall::Painting painting) {
        deck.SetFrames(painting);
        PaintPending();
    };
    const QVector<Contender> contenders = {
        {"deck", [&] { show(DeckWall::OWN); }, [&] { show(DeckWall::OWN); }},
        {"deck of panes in use", [&] { show(DeckWall::IN_USE); }, [&] { show(DeckWall::IN_USE); }},
        {"deck whose labels paint the plain way", [&] { show(DeckWall::PLAIN); }},
        {"QLabel::setPixmap, scaled", [&] { labels.Show(frames); }},
        {"QGraphicsView, scaled by the items", [&] { scene.Show(frames, false); }},
        {"QGraphicsView, scaled before", [&] { scene.Show(frames, true); }},
    };
    const QVector<double> times = MedianTimes(contenders, 100);
    PrintTimes("64 frames of 704x576, shown once", contenders, times);
    QTextStream out(stdout);
    out << "  at 25 frames a second, share of one core:";
    for (double time : times)
        out << QString(" %1 %").arg(time * 25 / 1e4, 0, 'f', 1);
    out << "\n  " << deck.Paints() << " paints of labels of " << 1920 / COLUMNS << "x" << 1080 / COLUMNS
        << "\n";
    return 0;
}

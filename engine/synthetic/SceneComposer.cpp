#include "synthetic/SceneComposer.h"

#include "decode/Frame.h"
#include "synthetic/SceneRecipes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

/// Light of a camera: what each channel is multiplied by, and what is added.
struct Light
{
    double gain[3];
    double lift[3];
};

constexpr Light Lights[] = {
    {{1, 1, 1}, {0, 0, 0}},
    {{1, 0.78, 0.62}, {12, 0, 0}},
    {{0.42, 0.5, 0.62}, {0, 4, 18}},
    {{0.6, 0.6, 0.58}, {92, 92, 90}},
};
constexpr int LightCount = int(std::size(Lights));

std::vector<int> sampleLine(int count, double start, double length, int most)
{
    std::vector<int> line;
    line.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        line.push_back(qBound(0, int(std::floor(start + (i + 0.5) * length / count)), most - 1));
    return line;
}

int firstAtLeast(const std::vector<int>& line, int value)
{
    return int(std::lower_bound(line.begin(), line.end(), value) - line.begin());
}

/// What of some rectangles lies outside another one.
QVector<QRect> without(const QVector<QRect>& rects, const QRect& covered)
{
    QVector<QRect> left;
    const auto keep = [&left](int x1, int y1, int x2, int y2) {
        if (x1 <= x2 && y1 <= y2)
            left.append(QRect(QPoint(x1, y1), QPoint(x2, y2)));
    };
    for (const QRect& rect : rects) {
        const QRect common = rect & covered;
        if (common.isEmpty()) {
            keep(rect.left(), rect.top(), rect.right(), rect.bottom());
            continue;
        }
        keep(rect.left(), rect.top(), rect.right(), common.top() - 1);
        keep(rect.left(), common.bottom() + 1, rect.right(), rect.bottom());
        keep(rect.left(), common.top(), common.left() - 1, common.bottom());
        keep(common.right() + 1, common.top(), rect.right(), common.bottom());
    }
    return left;
}

} // namespace

SceneComposer::SceneComposer(int number, Caption caption, std::shared_ptr<const SceneArt> art)
    : m_art(std::move(art)), m_caption(std::move(caption))
{
    const int variant = (number - 1) / SceneRecipes::Count;
    const Light& light = Lights[variant % LightCount];
    m_isMirrored = (variant + variant / LightCount) % 2 == 1;
    for (size_t channel = 0; channel < 3; ++channel) {
        for (int value = 0; value < 256; ++value) {
            const double lit = value * light.gain[channel] + light.lift[channel];
            m_colours[channel][size_t(value)] = uchar(qBound(0, int(lit), 255));
        }
    }
    for (int i = 0; i < SpriteCount; ++i)
        m_sprites.emplace_back(unsigned(number * SpriteCount + i), SceneArt::WholeSize);
}

int SceneComposer::sceneOf(int number)
{
    return (number - 1) % SceneRecipes::Count;
}

void SceneComposer::compose(Frame& frame, qint64 wallMs, const QRectF& window)
{
    setWindow(window);
    Drawn now;
    now.serial = ++m_serial;
    now.window = m_windowNumber;
    now.moving.back() = m_caption.update(wallMs) & QRect(QPoint(), ViewSize);
    for (size_t i = 0; i < m_sprites.size(); ++i)
        now.moving[i] = spriteRect(m_sprites[i].position(wallMs));

    for (const QRect& rect : staleRects(frame, now))
        restore(frame, rect);
    for (size_t i = 0; i < m_sprites.size(); ++i) {
        const int step = m_sprites[i].step(wallMs, m_art->sprite.size());
        drawSprite(frame, now.moving[i], m_sprites[i].position(wallMs), m_art->sprite.at(step));
    }
    m_caption.draw(frame, wallMs);
    frame.serial = m_serial;
    m_drawn[m_serial % Remembered] = now;
}

/// What of the buffer's old picture is neither right nor drawn over.
QVector<QRect> SceneComposer::staleRects(const Frame& frame, const Drawn& now) const
{
    const Drawn& before = m_drawn[frame.serial % Remembered];
    if (frame.serial == 0 || before.serial != frame.serial || before.window != now.window)
        return {QRect(QPoint(), ViewSize)};
    QVector<QRect> stale;
    for (const QRect& old : before.moving) {
        QVector<QRect> left{old};
        for (const QRect& covered : now.moving)
            left = without(left, covered);
        stale += left;
    }
    return stale;
}

void SceneComposer::setWindow(const QRectF& window)
{
    if (window == m_window)
        return;
    m_window = window;
    ++m_windowNumber;
    const QSize whole = SceneArt::WholeSize;
    m_columns = sampleLine(ViewSize.width(), window.x(), window.width(), whole.width());
    m_rows = sampleLine(ViewSize.height(), window.y(), window.height(), whole.height());
    m_sources.clear();
    for (const int column : m_columns)
        m_sources.push_back(3 * (m_isMirrored ? whole.width() - 1 - column : column));
}

void SceneComposer::restore(Frame& frame, const QRect& rect) const
{
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const uchar* source = m_art->backdrop.constScanLine(m_rows[size_t(y)]);
        uchar* target = frame.row(y) + 3 * rect.left();
        for (int x = rect.left(); x <= rect.right(); ++x, target += 3) {
            const uchar* pixel = source + m_sources[size_t(x)];
            target[0] = m_colours[0][pixel[0]];
            target[1] = m_colours[1][pixel[1]];
            target[2] = m_colours[2][pixel[2]];
        }
    }
}

QRect SceneComposer::spriteRect(QPoint position) const
{
    const QPoint end = position + QPoint(SceneArt::SpriteSize.width(), SceneArt::SpriteSize.height());
    return {QPoint(firstAtLeast(m_columns, position.x()), firstAtLeast(m_rows, position.y())),
            QPoint(firstAtLeast(m_columns, end.x()) - 1, firstAtLeast(m_rows, end.y()) - 1)};
}

void SceneComposer::drawSprite(Frame& frame, const QRect& rect, QPoint position, const QImage& picture) const
{
    if (rect.isEmpty())
        return;
    const int first = m_columns[size_t(rect.left())] - position.x();
    const int last = m_columns[size_t(rect.right())] - position.x();
    const bool isUnscaled =
        last - first == rect.right() - rect.left() && m_window.width() == ViewSize.width();
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const uchar* source = picture.constScanLine(m_rows[size_t(y)] - position.y());
        uchar* target = frame.row(y);
        if (isUnscaled) {
            std::memcpy(target + 3 * rect.left(), source + 3 * first, size_t(rect.width()) * 3);
            continue;
        }
        for (int x = rect.left(); x <= rect.right(); ++x)
            std::memcpy(target + 3 * x, source + 3 * (m_columns[size_t(x)] - position.x()), 3);
    }
}

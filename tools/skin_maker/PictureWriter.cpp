#include "PictureWriter.h"

#include "SkinFiles.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

namespace {

/// A disabled glyph is told by its broken lines and hollow shapes, not by its colour alone. The gaps allow
/// for the round ends of the dashes.
QString WithBrokenLines(QString svg)
{
    static const QRegularExpression fill("fill=\"(currentColor|var\\(--record\\))\"");
    static const QRegularExpression width("stroke-width=\"([0-9.]+)\"");
    svg.replace(fill, "fill=\"none\"").replace("var(--record)", "currentColor");
    QRegularExpressionMatch match = width.match(svg);
    while (match.hasMatch()) {
        const QString dashes =
            QString(" stroke-dasharray=\"2.6 %1\"").arg(1.6 * match.captured(1).toDouble());
        svg.insert(match.capturedEnd(), dashes);
        match = width.match(svg, match.capturedEnd());
    }
    return svg;
}

QImage Rendered(const QString& svg, double angle, int scale = 1)
{
    QSvgRenderer renderer(svg.toUtf8());
    if (!renderer.isValid())
        GiveUp("not a picture: " + svg.left(200));
    const QSize size = renderer.defaultSize() * scale;
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(size.width() / 2.0, size.height() / 2.0);
    painter.rotate(angle);
    painter.translate(size.width() / -2.0, size.height() / -2.0);
    renderer.render(&painter, QRectF(QPointF(), size));
    return image;
}

/// Puts the picture on a ground with an edge that no pixel blends.
QImage OnSharpGround(const QImage& image, const QColor& ground)
{
    QImage result(image.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            result.setPixel(
                x, y, color.alpha() < 128 ? ground.rgb() : qRgb(color.red(), color.green(), color.blue()));
        }
    }
    return result;
}

bool IsOpaque(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 255)
                return false;
        }
    }
    return true;
}

} // namespace

PictureWriter::PictureWriter(const QString& source, const QString& target, const SkinTokens& tokens,
                             const QString& colors)
    : m_strSource(source), m_strTarget(target), m_tokens(tokens), m_strColors(colors)
{
    QDir().mkpath(target);
}

QString PictureWriter::Dressed(const QString& file, const QString& state) const
{
    QString svg = ReadText(m_strSource + "/" + file + ".svg");
    if (state == "disabled")
        svg = WithBrokenLines(svg);
    svg.replace("currentColor", "var(--line)");
    static const QRegularExpression variable("var\\(--([a-z-]+)\\)");
    for (QRegularExpressionMatch match = variable.match(svg); match.hasMatch(); match = variable.match(svg))
        svg.replace(match.captured(0), m_tokens.Value(m_strColors, match.captured(1), state));
    return svg;
}

QString PictureWriter::CheckedSource(const QString& folder, const QString& name) const
{
    const QString checked = folder + "/" + name + ".checked";
    return QFile::exists(m_strSource + "/" + checked + ".svg") ? checked : folder + "/" + name;
}

void PictureWriter::WriteGlyph(const QString& name, bool checkable) const
{
    const QString path = m_strTarget + "/" + name;
    WriteText(path + ".svg", Dressed("glyphs/" + name, "normal"));
    for (const char* state : {"hover", "pressed", "disabled"})
        WriteText(path + "_" + state + ".svg", Dressed("glyphs/" + name, state));
    if (!checkable)
        return;
    const QString checked = CheckedSource("glyphs", name);
    WriteText(path + "_checked.svg", Dressed(checked, "checked"));
    WriteText(path + "_checked_disabled.svg", Dressed(checked, "disabled"));
}

void PictureWriter::WritePicture(const QString& line, bool doubled) const
{
    const QStringList words = line.split(' ', Qt::SkipEmptyParts);
    const QString name = words.value(0);
    const QString svg = Dressed("pictures/" + words.value(1, name), "normal");
    const QImage image = Rendered(svg, words.value(2).toDouble());
    Save(IsOpaque(image) ? image.convertToFormat(QImage::Format_RGB32) : image, name);
    if (doubled)
        Save(Rendered(svg, words.value(2).toDouble(), 2), name + "@2x");
}

void PictureWriter::WriteSharpPicture(const QString& name) const
{
    const QColor ground(m_tokens.Value("sharp-ground"));
    const QString svg = Dressed("pictures/" + name, "normal");
    Save(OnSharpGround(Rendered(svg, 0), ground), name);
    Save(OnSharpGround(Rendered(svg, 0, 2), ground), name + "@2x");
}

void PictureWriter::WriteButton(const QString& name) const
{
    const QString checked = CheckedSource("pictures", name);
    for (const char* state : {"normal", "hover", "pressed", "disabled"}) {
        Save(Rendered(Dressed("pictures/" + name, state), 0), name + "_" + state);
        Save(Rendered(Dressed(checked, state), 0), name + "_checked_" + state);
    }
}

void PictureWriter::Save(const QImage& image, const QString& name) const
{
    const QString path = m_strTarget + "/" + name + ".png";
    if (!image.save(path))
        GiveUp("can't save " + path);
}

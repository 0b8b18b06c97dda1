#include "SkinTree.h"

#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <cmath>

namespace {

double Linear(double part)
{
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color)
{
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

} // namespace

QStringList SkinTree::Styles()
{
    return {"ResourcesBlank", "ResourcesWhite"};
}

QString SkinTree::Path(const QString& relative)
{
    return QString(SKIN_TREE) + "/" + relative;
}

QByteArray SkinTree::Content(const QString& relative)
{
    QFile file(Path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList SkinTree::PicturesOf(const QString& style, const QString& sheet)
{
    static const QRegularExpression url("url\\(\"\\.\\*\\?/([^\"]*)\"\\)");
    QStringList result;
    auto matches = url.globalMatch(QString::fromUtf8(Content(style + "/Qss/" + sheet)));
    while (matches.hasNext())
        result.append(matches.next().captured(1));
    return result;
}

QColor SkinTree::Token(const QString& style, const QString& name)
{
    const QString skin = style == "ResourcesBlank" ? "dark" : "light";
    const QSettings own(QString(SKIN_SOURCES) + "/" + skin + ".tokens", QSettings::IniFormat);
    const QSettings common(QString(SKIN_SOURCES) + "/common.tokens", QSettings::IniFormat);
    return QColor(own.value(name, common.value(name)).toString());
}

double SkinTree::Contrast(const QColor& first, const QColor& second)
{
    const double a = Luminance(first) + 0.05;
    const double b = Luminance(second) + 0.05;
    return qMax(a, b) / qMin(a, b);
}

QColor SkinTree::Over(const QColor& top, const QColor& ground)
{
    const double alpha = top.alphaF();
    return QColor::fromRgbF(top.redF() * alpha + ground.redF() * (1 - alpha),
                            top.greenF() * alpha + ground.greenF() * (1 - alpha),
                            top.blueF() * alpha + ground.blueF() * (1 - alpha));
}

#include "SkinTree.h"
#include "support/DeckTestCase.h"
#include "support/Pixels.h"

#include <QBitmap>
#include <QDir>
#include <QIcon>
#include <QPainter>
#include <QSettings>

class tst_skin_files : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyNamedFileIsThere();
    void sheetsFindTheirPictures();
    void configurationHasEveryKey();
    void cursorsReadOnAnyPicture();
    void alarmMaskKeepsTheWholeMark();
    void thumbFitsBelowTheStrip();
    void textHasContrast();
};

namespace {

const char* const Cursors[] = {"ptzcenter", "ptzup",       "ptzdown",    "ptzleft",      "ptzright",
                               "ptzleftup", "ptzleftdown", "ptzrightup", "ptzrightdown", "window_Drag"};

QImage Composed(const QImage& picture, const QColor& ground)
{
    QImage image(picture.size(), QImage::Format_RGB32);
    image.fill(ground);
    QPainter(&image).drawImage(0, 0, picture);
    return image;
}

} // namespace

void tst_skin_files::everyNamedFileIsThere()
{
    QStringList paths = {"Organization/Config.ini", "Resources/OEMStyle.conf",
                         "Resources/icons/IconSetting.Conf", "Resources/buttons/PicSetting.Conf"};
    for (const QString& style : SkinTree::Styles()) {
        for (const char* file :
             {"Qss/liveviewsheet.qss", "Qss/dialogsheet.qss", "Qss/playbacksheet.qss",
              "VideoWidget/ALARM.png", "LiveView/wndBackGround.png", "playback/PlaybackThumb.png"})
            paths.append(style + "/" + file);
    }
    for (const QString& path : qAsConst(paths)) {
        QVERIFY2(!SkinTree::Content(path).isEmpty(), qPrintable(path));
        QVERIFY2(!path.endsWith(".png") || !QImage(SkinTree::Path(path)).isNull(), qPrintable(path));
    }
}

void tst_skin_files::sheetsFindTheirPictures()
{
    for (const QString& style : SkinTree::Styles()) {
        for (const QString& sheet : QDir(SkinTree::Path(style + "/Qss")).entryList({"*.qss"})) {
            const QByteArray text = SkinTree::Content(style + "/Qss/" + sheet);
            QVERIFY2(!text.contains('@') && !text.contains('$'), qPrintable(sheet));
            QCOMPARE(SkinTree::PicturesOf(style, sheet).size(), text.count("url("));
            for (const QString& picture : SkinTree::PicturesOf(style, sheet))
                QVERIFY2(!QIcon(SkinTree::Path(style + "/" + picture)).pixmap(16).isNull(),
                         qPrintable(picture));
            QWidget widget;
            widget.setStyleSheet(QString::fromUtf8(text).replace(".*?", SkinTree::Path(style)));
            widget.ensurePolished();
        }
    }
}

void tst_skin_files::configurationHasEveryKey()
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"Organization/Config.ini", "style", "style"},
        {"Resources/OEMStyle.conf", "PaneDeck_MonitoBar",
         "BarPlace BarHeight ContentSpace stopbtnMinWidth stopbtnMaxWidth stopbtnHeight OneScreenbtnWidth "
         "OneScreenbtnHeight style"},
        {"Resources/OEMStyle.conf", "PaneDeck_Widget", "flushColor titleStyle style"},
        {"Resources/icons/IconSetting.Conf", "PTZ",
         "center up down left right leftup leftdown rightup rightdown"},
        {"Resources/buttons/PicSetting.Conf", "PaneDeck_Switch_bar",
         "Normal Hover Click Disable CheckNormal CheckHover CheckClick CheckDisable FontNormal FontHover "
         "FontClick FontDisable"}};
    for (const auto& [file, group, keys] : rows) {
        QSettings settings(SkinTree::Path(file), QSettings::IniFormat);
        settings.beginGroup(group);
        for (const QString& key : QString(keys).split(' ')) {
            const QString value = settings.value(key).toString();
            const QString directory = QFileInfo(file).path() + "/";
            QVERIFY2(settings.contains(key), qPrintable(key));
            QVERIFY2(!value.endsWith(".png") || !QImage(SkinTree::Path(directory + value)).isNull(),
                     qPrintable(value));
            QVERIFY2(!key.startsWith("Font") || QColor::isValidColor(value), qPrintable(key));
        }
    }
}

void tst_skin_files::cursorsReadOnAnyPicture()
{
    for (size_t i = 0; i < 2 * std::size(Cursors); ++i) {
        const char* const cursor = Cursors[i / 2];
        const QString path = SkinTree::Styles().at(i % 2) + "/VideoWidget/" + cursor + ".png";
        const QImage picture = QImage(SkinTree::Path(path)).convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(picture.size(), QSize(32, 32));
        const QRect shape = QRegion(QBitmap::fromImage(picture.createAlphaMask())).boundingRect();
        const QPoint off = shape.topLeft() - (QPoint(31, 31) - shape.bottomRight());
        QVERIFY2(qAbs(off.x()) <= 2 && qAbs(off.y()) <= 2, cursor);
        for (const QColor& ground :
             {QColor(Qt::black), QColor(Qt::white), QColor(Qt::gray), QColor(Qt::red)}) {
            const QImage image = Composed(picture, ground);
            const int readable = CountPixels(image, [&](int x, int y) {
                return SkinTree::Contrast(image.pixelColor(x, y), ground) >= 3.0;
            });
            QVERIFY2(readable >= 60, cursor);
        }
    }
}

void tst_skin_files::alarmMaskKeepsTheWholeMark()
{
    for (const QString& style : SkinTree::Styles()) {
        const QPixmap picture(SkinTree::Path(style + "/VideoWidget/ALARM.png"));
        QCOMPARE(picture.size(), QSize(74, 74));
        const QRegion mask(picture.createHeuristicMask(true));
        const QImage image = picture.toImage();
        const QRgb ground = image.pixel(0, 0);
        QVERIFY(mask.contains(QPoint(37, 37)));
        const auto agree = [&](int x, int y) {
            return mask.contains(QPoint(x, y)) == (image.pixel(x, y) != ground);
        };
        QCOMPARE(CountPixels(image, agree), 74 * 74);
        const int red = image.pixelColor(25, 45).red();
        QVERIFY2(red > 2 * image.pixelColor(25, 45).green(), "the mark isn't red");
    }
}

void tst_skin_files::thumbFitsBelowTheStrip()
{
    for (const QString& style : SkinTree::Styles()) {
        const QPixmap thumb(SkinTree::Path(style + "/playback/PlaybackThumb.png"));
        QVERIFY(thumb.hasAlphaChannel());
        QCOMPARE(thumb.width() % 2, 0);
        QVERIFY(thumb.height() <= 15);
        const QRegion mask(thumb.mask());
        const int half = thumb.width() / 2;
        QVERIFY(mask.contains(QPoint(half - 1, 0)) && mask.contains(QPoint(half, 0)));
        QVERIFY(!mask.contains(QPoint(0, 0)) && !mask.contains(QPoint(thumb.width() - 1, 0)));
        QCOMPARE(mask.boundingRect(), thumb.rect());
    }
}

void tst_skin_files::textHasContrast()
{
    const std::pair<const char*, const char*> pairs[] = {
        {"text", "window bar panel raised raised-more sunken"},
        {"text-dim", "window bar panel sunken"},
        {"accent-text", "accent"},
        {"ruler-text", "ruler"},
        {"strip-text", "strip"},
        {"message-text", "message-ground"},
        {"strip-line-normal", "strip"},
        {"bar-line-normal", "bar panel raised"},
        {"bar-line-hover", "raised"},
        {"bar-line-pressed", "sunken"},
        {"bar-line-checked", "raised"}};
    for (const QString& style : SkinTree::Styles()) {
        for (const auto& [text, grounds] : pairs) {
            for (const QString& ground : QString(grounds).split(' ')) {
                const QColor color = SkinTree::Token(style, text);
                const QColor below = SkinTree::Token(style, ground);
                QVERIFY2(color.isValid() && below.isValid(), text);
                const double contrast = qMin(SkinTree::Contrast(color, SkinTree::Over(below, Qt::black)),
                                             SkinTree::Contrast(color, SkinTree::Over(below, Qt::white)));
                QVERIFY2(contrast >= 4.5, qPrintable(QString("%1 on %2").arg(text, ground)));
            }
        }
    }
}

QTEST_MAIN(tst_skin_files)

#include "tst_skin_files.moc"

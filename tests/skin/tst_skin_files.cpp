#include "SkinTree.h"
#include "support/DeckTestCase.h"

#include <QBitmap>
#include <QDir>
#include <QIcon>
#include <QPainter>
#include <QSettings>

class tst_skin_files : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyNamedFileIsThere_data();
    void everyNamedFileIsThere();
    void sheetsFindTheirPictures_data();
    void sheetsFindTheirPictures();
    void sheetsUseEveryGlyph();
    void configurationHasEveryKey_data();
    void configurationHasEveryKey();
    void buttonPicturesExist();
    void cursorsReadOnAnyPicture_data();
    void cursorsReadOnAnyPicture();
    void alarmMaskKeepsTheWholeMark();
    void idleBackgroundIsCalm();
    void thumbFitsBelowTheStrip();
    void disabledGlyphsDifferInShape();
    void textHasContrast_data();
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

/// The pixels of a glyph at the size it is drawn at that are more there than not.
QImage Shape(const QString& path)
{
    const QImage image = QIcon(path).pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32);
    QImage shape(image.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            shape.setPixel(x, y, qAlpha(image.pixel(x, y)) >= 96 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    }
    return shape;
}

} // namespace

void tst_skin_files::everyNamedFileIsThere_data()
{
    QTest::addColumn<QString>("path");
    QStringList paths = {"Organization/Config.ini", "Resources/OEMStyle.conf",
                         "Resources/icons/IconSetting.Conf", "Resources/buttons/PicSetting.Conf"};
    for (const QString& style : SkinTree::Styles()) {
        for (const char* file :
             {"Qss/liveviewsheet.qss", "Qss/dialogsheet.qss", "Qss/playbacksheet.qss",
              "VideoWidget/ALARM.png", "LiveView/wndBackGround.png", "playback/PlaybackThumb.png"})
            paths.append(style + "/" + file);
        for (const char* cursor : Cursors)
            paths.append(style + "/VideoWidget/" + cursor + ".png");
    }
    for (const QString& path : paths)
        QTest::newRow(qPrintable(path)) << path;
}

void tst_skin_files::everyNamedFileIsThere()
{
    QFETCH(QString, path);
    QVERIFY(!SkinTree::Content(path).isEmpty());
    if (path.endsWith(".png"))
        QVERIFY(!QImage(SkinTree::Path(path)).isNull());
}

void tst_skin_files::sheetsFindTheirPictures_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<QString>("sheet");
    for (const QString& style : SkinTree::Styles()) {
        for (const char* sheet : {"liveviewsheet.qss", "dialogsheet.qss", "playbacksheet.qss",
                                  "clientsheet.qss", "mirroredsheet.qss"})
            QTest::newRow(qPrintable(style + " " + sheet)) << style << sheet;
    }
}

void tst_skin_files::sheetsFindTheirPictures()
{
    QFETCH(QString, style);
    QFETCH(QString, sheet);
    const QByteArray text = SkinTree::Content(style + "/Qss/" + sheet);
    QVERIFY(!text.contains('@') && !text.contains('$'));
    QCOMPARE(SkinTree::PicturesOf(style, sheet).size(), text.count("url("));
    for (const QString& picture : SkinTree::PicturesOf(style, sheet))
        QVERIFY2(!QIcon(SkinTree::Path(style + "/" + picture)).pixmap(16).isNull(), qPrintable(picture));
    QWidget widget;
    widget.setStyleSheet(QString::fromUtf8(text).replace(".*?", SkinTree::Path(style)));
    widget.ensurePolished();
}

void tst_skin_files::sheetsUseEveryGlyph()
{
    for (const QString& style : SkinTree::Styles()) {
        QStringList used;
        for (const QString& sheet : QDir(SkinTree::Path(style + "/Qss")).entryList(QDir::Files))
            used += SkinTree::PicturesOf(style, sheet);
        for (const char* directory : {"LiveView", "VideoWidget", "playback"}) {
            for (const QString& file : QDir(SkinTree::Path(style + "/" + directory)).entryList({"*.svg"})) {
                const QString glyph =
                    QString(directory) + "/" + file.section('_', 0, 0).section('.', 0, 0) + ".svg";
                QVERIFY2(used.contains(glyph), qPrintable(glyph));
            }
        }
    }
}

void tst_skin_files::configurationHasEveryKey_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("keys");
    QTest::newRow("style") << "Organization/Config.ini" << QStringList{"style/style"};
    QStringList bar;
    for (const char* key : {"BarPlace", "BarHeight", "ContentSpace", "stopbtnMinWidth", "stopbtnMaxWidth",
                            "stopbtnHeight", "OneScreenbtnWidth", "OneScreenbtnHeight", "style"})
        bar.append(QString("PaneDeck_MonitoBar/") + key);
    for (const char* key : {"flushColor", "titleStyle", "style"})
        bar.append(QString("PaneDeck_Widget/") + key);
    QTest::newRow("OEM style") << "Resources/OEMStyle.conf" << bar;
    QStringList buttons;
    for (const char* key : {"Normal", "Hover", "Click", "Disable", "CheckNormal", "CheckHover", "CheckClick",
                            "CheckDisable", "FontNormal", "FontHover", "FontClick", "FontDisable"})
        buttons.append(QString("PaneDeck_Switch_bar/") + key);
    QTest::newRow("button pictures") << "Resources/buttons/PicSetting.Conf" << buttons;
}

void tst_skin_files::configurationHasEveryKey()
{
    QFETCH(QString, file);
    QFETCH(QStringList, keys);
    const QSettings settings(SkinTree::Path(file), QSettings::IniFormat);
    for (const QString& key : keys)
        QVERIFY2(settings.contains(key), qPrintable(key));
}

void tst_skin_files::buttonPicturesExist()
{
    QSettings buttons(SkinTree::Path("Resources/buttons/PicSetting.Conf"), QSettings::IniFormat);
    buttons.beginGroup("PaneDeck_Switch_bar");
    for (const QString& key : buttons.childKeys()) {
        const QString value = buttons.value(key).toString();
        if (key.startsWith("Font"))
            QVERIFY2(QColor::isValidColor(value), qPrintable(key));
        else
            QCOMPARE(QImage(SkinTree::Path("Resources/buttons/" + value)).size(), QSize(27, 27));
    }
    QSettings icons(SkinTree::Path("Resources/icons/IconSetting.Conf"), QSettings::IniFormat);
    icons.beginGroup("PTZ");
    QCOMPARE(icons.childKeys().size(), 9);
    for (const QString& key : icons.childKeys())
        QVERIFY2(!QImage(SkinTree::Path("Resources/icons/" + icons.value(key).toString())).isNull(),
                 qPrintable(key));
}

void tst_skin_files::cursorsReadOnAnyPicture_data()
{
    QTest::addColumn<QString>("path");
    for (const QString& style : SkinTree::Styles()) {
        for (const char* cursor : Cursors)
            QTest::newRow(qPrintable(style + " " + cursor)) << style + "/VideoWidget/" + cursor + ".png";
    }
}

void tst_skin_files::cursorsReadOnAnyPicture()
{
    QFETCH(QString, path);
    const QImage picture = QImage(SkinTree::Path(path)).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(picture.size(), QSize(32, 32));
    const QRect shape = QRegion(QBitmap::fromImage(picture.createAlphaMask())).boundingRect();
    QVERIFY(qAbs(shape.left() - (31 - shape.right())) <= 2 && qAbs(shape.top() - (31 - shape.bottom())) <= 2);
    for (const QColor& ground :
         {QColor(Qt::black), QColor(Qt::white), QColor(128, 128, 128), QColor(Qt::red)}) {
        const QImage image = Composed(picture, ground);
        int readable = 0;
        for (int y = 0; y < 32; ++y) {
            for (int x = 0; x < 32; ++x)
                readable += SkinTree::Contrast(image.pixelColor(x, y), ground) >= 3.0;
        }
        QVERIFY2(readable >= 60, qPrintable(QString("%1 pixels on %2").arg(readable).arg(ground.name())));
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
        for (int y = 0; y < 74; ++y) {
            for (int x = 0; x < 74; ++x)
                QCOMPARE(mask.contains(QPoint(x, y)), image.pixel(x, y) != ground);
        }
        const int red = image.pixelColor(25, 45).red();
        QVERIFY2(red > 2 * image.pixelColor(25, 45).green(), "the mark isn't red");
    }
}

void tst_skin_files::idleBackgroundIsCalm()
{
    for (const QString& style : SkinTree::Styles()) {
        const QImage image(SkinTree::Path(style + "/LiveView/wndBackGround.png"));
        QVERIFY(!image.hasAlphaChannel());
        const QImage small = image.scaled(97, 61, Qt::IgnoreAspectRatio, Qt::FastTransformation);
        for (int y = 0; y < small.height(); ++y) {
            for (int x = 0; x < small.width(); ++x)
                QVERIFY(SkinTree::Contrast(small.pixelColor(x, y), small.pixelColor(0, 0)) < 1.4);
        }
        QVERIFY(SkinTree::Contrast(Qt::red, small.pixelColor(0, 0)) > 1.0);
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

void tst_skin_files::disabledGlyphsDifferInShape()
{
    for (const QString& style : SkinTree::Styles()) {
        for (const char* directory : {"LiveView", "VideoWidget", "playback"}) {
            const QDir dir(SkinTree::Path(style + "/" + directory));
            for (const QString& disabled : dir.entryList({"*_disabled.svg"})) {
                const QString enabled = QString(disabled).replace("_disabled", "");
                QVERIFY2(Shape(dir.filePath(disabled)) != Shape(dir.filePath(enabled)), qPrintable(disabled));
            }
        }
    }
}

void tst_skin_files::textHasContrast_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("ground");
    const QList<QPair<QString, QStringList>> pairs = {
        {"text", {"window", "bar", "panel", "raised", "raised-more", "sunken"}},
        {"text-dim", {"window", "bar", "panel", "sunken"}},
        {"accent-text", {"accent"}},
        {"ruler-text", {"ruler"}},
        {"strip-text", {"strip"}},
        {"message-text", {"message-ground"}},
        {"strip-line-normal", {"strip"}},
        {"bar-line-normal", {"bar", "panel", "raised"}},
        {"bar-line-hover", {"raised"}},
        {"bar-line-pressed", {"sunken"}},
        {"bar-line-checked", {"raised"}},
    };
    for (const auto& pair : pairs) {
        for (const QString& ground : pair.second)
            QTest::newRow(qPrintable(pair.first + " on " + ground)) << pair.first << ground;
    }
}

void tst_skin_files::textHasContrast()
{
    QFETCH(QString, text);
    QFETCH(QString, ground);
    for (const QString& style : SkinTree::Styles()) {
        const QColor color = SkinTree::Token(style, text);
        QVERIFY2(color.isValid() && SkinTree::Token(style, ground).isValid(), qPrintable(style));
        for (const QColor& picture : {QColor(Qt::black), QColor(Qt::white)}) {
            const double contrast =
                SkinTree::Contrast(color, SkinTree::Over(SkinTree::Token(style, ground), picture));
            QVERIFY2(contrast >= 4.5, qPrintable(QString("%1: %2").arg(style).arg(contrast)));
        }
    }
}

QTEST_MAIN(tst_skin_files)

#include "tst_skin_files.moc"

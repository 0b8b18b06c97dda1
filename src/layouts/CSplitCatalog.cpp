#include "layouts/CSplitCatalog.h"

#include "common/IniFile.h"
#include "common/Installation.h"
#include "common/StyleSheet.h"
#include "layouts/BuiltInLayouts.h"
#include "layouts/XMLSplitInfo.h"

#include <QGuiApplication>
#include <QPainter>

namespace {

CSplitCatalog* s_pCatalog = nullptr;

int StyleOf(const QString& configPath)
{
    const int style = IniFile(configPath, "UTF-8").Value("style/style").toInt();
    return style == 1 || style == 2 ? style : 0;
}

QString StyleDirectoryName(int styleId)
{
    if (styleId == 1)
        return "ResourcesBlank";
    return styleId == 2 ? "ResourcesWhite" : "";
}

QColor NamedColor(const QString& name)
{
    return QColor::isValidColor(name) ? QColor(name) : QColor();
}

} // namespace

CSplitCatalog* CSplitCatalog::Instance()
{
    if (!s_pCatalog)
        s_pCatalog = new CSplitCatalog;
    return s_pCatalog;
}

void CSplitCatalog::Release()
{
    delete s_pCatalog;
    s_pCatalog = nullptr;
}

bool CSplitCatalog::Exists()
{
    return s_pCatalog != nullptr;
}

CSplitCatalog::CSplitCatalog()
{
    organizationDir = InstallationDirectory("Organization");
    TakeStyle(StyleOf(organizationDir + "/Config.ini"));
    installedSplitFilePath = organizationDir + "/SplitInfo.xml";
    const QString writable = WritableDirectory();
    splitFilePath = writable.isEmpty() ? installedSplitFilePath : writable + "/SplitInfo.xml";
}

void CSplitCatalog::ChooseStyle(int style)
{
    if (!StyleDirectoryName(style).isEmpty())
        TakeStyle(style);
}

void CSplitCatalog::TakeStyle(int style)
{
    styleId = style;
    const QString directory = StyleDirectoryName(style);
    resourceDir = InstallationDirectory(directory);
    qssDir = InstallationDirectory(directory + "/Qss");
}

void CSplitCatalog::LoadLayouts()
{
    if (XMLSplitInfo().Read() < 1)
        LoadDefaults();
}

const SplitLayout& CSplitCatalog::Layout(int type, int index) const
{
    return type == 0 ? normalLayouts[index] : customLayouts[index];
}

void CSplitCatalog::LoadDefaults()
{
    for (int i = 0; i < LayoutCount; ++i) {
        normalLayouts[i] = BuiltInLayout(i);
        customLayouts[i] = normalLayouts[i];
    }
}

void CSplitCatalog::LayoutToMatrix(const SplitLayout& layout, SplitMatrix& out)
{
    SplitLines::FromLayout(layout, out);
}

void CSplitCatalog::MatrixToLayout(const SplitMatrix& m, SplitLayout& out)
{
    SplitLines::ToLayout(m, out);
}

bool CSplitCatalog::IsLineSolid(const SplitMatrix& m, int r1, int c1, int r2, int c2)
{
    return SplitLines::IsSolid(m, r1, c1, r2, c2);
}

QPixmap CSplitCatalog::LayoutThumbnail(int type, int index, const QString& background,
                                       const QString& line) const
{
    if (index < 0 || index >= LayoutCount || thumbnailSize.isEmpty())
        return QPixmap();
    const double ratio = qApp->devicePixelRatio();
    QPixmap pixmap(thumbnailSize * ratio);
    pixmap.fill(NamedColor(background));
    SplitMatrix matrix;
    LayoutToMatrix(Layout(type, index), matrix);
    const double colW = double(pixmap.width()) / matrix.cols;
    const double rowH = double(pixmap.height()) / matrix.rows;
    QPainter painter(&pixmap);
    painter.setPen(QPen(NamedColor(line), ratio));
    for (const QLine& inner : SplitLines::Inner(matrix)) {
        painter.drawLine(int(inner.x1() / 2 * colW), int(inner.y1() / 2 * rowH), //
                         int(inner.x2() / 2 * colW), int(inner.y2() / 2 * rowH));
    }
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QPixmap CSplitCatalog::StripPixmap(const QString& path, int count, int index)
{
    if (path.isEmpty() || index < 0 || index >= count)
        return QPixmap();
    const QPixmap strip(path);
    const int pieceWidth = strip.width() / count;
    return pieceWidth > 0 ? strip.copy(pieceWidth * index, 0, pieceWidth, strip.height()) : QPixmap();
}

QString CSplitCatalog::StyleSheet(const QString& fileName) const
{
    return LoadStyleSheet(qssDir + fileName, resourceDir);
}

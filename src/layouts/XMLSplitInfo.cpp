#include "layouts/XMLSplitInfo.h"

#include "common/Installation.h"
#include "layouts/BuiltInLayouts.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/XmlGuard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace {

enum ReadResult
{
    AllRead = 1,
    NoLayouts = 0,
    NoRoot = -201,
    BadAttribute = -401
};

using Layouts = std::array<SplitLayout, CSplitCatalog::LayoutCount>;

QByteArray FileContent(const QString& path)
{
    // A pipe would block the open.
    if (!QFileInfo(path).isFile())
        return QByteArray();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(MaxXmlSize + 1) : QByteArray();
}

bool ReadNumber(const TiXmlElement& element, const char* name, int least, int most, int& value)
{
    const char* text = element.Attribute(name);
    const long number = text ? std::strtol(text, nullptr, 10) : 0;
    if (!text || number < least || number > most)
        return false;
    value = int(number);
    return true;
}

bool ReadCell(const TiXmlElement& element, SplitCell& cell)
{
    constexpr int Most = SplitMatrix::MaxGrid;
    return ReadNumber(element, "x1", 0, Most, cell.x1) && ReadNumber(element, "y1", 0, Most, cell.y1) &&
           ReadNumber(element, "x2", 0, Most, cell.x2) && ReadNumber(element, "y2", 0, Most, cell.y2);
}

bool ReadLayout(const TiXmlElement& element, SplitLayout& layout)
{
    constexpr int Most = SplitMatrix::MaxGrid;
    if (!ReadNumber(element, "row", 1, Most, layout.rows) ||
        !ReadNumber(element, "col", 1, Most, layout.cols) ||
        !ReadNumber(element, "count", 0, Most * Most, layout.count))
        return false;
    for (auto* wnd = element.FirstChildElement("Wnd"); wnd; wnd = wnd->NextSiblingElement("Wnd")) {
        SplitCell cell;
        if (!ReadCell(*wnd, cell))
            return false;
        layout.cells.append(cell);
    }
    const auto inGrid = [&](const SplitCell& cell) { return IsInGrid(cell, layout.rows, layout.cols); };
    return layout.count == layout.cells.size() &&
           std::all_of(layout.cells.cbegin(), layout.cells.cend(), inGrid);
}

bool ReadLayouts(const TiXmlElement& list, Layouts& layouts)
{
    for (auto* split = list.FirstChildElement("Split"); split; split = split->NextSiblingElement("Split")) {
        int number = 0;
        SplitLayout layout;
        if (!ReadNumber(*split, "NID", 1, CSplitCatalog::LayoutCount, number) || !ReadLayout(*split, layout))
            return false;
        layouts[size_t(number) - 1] = layout;
    }
    return true;
}

/// What the layouts are if the file leaves them out.
Layouts Present(const SplitLayout (&present)[CSplitCatalog::LayoutCount])
{
    Layouts layouts;
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i)
        layouts[size_t(i)] = present[i].rows > 0 ? present[i] : BuiltInLayout(i);
    return layouts;
}

ReadResult ReadDocument(const TiXmlDocument& document, CSplitCatalog* catalog)
{
    const TiXmlElement* root = document.FirstChildElement("SplitInfo");
    if (!root)
        return NoRoot;
    Layouts normal = Present(catalog->normalLayouts);
    Layouts custom = Present(catalog->customLayouts);
    const TiXmlElement* list = root->FirstChildElement("NormalSplit");
    if (!list)
        return NoLayouts;
    if (!ReadLayouts(*list, normal))
        return BadAttribute;
    list = root->FirstChildElement("CustoSplit");
    if (!list)
        return NoLayouts;
    if (!ReadLayouts(*list, custom))
        return BadAttribute;
    std::copy(normal.begin(), normal.end(), std::begin(catalog->normalLayouts));
    std::copy(custom.begin(), custom.end(), std::begin(catalog->customLayouts));
    return AllRead;
}

/// The file that the layouts are read from.
QString PresentFile(const CSplitCatalog& catalog)
{
    return QFile::exists(catalog.splitFilePath) ? catalog.splitFilePath : catalog.installedSplitFilePath;
}

ReadResult ReadFile(CSplitCatalog* catalog)
{
    QByteArray content = FileContent(PresentFile(*catalog));
    if (!IsHarmlessXml(content))
        return NoLayouts;
    // A character of several bytes that the end cuts short carries the parser beyond it.
    content.append(4, '\0');
    TiXmlDocument document;
    document.SetTabSize(0); // counts no lines
    document.Parse(content.constData());
    return document.Error() ? NoLayouts : ReadDocument(document, catalog);
}

/// Copies a file beside itself under a free name. True also if there is none.
bool Keep(const QString& path)
{
    int number = 1;
    const auto kept = [&] { return path + ".unread" + QString::number(number); };
    while (QFile::exists(kept()))
        ++number;
    return !QFile::exists(path) || QFile::copy(path, kept());
}

TiXmlElement* Append(TiXmlNode& parent, const char* name)
{
    return static_cast<TiXmlElement*>(parent.LinkEndChild(new TiXmlElement(name)));
}

void AppendLayouts(TiXmlElement& root, const char* name,
                   const SplitLayout (&layouts)[CSplitCatalog::LayoutCount])
{
    TiXmlElement* list = Append(root, name);
    list->SetAttribute("count", CSplitCatalog::LayoutCount);
    for (int index = 0; index < CSplitCatalog::LayoutCount; ++index) {
        const SplitLayout& layout = layouts[index];
        TiXmlElement* split = Append(*list, "Split");
        split->SetAttribute("NID", index + 1);
        split->SetAttribute("row", layout.rows);
        split->SetAttribute("col", layout.cols);
        split->SetAttribute("count", layout.count);
        for (int i = 0; i < qMin(layout.count, layout.cells.size()); ++i) {
            const SplitCell& cell = layout.cells.at(i);
            TiXmlElement* wnd = Append(*split, "Wnd");
            wnd->SetAttribute("ID", i);
            wnd->SetAttribute("x1", cell.x1);
            wnd->SetAttribute("y1", cell.y1);
            wnd->SetAttribute("x2", cell.x2);
            wnd->SetAttribute("y2", cell.y2);
        }
    }
}

} // namespace

int XMLSplitInfo::Read()
{
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    const ReadResult result = ReadFile(catalog);
    const QFileInfo file(catalog->splitFilePath);
    catalog->splitFileUnread = result != AllRead && file.isFile() && file.size() > 0;
    return result;
}

bool XMLSplitInfo::Write()
{
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    const QFileInfo target(catalog->splitFilePath);
    // A pipe would block the open, and a link that leads nowhere is not ours to replace.
    if (!target.isFile() && (target.exists() || target.isSymLink()))
        return false;
    if (catalog->splitFileUnread && !Keep(catalog->splitFilePath))
        return false;
    catalog->splitFileUnread = false;
    if (!WritableDirectory().isEmpty())
        QDir().mkpath(target.absolutePath());
    TiXmlDocument document;
    document.LinkEndChild(new TiXmlDeclaration("1.0", "utf-8", ""));
    TiXmlElement* root = Append(document, "SplitInfo");
    AppendLayouts(*root, "NormalSplit", catalog->normalLayouts);
    AppendLayouts(*root, "CustoSplit", catalog->customLayouts);
    TiXmlPrinter printer;
    document.Accept(&printer);
    // A full disk leaves the file that was there.
    QSaveFile file(catalog->splitFilePath);
    file.setDirectWriteFallback(true);
    return file.open(QIODevice::WriteOnly | QIODevice::Text) && file.write(printer.CStr()) >= 0 &&
           file.commit();
}

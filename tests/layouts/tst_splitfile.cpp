#include "layouts/BuiltInLayouts.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/Tilings.h"
#include "layouts/XMLSplitInfo.h"
#include "layouts/XmlGuard.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"

#include <sys/stat.h>

namespace {

const char* const Path = "Organization/SplitInfo.xml";

const QByteArray TwoByOne = "<Split NID='1' row='1' col='2' count='2'>"
                            "<Wnd x1='0' y1='0' x2='1' y2='1'/><Wnd x1='0' y1='1' x2='1' y2='2'/></Split>";

QByteArray Document(const QByteArray& normal, const QByteArray& custom = QByteArray())
{
    return "<SplitInfo><NormalSplit>" + normal + "</NormalSplit><CustoSplit>" + custom +
           "</CustoSplit></SplitInfo>";
}

/// A file of one custom layout whose text is TwoByOne with one part replaced.
QByteArray Changed(const QByteArray& part, const QByteArray& by)
{
    return Document({}, QByteArray(TwoByOne).replace(part, by));
}

QByteArray FileContent(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QByteArray BuiltInFile()
{
    return FileContent(QFINDTESTDATA("../data/splitfile/built-in.xml"));
}

bool HoldsBuiltIns()
{
    const CSplitCatalog* catalog = CSplitCatalog::Instance();
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i) {
        if (!(catalog->normalLayouts[i] == BuiltInLayout(i)) ||
            !(catalog->customLayouts[i] == BuiltInLayout(i)))
            return false;
    }
    return true;
}

} // namespace

class tst_splitfile : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void writesByteForByte();
    void readsBack();
    void accepts();
    void readsGapsAndOverlaps();
    void refuses_data();
    void refuses();
    void laterSplitWins();
    void missingSplitKeepsContent();
    void keepsWhatItCouldNotRead();
    void survivesWhatLiesThere();
    void survivesHugeFiles();
    void survivesKeptFiles();
};

void tst_splitfile::writesByteForByte()
{
    Installation installation;
    CSplitCatalog::Instance()->LoadLayouts();
    QVERIFY(!QFile::exists(CSplitCatalog::Instance()->splitFilePath));
    XMLSplitInfo().Write();
    QVERIFY(BuiltInFile().startsWith("<?xml"));
    QCOMPARE(FileContent(CSplitCatalog::Instance()->splitFilePath), BuiltInFile());
    CSplitCatalog::Instance()->customLayouts[0] = SplitLayout{6, 6, 0, {}};
    XMLSplitInfo().Write();
    QVERIFY(FileContent(CSplitCatalog::Instance()->splitFilePath)
                .contains("\n        <Split NID=\"1\" row=\"6\" col=\"6\" count=\"0\" />\n"));
}

void tst_splitfile::readsBack()
{
    Installation installation;
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    QRandomGenerator random = SeededGenerator();
    for (int round = 0; round < 30; ++round) {
        SplitLayout expected[20];
        for (int i = 0; i < 20; ++i) {
            // The first file is as large as a file can be.
            expected[i] = round == 0 ? BuiltInLayout(9)
                          : i == 4   ? SplitLayout{3, 5, 0, {}}
                                     : RandomTiling(random);
            (i < 10 ? catalog->normalLayouts[i] : catalog->customLayouts[i - 10]) = expected[i];
        }
        XMLSplitInfo().Write();
        for (int i = 0; i < 10; ++i)
            catalog->normalLayouts[i] = catalog->customLayouts[i] = BuiltInLayout(i);
        QCOMPARE(XMLSplitInfo().Read(), 1);
        for (int i = 0; i < 20; ++i)
            QVERIFY(catalog->Layout(i / 10, i % 10) == expected[i]);
    }
}

void tst_splitfile::accepts()
{
    const std::pair<const char*, QByteArray> rows[] = {
        {"no declaration, no identifiers", Document({}, TwoByOne)},
        {"identifiers out of order", Changed("<Wnd x1='0' y1='0'", "<Wnd ID='7' x1='0' y1='0'")},
        {"byte order mark and comment",
         "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!-- <it's> \xC3\xA4 -->\r\n" + Changed("<Wnd", "\r\n\t<Wnd")},
        {"blanks and tails", Changed("'2'", "' +2 panes'")},
        {"text without a number is zero", Changed("y1='0'", "y1='left'")},
        {"foreign elements", Changed("<Wnd", "<Other x1='99'/><Wnd")},
        {"foreign attributes and a bracket in one", Changed("<Wnd", "<Wnd b='</Split>' a=\"/>\"")},
        {"processing instruction", "<?a b='<'?>" + Changed("<Wnd", "<?a?><Wnd")},
        {"comment before the declaration", "<!-- a --><?xml version='1.0'?>" + Document({}, TwoByOne)},
        {"Latin-1 in a comment", "<?xml version='1.0'?><!-- \xE4 -->" + Changed("<Wnd", "<!--\xE0--><Wnd")},
        {"zeros and a character cut short behind the end",
         "<?xml version='1.0'?>" + Document({}, TwoByOne) + QByteArray(3, '\0') + "\xF0"},
        {"count of the list is not read",
         Document({}, TwoByOne).replace("<CustoSplit>", "<CustoSplit count='77'>")}};
    const SplitLayout expected{1, 2, 2, {{0, 0, 1, 1}, {0, 1, 1, 2}}};
    for (const auto& [name, content] : rows) {
        Installation installation;
        installation.Write(Path, content);
        QVERIFY2(XMLSplitInfo().Read() == 1, name);
        QVERIFY2(CSplitCatalog::Instance()->customLayouts[0] == expected, name);
        QVERIFY2(CSplitCatalog::Instance()->normalLayouts[0] == BuiltInLayout(0), name);
    }
}

void tst_splitfile::readsGapsAndOverlaps()
{
    const Installation installation;
    installation.Write(Path, Changed("col='2'", "col='3'").replace("y1='1'", "y1='0'"));
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    catalog->LoadLayouts();
    QVERIFY(catalog->customLayouts[0] == (SplitLayout{1, 3, 2, {{0, 0, 1, 1}, {0, 0, 1, 2}}}));
}

void tst_splitfile::refuses_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("result");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("no markup") << QByteArray("count=10") << 0;
    QTest::newRow("not closed") << QByteArray("<SplitInfo><NormalSplit>") << 0;
    QTest::newRow("zero byte") << Document(TwoByOne).insert(20, '\0') << 0;
    QTest::newRow("broken UTF-8") << QByteArray("<SplitInfo>\xEF</SplitInfo>") << 0;
    QTest::newRow("other root") << QByteArray("<Split/>") << -201;
    QTest::newRow("no normal layouts") << QByteArray("<SplitInfo><CustoSplit/></SplitInfo>") << 0;
    QTest::newRow("no custom layouts") << BuiltInFile().replace("CustoSplit", "CustomSplit") << 0;
    QTest::newRow("bad normal layout wins")
        << QByteArray("<SplitInfo><NormalSplit><Split/></NormalSplit></SplitInfo>") << -401;
    for (const char* attribute : {"NID", "row", "col", "count", "x1", "y1", "x2", "y2"})
        QTest::addRow("no %s", attribute) << Changed(QByteArray(attribute) + "=", "other=") << -401;
    const int last = BuiltInFile().lastIndexOf(" y2=");
    QTest::newRow("last attribute of all missing") << BuiltInFile().remove(last, 7) << -401;
    for (const char* number : {"0", "11", "4294967297", "-99999999999999999999"})
        QTest::addRow("layout %s", number) << Changed("NID='1'", "NID='" + QByteArray(number) + "'") << -401;
    for (const char* rows : {"0", "9"})
        QTest::addRow("%s rows", rows) << Changed("row='1'", "row='" + QByteArray(rows) + "'") << -401;
    for (const char* count : {"1", "3", "-2"})
        QTest::addRow("%s cells", count) << Changed("count='2'", "count='" + QByteArray(count) + "'") << -401;
    QTest::newRow("cell outside") << Changed("y2='2'", "y2='3'") << -401;
    QTest::newRow("cell before the grid") << Changed("y1='0'", "y1='-1'") << -401;
    QTest::newRow("cell without area") << Changed("x1='0' y1='1'", "x1='1' y1='1'") << -401;
}

void tst_splitfile::refuses()
{
    QFETCH(QByteArray, content);
    QFETCH(int, result);
    Installation installation;
    installation.Write(Path, content);
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    catalog->normalLayouts[5] = BuiltInLayout(2);
    QCOMPARE(XMLSplitInfo().Read(), result);
    QVERIFY(catalog->normalLayouts[5] == BuiltInLayout(2));
    QCOMPARE(catalog->normalLayouts[0].rows, 0);
    catalog->LoadLayouts();
    QVERIFY(HoldsBuiltIns());
    QCOMPARE(FileContent(catalog->splitFilePath), content);
}

void tst_splitfile::laterSplitWins()
{
    Installation installation;
    QByteArray later = TwoByOne;
    installation.Write(Path, Document(TwoByOne + later.replace("count='2'", "count='1'")
                                                     .replace("col='2'", "col='1'")
                                                     .replace("<Wnd x1='0' y1='1' x2='1' y2='2'/>", "")));
    QCOMPARE(XMLSplitInfo().Read(), 1);
    QVERIFY(CSplitCatalog::Instance()->normalLayouts[0] == (SplitLayout{1, 1, 1, {{0, 0, 1, 1}}}));
}

void tst_splitfile::missingSplitKeepsContent()
{
    Installation installation;
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    installation.Write(Path, Document({}));
    catalog->LoadLayouts();
    QVERIFY(HoldsBuiltIns());
    catalog->customLayouts[3] = BuiltInLayout(8);
    catalog->LoadLayouts();
    QVERIFY(catalog->customLayouts[3] == BuiltInLayout(8));
}

void tst_splitfile::keepsWhatItCouldNotRead()
{
    const Installation installation;
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    const QDir directory(catalog->organizationDir);
    const auto kept = [&] { return directory.entryList({"SplitInfo.xml?*"}, QDir::Files, QDir::Name); };
    for (int round = 1; round <= 2; ++round) {
        installation.Write(Path, "<Layouts/>" + QByteArray::number(round));
        catalog->LoadLayouts();
        QCOMPARE(kept().size(), round - 1);
        for (int edit = 0; edit < 2; ++edit) {
            XMLSplitInfo().Write();
            QCOMPARE(FileContent(catalog->splitFilePath), BuiltInFile());
            QCOMPARE(kept().size(), round);
            QCOMPARE(FileContent(directory.filePath(kept().last())),
                     "<Layouts/>" + QByteArray::number(round));
        }
        catalog->LoadLayouts();
    }
    // What reads, isn't there or holds nothing isn't kept.
    for (const QByteArray& content : {BuiltInFile(), QByteArray()}) {
        installation.Write(Path, content);
        catalog->LoadLayouts();
        XMLSplitInfo().Write();
        QCOMPARE(kept().size(), 2);
    }
}

void tst_splitfile::survivesWhatLiesThere()
{
    const std::pair<const char*, bool (*)(const QString&)> things[] = {
        {"nothing", [](const QString&) { return true; }},
        {"directory", [](const QString& path) { return QDir().mkpath(path); }},
        {"pipe", [](const QString& path) { return mkfifo(qPrintable(path), 0600) == 0; }},
        {"link to a device", [](const QString& path) { return QFile::link("/dev/zero", path); }},
        {"link to itself", [](const QString& path) { return QFile::link(path, path); }},
        {"no directory", [](const QString& path) { return QFileInfo(path).dir().removeRecursively(); }}};
    for (const auto& [name, lay] : things) {
        Installation installation;
        CSplitCatalog* catalog = CSplitCatalog::Instance();
        QVERIFY2(lay(catalog->splitFilePath), name);
        QVERIFY2(XMLSplitInfo().Read() == 0, name);
        catalog->LoadLayouts();
        QVERIFY2(HoldsBuiltIns(), name);
        catalog->customLayouts[0] = BuiltInLayout(3);
        XMLSplitInfo().Write();
        QVERIFY2(QFileInfo(catalog->splitFilePath).isFile() == (name == things[0].first), name);
    }
}

void tst_splitfile::survivesHugeFiles()
{
    struct
    {
        const char* name;
        const char* head;
        const char* unit;
        int times;
        bool harmless;
    } const rows[] = {
        {"a million levels", "", "<a>", 1000000, false},
        {"too many levels", "", "<a>", MaxXmlTags + 1, false},
        {"many levels", "", "<a>", MaxXmlTags, true},
        {"too many comments", "", "<!---->", MaxXmlTags + 1, false},
        {"too many attributes", "<a ", "b='>' ", MaxXmlAttributes + 1, false},
        {"numbered characters", "<a>", "&#x", 40000, true},
        {"declaration cut short", "", "<?xml ", 1, true},
        {"long comments", "", "<!--                                -->", 3000, true},
        {"longer ones", "", "<!--                                        -->", 3000, false},
    };
    Installation installation;
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    for (const auto& row : rows) {
        const QByteArray content = row.head + QByteArray(row.unit).repeated(row.times);
        QVERIFY2(IsHarmlessXml(content) == row.harmless, row.name);
        installation.Write(Path, content);
        QVERIFY2(XMLSplitInfo().Read() <= 0, row.name);
        catalog->LoadLayouts();
        QVERIFY2(HoldsBuiltIns(), row.name);
    }
    installation.Write(Path, Document(TwoByOne));
    QVERIFY(QFile::resize(catalog->splitFilePath, 100 * 1000 * 1000));
    QVERIFY2(XMLSplitInfo().Read() <= 0, "100 MB of zeros");
}

void tst_splitfile::survivesKeptFiles()
{
    const QStringList good = {"built-in", "cells-overlap", "one-layout", "repeated-number"};
    const QDir directory(QFINDTESTDATA("../data/splitfile"));
    for (const QFileInfo& file : directory.entryInfoList({"*.xml"}, QDir::Files)) {
        Installation installation;
        installation.Write(Path, FileContent(file.filePath()));
        const int result = XMLSplitInfo().Read();
        QVERIFY2((result == 1) == good.contains(file.completeBaseName()), qPrintable(file.fileName()));
        CSplitCatalog::Instance()->LoadLayouts();
        QVERIFY2(result == 1 || HoldsBuiltIns(), qPrintable(file.fileName()));
    }
}

QTEST_MAIN(tst_splitfile)

#include "tst_splitfile.moc"
